#include "links/LinkInfo.h"

#include "support/ProjectTest.h"

namespace quillbox {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class LinkInfoTest : public ProjectTest {
  protected:
    Ref<LinkInfo> link(const std::string& text, LinkTypeEnum type = ltHyperlink) const {
        const auto made = make<LinkInfo>();
        made->Topic = topic;
        made->LinkText = text;
        made->LinkType = type;
        return made;
    }
    LinkStatusTypeEnum verified(const std::string& text, LinkTypeEnum type = ltHyperlink,
                                bool external = false) const {
        const auto one = link(text, type);
        one->Verify(external);
        return one->LinkStatus;
    }
    // What a split gives, with "-" for a part that is left as it came.
    std::vector<std::string> split(const std::string& own, const std::string& source) const {
        std::vector<std::string> parts(3, "-");
        link(own)->SplitURL(source, parts[0], parts[1], parts[2]);
        return parts;
    }

    Ref<Topic> topic = addTopic("Topic1");
};

TEST_F(LinkInfoTest, ANewLinkIsUnverified) {
    const auto fresh = make<LinkInfo>();
    EXPECT_EQ(fresh->LinkStatus, lsUnverified);
    EXPECT_EQ(fresh->LinkType, ltHyperlink);
    EXPECT_EQ(fresh->Topic, nullptr);
    EXPECT_EQ(fresh->LinkText + fresh->LinkCaption + fresh->Section, "");
}

TEST_F(LinkInfoTest, ABookmarkIsSplitOffFirst) {
    EXPECT_THAT(split("x", "a.html#b"), ElementsAre("a.html", "b", "-"));
    EXPECT_THAT(split("x?y", " a?q # b#c "), ElementsAre("a?q", "b#c", "-"));
    EXPECT_THAT(split("", "#"), ElementsAre("", "", "-"));
}

TEST_F(LinkInfoTest, AQueryIsLookedForByTheLinksOwnText) {
    EXPECT_THAT(split("a?b", " x ? y?z "), ElementsAre("x", "-", "y?z"));
    EXPECT_THAT(split("", "x?y"), ElementsAre("x?y", "-", "-"));
    EXPECT_THAT(split("", " x "), ElementsAre(" x ", "-", "-"));
    EXPECT_THAT(failureOf([&] { split("a?b", "x"); }), HasSubstr("Invalid argument"));
}

TEST_F(LinkInfoTest, TheSplitComesBackInItsArguments) {
    Arguments arguments{"a#b", "", "", "q"};
    callMember(*link("a#b"), "SplitURL", arguments);
    EXPECT_EQ(arguments[1], Value("a"));
    EXPECT_EQ(arguments[2], Value("b"));
    EXPECT_EQ(arguments[3], Value("q"));
}

TEST_F(LinkInfoTest, LinksToNothingAreFine) {
    EXPECT_EQ(verified(""), lsOK);
    EXPECT_EQ(verified("#"), lsOK);
    EXPECT_EQ(verified("?a=1"), lsOK);
    EXPECT_EQ(verified("", ltImage), lsOK);
}

TEST_F(LinkInfoTest, PagesOfTopicsAndOfTheGlossaryAreFine) {
    EXPECT_EQ(verified("Topic1.html"), lsOK);
    EXPECT_EQ(verified("TOPIC1.HTML"), lsOK);
    EXPECT_EQ(verified("glossary.html"), lsOK);
    EXPECT_EQ(verified("GLOSSARY.HTML#a"), lsOK);
    EXPECT_EQ(verified("Topic2.html"), lsBroken);
    EXPECT_EQ(verified(".html"), lsBroken);
}

TEST_F(LinkInfoTest, OtherNamesAndImagesTakeNoTopicTest) {
    EXPECT_EQ(verified("Topic1.htm"), lsBroken);
    EXPECT_EQ(verified("sub/Topic1.html"), lsBroken);
    EXPECT_EQ(verified("sub\\Topic1.html"), lsBroken);
    EXPECT_EQ(verified("Topic1.html", ltImage), lsBroken);
    EXPECT_EQ(verified("glossary.html", ltImage), lsBroken);
}

TEST_F(LinkInfoTest, AFileInTheProjectsFolderIsFine) {
    outside.files->Put("/work/manual/Topic2.html", "");
    outside.files->Put("/work/manual/img/a b.gif", "");
    EXPECT_EQ(verified("Topic2.html"), lsOK);
    EXPECT_EQ(verified("img/a b.gif", ltImage), lsOK);
    EXPECT_EQ(verified("img\\a b.gif", ltImage), lsOK);
    EXPECT_EQ(verified("img/none.gif", ltImage), lsBroken);
    EXPECT_EQ(verified("a.html?x=1"), lsBroken);
    EXPECT_EQ(verified("Topic2.html?x=1"), lsOK);
}

TEST_F(LinkInfoTest, ANameThatNoFileCanHaveIsBroken) {
    EXPECT_EQ(verified(std::string("a\0", 2)), lsBroken);
    EXPECT_EQ(verified("a\nb"), lsBroken);
    EXPECT_EQ(verified(std::string(10'000, 'a')), lsBroken);
}

TEST_F(LinkInfoTest, SchemesAreFineOrAskedFor) {
    for (const auto* text :
         {"javascript:x()", "MAILTO:a@b", "https://x", "ftp://x", "file:///x", "c:\\x", "x:y"}) {
        EXPECT_EQ(verified(text), lsOK) << text;
    }
    EXPECT_EQ(verified("http://example.org/a#b"), lsUnverified);
    EXPECT_THAT(outside.web->fetched, IsEmpty());
    EXPECT_EQ(verified("HTTP://example.org/a#b", ltHyperlink, true), lsOK);
    EXPECT_EQ(verified("https://example.org/", ltHyperlink, true), lsOK);
    outside.web->error = "404 Not Found";
    EXPECT_EQ(verified("http://example.org/i.png", ltImage, true), lsBroken);
    EXPECT_THAT(outside.web->fetched, ElementsAre("HTTP://example.org/a#b", "http://example.org/i.png"));
}

TEST_F(LinkInfoTest, ATildeIsAPageOfTheRelatedProject) {
    EXPECT_EQ(verified("Class~Member.htm"), lsBroken);
    project->SetCMPFileName("related.cmp");
    EXPECT_EQ(verified("Class~Member.htm"), lsOK);
    EXPECT_EQ(verified("Class.htm"), lsBroken);
}

TEST_F(LinkInfoTest, ADecidedStatusStaysUnlessTheTopicTestDecidesAnew) {
    const auto broken = link("file.txt");
    broken->Verify();
    EXPECT_EQ(broken->LinkStatus, lsBroken);
    outside.files->Put("/work/manual/file.txt", "");
    broken->Verify();
    EXPECT_EQ(broken->LinkStatus, lsBroken);
    const auto page = link("Topic1.html");
    page->LinkStatus = lsBroken;
    page->Verify();
    EXPECT_EQ(page->LinkStatus, lsOK);
}

TEST_F(LinkInfoTest, ALinkNeedsATopicOfAProject) {
    EXPECT_NE(failureOf([] { make<LinkInfo>()->Verify(); }), "no failure");
    EXPECT_NE(failureOf([] { make<LinkInfo>()->ChangeLinkText("x"); }), "no failure");
    EXPECT_NE(failureOf([&] { make<LinkInfo>()->Load(topic, nullptr); }), "no failure");
    const auto alone = link("x.html");
    alone->Topic = make<Topic>();
    EXPECT_NE(failureOf([&] { alone->Verify(); }), "no failure");
}

}  // namespace
}  // namespace quillbox
