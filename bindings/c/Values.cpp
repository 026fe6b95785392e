#include "Values.h"

#include <cstring>

#include "Export.h"
#include "Foreign.h"
#include "base/Text.h"

namespace quillbox::c {

namespace {

std::string textFromC(const QbText& text) {
    if (!text.bytes) {
        if (text.size == 0) return {};
        throw AutomationError("A text has a size but no bytes");
    }
    std::string copy(text.bytes, text.size);
    if (!isValidUtf8(copy)) throw AutomationError("A text is not UTF-8");
    return copy;
}

Date dateFromC(const QbDate& d) {
    if (const auto date = Date::From({d.year, d.month, d.day, d.hour, d.minute, d.second, d.microsecond}))
        return *date;
    throw AutomationError("A date names no day or time between the years 1 and 9999");
}

struct ToC {
    QbValue* target;
    void operator()(const Value::Missing&) const { target->kind = QB_MISSING; }
    void operator()(const Value::Empty&) const { target->kind = QB_EMPTY; }
    void operator()(bool v) const {
        target->kind = QB_BOOLEAN;
        target->as.boolean = v;
    }
    void operator()(std::int32_t v) const {
        target->kind = QB_INTEGER;
        target->as.integer = v;
    }
    void operator()(float v) const {
        target->kind = QB_SINGLE;
        target->as.single = v;
    }
    void operator()(double v) const {
        target->kind = QB_DOUBLE;
        target->as.number = v;
    }
    void operator()(const std::string& v) const {
        target->as.text = {copyText(v), v.size()};
        target->kind = QB_TEXT;
        if (!target->as.text.bytes) throw std::bad_alloc();
    }
    void operator()(const Date& v) const {
        const auto p = v.Split();
        target->kind = QB_DATE;
        target->as.date = {p.year, p.month, p.day, p.hour, p.minute, p.second, p.microsecond};
    }
    void operator()(const Ref<Object>& v) const {
        target->as.object = v ? exportObject(v) : nullptr;
        target->kind = v ? QB_OBJECT : QB_EMPTY;
    }
};

}  // namespace

Value fromC(const QbValue& value) {
    switch (value.kind) {
        case QB_MISSING:
            return {};
        case QB_EMPTY:
            return Value::None();
        case QB_BOOLEAN:
            return value.as.boolean != 0;
        case QB_INTEGER:
            return value.as.integer;
        case QB_SINGLE:
            return value.as.single;
        case QB_DOUBLE:
            return value.as.number;
        case QB_TEXT:
            return textFromC(value.as.text);
        case QB_DATE:
            return dateFromC(value.as.date);
        case QB_OBJECT:
            return importObject(value.as.object);
        default:
            throw AutomationError("There is no kind of value " + std::to_string(value.kind));
    }
}

void toC(const Value& value, QbValue* target) {
    target->kind = QB_EMPTY;
    std::visit(ToC{target}, value.Get());
}

Value taken(QbValue& value) {
    struct Clearing {
        QbValue& value;
        ~Clearing() { qbClear(&value); }
    } clearing{value};
    return fromC(value);
}

char* copyText(const std::string& text) {
    auto* copy = static_cast<char*>(std::malloc(text.size() + 1));
    if (copy) std::memcpy(copy, text.c_str(), text.size() + 1);
    return copy;
}

CArguments::CArguments(const Arguments& arguments) : mValues(arguments.size()) {
    for (auto& value : mValues) value.kind = QB_EMPTY;
    for (std::size_t i = 0; i < arguments.size(); ++i) toC(arguments[i], &mValues[i]);
}

CArguments::~CArguments() {
    for (auto& value : mValues) qbClear(&value);
}

void CArguments::TakeBack(Arguments& arguments) const {
    for (std::size_t i = 0; i < arguments.size(); ++i) arguments[i] = fromC(mValues[i]);
}

void throwFailure(QbError& error) {
    AutomationError failure(error.description ? error.description : "The call failed", error.number);
    std::free(error.description);
    throw failure;
}

}  // namespace quillbox::c
