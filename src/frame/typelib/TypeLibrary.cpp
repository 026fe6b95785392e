#include "frame/typelib/TypeLibrary.h"

#include <algorithm>

#include "base/Text.h"
#include "frame/typelib/LateBound.h"

namespace quillbox {

namespace {

const MemberInfo& memberOf(const Object& object, std::string_view name) {
    const auto& info = TypeLibrary::Get().ClassOf(object);
    if (const auto* member = info.FindMember(name)) return *member;
    throw AutomationError("'" + info.name + "' has no member '" + std::string(name) + "'");
}

void prepare(const MemberInfo& member, Arguments& arguments) {
    if (arguments.size() > member.params.size())
        throw AutomationError("Too many arguments for '" + member.name + "'");
    arguments.resize(member.params.size());
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const auto& param = member.params[i];
        if (!arguments[i].IsMissing()) continue;
        if (!param.optional)
            throw AutomationError("Argument '" + param.name + "' of '" + member.name + "' is missing");
        arguments[i] = param.defaultValue;
    }
}

}  // namespace

const MemberInfo* ClassInfo::FindMember(std::string_view memberName) const {
    const auto found = mMemberPlaces.find(memberName);
    return found == mMemberPlaces.end() ? nullptr : &members[found->second];
}

const EventInfo* ClassInfo::FindEvent(std::string_view eventName) const {
    const auto same = [&](const EventInfo& event) { return sameText(event.name, eventName); };
    const auto found = std::find_if(events.begin(), events.end(), same);
    return found == events.end() ? nullptr : &*found;
}

const TypeLibrary& TypeLibrary::Get() {
    static const TypeLibrary library = [] {
        TypeLibrary made;
        describeLibrary(made);
        return made;
    }();
    return library;
}

void TypeLibrary::Add(ClassInfo info) {
    for (std::size_t i = 0; i < info.members.size(); ++i) {
        info.mMemberPlaces.emplace(info.members[i].name, i);
    }
    mClassPlaces.emplace(info.name, mClasses.size());
    mClasses.push_back(std::move(info));
}

const ClassInfo* TypeLibrary::FindClass(std::string_view name) const {
    const auto found = mClassPlaces.find(name);
    return found == mClassPlaces.end() ? nullptr : &mClasses[found->second];
}

const ClassInfo& TypeLibrary::ClassOf(const Object& object) const {
    if (const auto* info = FindClass(object.ClassName())) return *info;
    throw AutomationError("The class '" + std::string(object.ClassName()) + "' has no members for callers");
}

Ref<Object> TypeLibrary::CreateObject(std::string_view name) const {
    const std::string prefix = std::string(kName) + ".";
    const auto plain = startsWithText(name, prefix) ? name.substr(prefix.size()) : name;
    const auto* info = FindClass(plain);
    if (!info || !info->creatable)
        throw AutomationError("Objects of class '" + std::string(name) + "' cannot be created");
    return info->create();
}

Value readMember(Object& object, const MemberInfo& member, Arguments& arguments) {
    if (!member.read) throw AutomationError("'" + member.name + "' cannot be read");
    prepare(member, arguments);
    const auto keep = object.weak_from_this().lock();
    const auto held = arguments;  // a handler may drop what was passed
    return asAutomation([&] { return member.read(object, arguments); });
}

void writeMember(Object& object, const MemberInfo& member, Arguments& arguments, const Value& value) {
    if (!member.write) throw AutomationError("'" + member.name + "' is read-only");
    prepare(member, arguments);
    const auto keep = object.weak_from_this().lock();
    asAutomation([&] { member.write(object, arguments, value); });
}

Value getMember(Object& object, std::string_view name, Arguments arguments) {
    if (auto* late = object.AsLateBound()) return late->Get(std::string(name), arguments);
    return readMember(object, memberOf(object, name), arguments);
}

void putMember(Object& object, std::string_view name, const Value& value, Arguments arguments) {
    if (auto* late = object.AsLateBound()) return late->Put(std::string(name), arguments, value);
    writeMember(object, memberOf(object, name), arguments, value);
}

Value callMember(Object& object, std::string_view name, Arguments& arguments) {
    if (auto* late = object.AsLateBound()) return late->Call(std::string(name), arguments);
    return readMember(object, memberOf(object, name), arguments);
}

}  // namespace quillbox
