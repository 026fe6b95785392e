#include "library/PublishedProperty.h"

#include "base/AutomationError.h"
#include "frame/typelib/TypeLibrary.h"

namespace quillbox {

std::optional<std::string> readPublishedProperty(Object& item, const std::string& name) {
    const auto* info = TypeLibrary::Get().FindClass(item.ClassName());
    const auto* member = info ? info->FindMember(name) : nullptr;
    if (!member || member->kind == MemberKind::Method || !member->params.empty()) return {};
    std::optional<std::string> text;
    ignoringFailures([&] { text = toText(getMember(item, name)); });
    return text;
}

}  // namespace quillbox
