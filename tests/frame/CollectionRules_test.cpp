#include <ostream>

#include "support/ProjectTest.h"

namespace quillbox {
namespace {

using testing::HasSubstr;

// The rules that all ordered keyed collections share, tried on each of them through its published members.
struct Case {
    const char* collection;
    const char* item;
    bool missFails = false;  // where an unknown index is a failure, and not none
};
void PrintTo(const Case& one, std::ostream* out) { *out << one.collection; }

class CollectionRules : public ProjectTest, public testing::WithParamInterface<Case> {
  protected:
    CollectionRules() {
        const auto& info = TypeLibrary::Get().ClassOf(*list);
        if (info.FindMember("QbProject")) putMember(*list, "QbProject", project);
        if (info.FindMember("Parent")) putMember(*list, "Parent", manifest);
    }

    Ref<Object> newItem() const { return TypeLibrary::Get().CreateObject(GetParam().item); }
    void add(const Ref<Object>& item, const Value& key = {}, const Value& before = {},
             const Value& after = {}) {
        Arguments arguments{item, key, before, after};
        callMember(*list, "Add", arguments);
    }
    void remove(const Value& key) {
        Arguments arguments{key};
        callMember(*list, "Remove", arguments);
    }
    Ref<Object> item(const Value& key) { return toObject(getMember(*list, "Item", {key})); }
    int count() { return toInteger(getMember(*list, "Count")); }
    std::vector<Ref<Object>> order() {
        std::vector<Ref<Object>> items;
        for (const auto& value : TypeLibrary::Get().ClassOf(*list).items(*list))
            items.push_back(toObject(value));
        return items;
    }
    using Order = std::vector<Ref<Object>>;

    static bool takesAnything() { return std::string(GetParam().collection) == "Collection"; }
    void addThree() {
        add(a, "a");
        add(b, "b");
        add(c, "c");
    }

    Ref<Object> list = TypeLibrary::Get().CreateObject(GetParam().collection);
    Ref<Manifest> manifest = make<Manifest>();
    Ref<Object> a = newItem(), b = newItem(), c = newItem(), d = newItem();
};

TEST_P(CollectionRules, ItemsStandInTheOrderOfAddingFromPositionOne) {
    addThree();
    EXPECT_EQ(count(), 3);
    EXPECT_EQ(order(), (Order{a, b, c}));
    EXPECT_EQ(item(1), a);
    EXPECT_EQ(item(3), c);
}

TEST_P(CollectionRules, AKeyIsFoundInAnyCase) {
    add(a, "Straße");
    add(b, "{ABC}");
    EXPECT_EQ(item("STRASSE"), a);
    EXPECT_EQ(item("{abc}"), b);
}

TEST_P(CollectionRules, BeforeAndAfterTakeAPositionOrAKeyAndBeforeWins) {
    addThree();
    add(d, "d", 1);
    EXPECT_EQ(order(), (Order{d, a, b, c}));
    remove("d");
    add(d, "d", "B");
    EXPECT_EQ(order(), (Order{a, d, b, c}));
    remove("d");
    add(d, "d", {}, 1);
    EXPECT_EQ(order(), (Order{a, d, b, c}));
    remove("d");
    add(d, "d", {}, "c");
    EXPECT_EQ(order(), (Order{a, b, c, d}));
    remove("d");
    add(d, "d", "a", "c");
    EXPECT_EQ(order(), (Order{d, a, b, c}));
}

TEST_P(CollectionRules, AnEmptyKeyIsNoKey) {
    add(a, "");
    add(b, "");
    add(c);
    EXPECT_EQ(order(), (Order{a, b, c}));
    EXPECT_EQ(item(2), b);
}

TEST_P(CollectionRules, ATakenKeyFailsAndChangesNothing) {
    addThree();
    settle();
    EventLog log(project);
    EXPECT_EQ(failureOf([&] { add(d, "B"); }), "The key 'B' is already in this collection");
    EXPECT_EQ(order(), (Order{a, b, c}));
    EXPECT_THAT(log.Take(), testing::IsEmpty());
    EXPECT_FALSE(project->Dirty());
}

TEST_P(CollectionRules, ANeighbourThatIsNotThereFailsAndChangesNothing) {
    addThree();
    for (const Value& neighbour : {Value(0), Value(4), Value(-1), Value("x"), Value("")}) {
        EXPECT_NE(failureOf([&] { add(d, "d", neighbour); }), "no failure");
        EXPECT_NE(failureOf([&] { add(d, "d", {}, neighbour); }), "no failure");
    }
    EXPECT_EQ(order(), (Order{a, b, c}));
    add(d, "d");
    EXPECT_EQ(item("d"), d);
}

TEST_P(CollectionRules, NoneIsNoItem) {
    if (takesAnything()) return;
    EXPECT_NE(failureOf([&] { add(nullptr, "a"); }), "no failure");
    EXPECT_EQ(count(), 0);
}

TEST_P(CollectionRules, AnItemIsRemovedByPositionOrByKey) {
    addThree();
    remove(2);
    EXPECT_EQ(order(), (Order{a, c}));
    remove("A");
    EXPECT_EQ(order(), (Order{c}));
    EXPECT_EQ(item(1), c);
    add(a, "a");
    add(b, "b");
    EXPECT_EQ(order(), (Order{c, a, b}));
}

TEST_P(CollectionRules, RemovingWhatIsNotThereFails) {
    addThree();
    for (const Value& index : {Value(0), Value(4), Value(-1), Value("x"), Value(""), Value::None()}) {
        EXPECT_NE(failureOf([&] { remove(index); }), "no failure");
    }
    EXPECT_EQ(order(), (Order{a, b, c}));
}

TEST_P(CollectionRules, AMissIsNoneOrAFailure) {
    addThree();
    const Value date = *Date::From({2020, 1, 1, 0, 0, 0, 0});
    for (const Value& index : {Value(0), Value(4), Value(-1), Value(1e20), Value("x"), date}) {
        if (GetParam().missFails) {
            EXPECT_NE(failureOf([&] { item(index); }), "no failure");
        } else {
            EXPECT_EQ(item(index), nullptr);
        }
    }
}

TEST_P(CollectionRules, AnItemOfAnotherClassIsRefused) {
    if (takesAnything()) return;
    EXPECT_THAT(failureOf([&] { add(project, "a"); }), HasSubstr("Type mismatch"));
    EXPECT_EQ(count(), 0);
}

INSTANTIATE_TEST_SUITE_P(
    Each, CollectionRules,
    testing::Values(Case{"Topics", "Topic"}, Case{"TopicCategories", "TopicCategory"},
                    Case{"TopicStatuses", "TopicStatus"}, Case{"TopicSections", "TopicSection"},
                    Case{"TopicSectionDefs", "TopicSectionDef"}, Case{"RelatedTopics", "RelatedTopic", true},
                    Case{"QbNodes", "QbNode"}, Case{"GlossaryItems", "GlossaryItem"}, Case{"Tasks", "Task"},
                    Case{"OtherFiles", "OtherFile"}, Case{"Manifests", "Manifest"},
                    Case{"ManifestEntries", "ManifestEntry"}, Case{"LinkInfos", "LinkInfo", true},
                    Case{"Collection", "Task", true}, Case{"VariableValues", "VariableValue", true}),
    [](const auto& info) { return std::string(info.param.collection); });

}  // namespace
}  // namespace quillbox
