#pragma once

#include <string>
#include <vector>

#include "base/FoldedMap.h"
#include "base/Object.h"

namespace quillbox {

// Finds the first item of a list by a name that ignores case, as a walk of the list would. Names change
// without the list being told, so the table holds for one state of all names and is made anew for the next.
template <class T>
class NameTable {
  public:
    // `items` gives the list, `name` the name of one item, `state` the count of changes to any name.
    template <class Items, class Name>
    Ref<T> Find(std::string_view wanted, unsigned long state, Items&& items, Name&& name) {
        if (mState != state) {
            mByName.clear();
            for (const auto& item : items()) mByName.emplace(name(*item), item);
            mState = state;
        }
        const auto found = mByName.find(wanted);
        return found == mByName.end() ? nullptr : found->second;
    }
    // To be called when the list itself changed.
    void Forget() {
        mByName.clear();
        mState = 0;
    }

  private:
    FoldedMap<Ref<T>> mByName;
    unsigned long mState = 0;
};

// Counts changes to the names of a kind of item in this process. Never 0.
class NameState {
  public:
    void Changed() { ++mCount; }
    unsigned long Count() const { return mCount; }

  private:
    unsigned long mCount = 1;
};

}  // namespace quillbox
