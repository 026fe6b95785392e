// The general tags that read the current item, and the one that pulls generated content.

#include <cstdio>

#include "base/AutomationError.h"
#include "base/Date.h"
#include "base/Text.h"
#include "engine/CommonTags.h"
#include "engine/Disk.h"
#include "engine/Html.h"
#include "engine/PageFile.h"

namespace quillbox {

namespace {

std::string missing(const std::string& name) { return "!NO PROPERTY '" + name + "'!"; }

// A date of "yyyy-mm-dd hh:nn:ss" in another form; any other text is no date.
std::string inFormat(const std::string& text, const std::string& format) {
    Date::Parts parts{};
    const int found = std::sscanf(text.c_str(), "%4d-%2d-%2d %2d:%2d:%2d", &parts.year, &parts.month,
                                  &parts.day, &parts.hour, &parts.minute, &parts.second);
    const auto date = found == 6 ? Date::From(parts) : std::nullopt;
    return date ? date->Format(format) : "!NO DATE '" + text + "'!";
}

std::string property(const TagRequest& request) {
    const auto& name = request.name;
    const auto format = request.Attribute("format");
    const auto value = request.document.ReadProperty(request.current.CurrentItem(), name);
    if (!value) return missing(name);
    return format.empty() || value->empty() ? *value : inFormat(*value, format);
}

// The value as it stands: what is to be escaped.
std::string text(const TagRequest& request) { return request.Attribute("value"); }

std::optional<std::string> dataOf(const TagRequest& request, const std::string& name) {
    if (request.asker) return known(request.asker->GetProperty(name));
    const auto& current = request.current;
    return request.document.ReadData(name, current.NamespaceDef(), current.CurrentItem(),
                                     current.CurrentItemType(), current.CurrentParentItem());
}

std::string htmlTextOf(const TagRequest& request) {
    const auto& name = request.name;
    auto value = dataOf(request, name);
    return value ? htmlText(*std::move(value)) : missing(name);
}

std::string plainTextOf(const TagRequest& request) {
    const auto& name = request.name;
    const auto value = dataOf(request, name);
    return value ? plainText(*value) : missing(name);
}

// The title of the current item, or the name of one that has no title.
std::string pageTitle(const TagRequest& request) {
    auto title = dataOf(request, "itemtitle");
    if (!title || title->empty())
        title = request.document.ReadProperty(request.current.CurrentItem(), "Name");
    return htmlText(std::move(title).value_or(""));
}

// The title of the page that the current item leads to.
std::string targetTitle(const TagRequest& request) {
    const auto* build = request.document.Building();
    const auto target = dataOf(request, "linktarget");
    if (!build || !target) return {};
    const auto page = build->pages.find(withoutFragment(*target));
    if (page == build->pages.end()) return {};
    return htmlText(request.document.ReadProperty(page->second.item, "Title").value_or(""));
}

std::string linkOf(const TagRequest& request) {
    const auto& place = request.document.CurrentNode();
    return place.tree ? place.tree->Nodes()[place.node].def->LinkTarget
                      : dataOf(request, "linktarget").value_or("");
}

std::string targetLink(const TagRequest& request) {
    const auto link = linkOf(request);
    return hrefOf(request, link, request.document.IsPage(link));
}

// Whether the link of the current item or contents node leads to a page of the build, to a file that is
// there, or to another place.
std::string targetExists(const TagRequest& request) {
    const auto* build = request.document.Building();
    const auto link = linkOf(request);
    const auto name = decodedLink(withoutFragment(link));
    if (!build || link.empty()) return {};
    const bool exists = isRemote(link) || request.document.IsPage(link) || request.document.IsPage(name) ||
                        disk::isFile(build->output.DiskName(name)) ||
                        disk::isFile(build->output.FullName(name));
    return exists ? booleanText(true) : std::string();
}

bool isNames(const std::string& contentType) {
    const auto kind = contentType.substr(0, contentType.find(':'));
    return sameText(kind, "files") || sameText(kind, "alias");
}

// Names of files stay as the file system has them, whatever the encoding of the page: the compiler opens
// them.
std::string streamContent(const TagRequest& request) {
    const auto& contentType = request.name;
    if (!request.file)
        throw AutomationError("streamcontent:name=" + contentType +
                              " works in a page that is written to a file");
    const auto sources = request.document.Sources();
    auto* page = dynamic_cast<PageFile*>(request.file.get());
    for (const auto& source : *sources) {
        const auto begin = page ? page->Text().size() : 0;
        source.provider->StreamContent(request.file, contentType);
        if (page && isNames(contentType)) page->KeepBytesSince(begin);
    }
    return {};
}

}  // namespace

void addItemTags(TagTable& tags) {
    tags.insert({
        {"text", text},
        {"property", property},
        {"htmltext", htmlTextOf},
        {"plaintext", plainTextOf},
        {"pagetitle", pageTitle},
        {"targettitle", targetTitle},
        {"targetexists", targetExists},
        {"targetlink", targetLink},
        {"streamcontent", streamContent},
    });
}

}  // namespace quillbox
