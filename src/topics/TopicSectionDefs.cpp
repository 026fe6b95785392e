#include "topics/TopicSectionDefs.h"

namespace quillbox {

void TopicSectionDefs::Populate() {
    const auto def = make<TopicSectionDef>();
    def->Key = "BodyText";
    def->Caption = "Body Text";
    Add(def, def->Key);
}

}  // namespace quillbox
