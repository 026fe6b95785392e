#pragma once

#include <type_traits>

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

// What has a file of its own may put another element in the place of the caller's.
template <class Call>
void replaceElement(Ref<XMLElement>& e, Call&& call) {
    if constexpr (std::is_void_v<decltype(call(e))>) {
        call(e);
    } else {
        e = call(e);
    }
}

// The rows "Load" and "Save" of a class that stores itself in an XML element.
template <class T>
Describe<T>& loadMember(Describe<T>& describe) {
    return describe.method(
        "Load",
        [](T& object, Ref<XMLElement>& e) {
            needElement<T>(e);
            replaceElement(e, [&](const Ref<XMLElement>& source) { return object.Load(source); });
        },
        {"e"}, "Loads from an XML element. Fails where an attribute that is needed is not there.");
}
template <class T>
Describe<T>& saveMember(Describe<T>& describe) {
    return describe.method(
        "Save",
        [](T& object, Ref<XMLElement>& e) {
            needElement<T>(e);
            replaceElement(e, [&](const Ref<XMLElement>& target) { return object.Save(target); });
        },
        {"e"}, "Saves to an XML element.");
}

}  // namespace quillbox
