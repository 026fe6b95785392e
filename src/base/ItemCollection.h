#pragma once

#include <vector>

#include "base/KeyedList.h"
#include "base/Object.h"

namespace quillbox {

// What every collection of items is made of: the list itself. Each collection adds its own rules for what
// a miss gives and for what an addition or a removal tells.
template <class T>
class ItemCollection : public Object {
  public:
    using ItemType = T;

    int Count() const { return mCol.Count(); }
    std::vector<Ref<T>> Items() const { return mCol.Items(); }
    bool HasKey(const std::string& key) const { return mCol.HasKey(key); }

  protected:
    // The item, or none; an index that is neither a position nor a key finds none too.
    Ref<T> find(const Value& index) const {
        const Ref<T>* item = nullptr;
        ignoringFailures([&] { item = mCol.Find(index); });
        return item ? *item : nullptr;
    }

    KeyedList<Ref<T>> mCol;
};

}  // namespace quillbox
