#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/System.h"
#include "platform/XML.h"
#include "platform/engine/Document.h"

namespace quillbox {

// What the document engine needs from outside.
struct EngineServices {
    std::shared_ptr<XMLParser> xml;
    std::shared_ptr<System> system;
    // The folder of the installed templates; asked at each look, as the installation may move.
    std::function<std::string()> templatesFolder;
    // What the tag "version" gives.
    std::string version;
    // The text of a published property of any item, by its name; nothing where the item has no such property.
    std::function<std::optional<std::string>(Object& item, const std::string& name)> readProperty;
    // The language where a project names none, such as "en-US"; empty for that of the environment.
    std::string language;
};

// Pages go straight to the disk; every other service comes through a port.
std::shared_ptr<DocumentEngine> makeDocumentEngine(EngineServices services);

}  // namespace quillbox
