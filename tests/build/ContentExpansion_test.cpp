#include <gmock/gmock.h>

#include "build/AnchorPass.h"
#include "build/BuildTest.h"
#include "build/ManifestTOC.h"

namespace quillbox {
namespace {

struct AnchorCase {
    const char *text, *expected;
};
class AnchorPassTest : public testing::TestWithParam<AnchorCase> {};

TEST_P(AnchorPassTest, TurnsAnchorsIntoLinks) {
    EXPECT_EQ(resolveAnchors(GetParam().text), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Anchors, AnchorPassTest,
    testing::Values(AnchorCase{"", ""}, AnchorCase{"no signs", "no signs"}, AnchorCase{"50% off", "50% off"},
                    AnchorCase{"50% and 60%", "50% and 60%"},
                    AnchorCase{"%Ns~Class%", "<a href=\"Ns~Class.html\">Class</a>"},
                    AnchorCase{"see %Ns~Sub~Class%.", "see <a href=\"Ns~Sub~Class.html\">Class</a>."},
                    AnchorCase{"%See this:Ns~Class%", "<a href=\"Ns~Class.html\">See this</a>"},
                    AnchorCase{"%See this:Page%", "<a href=\"Page.html\">See this</a>"},
                    AnchorCase{"%:Page%", "<a href=\"Page.html\">Page</a>"}, AnchorCase{"a%Caption:%b", "ab"},
                    AnchorCase{"50% of %Ns~Class%", "50% of <a href=\"Ns~Class.html\">Class</a>"},
                    AnchorCase{"%a<b>~c%", "%a<b>~c%"}, AnchorCase{"%a\"~c%", "%a\"~c%"},
                    AnchorCase{"/%Ns~Class/%", "/%Ns~Class/%"},
                    AnchorCase{"%Ns~A/%B%", "<a href=\"Ns~A/%B.html\">A/%B</a>"},
                    AnchorCase{"%A~B%%C~D%", "<a href=\"A~B.html\">B</a><a href=\"C~D.html\">D</a>"}));

class ContentExpansionTest : public ProviderTest {
  protected:
    std::string body(const std::string& text) {
        const auto topic = addTopic("Intro");
        topic->SetTopicSectionData("BodyText", text);
        makeCurrent(topic);
        return expanded("%%topicsection:name=BodyText%%");
    }
};

TEST_F(ContentExpansionTest, AnchorsAreResolvedForARelatedProjectAlone) {
    EXPECT_EQ(body("%Ns~Class%"), "%Ns~Class%");
    project->SetCMPFileName("Code.cmp");
    EXPECT_EQ(body("%Ns~Class%"), "<a href=\"Ns~Class.html\">Class</a>");
}

TEST_F(ContentExpansionTest, TwoPercentSignsOpenATagBeforeAnchorsAreSeen) {
    project->SetCMPFileName("Code.cmp");
    EXPECT_EQ(body("100%% sure"), "100%% sure");
    EXPECT_EQ(body("100%%literal:value=x%% sure %Ns~Class%"),
              "100x sure <a href=\"Ns~Class.html\">Class</a>");
}

TEST_F(ContentExpansionTest, GlossaryTermsBecomeReferences) {
    addTerm("widget", "A thing");
    document->scraps["_GLOSSARYREFERENCE"] = "<dfn>%%glossaryitemterm%%</dfn>";
    EXPECT_EQ(body("A $$Widget$$ here, $$wid\r\nget$$ there."),
              "A <dfn>widget</dfn> here, <dfn>widget</dfn> there.");
}

TEST_F(ContentExpansionTest, AnUnknownTermLosesItsMarks) {
    EXPECT_EQ(body("a $$nothing$$ b $$"), "a nothing b $$");
    EXPECT_EQ(body("$$one$$$$two$$"), "onetwo");
}

TEST_F(ContentExpansionTest, ATermThatCannotBeShownKeepsItsMarks) {
    addTerm("widget");
    document->scraps["_GLOSSARYREFERENCE"] = "!UNCRECOGNISED";
    EXPECT_EQ(body("a $$widget$$ b"), "a $$widget$$ b");
}

TEST_F(ContentExpansionTest, GlossaryReferencesNeedTheirKindInTheTemplate) {
    addTerm("widget");
    const auto bare = make<FakeTemplate>("Bare", "", make<NamespaceDefs>());
    document->PageTemplates->Add(bare, "Bare");
    document->TemplateName = "Bare";
    EXPECT_EQ(body("no reference"), "no reference");
    EXPECT_THAT(failureOf([&] { body("$$widget$$"); }), testing::HasSubstr("the topic 'Intro'"));
}

TEST_F(ContentExpansionTest, AListHasHeaderBodiesSeparatorsAndFooter) {
    for (const auto* name : {"One", "Two", "Three"}) addTopic(name);
    document->scraps = {{"_T_header", "<ul title='%%itemtitle%%'>"},
                        {"_T_body", "<li>%%itemtitle%%</li>"},
                        {"_T_SEPARATOR", ",<crlf>"},
                        {"_T_footer", "</ul>%%itemtitle%%"}};
    makeCurrent(project);
    const auto* expected =
        "<ul title='One title'>\r\n<li>One title</li>,<br><li>Two title</li>,<br><li>Three title</li></ul>"
        "%%itemtitle%%";
    EXPECT_EQ(expanded("%%filtereditemlist:scrap=T,namespace=Topic%%"), expected);
    EXPECT_EQ(expanded("%%filtereditemlist:scrap=_T,namespace=CM.Quillbox:topic%%"), expected);
}

TEST_F(ContentExpansionTest, AListWithoutOptionalScrapsHasItsBodies) {
    addTopic("One");
    addTopic("Two");
    document->scraps["_T_body"] = "[%%itemtitle%%]";
    EXPECT_EQ(expanded("%%filtereditemlist:scrap=T,namespace=topic%%"), "[One title][Two title]");
    EXPECT_EQ(expanded("%%filtereditemlist:scrap=U,namespace=topic%%"),
              "!MISSING SCRAP '_U_body'!!MISSING SCRAP '_U_body'!");
}

TEST_F(ContentExpansionTest, ScrapsAreThoseOfTheTemplateInUse) {
    addTopic("One");
    const std::string text =
        "%%filtereditemlist:scrap=T,namespace=topic%% %%scrap:name=_S%% %%literal:value=x,ValueFormat=@_F%%";
    document->scraps = {{"_T_body", "[%%itemtitle%%]"}, {"_S", "one"}, {"_F", "(%%literal%%)"}};
    EXPECT_EQ(expanded(text), "[One title] one (x)");
    const auto other = engine->AddTemplate("Other");
    document->PageTemplates->Add(other, other->Name());
    document->TemplateName = "Other";
    document->scraps = {{"_T_body", "{%%itemtitle%%}"}, {"_S", "two"}, {"_F", "<%%literal%%>"}};
    EXPECT_EQ(expanded(text), "{One title} two <x>");
}

TEST_F(ContentExpansionTest, AListWithoutItemsIsEmpty) {
    document->scraps = {{"_T_header", "<ul>"}, {"_T_body", "x"}, {"_T_footer", "</ul>"}};
    EXPECT_EQ(expanded("%%filtereditemlist:scrap=T,namespace=topic%%"), "");
}

TEST_F(ContentExpansionTest, AListOfAnUnknownKindSaysSoInThePage) {
    EXPECT_EQ(expanded("%%filtereditemlist:scrap=T,namespace=Nonsense%%"),
              "!ERROR: Namespace not found 'nonsense'!");
}

TEST_F(ContentExpansionTest, AListTakesItsFilterInAnyCase) {
    document->scraps["_L_body"] = "%%glossaryletter%%";
    EXPECT_EQ(expanded("%%filtereditemlist:scrap=L,namespace=GlossaryLetter,filter=%%"), "");
    addTerm("beta");
    EXPECT_EQ(expanded("%%filtereditemlist:scrap=L,namespace=GlossaryLetter%%"), "B");
    const auto element = make<Element>();
    for (const auto& [key, value] : {std::pair("type", "filtereditemlist"),
                                     {"scrap", "L"},
                                     {"namespace", "glossaryletter"},
                                     {"filter", "TYPE=ALL"}}) {
        element->Attributes->Add(value, key);
    }
    EXPECT_EQ(data->ProvideData(element, nullptr), "ABCDEFGHIJKLMNOPQRSTUVWXYZ");
}

TEST_F(ContentExpansionTest, AnItemListedTwiceHasNoSeparatorInEitherPlace) {
    const auto entry = addEntry(addManifest("Book"), nullptr, "Twice");
    const auto manifest = addManifest("Both");
    manifest->Entries()->Add(entry);
    addEntry(manifest, nullptr, "Between");
    manifest->Entries()->Add(entry);
    document->scraps = {{"_E_body", "%%itemtitle%%"}, {"_E_SEPARATOR", "-"}};
    makeCurrent(manifest);
    EXPECT_EQ(expanded("%%filtereditemlist:scrap=E,namespace=manifestentry%%"), "TwiceBetween-Twice");
}

TEST_F(ContentExpansionTest, AListInsideAListHasTheOuterItemAsParent) {
    const auto topic = addTopic("Intro");
    for (const auto* title : {"A", "B"}) {
        const auto link = make<RelatedTopic>();
        link->SetParentTopic(topic);
        link->SetCategory("See also");
        link->SetTitle(title);
        topic->RelatedTopics()->Add(link);
    }
    document->scraps = {{"_C_body", "%%filtereditemlist:scrap=L,namespace=link%%"},
                        {"_L_body", "%%linktitle%%;"}};
    makeCurrent(topic);
    EXPECT_EQ(expanded("%%filtereditemlist:scrap=C,namespace=linkcategory%%"), "A;B;");
}

TEST_F(ContentExpansionTest, AListLeavesNothingBehindForTheNext) {
    const auto topic = addTopic("Intro");
    addTopic("Other");
    project->GlossaryItems()->Add(project->NewGlossaryItem("widget", "A thing"), "widget");
    topic->SetTopicSectionData("BodyText", "$$widget$$");
    document->scraps = {{"_GLOSSARYREFERENCE", "<%%glossaryitemterm%%>"},
                        {"_T_body", "%%itemtitle%%/%%topicsection:name=bodytext%%;"},
                        {"_G_body", "%%glossaryitemdefinition%%/%%linktitle%%;"},
                        {"_F_body", "%%literal%%"}};
    makeCurrent(topic);
    const auto* topics = "%%filtereditemlist:scrap=T,namespace=topic%%";
    const auto* letters =
        "%%filtereditemlist:scrap=L,namespace=glossaryletter%% %%filtereditemlist:scrap=T,namespace=topic%%";
    document->scraps["_L_body"] = "%%filtereditemlist:scrap=G,namespace=glossaryitem%%";
    const auto once = expanded(topics);
    EXPECT_EQ(expanded(topics), once);
    EXPECT_EQ(expanded(letters), "A thing/; " + once);
    EXPECT_THAT(failureOf([&] { expanded("%%filtereditemlist:scrap=F,namespace=topic%%"); }),
                testing::HasSubstr("literal"));
    EXPECT_EQ(expanded(letters), "A thing/; " + once);
}

TEST_F(ContentExpansionTest, AListKeepsNoItemAlive) {
    makeCurrent(addTopic("Intro"));
    const auto listed = addTopic("Listed");
    const auto holders = listed.use_count();
    document->scraps["_T_body"] = "%%itemtitle%% %%common%%";
    EXPECT_THAT(expanded("%%filtereditemlist:scrap=T,namespace=topic%%"), testing::HasSubstr("Listed title"));
    EXPECT_EQ(listed.use_count(), holders);
}

TEST_F(ContentExpansionTest, AListRemembersTheBookletAtWork) {
    const auto manifest = addManifest("Book");
    manifest->BookletProperties->SetTitle("The Book");
    document->scraps["_T_body"] = "x";
    makeCurrent(manifest);
    expanded("%%filtereditemlist:scrap=T,namespace=topic%%");
    makeCurrent(addTopic("Intro"));
    EXPECT_EQ(expanded("%%manifesttitle%%"), "The Book");
}

class ContentsTagTest : public ContentExpansionTest {
  protected:
    // What the tag writes into the page at its place.
    std::string written(const std::vector<std::pair<const char*, const char*>>& attributes) {
        const auto file = newFile("/work/manual/contents.html");
        const auto element = make<Element>();
        element->Attributes->Add("tableofcontents", "type");
        for (const auto& [name, value] : attributes) element->Attributes->Add(value, name);
        file->Open(kWriteElement);
        EXPECT_EQ(data->ProvideData(element, file), "");
        file->Close();
        return bytes("/work/manual/contents.html");
    }
};

TEST_F(ContentsTagTest, HasTheDocumentWriteTheContents) {
    EXPECT_EQ(written({}), "[toc of Help: <UL>||</UL>]");
    EXPECT_EQ(written({{"NodeScrap", "_NODE"}}), "[toc of Help: |_NODE|]");
    EXPECT_EQ(written({{"BookPrefix", "<ol>"}, {"BookSuffix", "</ol>"}}), "[toc of Help: <ol>||</ol>]");
}

TEST_F(ContentsTagTest, MakesTheDefinitionOnce) {
    const auto part = addNode("Part");
    addTopicNode(addTopic("Intro"), part);
    addNode("Other");
    written({});
    const auto definition =
        std::dynamic_pointer_cast<TOCDefinition>(toObject(document->TOCDefs->Item("Help")));
    ASSERT_NE(definition, nullptr);
    ASSERT_EQ(definition->Nodes->Count(), 3);
    EXPECT_EQ(definition->Nodes->Item(2)->Caption, "Intro title");
    EXPECT_EQ(definition->Nodes->Item(2)->LinkTarget, "Intro.html");
    EXPECT_EQ(definition->Nodes->Item(2)->Parent.Get(), definition->Nodes->Item(1));
    addNode("Late");
    written({});
    EXPECT_EQ(definition->Nodes->Count(), 3);
}

TEST_F(ContentsTagTest, IsEmptyInATemplateForOthers) {
    helpTemplate->namespaces = make<Collection>();
    EXPECT_EQ(written({}), "");
    EXPECT_EQ(document->TOCDefs->Count(), 0);
}

TEST_F(ContentExpansionTest, AManifestListsItsEntriesInTables) {
    const auto manifest = addManifest("Book");
    const auto part = addEntry(manifest, nullptr, "Part");
    part->Key = "K1";
    addEntry(manifest, addTopic("Chapter"), "", part)->Key = "K2";
    addEntry(manifest, nullptr, "End")->Key = "K3";
    manifest->AssignEntryNumbers();
    const std::string table =
        "<table border=0 cellpadding=3 cellspacing=2 width=100% class=TableOfContents><tr>";
    const auto row = [](const std::string& number, const std::string& title, const std::string& key) {
        return "<td align=left width=30>" + number + ".</td><td align=left>" + title +
               "</td><td align=right><span class=PageNumber>" + key + "</span></td></tr></table>";
    };
    EXPECT_EQ(manifestTOC(*manifest), table + row("1", "Part", "K1") + "\r\n" + table + "<td width=10></td>" +
                                          row("1.1", "Chapter title", "K2") + table + row("2", "End", "K3"));
    makeCurrent(manifest);
    EXPECT_EQ(expanded("%%booklettableofcontents%%"), "");
    manifest->BookletProperties->SetGenerateTOC(true);
    EXPECT_EQ(expanded("%%booklettableofcontents%%"), manifestTOC(*manifest));
}

}  // namespace
}  // namespace quillbox
