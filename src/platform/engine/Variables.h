#pragma once

#include <string>

#include "base/ItemCollection.h"

namespace quillbox {

// A named text. Also the pair of a letter and its count in the glossary.
class VariableValue : public Object {
  public:
    static constexpr std::string_view kClassName = "VariableValue";
    std::string_view ClassName() const override { return kClassName; }
    std::string Name;
    std::string Value;
};

class VariableValues : public ItemCollection<VariableValue> {
  public:
    static constexpr std::string_view kClassName = "VariableValues";
    std::string_view ClassName() const override { return kClassName; }
    // Fails for an unknown name or position.
    Ref<VariableValue> Item(const Value& index) const { return mCol.At(index); }
    void Add(const Ref<VariableValue>& item, const Value& key = {}, const Value& before = {},
             const Value& after = {}) {
        mCol.Add(item, key, before, after);
    }
    void Remove(const Value& index) { mCol.Remove(index); }
};

}  // namespace quillbox
