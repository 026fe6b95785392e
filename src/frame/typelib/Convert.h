#pragma once

#include <optional>
#include <string>
#include <type_traits>
#include <vector>

#include "base/AutomationError.h"
#include "base/Collection.h"
#include "base/Value.h"

namespace quillbox {

// How C++ types and values of the automation surface meet: one row a type.

template <class E>
struct EnumerationName;  // specialised beside each published enumeration: static constexpr const char* value

template <class T, class = void>
struct Convert;

template <>
struct Convert<bool> {
    static constexpr const char* type = "Boolean";
    static bool From(const Value& v) { return toBoolean(v); }
    static Value To(bool v) { return v; }
};

template <>
struct Convert<int> {
    static constexpr const char* type = "Long";
    static int From(const Value& v) { return toInteger(v); }
    static Value To(int v) { return v; }
};

template <>
struct Convert<float> {
    static constexpr const char* type = "Single";
    static float From(const Value& v) { return static_cast<float>(toNumber(v)); }
    static Value To(float v) { return v; }
};

template <>
struct Convert<double> {
    static constexpr const char* type = "Double";
    static double From(const Value& v) { return toNumber(v); }
    static Value To(double v) { return v; }
};

template <>
struct Convert<std::string> {
    static constexpr const char* type = "String";
    static std::string From(const Value& v) { return toText(v); }
    static Value To(std::string v) { return Value(std::move(v)); }
};

template <>
struct Convert<Date> {
    static constexpr const char* type = "Date";
    static Date From(const Value& v) { return toDate(v); }
    static Value To(const Date& v) { return v; }
};

template <>
struct Convert<Value> {
    static constexpr const char* type = "Variant";
    static Value From(const Value& v) { return v; }
    static Value To(Value v) { return v.IsMissing() ? Value::None() : v; }
};

template <>
struct Convert<Ref<Object>> {
    static constexpr const char* type = "Object";
    static Ref<Object> From(const Value& v) { return toObject(v); }
    static Value To(const Ref<Object>& v) { return v; }
};

template <class T>
struct Convert<Ref<T>, std::enable_if_t<!std::is_same_v<T, Object>>> {
    static Ref<T> From(const Value& v) {
        const auto object = toObject(v);
        if (!object) return {};
        if (auto wanted = std::dynamic_pointer_cast<T>(object)) return wanted;
        throw AutomationError("Type mismatch: an object of class '" + std::string(object->ClassName()) +
                              "' is not what is needed here");
    }
    static Value To(const Ref<T>& v) { return v; }
};

template <class E>
struct Convert<E, std::enable_if_t<std::is_enum_v<E>>> {
    static constexpr const char* type = EnumerationName<E>::value;
    static E From(const Value& v) { return static_cast<E>(toInteger(v)); }
    static Value To(E v) { return static_cast<std::int32_t>(v); }
};

// A result list is handed to callers as a plain collection.
template <class T>
struct Convert<std::vector<T>> {
    static constexpr const char* type = "Collection";
    static Value To(const std::vector<T>& items) {
        auto list = make<Collection>();
        for (const auto& item : items) list->Add(Convert<T>::To(item));
        return list;
    }
};

template <class T>
struct IsRef : std::false_type {};
template <class T>
struct IsRef<Ref<T>> : std::true_type {
    using Target = T;
};

// The type as it is described.
template <class T>
std::string typeName() {
    if constexpr (std::is_void_v<T>) {
        return {};
    } else if constexpr (IsRef<T>::value && !std::is_same_v<T, Ref<Object>>) {
        return std::string(IsRef<T>::Target::kClassName);
    } else {
        return Convert<T>::type;
    }
}

}  // namespace quillbox
