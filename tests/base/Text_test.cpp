#include "base/Text.h"

#include <gmock/gmock.h>

#include <random>

#include "base/SortedList.h"

namespace quillbox {
namespace {

using testing::ElementsAre;

TEST(Text, IsTheSameInAnyCase) {
    struct Row {
        const char *one, *other;
        bool isSame;
    };
    const Row rows[] = {
        {"", "", true},
        {"", "a", false},
        {"TopicTitle", "topictitle", true},
        {"topictitle", "topictitl", false},
        {"[topic]", "{topic}", false},
        {"@a", "`a", false},
        {"Straße", "STRASSE", true},
        {"Größe", "GRÖSSE", true},
        {"e\u0301", "\u00C9", true},
        {"\u212Aelvin", "kelvin", true},
        {"ΣΊΣΥΦΟΣ", "σίσυφος", true},
        {"abcdefgh\u00E4", "ABCDEFGH\u00C4", true},
        {"abcdefgh\u00E4x", "ABCDEFGH\u00C4y", false},
        {"a\u00E4", "b\u00C4", false},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(sameText(row.one, row.other), row.isSame) << row.one << " " << row.other;
        EXPECT_EQ(sameText(row.other, row.one), row.isSame) << row.other << " " << row.one;
        EXPECT_EQ(FoldedEqual{}(row.one, row.other), row.isSame) << row.one << " " << row.other;
        EXPECT_EQ(foldKey(row.one) == foldKey(row.other), row.isSame) << row.one << " " << row.other;
        if (row.isSame) {
            EXPECT_EQ(FoldedHash{}(row.one), FoldedHash{}(row.other)) << row.one;
        }
    }
}

TEST(Text, HasTheSameCasesWhateverItsLength) {
    std::mt19937 random(7);
    for (int round = 0; round < 20000; ++round) {
        std::string text(random() % 40, '\0'), small, large;
        for (auto& c : text) c = static_cast<char>(random() % 128);
        for (const char c : text) {
            small += c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
            large += c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
        }
        ASSERT_EQ(lower(text), small);
        ASSERT_EQ(upper(text), large);
        ASSERT_EQ(foldKey(text), small);
        ASSERT_TRUE(sameText(small, large));
        ASSERT_EQ(FoldedHash{}(text), FoldedHash{}(large));
        if (text.empty()) continue;
        const auto place = random() % text.size();
        auto other = small;
        other[place] = static_cast<char>(random() % 128);
        ASSERT_EQ(sameText(text, other), foldKey(text) == foldKey(other)) << text << " " << other;
    }
}

TEST(Text, FindsKeysInAnyCase) {
    FoldedMap<int> map;
    EXPECT_TRUE(map.emplace("Größe", 1).second);
    EXPECT_FALSE(map.emplace("GRÖSSE", 2).second);
    EXPECT_TRUE(map.emplace("other", 3).second);
    EXPECT_EQ(map.find(std::string_view("gröSSe"))->second, 1);
    EXPECT_EQ(map.find(std::string_view("Gröse")), map.end());
    EXPECT_TRUE(map.contains(std::string_view("OTHER")));
}

TEST(Text, ManyKeysAreEachFound) {
    FoldedMap<int> folded;
    TextMap<int> exact;
    const auto key = [](int number) { return "Straße " + std::to_string(number * 7919); };
    for (int number = 0; number < 5000; ++number) {
        folded.emplace(key(number), number);
        exact.emplace(key(number), number);
    }
    for (int number = 0; number < 5000; ++number) {
        ASSERT_EQ(folded.at(upper(key(number))), number);
        ASSERT_EQ(exact.at(key(number)), number);
        ASSERT_FALSE(exact.contains(upper(key(number))));
    }
    EXPECT_FALSE(folded.contains(key(5000)));
}

TEST(Text, IsReplacedEverywhere) {
    EXPECT_EQ(replaceAll("", "a", "b"), "");
    EXPECT_EQ(replaceAll("aXbXc", "X", "--"), "a--b--c");
    EXPECT_EQ(replaceAll("abc", "", "x"), "abc");
    EXPECT_EQ(replaceAllText("%%Title%% and %%TITLE%%", "%%title%%", "It"), "It and It");
}

TEST(SortedList, IsInTheOrderOfReaders) {
    SortedList<int> list;
    int number = 0;
    for (const auto* key : {"keyword about pages 2", "keyword about", "Äpfel", "apfel",
                            "keyword about pages 10", "zebra", "", "keyword about pages 2"})
        list.Add(number++, key);
    EXPECT_THAT(list.Take(), ElementsAre(6, 3, 2, 1, 4, 0, 7, 5));
    EXPECT_THAT(list.Take(), ElementsAre());
}

TEST(SortedList, EqualKeysStayInTheOrderOfAdding) {
    SortedList<int> list;
    std::vector<int> expected;
    for (int number = 0; number < 100; ++number) {
        list.Add(number, number % 2 == 0 ? "the same" : "the\x01 same");
        expected.push_back(number);
    }
    EXPECT_EQ(list.Take(), expected);
}

}  // namespace
}  // namespace quillbox
