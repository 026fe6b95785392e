#include "platform/engine/Templates.h"

#include <algorithm>

#include "base/Text.h"

namespace quillbox {

namespace {

std::string_view afterFamily(std::string_view itemType) {
    const auto colon = itemType.find(':');
    return colon == std::string_view::npos ? itemType : itemType.substr(colon + 1);
}

}  // namespace

Ref<NamespaceDefs> NamespaceDefs::ByName(const std::string& name) const {
    auto matches = make<NamespaceDefs>();
    for (const auto& def : Items()) {
        if (sameText(def->Name, name)) matches->Add(def);
    }
    return matches;
}

Ref<NamespaceDefs> NamespaceDefs::ByRootName(const std::string& name) const {
    auto matches = make<NamespaceDefs>();
    // Asked for a family's root, all of the family answers, the root itself first.
    std::string_view family;
    for (const auto& def : Items()) {
        if (!sameText(def->Name, name) && !sameText(afterFamily(def->Name), name)) continue;
        matches->Add(def);
        if (def->ParentName.empty() && sameText(afterFamily(def->Name), "qbproject")) {
            family = std::string_view(def->Name).substr(0, def->Name.find(':'));
        }
    }
    if (family.empty()) return matches;
    for (const auto& def : Items()) {
        const bool same = sameText(std::string_view(def->Name).substr(0, def->Name.find(':')), family);
        const auto known = matches->Items();
        if (same && std::find(known.begin(), known.end(), def) == known.end()) matches->Add(def);
    }
    return matches;
}

}  // namespace quillbox
