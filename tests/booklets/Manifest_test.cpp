#include "booklets/Manifest.h"

#include "support/ProjectTest.h"

namespace quillbox {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr const char* kManifests = "/work/manual/ProjectData/Manifests.xml";
constexpr const char* kDefaults = "/install/Configuration/bookletproperties.xml";

// The element of booklet properties that have the values of a new object.
std::string propertiesElement(const std::string& name, const std::string& templateName) {
    return "<" + name + " TemplateName=\"" + templateName +
           "\" PageBreaks=\"0\" UnPrintableLeft=\"0\" UnPrintableRight=\"0\" UnPrintableTop=\"0\" "
           "UnPrintableBottom=\"0\" MarginLeft=\"0\" MarginRight=\"0\" MarginTop=\"0\" MarginBottom=\"0\" "
           "PaperSize=\"9\" OutputFileName=\"\" CoverpageTopicID=\"\" EntryNumbering=\"0\" "
           "GenerateTOC=\"False\" "
           "Title=\"\" RawCoverPage=\"False\" LinkPPCodemark=\"\" LinkPPTopicInBooklet=\"\" "
           "LinkPPTopicNotInBooklet=\"\" LinkPPURLWithCaption=\"\" LinkPPURLNoCaption=\"\"";
}

class ManifestTest : public ProjectTest {
  protected:
    ManifestTest() {
        settle();
        log.Take();
    }
    Ref<Manifest> load(const std::string& xml) const {
        const auto document = platform().xml->NewDocument();
        document->Parse(xml);
        const auto loaded = make<Manifest>();
        loaded->SetQbProject(project);
        loaded->Load(document->RootElement());
        return loaded;
    }

    Ref<Topic> topic = addTopic("Intro");
    Ref<Manifest> manifest = addManifest("Book");
    EventLog log{project};
};

TEST_F(ManifestTest, ANewManifestHasItsDefaults) {
    const auto fresh = make<Manifest>();
    EXPECT_EQ(fresh->ManifestType(), mtBooklet);
    EXPECT_FALSE(fresh->IncludeFlag());
    EXPECT_FALSE(fresh->BuildIncludeFlag);
    EXPECT_EQ(fresh->BookletProperties->Manifest(), fresh);
    EXPECT_EQ(fresh->Entries()->Parent(), fresh);
    EXPECT_EQ(fresh->Entries(), fresh->Entries());
}

TEST_F(ManifestTest, ANewBookletTakesItsPropertiesFromTheConfiguration) {
    outside.files->Put(kDefaults, propertiesElement("BookletProperties", "Print") + "/>");
    const auto booklet = project->NewManifest("b");
    EXPECT_EQ(booklet->BookletProperties->TemplateName(), "Print");
    EXPECT_EQ(booklet->Name(), "b");
    EXPECT_EQ(booklet->Key.size(), 38u);
    EXPECT_EQ(project->Manifests()->Count(), 1);
    const auto sequence = project->NewManifest("s", mtBrowseSequence);
    EXPECT_EQ(sequence->BookletProperties->TemplateName(), "");
    EXPECT_EQ(sequence->ManifestType(), mtBrowseSequence);
}

TEST_F(ManifestTest, ARootOfAnotherNameIsPassedOverAndABrokenFileFails) {
    outside.files->Put(kDefaults, propertiesElement("bookletproperties", "Print") + "/>");
    EXPECT_EQ(project->NewManifest("b")->BookletProperties->TemplateName(), "");
    outside.files->Put(kDefaults, "<BookletProperties/>");
    EXPECT_THAT(failureOf([&] { project->NewManifest("b"); }), HasSubstr("bookletproperties.xml: "));
    outside.files->Put(kDefaults, "<BookletProp");
    EXPECT_THAT(failureOf([&] { project->NewManifest("b"); }), HasSubstr("bookletproperties.xml: "));
    newFile(kDefaults)->Delete();
    EXPECT_THAT(failureOf([&] { project->NewManifest("b"); }), HasSubstr("bookletproperties.xml"));
    EXPECT_EQ(failureOf([&] { project->NewManifest("s", mtBrowseSequence); }), "no failure");
}

TEST_F(ManifestTest, EachSetterRaisesChangedThenTellsTheProjectAndMarks) {
    EventLog own(manifest);
    for (const auto& [property, value] : std::vector<std::pair<const char*, Value>>{
             {"Notes", "x"}, {"ManifestType", 1}, {"IncludeFlag", true}}) {
        settle();
        log.Take();
        putMember(*manifest, property, value);
        EXPECT_EQ(getMember(*manifest, property), value);
        EXPECT_THAT(own.Take(), ElementsAre("Changed"));
        EXPECT_THAT(log.Take(), ElementsAre("ManifestChanged(Book)", "DirtyStateChanged"));
        EXPECT_TRUE(project->Manifests()->Dirty());
        EXPECT_FALSE(project->ProjectDirty());
    }
}

TEST_F(ManifestTest, AnEqualNameIsToldAndAnEqualFlagIsNot) {
    manifest->SetName("Book");
    EXPECT_EQ(log.Count("ManifestChanged"), 1);
    manifest->SetIncludeFlag(false);
    EXPECT_EQ(log.Count("ManifestChanged"), 1);
    manifest->SetIncludeFlag(true);
    EXPECT_EQ(log.Count("ManifestChanged"), 2);
}

TEST_F(ManifestTest, AChangeOfThePropertiesIsAChangeOfTheManifest) {
    manifest->BookletProperties->SetTitle("x");
    EXPECT_THAT(log.Take(), ElementsAre("ManifestChanged(Book)", "DirtyStateChanged"));
}

TEST_F(ManifestTest, AManifestWithoutAProjectTellsItsOwnListeners) {
    const auto alone = make<Manifest>();
    EventLog own(alone);
    alone->SetName("x");
    alone->Entries()->Add(make<ManifestEntry>());
    EXPECT_THAT(own.Take(), ElementsAre("Changed", "ManifestEntryAdded(ManifestEntry)"));
    EXPECT_THAT(log.Take(), IsEmpty());
}

TEST_F(ManifestTest, AdditionsAndRemovalsOfManifestsMarkWithoutAnEvent) {
    const auto other = project->NewManifest("o", mtBrowseSequence);
    settle();
    log.Take();
    project->Manifests()->Add(other, other->Key);
    EXPECT_THAT(log.Take(), ElementsAre("DirtyStateChanged"));
    project->Manifests()->Remove(other->Key);
    EXPECT_THAT(log.Take(), ElementsAre("DirtyStateChanged"));
    EXPECT_TRUE(project->Manifests()->Dirty());
}

TEST_F(ManifestTest, TheProjectsPauseDoesNotHoldManifestsBack) {
    project->SetPauseEvents(true);
    manifest->SetName("x");
    EXPECT_THAT(log.Take(), ElementsAre("ManifestChanged(x)", "DirtyStateChanged"));
}

TEST_F(ManifestTest, ItsPageIsNamedAfterIt) { EXPECT_EQ(manifest->QualifiedName(), "Book_Manifest"); }

TEST_F(ManifestTest, ASavedManifestHasThisText) {
    manifest->SetNotes("two\nlines");
    manifest->SetIncludeFlag(true);
    const auto first = addEntry(manifest, topic, "");
    first->SetPageBreakBefore(epbAlways);
    first->SetPageBreakAfter(epbNever);
    addEntry(manifest, nullptr, "Own & title", first);
    manifest->BookletProperties->SetHeaderHTML("<b>h</b>");
    project->SetProjectType(ProjectTypeSeparateFiles);
    project->Manifests()->Save(nullptr);
    const auto key = [](int number) {
        return "{00000000-0000-0000-0000-00000000000" + std::to_string(number) + "}";
    };
    EXPECT_EQ(
        bytes(kManifests),
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Manifests>\n  <manifest k=\"" + key(2) +
            "\" n=\"Book\" t=\"0\" i=\"True\">two\nlines<me k=\"" + key(3) + "\" t=\"\" tid=\"" + key(1) +
            "\" pbb=\"1\"><me k=\"" + key(4) + "\" t=\"Own &amp; title\" tid=\"\" pbb=\"0\"/></me>" +
            propertiesElement("bookletproperties", "") +
            "><HeaderHTML>&lt;b&gt;h&lt;/b&gt;</HeaderHTML><FooterHTML/></bookletproperties></manifest>\n"
            "</Manifests>\n");
    const auto other = make<Manifests>();
    other->SetQbProject(project);
    other->Load(nullptr);
    EXPECT_FALSE(other->Dirty());
    const auto read = other->Item(1);
    EXPECT_EQ(read->Name(), "Book");
    EXPECT_EQ(read->Notes(), "two\nlines");
    EXPECT_TRUE(read->IncludeFlag());
    EXPECT_EQ(read->Entries()->Item(1)->Topic(), topic);
    EXPECT_EQ(read->Entries()->Item(1)->PageBreakBefore(), epbAlways);
    EXPECT_EQ(read->Entries()->Item(1)->PageBreakAfter(), epbDefault);
    const auto child = read->Entries()->Item(1)->ChildEntries->Item(1);
    EXPECT_EQ(child->Title(), "Own & title");
    EXPECT_EQ(child->ParentEntry(), read->Entries()->Item(1));
    EXPECT_EQ(child->Manifest(), read);
    EXPECT_EQ(read->BookletProperties->HeaderHTML(), "<b>h</b>");
}

TEST_F(ManifestTest, NotesOfALineBreakAloneAreNothing) {
    EXPECT_EQ(load("<m k='k' n='' t='0'> &#13;&#10; </m>")->Notes(), "");
    EXPECT_EQ(load("<m k='k' n='' t='0'> a </m>")->Notes(), " a ");
    EXPECT_EQ(load("<m k='k' n='' t='0'>&#10;</m>")->Notes(), "\n");
}

TEST_F(ManifestTest, TheIncludeFlagIsTrueForOneTextAloneAndStaysWithoutAnAttribute) {
    EXPECT_TRUE(load("<m k='k' n='' t='0' i='True'/>")->IncludeFlag());
    EXPECT_FALSE(load("<m k='k' n='' t='0' i='true'/>")->IncludeFlag());
    EXPECT_FALSE(load("<m k='k' n='' t='0'/>")->IncludeFlag());
}

TEST_F(ManifestTest, ElementNamesBelowAManifestAreExact) {
    const auto read = load(
        "<MANIFEST K='k' N='n' T='1'><ME k='1' t='' tid=''/><me k='2' t='' tid=''/>"
        "<BookletProperties/><x/></MANIFEST>");
    EXPECT_EQ(read->Name(), "n");
    EXPECT_EQ(read->ManifestType(), mtBrowseSequence);
    EXPECT_EQ(read->Entries()->Count(), 1);
    EXPECT_EQ(read->Entries()->Item(1)->Key, "2");
}

TEST_F(ManifestTest, WhatIsNeededInAFileFailsWithItsLineAndLeavesTheManifestLoading) {
    const auto fails = [&](const std::string& xml, const char* text) {
        EXPECT_THAT(failureOf([&] { load(xml); }), HasSubstr(text)) << xml;
    };
    fails("<m n='' t='0'/>", "'k'");
    fails("<m k='' t='0'/>", "'n'");
    fails("<m k='' n=''/>", "'t'");
    fails("<m k='' n='' t='x'/>", "line 1, element 'm', attribute 't': 'x' is not a number");
    fails("<m k='' n='' t='0'>\n<me t='' tid=''/></m>", "line 2, element 'me': ");
    fails("<m k='' n='' t='0'>\n<me k='' t='' tid=''>\n<me k='' t=''/></me></m>", "line 3, element 'me': ");
    fails("<m k='' n='' t='0'><me k='a' t='' tid=''/>\n<me k='A' t='' tid=''/></m>",
          "line 2, element 'me': The key");
    const auto document = platform().xml->NewDocument();
    document->Parse("<m k='k'/>");
    EXPECT_NE(failureOf([&] { manifest->Load(document->RootElement()); }), "no failure");
    log.Take();
    manifest->SetName("x");
    EXPECT_THAT(log.Take(), IsEmpty());
}

TEST_F(ManifestTest, ALoadEndsCleanThoughEntriesWereAddedOnTheWay) {
    EventLog own(project);
    project->Load(
        "<QbProject><Manifests><manifest k='k' n='Book' t='0'><me k='1' t='' tid=''/></manifest></Manifests>"
        "</QbProject>");
    EXPECT_FALSE(project->Manifests()->Dirty());
    EXPECT_EQ(project->Manifests()->Item("K")->Entries()->Count(), 1);
    EXPECT_EQ(own.Count("ManifestChanged"), 0);
}

TEST_F(ManifestTest, ALoadTellsOfItsEntriesOnTheWayAndEndsClean) {
    const auto document = platform().xml->NewDocument();
    document->Parse("<x><m k='k' n='' t='0'><me k='1' t='' tid=''><me k='2' t='' tid=''/></me></m></x>");
    std::vector<bool> marks;
    project->DirtyStateChanged.connect([&] { marks.push_back(project->Manifests()->Dirty()); });
    project->Manifests()->Load(document->RootElement());
    EXPECT_THAT(marks, testing::AllOf(testing::Not(IsEmpty()), testing::Each(true)));
    EXPECT_FALSE(project->Manifests()->Dirty());
}

TEST_F(ManifestTest, WithoutAFileManifestsAreEmptyAndTheFirstSaveWritesThem) {
    project->SetProjectType(ProjectTypeSeparateFiles);
    const auto other = make<Manifests>();
    other->SetQbProject(project);
    other->Load(nullptr);
    EXPECT_EQ(other->Count(), 0);
    EXPECT_FALSE(other->Dirty());
    other->Save(nullptr);
    EXPECT_THAT(bytes(kManifests), HasSubstr("<Manifests/>"));
}

}  // namespace
}  // namespace quillbox
