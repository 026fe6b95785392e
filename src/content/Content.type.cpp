#include "content/GlossaryItems.h"
#include "content/OtherFiles.h"
#include "content/QbNode.h"
#include "content/Tasks.h"
#include "frame/PublishedClasses.h"
#include "frame/typelib/Describe.h"
#include "frame/typelib/XmlMembers.h"
#include "sourcecontrol/CheckedElement.type.h"
#include "topics/Topic.h"

namespace quillbox {

namespace {

constexpr const char* kPause = "Set to True to prevent the project raising events of this collection";
constexpr const char* kParent = "A handle to the parent QbProject.";
constexpr const char* kKey = "Unique identifier within the project.";

template <class T>
void dirtyMember(Describe<T>& d) {
    d.property("Dirty", &T::Dirty, &T::SetDirty, "True if the collection has unsaved changes.");
}

template <class T>
void projectMember(Describe<T>& d) {
    d.property("QbProject", &T::QbProject, &T::SetQbProject, kParent);
}

// The item goes in and out, and comes back as it was.
template <class T>
constexpr auto kAdd = [](T& list, Ref<typename T::ItemType>& item, const Value& key, const Value& before,
                         const Value& after) { list.Add(item, key, before, after); };

}  // namespace

ClassInfo describeQbNode() {
    using T = QbNode;
    Describe<T> d("QbNode", "One entry of the table of contents.");
    d.creatable()
        .field("Key", &T::Key, kKey)
        .part("ChildNodes", &T::ChildNodes, "The nodes below this one.")
        .property("CMPFileName", &T::CMPFileName, &T::SetCMPFileName,
                  "Codemark project of an ntCMContents node; not saved.")
        .property("StandardURL", &T::StandardURL, &T::SetStandardURL, "URL of an ntStandard node.")
        .property("TopicID", &T::TopicID, &T::SetTopicID, "Key of the topic that the node points to.")
        .property("SubContentsFileName", &T::SubContentsFileName, &T::SetSubContentsFileName,
                  "Contents file that an ntSubContents node merges.")
        .property("Icon", &T::Icon, &T::SetIcon, "Icon number; -1 is the default icon.")
        .property("CaptionText", &T::CaptionText, &T::SetCaptionText, "Caption of its own.")
        .property("CaptionType", &T::CaptionType, &T::SetCaptionType, "Where the caption comes from.")
        .property("QbNodeType", &T::QbNodeType, &T::SetQbNodeType, "What the node points to.")
        .property("QbNodes", &T::QbNodes, &T::SetQbNodes, "The collection that holds this node.")
        .property("ParentNode", &T::ParentNode, &T::SetParentNode, "The node above; none at the top level.");
    saveMember(d);
    loadMember(d);
    return d.read("Topic", &T::Topic, "The topic that the node points to; none for an unknown key.")
        .method("CreateNodeDef", &T::CreateNodeDef, {"Parent", "TOCDefinition"},
                "Adds this subtree to the contents that the document engine writes.")
        .done();
}

ClassInfo describeQbNodes() {
    using T = QbNodes;
    Describe<T> d("QbNodes", "A level of the table of contents.");
    d.creatable();
    dirtyMember(d);
    d.method(
         "AllNodes", [](T& nodes, Ref<T>& col) { return nodes.AllNodes(col); }, {optional("col")},
         "The nodes of this level and all below, parents before their children, added to the collection "
         "given.")
        .method("NodesForTopic", &T::NodesForTopic, {"T", optional("col")},
                "The nodes of this level and all below that point to a topic.");
    projectMember(d);
    collectionMembers(d, "The node of a key on this level or below; none for an unknown one.", kAdd<T>);
    saveMember(d);
    loadMember(d);
    d.method("NewNode", &T::NewNode, {"Parent"},
             "A new node at the end of this level; Parent is only its handle.");
    return checkedMembers<Value>(
               d, {"LocalSpec", "SSSpec", "CheckOut", "CheckIn", "GetLatestVersion", "IsCheckedOut",
                   "CheckOutStatus", "ReadOnly", "IsDifferent", "UndoCheckout"})
        .field("PauseEvents", &T::PauseEvents, kPause)
        .event("ItemAdded", 1, &T::ItemAdded, {"Item"})
        .event("ItemRemoved", 2, &T::ItemRemoved, {"Item"})
        .done();
}

ClassInfo describeGlossaryItem() {
    using T = GlossaryItem;
    Describe<T> d("GlossaryItem", "A term and its definition.");
    d.creatable()
        .field("Key", &T::Key, kKey)
        .property("Definition", &T::Definition, &T::SetDefinition, "What the term means.")
        .property("Term", &T::Term, &T::SetTerm, "The term being defined.");
    projectMember(d);
    loadMember(d);
    return saveMember(d).done();
}

ClassInfo describeGlossaryItems() {
    using T = GlossaryItems;
    Describe<T> d("GlossaryItems", "The glossary of a project.");
    d.creatable();
    dirtyMember(d);
    projectMember(d);
    collectionMembers(d, "The item at a position or key; none for an unknown one.", kAdd<T>)
        .method("ItemByTerm", &T::ItemByTerm, {"Term"},
                "The first item with that term in any case; none where there is no such item.");
    checkedMembers<Value>(d, {"LocalSpec", "SSSpec", "CheckOut", "IsDifferent", "UndoCheckout", "CheckIn",
                              "GetLatestVersion", "IsCheckedOut", "CheckOutStatus"});
    saveMember(d);
    loadMember(d);
    return checkedMembers<Value>(d, {"ReadOnly"}).field("PauseEvents", &T::PauseEvents, kPause).done();
}

ClassInfo describeTask() {
    using T = Task;
    Describe<T> d("Task", "Something that an author has to do.");
    d.creatable().property("PauseEvents", &T::PauseEvents, &T::SetPauseEvents,
                           "Holds back notices and stamps.");
    projectMember(d);
    d.property("ModifiedBy", &T::ModifiedBy, &T::SetModifiedBy, "Who last modified it.")
        .property("ModifiedOn", &T::ModifiedOn, &T::SetModifiedOn,
                  "When it was last modified; zero for never.")
        .property("CreatedBy", &T::CreatedBy, &T::SetCreatedBy, "Who created it.")
        .property("CreatedOn", &T::CreatedOn, &T::SetCreatedOn, "When it was created.")
        .property("Status", &T::Status, &T::SetStatus, "Status, any text.")
        .property("TopicID", &T::TopicID, &T::SetTopicID, "Key of the topic that the task is about.")
        .property("AssignedTo", &T::AssignedTo, &T::SetAssignedTo, "User the task is assigned to.")
        .property("Notes", &T::Notes, &T::SetNotes, "Notes.")
        .property("Title", &T::Title, &T::SetTitle, "Title.")
        .property("Priority", &T::Priority, &T::SetPriority, "Priority, any text.")
        .field("Key", &T::Key, kKey);
    loadMember(d);
    saveMember(d);
    return d.method("FireChanged", &T::FireChanged, "Tells the project of a change, and stamps the task.")
        .done();
}

ClassInfo describeTasks() {
    using T = Tasks;
    Describe<T> d("Tasks", "The tasks of a project.");
    d.creatable();
    dirtyMember(d);
    projectMember(d);
    collectionMembers(d, "The task at a position or key; none for an unknown one.", kAdd<T>);
    loadMember(d);
    saveMember(d);
    return checkedMembers<Value>(
               d, {"ReadOnly", "LocalSpec", "SSSpec", "CheckOut", "IsDifferent", "UndoCheckout", "CheckIn",
                   "GetLatestVersion", "IsCheckedOut", "CheckOutStatus"})
        .field("PauseEvents", &T::PauseEvents, kPause)
        .done();
}

ClassInfo describeOtherFile() {
    using T = OtherFile;
    Describe<T> d("OtherFile", "A file of the project that is no topic.");
    d.creatable().property("Filename", &T::Filename, &T::SetFilename,
                           "The file; holds the full name when at rest.");
    projectMember(d);
    loadMember(d);
    saveMember(d);
    d.read("IsImage", &T::IsImage, "True for png, bmp, gif, jpg and pcx files.")
        .read("RelativeFileName", &T::RelativeFileName,
              "The name relative to the project file; the full name where it cannot be made relative.")
        .read("IsStyleSheet", &T::IsStyleSheet, "True for css files.");
    constexpr const char* comment = "Checked Out by Quillbox";
    checkedMembers<bool>(
        d, {"LocalSpec", "SSSpec", "CheckOutStatus", "CheckOut", "CheckedOutToUser", "ReadOnly"}, comment);
    d.read("CheckedOut", &T::CheckedOut, "True if this file is checked out here.");
    checkedMembers<bool>(d, {"GetLatestSSVersion", "CheckIn", "IsDifferent", "UndoCheckout", "IsCheckedOut"},
                         comment);
    return d
        .method("AddToSourceSafe", &T::AddToSourceSafe, "Adds the file to source control and checks it out.")
        .field("NewFlag", &T::NewFlag, "Added since the project was last saved.")
        .event("CheckoutStatusChanged", 1, &T::CheckoutStatusChanged)
        .done();
}

ClassInfo describeOtherFiles() {
    using T = OtherFiles;
    Describe<T> d("OtherFiles", "The files of a project that are no topics.");
    d.creatable().field("PauseEvents", &T::PauseEvents,
                        "While True there are no events and no record of deletions.");
    projectMember(d);
    return collectionMembers(d, "The file at a position, or of a key or file name; none for an unknown one.",
                             kAdd<T>)
        .method("Exists", &T::Exists, {"Filename"},
                "True if a file of that name in any case is in the collection.")
        .done();
}

}  // namespace quillbox
