#include "adapters/xml/Attributes.h"

#include <iterator>

#include "base/AutomationError.h"

namespace quillbox::xml {

Ref<XMLAttribute> Attributes::Item(const std::string& name) {
    if (const auto attribute = mElement->Attribute(name)) return make<xml::Attribute>(mElement, attribute);
    const int line = mElement->Line();
    throw AutomationError("The element '" + mElement->Name() + "'" +
                          (line > 0 ? " in line " + std::to_string(line) : std::string()) +
                          " has no attribute '" + name + "'");
}

std::vector<Ref<XMLAttribute>> Attributes::Items() {
    std::vector<Ref<XMLAttribute>> items;
    for (auto attribute = mElement->Node().first_attribute(); attribute;
         attribute = attribute.next_attribute()) {
        items.push_back(make<xml::Attribute>(mElement, attribute));
    }
    return items;
}

int Attributes::Count() const {
    const auto attributes = mElement->Node().attributes();
    return static_cast<int>(std::distance(attributes.begin(), attributes.end()));
}

}  // namespace quillbox::xml
