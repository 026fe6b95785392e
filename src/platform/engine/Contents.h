#pragma once

#include <string>

#include "base/Collection.h"
#include "base/ItemCollection.h"

namespace quillbox {

class TOCDefinition;

// One entry of a table of contents, as the engine writes it.
class NodeDef : public Object {
  public:
    static constexpr std::string_view kClassName = "NodeDef";
    std::string_view ClassName() const override { return kClassName; }
    int Kind = 0;  // 0 an entry, 3 the contents of a related project
    std::string Caption;
    ObjectReference<NodeDef> Parent;
    ObjectReference<quillbox::TOCDefinition> TOCDefinition;
    bool HasCustomIcon = false;
    int IconNumber = 0;
    bool Included = false;
    std::string LinkTarget;
    // Made by the node itself, unique within the process.
    const std::string Key = NewKey();

  private:
    static std::string NewKey();
};

class NodeDefs : public ItemCollection<NodeDef> {
  public:
    static constexpr std::string_view kClassName = "NodeDefs";
    std::string_view ClassName() const override { return kClassName; }
    Ref<NodeDef> Item(const Value& index) const { return mCol.At(index); }
    void Add(const Ref<NodeDef>& item, const Value& key = {}, const Value& before = {},
             const Value& after = {}) {
        mCol.Add(item, key, before, after);
    }
};

// A whole table of contents: its nodes in one flat list, parents before their children.
class TOCDefinition : public Object {
  public:
    static constexpr std::string_view kClassName = "TOCDefinition";
    std::string_view ClassName() const override { return kClassName; }
    Ref<NodeDefs> Nodes = make<NodeDefs>();
};

}  // namespace quillbox
