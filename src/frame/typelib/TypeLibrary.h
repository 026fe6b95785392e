#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/AutomationError.h"
#include "base/FoldedMap.h"
#include "base/Value.h"

namespace quillbox {

// The description of the published classes, from which dispatch, the C entry points, the Python module, the
// type stubs and the reference pages are derived.

using Arguments = std::vector<Value>;

struct ParameterInfo {
    std::string name;
    std::string type;
    bool byRef = false;
    bool optional = false;
    Value defaultValue;  // missing where there is none
};

enum class MemberKind { Property, PropertyRead, PropertyWrite, Method };

struct MemberInfo {
    std::string name;
    MemberKind kind;
    std::string type;  // empty for a method without a result
    std::vector<ParameterInfo> params;
    std::string help;
    // Members of an interface that the class implements are reached by name, but not listed.
    bool listed = true;

    // Read of a property or call of a method. By-reference arguments come back in place.
    std::function<Value(Object&, Arguments&)> read;
    std::function<void(Object&, Arguments&, const Value&)> write;
};

// Ends a connection to an event; a second call does nothing.
using Disconnect = std::function<void()>;
// Gets the published arguments in order; by-reference ones are taken back from it.
using EventSink = std::function<void(Arguments&)>;

struct EventInfo {
    std::string name;
    int id;
    std::vector<ParameterInfo> params;
    std::function<Disconnect(Object&, EventSink)> connect;
};

struct ClassInfo {
    std::string name;
    std::string help;
    std::string defaultMember;
    bool creatable = false;
    // Classes of the platform are reachable by scripts, but are no part of the library's own list.
    bool published = true;
    std::vector<MemberInfo> members;
    std::vector<EventInfo> events;
    std::function<Ref<Object>()> create;
    // Items of a collection in list order; not set for other classes.
    std::function<std::vector<Value>(Object&)> items;

    // Names ignore case.
    const MemberInfo* FindMember(std::string_view memberName) const;
    const EventInfo* FindEvent(std::string_view eventName) const;

  private:
    friend class TypeLibrary;
    FoldedMap<std::size_t> mMemberPlaces;  // made when the library takes the class in
};

struct EnumerationInfo {
    std::string name;
    std::vector<std::pair<std::string, int>> values;
    bool published = true;
};

class TypeLibrary {
  public:
    static constexpr std::string_view kName = "Quillbox";
    // Made on first use.
    static const TypeLibrary& Get();

    const std::vector<ClassInfo>& Classes() const { return mClasses; }
    const std::vector<EnumerationInfo>& Enumerations() const { return mEnumerations; }
    const ClassInfo* FindClass(std::string_view name) const;
    // The description of an object's class; fails for a class that is not described.
    const ClassInfo& ClassOf(const Object& object) const;
    // By "Topic" or "Quillbox.Topic"; fails for a class that callers cannot create.
    Ref<Object> CreateObject(std::string_view name) const;

    void Add(ClassInfo info);
    void Add(EnumerationInfo info) { mEnumerations.push_back(std::move(info)); }

  private:
    std::vector<ClassInfo> mClasses;
    FoldedMap<std::size_t> mClassPlaces;
    std::vector<EnumerationInfo> mEnumerations;
};

// Supplied beside the published classes: fills the library in published order.
void describeLibrary(TypeLibrary& library);

// Runs a step of the surface: a failure of another kind than AutomationError leaves it as one.
template <class Step>
decltype(auto) asAutomation(Step&& step) {
    try {
        return step();
    } catch (const AutomationError&) {
        throw;
    } catch (const std::exception& error) {
        throw AutomationError(error.what());
    }
}

// Late-bound access, as a script has it. Each fails for a member that is not there.
Value getMember(Object& object, std::string_view name, Arguments arguments = {});
void putMember(Object& object, std::string_view name, const Value& value, Arguments arguments = {});
Value callMember(Object& object, std::string_view name, Arguments& arguments);

// Access through a description that is at hand. Missing optional arguments may be left out at the end.
Value readMember(Object& object, const MemberInfo& member, Arguments& arguments);
void writeMember(Object& object, const MemberInfo& member, Arguments& arguments, const Value& value);

}  // namespace quillbox
