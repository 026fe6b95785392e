#include <gmock/gmock.h>

#include "build/BuildTest.h"
#include "frame/typelib/TypeLibrary.h"

namespace quillbox {
namespace {

using testing::HasSubstr;

class DataProviderTest : public ProviderTest {
  protected:
    Ref<Element> tag(const std::string& type) const {
        auto element = make<Element>();
        element->Attributes->Add(type, "type");
        return element;
    }
};

TEST_F(DataProviderTest, LeavesTextWithoutTagsAlone) {
    for (const auto* text : {"", "plain", "50% off", "%", "one %% alone", "%%"})
        EXPECT_EQ(expanded(text), text) << text;
    EXPECT_EQ(document->common->told, 0);
}

TEST_F(DataProviderTest, PutsValuesInThePlaceOfTags) {
    document->common->data["date"] = "today";
    EXPECT_EQ(expanded("It is %%date%%, %%DATE%%."), "It is today, today.");
}

TEST_F(DataProviderTest, ReadsTypeAndAttributesOfATag) {
    makeCurrent(addTopic("Intro", "<p>Hello</p>"));
    EXPECT_EQ(expanded("%%topicsection:name=bodytext%%"), "<p>Hello</p>");
    EXPECT_EQ(expanded("%%TopicSection:NAME=bodytext,dropped%%"), "<p>Hello</p>");
}

TEST_F(DataProviderTest, TakesOneQuoteOffEachEndOfAValue) {
    const std::string inQuotes = "%%ReplaceInQuotes:Value=True%%";
    EXPECT_EQ(expanded(inQuotes + "%%literal:value=\"a b\"%%"), "a b");
    EXPECT_EQ(expanded("%%literal:value=a,b%%"), "a");
}

TEST_F(DataProviderTest, FailsForAnAttributeGivenTwice) {
    EXPECT_THAT(failureOf([&] { expanded("%%literal:value=a,value=b%%"); }), HasSubstr("'value'"));
}

TEST_F(DataProviderTest, ScansInQuotesOnlyWhenTold) {
    EXPECT_EQ(expanded("<a title=\"%%literal:value=x%%\">%%literal:value=y%%</a>"),
              "<a title=\"%%literal:value=x%%\">y</a>");
    EXPECT_EQ(expanded("%%ReplaceInQuotes:Value=True%%<a title=\"%%literal:value=x%%\">"), "<a title=\"x\">");
    EXPECT_EQ(expanded("%%replaceinquotes:value=TRUE%%\"%%literal:value=x%%\"%%ReplaceInQuotes:Value=no%%\"%%"
                       "literal:value=x%%\""),
              "\"x\"\"%%literal:value=x%%\"");
}

TEST_F(DataProviderTest, LeavesAnUnknownTagAsItStands) {
    EXPECT_EQ(expanded("a %%unknown%% b"), "a %%unknown%% b");
    makeCurrent(addTopic("Intro"));
    EXPECT_EQ(expanded("a %%Unknown:name=x%% b"), "a %%Unknown:name=x%% b");
}

TEST_F(DataProviderTest, AsksTheCommonProviderFirst) {
    makeCurrent(project);
    document->common->data["crlf"] = "<hr>";
    EXPECT_EQ(expanded("%%crlf%%"), "<hr>");
    document->common->data["crlf"] = "{Discard}";
    EXPECT_EQ(expanded("%%crlf%%"), "");
    document->common->data.clear();
    EXPECT_EQ(expanded("%%crlf%%"), "\r\n");
    document->common->properties["own"] = "{Discard}";
    EXPECT_EQ(expanded("%%own%%"), "");
}

TEST_F(DataProviderTest, TellsTheCommonProviderOfEachItemOnce) {
    makeCurrent(addTopic("One"));
    expanded("%%a%%%%b%%%%c%%");
    EXPECT_EQ(document->common->told, 1);
    makeCurrent(addTopic("Two"));
    expanded("%%a%%%%b%%");
    EXPECT_EQ(document->common->told, 2);
}

TEST_F(DataProviderTest, TakesAProjectAsRootItem) {
    const auto fresh = make<QbDataProvider>();
    fresh->SetCurrentItem(def(kTopicItems), addTopic("Intro"), "cm.quillbox:topic", nullptr);
    EXPECT_EQ(fresh->CurrentRootItem(), nullptr);
    fresh->SetCurrentItem(nullptr, project, "cm.quillbox:qbproject", nullptr);
    EXPECT_EQ(fresh->CurrentRootItem(), project);
}

TEST_F(DataProviderTest, RestartsCountersWithEachRootItem) {
    EXPECT_EQ(expanded("%%incrementingvalue:Name=x%%%%incrementingvalue:Name=x%%"), "12");
    data->SetCurrentRootItem(project);
    EXPECT_EQ(expanded("%%incrementingvalue:Name=x%%"), "1");
    data->Clone();
    EXPECT_EQ(expanded("%%incrementingvalue:Name=x%%"), "1");
    EXPECT_EQ(failureOf([&] { data->SetCurrentRootItem(document); }),
              "The root item of a build has to be a project");
}

TEST_F(DataProviderTest, ClonesItsItemsRootAndDocument) {
    const auto topic = addTopic("Intro");
    const auto manifest = addManifest("Book");
    data->SetCurrentItem(def(kTopicItems), topic, "type", manifest);
    const auto copy = std::dynamic_pointer_cast<QbDataProvider>(data->Clone());
    EXPECT_NE(copy, data);
    EXPECT_EQ(copy->CurrentItem(), topic);
    EXPECT_EQ(copy->CurrentParentItem(), manifest);
    EXPECT_EQ(copy->CurrentItemType(), "type");
    EXPECT_EQ(copy->NamespaceDef(), def(kTopicItems));
    EXPECT_EQ(copy->CurrentRootItem(), project);
    EXPECT_EQ(copy->Document(), document);
}

TEST_F(DataProviderTest, KeepsNoDocumentAlive) {
    const auto lone = make<QbDataProvider>();
    const auto passing = engine->NewDocument();
    engine->made.pop_back();
    lone->SetDocument(passing);
    EXPECT_EQ(passing.use_count(), 1);
}

TEST_F(DataProviderTest, FailsWithoutADocumentOnlyWhereOneIsNeeded) {
    const auto lone = make<QbDataProvider>();
    EXPECT_EQ(lone->ProvideData(tag("taggedcomment"), nullptr), "");
    EXPECT_EQ(failureOf([&] { lone->ProvideData(tag("date"), nullptr); }),
              "The data provider has no document");
    EXPECT_EQ(failureOf([&] { lone->ProvideData(nullptr, nullptr); }), "There is no tag to give a value to");
}

TEST_F(DataProviderTest, NamesTextLineAndTagInAFailure) {
    makeCurrent(addTopic("Intro", "<p>\n%%literal%%</p>"));
    EXPECT_EQ(failureOf([&] { expanded("%%topicsection:name=BodyText%%"); }),
              "the section 'BodyText' of the topic 'Intro', line 2, %%literal%%: The tag 'literal' needs the "
              "attribute "
              "'value'");
}

TEST_F(DataProviderTest, StopsAScrapThatContainsItself) {
    document->scraps["_LOOP"] = "x%%scrap:name=_LOOP%%";
    EXPECT_THAT(failureOf([&] { expanded("%%scrap:name=_LOOP%%"); }), HasSubstr("contains itself"));
}

TEST_F(DataProviderTest, IsReachedByTheNamesOfItsInterface) {
    Arguments text{"%%literal:value=x%%"};
    EXPECT_EQ(toText(callMember(*data, "ParseForProperties", text)), "x");
    Arguments current{Value(Ref<Object>()), addTopic("Intro"), "t", Value(Ref<Object>())};
    callMember(*data, "SetCurrentItem", current);
    Arguments name{"title"};
    EXPECT_EQ(toText(callMember(*data, "GetProperty", name)), "Intro title");
    EXPECT_EQ(toText(getMember(*data, "CurrentItemType")), "t");
}

}  // namespace
}  // namespace quillbox
