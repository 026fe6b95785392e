#include "adapters/html/ElementCollection.h"

#include "base/Object.h"

namespace quillbox::html {

Ref<IHTMLElementCollection> ElementCollection::tags(const std::string& name) const {
    return make<ElementCollection>(mDocument, [test = mTest, name](const Node& element) {
        return sameName(element.name, name) && test(element);
    });
}

Ref<IHTMLElement> ElementCollection::item(const std::string& name) const {
    const auto found =
        mDocument->Select([&](const Node& element) { return isNamed(element, name) && mTest(element); });
    return found.empty() ? nullptr : mDocument->ElementOf(*found.front());
}

std::vector<Ref<IHTMLElement>> ElementCollection::Items() const {
    std::vector<Ref<IHTMLElement>> items;
    for (auto* node : mDocument->Select(mTest)) items.push_back(mDocument->ElementOf(*node));
    return items;
}

int ElementCollection::length() const { return static_cast<int>(mDocument->Select(mTest).size()); }

bool isNamed(const Node& element, std::string_view name) {
    if (!element.tag) return false;
    const auto is = [&](std::string_view attribute) {
        const auto* found = element.tag->Find(attribute);
        return found && found->value == name;
    };
    return is("name") || is("id");
}

}  // namespace quillbox::html
