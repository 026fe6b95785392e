#include "links/LinkHelpers.h"
#include "links/LinkInfo.h"
#include "support/ProjectTest.h"

namespace quillbox {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// Links as they stand in the bodies of topics.
class SuspectLinks : public ProjectTest {
  protected:
    static std::vector<std::string> texts(const Ref<LinkInfos>& links) {
        std::vector<std::string> found;
        for (const auto& link : links->Items()) found.push_back(link->LinkText);
        return found;
    }
    static std::vector<std::string> suspects(const Ref<Topic>& topic) {
        Ref<HTMLDocument> dom;
        return texts(topic->GetSuspectLinks(nullptr, dom));
    }
    Ref<LinkInfo> only(const Ref<Topic>& topic) const {
        Ref<HTMLDocument> dom;
        const auto links = topic->GetSuspectLinks(nullptr, dom);
        EXPECT_EQ(links->Count(), 1);
        return links->Item(1);
    }
};

TEST_F(SuspectLinks, HyperlinksComeBeforeImagesEachInTheOrderOfTheText) {
    const auto topic =
        addTopic("One",
                 "<img src='b.gif'><a href='a.htm'>first</a><p><A HREF='c.htm'><b>2</b></A><IMG "
                 "SRC='d.gif'><a href='a.htm'>again</a><a href='One.html'>me</a></p>");
    Ref<HTMLDocument> dom;
    const auto links = topic->GetSuspectLinks(nullptr, dom);
    EXPECT_THAT(texts(links), ElementsAre("a.htm", "c.htm", "a.htm", "b.gif", "d.gif"));
    EXPECT_EQ(dom, nullptr);
    EXPECT_EQ(links->Item(1)->LinkCaption, "first");
    EXPECT_EQ(lower(links->Item(2)->LinkCaption), "<b>2</b>");
    EXPECT_EQ(links->Item(4)->LinkCaption, "");
    EXPECT_EQ(links->Item(4)->LinkType, ltImage);
    EXPECT_EQ(links->Item(1)->LinkStatus, lsBroken);
    EXPECT_EQ(links->Item(1)->Topic, topic);
}

TEST_F(SuspectLinks, ATopicWithoutLinksGivesAnEmptyListAndAPassedOneComesBack) {
    const auto topic = addTopic("One", "<p>x</p>");
    EXPECT_THAT(suspects(topic), IsEmpty());
    const auto passed = make<LinkInfos>();
    passed->Add(make<LinkInfo>());
    Ref<HTMLDocument> dom;
    EXPECT_EQ(topic->GetSuspectLinks(passed, dom), passed);
    EXPECT_EQ(passed->Count(), 1);
    EXPECT_EQ(addTopic("Empty")->GetSuspectLinks(nullptr, dom)->Count(), 0);
}

TEST_F(SuspectLinks, ADocumentThatIsPassedIsFilledAnewAndNotHandedBack) {
    const auto topic = addTopic("One", "<a href='new.htm'>n</a>");
    auto dom = newBodyDocument("<a href='old.htm'>o</a>");
    const auto document = dom;
    EXPECT_THAT(texts(topic->GetSuspectLinks(nullptr, dom)), ElementsAre("new.htm"));
    EXPECT_EQ(dom, nullptr);
    EXPECT_THAT(document->body()->innerHTML(), HasSubstr("new.htm"));
}

TEST_F(SuspectLinks, AnchorsInTheTopicAndInOthersAreLookedFor) {
    const auto target = addTopic("Target", "<a name='here'></a><p id='there'></p>");
    const auto topic = addTopic(
        "One",
        "<a name='own'></a><a href='#own'>1</a><a href='#none'>2</a><a href='#'>3</a><a "
        "href='Target.html#here'>4</a>"
        "<a href='target.html#there'>5</a><a href='Target.html#none'>6</a><a href='Target.html'>7</a>");
    EXPECT_THAT(suspects(topic), ElementsAre("#none", "target.html#there", "Target.html#none"));
    EXPECT_THAT(suspects(target), IsEmpty());
}

TEST_F(SuspectLinks, AnUncheckedAddressIsSuspect) {
    const auto topic =
        addTopic("One", "<a href='http://example.org/'>x</a><a href='https://example.org/'>y</a>");
    EXPECT_EQ(only(topic)->LinkStatus, lsUnverified);
    EXPECT_THAT(outside.web->fetched, IsEmpty());
}

TEST_F(SuspectLinks, EscapesAreDecodedBeforeAFileIsLookedFor) {
    outside.files->Put("/work/manual/a b.gif", "");
    EXPECT_THAT(suspects(addTopic("One", "<img src='a%20b.gif'>")), IsEmpty());
    EXPECT_THAT(suspects(addTopic("Two", "<img src='a%20c.gif'>")), ElementsAre("a c.gif"));
}

TEST_F(SuspectLinks, AHostileLinkIsBrokenAndDoesNotEndTheWalk) {
    addTopic("First, seen with a base");
    addTopic("One", "<a href='%'>x</a><a href='a%00b'>y</a><img src='" + std::string(5000, 'x') + "'>");
    addTopic("Two", "<a href='broken.htm'>x</a>");
    EXPECT_EQ(project->GetSuspectLinks()->Count(), 4);
}

TEST_F(SuspectLinks, TheWalkOverTheProjectTellsEachTopicByItsPosition) {
    addTopic("One");
    addTopic("Two", "<a href='b.htm'>x</a>");
    addTopic("Three", "<a href='c.htm'>x</a>");
    EventLog log(project);
    EXPECT_THAT(texts(project->GetSuspectLinks()), ElementsAre("b.htm", "c.htm"));
    EXPECT_THAT(log.Take(),
                ElementsAre("LinkCheckStartTopic(1)", "LinkCheckStartTopic(2)", "LinkCheckStartTopic(3)"));
}

TEST_F(SuspectLinks, OnlyTheFirstTopicIsSeenWithABase) {
    addTopic("One", "<a href='a.htm'>x</a>");
    addTopic("Two", "<a href='a.htm'>x</a>");
    EXPECT_THAT(texts(project->GetSuspectLinks()), ElementsAre("a.htm"));  // with a base it has a scheme
}

TEST_F(SuspectLinks, AHandlerMayRemoveTopicsDuringTheWalk) {
    for (const auto* name : {"One", "Two", "Three"}) addTopic(name, "<a href='x.htm'>x</a>");
    project->LinkCheckStartTopic.connect([&](int) {
        if (project->Topics->Count() > 1) project->Topics->Remove(project->Topics->Count());
    });
    EXPECT_LE(project->GetSuspectLinks()->Count(), 3);
}

TEST_F(SuspectLinks, ALinkIsChangedWhereverItStandsAndTheTopicIsMarked) {
    const auto topic =
        addTopic("One", "<a href='old.htm'>1</a><p><a href='other.htm'>2</a><a href='old.htm'>3</a></p>");
    Ref<HTMLDocument> dom;
    const auto link = topic->GetSuspectLinks(nullptr, dom)->Item(1);
    settle();
    EventLog log(project);
    link->ChangeLinkText("new.htm");
    EXPECT_EQ(link->LinkText, "new.htm");
    EXPECT_EQ(link->LinkStatus, lsOK);
    EXPECT_THAT(suspects(topic), ElementsAre("new.htm", "other.htm", "new.htm"));
    EXPECT_TRUE(topic->Dirty());
    EXPECT_TRUE(project->ProjectDirty());
    EXPECT_EQ(log.Count("TopicSectionChanged"), 1);
}

TEST_F(SuspectLinks, AnImageKeepsItsOldSource) {
    const auto topic = addTopic("One", "<img src='old.gif'>");
    only(topic)->ChangeLinkText("new.gif");
    EXPECT_THAT(topic->TopicSectionData("BodyText"), HasSubstr("src='old.gif'"));
    EXPECT_THAT(topic->TopicSectionData("BodyText"), HasSubstr("href=\"new.gif\""));
}

TEST_F(SuspectLinks, ADocumentOfTheProjectHasItsFolderAsBase) {
    const auto document = project->NewDOM("<p>x</p>");
    EXPECT_THAT(document->documentElement()->outerHTML(), HasSubstr("<base href=\"/work/manual/\""));
    EXPECT_EQ(document->body()->outerText(), "x");
}

}  // namespace
}  // namespace quillbox
