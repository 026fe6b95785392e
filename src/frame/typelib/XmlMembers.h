#pragma once

#include "frame/typelib/Describe.h"
#include "platform/XML.h"

namespace quillbox {

// Only what may have a file of its own can do without an element.
template <class T>
void needElement(const Ref<XMLElement>& e) {
    if constexpr (!requires { T::kHasOwnFile; }) {
        if (!e) throw AutomationError("An XML element is needed");
    }
}

// The rows "Load" and "Save" of a class that stores itself in an XML element.
template <class T>
Describe<T>& loadMember(Describe<T>& describe) {
    return describe.method(
        "Load",
        [](T& object, Ref<XMLElement>& e) {
            needElement<T>(e);
            object.Load(e);
        },
        {"e"}, "Loads from an XML element. Fails where an attribute that is needed is not there.");
}
template <class T>
Describe<T>& saveMember(Describe<T>& describe) {
    return describe.method(
        "Save",
        [](T& object, Ref<XMLElement>& e) {
            needElement<T>(e);
            object.Save(e);
        },
        {"e"}, "Saves to an XML element.");
}

}  // namespace quillbox
