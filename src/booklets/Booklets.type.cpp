#include <cmath>

#include "booklets/Manifest.h"
#include "booklets/ManifestEntry.h"
#include "frame/PublishedClasses.h"
#include "frame/typelib/Describe.h"
#include "frame/typelib/XmlMembers.h"
#include "sourcecontrol/CheckedElement.type.h"
#include "topics/Topic.h"

namespace quillbox {

ClassInfo describeManifest() {
    using T = Manifest;
    Describe<T> d("Manifest", "An ordered tree of references to topics: a booklet or a browse sequence.");
    d.creatable()
        .field("Key", &T::Key, "Unique identifier within the project.")
        .part("BookletProperties", &T::BookletProperties, "How the booklet is printed.")
        .property("IncludeFlag", &T::IncludeFlag, &T::SetIncludeFlag,
                  "True if BuildBooklets builds this manifest.")
        .property("ManifestType", &T::ManifestType, &T::SetManifestType, "The kind.")
        .property("Notes", &T::Notes, &T::SetNotes, "The user's notes.")
        .property("Name", &T::Name, &T::SetName, "Identifying name.")
        .read("Entries", &T::Entries, "The top level of the outline.")
        .property("QbProject", &T::QbProject, &T::SetQbProject, "A handle to the parent QbProject.")
        .method("NewManifestEntry", &T::NewManifestEntry, {"Topic", "Title"},
                "A new entry with a key; the caller adds it where it belongs.");
    loadMember(d);
    saveMember(d);
    return d.read("QualifiedName", &T::QualifiedName, "The name of the page that a build makes.")
        .method("FireManifestEntryAdded", &T::FireManifestEntryAdded, {"Entry"}, "Raises ManifestEntryAdded.")
        .method("FireManifestEntryRemoved", &T::FireManifestEntryRemoved, {"Entry"},
                "Raises ManifestEntryRemoved.")
        .method("FireManifestEntryChanged", &T::FireManifestEntryChanged, {"Entry"},
                "Raises ManifestEntryChanged.")
        .method("FireChanged", &T::FireChanged, "Raises Changed and tells the project.")
        .method("EntryByTopic", &T::EntryByTopic, {"T"},
                "The first entry of a topic; none where there is none.")
        .event("Changed", 1, &T::Changed)
        .event("ManifestEntryAdded", 2, &T::ManifestEntryAdded, {"Entry"})
        .event("ManifestEntryRemoved", 3, &T::ManifestEntryRemoved, {"Entry"})
        .event("ManifestEntryChanged", 4, &T::ManifestEntryChanged, {"Entry"})
        .done();
}

ClassInfo describeManifests() {
    using T = Manifests;
    Describe<T> d("Manifests", "The booklets and browse sequences of a project.");
    d.creatable()
        .property("Dirty", &T::Dirty, &T::SetDirty, "True if the collection has unsaved changes.")
        .property("QbProject", &T::QbProject, &T::SetQbProject, "A handle to the parent QbProject.");
    collectionMembers(d, "The manifest at a position or key; none for an unknown one.", &T::Add);
    checkedMembers<Value>(d, {"LocalSpec", "SSSpec", "CheckOut", "CheckIn", "GetLatestVersion",
                              "IsCheckedOut", "CheckOutStatus"});
    saveMember(d);
    loadMember(d);
    return checkedMembers<Value>(d, {"ReadOnly", "IsDifferent", "UndoCheckout"}).done();
}

ClassInfo describeManifestEntry() {
    using T = ManifestEntry;
    Describe<T> d("ManifestEntry", "One entry of the outline of a manifest.");
    d.creatable()
        .field("Key", &T::Key, "Unique identifier of the entry.")
        .part("ChildEntries", &T::ChildEntries, "The entries below this one.")
        .property("PageBreakAfter", &T::PageBreakAfter, &T::SetPageBreakAfter,
                  "Page break behind the entry; not saved.")
        .property("PageBreakBefore", &T::PageBreakBefore, &T::SetPageBreakBefore,
                  "Page break before the entry.")
        .property("ParentEntry", &T::ParentEntry, &T::SetParentEntry,
                  "The entry above; none at the top level.")
        .property("Title", &T::Title, &T::SetTitle, "Title of its own; empty means the topic's title.")
        .read("RuntimeTitle", &T::RuntimeTitle, "The title, else the topic's; empty where there is neither.")
        .property("Manifest", &T::Manifest, &T::SetManifest, "The manifest that owns the entry.")
        .property("Topic", &T::Topic, &T::SetTopic, "The topic; none where the key names no topic.");
    loadMember(d);
    return saveMember(d)
        .property("RuntimePageNumberEnd", &T::RuntimePageNumberEnd, &T::SetRuntimePageNumberEnd, "Last page.")
        .property("RuntimePageNumberStart", &T::RuntimePageNumberStart, &T::SetRuntimePageNumberStart,
                  "First page.")
        .property("RuntimeEntryNumber", &T::RuntimeEntryNumber, &T::SetRuntimeEntryNumber,
                  "Number, such as 2.1.")
        .field("RuntimePageBreak", &T::RuntimePageBreak, "Flag of a running build.")
        .done();
}

ClassInfo describeManifestEntries() {
    using T = ManifestEntries;
    Describe<T> d("ManifestEntries", "A level of the outline of a manifest.");
    d.creatable().property("Parent", &T::Parent, &T::SetParent,
                           "The manifest at the top level, the entry below it.");
    return collectionMembers(d, "The entry of a key on this level or below; none for an unknown one.",
                             &T::Add)
        .read(
            "AllEntries", [](T& entries, Ref<T>& col) { return entries.AllEntries(col); }, {optional("col")},
            "The entries of this level and all below, parents before their children, added to the collection "
            "given.")
        .done();
}

namespace {

// A setter that takes what a file can hold.
auto length(void (BookletProperties::*set)(float)) {
    return [set](BookletProperties& properties, float value) {
        if (!std::isfinite(value)) throw AutomationError("Overflow: the number does not fit a length");
        (properties.*set)(value);
    };
}

}  // namespace

ClassInfo describeBookletProperties() {
    using T = BookletProperties;
    constexpr const char* kScrap =
        "Scrap for such links; empty means the template's own, {None} leaves the link.";
    Describe<T> d("BookletProperties", "How a booklet is printed. Lengths are in millimetres.");
    d.creatable()
        .property("Title", &T::Title, &T::SetTitle, "Booklet title.")
        .property("EntryNumbering", &T::EntryNumbering, &T::SetEntryNumbering,
                  "What is numbered in the output.")
        .property("GenerateTOC", &T::GenerateTOC, &T::SetGenerateTOC, "Generate a table of contents.")
        .property("OutputFileName", &T::OutputFileName, &T::SetOutputFileName, "Full path of the PDF.")
        .property("Manifest", &T::Manifest, &T::SetManifest, "The manifest that owns the properties.")
        .property("PaperSize", &T::PaperSize, &T::SetPaperSize, "Paper size.")
        .property("MarginBottom", &T::MarginBottom, length(&T::SetMarginBottom), "Bottom margin.")
        .property("MarginTop", &T::MarginTop, length(&T::SetMarginTop), "Top margin.")
        .property("MarginRight", &T::MarginRight, length(&T::SetMarginRight), "Right margin.")
        .property("MarginLeft", &T::MarginLeft, length(&T::SetMarginLeft), "Left margin.")
        .property("UnPrintableBottom", &T::UnPrintableBottom, length(&T::SetUnPrintableBottom),
                  "Unprintable strip, bottom.")
        .property("UnPrintableTop", &T::UnPrintableTop, length(&T::SetUnPrintableTop),
                  "Unprintable strip, top.")
        .property("UnPrintableRight", &T::UnPrintableRight, length(&T::SetUnPrintableRight),
                  "Unprintable strip, right.")
        .property("UnPrintableLeft", &T::UnPrintableLeft, length(&T::SetUnPrintableLeft),
                  "Unprintable strip, left.")
        .property("FooterHTML", &T::FooterHTML, &T::SetFooterHTML, "HTML for each page footer.")
        .property("HeaderHTML", &T::HeaderHTML, &T::SetHeaderHTML, "HTML for each page header.")
        .property("PageBreaks", &T::PageBreaks, &T::SetPageBreaks, "Page break behaviour.")
        .property("CoverpageTopicID", &T::CoverpageTopicID, &T::SetCoverpageTopicID,
                  "Key of the cover page's topic.")
        .property("TemplateName", &T::TemplateName, &T::SetTemplateName, "Name of the print template.");
    loadMember(d);
    return saveMember(d)
        .read("Template", &T::Template, "The print template; none where no such template is installed.")
        .read("CoverPageTopic", &T::CoverPageTopic,
              "The cover page's topic; none where there is no such topic.")
        .property("RawCoverPage", &T::RawCoverPage, &T::SetRawCoverPage,
                  "True if the topic is the whole cover page.")
        .property("LinkPreProcessURLNoCaption", &T::LinkPreProcessURLNoCaption,
                  &T::SetLinkPreProcessURLNoCaption, kScrap)
        .property("LinkPreProcessURLWithCaption", &T::LinkPreProcessURLWithCaption,
                  &T::SetLinkPreProcessURLWithCaption, kScrap)
        .property("LinkPreProcessTopicNotInBooklet", &T::LinkPreProcessTopicNotInBooklet,
                  &T::SetLinkPreProcessTopicNotInBooklet, kScrap)
        .property("LinkPreProcessTopicInBooklet", &T::LinkPreProcessTopicInBooklet,
                  &T::SetLinkPreProcessTopicInBooklet, kScrap)
        .property("LinkPreProcessCodemark", &T::LinkPreProcessCodemark, &T::SetLinkPreProcessCodemark, kScrap)
        .done();
}

ClassInfo describeBookletLinkInfo() {
    using T = BookletLinkInfo;
    return Describe<T>("BookletLinkInfo", "A hyperlink of a booklet as it is offered to templates.")
        .creatable()
        .field("LinkCaption", &T::LinkCaption, "Inner HTML of the hyperlink.")
        .field("LinkURL", &T::LinkURL, "The URL.")
        .field("LinkTopic", &T::LinkTopic,
               "The topic that the link points to; none where there is no such topic.")
        .done();
}

}  // namespace quillbox
