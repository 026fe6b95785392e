#pragma once

#include <memory>
#include <pugixml.hpp>
#include <string>
#include <unordered_map>

#include "adapters/xml/SourceLines.h"
#include "base/Object.h"

namespace quillbox::xml {

class Element;

// The nodes of one document. It lives as long as the document or one of its elements does.
class Tree : public std::enable_shared_from_this<Tree> {
  public:
    // With a root that has no name.
    static std::shared_ptr<Tree> New();
    static std::shared_ptr<Tree> Parse(const std::string& text);

    pugi::xml_node Root() const { return mNodes.document_element(); }

    // The one object that stands for a node while somebody holds it.
    Ref<Element> Wrap(pugi::xml_node node);
    void Forget(pugi::xml_node node) { mElements.erase(node.internal_object()); }

    int LineOf(pugi::xml_node element) const;

    std::string ToXml() const;
    // Tells how the written text changes, roughly.
    void Replace(std::size_t oldSize, std::size_t newSize) { mExpectedSize += newSize - oldSize; }

  private:
    std::string mSource;  // the parser works inside the text; names and values point into it
    pugi::xml_document mNodes;
    SourceLines mLines;
    std::size_t mExpectedSize = 100;
    std::unordered_map<const void*, Element*> mElements;
};

}  // namespace quillbox::xml
