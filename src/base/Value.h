#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>

#include "base/Date.h"
#include "base/Object.h"

namespace quillbox {

// What crosses the automation surface. A missing argument is not the same as an empty one.
class Value {
  public:
    struct Missing {
        bool operator==(const Missing&) const = default;
    };
    using Empty = std::monostate;
    using Data =
        std::variant<Missing, Empty, bool, std::int32_t, float, double, std::string, Date, Ref<Object>>;

    Value() = default;
    Value(bool v) : mData(v) {}
    Value(std::int32_t v) : mData(v) {}
    Value(float v) : mData(v) {}
    Value(double v) : mData(v) {}
    Value(const char* v) : mData(std::string(v)) {}
    Value(std::string_view v) : mData(std::string(v)) {}
    Value(std::string v) : mData(std::move(v)) {}
    Value(const Date& v) : mData(v) {}
    template <class T>
    requires std::is_base_of_v<Object, T> Value(const Ref<T>& v) : mData(Ref<Object>(v)) {}

    static Value None() {
        Value value;
        value.mData = Empty{};
        return value;
    }

    const Data& Get() const { return mData; }
    template <class T>
    const T* If() const {
        return std::get_if<T>(&mData);
    }
    bool IsMissing() const { return If<Missing>() != nullptr; }
    // True for a missing, an empty and a none value and for empty text.
    bool IsBlank() const;
    bool operator==(const Value&) const = default;

  private:
    Data mData;
};

// Each fails with "Type mismatch" where the value has no sensible reading as the type asked for.
bool toBoolean(const Value& value);
std::int32_t toInteger(const Value& value);
double toNumber(const Value& value);
std::string toText(const Value& value);
Date toDate(const Value& value);
Ref<Object> toObject(const Value& value);

}  // namespace quillbox
