#pragma once

#include <string>

#include "platform/HTML.h"

namespace quillbox {

// The normal form of a link: without the mark of a document that has no base, and with percent escapes
// decoded.
std::string GetLinkText(const std::string& source);
// Decodes percent escapes, each search from the beginning again, so that "%25" is decoded twice. It is meant
// so.
std::string RemoveEntities(const std::string& source);
// A document from the whole text, with nothing added.
Ref<HTMLDocument> newDocument(const std::string& html);
// A document with a body and nothing else.
Ref<HTMLDocument> newBodyDocument(const std::string& body);

}  // namespace quillbox
