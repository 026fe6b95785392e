#pragma once

#include <string>

#include "base/Value.h"
#include "frame/typelib/TypeLibrary.h"
#include "quillbox/automation.h"

namespace quillbox::c {

// Takes a copy; fails for a value that is not well-formed.
Value fromC(const QbValue& value);
// The target gets what the caller then owns; what it held before is not looked at.
void toC(const Value& value, QbValue* target);

// Takes the value itself: it is empty afterwards.
Value taken(QbValue& value);

// A copy that is freed with free.
char* copyText(const std::string& text);

// The arguments of a call, in C, for as long as it lasts.
class CArguments {
  public:
    explicit CArguments(const Arguments& arguments);
    ~CArguments();
    CArguments(const CArguments&) = delete;
    CArguments& operator=(const CArguments&) = delete;
    QbValue* Data() { return mValues.data(); }
    std::size_t Count() const { return mValues.size(); }
    // Takes the values as they are after the call.
    void TakeBack(Arguments& arguments) const;

  private:
    std::vector<QbValue> mValues;
};

// Takes the failure that a C function told, and frees it.
[[noreturn]] void throwFailure(QbError& error);

// Runs a step of a C function: no exception leaves it.
template <class Step>
std::int32_t guarded(QbError* error, Step&& step) noexcept {
    const auto tell = [error](int number, const char* description) {
        if (error) *error = QbError{number, copyText(description)};
        return std::int32_t{QB_FAILED};
    };
    try {
        return step();
    } catch (const AutomationError& failure) {
        return tell(failure.Number(), failure.what());
    } catch (const std::exception& failure) {
        return tell(AutomationError::kNumber, failure.what());
    }
}

}  // namespace quillbox::c
