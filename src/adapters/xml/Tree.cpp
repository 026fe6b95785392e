#include "adapters/xml/Tree.h"

#include "adapters/xml/Element.h"
#include "adapters/xml/Rules.h"
#include "adapters/xml/SourceCheck.h"
#include "adapters/xml/Writer.h"
#include "base/AutomationError.h"

namespace quillbox::xml {

std::shared_ptr<Tree> Tree::New() {
    const auto tree = std::make_shared<Tree>();
    tree->mNodes.append_child(pugi::node_element);
    return tree;
}

std::shared_ptr<Tree> Tree::Parse(const std::string& text) {
    if (text.size() > kMaxSize) throw AutomationError("line 1: the text is larger than 1 GiB");
    const auto tree = std::make_shared<Tree>();
    tree->mSource = text;
    tree->mExpectedSize = text.size();
    tree->mLines = checkSource(tree->mSource);
    // Line ends and white space stay as they are written.
    constexpr unsigned kOptions = pugi::parse_cdata | pugi::parse_escapes | pugi::parse_ws_pcdata;
    const auto result = tree->mNodes.load_buffer_inplace(tree->mSource.data(), tree->mSource.size(), kOptions,
                                                         pugi::encoding_utf8);
    if (!result) throw AutomationError(std::string("The text is no XML: ") + result.description());
    return tree;
}

Ref<Element> Tree::Wrap(pugi::xml_node node) {
    const auto [entry, isNew] = mElements.try_emplace(node.internal_object(), nullptr);
    if (!isNew) return self(entry->second);
    const auto element = make<Element>(shared_from_this(), node);
    entry->second = element.get();
    return element;
}

std::string Tree::ToXml() const { return write(Root(), mExpectedSize + mExpectedSize / 4); }

int Tree::LineOf(pugi::xml_node element) const {
    const auto offset = element.offset_debug();
    return offset < 0 ? 0 : mLines.LineOf(static_cast<std::size_t>(offset));
}

}  // namespace quillbox::xml
