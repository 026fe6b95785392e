#pragma once

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "base/AutomationError.h"
#include "base/FoldedMap.h"
#include "base/Text.h"
#include "base/Value.h"

namespace quillbox {

// The ordered keyed collection: positions from 1, and for each item at most one key, which ignores case.
// An index is a position or a key. Look-up by either is a table access; a removal shifts the rest.
template <class T>
class KeyedList {
  public:
    int Count() const { return static_cast<int>(mEntries.size()); }

    // The item, or nullptr where there is none.
    const T* Find(const Value& index) const {
        if (const auto* key = index.If<std::string>()) return FindKey(*key);
        if (index.IsMissing() || index.If<Value::Empty>() || index.If<Ref<Object>>()) return nullptr;
        const auto position = toInteger(index);
        return position >= 1 && position <= Count() ? &mEntries[position - 1]->item : nullptr;
    }

    const T* FindKey(std::string_view key) const {
        const auto found = mByKey.find(key);
        return found == mByKey.end() ? nullptr : &(*found)->item;
    }

    const T& At(const Value& index) const {
        if (const T* item = Find(index)) return *item;
        fail(index);
    }

    bool HasKey(const std::string& key) const { return mByKey.contains(key); }

    // The key is used where it is given and not empty. "Before" wins over "after"; with neither the item
    // goes to the end. A key that is taken, or a neighbour that is not there, fails and changes nothing.
    void Add(T item, const Value& key = {}, const Value& before = {}, const Value& after = {}) {
        if (isNone(item)) throw AutomationError("A collection holds no item that is none");
        auto place = mEntries.end();
        if (isGiven(before)) {
            place = position(before);
        } else if (isGiven(after)) {
            place = position(after) + 1;
        }
        auto entry = std::make_unique<Entry>(Entry{std::move(item), {}});
        if (!key.IsBlank()) {
            entry->key = toText(key);
            if (!mByKey.insert(entry.get()).second) {
                throw AutomationError("The key '" + entry->key + "' is already in this collection");
            }
        }
        mEntries.insert(place, std::move(entry));
    }

    // Gives the item that was taken out; fails where there is none.
    T Remove(const Value& index) {
        const auto place = position(index);
        T item = std::move((*place)->item);
        mByKey.erase((*place)->key);
        mEntries.erase(place);
        return item;
    }

    void Clear() {
        mByKey.clear();
        mEntries.clear();
    }

    // A copy in list order, so that a walk holds while others change the list.
    std::vector<T> Items() const {
        std::vector<T> items;
        items.reserve(mEntries.size());
        for (const auto& entry : mEntries) items.push_back(entry->item);
        return items;
    }

  private:
    struct Entry {
        T item;
        std::string key;
    };
    // The key of what is in the table or asked for.
    struct Key {
        Key(const Entry* entry) : text(entry->key) {}
        Key(std::string_view wanted) : text(wanted) {}
        Key(const std::string& wanted) : text(wanted) {}
        std::string_view text;
    };
    struct KeyHash {
        std::size_t operator()(const Key& key) const { return FoldedHash()(key.text); }
    };
    struct KeyEqual {
        using is_transparent = void;
        bool operator()(const Key& a, const Key& b) const { return FoldedEqual()(a.text, b.text); }
    };

    static bool isGiven(const Value& index) { return !index.IsMissing() && !index.If<Value::Empty>(); }
    template <class U>
    static bool isNone(const U&) {
        return false;
    }
    template <class U>
    static bool isNone(const Ref<U>& item) {
        return !item;
    }
    using Entries = std::vector<std::unique_ptr<Entry>>;

    [[noreturn]] static void fail(const Value& index) {
        if (index.IsMissing() || index.If<Ref<Object>>())
            throw AutomationError("An index is a position or a key");
        throw AutomationError("There is no item '" + toText(index) + "' in this collection");
    }

    typename Entries::iterator position(const Value& index) {
        const T* item = Find(index);
        if (!item) fail(index);
        if (index.If<std::string>()) {
            return std::find_if(mEntries.begin(), mEntries.end(),
                                [&](const auto& e) { return &e->item == item; });
        }
        return mEntries.begin() + (toInteger(index) - 1);
    }

    Entries mEntries;
    // The keys stand in the entries alone.
    tsl::robin_set<Entry*, KeyHash, KeyEqual, std::allocator<Entry*>, true> mByKey;
};

}  // namespace quillbox
