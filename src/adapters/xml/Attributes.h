#pragma once

#include <pugixml.hpp>

#include "adapters/xml/Element.h"
#include "platform/XML.h"

namespace quillbox::xml {

class Attribute : public XMLAttribute {
  public:
    Attribute(Ref<Element> element, pugi::xml_attribute attribute)
        : mElement(std::move(element)), mAttribute(attribute) {}

    std::string Name() const override { return mAttribute.name(); }
    std::string Value() const override { return mAttribute.value(); }

  private:
    Ref<Element> mElement;  // keeps the attribute alive
    pugi::xml_attribute mAttribute;
};

class Attributes : public XMLAttributes {
  public:
    explicit Attributes(Ref<Element> element) : mElement(std::move(element)) {}

    Ref<XMLAttribute> Item(const std::string& name) override;
    std::vector<Ref<XMLAttribute>> Items() override;
    int Count() const override;

  private:
    Ref<Element> mElement;
};

}  // namespace quillbox::xml
