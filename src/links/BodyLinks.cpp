#include "links/BodyLinks.h"

#include <algorithm>

#include "base/Text.h"
#include "links/LinkHelpers.h"
#include "links/LinkInfo.h"
#include "topics/Topic.h"
#include "topics/TopicSection.h"

namespace quillbox {

bool BodyLinks::HasAnchor(const std::string& name) const {
    return std::binary_search(anchors.begin(), anchors.end(), name);
}

std::optional<FoundLink> readLink(const IHTMLElement& element) {
    const auto tag = lower(element.tagName());
    if (tag != "a" && tag != "img") return std::nullopt;
    FoundLink link;
    link.place = element.placeInBody();
    if (tag == "a") {
        link.url = element.findAttribute("href").value_or("");
        link.caption = element.innerHTML();
    } else {
        link.type = ltImage;
        link.url = element.findAttribute("src").value_or("");
    }
    return link;
}

BodyLinks readLinks(HTMLDocument& document) {
    BodyLinks body;
    const auto all = document.all();
    for (const auto* const tag : {"A", "IMG"}) {
        for (const auto& element : all->tags(tag)->Items()) body.links.push_back(*readLink(*element));
    }
    body.anchors = document.anchors()->names();
    std::sort(body.anchors.begin(), body.anchors.end());
    return body;
}

std::shared_ptr<const BodyLinks> bodyLinks(const Topic& topic) {
    const auto section = topic.TopicSections->Item("BodyText");
    if (!section) return std::make_shared<const BodyLinks>();
    if (!section->Links()) {
        section->SetLinks(std::make_shared<const BodyLinks>(readLinks(*newBodyDocument(section->Text()))));
    }
    return section->Links();
}

void eachLink(const Ref<Topic>& topic, const BodyLinks& body,
              const std::function<void(const Ref<LinkInfo>&)>& use) {
    for (const auto& found : body.links) {
        const auto link = make<LinkInfo>();
        link->LoadFound(topic, found);
        use(link);
    }
}

}  // namespace quillbox
