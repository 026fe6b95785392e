#include "frame/Module.h"

#include "base/AutomationError.h"
#include "frame/Platform.h"
#include "topics/TopicSectionDefs.h"
#include "topics/TopicStatuses.h"

namespace quillbox {

namespace {

struct State {
    Ref<TopicStatuses> statuses;
    Ref<TopicSectionDefs> sectionDefs;
    bool codemarkInstalled = false;
    bool codemarkTested = false;
    int roots = 0;
};

State& state() {
    static State one;
    return one;
}

}  // namespace

Ref<TopicStatuses> topicStatuses() {
    if (!state().statuses) {
        const auto path = ConfigPath() + "statuscodes.xml";
        // Stored before the load: after a file that fails, the list keeps what was read, and the first caller
        // hears.
        const auto statuses = state().statuses = make<TopicStatuses>();
        if (newFile(path)->Exists()) {
            at(path, [&] { statuses->Load(parseFile(path)->RootElement()); });
        }
    }
    return state().statuses;
}

Ref<TopicSectionDefs> topicSectionDefs() {
    if (!state().sectionDefs) {
        state().sectionDefs = make<TopicSectionDefs>();
        state().sectionDefs->Populate();
    }
    return state().sectionDefs;
}

void enterRoot() { ++state().roots; }

void leaveRoot() {
    if (--state().roots > 0) return;
    state().sectionDefs.reset();
    state().statuses.reset();
}

std::string ConfigPath() {
    const char separator = platform().files->Separator();
    auto path = platform().settings->Read(Hive::LocalMachine, "Software\\Merivane\\Quillbox", "InstallDir");
    if (path.empty() || (path.back() != '\\' && path.back() != '/')) path += separator;
    return path + "Configuration" + separator;
}

std::string CreateGUID() { return platform().system->NewGuid(); }

std::string StripQuotes(std::string& text) {
    if (!text.empty() && text.front() == '"') text.erase(0, 1);
    if (!text.empty() && text.back() == '"') text.pop_back();
    return text;
}

bool IsCodemarkInstalled() {
    auto& module = state();
    if (!module.codemarkTested) {
        ignoringFailures(
            [&] { module.codemarkInstalled = platform().classes->CreateObject("Codemark.Root") != nullptr; });
        module.codemarkTested = true;
    }
    return module.codemarkInstalled;
}

void resetModule() {
    const int roots = state().roots;
    state() = State();
    state().roots = roots;
}

}  // namespace quillbox
