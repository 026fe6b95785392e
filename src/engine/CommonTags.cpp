#include "engine/CommonTags.h"

#include "engine/Html.h"

namespace quillbox {

std::string hrefOf(const TagRequest& request, const std::string& link, bool isPage) {
    if (link.empty() || isRemote(link)) return htmlText(link);
    const auto rootPath = rootPathOf(request);
    return htmlText(rootPath + (isPage ? nameAsLink(link) : link));
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
