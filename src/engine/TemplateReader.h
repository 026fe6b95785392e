#pragma once

#include <string>
#include <vector>

#include "engine/PageLayout.h"
#include "platform/XML.h"

namespace quillbox {

// What a template.xml says.
struct TemplateDescription {
    std::string name, supports;
    int order = 0;
    std::vector<std::string> namespaces;
    std::vector<Ref<PageLayout>> pages;
};

// Reads the template.xml of a template's folder. Fails with file, line and what was expected there.
TemplateDescription readTemplate(const std::string& folder, XMLParser& xml);

}  // namespace quillbox
