#include <functional>

#include "bindings/CallFromC.h"
#include "support/TestPlatform.h"

namespace quillbox {
namespace {

// A sink as a program in C writes one.
struct Recorder : QbObject {
    explicit Recorder(const QbObjectTable* t = &kTable) : QbObject{t} {}
    long references = 1;
    std::vector<std::string> heard;
    std::function<int(QbValue* arguments, std::size_t count, QbError* error)> answer;

    static Recorder& Of(QbObject* self) { return *static_cast<Recorder*>(self); }
    static std::int32_t Invoke(QbObject* self, std::int32_t slot, std::int32_t, QbValue* arguments,
                               std::size_t count, QbValue*, QbError* error) {
        auto& recorder = Of(self);
        recorder.heard.push_back(std::to_string(slot) + ":" + std::to_string(count));
        return recorder.answer ? recorder.answer(arguments, count, error) : int{QB_OK};
    }
    static const QbObjectTable kTable;
};
const QbObjectTable Recorder::kTable = {QB_AUTOMATION_VERSION,
                                        [](QbObject* self) { ++Of(self).references; },
                                        [](QbObject* self) { --Of(self).references; },
                                        nullptr,
                                        Invoke,
                                        nullptr,
                                        nullptr,
                                        nullptr};

class Events : public testing::Test {
  protected:
    int connect(const CObject& object, const char* name) {
        const auto& described = object.Description();
        for (std::size_t i = 0; i < described.eventCount; ++i) {
            if (described.events[i].name == std::string(name)) id = described.events[i].id;
        }
        return object.Get()->table->connect(object.Get(), id, &sink, &connection, nullptr);
    }

    TestPlatform mPlatform;
    Recorder sink;
    int id = 0;
    std::int32_t connection = 0;
};

TEST_F(Events, reach_a_sink_with_their_id_and_arguments) {
    auto related = CObject::Create("RelatedTopics");
    auto item = CObject::Create("RelatedTopic");
    ASSERT_EQ(connect(related, "ItemAdded"), QB_OK);
    QbObject* added = nullptr;
    sink.answer = [&](QbValue* arguments, std::size_t, QbError*) {
        added = arguments[0].as.object;
        return QB_OK;
    };
    related.Call("Add", item.Get());
    EXPECT_EQ(related.result, QB_OK) << related.Failure();
    EXPECT_EQ(sink.heard, std::vector<std::string>{std::to_string(id) + ":1"});
    EXPECT_EQ(added, item.Get());
}

TEST_F(Events, end_with_their_connection) {
    auto related = CObject::Create("RelatedTopics");
    auto item = CObject::Create("RelatedTopic");
    ASSERT_EQ(connect(related, "ItemAdded"), QB_OK);
    EXPECT_EQ(sink.references, 2);
    auto* object = related.Get();
    EXPECT_EQ(object->table->disconnect(object, connection), QB_OK);
    EXPECT_EQ(object->table->disconnect(object, connection), QB_FALSE);
    EXPECT_EQ(sink.references, 1);
    related.Call("Add", item.Get());
    EXPECT_TRUE(sink.heard.empty());
}

TEST_F(Events, let_their_sink_go_with_the_object) {
    {
        auto related = CObject::Create("RelatedTopics");
        ASSERT_EQ(connect(related, "ItemAdded"), QB_OK);
        EXPECT_EQ(sink.references, 2);
    }
    EXPECT_EQ(sink.references, 1);
    auto other = CObject::Create("RelatedTopics");
    EXPECT_EQ(other.Get()->table->disconnect(other.Get(), connection), QB_FALSE);
}

TEST_F(Events, carry_the_failure_of_a_sink_to_the_caller) {
    auto related = CObject::Create("RelatedTopics");
    auto item = CObject::Create("RelatedTopic");
    ASSERT_EQ(connect(related, "ItemAdded"), QB_OK);
    sink.answer = [](QbValue*, std::size_t, QbError* error) {
        *error = {12, strdup("refused")};
        return int{QB_FAILED};
    };
    related.Call("Add", item.Get());
    EXPECT_EQ(related.result, QB_FAILED);
    EXPECT_EQ(related.Failure(), "refused");
    EXPECT_EQ(related.FailureNumber(), 12);
}

TEST_F(Events, may_be_disconnected_by_their_sink) {
    auto related = CObject::Create("RelatedTopics");
    auto first = CObject::Create("RelatedTopic"), second = CObject::Create("RelatedTopic");
    ASSERT_EQ(connect(related, "ItemAdded"), QB_OK);
    sink.answer = [&](QbValue*, std::size_t, QbError*) {
        return int{related.Get()->table->disconnect(related.Get(), connection)};
    };
    related.Call("Add", first.Get());
    related.Call("Add", second.Get());
    EXPECT_EQ(sink.heard.size(), 1u);
    EXPECT_EQ(sink.references, 1);
}

TEST_F(Events, refuse_what_is_no_event_and_no_sink) {
    auto related = CObject::Create("RelatedTopics");
    auto* object = related.Get();
    EXPECT_EQ(object->table->connect(object, 999, &sink, nullptr, nullptr), QB_FAILED);
    EXPECT_EQ(object->table->connect(object, 1, nullptr, nullptr, nullptr), QB_FAILED);
    const QbObjectTable empty{};
    Recorder broken(&empty);
    EXPECT_EQ(object->table->connect(object, 1, &broken, nullptr, nullptr), QB_FAILED);
}

}  // namespace
}  // namespace quillbox
