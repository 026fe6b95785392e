// The hub: what items and collections tell the project.

#include "base/Text.h"
#include "booklets/Manifest.h"
#include "booklets/ManifestEntry.h"
#include "content/GlossaryItems.h"
#include "content/OtherFiles.h"
#include "content/QbNode.h"
#include "content/Tasks.h"
#include "project/QbProject.h"
#include "topics/Topic.h"
#include "topics/TopicCategories.h"
#include "topics/Topics.h"

namespace quillbox {

namespace {

template <class Signal, class... A>
void raiseUnless(bool paused, Signal& signal, const A&... arguments) {
    if (!paused) signal(arguments...);
}

// Leaves a frozen title where nodes and entries pointed to a topic that is gone.
void cutLoose(QbProject& project, const Topic& topic) {
    // The topic is no longer in its collection, so what pointed to it is known by its key.
    const auto isIt = [&](const std::string& id) { return !id.empty() && sameText(id, topic.Key); };
    for (const auto& node : project.QbNodes()->AllNodes()->Items()) {
        if (node->QbNodeType() != ntSingleTopic || !isIt(node->TopicID())) continue;
        node->SetCaptionText(topic.ContentsTitle());
        node->SetQbNodeType(ntStandard);
    }
    for (const auto& manifest : project.Manifests()->Items()) {
        for (const auto& entry : manifest->Entries()->AllEntries()->Items()) {
            if (!isIt(entry->TopicID())) continue;
            entry->SetTitle(topic.ContentsTitle());
            entry->SetTopic(nullptr);
        }
    }
}

}  // namespace

void QbProject::FireDirtyStateChanged() {
    if (!mLoading) DirtyStateChanged();
}

void QbProject::FireTopicAdded(const Ref<Topic>& topic) {
    raiseUnless(Topics->PauseEvents, TopicAdded, topic);
    SetTopicsDirty(true);
    SetDirty(true);
}

void QbProject::FireTopicRemoved(const Ref<Topic>& topic) {
    raiseUnless(Topics->PauseEvents, TopicRemoved, topic);
    if (topic) cutLoose(*this, *topic);
    SetTopicsDirty(true);
    SetDirty(true);
}

void QbProject::FireTopicChanged(const Ref<Topic>& topic) {
    raiseUnless(Topics->PauseEvents, TopicChanged, topic);
    SetTopicsDirty(true);
}

void QbProject::FireTopicRelatedTopicsChanged(const Ref<Topic>& topic) {
    raiseUnless(Topics->PauseEvents, TopicRelatedTopicsChanged, topic);
    SetTopicsDirty(true);
}

void QbProject::FireTopicRelatedTopicChanged(const Ref<Topic>& topic, const Ref<RelatedTopic>& related) {
    raiseUnless(Topics->PauseEvents || (topic && topic->PauseEvents()), TopicRelatedTopicChanged, topic,
                related);
    SSActivated() ? SetTopicsDirty(true) : SetDirty(true);
}

void QbProject::FireTopicSectionChanged(const Ref<Topic>& topic, const Ref<TopicSection>& section) {
    raiseUnless(Topics->PauseEvents || (topic && topic->PauseEvents()), TopicSectionChanged, topic, section);
    SSActivated() ? SetTopicsDirty(true) : SetDirty(true);
}

void QbProject::FireQbNodeChanged(const Ref<QbNode>& node) {
    raiseUnless(mQbNodes->PauseEvents, QbNodeChanged, node);
    mQbNodes->SetDirty(true);
}

void QbProject::FireQbNodeRemoved(const Ref<QbNode>& node) {
    raiseUnless(mQbNodes->PauseEvents, QbNodeRemoved, node);
    mQbNodes->SetDirty(true);
}

void QbProject::FireTopicCategoryAdded(const Ref<TopicCategory>& category) {
    raiseUnless(TopicCategories->PauseEvents, TopicCategoryAdded, category);
    SetDirty(true);
}

void QbProject::FireTopicCategoryChanged(const Ref<TopicCategory>& category) {
    raiseUnless(TopicCategories->PauseEvents, TopicCategoryChanged, category);
    SetDirty(true);
}

void QbProject::FireTopicCategoryRemoved(const Ref<TopicCategory>& category) {
    raiseUnless(TopicCategories->PauseEvents, TopicCategoryRemoved, category);
    SetDirty(true);
}

void QbProject::FireOtherFileAdded(const Ref<OtherFile>& file) {
    raiseUnless(OtherFiles->PauseEvents, OtherFileAdded, file);
    SetDirty(true);
}

void QbProject::FireOtherFileRemoved(const Ref<OtherFile>& file) {
    raiseUnless(OtherFiles->PauseEvents, OtherFileRemoved, file);
    SetDirty(true);
}

void QbProject::FireGlossaryItemAdded(const Ref<GlossaryItem>& item) {
    raiseUnless(GlossaryItems()->PauseEvents, GlossaryItemAdded, item);
    GlossaryItems()->SetDirty(true);
}

void QbProject::FireGlossaryItemChanged(const Ref<GlossaryItem>& item) {
    raiseUnless(GlossaryItems()->PauseEvents, GlossaryItemChanged, item);
    GlossaryItems()->SetDirty(true);
}

void QbProject::FireGlossaryItemRemoved(const Ref<GlossaryItem>& item) {
    raiseUnless(GlossaryItems()->PauseEvents, GlossaryItemRemoved, item);
    GlossaryItems()->SetDirty(true);
}

// Tasks keep their own dirty flag.
void QbProject::FireTaskAdded(const Ref<Task>& task) { raiseUnless(Tasks->PauseEvents, TaskAdded, task); }
void QbProject::FireTaskChanged(const Ref<Task>& task) { raiseUnless(Tasks->PauseEvents, TaskChanged, task); }
void QbProject::FireTaskRemoved(const Ref<Task>& task) { raiseUnless(Tasks->PauseEvents, TaskRemoved, task); }

void QbProject::FireManifestChanged(const Ref<Manifest>& manifest) {
    ManifestChanged(manifest);
    mManifests->SetDirty(true);
}

Value QbProject::FireManifestEntryChanged(const Ref<Manifest>& manifest, const Ref<ManifestEntry>& entry) {
    ManifestEntryChanged(manifest, entry);
    mManifests->SetDirty(true);
    return Value::None();
}

}  // namespace quillbox
