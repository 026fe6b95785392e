#pragma once

#include <gmock/gmock.h>

#include <string>

#include "adapters/Failure.h"
#include "booklets/Manifest.h"
#include "booklets/ManifestEntry.h"
#include "content/GlossaryItems.h"
#include "content/OtherFiles.h"
#include "content/QbNode.h"
#include "content/Tasks.h"
#include "project/QbProject.h"
#include "support/EventLog.h"
#include "support/TestPlatform.h"
#include "topics/Topic.h"
#include "topics/TopicCategories.h"
#include "topics/Topics.h"

namespace quillbox {

// A test on one project that has a place, in a world of its own.
class ProjectTest : public testing::Test {
  protected:
    static constexpr const char* kFolder = "/work/manual/";
    static constexpr const char* kFile = "/work/manual/Manual.qbp";

    ProjectTest() {
        outside.files->Put("/work/manual/readme.txt", "so that the folder is there");
        outside.files->Put("/install/Configuration/bookletproperties.xml", "<NoDefaults/>");
        outside.files->ForgetCalls();
        project = newProject();
    }

    Ref<QbProject> newProject() const {
        auto made = make<QbProject>();
        made->Filename->SetPath(kFile);
        return made;
    }

    Ref<Topic> addTopic(const std::string& name, const std::string& body = "") const {
        const auto topic = project->NewTopic();
        topic->SetName(name);
        topic->SetTitle(name + " title");
        if (!body.empty()) topic->SetTopicSectionData("BodyText", body);
        project->Topics->Add(topic, topic->Key);
        return topic;
    }
    // At the end of a level; below a node when that is given.
    Ref<QbNode> addNode(const std::string& caption, const Ref<QbNode>& parent = nullptr) const {
        const auto node = (parent ? parent->ChildNodes : project->QbNodes())->NewNode(parent);
        node->SetCaptionText(caption);
        return node;
    }
    Ref<QbNode> addTopicNode(const Ref<Topic>& topic, const Ref<QbNode>& parent = nullptr) const {
        const auto node = addNode("", parent);
        node->SetQbNodeType(ntSingleTopic);
        node->SetTopicID(topic->Key);
        return node;
    }
    Ref<GlossaryItem> addTerm(const std::string& term, const std::string& definition = "") const {
        const auto item = project->NewGlossaryItem(term, definition);
        project->GlossaryItems()->Add(item, item->Key);
        return item;
    }
    Ref<Task> addTask(const std::string& title) const {
        const auto task = project->NewTask();
        task->SetTitle(title);
        project->Tasks->Add(task, task->Key);
        return task;
    }
    Ref<TopicCategory> addCategory(const std::string& name) const {
        const auto category = project->NewTopicCategory();
        category->SetName(name);
        project->TopicCategories->Add(category, category->Key);
        return category;
    }
    Ref<OtherFile> addFile(const std::string& path) const {
        const auto file = project->NewOtherFile(path);
        project->OtherFiles->Add(file, file->LocalSpec());
        return file;
    }
    Ref<Manifest> addManifest(const std::string& name, ManifestTypeEnum type = mtBooklet) const {
        const auto manifest = project->NewManifest(name, type);
        project->Manifests()->Add(manifest, manifest->Key);
        return manifest;
    }
    // At the end of a level of the outline; below an entry when that is given.
    static Ref<ManifestEntry> addEntry(const Ref<Manifest>& manifest, const Ref<Topic>& topic,
                                       const std::string& title, const Ref<ManifestEntry>& parent = nullptr) {
        const auto entry = manifest->NewManifestEntry(topic, title);
        if (parent) entry->SetParentEntry(parent);
        (parent ? parent->ChildEntries : manifest->Entries())->Add(entry, entry->Key);
        return entry;
    }
    // Forgets all marks, as after a save.
    void settle() const {
        project->SetDirty(false);
        for (const auto& topic : project->Topics->Items()) topic->SetDirty(false);
    }
    std::string bytes(const std::string& path) const {
        return outside.files->Bytes(path).value_or("no such file");
    }
    bool has(const std::string& path) const { return outside.files->Bytes(path).has_value(); }

    TestPlatform outside;
    Ref<QbProject> project;
};

}  // namespace quillbox
