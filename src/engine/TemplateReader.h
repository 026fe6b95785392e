#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/PageLayout.h"
#include "platform/XML.h"

namespace quillbox {

// The search index that a build writes: the folder of its scripts, and the function that they call.
struct SearchLayout {
    std::string folder, function;
};

// What a template.xml says.
struct TemplateDescription {
    std::string name, supports;
    int order = 0;
    std::vector<std::string> namespaces;
    std::vector<Ref<PageLayout>> pages;
    std::optional<SearchLayout> search;
};

// The attributes that the reader takes, as they are spelled in its messages.
inline constexpr std::string_view kTemplateAttributes[] = {"Name", "Supports", "Order"};
inline constexpr std::string_view kNamespaceAttributes[] = {"Name"};
inline constexpr std::string_view kPageAttributes[] = {
    "File", "ItemType", "OnlyWith", "OnlyIfFree", "Search", "Filter", "Output", "CompileType", "Encoding"};
inline constexpr std::string_view kSearchAttributes[] = {"Folder", "Function"};

// Reads the template.xml of a template's folder. Fails with file, line and what was expected there.
TemplateDescription readTemplate(const std::string& folder, XMLParser& xml);

}  // namespace quillbox
