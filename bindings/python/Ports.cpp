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

Hive hiveOf(const py::object& number) {
    if (!PyLong_Check(number.ptr())) throw py::type_error("a hive is a number");
    int overflow = 0;
    const auto hive =
        static_cast<Hive>(static_cast<std::uint32_t>(PyLong_AsLongLongAndOverflow(number.ptr(), &overflow)));
    if (overflow != 0 || (hive != Hive::CurrentUser && hive != Hive::LocalMachine))
        throw AutomationError("There is no such hive");
    return hive;
}

std::string textOf(const py::object& value) { return toText(toValue(value)); }

}  // namespace

// The package puts functions of Python before these, which look at the arguments' names.
void addPorts(py::module_& module) {
    module.def("set_message_box", [](const py::object& handler) {
        guarded([&] { replace<ScriptMessageBoxes>(&Platform::messages, handler); });
    });
    module.def("set_web_request", [](const py::object& handler) {
        guarded([&] { replace<ScriptWebRequest>(&Platform::web, handler); });
    });
    using Argument = const py::object&;
    module.def("read_registry_value", [](Argument hive, Argument key, Argument name) {
        return guarded(
            [&] { return fromUtf8(platform().settings->Read(hiveOf(hive), textOf(key), textOf(name))); });
    });
    module.def("write_registry_value", [](Argument hive, Argument key, Argument name, Argument value) {
        guarded([&] { platform().settings->Write(hiveOf(hive), textOf(key), textOf(name), textOf(value)); });
    });
    module.def("delete_registry_value", [](Argument hive, Argument key, Argument name) {
        guarded([&] { platform().settings->Delete(hiveOf(hive), textOf(key), textOf(name)); });
    });
}

}  // namespace quillbox::python
