#include "platform/engine/Contents.h"

#include "frame/platformtypes/PlatformTypes.h"
#include "frame/typelib/Describe.h"
#include "platform/engine/Variables.h"

namespace quillbox {

ClassInfo describeVariableValue() {
    return Describe<VariableValue>("VariableValue", "A named text.")
        .unpublished()
        .creatable()
        .field("Name", &VariableValue::Name, "Name of the variable.")
        .field("Value", &VariableValue::Value, "Value of the variable.")
        .done();
}

ClassInfo describeVariableValues() {
    Describe<VariableValues> describe("VariableValues", "Variables by name.");
    describe.unpublished().creatable();
    return collectionMembers(describe, "The variable of a name or position; fails for an unknown one.",
                             &VariableValues::Add)
        .done();
}

ClassInfo describeTOCDefinition() {
    return Describe<TOCDefinition>("TOCDefinition", "A whole table of contents.")
        .unpublished()
        .creatable()
        .part("Nodes", &TOCDefinition::Nodes, "The nodes in one flat list, parents before their children.")
        .done();
}

ClassInfo describeNodeDef() {
    return Describe<NodeDef>("NodeDef", "One entry of a table of contents, as the engine writes it.")
        .unpublished()
        .creatable()
        .field("Kind", &NodeDef::Kind, "0 for an entry, 3 for the contents of a related project.")
        .field("Caption", &NodeDef::Caption, "What the entry shows.")
        .property(
            "Parent", [](NodeDef& node) { return node.Parent.Get(); },
            [](NodeDef& node, const Ref<NodeDef>& parent) { node.Parent.Set(parent); },
            "The book it stands in; may be none.")
        .property(
            "TOCDefinition", [](NodeDef& node) { return node.TOCDefinition.Get(); },
            [](NodeDef& node, const Ref<TOCDefinition>& toc) { node.TOCDefinition.Set(toc); },
            "The table of contents it belongs to.")
        .field("HasCustomIcon", &NodeDef::HasCustomIcon, "Whether IconNumber is used.")
        .field("IconNumber", &NodeDef::IconNumber, "Number of the icon.")
        .field("Included", &NodeDef::Included, "Whether the entry is written.")
        .field("LinkTarget", &NodeDef::LinkTarget, "Where the entry leads to; empty for none.")
        .read(
            "Key", [](NodeDef& node) { return node.Key; }, "Key of the node, made by itself.")
        .done();
}

ClassInfo describeNodeDefs() {
    return Describe<NodeDefs>("NodeDefs", "The nodes of a table of contents.")
        .unpublished()
        .read("Item", &NodeDefs::Item, {"Key"}, "The node of a key or position; fails for an unknown one.")
        .isDefault()
        .method("Add", &NodeDefs::Add, {"Item", optional("Key"), optional("Before"), optional("After")},
                "Adds a node.")
        .read(
            "Count", [](NodeDefs& list) { return list.Count(); }, "Number of nodes.")
        .enumerates([](NodeDefs& list) { return list.Items(); })
        .done();
}

}  // namespace quillbox
