#include "Description.h"

#include <deque>
#include <memory>
#include <unordered_map>

namespace quillbox::c {

namespace {

// The C structures point into the class's own description, which lives as long as the library.
struct Description {
    explicit Description(const ClassInfo& info) {
        std::int32_t defaultSlot = -1;
        for (const auto& member : info.members) {
            if (member.name == info.defaultMember) defaultSlot = static_cast<std::int32_t>(members.size());
            members.push_back({member.name.c_str(), static_cast<std::int32_t>(member.kind),
                               member.type.c_str(), member.help.c_str(), member.params.size(),
                               parametersOf(member.params)});
        }
        for (const auto& event : info.events) {
            events.push_back({event.name.c_str(), event.id, event.params.size(), parametersOf(event.params)});
        }
        described = {info.name.c_str(), info.help.c_str(), info.creatable, defaultSlot,
                     members.size(),    members.data(),    events.size(),  events.data()};
    }

    const QbParameter* parametersOf(const std::vector<ParameterInfo>& params) {
        auto& list = parameters.emplace_back();
        for (const auto& param : params) {
            list.push_back({param.name.c_str(), param.type.c_str(), param.byRef, param.optional});
        }
        return list.data();
    }

    std::deque<std::vector<QbParameter>> parameters;
    std::vector<QbMember> members;
    std::vector<QbEvent> events;
    QbClass described;
};

static_assert(QB_PROPERTY == static_cast<int>(MemberKind::Property));
static_assert(QB_PROPERTY_READ == static_cast<int>(MemberKind::PropertyRead));
static_assert(QB_PROPERTY_WRITE == static_cast<int>(MemberKind::PropertyWrite));
static_assert(QB_METHOD == static_cast<int>(MemberKind::Method));

}  // namespace

const QbClass* describe(const ClassInfo& info) {
    static std::unordered_map<const ClassInfo*, std::unique_ptr<Description>> made;
    auto& description = made[&info];
    if (!description) description = std::make_unique<Description>(info);
    return &description->described;
}

}  // namespace quillbox::c
