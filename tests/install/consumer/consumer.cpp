#include <quillbox/quillbox.h>

#include <iostream>

int main(int, char** arguments) {
    using namespace quillbox;
    try {
        const auto project = make<QbProject>();
        project->Filename->SetPath(arguments[1]);
        const auto topic = project->NewTopic();
        topic->SetName("Start");
        topic->SetTopicSectionData("BodyText", "<p>Hello</p>");
        project->TopicChanged.connect(
            [](const Ref<Topic>& changed) { std::cout << changed->Title() << '\n'; });
        topic->SetTitle("Getting started");
        project->Topics->Add(topic, topic->Key);
        const auto booklet = project->NewManifest("Guide");
        project->Manifests()->Add(booklet, booklet->Key);
        project->SaveToDisk();
        const auto again = make<QbProject>();
        again->LoadFromFile(arguments[1]);
        std::cout << again->Topics->Count() << ' ' << again->Manifests()->Item(1)->Name() << ' '
                  << make<Root>()->TopicStatuses()->Count() << '\n';
        again->Topics->Remove("none");
    } catch (const AutomationError& error) {
        std::cout << error.Number() << '\n';
        return 0;
    }
    return 1;
}
