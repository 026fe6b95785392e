#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "frame/Enumerations.h"
#include "platform/HTML.h"

namespace quillbox {

class LinkInfo;
class Topic;

// One link as it stands in a body.
struct FoundLink {
    LinkTypeEnum type = ltHyperlink;
    std::string url;      // as the document gives it
    std::string caption;  // the inner HTML of a hyperlink
    std::optional<std::size_t> place;
};

// What a body holds of links and of names that a link may lead to.
struct BodyLinks {
    std::vector<FoundLink> links;      // hyperlinks, then images, each in the order of the text
    std::vector<std::string> anchors;  // sorted

    bool HasAnchor(const std::string& name) const;
};

// None for an element that is neither hyperlink nor image.
std::optional<FoundLink> readLink(const IHTMLElement& element);
BodyLinks readLinks(HTMLDocument& document);

// What the body of a topic holds, in a document without a base. A text is read once for as long as it stays.
std::shared_ptr<const BodyLinks> bodyLinks(const Topic& topic);

// Gives each link, verified without a look at other sites.
void eachLink(const Ref<Topic>& topic, const BodyLinks& body,
              const std::function<void(const Ref<LinkInfo>&)>& use);

}  // namespace quillbox
