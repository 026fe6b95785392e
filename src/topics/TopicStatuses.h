#pragma once

#include <string>

#include "base/ItemCollection.h"
#include "platform/XML.h"

namespace quillbox {

// One kind of status that a topic may have.
class TopicStatus : public Object {
  public:
    static constexpr std::string_view kClassName = "TopicStatus";
    std::string_view ClassName() const override { return kClassName; }

    std::string Name;
    std::string Caption;
    std::string Icon;
    void Load(const Ref<XMLElement>& e);
    // Leaves the element as it came: statuses are installation data and are never written. It is meant so.
    void Save(const Ref<XMLElement>&) const {}
};

// The statuses of this machine, in the order of their file.
class TopicStatuses : public ItemCollection<TopicStatus> {
  public:
    static constexpr std::string_view kClassName = "TopicStatuses";
    std::string_view ClassName() const override { return kClassName; }

    // None for an unknown name.
    Ref<TopicStatus> Item(const Value& key) const { return find(key); }
    void Add(const Ref<TopicStatus>& item, const Value& key = {}, const Value& before = {},
             const Value& after = {}) {
        mCol.Add(item, key, before, after);
    }
    void Remove(const Value& key) { mCol.Remove(key); }
    // A child that fails ends the load; the statuses before it stay.
    void Load(const Ref<XMLElement>& e);
    void Save(const Ref<XMLElement>& e) const;
};

}  // namespace quillbox
