#include "base/Value.h"

#include <charconv>
#include <cmath>
#include <limits>

#include "base/AutomationError.h"
#include "base/Text.h"

namespace quillbox {

namespace {

constexpr std::string_view kKinds[] = {"nothing",  "an empty value", "a Boolean", "a number", "a number",
                                       "a number", "text",           "a date",    "an object"};

[[noreturn]] void mismatch(const Value& value, std::string_view wanted) {
    throw AutomationError("Type mismatch: " + std::string(kKinds[value.Get().index()]) + " where " +
                          std::string(wanted) + " is needed");
}

template <class Number>
std::string decimal(Number number) {
    char buffer[64];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, number).ptr;
    return {buffer, end};
}

}  // namespace

bool Value::IsBlank() const {
    if (const auto* text = If<std::string>()) return text->empty();
    if (const auto* object = If<Ref<Object>>()) return !*object;
    return IsMissing() || If<Empty>();
}

double toNumber(const Value& value) {
    if (const auto* v = value.If<std::int32_t>()) return *v;
    if (const auto* v = value.If<bool>()) return *v ? -1 : 0;
    if (const auto* v = value.If<float>()) return *v;
    if (const auto* v = value.If<double>()) return *v;
    if (value.If<Value::Empty>()) return 0;
    if (const auto* text = value.If<std::string>()) {
        const auto trimmed = trimBlanks(*text);
        double number = 0;
        const auto end = trimmed.data() + trimmed.size();
        const auto [stop, error] = std::from_chars(trimmed.data(), end, number);
        if (error == std::errc() && stop == end && !trimmed.empty()) return number;
    }
    mismatch(value, "a number");
}

std::int32_t toInteger(const Value& value) {
    if (const auto* v = value.If<std::int32_t>()) return *v;
    const double number = std::nearbyint(toNumber(value));
    using Limits = std::numeric_limits<std::int32_t>;
    if (!(number >= Limits::min() && number <= Limits::max()))
        throw AutomationError("Overflow: the number does not fit 32 bits");
    return static_cast<std::int32_t>(number);
}

bool toBoolean(const Value& value) {
    if (const auto* v = value.If<bool>()) return *v;
    if (const auto* text = value.If<std::string>()) {
        if (sameText(*text, "True")) return true;
        if (sameText(*text, "False")) return false;
    }
    return toNumber(value) != 0;
}

std::string toText(const Value& value) {
    if (const auto* v = value.If<std::string>()) return *v;
    if (value.If<Value::Empty>()) return {};
    if (const auto* v = value.If<bool>()) return *v ? "True" : "False";
    if (const auto* v = value.If<std::int32_t>()) return decimal(*v);
    if (const auto* v = value.If<float>()) return decimal(*v);
    if (const auto* v = value.If<double>()) return decimal(*v);
    if (const auto* v = value.If<Date>()) return v->Format("yyyy-mm-dd hh:nn:ss");
    mismatch(value, "text");
}

Date toDate(const Value& value) {
    if (const auto* v = value.If<Date>()) return *v;
    if (value.If<Value::Empty>()) return {};
    mismatch(value, "a date");
}

Ref<Object> toObject(const Value& value) {
    if (const auto* v = value.If<Ref<Object>>()) return *v;
    if (value.If<Value::Empty>() || value.IsMissing()) return {};
    mismatch(value, "an object");
}

}  // namespace quillbox
