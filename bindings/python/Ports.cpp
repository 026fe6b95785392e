#include "Ports.h"

#include "Errors.h"
#include "ScriptObject.h"
#include "Values.h"
#include "frame/Platform.h"

namespace quillbox::python {

namespace {

class ScriptMessageBoxes : public MessageBoxes {
  public:
    explicit ScriptMessageBoxes(const py::object& handler) : mHandler(handler) {}
    MessageAnswer Show(const std::string& text, const std::string& title, MessageButtons buttons,
                       MessageIcon icon) override {
        return asHandler([&] {
            const py::object handler = mHandler.Get();  // a handler may put another in its place
            const auto number = [](auto value, const char* type) {
                return toPython(static_cast<int>(value), type);
            };
            const py::object answer =
                handler(fromUtf8(text), fromUtf8(title), number(buttons, "MessageButtonsEnum"),
                        number(icon, "MessageIconEnum"));
            if (answer.is_none()) throw AutomationError("The message box handler returned no button");
            return static_cast<MessageAnswer>(toInteger(toValue(answer)));
        });
    }

  private:
    Keeper mHandler;
};

class ScriptWebRequest : public WebRequest {
  public:
    explicit ScriptWebRequest(const py::object& handler) : mHandler(handler) {}
    std::string Fetch(const std::string& url) override {
        return asHandler([&] {
            const py::object handler = mHandler.Get();
            return toText(toValue(handler(fromUtf8(url))));
        });
    }

  private:
    Keeper mHandler;
};

// Puts a handler of the script in the place of an adapter; no handler puts the first adapter back.
template <class Script, class Port>
void replace(std::shared_ptr<Port> Platform::*port, const py::object& handler) {
    static const std::shared_ptr<Port> first = platform().*port;
    if (handler.is_none()) {
        platform().*port = first;
    } else if (PyCallable_Check(handler.ptr())) {
        platform().*port = std::make_shared<Script>(handler);
    } else {
        throw py::type_error("a handler must be callable");
    }
}

Hive hiveOf(const py::int_& number) {
    const auto hive = static_cast<Hive>(static_cast<std::uint32_t>(number.cast<std::int64_t>()));
    if (hive != Hive::CurrentUser && hive != Hive::LocalMachine)
        throw AutomationError("There is no such hive");
    return hive;
}

py::object readRegistryValue(const py::int_& hive, const py::str& key, const py::str& name) {
    return guarded(
        [&] { return fromUtf8(platform().settings->Read(hiveOf(hive), toUtf8(key), toUtf8(name))); });
}

void writeRegistryValue(const py::int_& hive, const py::str& key, const py::str& name,
                        const py::object& value) {
    guarded(
        [&] { platform().settings->Write(hiveOf(hive), toUtf8(key), toUtf8(name), toText(toValue(value))); });
}

void deleteRegistryValue(const py::int_& hive, const py::str& key, const py::str& name) {
    guarded([&] { platform().settings->Delete(hiveOf(hive), toUtf8(key), toUtf8(name)); });
}

}  // namespace

void addPorts(py::module_& module) {
    using py::arg;
    module.def(
        "SetMessageBox",
        [](const py::object& handler) {
            guarded([&] { replace<ScriptMessageBoxes>(&Platform::messages, handler); });
        },
        arg("handler").none(true),
        "Calls handler(Text, Title, Buttons, Icon) for every message box; it returns the button pressed. "
        "None puts "
        "the default back.");
    module.def(
        "SetWebRequest",
        [](const py::object& handler) {
            guarded([&] { replace<ScriptWebRequest>(&Platform::web, handler); });
        },
        arg("handler").none(true),
        "Calls handler(url) for every fetch; it returns the error text, empty for success. None puts the "
        "real one "
        "back.");
    module.def("ReadRegistryValue", readRegistryValue, arg("Hive"), arg("Key"), arg("ValueName"),
               "A value of the settings store as text; empty for an absent one.");
    module.def("WriteRegistryValue", writeRegistryValue, arg("Hive"), arg("Key"), arg("ValueName"),
               arg("Value"), "Writes a value of the settings store.");
    module.def("DeleteRegistryValue", deleteRegistryValue, arg("Hive"), arg("Key"), arg("ValueName"),
               "Deletes a value of the settings store; one that is not there is fine.");
}

}  // namespace quillbox::python
