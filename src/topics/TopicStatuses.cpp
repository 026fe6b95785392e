#include "topics/TopicStatuses.h"

#include "frame/XmlAccess.h"

namespace quillbox {

void TopicStatus::Load(const Ref<XMLElement>& e) {
    Name = required(e, "Name");
    Caption = required(e, "Caption");
    Icon = required(e, "Icon");
}

void TopicStatuses::Load(const Ref<XMLElement>& e) {
    forEachChild(e, [&](const Ref<XMLElement>& child) {
        const auto status = make<TopicStatus>();
        status->Load(child);
        Add(status, status->Name);
    });
}

void TopicStatuses::Save(const Ref<XMLElement>& e) const {
    for (const auto& status : Items()) status->Save(e->AddChild("Status", ""));
}

}  // namespace quillbox
