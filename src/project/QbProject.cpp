#include "project/QbProject.h"

#include "base/SortedList.h"
#include "booklets/Manifest.h"
#include "content/GlossaryItems.h"
#include "content/OtherFiles.h"
#include "content/QbNode.h"
#include "content/Tasks.h"
#include "frame/Module.h"
#include "frame/Platform.h"
#include "headerids/HeaderIds.h"
#include "sourcecontrol/SourceSafe.h"
#include "topics/Topic.h"
#include "topics/TopicCategories.h"
#include "topics/TopicStatuses.h"
#include "topics/Topics.h"

namespace quillbox {

void QbProject::Created() {
    VariableValues = make<quillbox::VariableValues>();
    SetQbNodes(adopt(make<quillbox::QbNodes>()));
    Filename = platform().files->NewFileSystemObject();
    Topics = adopt(make<quillbox::Topics>());
    TopicCategories = adopt(make<quillbox::TopicCategories>());
    OtherFiles = adopt(make<quillbox::OtherFiles>());
    mManifests = adopt(make<quillbox::Manifests>());
    SpellIgnoreAllWordList = make<Collection>();
    Tasks = adopt(make<quillbox::Tasks>());
}

void QbProject::SetManifests(const Ref<quillbox::Manifests>& manifests) {
    if (!manifests) throw AutomationError("'Manifests' cannot be none");
    mManifests = manifests;
}

void QbProject::SetQbNodes(const Ref<quillbox::QbNodes>& nodes) {
    if (!nodes) throw AutomationError("'QbNodes' cannot be none");
    for (auto& connection : mNodesConnections) connection.disconnect();
    mQbNodes = nodes;
    ObjectReference<QbProject> project;
    project.Set(self(this));
    const auto heard = [project](const Ref<RelatedTopic>&) {
        if (const auto me = project.Get()) me->SetDirty(true);
    };
    mNodesConnections[0] = nodes->ItemAdded.connect(heard);
    mNodesConnections[1] = nodes->ItemRemoved.connect(heard);
}

Ref<quillbox::GlossaryItems> QbProject::GlossaryItems() {
    if (!mGlossaryItems) mGlossaryItems = adopt(make<quillbox::GlossaryItems>());
    return mGlossaryItems;
}

Ref<quillbox::HeaderIds> QbProject::HeaderIds() const {
    if (mHelpContextIDHeaderFile.empty()) return {};
    auto ids = make<quillbox::HeaderIds>();
    ids->Load(FullPathOf(mHelpContextIDHeaderFile));
    return ids;
}

// Falls back to `Name`, which gives the same text: a project has no name of its own. It is meant so.
std::string QbProject::Title() const { return mTitle.empty() ? Name() : mTitle; }

CompileTypeEnum QbProject::CompileType() const {
    return mCompileType < CompileHTMLHelp1 ? CompileHTMLHelp1 : mCompileType;
}

void QbProject::SetCompileType(CompileTypeEnum v) {
    mCompileType = v;
    SetDirty(true);
}

void QbProject::SetSpellLastCheckDateTime(const Date& v) {
    mSpellLastCheckDateTime = v;
    SetDirty(true);
}

void QbProject::SetTemplateName(const std::string& v) {
    mTemplateName = v;
    notice();
    if (!Topics->PauseEvents) TopicTemplateChanged(v);
}

ProjectTypeEnum QbProject::ProjectType() const {
    return SSActivated() ? ProjectTypeSeparateFiles : mProjectType;
}

void QbProject::SetProjectType(ProjectTypeEnum v) {
    if (v != mProjectType) {
        for (const auto& topic : Topics->Items()) topic->ResetReadOnlyCache();
    }
    store(mProjectType, v);
}

std::string QbProject::FullPathOf(const std::string& path) const {
    const auto file = platform().files->NewFileSystemObject();
    file->SetRelativeTo(Filename);
    file->SetPath(path);
    return file->FullPath();
}

void QbProject::notice() {
    if (!mLoading) Changed();
}

bool QbProject::PauseEvents() const {
    return Topics->PauseEvents && mQbNodes->PauseEvents && mGlossaryItems && mGlossaryItems->PauseEvents &&
           OtherFiles->PauseEvents && Tasks->PauseEvents && TopicCategories->PauseEvents;
}

void QbProject::SetPauseEvents(bool v) {
    Topics->PauseEvents = v;
    mQbNodes->PauseEvents = v;
    GlossaryItems()->PauseEvents = v;
    OtherFiles->PauseEvents = v;
    Tasks->PauseEvents = v;
    TopicCategories->PauseEvents = v;
}

bool QbProject::Dirty() const {
    return mTopicsDirty || mDirty || Tasks->Dirty() || (mGlossaryItems && mGlossaryItems->Dirty()) ||
           mManifests->Dirty() || mQbNodes->Dirty();
}

void QbProject::SetDirty(bool v) {
    mDirty = v;
    if (!v) {
        mTopicsDirty = false;
        Tasks->SetDirty(false);
        GlossaryItems()->SetDirty(false);
        mManifests->SetDirty(false);
        mQbNodes->SetDirty(false);
    }
    FireDirtyStateChanged();
}

void QbProject::SetTopicsDirty(bool v) {
    mTopicsDirty = v;
    if (v) FireDirtyStateChanged();
}

Ref<Topic> QbProject::NewTopic() {
    auto topic = make<Topic>();
    topic->SetQbProject(self(this));
    topic->SetPauseEvents(true);
    topic->SetCreatedOn(platform().system->Now());
    ignoringFailures([&] {
        if (const auto first = topicStatuses()->Item(1)) topic->SetStatus(first->Name);
    });
    topic->Key = CreateGUID();
    topic->SetPauseEvents(false);
    return topic;
}

Ref<TopicCategory> QbProject::NewTopicCategory() {
    auto category = make<TopicCategory>();
    category->SetQbProject(self(this));
    category->Key = CreateGUID();
    return category;
}

Ref<OtherFile> QbProject::NewOtherFile(const std::string& filename) {
    auto file = make<OtherFile>();
    file->SetQbProject(self(this));
    file->Filename()->SetPath(filename);
    return file;
}

Ref<GlossaryItem> QbProject::NewGlossaryItem(const std::string& term, const std::string& definition) {
    auto item = make<GlossaryItem>();
    item->SetQbProject(self(this));
    item->Key = CreateGUID();
    item->SetTerm(term);
    item->SetDefinition(definition);
    return item;
}

Ref<Manifest> QbProject::NewManifest(const std::string& name, ManifestTypeEnum type) {
    auto manifest = make<Manifest>();
    manifest->SetQbProject(self(this));
    manifest->Key = CreateGUID();
    manifest->SetManifestType(type);
    if (type == mtBooklet) {
        const auto path = ConfigPath() + "bookletproperties.xml";
        at(path, [&] {
            const auto root = parseFile(path)->RootElement();
            if (root->Name() == "BookletProperties") manifest->BookletProperties->Load(root);
        });
    }
    manifest->SetName(name);
    return manifest;
}

Ref<Task> QbProject::NewTask() {
    auto task = make<Task>();
    task->SetQbProject(self(this));
    task->SetPauseEvents(true);
    task->Key = CreateGUID();
    task->SetPauseEvents(false);
    return task;
}

Ref<Topic> QbProject::TopicByName(const std::string& name) const { return Topics->ByName(name); }

Ref<quillbox::Topics> QbProject::SortedTopics() const {
    SortedList<Ref<Topic>> sorted;
    for (const auto& topic : Topics->Items()) sorted.Add(topic, topic->Name());
    auto result = make<quillbox::Topics>();
    for (const auto& topic : sorted.Take()) result->Add(topic, topic->Key);
    return result;
}

void QbProject::SpellAddIgnoreAllWord(const std::string& word) {
    ignoringFailures([&] { SpellIgnoreAllWordList->Add(word, word); });
}

}  // namespace quillbox
