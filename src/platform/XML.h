#pragma once

#include <optional>
#include <string>
#include <vector>

#include "base/Object.h"

namespace quillbox {

class XMLAttribute : public Object {
  public:
    static constexpr std::string_view kClassName = "XMLAttribute";
    std::string_view ClassName() const override { return kClassName; }
    virtual std::string Name() const = 0;
    virtual std::string Value() const = 0;
};

// The attributes of one element. Look-up ignores case.
class XMLAttributes : public Object {
  public:
    static constexpr std::string_view kClassName = "XMLAttributes";
    std::string_view ClassName() const override { return kClassName; }
    // Fails for an absent name; the description tells the name and the element.
    virtual Ref<XMLAttribute> Item(const std::string& name) = 0;
    virtual std::vector<Ref<XMLAttribute>> Items() = 0;
    virtual int Count() const = 0;
};

// One element. It keeps its document alive, and asking twice for an element gives the same object.
class XMLElement : public Object {
  public:
    static constexpr std::string_view kClassName = "XMLElement";
    std::string_view ClassName() const override { return kClassName; }

    virtual std::string Name() const = 0;
    virtual void SetName(const std::string& name) = 0;
    // Empty where the element has children and nothing but white space between them.
    virtual std::string Text() const = 0;
    virtual void SetText(const std::string& text) = 0;

    // The value of an attribute; empty optional for an absent one.
    virtual std::optional<std::string> Find(std::string_view name) const = 0;
    // Appends the attribute; a name that is there already gets the new value.
    virtual void AddAttribute(const std::string& name, const std::string& value) = 0;
    virtual Ref<XMLAttributes> Attributes() = 0;

    virtual Ref<XMLElement> AddChild(const std::string& name, const std::string& text) = 0;
    // The child elements in document order.
    virtual std::vector<Ref<XMLElement>> Children() = 0;

    // The line in the text that was parsed; 0 where it is not known.
    virtual int Line() const = 0;
};

class XMLDocument : public Object {
  public:
    static constexpr std::string_view kClassName = "XMLDocument";
    std::string_view ClassName() const override { return kClassName; }

    // A new document has a root without a name, ready to be filled.
    virtual Ref<XMLElement> RootElement() = 0;
    // Fails with the line for text that is not well-formed, nests deeper than 1,000, declares entities, or is
    // larger than 1 GiB. The document is then as before.
    virtual void Parse(const std::string& text) = 0;
    virtual void LoadFile(const std::string& path) = 0;
    // UTF-8 with a declaration, a line an element. Fails for text that XML cannot hold, naming the element.
    virtual std::string ToXml() const = 0;
};

class XMLParser {
  public:
    virtual ~XMLParser() = default;
    virtual Ref<XMLDocument> NewDocument() = 0;
};

}  // namespace quillbox
