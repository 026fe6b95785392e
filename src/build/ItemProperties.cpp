#include "build/ItemProperties.h"

#include "base/FoldedMap.h"
#include "booklets/Manifest.h"
#include "booklets/ManifestEntry.h"
#include "build/EntryNumbers.h"
#include "build/ItemAs.h"
#include "build/PageBreaks.h"
#include "build/QbDataProvider.h"
#include "content/GlossaryItems.h"
#include "frame/typelib/TypeLibrary.h"
#include "project/QbProject.h"
#include "topics/Keyword.h"
#include "topics/Topic.h"

namespace quillbox {

namespace {

template <class T>
Ref<T> currentAs(const QbDataProvider& provider) {
    return itemAs<T>(provider.CurrentItem());
}

// A member of the current item, whatever its class; fails where it has none of that name.
std::string memberText(const QbDataProvider& provider, const char* name) {
    return toText(getMember(*provider.CurrentItem(), name));
}

bool isMenuLink(const QbDataProvider& provider) {
    return sameText(provider.CurrentItem()->ClassName(), "MenuLink");
}

std::string title(QbDataProvider& provider) {
    if (const auto topic = currentAs<Topic>(provider)) return topic->Title();
    if (const auto keyword = currentAs<Keyword>(provider)) return keyword->Name;
    if (const auto entry = currentAs<ManifestEntry>(provider)) return entry->RuntimeTitle();
    const auto kind = provider.CurrentItem()->ClassName();
    const bool named = kind == "Manifest" || isMenuLink(provider);
    return memberText(provider, named ? "Name" : "Title");
}

std::string manifestTitle(QbDataProvider& provider) {
    const auto manifest = provider.CurrentManifest();
    return manifest ? manifest->BookletProperties->Title() : std::string();
}

std::string qualifiedName(QbDataProvider& provider) {
    return memberText(provider, isMenuLink(provider) ? "Target" : "QualifiedName");
}

std::string projectTitle(QbDataProvider& provider) {
    const auto project = provider.RootProject();
    return project ? project->Title() : std::string();
}

std::string lineBreak(QbDataProvider&) { return "\r\n"; }

std::string helpFileTitle(QbDataProvider& provider) { return provider.NeedDocument().Title; }

constexpr const char* kGlossaryPage = "Glossary.html";

std::string relatedTarget(const RelatedTopic& link) {
    if (link.RelatedTopicType() != rttTopic) return link.URL();
    if (const auto child = link.ChildTopic()) return child->Name() + ".html";
    return link.ChildTopicKey == kGlossaryPage ? kGlossaryPage : "#";
}

std::string linkTarget(QbDataProvider& provider) {
    if (const auto link = currentAs<RelatedTopic>(provider)) return relatedTarget(*link);
    if (const auto keyword = currentAs<Keyword>(provider)) return keyword->QualifiedName + ".html";
    return isMenuLink(provider) ? memberText(provider, "Target")
                                : memberText(provider, "QualifiedName") + ".html";
}

std::string linkTitle(QbDataProvider& provider) {
    const auto link = currentAs<RelatedTopic>(provider);
    if (!link) return {};
    const auto own = link->Title();
    if (link->RelatedTopicType() != rttTopic || (!own.empty() && !own.starts_with('{'))) return own;
    if (const auto child = link->ChildTopic()) return child->Title();
    return link->ChildTopicKey == kGlossaryPage ? "Glossary" : "{No Child Topic}";
}

std::string glossaryLetter(QbDataProvider& provider) { return memberText(provider, "Name"); }

std::string glossaryLetterLink(QbDataProvider& provider) {
    const auto letter = memberText(provider, "Name");
    if (leadingNumber(memberText(provider, "Value")) <= 0) return letter;
    return "<a href=\"#" + letter + "\">" + letter + "</a>";
}

std::string withoutLineEnds(std::string text, std::string_view instead) {
    return text.find("\r\n") == std::string::npos ? text : replaceAll(text, "\r\n", instead);
}

std::string glossaryTerm(QbDataProvider& provider) {
    const auto item = currentAs<GlossaryItem>(provider);
    return withoutLineEnds(item ? item->Term() : memberText(provider, "Term"), "");
}

std::string glossaryDefinition(QbDataProvider& provider) {
    const auto item = currentAs<GlossaryItem>(provider);
    return withoutLineEnds(item ? item->Definition() : memberText(provider, "Definition"), " ");
}

std::string breakBefore(QbDataProvider& provider) {
    const auto entry = currentAs<ManifestEntry>(provider);
    return entry ? pageBreakBefore(provider, *entry) : std::string();
}

std::string breakAfter(QbDataProvider&) { return {}; }

std::string entryNumber(QbDataProvider& provider) {
    const auto manifest = provider.CurrentManifest();
    if (!manifest || manifest->BookletProperties->EntryNumbering() == enNone) return {};
    if (const auto entry = currentAs<ManifestEntry>(provider)) return entry->RuntimeEntryNumber();
    const auto topic = currentAs<Topic>(provider);
    return topic ? topic->RuntimeEntryNumber : std::string();
}

using Property = std::string (*)(QbDataProvider& provider);

const TextMap<Property>& properties() {
    static const TextMap<Property> table = {
        {"itemtitle", title},
        {"item_title", title},
        {"title", title},
        {"topictitle", title},
        {"manifesttitle", manifestTitle},
        {"booklettitle", manifestTitle},
        {"itemqualifiedname", qualifiedName},
        {"projecttitle", projectTitle},
        {"crlf", lineBreak},
        {"projectgroupdescription", helpFileTitle},
        {"helpfiletitle", helpFileTitle},
        {"linktarget", linkTarget},
        {"linktitle", linkTitle},
        {"glossaryletterlink", glossaryLetterLink},
        {"glossaryletter", glossaryLetter},
        {"glossaryitemterm", glossaryTerm},
        {"glossaryitemdefinition", glossaryDefinition},
        {"manifestentrypagebreakbefore", breakBefore},
        {"bookletentrypagebreakbefore", breakBefore},
        {"bookletentrypagebreakafter", breakAfter},
        {"entrynumber", entryNumber},
    };
    return table;
}

}  // namespace

std::string itemProperty(QbDataProvider& provider, const std::string& name) {
    // Nearly all names come in lower case.
    const auto& all = properties();
    if (const auto known = all.find(name); known != all.end()) {
        return provider.CurrentItem() ? known->second(provider) : std::string();
    }
    const auto key = lower(name);
    return key == name ? provider.CommonProvider().GetProperty(key) : itemProperty(provider, key);
}

std::vector<std::string> itemPropertyNames() {
    std::vector<std::string> names;
    for (const auto& [name, property] : properties()) names.push_back(name);
    return names;
}

}  // namespace quillbox
