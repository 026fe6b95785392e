#include "base/Collection.h"

#include "frame/platformtypes/PlatformTypes.h"
#include "frame/typelib/Describe.h"

namespace quillbox {

ClassInfo describeCollection() {
    return Describe<Collection>("Collection",
                                "Ordered list of values, of which each may have a key that ignores case.")
        .unpublished()
        .creatable()
        .read("Item", &Collection::Item, {"Index"},
              "The item at a position (from 1) or of a key; fails for an unknown one.")
        .isDefault()
        .method("Add", &Collection::Add, {"Item", optional("Key"), optional("Before"), optional("After")},
                "Adds an item, at the end unless Before or After (a position or key) is given. A key that is "
                "taken "
                "fails.")
        .method("Remove", &Collection::Remove, {"Index"},
                "Removes an item by position or key; fails for an unknown one.")
        .read("Count", &Collection::Count, "Number of items.")
        .enumerates(&Collection::Items)
        .done();
}

}  // namespace quillbox
