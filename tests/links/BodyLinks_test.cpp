#include "links/BodyLinks.h"

#include "frame/Platform.h"
#include "html/HostileBodies.h"
#include "links/LinkHelpers.h"
#include "links/LinkInfo.h"
#include "support/ProjectTest.h"

namespace quillbox {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Notes what is parsed.
class NotingFactory : public DOMFactory {
  public:
    explicit NotingFactory(std::shared_ptr<DOMFactory> real) : mReal(std::move(real)) {}
    Ref<HTMLDocument> NewDocument(const std::string& html) override {
        parsed.push_back(html);
        return mReal->NewDocument(html);
    }
    std::vector<std::string> parsed;

  private:
    std::shared_ptr<DOMFactory> mReal;
};

class BodyLinksTest : public ProjectTest {
  protected:
    BodyLinksTest() { platform().html = factory; }

    static std::vector<std::string> suspects(const Ref<Topic>& topic) {
        Ref<HTMLDocument> dom;
        std::vector<std::string> found;
        for (const auto& link : topic->GetSuspectLinks(nullptr, dom)->Items())
            found.push_back(link->LinkText);
        return found;
    }
    static std::string at(const Ref<LinkInfo>& link) {
        const auto body = link->Topic->TopicSectionData("BodyText");
        const auto place = link->PlaceInBody();
        return place && *place < body.size() ? body.substr(*place, 4) : "nowhere";
    }
    // The beginnings of the suspect links where they are said to stand.
    static std::vector<std::string> places(const Ref<LinkInfos>& links) {
        std::vector<std::string> found;
        for (const auto& link : links->Items()) found.push_back(at(link));
        return found;
    }

    std::shared_ptr<NotingFactory> factory = std::make_shared<NotingFactory>(platform().html);
};

TEST_F(BodyLinksTest, LinksAndAnchorsOfABodyAreRead) {
    const auto body = readLinks(*newDocument(
        "<body><img src=1.gif><a name=one id=two>x</a><a href='a b'>y<b>z</b></a><p id=three></p></body>"));
    ASSERT_EQ(body.links.size(), 3u);
    EXPECT_EQ(body.links[0].url, "");
    EXPECT_EQ(body.links[1].caption, "y<b>z</b>");
    EXPECT_EQ(body.links[1].url, "about:blanka b");
    EXPECT_EQ(body.links[2].type, ltImage);
    EXPECT_EQ(body.links[2].place, 0u);
    EXPECT_TRUE(body.HasAnchor("one"));
    EXPECT_TRUE(body.HasAnchor("two"));
    EXPECT_FALSE(body.HasAnchor("three"));
    EXPECT_FALSE(body.HasAnchor("One"));
    EXPECT_FALSE(body.HasAnchor(""));
}

TEST_F(BodyLinksTest, ATextIsReadOnceForAllLinksIntoIt) {
    addTopic("Target", "<a name=x></a>");
    const auto topic =
        addTopic("One",
                 "<a href='Target.html#x'>1</a><a href='Target.html#y'>2</a><a href='target.html#x'>3"
                 "</a><a href='#z'>4</a><a href='#z'>5</a><a name=z></a>");
    EXPECT_THAT(suspects(topic), ElementsAre("Target.html#y"));
    EXPECT_EQ(factory->parsed.size(), 2u);
    EXPECT_THAT(suspects(topic), ElementsAre("Target.html#y"));
    EXPECT_THAT(suspects(project->TopicByName("Target")), IsEmpty());
    EXPECT_EQ(factory->parsed.size(), 2u);
}

TEST_F(BodyLinksTest, AnotherTextIsReadAnewHoweverItCame) {
    const auto target = addTopic("Target", "<a name=x></a>");
    const auto topic = addTopic("One", "<a href='Target.html#x'>1</a>");
    EXPECT_THAT(suspects(topic), IsEmpty());
    const auto section = target->TopicSections->Item("BodyText");
    section->SetData("<a name=y></a>");
    EXPECT_THAT(suspects(topic), ElementsAre("Target.html#x"));
    target->SetTopicSectionData("BodyText", "<a name=x></a>");
    EXPECT_THAT(suspects(topic), IsEmpty());
    target->TopicSections->Remove("BodyText");
    EXPECT_THAT(suspects(topic), ElementsAre("Target.html#x"));
    target->NewTopicSection("BodyText", "<a name=x></a>");
    EXPECT_THAT(suspects(topic), IsEmpty());
    topic->SetTopicSectionData("BodyText", "<a href='new.htm'>1</a>");
    EXPECT_THAT(suspects(topic), ElementsAre("new.htm"));
}

TEST_F(BodyLinksTest, ATextThatCannotBeReadFailsEachTime) {
    std::string deep;
    for (int i = 0; i < 600; ++i) deep += "<div>";
    addTopic("Deep", deep);
    const auto topic = addTopic("One", "<a href='Deep.html#x'>1</a>");
    for (int i = 0; i < 2; ++i) EXPECT_NE(failureOf([&] { suspects(topic); }), "no failure");
}

TEST_F(BodyLinksTest, APlaceIsThatOfTheTagInTheBody) {
    const auto topic =
        addTopic("One", "\xC3\xA9 <img src=1.gif>\n<A\nHREF=2.htm>x</A><p><a href=3.htm>y</a>");
    Ref<HTMLDocument> dom;
    EXPECT_THAT(places(topic->GetSuspectLinks(nullptr, dom)), ElementsAre("<A\nH", "<a h", "<img"));
}

TEST_F(BodyLinksTest, APlaceIsRightInADocumentWithABaseToo) {
    const std::string body =
        "<p>x</p><a href='#1'>y</a><html lang=de><body class=k><a href='#2'>z</a></body></html>";
    addTopic("First", body);
    addTopic("Second", body);
    const auto links = project->GetSuspectLinks();
    ASSERT_EQ(links->Count(), 4);
    EXPECT_THAT(places(links), ElementsAre("<a h", "<a h", "<a h", "<a h"));
    EXPECT_EQ(links->Item(1)->PlaceInBody(), links->Item(3)->PlaceInBody());
    EXPECT_EQ(links->Item(2)->PlaceInBody(), links->Item(4)->PlaceInBody());
    EXPECT_EQ(links->Item(2)->PlaceInBody(), body.rfind("<a"));
}

TEST_F(BodyLinksTest, APlaceIsRightInEveryHostileBody) {
    addTopic("First, seen with a base");
    const auto topic = addTopic("One");
    for (const auto& hostile : hostileBodies()) {
        SCOPED_TRACE(hostile);
        // What stands behind may be text, or a part of a tag that was left open.
        const auto body = "<a href='#none'>1</a>" + hostile + "<a href='#none'>2</a>";
        topic->SetTopicSectionData("BodyText", body);
        Ref<HTMLDocument> dom;
        auto based = project->NewDOM("<html><body></body></html>");
        for (const auto& links :
             {topic->GetSuspectLinks(nullptr, dom), topic->GetSuspectLinks(nullptr, based)}) {
            for (const auto& link : links->Items()) {
                ASSERT_TRUE(link->PlaceInBody());
                EXPECT_THAT(lower(at(link)), testing::StartsWith(link->LinkType == ltImage ? "<im" : "<a"));
            }
        }
    }
}

TEST_F(BodyLinksTest, ALinkThatStandsInNoBodyHasNoPlace) {
    const auto document = newBodyDocument("<p><a href='#x'>y</a></p>");
    document->all()->tags("p")->Items().at(0)->setInnerHTML("<a href='#z'>new</a>");
    const auto link = make<LinkInfo>();
    link->Load(addTopic("One"), document->all()->tags("a")->Items().at(0));
    EXPECT_EQ(link->PlaceInBody(), std::nullopt);
    EXPECT_EQ(make<LinkInfo>()->PlaceInBody(), std::nullopt);
}

TEST_F(BodyLinksTest, ManyLinksAndAnchorsInOneBodyCostInLineWithTheirNumber) {
    std::string body;
    for (int i = 0; i < 20'000; ++i) {
        const auto name = std::to_string(i);
        body += "<a name=n" + name + "></a><a href='#n" + name + "'>x</a>\n";
    }
    EXPECT_THAT(suspects(addTopic("One", body)), IsEmpty());
    EXPECT_EQ(factory->parsed.size(), 1u);
}

}  // namespace
}  // namespace quillbox
