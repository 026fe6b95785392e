#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/AutomationError.h"
#include "base/Text.h"
#include "platform/XML.h"

namespace quillbox {

// Reading and writing of attributes, as all `Load` and `Save` members do it.

// Where an element stands, for a failure to tell.
inline std::string placeOf(const Ref<XMLElement>& e) {
    const auto element = "element '" + e->Name() + "'";
    return e->Line() ? "line " + std::to_string(e->Line()) + ", " + element : element;
}

// Goes over the child elements; a failure tells the one that it comes from.
template <class Visit>
void forEachChild(const Ref<XMLElement>& e, Visit&& visit) {
    for (const auto& child : e->Children()) {
        inside([&] { return placeOf(child); }, [&] { visit(child); });
    }
}

// The value of an attribute that has to be there.
inline std::string required(const Ref<XMLElement>& e, std::string_view name) {
    if (auto value = e->Find(name)) return *std::move(value);
    throw AutomationError("The element '" + e->Name() + "' has no attribute '" + std::string(name) + "'");
}

inline int requiredInteger(const Ref<XMLElement>& e, std::string_view name) {
    return inside([&] { return placeOf(e) + ", attribute '" + std::string(name) + "'"; },
                  [&] { return integerOf(required(e, name)); });
}

// Hands the value of an attribute on where it is there; a failure of what is done with it is passed over too,
// so that older files load.
template <class Use>
void optionalAttribute(const Ref<XMLElement>& e, std::string_view name, Use&& use) {
    if (auto value = e->Find(name)) ignoringFailures([&] { use(*std::move(value)); });
}

inline void addBoolean(const Ref<XMLElement>& e, const std::string& name, bool value) {
    e->AddAttribute(name, booleanText(value));
}

inline void addInteger(const Ref<XMLElement>& e, const std::string& name, int value) {
    e->AddAttribute(name, std::to_string(value));
}

// Only "True" is true.
inline bool isTrue(std::string_view text) { return text == "True"; }

}  // namespace quillbox
