#include <gtest/gtest.h>

#include <chrono>

#include "adapters/Failure.h"
#include "adapters/html/Html.h"

namespace quillbox {
namespace {

std::string repeated(const std::string& text, int times) {
    std::string result;
    result.reserve(text.size() * static_cast<std::size_t>(times));
    for (int i = 0; i < times; ++i) result += text;
    return result;
}

std::string numbered(const std::string& before, const std::string& after, int times) {
    std::string result;
    for (int i = 0; i < times; ++i) result += before + std::to_string(i) + after;
    return result;
}

class HtmlLimits : public testing::Test {
  protected:
    std::string failureFor(const std::string& html) {
        return failureOf([&] { mFactory->NewDocument(html); });
    }

    std::shared_ptr<DOMFactory> mFactory = makeHtmlFactory();
};

TEST_F(HtmlLimits, FiveHundredElementsMayNest) {
    const auto deep = repeated("<div>", 498) + "x";  // below html and body
    const auto document = mFactory->NewDocument(deep);
    EXPECT_EQ(document->documentElement()->outerHTML(), deep);
    EXPECT_EQ(document->body()->outerText(), "x");
    EXPECT_EQ(failureFor("<div>" + deep), "The HTML nests deeper than 500 elements");
}

TEST_F(HtmlLimits, DeepNestingFailsAtOnceWhateverItIsMadeOf) {
    for (const std::string tag :
         {"<div>", "<b>", "<table><td>", "<svg>", "<template>", "<ul><li>", "<i></p>"}) {
        EXPECT_EQ(failureFor(repeated(tag, 500'000)), "The HTML nests deeper than 500 elements") << tag;
    }
}

TEST_F(HtmlLimits, ContentCountsFromWhereItIsPut) {
    const auto document = mFactory->NewDocument(repeated("<div>", 300));
    const auto innermost = document->all()->tags("div")->Items().back();
    const auto before = document->documentElement()->outerHTML();
    EXPECT_EQ(failureOf([&] { innermost->setInnerHTML(repeated("<div>", 300)); }),
              "The HTML nests deeper than 500 elements");
    EXPECT_EQ(document->documentElement()->outerHTML(), before);
    innermost->setInnerHTML(repeated("<div>", 198));
    EXPECT_EQ(document->all()->tags("div")->length(), 498);
}

TEST_F(HtmlLimits, TheParserIsFitForUseAfterAFailure) {
    EXPECT_NE(failureFor(repeated("<div>", 1'000)), "no failure");
    EXPECT_EQ(mFactory->NewDocument("<p>x</p>")->body()->innerHTML(), "<p>x</p>");
}

// Each of these takes minutes and gigabytes where cost grows by the square.
TEST_F(HtmlLimits, LargeFlatDocumentsCostInLineWithTheirSize) {
    const std::vector<std::string> documents = {
        repeated("<p>x</p>\n", 200'000),
        repeated("<p>x", 200'000),
        repeated("a</i>", 200'000),
        "<table>" + repeated("a<tr>", 100'000),
        "<table>" + repeated("a<!-- -->", 100'000),
        "<svg>" + repeated("<![CDATA[x]]>", 100'000),
        repeated("<a href=x>", 100'000),
        repeated("<b>x</i>", 400),
        repeated("<b><p>x</b>", 50'000),
        "<a " + numbered("a", "=1 ", 100'000) + ">",
        repeated("&amp;", 500'000),
        repeated("<", 500'000),
        repeated("<!", 500'000),
        repeated("</div>", 200'000),
        "<a href=\"" + repeated("&x", 500'000) + "\">y</a>",
        repeated("<select><option>", 50'000),
    };
    for (const auto& html : documents) {
        SCOPED_TRACE(html.substr(0, 40));
        const auto start = std::chrono::steady_clock::now();
        const auto document = mFactory->NewDocument(html);
        EXPECT_EQ(document->documentElement()->outerHTML(), html);
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
    }
}

TEST_F(HtmlLimits, AHundredThousandLinksAreChangedInOneGo) {
    const auto document =
        mFactory->NewDocument("<base href='/p/'>" + repeated("<p><a href=x>y</a></p>", 100'000));
    for (const auto& link : document->all()->tags("a")->Items()) {
        if (link->getAttribute("href") == "file:///p/x") link->setAttribute("href", "z");
    }
    EXPECT_EQ(document->body()->innerHTML(), repeated("<p><a href=\"z\">y</a></p>", 100'000));
}

TEST_F(HtmlLimits, WhatCostsTheParserMoreThanItsShareIsRefused) {
    EXPECT_EQ(failureFor(numbered("<x", ">", 20'000)), "The HTML has more than 10,000 names of elements");
    EXPECT_EQ(failureFor(numbered("<body a", "=1>", 20'000)),
              "The HTML has more than 10,000 attributes at its body");
    EXPECT_EQ(failureFor("<p>" + numbered("<b a", "=1>", 400) + "</p>" + repeated("<p>x</p>", 20'000)),
              "The HTML repeats too many elements that were never closed");
}

}  // namespace
}  // namespace quillbox
