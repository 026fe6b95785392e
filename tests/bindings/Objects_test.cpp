#include <map>

#include "bindings/CallFromC.h"
#include "frame/typelib/TypeLibrary.h"
#include "support/TestPlatform.h"

namespace quillbox {
namespace {

class Objects : public testing::Test {
  protected:
    TestPlatform mPlatform;
};

TEST_F(Objects, read_and_write_properties_by_name_in_any_case) {
    auto topic = CObject::Create("Topic");
    topic.Write("Title", "na\u00efve");
    EXPECT_EQ(topic.result, QB_OK);
    EXPECT_EQ(topic.Read("title").Text(), "na\u00efve");
    topic.Write("IsDefault", true);
    const auto value = topic.Read("IsDefault");
    EXPECT_EQ(value.kind, QB_BOOLEAN);
    EXPECT_EQ(value.as.boolean, 1);
}

TEST_F(Objects, are_described_as_the_type_library_has_it) {
    for (const auto& info : TypeLibrary::Get().Classes()) {
        if (!info.published || !info.creatable) continue;
        const auto object = CObject::Create(info.name);
        const auto& described = object.Description();
        EXPECT_EQ(described.name, info.name);
        ASSERT_EQ(described.memberCount, info.members.size());
        for (std::size_t i = 0; i < described.memberCount; ++i) {
            EXPECT_EQ(described.members[i].name, info.members[i].name);
            EXPECT_EQ(described.members[i].kind, static_cast<int>(info.members[i].kind));
            EXPECT_EQ(described.members[i].type, info.members[i].type);
            ASSERT_EQ(described.members[i].parameterCount, info.members[i].params.size());
            for (std::size_t p = 0; p < described.members[i].parameterCount; ++p) {
                EXPECT_EQ(described.members[i].parameters[p].name, info.members[i].params[p].name);
                EXPECT_EQ(described.members[i].parameters[p].byReference, info.members[i].params[p].byRef);
            }
        }
        ASSERT_EQ(described.eventCount, info.events.size());
        for (std::size_t i = 0; i < described.eventCount; ++i)
            EXPECT_EQ(described.events[i].id, info.events[i].id);
    }
}

TEST_F(Objects, are_reached_by_slot) {
    auto topics = CObject::Create("Topics");
    const auto& described = topics.Description();
    ASSERT_GE(described.defaultSlot, 0);
    EXPECT_STREQ(described.members[described.defaultSlot].name, "Item");
    auto key = CValue::Of("no such topic");
    CValue value;
    QbError error{0, nullptr};
    auto* object = topics.Get();
    EXPECT_EQ(object->table->invoke(object, described.defaultSlot, QB_READ, &key, 1, &value, &error), QB_OK);
    EXPECT_EQ(value.kind, QB_EMPTY);
    EXPECT_EQ(object->table->invoke(object, 10000, QB_READ, nullptr, 0, &value, &error), QB_FAILED);
    EXPECT_STREQ(error.description, "There is no member in slot 10000");
    EXPECT_EQ(error.number, 65535);
    free(error.description);
    EXPECT_EQ(object->table->invoke(object, -1, QB_READ, nullptr, 0, &value, nullptr), QB_FAILED);
}

TEST_F(Objects, take_parameters_of_properties_and_optional_arguments) {
    auto topic = CObject::Create("Topic");
    auto key = CValue::Of("BodyText");
    auto text = CValue::Of("<p>x</p>");
    auto* object = topic.Get();
    EXPECT_EQ(object->table->invokeByName(object, "TopicSectionData", QB_WRITE, &key, 1, &text, nullptr),
              QB_OK);
    EXPECT_EQ(topic.Read("TopicSectionData", "BodyText").Text(), "<p>x</p>");

    auto topics = CObject::Create("Topics");
    auto first = CObject::Create("Topic"), second = CObject::Create("Topic");
    topics.Call("Add", first.Get(), "first");
    topics.Call("Add", second.Get(), CValue::Missing(), 1);
    EXPECT_EQ(topics.result, QB_OK) << topics.Failure();
    EXPECT_EQ(topics.Read("Item", 1).as.object, second.Get());
    EXPECT_EQ(topics.Read("Item", "FIRST").as.object, first.Get());
    EXPECT_EQ(topics.Read("Count").as.integer, 2);
}

TEST_F(Objects, have_one_identity_and_go_when_they_are_given_back) {
    const auto before = Object::Alive();
    {
        auto topics = CObject::Create("Topics");
        auto topic = CObject::Create("Topic");
        topics.Call("Add", topic.Get());
        const auto again = topics.Read("Item", 1);
        EXPECT_EQ(again.as.object, topic.Get());
        EXPECT_GT(Object::Alive(), before);
    }
    EXPECT_EQ(Object::Alive(), before);
}

TEST_F(Objects, write_objects_and_none_by_their_own_access) {
    auto related = CObject::Create("RelatedTopic");
    auto topic = CObject::Create("Topic");
    related.Write("ParentTopic", topic.Get());
    EXPECT_EQ(related.result, QB_OK) << related.Failure();
    EXPECT_EQ(related.Read("ParentTopic").as.object, topic.Get());
    auto* object = related.Get();
    auto value = CValue::Of(topic.Get());
    EXPECT_EQ(object->table->invokeByName(object, "ParentTopic", QB_WRITE, nullptr, 0, &value, nullptr),
              QB_FAILED);
    auto text = CValue::Of("x");
    EXPECT_EQ(object->table->invokeByName(object, "Title", QB_WRITE_OBJECT, nullptr, 0, &text, nullptr),
              QB_FAILED);
    CValue none;
    EXPECT_EQ(object->table->invokeByName(object, "ParentTopic", QB_WRITE_OBJECT, nullptr, 0, &none, nullptr),
              QB_OK);
    EXPECT_EQ(related.Read("ParentTopic").kind, QB_EMPTY);
}

TEST_F(Objects, give_by_reference_arguments_back) {
    auto root = CObject::Create("Root");
    auto project = CObject::Create("QbProject");
    auto topic = CObject(project.Call("NewTopic"));
    std::vector<CValue> arguments;
    arguments.push_back(CValue::Of(topic.Get()));
    arguments.push_back(CValue::Of("untouched"));
    arguments.emplace_back();
    root.InvokeWith("BeforeDeleteTopic", QB_CALL, arguments);
    EXPECT_NE(root.result, QB_OK);  // a text is no Boolean: nothing was given back
    EXPECT_EQ(arguments[1].Text(), "untouched");
    qbClear(&arguments[1]);
    root.InvokeWith("BeforeDeleteTopic", QB_CALL, arguments);
    EXPECT_EQ(root.result, QB_OK) << root.Failure();
    EXPECT_EQ(arguments[1].kind, QB_BOOLEAN);
    EXPECT_EQ(arguments[2].kind, QB_BOOLEAN);
}

TEST_F(Objects, tell_what_went_wrong) {
    auto topics = CObject::Create("Topics");
    topics.Read("Nothing");
    EXPECT_EQ(topics.Failure(), "'Topics' has no member 'Nothing'");
    topics.Write("Count", 3);
    EXPECT_EQ(topics.Failure(), "'Count' is read-only");
    topics.Read("Remove", 1);
    EXPECT_EQ(topics.Failure(), "'Remove' is a method: it is called, not read");
    topics.Invoke("Count", 99);
    EXPECT_EQ(topics.Failure(), "There is no such access to a member");
    topics.Call("Count", 1, 2);
    EXPECT_EQ(topics.Failure(), "Too many arguments for 'Count'");
    topics.Call("Add");
    EXPECT_EQ(topics.Failure(), "Argument 'Item' of 'Add' is missing");
    EXPECT_EQ(topics.FailureNumber(), 65535);
}

TEST_F(Objects, refuse_values_that_are_not_well_formed) {
    auto topic = CObject::Create("Topic");
    topic.Write("Title", "before");
    const auto write = [&](QbValue value, const char* member = "Title") {
        auto* object = topic.Get();
        return object->table->invokeByName(object, member, QB_WRITE, nullptr, 0, &value, nullptr);
    };
    char bytes[] = "\xff\xfe";
    QbValue text{QB_TEXT, {}};
    text.as.text = {bytes, 2};
    EXPECT_EQ(write(text), QB_FAILED);
    text.as.text = {nullptr, 5};
    EXPECT_EQ(write(text), QB_FAILED);
    EXPECT_EQ(write(QbValue{42, {}}), QB_FAILED);
    QbValue date{QB_DATE, {}};
    date.as.date = {2024, 2, 30, 0, 0, 0, 0};
    EXPECT_EQ(write(date, "CreatedOn"), QB_FAILED);
    auto* object = topic.Get();
    EXPECT_EQ(object->table->invokeByName(object, nullptr, QB_READ, nullptr, 0, nullptr, nullptr), QB_FAILED);
    EXPECT_EQ(object->table->invokeByName(object, "Title", QB_WRITE, nullptr, 0, nullptr, nullptr),
              QB_FAILED);
    EXPECT_EQ(object->table->invokeByName(object, "AddKeyword", QB_CALL, nullptr, 3, nullptr, nullptr),
              QB_FAILED);
    EXPECT_EQ(topic.Read("Title").Text(), "before");
    text.as.text = {nullptr, 0};
    EXPECT_EQ(write(text), QB_OK);
    EXPECT_EQ(topic.Read("Title").Text(), "");
}

TEST_F(Objects, carry_dates_and_texts_with_zeros) {
    auto topic = CObject::Create("Topic");
    auto* object = topic.Get();
    QbValue date{QB_DATE, {}};
    date.as.date = {2024, 2, 29, 23, 59, 58, 7};
    EXPECT_EQ(object->table->invokeByName(object, "CreatedOn", QB_WRITE, nullptr, 0, &date, nullptr), QB_OK);
    const auto back = topic.Read("CreatedOn").as.date;
    EXPECT_EQ(back.day, 29);
    EXPECT_EQ(back.microsecond, 7);
    char bytes[] = "a\0b";
    QbValue text{QB_TEXT, {}};
    text.as.text = {bytes, 3};
    EXPECT_EQ(object->table->invokeByName(object, "Notes", QB_WRITE, nullptr, 0, &text, nullptr), QB_OK);
    EXPECT_EQ(topic.Read("Notes").Text(), std::string("a\0b", 3));
}

}  // namespace
}  // namespace quillbox
