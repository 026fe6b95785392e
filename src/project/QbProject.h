#pragma once

#include <sigc++/sigc++.h>

#include <string>
#include <vector>

#include "base/Collection.h"
#include "base/Date.h"
#include "base/ItemCollection.h"
#include "frame/Enumerations.h"
#include "platform/FileSystemObject.h"
#include "platform/HTML.h"
#include "platform/engine/Document.h"
#include "sourcecontrol/CheckedElement.h"

namespace quillbox {

class BuildResult;
class GlossaryItem;
class GlossaryItems;
class HeaderIds;
class LinkInfos;
class Manifest;
class ManifestEntry;
class Manifests;
class OtherFile;
class OtherFiles;
class QbNode;
class QbNodes;
class RelatedTopic;
class Task;
class Tasks;
class Topic;
class TopicCategories;
class TopicCategory;
class Topics;
class TopicSection;

// One help project in memory. Owns every collection of content, carries the settings of the project, and is
// the hub through which each change of an item reaches the caller as an event.
class QbProject : public Object, public CheckedElement {
  public:
    static constexpr std::string_view kClassName = "QbProject";
    std::string_view ClassName() const override { return kClassName; }

    void Created() override;

    // Content; each may be replaced by a caller.
    Ref<FileSystemObject> Filename;
    Ref<quillbox::VariableValues> VariableValues;
    Ref<quillbox::Topics> Topics;
    Ref<quillbox::TopicCategories> TopicCategories;
    Ref<quillbox::OtherFiles> OtherFiles;
    Ref<quillbox::Tasks> Tasks;
    Ref<Collection> SpellIgnoreAllWordList;
    Ref<Collection> IncrementingValues;
    Ref<quillbox::QbNodes> QbNodes() const { return mQbNodes; }
    void SetQbNodes(const Ref<quillbox::QbNodes>& nodes);
    Ref<quillbox::Manifests> Manifests() const { return mManifests; }
    void SetManifests(const Ref<quillbox::Manifests>& manifests);
    // Made on first read.
    Ref<quillbox::GlossaryItems> GlossaryItems();
    // The identifiers of the header file, read anew each time; none where no file is named.
    Ref<quillbox::HeaderIds> HeaderIds() const;

    // Settings.
    std::string Title() const;
    void SetTitle(const std::string& v) { store(mTitle, v); }
    std::string Name() const { return mTitle; }
    void SetName(const std::string&) {}  // accepted and discarded: a project has no name of its own
    std::string CMPFileName() const { return mCMPFileName; }
    void SetCMPFileName(const std::string& v) { store(mCMPFileName, v); }
    std::string OutputFileName() const { return mOutputFileName; }
    void SetOutputFileName(const std::string& v) { store(mOutputFileName, v); }
    std::string Help2Namespace() const { return mHelp2Namespace; }
    void SetHelp2Namespace(const std::string& v) { store(mHelp2Namespace, v); }
    std::string Help2FileID() const { return mHelp2FileID; }
    void SetHelp2FileID(const std::string& v) { store(mHelp2FileID, v); }
    std::string HelpContextIDHeaderFile() const { return mHelpContextIDHeaderFile; }
    void SetHelpContextIDHeaderFile(const std::string& v) { store(mHelpContextIDHeaderFile, v); }
    CompileTypeEnum CompileType() const;
    void SetCompileType(CompileTypeEnum v);
    Date SpellLastCheckDateTime() const { return mSpellLastCheckDateTime; }
    void SetSpellLastCheckDateTime(const Date& v);
    std::string TemplateName() const { return mTemplateName; }
    void SetTemplateName(const std::string& v);
    ProjectTypeEnum ProjectType() const;
    void SetProjectType(ProjectTypeEnum v);
    std::string QualifiedName() const { return Filename->FullPath(); }
    // A path among the settings; a relative one counts from the project's folder.
    std::string FullPathOf(const std::string& path) const;

    // State.
    bool PauseEvents() const;
    void SetPauseEvents(bool v);
    bool Dirty() const;
    void SetDirty(bool v);
    bool TopicsDirty() const { return mTopicsDirty; }
    void SetTopicsDirty(bool v);
    bool ProjectDirty() const { return mDirty; }

    // Events.
    template <class... A>
    using Event = sigc::signal<void(A...)>;
    Event<> Changed;
    Event<const Ref<Topic>&> TopicAdded, TopicRemoved, TopicChanged;
    Event<const Ref<Topic>&, const Ref<TopicSection>&> TopicSectionChanged;
    Event<const Ref<Topic>&, const Ref<RelatedTopic>&> TopicRelatedTopicChanged;
    Event<const Ref<Topic>&> TopicRelatedTopicsChanged;
    Event<const Ref<QbNode>&> QbNodeChanged, QbNodeRemoved;
    Event<const Ref<TopicCategory>&> TopicCategoryAdded, TopicCategoryChanged, TopicCategoryRemoved;
    Event<const Ref<OtherFile>&> OtherFileAdded, OtherFileRemoved;
    Event<> CheckoutStatusChanged;
    Event<const Ref<Topic>&> TopicCheckoutStatusChanged;
    Event<const Ref<OtherFile>&> OtherFileCheckoutStatusChanged;
    Event<ProjectElementTypeEnum> ProjectElementCheckOutStatusChanged;
    Event<const std::string&> BookletBuildProgress;
    Event<const std::string&> TopicTemplateChanged;
    Event<const Ref<GlossaryItem>&> GlossaryItemAdded, GlossaryItemRemoved, GlossaryItemChanged;
    Event<const Ref<Task>&> TaskAdded, TaskChanged, TaskRemoved;
    Event<const Ref<Manifest>&> ManifestChanged;
    Event<const Ref<Manifest>&, const Ref<ManifestEntry>&> ManifestEntryChanged;
    Event<int> LinkCheckStartTopic;
    Event<> DirtyStateChanged;
    Event<Ref<Document>&, Ref<BuildResult>&, bool&> BuildErrorsOrWarnings;
    Event<const std::string&> SourceSafeProgress;
    Event<const std::string&> LoadProgress;

    // What items and collections tell the project. Each raises its event unless it is paused, and marks what
    // has to be saved in any case.
    void FireTopicAdded(const Ref<Topic>& topic);
    void FireTopicRemoved(const Ref<Topic>& topic);
    void FireTopicChanged(const Ref<Topic>& topic);
    void FireTopicRelatedTopicsChanged(const Ref<Topic>& topic);
    void FireTopicRelatedTopicChanged(const Ref<Topic>& topic, const Ref<RelatedTopic>& related);
    void FireTopicSectionChanged(const Ref<Topic>& topic, const Ref<TopicSection>& section);
    void FireQbNodeChanged(const Ref<QbNode>& node);
    void FireQbNodeRemoved(const Ref<QbNode>& node);
    void FireTopicCategoryAdded(const Ref<TopicCategory>& category);
    void FireTopicCategoryChanged(const Ref<TopicCategory>& category);
    void FireTopicCategoryRemoved(const Ref<TopicCategory>& category);
    void FireOtherFileAdded(const Ref<OtherFile>& file);
    void FireOtherFileRemoved(const Ref<OtherFile>& file);
    void FireGlossaryItemAdded(const Ref<GlossaryItem>& item);
    void FireGlossaryItemChanged(const Ref<GlossaryItem>& item);
    void FireGlossaryItemRemoved(const Ref<GlossaryItem>& item);
    void FireTaskAdded(const Ref<Task>& task);
    void FireTaskChanged(const Ref<Task>& task);
    void FireTaskRemoved(const Ref<Task>& task);
    void FireManifestChanged(const Ref<Manifest>& manifest);
    Value FireManifestEntryChanged(const Ref<Manifest>& manifest, const Ref<ManifestEntry>& entry);
    void FireTopicCheckoutStatusChanged(const Ref<Topic>& topic) { TopicCheckoutStatusChanged(topic); }
    void FireOtherFileCheckoutStatusChanged(const Ref<OtherFile>& f) { OtherFileCheckoutStatusChanged(f); }
    void FireProjectElementCheckOutStatusChanged(ProjectElementTypeEnum e) {
        ProjectElementCheckOutStatusChanged(e);
    }
    void FireDirtyStateChanged();

    // New items; the caller adds them to their collection.
    Ref<Topic> NewTopic();
    Ref<TopicCategory> NewTopicCategory();
    Ref<OtherFile> NewOtherFile(const std::string& filename);
    Ref<GlossaryItem> NewGlossaryItem(const std::string& term, const std::string& definition);
    Ref<Manifest> NewManifest(const std::string& name, ManifestTypeEnum type = mtBooklet);
    Ref<Task> NewTask();

    Ref<Topic> TopicByName(const std::string& name) const;
    Ref<quillbox::Topics> SortedTopics() const;
    void SpellAddIgnoreAllWord(const std::string& word);

    // File.
    void Load(const std::string& source);
    std::string Save();
    void LoadFromFile(const std::string& filename);
    bool SaveToDisk(bool checkForNewOrDeletedSSItems = true);
    // True while a project is saved to disk in another type than before: what lies there says nothing then
    // about what is still to be written.
    bool IsConverting() const { return mConverting; }

    // Links and HTML.
    Ref<LinkInfos> GetSuspectLinks();
    std::string ParseURL(const std::string& source) const;
    Ref<HTMLDocument> NewDOM(const std::string& bodyHTML) const;

    // Building.
    Ref<BuildResult> Build(Ref<Document>& passedDoc, const std::string& compilerFileName,
                           bool buildRelatedCMP, bool compile, bool cleanupAfterBuild);
    Ref<BuildResult> BuildBooklets(Ref<Document>& passedDoc);
    std::string DefaultTopicLayout() const;
    Ref<PageTemplate> Template() const;
    void CopySupportFiles();

    // Source control.
    std::string SSProject() const;
    void SetSSProject(const std::string& v) { store(mSSProject, v); }
    bool SSActivated() const;
    void SetSSActivated(bool v);
    Ref<quillbox::VSSDatabase> VSSDatabase() const;
    std::string TopicDataPath() const { return dataPath("TopicData"); }
    std::string ProjectDataPath() const { return dataPath("ProjectData"); }
    std::string TopicDataSpec() const { return SSProject() + "TopicData\\"; }
    std::string ProjectDataSpec() const { return SSProject() + "ProjectData\\"; }
    CheckOutStatusEnum GetCheckOutStatus(const std::string& spec, const std::string& checkOutPath) const;
    Ref<quillbox::VSSItem> VSSItem(const std::string& spec) const;
    bool DoesSSProjectExist(const std::string& spec) const { return hasSSType(spec, VSSITEM_PROJECT); }
    bool DoesSSItemExist(const std::string& spec) const { return hasSSType(spec, VSSITEM_FILE); }
    bool IsProjectFileInSourceSafe() const { return DoesSSItemExist(SSSpec()); }
    bool IsGlossaryInSourceSafe();
    bool IsTOCInSourceSafe() const;
    bool IsManifestsInSourceSafe() const;
    bool IsProjectFolderInSourceSafe() const { return DoesSSProjectExist(SSProject()); }
    std::string LocalSpec() const override { return Filename->FullPath(); }
    std::string SSSpec() const override { return SSProject() + Filename->FileName(); }
    bool CheckOut(bool recurse, const std::string& comment);
    bool CheckIn(bool recurse, const std::string& comment, bool keepCheckedOut);
    bool UndoCheckout(bool recurse);
    bool GetLatestSSVersion(bool recurse);
    bool AddToSourceSafe(bool addTopics = true);
    Ref<quillbox::VSSItem> CreateSourceSafeProjectFolder(const std::string& projectSpec);

  private:
    friend class ProjectReader;
    friend class BuildDriver;

    const ElementTraits& traits() const override;
    Ref<QbProject> elementProject() const override;
    std::string checkOutPath() const override { return Filename->Directory(); }
    void raiseStatusChanged() override { CheckoutStatusChanged(); }

    // The shape of a setter: store, tell, mark.
    template <class T>
    void store(T& field, const T& value) {
        field = value;
        notice();
        SetDirty(true);
    }
    void notice();
    std::string dataPath(const std::string& folder) const;
    bool hasSSType(const std::string& spec, int type) const;
    // Gives the project as parent to a collection.
    template <class T>
    Ref<T> adopt(Ref<T> collection) {
        collection->SetQbProject(self(this));
        return collection;
    }
    void saveDeletions();
    // Takes part in the work of a document, in place of the one before; none ends that.
    void hearDocument(const Ref<Document>& document);

    Ref<quillbox::QbNodes> mQbNodes;
    sigc::connection mNodesConnections[2];
    Ref<quillbox::Manifests> mManifests;
    Ref<quillbox::GlossaryItems> mGlossaryItems;
    std::string mHelpContextIDHeaderFile, mOutputFileName, mTitle, mHelp2Namespace, mHelp2FileID,
        mCMPFileName;
    CompileTypeEnum mCompileType = CompileNone;
    ProjectTypeEnum mProjectType = ProjectTypeSingleFile;
    ProjectTypeEnum mTypeOnDisk = ProjectTypeSingleFile;
    bool mConverting = false;
    bool mDirty = false;
    bool mTopicsDirty = false;
    bool mLoading = false;
    Date mSpellLastCheckDateTime;
    std::string mTemplateName;
    mutable Ref<quillbox::VSSDatabase> mVSSDatabase;
    bool mSSActivated = false;
    std::string mSSProject;
    // Of the build that is running, or that ran last.
    bool mBuilding = false;
    std::string mDefaultTopicLayout;
    std::vector<std::string> mGeneratedFiles;
    sigc::connection mDocumentConnections[2];
};

}  // namespace quillbox
