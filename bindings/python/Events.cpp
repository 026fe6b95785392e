#include "Events.h"

#include <unordered_map>

#include "Errors.h"
#include "ScriptObject.h"
#include "Values.h"

namespace quillbox::python {

namespace {

struct Connected;
std::unordered_multimap<const Object*, Connected*>& connected() {
    static auto* all = new std::unordered_multimap<const Object*, Connected*>;
    return *all;
}

// One handler on one event. Held by the event alone: it goes with the object or when it is disconnected.
struct Connected {
    Connected(const Object* o, const EventInfo& e, const py::object& h) : object(o), event(e), handler(h) {
        connected().emplace(object, this);
    }
    ~Connected() {
        auto [place, end] = connected().equal_range(object);
        while (place != end && place->second != this) ++place;
        if (place != end) connected().erase(place);
    }
    void Call(Arguments& arguments) const;

    const Object* object;
    const EventInfo& event;
    Keeper handler;
    Disconnect disconnect;
};

void Connected::Call(Arguments& arguments) const {
    const py::object callable = handler.Get();  // a handler may disconnect itself
    const auto& params = event.params;
    py::tuple values(arguments.size());
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        py::object value = toPython(arguments[i], params[i].type);
        values[i] = params[i].byRef ? packageTypes().byRef(value) : value;
    }
    callable(*values);
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (params[i].byRef) arguments[i] = toValue(py::object(values[i]).attr("value"));
    }
}

}  // namespace

Disconnect connectHandler(const Ref<Object>& object, const EventInfo& event, const py::object& handler) {
    if (!PyCallable_Check(handler.ptr())) throw py::type_error("a handler must be callable");
    auto connection = std::make_shared<Connected>(object.get(), event, handler);
    auto* record = connection.get();
    auto disconnect = event.connect(*object, [connection = std::move(connection)](Arguments& arguments) {
        asHandler([&] { connection->Call(arguments); });
    });
    record->disconnect = disconnect;
    return disconnect;
}

int visitHandlers(const Object* object, visitproc visit, void* arg) {
    const auto [begin, end] = connected().equal_range(object);
    for (auto place = begin; place != end; ++place) Py_VISIT(place->second->handler.Get().ptr());
    return 0;
}

void disconnectAll(const Object* object) {
    std::vector<Disconnect> ends;
    const auto [begin, end] = connected().equal_range(object);
    for (auto place = begin; place != end; ++place) ends.push_back(place->second->disconnect);
    for (const auto& disconnect : ends) disconnect();
}

}  // namespace quillbox::python
