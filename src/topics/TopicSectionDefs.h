#pragma once

#include <string>

#include "base/ItemCollection.h"

namespace quillbox {

// What a section of topics is called. The definitions are the same for all projects of the process.
class TopicSectionDef : public Object {
  public:
    static constexpr std::string_view kClassName = "TopicSectionDef";
    std::string_view ClassName() const override { return kClassName; }
    std::string Key;
    std::string Caption;
};

class TopicSectionDefs : public ItemCollection<TopicSectionDef> {
  public:
    static constexpr std::string_view kClassName = "TopicSectionDefs";
    std::string_view ClassName() const override { return kClassName; }

    // None for an unknown key.
    Ref<TopicSectionDef> Item(const Value& key) const { return find(key); }
    void Add(const Ref<TopicSectionDef>& item, const Value& key = {}, const Value& before = {},
             const Value& after = {}) {
        mCol.Add(item, key, before, after);
    }
    void Remove(const Value& key) { mCol.Remove(key); }
    // Adds the definitions that the system knows; a second call fails on the first key.
    void Populate();
};

}  // namespace quillbox
