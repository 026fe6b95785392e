#pragma once

#include <string>
#include <vector>

#include "base/KeyedList.h"
#include "base/Object.h"
#include "base/Value.h"

namespace quillbox {

// The plain ordered keyed collection that callers see: keywords, stylesheets, deletion lists.
class Collection : public Object {
  public:
    static constexpr std::string_view kClassName = "Collection";
    std::string_view ClassName() const override { return kClassName; }

    // Fails for an unknown position or key.
    Value Item(const Value& index) const { return mList.At(index); }
    const Value* Find(const Value& index) const { return mList.Find(index); }
    bool HasKey(const std::string& key) const { return mList.HasKey(key); }
    void Add(const Value& item, const Value& key = {}, const Value& before = {}, const Value& after = {}) {
        mList.Add(item, key, before, after);
    }
    void Remove(const Value& index) { mList.Remove(index); }
    int Count() const { return mList.Count(); }
    std::vector<Value> Items() const { return mList.Items(); }

    // The items as text, in order.
    std::vector<std::string> Texts() const {
        std::vector<std::string> texts;
        texts.reserve(static_cast<std::size_t>(Count()));
        // By position, as an item that is asked for its text may change the list.
        for (int position = 1; position <= Count(); ++position) texts.push_back(toText(mList.At(position)));
        return texts;
    }

  private:
    KeyedList<Value> mList;
};

}  // namespace quillbox
