#include "Foreign.h"

#include <algorithm>
#include <unordered_map>

#include "Export.h"
#include "Values.h"
#include "base/Text.h"
#include "frame/typelib/LateBound.h"

namespace quillbox::c {

namespace {

class ForeignObject;

// One object for one C side, for as long as it is held.
std::unordered_map<QbObject*, std::weak_ptr<ForeignObject>>& known() {
    static auto* all = new std::unordered_map<QbObject*, std::weak_ptr<ForeignObject>>;
    return *all;
}

class ForeignObject : public LateBound {
  public:
    static constexpr std::string_view kClassName = "ForeignObject";
    std::string_view ClassName() const override { return kClassName; }

    explicit ForeignObject(QbObject* object) : mObject(object) { mObject->table->retain(mObject); }
    ~ForeignObject() override {
        known().erase(mObject);
        mObject->table->release(mObject);
    }

    QbObject* Original() const { return mObject; }

    bool HasMethod(const std::string& name) override {
        const auto* member = find(name);
        return member && member->kind == QB_METHOD;
    }
    Value Get(const std::string& name, Arguments& arguments) override {
        return reading(name, QB_READ, arguments);
    }
    Value Call(const std::string& name, Arguments& arguments) override {
        return reading(name, QB_CALL, arguments);
    }
    void Put(const std::string& name, Arguments& arguments, const Value& value) override {
        // None is written as an object where the member holds one.
        const bool isObject = value.If<Ref<Object>>() || (value.If<Value::Empty>() && holdsObject(name));
        CArguments written({value});
        invoke(name, isObject ? QB_WRITE_OBJECT : QB_WRITE, arguments, written.Data());
    }

  private:
    const QbMember* find(const std::string& name) const {
        const auto* described = mObject->table->describe(mObject);
        if (!described) return nullptr;
        const auto* end = described->members + described->memberCount;
        const auto* found = std::find_if(described->members, end,
                                         [&](const QbMember& member) { return sameText(member.name, name); });
        return found == end ? nullptr : found;
    }
    bool holdsObject(const std::string& name) const {
        static constexpr std::string_view plain[] = {"Boolean", "Long", "Single", "Double",
                                                     "String",  "Date", "Variant"};
        const auto* member = find(name);
        return member && member->type &&
               std::find(std::begin(plain), std::end(plain), member->type) == std::end(plain);
    }

    Value reading(const std::string& name, std::int32_t access, Arguments& arguments) {
        QbValue result{QB_EMPTY, {}};
        invoke(name, access, arguments, &result);
        return taken(result);
    }

    void invoke(const std::string& name, std::int32_t access, Arguments& arguments, QbValue* value) {
        CArguments values(arguments);
        QbError error{0, nullptr};
        const auto status = mObject->table->invokeByName(mObject, name.c_str(), access, values.Data(),
                                                         values.Count(), value, &error);
        if (status < 0) throwFailure(error);
        values.TakeBack(arguments);
    }

    QbObject* mObject;
};

}  // namespace

Ref<Object> importObject(QbObject* object) {
    if (!object) return {};
    if (!object->table || object->table->version < 1)
        throw AutomationError("An object speaks no version of the interface");
    if (auto ours = exportedObject(object)) return ours;
    if (auto found = known()[object].lock()) return found;
    auto made = make<ForeignObject>(object);
    known()[object] = made;
    return made;
}

QbObject* foreignObject(const Object& object) {
    const auto* foreign = dynamic_cast<const ForeignObject*>(&object);
    if (!foreign) return nullptr;
    foreign->Original()->table->retain(foreign->Original());
    return foreign->Original();
}

}  // namespace quillbox::c
