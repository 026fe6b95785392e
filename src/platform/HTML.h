#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "base/Object.h"

namespace quillbox {

class IHTMLElement : public Object {
  public:
    static constexpr std::string_view kClassName = "IHTMLElement";
    std::string_view ClassName() const override { return kClassName; }

    virtual std::string tagName() const = 0;
    // The class attribute; empty where there is none.
    virtual std::string className() const = 0;
    // Fails for an absent attribute. A relative `href` or `src` comes back resolved against the document's
    // base, or behind "about:blank" where there is no base.
    virtual std::string getAttribute(const std::string& name) const = 0;
    // The same, with none for an absent attribute.
    virtual std::optional<std::string> findAttribute(const std::string& name) const = 0;
    virtual void setAttribute(const std::string& name, const std::string& value) = 0;

    virtual std::string innerHTML() const = 0;
    virtual void setInnerHTML(const std::string& html) = 0;
    virtual std::string outerHTML() const = 0;
    // Putting an empty text removes the element.
    virtual void setOuterHTML(const std::string& html) = 0;
    // The plain text of the element.
    virtual std::string outerText() const = 0;

    // How many bytes of the body's content, as it was last put, stand in front of the start tag, where a
    // character that HTML cannot hold counts as U+FFFD. None where the tag does not stand there.
    virtual std::optional<std::size_t> placeInBody() const = 0;
};

class IHTMLElementCollection : public Object {
  public:
    static constexpr std::string_view kClassName = "IHTMLElementCollection";
    std::string_view ClassName() const override { return kClassName; }

    // The elements of one tag name, whatever its case, in document order.
    virtual Ref<IHTMLElementCollection> tags(const std::string& name) const = 0;
    // The element of that name; none where there is no such element.
    virtual Ref<IHTMLElement> item(const std::string& name) const = 0;
    // Every name under which `item` finds an element.
    virtual std::vector<std::string> names() const = 0;
    virtual std::vector<Ref<IHTMLElement>> Items() const = 0;
    virtual int length() const = 0;
};

class HTMLDocument : public Object {
  public:
    static constexpr std::string_view kClassName = "HTMLDocument";
    std::string_view ClassName() const override { return kClassName; }

    virtual Ref<IHTMLElementCollection> all() = 0;
    virtual Ref<IHTMLElement> body() = 0;
    // The anchors that have a name.
    virtual Ref<IHTMLElementCollection> anchors() = 0;
    virtual Ref<IHTMLElement> documentElement() = 0;
};

class DOMFactory {
  public:
    virtual ~DOMFactory() = default;
    // Parses at once, without a window and without running scripts.
    virtual Ref<HTMLDocument> NewDocument(const std::string& html) = 0;
};

}  // namespace quillbox
