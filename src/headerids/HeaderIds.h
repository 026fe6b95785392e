#pragma once

#include <string>

#include "base/ItemCollection.h"

namespace quillbox {

// One identifier of a C header.
class HeaderId : public Object {
  public:
    static constexpr std::string_view kClassName = "HeaderId";
    std::string_view ClassName() const override { return kClassName; }
    std::string Name;
    std::string Comment;
    int Value = 0;
};

// The "#define" lines of a C header. Names may repeat. An index is a position or a name.
class HeaderIds : public ItemCollection<HeaderId> {
  public:
    static constexpr std::string_view kClassName = "HeaderIds";
    std::string_view ClassName() const override { return kClassName; }

    // Fails for a file that cannot be opened and at a definition without a value; what was read before stays.
    void Load(const std::string& filename);
    bool ValidIndex(const quillbox::Value& index) const { return ItemIndex(index) != 0; }
    bool Exists(const quillbox::Value& index) const { return ValidIndex(index); }
    // An index that is not there is no failure.
    void Remove(const quillbox::Value& index);
    // The position of an item; 0 where there is none.
    int ItemIndex(const quillbox::Value& index) const;
    // None for an index that is not there.
    Ref<HeaderId> Item(const quillbox::Value& index) const;
    void Clear() { mCol.Clear(); }
    Ref<HeaderId> Add(const std::string& name = {}, int value = 0, const std::string& comment = {},
                      const quillbox::Value& before = {}, const quillbox::Value& after = {});

  private:
    void loadLine(const std::string& line);
};

}  // namespace quillbox
