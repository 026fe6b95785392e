#include "adapters/html/ElementCollection.h"

#include <utility>

namespace quillbox::html {

namespace {

// An element is found under its name and under its id.
template <class Use>
void eachName(const Node& element, Use&& use) {
    if (!element.tag) return;
    for (const auto* const attribute : {"name", "id"}) {
        if (const auto* const found = element.tag->Find(attribute)) use(found->value);
    }
}

bool isNamed(const Node& element, std::string_view name) {
    bool named = false;
    eachName(element, [&](std::string_view one) { named |= one == name; });
    return named;
}

}  // namespace

Ref<IHTMLElementCollection> ElementCollection::tags(const std::string& name) const {
    auto narrower = mFilter;
    narrower.none |= narrower.tag && !sameName(*narrower.tag, name);
    narrower.tag = name;
    return make<ElementCollection>(mDocument, std::move(narrower));
}

Ref<IHTMLElement> ElementCollection::item(const std::string& name) const {
    for (auto* const element : mDocument->Select(mFilter)) {
        if (isNamed(*element, name)) return mDocument->ElementOf(*element);
    }
    return nullptr;
}

std::vector<std::string> ElementCollection::names() const {
    std::vector<std::string> names;
    for (const auto* const element : mDocument->Select(mFilter)) {
        eachName(*element, [&](std::string_view name) { names.emplace_back(name); });
    }
    return names;
}

std::vector<Ref<IHTMLElement>> ElementCollection::Items() const {
    std::vector<Ref<IHTMLElement>> items;
    for (auto* node : mDocument->Select(mFilter)) items.push_back(mDocument->ElementOf(*node));
    return items;
}

int ElementCollection::length() const { return static_cast<int>(mDocument->Select(mFilter).size()); }

}  // namespace quillbox::html
