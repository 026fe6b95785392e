#pragma once

#include "base/Object.h"

namespace quillbox {

// The item as one of a class; none for any other. By the name of the class first, as most items that are
// asked are of another, and a cast that fails is slow.
template <class T>
Ref<T> itemAs(const Ref<Object>& item) {
    return item && item->ClassName() == T::kClassName ? std::dynamic_pointer_cast<T>(item) : nullptr;
}

}  // namespace quillbox
