#include "Sinks.h"

#include <unordered_map>

#include "Values.h"

namespace quillbox::c {

namespace {

std::unordered_map<std::int32_t, Disconnect>& connections() {
    static auto* all = new std::unordered_map<std::int32_t, Disconnect>;
    return *all;
}

// A sink on an event. The event holds it, so that it goes with the object or with the connection.
class Sink {
  public:
    Sink(QbObject* sink, std::int32_t event, std::int32_t number)
        : mSink(sink), mEvent(event), mNumber(number) {
        mSink->table->retain(mSink);
    }
    ~Sink() {
        connections().erase(mNumber);
        mSink->table->release(mSink);
    }
    Sink(const Sink&) = delete;
    Sink& operator=(const Sink&) = delete;

    void Raise(Arguments& arguments) const {
        CArguments values(arguments);
        QbValue nothing{QB_EMPTY, {}};
        QbError error{0, nullptr};
        const auto result =
            mSink->table->invoke(mSink, mEvent, QB_CALL, values.Data(), values.Count(), &nothing, &error);
        qbClear(&nothing);
        if (result < 0) throwFailure(error);
        values.TakeBack(arguments);
    }

  private:
    QbObject* mSink;
    std::int32_t mEvent, mNumber;
};

}  // namespace

std::int32_t connectSink(const Ref<Object>& object, const EventInfo& event, QbObject* sink) {
    static std::int32_t last = 0;
    if (!sink || !sink->table) throw AutomationError("There is no sink to connect");
    const auto& table = *sink->table;
    if (!table.retain || !table.release || !table.invoke)
        throw AutomationError("A sink needs retain, release and invoke");
    const auto number = ++last;
    auto held = std::make_shared<Sink>(sink, event.id, number);
    connections()[number] =
        event.connect(*object, [held = std::move(held)](Arguments& arguments) { held->Raise(arguments); });
    return number;
}

bool disconnectSink(std::int32_t connection) {
    const auto found = connections().find(connection);
    if (found == connections().end()) return false;
    const auto disconnect = std::move(found->second);
    connections().erase(found);
    disconnect();
    return true;
}

}  // namespace quillbox::c
