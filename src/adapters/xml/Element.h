#pragma once

#include <memory>
#include <pugixml.hpp>

#include "adapters/xml/Tree.h"
#include "platform/XML.h"

namespace quillbox::xml {

class Element : public XMLElement {
  public:
    Element(std::shared_ptr<Tree> tree, pugi::xml_node node) : mTree(std::move(tree)), mNode(node) {}
    ~Element() override { mTree->Forget(mNode); }

    std::string Name() const override { return mNode.name(); }
    void SetName(const std::string& name) override;
    std::string Text() const override;
    void SetText(const std::string& text) override;

    std::optional<std::string> Find(std::string_view name) const override;
    void AddAttribute(const std::string& name, const std::string& value) override;
    Ref<XMLAttributes> Attributes() override;

    Ref<XMLElement> AddChild(const std::string& name, const std::string& text) override;
    std::vector<Ref<XMLElement>> Children() override;

    int Line() const override { return mTree->LineOf(mNode); }

    pugi::xml_attribute Attribute(std::string_view name) const;
    pugi::xml_node Node() const { return mNode; }

  private:
    std::shared_ptr<Tree> mTree;
    pugi::xml_node mNode;
};

}  // namespace quillbox::xml
