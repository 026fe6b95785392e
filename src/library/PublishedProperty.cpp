#include "library/PublishedProperty.h"

#include "base/AutomationError.h"
#include "frame/typelib/LateBound.h"
#include "frame/typelib/TypeLibrary.h"

namespace quillbox {

std::optional<std::string> readPublishedProperty(Object& item, const std::string& path) {
    const auto dot = path.find('.');
    const auto name = std::string_view(path).substr(0, dot);
    const auto* info = TypeLibrary::Get().FindClass(item.ClassName());
    const auto* member = info ? info->FindMember(name) : nullptr;
    if (!member || member->kind == MemberKind::Method || !member->params.empty()) return {};
    std::optional<std::string> text;
    Arguments none;
    ignoringFailures([&] {
        const bool isLate = item.AsLateBound() != nullptr;
        const auto value = isLate ? getMember(item, name) : readMember(item, *member, none);
        if (dot == std::string::npos) {
            text = toText(value);
        } else {
            const auto next = toObject(value);
            text = next ? readPublishedProperty(*next, path.substr(dot + 1)) : std::string();
        }
    });
    return text;
}

}  // namespace quillbox
