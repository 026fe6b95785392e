#include "platform/engine/Tags.h"

#include <gmock/gmock.h>

#include "adapters/Failure.h"

namespace quillbox {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// Plain text as it is; of a tag its type in angle brackets.
std::vector<std::string> pieces(const std::string& text, bool replaceInQuotes = false) {
    std::vector<std::string> shown;
    for (const auto& piece : splitTags(text, replaceInQuotes)) {
        shown.push_back(piece.element ? "<" + toText(piece.element->Attributes->Item("type")) + ">"
                                      : piece.text);
    }
    return shown;
}

std::string attribute(const std::string& tag, const std::string& name) {
    const auto split = splitTags(tag, true);
    const auto* value = split.at(0).element->Attributes->Find(name);
    return value ? toText(*value) : "none";
}

std::string expanded(const std::string& text) {
    std::string out;
    expandTags(
        splitTags(text),
        [](const TagPiece& tag) {
            const auto type = toText(tag.element->Attributes->Item("type"));
            return type == "known" ? "value" : "!UNCRECOGNISED TAG '" + type + "'!";
        },
        out);
    return out;
}

TEST(Tags, TextWithoutAPairOfDelimitersIsOnePiece) {
    EXPECT_THAT(pieces(""), IsEmpty());
    EXPECT_THAT(pieces("plain"), ElementsAre("plain"));
    EXPECT_THAT(pieces("one %% only"), ElementsAre("one %% only"));
    EXPECT_THAT(pieces("50% and 60%"), ElementsAre("50% and 60%"));
}

TEST(Tags, ATagHasATypeAndAttributes) {
    EXPECT_THAT(pieces("a %%x%% b %%y:n=v%%"), ElementsAre("a ", "<x>", " b ", "<y>"));
    EXPECT_EQ(attribute("%%topicsection:name=bodytext%%", "name"), "bodytext");
    EXPECT_EQ(attribute("%%x:name=\"a b\"%%", "Name"), "a b");
    EXPECT_EQ(attribute("%%x:name=a,b%%", "name"), "a");
    EXPECT_EQ(attribute("%%x:filter=type=all%%", "filter"), "type");
    EXPECT_EQ(attribute("%%x:name=index:_MINE%%", "name"), "index:_MINE");
    EXPECT_EQ(attribute("%%x:a=1, b=2%%", " b"), "2");
    EXPECT_EQ(attribute("%%%%", "type"), "");
}

TEST(Tags, TheFirstClosingDelimiterCounts) {
    EXPECT_THAT(pieces("%%literal:value=50/%%%"), ElementsAre("<literal>", "%"));
    EXPECT_EQ(attribute("%%literal:value=50/%%%", "value"), "50/");
}

TEST(Tags, QuotesHideTagsUntilToldOtherwise) {
    const std::string text = "<a href=\"%%x%%\">%%y%%</a>";
    EXPECT_THAT(pieces(text), ElementsAre("<a href=\"%%x%%\">", "<y>", "</a>"));
    EXPECT_THAT(pieces(text, true), ElementsAre("<a href=\"", "<x>", "\">", "<y>", "</a>"));
    EXPECT_THAT(pieces("\"%%x%%\"%%ReplaceInQuotes:Value=true%%\"%%y%%\""),
                ElementsAre("\"%%x%%\"", "\"", "<y>", "\""));
    EXPECT_THAT(pieces("%%replaceinquotes:Value=False%%\"%%y%%\"", true), ElementsAre("\"%%y%%\""));
    EXPECT_THAT(pieces("%%ReplaceInQuotes%%\"%%y%%\"", true), ElementsAre("\"", "<y>", "\""));
    EXPECT_THAT(pieces("an inch: 5\" and %%x%%"), ElementsAre("an inch: 5\" and %%x%%"));
}

TEST(Tags, APieceKnowsItsLine) {
    const auto split = splitTags("one\n%%x%%\n\n%%y%%");
    EXPECT_EQ(split.at(1).line, 2);
    EXPECT_EQ(split.at(3).line, 4);
}

TEST(Tags, AnAttributeNamedTwiceFails) {
    const auto failure = failureOf([] { splitTags("a\n%%x:n=1,N=2%%"); });
    EXPECT_THAT(failure, HasSubstr("Line 2"));
    EXPECT_THAT(failure, HasSubstr("%%x:n=1,N=2%%"));
    EXPECT_THAT(failureOf([] { splitTags("%%x:type=1%%"); }), HasSubstr("%%x:type=1%%"));
}

TEST(Tags, AnUnknownTagStaysAsWritten) {
    EXPECT_EQ(expanded("a %%known%% b %%other:n=1%% c"), "a value b %%other:n=1%% c");
}

TEST(Tags, ATextThatContainsItselfFails) {
    int deepest = 0;
    std::function<std::string(const TagPiece&)> again = [&](const TagPiece& tag) {
        ++deepest;
        std::string out;
        expandTags(splitTags(tag.text), again, out);
        return out;
    };
    std::string out;
    EXPECT_THAT(failureOf([&] { expandTags(splitTags("%%x%%"), again, out); }), HasSubstr("100 levels"));
    EXPECT_EQ(deepest, 100);
    // What failed before is forgotten.
    EXPECT_EQ(expanded("%%known%%"), "value");
}

TEST(Tags, TextThatDoublesAtEachLevelFailsInTime) {
    std::function<std::string(const std::string&, int)> doubled = [&](const std::string& text, int level) {
        std::string out;
        expandTags(
            splitTags(text),
            [&](const TagPiece&) { return level == 60 ? std::string() : doubled("%%a%%%%b%%", level + 1); },
            out);
        return out;
    };
    EXPECT_THAT(failureOf([&] { doubled("%%a%%", 0); }), HasSubstr("never ends"));
}

}  // namespace
}  // namespace quillbox
