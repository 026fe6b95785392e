#pragma once

#include <memory>

#include "platform/XML.h"

namespace quillbox {

// XML documents on pugixml.
std::shared_ptr<XMLParser> makePugiXmlParser();

}  // namespace quillbox
