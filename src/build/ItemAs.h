#pragma once

#include <typeinfo>

#include "base/Object.h"

namespace quillbox {

// The item as one of a class; none for any other. Most items that are asked are of another, and nearly all
// others of that very class, so that the slow cast is the last to be asked.
template <class T>
Ref<T> itemAs(const Ref<Object>& item) {
    if (!item || item->ClassName() != T::kClassName) return nullptr;
    const auto& held = *item;
    return typeid(held) == typeid(T) ? std::static_pointer_cast<T>(item) : std::dynamic_pointer_cast<T>(item);
}

}  // namespace quillbox
