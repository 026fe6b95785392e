#include "engine/CommonTags.h"

#include "engine/Html.h"

namespace quillbox {

std::string hrefOf(const TagRequest& request, const std::string& link) {
    if (link.empty() || isRemote(link)) return htmlText(link);
    const auto rootPath = commonTags().at("rootpath")(request);
    return htmlText(rootPath + (request.document.IsPage(link) ? nameAsLink(link) : link));
}

const TagTable& commonTags() {
    static const TagTable tags = [] {
        TagTable all;
        addBuildTags(all);
        addItemTags(all);
        addContentsTags(all);
        return all;
    }();
    return tags;
}

}  // namespace quillbox
