#include "project/QbProject.h"
#include "booklets/Manifest.h"
#include "booklets/ManifestEntry.h"
#include "build/BuildResult.h"
#include "content/GlossaryItems.h"
#include "content/OtherFiles.h"
#include "content/QbNode.h"
#include "content/Tasks.h"
#include "frame/PublishedClasses.h"
#include "frame/typelib/Describe.h"
#include "headerids/HeaderIds.h"
#include "links/LinkInfo.h"
#include "sourcecontrol/CheckedElement.type.h"
#include "topics/Topic.h"
#include "topics/TopicCategories.h"
#include "topics/Topics.h"

namespace quillbox {

namespace {

using P = QbProject;
using Text = const std::string&;

constexpr const char* kRaises =
    "Raises the event of that name unless it is paused, and marks what has to be saved.";

void describeSettings(Describe<P>& d) {
    d.part("Filename", &P::Filename, "A FileSystemObject object identifying the location of this QbProject.")
        .part("VariableValues", &P::VariableValues,
              "Collection of named values associated with this QbProject")
        .part("Topics", &P::Topics, "The topics, keyed by their Key.")
        .part(
            "TopicCategories", &P::TopicCategories,
            "Collection of Categories for the purposes of logically grouping Topics with the user interface.")
        .part("OtherFiles", &P::OtherFiles, "Collection of non-topic files associated with this QbProject.")
        .part("Tasks", &P::Tasks, "The project's tasks.")
        .part("SpellIgnoreAllWordList", &P::SpellIgnoreAllWordList,
              "A list of words added to the Ignore All list for this project.  This list is shared amongst "
              "the spell "
              "checking components to ensure common project terms are not encountered over and over again.")
        .property("QbNodes", &P::QbNodes, &P::SetQbNodes, "The top level of the contents tree.")
        .property("TopicsDirty", &P::TopicsDirty, &P::SetTopicsDirty,
                  "True if one or more topics have unsaved changes.")
        .property("ProjectType", &P::ProjectType, &P::SetProjectType,
                  "One file, or a file per topic. ProjectTypeSeparateFiles while under source control.")
        .property("SSProject", &P::SSProject, &P::SetSSProject,
                  "The source control folder; reads with a final '/'.")
        .property("SSActivated", &P::SSActivated, &P::SetSSActivated,
                  "True if the project is under source control and the client is installed.")
        .property("Manifests", &P::Manifests, &P::SetManifests, "Booklets and browse sequences.")
        .read("GlossaryItems", &P::GlossaryItems, "The glossary.")
        .property("Help2FileID", &P::Help2FileID, &P::SetHelp2FileID, "File id of a Help 2.0 build.")
        .property("Help2Namespace", &P::Help2Namespace, &P::SetHelp2Namespace,
                  "Namespace of a Help 2.0 build.")
        .property("Title", &P::Title, &P::SetTitle, "Title of the project.")
        .property("OutputFileName", &P::OutputFileName, &P::SetOutputFileName,
                  "Full path of the help file that is built.")
        .property("CompileType", &P::CompileType, &P::SetCompileType,
                  "Kind of help file. Values below 1 read as CompileHTMLHelp1.")
        .property("SpellLastCheckDateTime", &P::SpellLastCheckDateTime, &P::SetSpellLastCheckDateTime,
                  "When spelling was last checked; zero for never.")
        .property("TemplateName", &P::TemplateName, &P::SetTemplateName, "Name of the page template.")
        .property("Name", &P::Name, &P::SetName, "Reads the title. What is written is discarded.")
        .property("CMPFileName", &P::CMPFileName, &P::SetCMPFileName,
                  "Full path of a related Codemark project.")
        .property("Dirty", &P::Dirty, &P::SetDirty,
                  "True if anything has unsaved changes. False clears the marks of all collections.");
}

void describeHub(Describe<P>& d) {
    d.method("FireQbNodeChanged", &P::FireQbNodeChanged, {"QbNode"}, kRaises)
        .method("FireTopicAdded", &P::FireTopicAdded, {"Topic"}, kRaises)
        .method("FireTopicRemoved", &P::FireTopicRemoved, {"Topic"}, kRaises)
        .method("FireQbNodeRemoved", &P::FireQbNodeRemoved, {"QbNode"}, kRaises)
        .method("FireTopicChanged", &P::FireTopicChanged, {"Topic"}, kRaises)
        .method("FireTopicRelatedTopicsChanged", &P::FireTopicRelatedTopicsChanged, {"Topic"}, kRaises)
        .method("FireTopicCategoryAdded", &P::FireTopicCategoryAdded, {"TopicCategory"}, kRaises)
        .method("FireTopicCategoryChanged", &P::FireTopicCategoryChanged, {"TopicCategory"}, kRaises)
        .method("FireTopicCategoryRemoved", &P::FireTopicCategoryRemoved, {"TopicCategory"}, kRaises);
}

void describeWork(Describe<P>& d) {
    d.method("LoadFromFile", &P::LoadFromFile, {"Filename"}, "Load the specified QbProject file.")
        .method("Load", &P::Load, {"Source"}, "Loads the QbProject from appropriate XML string.")
        .read("QualifiedName", &P::QualifiedName, "Used during help file generation only.")
        .method("Save", &P::Save,
                "Save to an XML String. In a separate-files project this writes topic and satellite files on "
                "the way.")
        .method("NewTopic", &P::NewTopic, "A new topic with a key; the caller adds it to Topics.")
        .method("NewTopicCategory", &P::NewTopicCategory, "A new category with a key; the caller adds it.")
        .method("TopicByName", &P::TopicByName, {"Name"},
                "The first topic with that name in any case; none where there is no such topic.")
        .method(
            "GetSuspectLinks", [](P& p) { return p.GetSuspectLinks(); },
            "The links of all topics that could not be proved good.")
        .method("NewOtherFile", &P::NewOtherFile, {"Filename"}, "A new other file; the caller adds it.")
        .method("FireOtherFileAdded", &P::FireOtherFileAdded, {"OtherFile"}, kRaises)
        .method("FireOtherFileRemoved", &P::FireOtherFileRemoved, {"OtherFile"}, kRaises)
        .method("FireTopicRelatedTopicChanged", &P::FireTopicRelatedTopicChanged, {"Topic", "RelatedTopic"},
                kRaises)
        .method("FireTopicSectionChanged", &P::FireTopicSectionChanged, {"Topic", "TopicSection"}, kRaises)
        .method(
            "SpellAddIgnoreAllWord", &P::SpellAddIgnoreAllWord, {"Word"},
            "Adds a word to SpellIgnoreAllWordList; one that is there is passed over. Does not set Dirty.")
        .method("ParseURL", &P::ParseURL, {"Source"},
                "Parses a URL, removing any base element and character codes.")
        .method("NewGlossaryItem", &P::NewGlossaryItem, {"Term", "Definition"},
                "A new glossary item with a key; the caller adds it.")
        .method("FireGlossaryItemAdded", &P::FireGlossaryItemAdded, {"Item"}, kRaises)
        .method("FireGlossaryItemChanged", &P::FireGlossaryItemChanged, {"Item"}, kRaises)
        .method("FireGlossaryItemRemoved", &P::FireGlossaryItemRemoved, {"Item"}, kRaises)
        .method(
            "BuildBooklets", [](P& p, Ref<Document>& doc) { return p.BuildBooklets(doc); },
            {optional("PassedDoc")},
            "Builds any PDF Booklets (stored in the Manifests collection).  Manifests must have the Include "
            "flag set "
            "to True to be built by this method.")
        .method("Build", &P::Build,
                {optional("PassedDoc"),
                 {"CompilerFileName", ""},
                 {"BuildRelatedCMP", false},
                 {"Compile", true},
                 {"CleanupAfterBuild", true}},
                "Builds a Help File for this project.")
        .method("DefaultTopicLayout", &P::DefaultTopicLayout,
                "Returns the Default Topic Layout for the selected Template.")
        .method("NewManifest", &P::NewManifest, {"Name", {"ManifestType", static_cast<int>(mtBooklet)}},
                "A new booklet or browse sequence with a key; the caller adds it.")
        .method("FireManifestChanged", &P::FireManifestChanged, {"Manifest"}, kRaises)
        .method("FireTopicCheckoutStatusChanged", &P::FireTopicCheckoutStatusChanged, {"Topic"}, kRaises)
        .method("NewDOM", &P::NewDOM, {"BodyHTML"},
                "Creates and returns a HTMLDocument object from the supplied BodyHTML.  The returned DOM "
                "contains the "
                "correct Base reference.")
        .method("FireManifestEntryChanged", &P::FireManifestEntryChanged, {"Manifest", "Entry"}, kRaises)
        .read("SortedTopics", &P::SortedTopics, "Returns a Topics collection sorted by Topic name.");
}

void describeSourceControl(Describe<P>& d) {
    d.read("TopicDataPath", &P::TopicDataPath, "The folder of the topic files, with its trailing separator.")
        .read("ProjectDataPath", &P::ProjectDataPath,
              "The folder of the collection files, with its trailing separator.")
        .read("ProjectDataSpec", &P::ProjectDataSpec, "The source control spec of that folder.")
        .read("TopicDataSpec", &P::TopicDataSpec, "The source control spec of the topic folder.")
        .method("GetCheckOutStatus", &P::GetCheckOutStatus, {"Spec", "CheckOutPath"},
                "The state of an item. The path is the element's folder, with its trailing separator.")
        .method("VSSItem", &P::VSSItem, {"Spec"}, "An item of source control; none where that fails.")
        .method(
            "CheckOut", [](P& p, bool recurse, Text comment) { return p.CheckOut(recurse, comment); },
            {{"Recurse", false}, {"Comment", "Checked out by Quillbox"}},
            "Checks the project file out; with Recurse the collections and topics too.")
        .method(
            "CheckIn",
            [](P& p, bool recurse, Text comment, bool keep) { return p.CheckIn(recurse, comment, keep); },
            {{"Recurse", false}, {"Comment", kCheckInComment}, {"KeepCheckedOut", true}},
            "Checks the project file in; with Recurse the collections and topics too.")
        .method(
            "UndoCheckout", [](P& p, bool recurse) { return p.UndoCheckout(recurse); }, {{"Recurse", false}},
            "Undoes the check-out of the project file; with Recurse that of the topics too.")
        .method("GetLatestSSVersion", &P::GetLatestSSVersion, {{"Recurse", false}},
                "Renews the project file; with Recurse the topics too.");
    checkedMembers<bool>(d, {"CheckOutStatus"});
    d.read(
        "CheckedOut", [](P& p) { return p.IsCheckedOut(); }, "True if the project file is checked out here.");
    checkedMembers<bool>(d, {"IsDifferent"});
    d.method("AddToSourceSafe", &P::AddToSourceSafe, {{"AddTopics", true}},
             "Brings the project under source control.");
    checkedMembers<bool>(d, {"ReadOnly"});
}

void describeRest(Describe<P>& d) {
    d.method("FireProjectElementCheckOutStatusChanged", &P::FireProjectElementCheckOutStatusChanged,
             {"ProjectElementType"}, kRaises)
        .read("ProjectDirty", &P::ProjectDirty,
              "this property returns the dirty status of the main project file only.")
        .method("FireDirtyStateChanged", &P::FireDirtyStateChanged,
                "Raises DirtyStateChanged unless a load is running.")
        .method(
            "SaveToDisk", &P::SaveToDisk, {{"CheckForNewOrDeletedSSItems", true}},
            "Saves this project to the disk file specified by the FileName property.  Automatically creates "
            "a backup "
            "copy of the project file when saving and saves all satellite files (when SourceSafe integration "
            "activated).")
        .method("FireTaskAdded", &P::FireTaskAdded, {"Task"}, kRaises)
        .method("FireTaskChanged", &P::FireTaskChanged, {"Task"}, kRaises)
        .method("FireTaskRemoved", &P::FireTaskRemoved, {"Task"}, kRaises)
        .method("NewTask", &P::NewTask, "A new task with a key; the caller adds it.")
        .read("IsProjectFileInSourceSafe", &P::IsProjectFileInSourceSafe,
              "True if source control has the project file.")
        .read("IsGlossaryInSourceSafe", &P::IsGlossaryInSourceSafe,
              "True if source control has the glossary.")
        .read("IsTOCInSourceSafe", &P::IsTOCInSourceSafe, "True if source control has the contents tree.")
        .read("IsManifestsInSourceSafe", &P::IsManifestsInSourceSafe,
              "True if source control has the manifests.")
        .read("IsProjectFolderInSourceSafe", &P::IsProjectFolderInSourceSafe,
              "True if source control has the project's folder.")
        .method("DoesSSProjectExist", &P::DoesSSProjectExist, {"Spec"}, "True if the spec names a folder.")
        .method("DoesSSItemExist", &P::DoesSSItemExist, {"Spec"}, "True if the spec names a file.")
        .method("FireOtherFileCheckoutStatusChanged", &P::FireOtherFileCheckoutStatusChanged, {"OtherFile"},
                kRaises)
        .field("IncrementingValues", &P::IncrementingValues, "Counters of the running build; none otherwise.")
        .property("HelpContextIDHeaderFile", &P::HelpContextIDHeaderFile, &P::SetHelpContextIDHeaderFile,
                  "Path of the C header with the help context identifiers.")
        .read("HeaderIds", &P::HeaderIds,
              "Returns a collection of HeaderIds contained in the header file identified by the "
              "HelpContextIDHeaderFile property; none where that is empty.")
        .read("VSSDatabase", &P::VSSDatabase,
              "The session with source control; none without the client or a login.")
        .method("CreateSourceSafeProjectFolder", &P::CreateSourceSafeProjectFolder, {"ProjectSpec"},
                "Makes a chain of source control folders and gives the last; none where that fails.")
        .method("CopySupportFiles", &P::CopySupportFiles,
                "Copys the standard files associated with the selected Template to the output directory "
                "(this is required "
                "in order for Topic preview in Quillbox to work properly.  This is done automatically as "
                "part of the "
                "build process so does not need to be called prior to build.")
        .read("Template", &P::Template, "The page template of the project; none where no template fits.")
        .property("PauseEvents", &P::PauseEvents, &P::SetPauseEvents,
                  "Pauses the events of the six collections of content. True only while all six are paused.");
}

void describeEvents(Describe<P>& d) {
    d.event("Changed", 1, &P::Changed)
        .event("TopicAdded", 2, &P::TopicAdded, {"Topic"})
        .event("TopicRemoved", 3, &P::TopicRemoved, {"Topic"})
        .event("TopicChanged", 4, &P::TopicChanged, {"Topic"})
        .event("TopicSectionChanged", 5, &P::TopicSectionChanged, {"Topic", "TopicSection"})
        .event("TopicRelatedTopicChanged", 6, &P::TopicRelatedTopicChanged, {"Topic", "RelatedTopic"})
        .event("TopicRelatedTopicsChanged", 7, &P::TopicRelatedTopicsChanged, {"Topic"})
        .event("QbNodeChanged", 8, &P::QbNodeChanged, {"QbNode"})
        .event("QbNodeRemoved", 9, &P::QbNodeRemoved, {"QbNode"})
        .event("TopicCategoryAdded", 10, &P::TopicCategoryAdded, {"TopicCategory"})
        .event("TopicCategoryChanged", 11, &P::TopicCategoryChanged, {"TopicCategory"})
        .event("TopicCategoryRemoved", 12, &P::TopicCategoryRemoved, {"TopicCategory"})
        .event("OtherFileAdded", 13, &P::OtherFileAdded, {"OtherFile"})
        .event("OtherFileRemoved", 14, &P::OtherFileRemoved, {"OtherFile"})
        .event("CheckoutStatusChanged", 15, &P::CheckoutStatusChanged)
        .event("TopicCheckoutStatusChanged", 16, &P::TopicCheckoutStatusChanged, {"Topic"})
        .event("OtherFileCheckoutStatusChanged", 17, &P::OtherFileCheckoutStatusChanged, {"OtherFile"})
        .event("ProjectElementCheckOutStatusChanged", 18, &P::ProjectElementCheckOutStatusChanged,
               {"ProjectElementType"})
        .event("BookletBuildProgress", 19, &P::BookletBuildProgress, {"Status"})
        .event("TopicTemplateChanged", 20, &P::TopicTemplateChanged, {"NewTemplateName"})
        .event("GlossaryItemAdded", 21, &P::GlossaryItemAdded, {"Item"})
        .event("GlossaryItemRemoved", 22, &P::GlossaryItemRemoved, {"Item"})
        .event("GlossaryItemChanged", 23, &P::GlossaryItemChanged, {"Item"})
        .event("TaskAdded", 24, &P::TaskAdded, {"Task"})
        .event("TaskChanged", 25, &P::TaskChanged, {"Task"})
        .event("TaskRemoved", 26, &P::TaskRemoved, {"Task"})
        .event("ManifestChanged", 27, &P::ManifestChanged, {"Manifest"})
        .event("ManifestEntryChanged", 28, &P::ManifestEntryChanged, {"Manifest", "ManifestEntry"})
        .event("LinkCheckStartTopic", 29, &P::LinkCheckStartTopic, {"TopicIndex"})
        .event("DirtyStateChanged", 30, &P::DirtyStateChanged)
        .event("BuildErrorsOrWarnings", 31, &P::BuildErrorsOrWarnings, {"doc", "res", "Cancel"})
        .event("SourceSafeProgress", 32, &P::SourceSafeProgress, {"Caption"})
        .event("LoadProgress", 33, &P::LoadProgress, {"Caption"});
}

}  // namespace

ClassInfo describeQbProject() {
    Describe<P> d("QbProject",
                  "One help project: its content, its settings, its events, its file and its builds.");
    d.creatable();
    describeSettings(d);
    describeHub(d);
    describeWork(d);
    describeSourceControl(d);
    describeRest(d);
    describeEvents(d);
    return d.done();
}

}  // namespace quillbox
