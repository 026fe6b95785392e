// The general tags that read the current item, and the one that pulls generated content.

#include "base/AutomationError.h"
#include "base/Text.h"
#include "engine/CommonTags.h"
#include "engine/Html.h"
#include "engine/PageFile.h"

namespace quillbox {

namespace {

std::string property(const TagRequest& request) {
    const auto name = request.Attribute("name");
    const auto value = request.document.ReadProperty(request.current.CurrentItem(), name);
    return value ? *value : "!NO PROPERTY '" + name + "'!";
}

std::optional<std::string> dataOf(const TagRequest& request, const std::string& name) {
    const auto& current = request.current;
    return request.document.ReadData(name, current.NamespaceDef(), current.CurrentItem(),
                                     current.CurrentItemType(), current.CurrentParentItem());
}

std::string htmlTextOf(const TagRequest& request) {
    const auto name = request.Attribute("name");
    const auto value = dataOf(request, name);
    return value ? htmlText(*value) : "!NO PROPERTY '" + name + "'!";
}

// The title of the page that the current item leads to.
std::string targetTitle(const TagRequest& request) {
    const auto* build = request.document.Building();
    const auto target = dataOf(request, "linktarget");
    if (!build || !target) return {};
    const auto item = build->output.ItemOf(std::string(withoutFragment(*target)));
    return htmlText(request.document.ReadProperty(item, "Title").value_or(""));
}

bool isNames(const std::string& contentType) {
    const auto kind = contentType.substr(0, contentType.find(':'));
    return sameText(kind, "files") || sameText(kind, "alias");
}

// Names of files stay as the file system has them, whatever the encoding of the page: the compiler opens
// them.
std::string streamContent(const TagRequest& request) {
    const auto contentType = request.Attribute("name");
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
        {"property", property},
        {"htmltext", htmlTextOf},
        {"targettitle", targetTitle},
        {"streamcontent", streamContent},
    });
}

}  // namespace quillbox
