#include "platform/XML.h"

#include "frame/Platform.h"
#include "frame/platformtypes/PlatformTypes.h"
#include "frame/typelib/Describe.h"

namespace quillbox {

namespace {

Ref<XMLAttribute> addAttribute(XMLElement& element, const std::string& name, const std::string& value) {
    element.AddAttribute(name, value);
    return element.Attributes()->Item(name);
}

Ref<XMLAttribute> attributeAt(XMLAttributes& attributes, const Value& index) {
    if (index.If<std::string>()) return attributes.Item(toText(index));
    const auto items = attributes.Items();
    const auto position = toInteger(index);
    if (position >= 1 && position <= static_cast<int>(items.size()))
        return items[static_cast<std::size_t>(position) - 1];
    throw AutomationError("There is no attribute at position " + std::to_string(position));
}

}  // namespace

ClassInfo describeXMLDocument() {
    return Describe<XMLDocument>("XMLDocument",
                                 "An XML document. A new one has a root element without a name.")
        .unpublished()
        .creatable([] { return platform().xml->NewDocument(); })
        .method(
            "Parse",
            [](XMLDocument& document, const std::string& text, bool& result) {
                result = false;
                document.Parse(text);
                result = true;
            },
            {"Text", {"Result", false}},
            "Replaces the document by what the text holds; fails, with the line, for text that is not "
            "well-formed.")
        .method(
            "LoadFile",
            [](XMLDocument& document, const std::string& path, bool& result) {
                result = false;
                document.LoadFile(path);
                result = true;
            },
            {"Path", {"Result", false}}, "Parses a file.")
        .read("RootElement", &XMLDocument::RootElement, "The root element.")
        .read("ToXml", &XMLDocument::ToXml, "The document as text, with a declaration and a line an element.")
        .done();
}

ClassInfo describeXMLElement() {
    return Describe<XMLElement>("XMLElement", "One element of an XML document. Keeps its document alive.")
        .unpublished()
        .property("Name", &XMLElement::Name, &XMLElement::SetName, "Name of the element.")
        .property("Text", &XMLElement::Text, &XMLElement::SetText,
                  "The element's text; empty where there is only white space between children.")
        .read("Attributes", &XMLElement::Attributes, "The element's attributes.")
        .read("Children", &XMLElement::Children, "The child elements in document order.")
        .method("AddAttribute", addAttribute, {"Name", "Value"},
                "Adds an attribute and returns it; one that is there already gets the new value.")
        .method("AddChild", &XMLElement::AddChild, {"Name", {"Text", ""}},
                "Appends a child element with that name and text, and returns it.")
        .read("Line", &XMLElement::Line, "The line in the text that was parsed; 0 where it is not known.")
        .done();
}

ClassInfo describeXMLAttributes() {
    return Describe<XMLAttributes>("XMLAttributes", "The attributes of an element. Names ignore case.")
        .unpublished()
        .read("Item", attributeAt, {"Name"},
              "The attribute of that name or at that position; fails where there is none.")
        .isDefault()
        .read("Count", &XMLAttributes::Count, "Number of attributes.")
        .enumerates(&XMLAttributes::Items)
        .done();
}

ClassInfo describeXMLAttribute() {
    return Describe<XMLAttribute>("XMLAttribute", "One attribute of an element.")
        .unpublished()
        .read("Name", &XMLAttribute::Name, "Name of the attribute.")
        .read("Value", &XMLAttribute::Value, "Value of the attribute.")
        .done();
}

}  // namespace quillbox
