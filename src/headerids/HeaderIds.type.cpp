#include "headerids/HeaderIds.h"

#include "frame/PublishedClasses.h"
#include "frame/typelib/Describe.h"

namespace quillbox {

ClassInfo describeHeaderIds() {
    using T = HeaderIds;
    constexpr const char* kIndex = "Index is a position or a name.";
    Describe<T> d("HeaderIds", "The identifiers of a C header.");
    return d.method("Load", &T::Load, {"Filename"}, "Reads a C header. Fails where it cannot be opened.")
        .method("ValidIndex", &T::ValidIndex, {"Index"}, kIndex)
        .method("Remove", &T::Remove, {"Index"}, "Removes an item; an index that is not there is no failure.")
        .enumerates([](T& list) { return list.Items(); })
        .method("ItemIndex", &T::ItemIndex, {"Index"}, "The position of an item; 0 where there is none.")
        .read("Item", &T::Item, {"Index"}, "The item; none where there is none.")
        .isDefault()
        .method("Exists", &T::Exists, {"Index"}, kIndex)
        .read(
            "Count", [](T& list) { return list.Count(); }, "Number of items.")
        .method("Clear", &T::Clear, "Removes all items.")
        .method("Add", &T::Add, {{"Name", ""}, {"Value", 0}, {"Comment", ""}, {"Before", ""}, {"After", ""}},
                "Makes an item, at the end unless Before or After is there, and gives it.")
        .done();
}

ClassInfo describeHeaderId() {
    using T = HeaderId;
    return Describe<T>("HeaderId", "One identifier of a C header.")
        .field("Name", &T::Name, "The identifier.")
        .field("Comment", &T::Comment, "The comment on its line.")
        .field("Value", &T::Value, "The number.")
        .done();
}

}  // namespace quillbox
