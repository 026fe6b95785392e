// The guide for template authors: its examples are run, and nothing that a template may say is left out.

#include <gmock/gmock.h>

#include <cctype>
#include <cstdlib>
#include <set>

#include "base/Text.h"
#include "build/CompilerInputs.h"
#include "build/Filter.h"
#include "build/ItemFamily.h"
#include "build/ItemProperties.h"
#include "build/TagValues.h"
#include "engine/CommonTags.h"
#include "engine/Conditions.h"
#include "engine/TemplateReader.h"
#include "guide/GuideMachine.h"

namespace quillbox {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

const std::string kGuide = QUILLBOX_SOURCE_DIR "/docs/templates.md";

bool isAskedToRewrite() { return std::getenv("QUILLBOX_UPDATE") != nullptr; }

class TemplateGuideTest : public testing::Test {
  protected:
    // Those of the names that no example writes as a tag.
    std::vector<std::string> WithoutTag(const std::vector<std::string>& names) const {
        return without(names, [&](const std::string& name) {
            return mWritten.find("%%" + name + "%%") != std::string::npos ||
                   mWritten.find("%%" + name + ":") != std::string::npos ||
                   mWritten.find("name=" + name + "%%") != std::string::npos ||
                   mWritten.find("name=" + name + ",") != std::string::npos;
        });
    }
    std::vector<std::string> WithoutText(const std::vector<std::string>& names) const {
        return without(names,
                       [&](const std::string& name) { return mWritten.find(name) != std::string::npos; });
    }

    Guide mGuide{kGuide};
    std::string mWritten = lower(mGuide.WrittenText());

  private:
    template <class Test>
    static std::vector<std::string> without(const std::vector<std::string>& names, const Test& isThere) {
        std::vector<std::string> missing;
        for (const auto& name : names) {
            if (!isThere(lower(name))) missing.push_back(name);
        }
        return missing;
    }
};

TEST_F(TemplateGuideTest, ItsExamplesComeOutAsItSays) {
    std::map<std::size_t, std::string> texts;
    EXPECT_GE(mGuide.Examples().size(), 50u);
    for (const auto& example : mGuide.Examples()) {
        EXPECT_THAT(example.outcomes, testing::Not(IsEmpty())) << "templates.md, line " << example.line;
        GuideMachine machine(example);
        machine.Build();
        for (const auto& block : example.outcomes) {
            const auto text = machine.Outcome(block);
            texts[block.line] = text;
            EXPECT_THAT(text, testing::Not(testing::StartsWith("(no ")))
                << "templates.md, line " << block.line;
            EXPECT_THAT(text, testing::Not(testing::StartsWith("(fail")))
                << "templates.md, line " << block.line;
            if (isAskedToRewrite()) continue;
            EXPECT_EQ(text, withoutLastLineEnd(block.text)) << "templates.md, line " << block.line;
        }
    }
    if (isAskedToRewrite()) mGuide.Rewrite(texts);
}

// As the anchor that a heading gets where the guide is read: "### How it works" is "how-it-works".
std::string anchorOf(const std::string& heading) {
    std::string anchor;
    for (const char c : lower(trimBlanks(heading.substr(heading.find(' '))))) {
        if (c == ' ') anchor += '-';
        if (std::isalnum(static_cast<unsigned char>(c)) || c == '-' || c == '_') anchor += c;
    }
    return anchor;
}

TEST_F(TemplateGuideTest, ItsLinksLeadToItsHeadings) {
    std::set<std::string> anchors;
    for (const auto& line : split(mGuide.Text(), "\n")) {
        if (line.starts_with('#') && line.find(' ') != std::string::npos) anchors.insert(anchorOf(line));
    }
    static constexpr std::string_view kLink = "](#";
    std::vector<std::string> dead;
    const auto& text = mGuide.Text();
    for (auto at = text.find(kLink); at != std::string::npos; at = text.find(kLink, at + 1)) {
        const auto target = text.substr(at + kLink.size(), text.find(')', at) - at - kLink.size());
        if (!anchors.contains(target)) dead.push_back(target);
    }
    EXPECT_THAT(dead, IsEmpty());
}

TEST_F(TemplateGuideTest, HasAnExampleOfEveryTag) {
    EXPECT_THAT(WithoutTag(tagNames()), IsEmpty());
    std::vector<std::string> common;
    for (const auto& [name, answer] : commonTags()) common.push_back(name);
    EXPECT_THAT(WithoutTag(common), IsEmpty());
}

TEST_F(TemplateGuideTest, HasAnExampleOfEveryProperty) {
    EXPECT_THAT(WithoutTag(itemPropertyNames()), IsEmpty());
}

TEST_F(TemplateGuideTest, HasAnExampleOfEveryKindOfItem) {
    std::vector<std::string> kinds;
    for (const auto& def : documentEngine().Templates().Namespaces(kItemFamily)->Items()) {
        const auto kind = def->Name.substr(def->Name.find(':') + 1);
        if (mWritten.find("namespace=" + kind) == std::string::npos &&
            mWritten.find(":" + kind + "\"") == std::string::npos)
            kinds.push_back(kind);
    }
    EXPECT_THAT(kinds, IsEmpty());
}

TEST_F(TemplateGuideTest, HasAnExampleOfEveryClauseConditionAndContent) {
    std::vector<std::string> clauses;
    for (const auto& name : Filter::ClauseNames()) clauses.push_back(name + "=");
    EXPECT_THAT(WithoutText(clauses), IsEmpty());
    std::vector<std::string> words;
    for (const auto word : kConditionWords) words.emplace_back(std::string(word) + " ");
    EXPECT_THAT(WithoutText(words), IsEmpty());
    std::vector<std::string> contents;
    for (const auto& name : contentNames()) contents.push_back("streamcontent:name=" + name);
    EXPECT_THAT(WithoutText(contents), IsEmpty());
}

TEST_F(TemplateGuideTest, HasAnExampleOfEverythingInATemplateFile) {
    std::vector<std::string> attributes;
    for (const auto name : kTemplateAttributes) attributes.emplace_back(std::string(name) + "=\"");
    for (const auto name : kSearchAttributes) attributes.emplace_back(std::string(name) + "=\"");
    for (const auto name : kPageAttributes) attributes.emplace_back(std::string(name) + "=\"");
    EXPECT_THAT(WithoutText(attributes), IsEmpty());
    EXPECT_THAT(WithoutText({"\"ansi\"", "\"ascii\"", "\"ascii-but-title\"", "\"utf-8\""}), IsEmpty());
}

}  // namespace
}  // namespace quillbox
