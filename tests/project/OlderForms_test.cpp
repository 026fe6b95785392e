#include "support/ProjectTest.h"
#include "topics/RelatedTopics.h"

namespace quillbox {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class OlderForms : public ProjectTest {
  protected:
    static bool isGuid(const std::string& key) {
        return key.size() == 38 && key.front() == '{' && key.back() == '}' && !key.starts_with("T");
    }
};

// A file of an older version: its own root, keys that begin with T, single items in place of lists.
constexpr const char* kOld = R"(<TopicSet Title="Old manual" Version="0.9">
  <VariableValue Name="Template">Classic</VariableValue>
  <VariableValue Name="HelpCompilerVersion">2.0 beta</VariableValue>
  <VariableValue Name="OutputFileName">/out/old.chm</VariableValue>
  <VariableValue Name="Help2Namespace">Old.1</VariableValue>
  <VariableValue Name="Help2FileID">old</VariableValue>
  <VariableValue Name="Company">Pen</VariableValue>
  <cat Name="How to" Key="T9"/>
  <topic Key="T1" Name="Intro" Title="Intro" Category="T9">
    <c>&lt;p&gt;one&lt;/p&gt;</c><r t="T2" cat="See"/><r t="T7" cat="gone"/>
  </topic>
  <topic Key="T2" Name="Usage" Title="Usage"><r t="T1" cat="See"/><r t="" cat="web"/><r t="T2" cat="itself"/></topic>
  <Nodes>
    <n Key="T3" nt="0" ct="2" c="Book" i="-1" cfn="" tid="" url="">
      <n Key="T4" nt="1" ct="1" c="" i="-1" cfn="" tid="t1" url=""/>
    </n>
    <n Key="T5" nt="1" ct="1" c="" i="-1" cfn="" tid="T7" url=""/>
  </Nodes>
  <glossaryitem Key="T6" Term="API">An interface</glossaryitem>
  <manifest k="T10" n="Printed" t="0">
    <me k="T11" t="" tid="T1"><me k="T12" t="" tid="t2"/></me><me k="T13" t="x" tid=""/><me k="T14" t="" tid="T7"/>
  </manifest>
  <m k="T20" n="Tour" t="1"/>
  <Tasks><Task Key="T30" Priority="High" Title="Work" AssignedTo="" TopicID="T1" Status="" CreatedOn="01-02-2003 04:05:06"
    CreatedBy="" ModifiedOn="30-12-1899 00:00:00" ModifiedBy=""/></Tasks>
</TopicSet>)";

TEST_F(OlderForms, AnOldFileLoadsWithKeysOfTodaysKindAndIsNotDirty) {
    project->Load(kOld);
    EXPECT_FALSE(project->Dirty());
    EXPECT_FALSE(project->TopicsDirty());
    EXPECT_EQ(project->Title(), "Old manual");
    EXPECT_TRUE(isGuid(project->TopicCategories->Item(1)->Key));
    for (const auto& topic : project->Topics->Items()) {
        EXPECT_TRUE(isGuid(topic->Key));
        EXPECT_EQ(project->Topics->Item(topic->Key), topic);
        EXPECT_FALSE(topic->Dirty());
    }
    for (const auto& node : project->QbNodes()->AllNodes()->Items()) {
        EXPECT_TRUE(isGuid(node->Key));
        EXPECT_EQ(project->QbNodes()->Item(node->Key), node);
    }
    for (const auto& manifest : project->Manifests()->Items()) {
        EXPECT_TRUE(isGuid(manifest->Key));
        for (const auto& entry : manifest->Entries()->AllEntries()->Items()) EXPECT_TRUE(isGuid(entry->Key));
    }
    EXPECT_TRUE(isGuid(project->GlossaryItems()->Item(1)->Key));
    EXPECT_EQ(project->GlossaryItems()->Item(1)->Definition(), "An interface");
    EXPECT_EQ(project->Tasks->Item(1)->Key, "T30");
}

TEST_F(OlderForms, WhatPointedToATopicStillDoes) {
    project->Load(kOld);
    const auto intro = project->TopicByName("Intro");
    const auto usage = project->TopicByName("Usage");
    EXPECT_EQ(intro->TopicCategory(), project->TopicCategories->Item(1));
    EXPECT_EQ(intro->TopicSectionData("BodyText"), "<p>one</p>");
    EXPECT_EQ(intro->RelatedTopics()->Item(1)->ChildTopic(), usage);
    EXPECT_EQ(intro->RelatedTopics()->Item(2)->ChildTopicKey, "T7");
    EXPECT_EQ(usage->RelatedTopics()->Item(1)->ChildTopic(), intro);
    EXPECT_EQ(usage->RelatedTopics()->Item(2)->ChildTopicKey, "");
    EXPECT_EQ(usage->RelatedTopics()->Item(3)->ChildTopic(), usage);
    EXPECT_EQ(project->QbNodes()->Item(1)->ChildNodes->Item(1)->Topic(), intro);
    EXPECT_EQ(project->QbNodes()->Item(2)->TopicID(), "T7");
    const auto entries = project->Manifests()->Item(1)->Entries();
    EXPECT_EQ(entries->Item(1)->Topic(), intro);
    EXPECT_EQ(entries->Item(1)->ChildEntries->Item(1)->Topic(), usage);
    EXPECT_EQ(entries->Item(2)->TopicID(), "");
    EXPECT_EQ(entries->Item(3)->TopicID(), "T7");
    EXPECT_EQ(project->Manifests()->Item(2)->ManifestType(), mtBrowseSequence);
}

TEST_F(OlderForms, FiveVariablesAreSettingsAndDoNotStay) {
    project->Load(kOld);
    EXPECT_EQ(project->TemplateName(), "Classic");
    EXPECT_EQ(project->CompileType(), CompileHelp2);
    EXPECT_EQ(project->OutputFileName(), "/out/old.chm");
    EXPECT_EQ(project->Help2Namespace(), "Old.1");
    EXPECT_EQ(project->Help2FileID(), "old");
    EXPECT_EQ(project->VariableValues->Count(), 1);
    EXPECT_EQ(project->VariableValues->Item(1)->Name, "Company");
}

TEST_F(OlderForms, AVariableTemplateWinsOverTheAttributeAndItsNameIsExact) {
    project->Load("<QbProject TemplateName='A'><VariableValue Name='Template'>B</VariableValue></QbProject>");
    EXPECT_EQ(project->TemplateName(), "B");
    project->Load("<QbProject TemplateName='A'><VariableValue Name='template'>C</VariableValue></QbProject>");
    EXPECT_EQ(project->TemplateName(), "A");
    EXPECT_EQ(project->VariableValues->Count(), 1);
    project->Load("<QbProject TemplateName=''><VariableValue Name='TEMPLATE'>D</VariableValue></QbProject>");
    EXPECT_EQ(project->TemplateName(), "D");
}

TEST_F(OlderForms, TheCompilerVersionIsReadByItsLeadingDigits) {
    const auto type = [&](const std::string& text) {
        project->Load("<QbProject><VariableValue Name='HelpCompilerVersion'>" + text +
                      "</VariableValue></QbProject>");
        return project->CompileType();
    };
    EXPECT_EQ(type("2"), CompileHelp2);
    EXPECT_EQ(type("1.4"), CompileHTMLHelp1);
    EXPECT_EQ(type("x"), CompileHTMLHelp1);
    EXPECT_EQ(type(""), CompileHTMLHelp1);
    EXPECT_NE(failureOf([&] { type("99999999999"); }), "no failure");
}

TEST_F(OlderForms, OlderItemsRaiseTheirCaptionOnceEach) {
    EventLog log(project);
    project->Load(
        "<QbProject><glossaryitem Key='1' Term='a'/><GlossaryItem Key='2' Term='b'/><m k='1' n='' t='0'/>"
        "<M k='2' n='' t='0'/><Manifest k='3' n='' t='0'/></QbProject>");
    EXPECT_THAT(log.Take(), ElementsAre("LoadProgress(Loading Glossary)", "GlossaryItemAdded(a)",
                                        "LoadProgress(Loading Glossary)", "GlossaryItemAdded(b)",
                                        "LoadProgress(Loading Booklets)", "LoadProgress(Loading Booklets)",
                                        "LoadProgress(Loading Booklets)"));
    EXPECT_EQ(project->GlossaryItems()->Count(), 2);
    EXPECT_EQ(project->Manifests()->Count(), 3);
    EXPECT_FALSE(project->Dirty());
}

TEST_F(OlderForms, ALowerCaseTMarksNoOldFile) {
    project->Load("<QbProject><Topic Key='t1'/></QbProject>");
    EXPECT_EQ(project->Topics->Item(1)->Key, "t1");
}

TEST_F(OlderForms, OldKeysOfOtherThingsAloneStay) {
    project->Load("<QbProject><cat Key='T1' Name='c'/><Topic Key='{K}'/></QbProject>");
    EXPECT_EQ(project->TopicCategories->Item(1)->Key, "T1");
}

TEST_F(OlderForms, AMigratedProjectIsSavedWithoutOldFormsAndLoadsTheSame) {
    project->Load(kOld);
    const auto text = project->Save();
    EXPECT_THAT(text, Not(HasSubstr("TopicSet")));
    EXPECT_THAT(text, Not(HasSubstr("\"T1\" Name=")));
    EXPECT_THAT(text, Not(HasSubstr("Name=\"Template\"")));
    const auto again = newProject();
    again->Load(text);
    EXPECT_EQ(again->Save(), text);
}

TEST_F(OlderForms, AnOldProjectOfSeparateFilesGetsFilesUnderItsNewKeys) {
    outside.files->Put("/work/manual/TopicData/T1.xml", "<Topic Name='Intro'/>");
    project->Load("<QbProject ProjectType='1'><Topic Key='T1'/></QbProject>");
    const auto topic = project->Topics->Item(1);
    EXPECT_TRUE(isGuid(topic->Key));
    EXPECT_EQ(topic->Name(), "Intro");
    EXPECT_TRUE(has("/work/manual/TopicData/" + topic->Key + ".xml"));
    EXPECT_FALSE(project->Dirty());
}

TEST_F(OlderForms, TheProjectTellsOfItsTopicsTwiceAsItIsReadTwice) {
    EventLog log(project);
    project->Load("<QbProject><Topic Key='T1' Name='a'/></QbProject>");
    EXPECT_EQ(log.Count("TopicAdded"), 2);
    EXPECT_EQ(log.Count("DirtyStateChanged"), 0);
    EXPECT_EQ(log.Count("Changed"), 0);
    log.Take();
    project->SetTitle("x");
    EXPECT_THAT(log.Take(), ElementsAre("Changed", "DirtyStateChanged"));
}

}  // namespace
}  // namespace quillbox
