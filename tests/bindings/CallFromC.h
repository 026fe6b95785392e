#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "bindings/c/ClassIds.h"
#include "quillbox/automation.h"

namespace quillbox {

// A value that gives back what it holds.
struct CValue : QbValue {
    CValue() : QbValue{QB_EMPTY, {}} {}
    ~CValue() { qbClear(this); }
    CValue(CValue&& other) noexcept : QbValue(other) { other.kind = QB_EMPTY; }
    CValue(const CValue&) = delete;
    CValue& operator=(const CValue&) = delete;

    static CValue Missing() {
        CValue value;
        value.kind = QB_MISSING;
        return value;
    }
    static CValue Of(const std::string& text) {
        CValue value;
        value.kind = QB_TEXT;
        value.as.text = {strdup(text.c_str()), text.size()};
        return value;
    }
    static CValue Of(const char* text) { return Of(std::string(text)); }
    static CValue Of(int number) {
        CValue value;
        value.kind = QB_INTEGER;
        value.as.integer = number;
        return value;
    }
    static CValue Of(bool boolean) {
        CValue value;
        value.kind = QB_BOOLEAN;
        value.as.boolean = boolean;
        return value;
    }
    static CValue Of(QbObject* object) {
        CValue value;
        value.kind = QB_OBJECT;
        value.as.object = object;
        object->table->retain(object);
        return value;
    }

    std::string Text() const {
        return kind == QB_TEXT ? std::string(as.text.bytes, as.text.size) : "no text";
    }
};

// An object as a program in C has it.
class CObject {
  public:
    explicit CObject(QbObject* taken) : mObject(taken) {}
    explicit CObject(const CValue& value) : mObject(value.kind == QB_OBJECT ? value.as.object : nullptr) {
        if (mObject) mObject->table->retain(mObject);
    }
    ~CObject() {
        if (mObject) mObject->table->release(mObject);
    }
    CObject(CObject&& other) noexcept : mObject(std::exchange(other.mObject, nullptr)) {}
    CObject(const CObject&) = delete;
    CObject& operator=(const CObject&) = delete;

    // By its name, "Topic", through the entry point.
    static CObject Create(const std::string& className) {
        QbObject* factory = nullptr;
        EXPECT_EQ(DllGetClassObject(c::classId("Quillbox." + className).c_str(), 1, &factory), QB_OK);
        return CObject(CObject(factory).Call("CreateInstance"));
    }

    template <class... A>
    CValue Call(const char* name, A&&... arguments) {
        return Invoke(name, QB_CALL, std::forward<A>(arguments)...);
    }
    template <class... A>
    CValue Read(const char* name, A&&... arguments) {
        return Invoke(name, QB_READ, std::forward<A>(arguments)...);
    }
    template <class V>
    void Write(const char* name, V&& v) {
        auto value = CValue::Of(std::forward<V>(v));
        const auto access = value.kind == QB_OBJECT ? QB_WRITE_OBJECT : QB_WRITE;
        result = mObject->table->invokeByName(mObject, name, access, nullptr, 0, &value, fresh());
    }
    template <class... A>
    CValue Invoke(const char* name, int access, A&&... arguments) {
        std::vector<CValue> values;
        (values.push_back(argument(std::forward<A>(arguments))), ...);
        return InvokeWith(name, access, values);
    }
    CValue InvokeWith(const char* name, int access, std::vector<CValue>& values) {
        CValue value;
        std::vector<QbValue> plain(values.begin(), values.end());
        result =
            mObject->table->invokeByName(mObject, name, access, plain.data(), plain.size(), &value, fresh());
        for (std::size_t i = 0; i < values.size(); ++i) static_cast<QbValue&>(values[i]) = plain[i];
        return value;
    }

    QbObject* Get() const { return mObject; }
    const QbClass& Description() const { return *mObject->table->describe(mObject); }
    // What came of the last call.
    int result = QB_OK;
    std::string Failure() const { return mError.description ? mError.description : ""; }
    int FailureNumber() const { return mError.number; }

  private:
    struct Error : QbError {
        Error() : QbError{0, nullptr} {}
        ~Error() { free(description); }
    };
    static CValue argument(CValue&& value) { return std::move(value); }
    template <class T>
    static CValue argument(T&& value) {
        return CValue::Of(std::forward<T>(value));
    }
    QbError* fresh() {
        free(mError.description);
        mError.number = 0;
        mError.description = nullptr;
        return &mError;
    }

    QbObject* mObject;
    Error mError;
};

}  // namespace quillbox
