#include "Export.h"

#include <memory>
#include <unordered_map>

#include "Description.h"
#include "Foreign.h"
#include "Sinks.h"
#include "Values.h"
#include "frame/typelib/Held.h"
#include "frame/typelib/LateBound.h"

namespace quillbox::c {

namespace {

struct Exported : QbObject {
    Exported(const Ref<Object>& object, const ClassInfo* c) : QbObject{&kTable}, held(object), info(c) {}
    Held held;
    const ClassInfo* info;  // none for an object that is not described
    long references = 0;

    static const QbObjectTable kTable;
};

// Lives as long as the process: a caller may give back its last object after everything else.
std::unordered_map<const Object*, std::unique_ptr<Exported>>& exported() {
    static auto* all = new std::unordered_map<const Object*, std::unique_ptr<Exported>>;
    return *all;
}

Exported& exportedOf(QbObject* self) { return *static_cast<Exported*>(self); }

void retain(QbObject* self) { ++exportedOf(self).references; }

void release(QbObject* self) {
    auto& one = exportedOf(self);
    if (--one.references > 0) return;
    const auto gone = exported().extract(one.held.Get().get());  // out of the table before the object goes
}

const QbClass* describeObject(QbObject* self) {
    const auto* info = exportedOf(self).info;
    const QbClass* description = nullptr;
    if (info) guarded(nullptr, [&] { return description = describe(*info), QB_OK; });
    return description;
}

// The value that a write is given.
Value written(std::int32_t access, const QbValue* value) {
    if (!value) throw AutomationError("There is no value to write");
    const bool isObject = value->kind == QB_OBJECT;
    if (access == QB_WRITE && isObject) throw AutomationError("An object is written with QB_WRITE_OBJECT");
    if (access == QB_WRITE_OBJECT && !isObject && value->kind != QB_EMPTY) {
        throw AutomationError("QB_WRITE_OBJECT needs an object or none");
    }
    return fromC(*value);
}

Arguments argumentsFromC(const QbValue* arguments, std::size_t count) {
    if (count > 0 && !arguments)
        throw AutomationError("There are no arguments where a number of them is given");
    Arguments values;
    for (std::size_t i = 0; i < count; ++i) values.push_back(fromC(arguments[i]));
    return values;
}

void replace(QbValue* target, const Value& value) {
    QbValue made;
    toC(value, &made);
    qbClear(target);
    *target = made;
}

void give(QbValue* target, const Value& result) {
    if (target) toC(result, target);
}

std::int32_t invokeMember(Object& object, const MemberInfo& member, std::int32_t access, QbValue* arguments,
                          std::size_t count, QbValue* value) {
    auto values = argumentsFromC(arguments, count);
    if (access == QB_WRITE || access == QB_WRITE_OBJECT) {
        writeMember(object, member, values, written(access, value));
        return QB_OK;
    }
    if (access != QB_READ && access != QB_CALL) throw AutomationError("There is no such access to a member");
    if (access == QB_READ && member.kind == MemberKind::Method) {
        throw AutomationError("'" + member.name + "' is a method: it is called, not read");
    }
    const auto result = readMember(object, member, values);
    for (std::size_t i = 0; i < count; ++i) {
        if (member.params[i].byRef) replace(&arguments[i], values[i]);
    }
    give(value, result);
    return QB_OK;
}

std::int32_t invokeLate(LateBound& object, const std::string& name, std::int32_t access, QbValue* arguments,
                        std::size_t count, QbValue* value) {
    auto values = argumentsFromC(arguments, count);
    switch (access) {
        case QB_WRITE:
        case QB_WRITE_OBJECT:
            object.Put(name, values, written(access, value));
            return QB_OK;
        case QB_READ:
            give(value, object.Get(name, values));
            return QB_OK;
        case QB_CALL:
            give(value, object.Call(name, values));
            return QB_OK;
        default:
            throw AutomationError("There is no such access to a member");
    }
}

const ClassInfo& infoOf(const Exported& one) {
    if (one.info) return *one.info;
    throw AutomationError("The class '" + std::string(one.held.Get()->ClassName()) +
                          "' has no members for callers");
}

std::int32_t invoke(QbObject* self, std::int32_t slot, std::int32_t access, QbValue* arguments,
                    std::size_t count, QbValue* value, QbError* error) {
    return guarded(error, [&] {
        const auto& one = exportedOf(self);
        const auto& members = infoOf(one).members;
        if (slot < 0 || static_cast<std::size_t>(slot) >= members.size()) {
            throw AutomationError("There is no member in slot " + std::to_string(slot));
        }
        const auto object = one.held.Get();
        return invokeMember(*object, members[static_cast<std::size_t>(slot)], access, arguments, count,
                            value);
    });
}

std::int32_t invokeByName(QbObject* self, const char* name, std::int32_t access, QbValue* arguments,
                          std::size_t count, QbValue* value, QbError* error) {
    return guarded(error, [&] {
        if (!name) throw AutomationError("A member needs a name");
        const auto& one = exportedOf(self);
        const auto object = one.held.Get();
        if (auto* late = object->AsLateBound()) {
            return invokeLate(*late, name, access, arguments, count, value);
        }
        const auto& info = infoOf(one);
        const auto* member = info.FindMember(name);
        if (!member) throw AutomationError("'" + info.name + "' has no member '" + name + "'");
        return invokeMember(*object, *member, access, arguments, count, value);
    });
}

std::int32_t connect(QbObject* self, std::int32_t event, QbObject* sink, std::int32_t* connection,
                     QbError* error) {
    return guarded(error, [&] {
        const auto& one = exportedOf(self);
        for (const auto& described : infoOf(one).events) {
            if (described.id != event) continue;
            const auto number = connectSink(one.held.Get(), described, sink);
            if (connection) *connection = number;
            return QB_OK;
        }
        throw AutomationError("'" + infoOf(one).name + "' has no event " + std::to_string(event));
    });
}

std::int32_t disconnect(QbObject*, std::int32_t connection) {
    return guarded(nullptr, [&] { return disconnectSink(connection) ? QB_OK : QB_FALSE; });
}

const QbObjectTable Exported::kTable = {QB_AUTOMATION_VERSION, retain,  release,   describeObject, invoke,
                                        invokeByName,          connect, disconnect};

QbObject* exportAs(const Ref<Object>& object, const ClassInfo* info) {
    auto& one = exported()[object.get()];
    if (!one) one = std::make_unique<Exported>(object, info);
    retain(one.get());
    return one.get();
}

}  // namespace

QbObject* exportObject(const Ref<Object>& object) {
    if (auto* original = foreignObject(*object)) return original;
    return exportAs(object, TypeLibrary::Get().FindClass(object->ClassName()));
}

QbObject* exportObject(const Ref<Object>& object, const ClassInfo& info) { return exportAs(object, &info); }

Ref<Object> exportedObject(const QbObject* object) {
    if (object->table != &Exported::kTable) return {};
    return static_cast<const Exported*>(object)->held.Get();
}

}  // namespace quillbox::c
