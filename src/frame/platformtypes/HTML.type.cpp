#include "platform/HTML.h"

#include "frame/platformtypes/PlatformTypes.h"
#include "frame/typelib/Describe.h"

namespace quillbox {

namespace {

// Positions count from 0 here, as scripts know it of documents.
Ref<IHTMLElement> elementAt(IHTMLElementCollection& elements, const Value& index) {
    if (index.If<std::string>()) return elements.item(toText(index));
    const auto items = elements.Items();
    const auto position = toInteger(index);
    const bool there = position >= 0 && position < static_cast<int>(items.size());
    return there ? items[static_cast<std::size_t>(position)] : nullptr;
}

}  // namespace

ClassInfo describeHTMLDocument() {
    return Describe<HTMLDocument>("HTMLDocument", "The element tree of an HTML text.")
        .unpublished()
        .read("all", &HTMLDocument::all, "All elements.")
        .read("body", &HTMLDocument::body, "The body.")
        .read("anchors", &HTMLDocument::anchors, "The anchors that have a name.")
        .read("documentElement", &HTMLDocument::documentElement, "The root element.")
        .done();
}

ClassInfo describeIHTMLElement() {
    return Describe<IHTMLElement>("IHTMLElement", "One element of an HTML document.")
        .unpublished()
        .read("tagName", &IHTMLElement::tagName, "Name of the tag, in any case.")
        .read("className", &IHTMLElement::className, "The class attribute; empty where there is none.")
        .method(
            "getAttribute",
            [](IHTMLElement& element, const std::string& name, int) { return element.getAttribute(name); },
            {"name", {"flags", 0}},
            "The value; fails for an absent attribute. A relative href or src comes back resolved against "
            "the base.")
        .method(
            "setAttribute",
            [](IHTMLElement& element, const std::string& name, const std::string& value, int) {
                element.setAttribute(name, value);
            },
            {"name", "value", {"flags", 1}}, "Sets an attribute.")
        .property("innerHTML", &IHTMLElement::innerHTML, &IHTMLElement::setInnerHTML,
                  "The content as markup.")
        .property("outerHTML", &IHTMLElement::outerHTML, &IHTMLElement::setOuterHTML,
                  "The element as markup. Putting an empty text removes the element.")
        .read("outerText", &IHTMLElement::outerText, "The plain text of the element.")
        .done();
}

ClassInfo describeIHTMLElementCollection() {
    return Describe<IHTMLElementCollection>("IHTMLElementCollection", "Elements in document order.")
        .unpublished()
        .method("tags", &IHTMLElementCollection::tags, {"name"},
                "The elements of one tag name, whatever its case.")
        .method("item", elementAt, {"name"},
                "The element of that name or at that position (from 0); none for a miss.")
        .isDefault()
        .read("length", &IHTMLElementCollection::length, "Number of elements.")
        .enumerates(&IHTMLElementCollection::Items)
        .done();
}

}  // namespace quillbox
