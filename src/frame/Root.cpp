#include "frame/Root.h"

#include "build/ItemFamily.h"
#include "content/QbNode.h"
#include "frame/Module.h"
#include "frame/Platform.h"
#include "project/QbProject.h"
#include "sourcecontrol/SourceSafe.h"
#include "topics/RelatedTopics.h"
#include "topics/Topic.h"
#include "topics/TopicSectionDefs.h"
#include "topics/TopicStatuses.h"
#include "topics/Topics.h"

namespace quillbox {

Root::Root() { enterRoot(); }
Root::~Root() { leaveRoot(); }

Ref<quillbox::TopicStatuses> Root::TopicStatuses() const { return topicStatuses(); }
Ref<quillbox::TopicSectionDefs> Root::TopicSectionDefs() const { return topicSectionDefs(); }
std::string Root::ahConfigPath() const { return ConfigPath(); }
std::string Root::SSDatabase() const { return quillbox::SSDatabase(); }
std::string Root::SSUser() const { return quillbox::SSUser(); }
std::string Root::SSPassword() const { return quillbox::SSPassword(); }
Ref<quillbox::VSSDatabase> Root::VSSDatabase() const { return openVSSDatabase(); }
bool Root::IsSourceSafeAvailable() const { return quillbox::IsSourceSafeAvailable(); }
bool Root::IsCodemarkInstalled() const { return quillbox::IsCodemarkInstalled(); }

Ref<QbProject> Root::NewProjectDialog() const {
    return platform().newProjectForm ? platform().newProjectForm() : nullptr;
}

Ref<PageTemplates> Root::QuillboxPageTemplates(const std::string& supportsFlag) const {
    auto result = make<PageTemplates>();
    for (const auto& one : documentEngine().Templates().PageTemplates()->Items()) {
        for (const auto& tag : one->Namespaces()->Texts()) {
            if (tag == "CM.Quillbox" && one->Supports().find(supportsFlag) != std::string::npos) {
                result->Add(one, one->Name());
            }
        }
    }
    return result;
}

namespace {

// Takes away the see-also links to a topic. The index moves on after a removal, so that of two neighbours the
// second stays. It is meant so.
void removeLinksTo(const Topic& topic, RelatedTopics& related) {
    const int count = related.Count();
    for (int index = 1; index <= count && index <= related.Count(); ++index) {
        if (related.Item(index)->ChildTopicKey == topic.Key) related.Remove(index);
    }
}

}  // namespace

void Root::BeforeDeleteTopic(const Ref<Topic>& topic, bool& cancel, bool& noPrompt) const {
    const auto project = topic ? topic->QbProject() : nullptr;
    if (!project) throw AutomationError("A topic of a project is needed here");
    bool asked = false;
    bool deleteNodes = false;
    Ref<QbNodes> found;
    for (const auto& node : project->QbNodes()->NodesForTopic(topic, found)->Items()) {
        if (node->TopicID() != topic->Key) continue;
        if (!asked) {
            const auto answer = platform().messages->Show(
                "There are one or more Table of Contents nodes that point to this Topic ('" + topic->Name() +
                    "').  Do you want to delete those too ?",
                "", MessageButtons::bsYesNoCancel, MessageIcon::biQuestion);
            if (answer == MessageAnswer::mbCancel) {
                cancel = true;
                return;
            }
            deleteNodes = answer == MessageAnswer::mbYes;
            asked = noPrompt = true;
        }
        if (deleteNodes) {
            const auto parent = node->ParentNode();
            (parent ? parent->ChildNodes : project->QbNodes())->Remove(node->Key);
        } else {
            node->SetCaptionText(topic->ContentsTitle());
            node->SetCaptionType(ctSpecific);
            node->SetQbNodeType(ntStandard);
        }
    }
    for (const auto& other : project->Topics->Items()) {
        if (other != topic) removeLinksTo(*topic, *other->RelatedTopics());
    }
}

}  // namespace quillbox
