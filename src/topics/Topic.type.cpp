#include "topics/Topic.h"

#include "frame/PublishedClasses.h"
#include "frame/typelib/Describe.h"
#include "frame/typelib/XmlMembers.h"
#include "links/LinkInfo.h"
#include "project/QbProject.h"
#include "sourcecontrol/CheckedElement.type.h"
#include "topics/Keyword.h"
#include "topics/TopicCategories.h"
#include "topics/TopicSectionDefs.h"
#include "topics/TopicStatuses.h"
#include "topics/Topics.h"

namespace quillbox {

ClassInfo describeTopic() {
    using T = Topic;
    Describe<T> d("Topic", "Represents a single topic in a given QbProject.");
    d.creatable()
        .field("NewTopicFlag", &T::NewTopicFlag, "True until the topic has been loaded or saved.")
        .part("Keywords", &T::Keywords, "Collection of keywords associated with this topic.")
        .field("Key", &T::Key,
               "Key for this topic, unique within the QbProject and un-changing after topic creation.")
        .part("TopicSections", &T::TopicSections,
              "Collection of named TopicSections objects, containing the actual content of this topic.")
        .field("RuntimeEntryNumber", &T::RuntimeEntryNumber,
               "*** Used internally by Quillbox to track booklet numbering ***")
        .field("RuntimePageNumberStart", &T::RuntimePageNumberStart,
               "First page in the booklet that was built last.")
        .field("RuntimePageNumberEnd", &T::RuntimePageNumberEnd,
               "Last page in the booklet that was built last.")
        .property("HelpContextIDs", &T::HelpContextIDs, &T::SetHelpContextIDs,
                  "Comma delimited help context identifiers (HTML Help 1.x only).")
        .property("IncludeInHelpFile", &T::IncludeInHelpFile, &T::SetIncludeInHelpFile,
                  "False for topics meant for booklets only.")
        .property("AutoGenerateIndexEntry", &T::AutoGenerateIndexEntry, &T::SetAutoGenerateIndexEntry,
                  "Make an index entry from the title.")
        .property("AllStylesheets", &T::AllStylesheets, &T::SetAllStylesheets,
                  "True if the topic uses all the project's stylesheets; setting it throws a selection away.")
        .read("StyleSheets", &T::StyleSheets, "The stylesheets selected for this topic.")
        .property("LayoutName", &T::LayoutName, &T::SetLayoutName,
                  "Layout; empty means the template's default layout.")
        .property("Dirty", &T::Dirty, &T::SetDirty, "Changed since last saved.")
        .property("Notes", &T::Notes, &T::SetNotes, "Free text notes.")
        .property("ModifiedOn", &T::ModifiedOn, &T::SetModifiedOn, "When the topic was last modified.")
        .property("CreatedOn", &T::CreatedOn, &T::SetCreatedOn, "When the topic was created.")
        .property("Status", &T::Status, &T::SetStatus, "Name of a TopicStatus, or any other text.")
        .property("PauseEvents", &T::PauseEvents, &T::SetPauseEvents,
                  "Set to True, to prevent this topic from firing change notice events.  Use this property "
                  "to prevent "
                  "frequent UI updates during large updates.")
        .property("TopicCategory", &T::TopicCategory, &T::SetTopicCategory,
                  "The category; none where none is set.")
        .property("IsDefault", &T::IsDefault, &T::SetIsDefault, "This is the project's default topic.")
        .property("ContentsTitle", &T::ContentsTitle, &T::SetContentsTitle,
                  "Title in the table of contents; the title where none is set.")
        .read("InternalContentsTitle", &T::InternalContentsTitle,
              "Returns blank if not specific Table of Contents title is set.")
        .method("AddKeyword", &T::AddKeyword, {"Keyword"}, "Appends a keyword; duplicates are allowed.")
        .property("Name", &T::Name, &T::SetName, "Name of the topic, used as its output file name stem.")
        .property("Title", &T::Title, &T::SetTitle, "Page title.");
    loadMember(d);
    saveMember(d);
    d.property("QbProject", &T::QbProject, &T::SetQbProject, "A handle to the parent QbProject.")
        .read("RelatedTopics", &T::RelatedTopics, "The see-also links of this topic.")
        .read("QualifiedName", &T::QualifiedName, "The name.")
        .method("FireChanged", &T::FireChanged, "Tells the project of a change, and stamps the topic.")
        .method("GetSuspectLinks", &T::GetSuspectLinks, {optional("AddToCollection"), optional("DOM")},
                "The links of the body that could not be proved good, added to the collection given.")
        .property("TopicSectionData", &T::TopicSectionData, &T::SetTopicSectionData, {"Key"},
                  "The data of a section; empty where there is no such section. Writing makes the section.")
        .method("NewTopicSection", &T::NewTopicSection, {"Key", {"Data", ""}},
                "Makes a section and adds it. Fails for an unknown key and for one that is there.")
        .method("FireRelatedTopicChanged", &T::FireRelatedTopicChanged, {"RelatedTopic"},
                "Tells the project of a change of a see-also link.")
        .method("FireTopicSectionChanged", &T::FireTopicSectionChanged, {"TopicSection"},
                "Tells the project of a change of a section.")
        .method("AddStyleSheet", &T::AddStyleSheet, {"Filename"},
                "Selects a stylesheet; fails for one that is selected.")
        .method("RemoveStyleSheet", &T::RemoveStyleSheet, {"Filename"},
                "Takes a stylesheet out of the selection.")
        .method("IncludeStylesheet", &T::IncludeStylesheet, {"RelativeFileName"},
                "True if the topic uses the stylesheet.");
    constexpr const char* comment = "Checked Out by Quillbox";
    checkedMembers<bool>(
        d, {"LocalSpec", "SSSpec", "CheckOutStatus", "CheckOut", "CheckedOutToUser", "ReadOnly"}, comment);
    d.read("CheckedOut", &T::CheckedOut, "True if this topic is checked out here or is new.");
    checkedMembers<bool>(d, {"GetLatestSSVersion", "CheckIn", "IsDifferent", "UndoCheckout", "IsCheckedOut"},
                         comment);
    d.method("AddToSourceSafe", &T::AddToSourceSafe,
             "Adds the topic's file to source control. Always gives False.")
        .event("TopicSectionDataChanged", 1, &T::TopicSectionDataChanged, {"TopicSection"})
        .event("TopicStyleSheetAdded", 2, &T::TopicStyleSheetAdded, {"Filename"})
        .event("TopicStyleSheetRemoved", 3, &T::TopicStyleSheetRemoved, {"Filename"})
        .event("TopicStyleSheetsChanged", 4, &T::TopicStyleSheetsChanged)
        .event("CheckoutStatusChanged", 5, &T::CheckoutStatusChanged);
    return d.done();
}

ClassInfo describeTopics() {
    Describe<Topics> d("Topics", "The topics of a project in their order.");
    d.creatable()
        .field("PauseEvents", &Topics::PauseEvents, "Set to True to prevent this collection raising events")
        .property("QbProject", &Topics::QbProject, &Topics::SetQbProject,
                  "A handle to the parent QbProject.");
    return collectionMembers(d, "The topic at a position or key; none for an unknown one.", &Topics::Add)
        .done();
}

ClassInfo describeTopicCategory() {
    using T = TopicCategory;
    Describe<T> d("TopicCategory", "A logical grouping of topics");
    d.creatable()
        .field("Key", &T::Key, "Unique identifier for this Topic Category, within the QbProject.")
        .property("Name", &T::Name, &T::SetName, "Name of the Category.")
        .property("QbProject", &T::QbProject, &T::SetQbProject, "A handle to the parent QbProject.");
    loadMember(d);
    return saveMember(d).done();
}

ClassInfo describeTopicCategories() {
    using T = TopicCategories;
    Describe<T> d("TopicCategories", "The categories of a project.");
    d.creatable()
        .field("PauseEvents", &T::PauseEvents, "Set to True to prevent this collection raising events")
        .property("QbProject", &T::QbProject, &T::SetQbProject, "A handle to the parent QbProject.");
    return collectionMembers(d, "The category at a position or key; none for an unknown one.", &T::Add)
        .method("TopicCategoryByName", &T::TopicCategoryByName, {"Name"},
                "The first category with that name in any case; none where there is no such category.")
        .done();
}

ClassInfo describeTopicStatus() {
    using T = TopicStatus;
    Describe<T> d("TopicStatus", "A topic status type");
    d.creatable()
        .field("Name", &T::Name, "Name of the status.")
        .field("Caption", &T::Caption, "Caption to describe this status")
        .field("Icon", &T::Icon, "Icon file to use for this status.");
    loadMember(d);
    return saveMember(d).done();
}

ClassInfo describeTopicStatuses() {
    using T = TopicStatuses;
    Describe<T> d("TopicStatuses", "The statuses that a topic may have on this machine.");
    d.creatable();
    collectionMembers(d, "The status at a position or of a name; none for an unknown one.", &T::Add);
    loadMember(d);
    return saveMember(d).done();
}

ClassInfo describeKeyword() {
    return Describe<Keyword>("Keyword", "One entry of the index.")
        .unpublished()
        .field("Name", &Keyword::Name, "The text of the entry.")
        .field("QualifiedName", &Keyword::QualifiedName, "The name of the topic that it leads to.")
        .done();
}

}  // namespace quillbox
