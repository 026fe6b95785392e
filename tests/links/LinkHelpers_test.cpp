#include "links/LinkHelpers.h"

#include "support/ProjectTest.h"

namespace quillbox {
namespace {

class LinkHelpers : public ProjectTest {};

TEST_F(LinkHelpers, PercentEscapesAreDecoded) {
    EXPECT_EQ(RemoveEntities(""), "");
    EXPECT_EQ(RemoveEntities("plain"), "plain");
    EXPECT_EQ(RemoveEntities("a%20b%2Ec"), "a b.c");
    EXPECT_EQ(RemoveEntities("%41%62"), "Ab");
    EXPECT_EQ(RemoveEntities("%e4%80"), "\u00E4\u20AC");
}

TEST_F(LinkHelpers, ReadingStopsAtWhatIsNoDigit) {
    EXPECT_EQ(RemoveEntities("%4z"), "\x04");
    EXPECT_EQ(RemoveEntities("x%zz"), std::string("x\0", 2));
    EXPECT_EQ(RemoveEntities("x%"), std::string("x\0", 2));
    EXPECT_EQ(RemoveEntities("x%4"), "x\x04");
}

TEST_F(LinkHelpers, ADecodedSignIsDecodedAgain) {
    EXPECT_EQ(RemoveEntities("a%25b"), std::string("a\x0b", 2));
    EXPECT_EQ(RemoveEntities("a%2541"), "aA");
    EXPECT_EQ(RemoveEntities("%25%25"), std::string("\0", 1) + "5");
}

TEST_F(LinkHelpers, CharactersBehindASignAreTakenWhole) {
    EXPECT_EQ(RemoveEntities("%\u00E4\u00F6x"), std::string("\0x", 2));
}

TEST_F(LinkHelpers, ManyEscapesCostNoMoreThanTheirLength) {
    std::string text;
    for (int i = 0; i < 200'000; ++i) text += "%25";
    EXPECT_FALSE(RemoveEntities(text).empty());
}

TEST_F(LinkHelpers, TheMarkOfADocumentWithoutABaseIsTakenOff) {
    EXPECT_EQ(GetLinkText("about:blankTopic1.html"), "Topic1.html");
    EXPECT_EQ(GetLinkText("about:blank"), "");
    EXPECT_EQ(GetLinkText("About:blankx"), "About:blankx");
    EXPECT_EQ(GetLinkText("about:blankabout:blanka%20b"), "about:blanka b");
}

TEST_F(LinkHelpers, ADocumentIsMadeOfTheWholeTextAndNothingAdded) {
    const std::string html = "<html><head></head><body>x</body></html>";
    EXPECT_EQ(newDocument(html)->documentElement()->outerHTML(), html);
    EXPECT_EQ(newBodyDocument("<a href=y>x</a>")->documentElement()->outerHTML(),
              "<html><body><a href=y>x</a></body></html>");
}

// What it gets is not looked at: a whole document comes to stand inside the body.
TEST_F(LinkHelpers, ADocumentOfTheProjectTakesWhatItGetsUnescaped) {
    EXPECT_EQ(
        project->NewDOM("<html><body>x</body></html>")->documentElement()->outerHTML(),
        "<html><head><base href=\"/work/manual/\"/></head><body><html><body>x</body></html></body></html>");
}

TEST_F(LinkHelpers, AnAddressLosesTheFolderOfTheProject) {
    EXPECT_EQ(project->ParseURL("file:///work/manual/x%20y.html"), "x y.html");
    EXPECT_EQ(project->ParseURL("FILE:///WORK/Manual/x.html#a%20b"), "x.html#a b");
    EXPECT_EQ(project->ParseURL("file:///work/manual/file:///work/manual/x"), "x");
    EXPECT_EQ(project->ParseURL("file:///work/other/x%41"), "file:///work/other/x%41");
    EXPECT_EQ(project->ParseURL("https://example.org/%20"), "https://example.org/ ");
    EXPECT_EQ(project->ParseURL(""), "");
    project->Filename->SetPath("c:\\proj\\Manual.qbp");
    EXPECT_EQ(project->ParseURL("file:///C:/Proj/x%20y.html"), "x y.html");
}

}  // namespace
}  // namespace quillbox
