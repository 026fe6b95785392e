#include "adapters/xml/Element.h"

#include <cstring>
#include <new>

#include "adapters/xml/Attributes.h"
#include "adapters/xml/Rules.h"
#include "base/AutomationError.h"

namespace quillbox::xml {

namespace {

bool isText(pugi::xml_node node) {
    return node.type() == pugi::node_pcdata || node.type() == pugi::node_cdata;
}

// The tree keeps texts up to their first NUL.
template <class Place>
void requireWhole(const std::string& text, const Place& place) {
    if (text.find('\0') != std::string::npos) {
        throw AutomationError(place() + " would hold the control character U+0000, which XML cannot hold");
    }
}

void requireMemory(bool done) {
    if (!done) throw std::bad_alloc();
}

}  // namespace

void Element::SetName(const std::string& name) {
    requireWhole(name, [&] { return "The name of the element '" + Name() + "'"; });
    requireMemory(mNode.set_name(name.c_str()));
}

std::string Element::Text() const {
    std::string text;
    bool hasChildren = false;
    for (auto node = mNode.first_child(); node; node = node.next_sibling()) {
        if (isText(node)) text += node.value();
        if (node.type() == pugi::node_element) hasChildren = true;
    }
    if (hasChildren && text.find_first_not_of(" \t\r\n") == std::string::npos) text.clear();
    return text;
}

void Element::SetText(const std::string& text) {
    requireWhole(text, [&] { return "The element '" + Name() + "'"; });
    for (auto node = mNode.first_child(); node;) {
        const auto next = node.next_sibling();
        if (isText(node)) {
            mTree->Replace(std::strlen(node.value()), 0);
            mNode.remove_child(node);
        }
        node = next;
    }
    if (text.empty()) return;
    mTree->Replace(0, text.size());
    auto node = mNode.prepend_child(pugi::node_pcdata);
    requireMemory(node && node.set_value(text.data(), text.size()));
}

pugi::xml_attribute Element::Attribute(std::string_view name) const {
    for (auto attribute = mNode.first_attribute(); attribute; attribute = attribute.next_attribute()) {
        if (sameName(attribute.name(), name)) return attribute;
    }
    return {};
}

std::optional<std::string> Element::Find(std::string_view name) const {
    if (const auto attribute = Attribute(name)) return attribute.value();
    return {};
}

void Element::AddAttribute(const std::string& name, const std::string& value) {
    const auto place = [&] { return "The attribute '" + name + "' of the element '" + Name() + "'"; };
    requireWhole(name, place);
    requireWhole(value, place);
    auto attribute = Attribute(name);
    if (!attribute) {
        attribute = mNode.append_attribute(name.c_str());
        mTree->Replace(0, name.size() + std::strlen("=\"\" "));
    }
    mTree->Replace(std::strlen(attribute.value()), value.size());
    requireMemory(attribute && attribute.set_value(value.data(), value.size()));
}

Ref<XMLAttributes> Element::Attributes() { return make<xml::Attributes>(self(this)); }

Ref<XMLElement> Element::AddChild(const std::string& name, const std::string& text) {
    requireWhole(name, [&] { return "The name of a child of '" + Name() + "'"; });
    requireWhole(text, [&] { return "The element '" + name + "'"; });
    mTree->Replace(0, 2 * name.size() + std::strlen("\n  <></>"));
    auto node = mNode.append_child(pugi::node_element);
    requireMemory(node && node.set_name(name.c_str()));
    auto child = mTree->Wrap(node);
    child->SetText(text);
    return child;
}

std::vector<Ref<XMLElement>> Element::Children() {
    std::vector<Ref<XMLElement>> children;
    for (auto node = mNode.first_child(); node; node = node.next_sibling()) {
        if (node.type() == pugi::node_element) children.push_back(mTree->Wrap(node));
    }
    return children;
}

}  // namespace quillbox::xml
