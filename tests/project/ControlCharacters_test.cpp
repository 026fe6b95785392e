#include "support/ProjectTest.h"
#include "support/SampleProject.h"

namespace quillbox {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;

// A text field that goes into a file, and what names its item in a failure.
struct Field {
    const char* name;
    const char* item;
    std::function<void(QbProject&, const std::string&)> set;
};

// Every text of a project that a caller can set.
std::vector<Field> fields() {
    std::vector<Field> all = {
        {"word", "Word list", [](auto& p, auto& v) { p.SpellIgnoreAllWordList->Add(v); }},
        {"variable name", "Variables", [](auto& p, auto& v) { p.VariableValues->Item(1)->Name = v; }},
        {"variable value", "Variables", [](auto& p, auto& v) { p.VariableValues->Item(1)->Value = v; }},
        {"category name", "Category", [](auto& p, auto& v) { p.TopicCategories->Item(1)->SetName(v); }},
        {"category key", "Category 'How to'", [](auto& p, auto& v) { p.TopicCategories->Item(1)->Key = v; }},
        {"topic key", "Topic 'Usage'", [](auto& p, auto& v) { p.Topics->Item(2)->Key = v; }},
        {"keyword", "Topic 'Usage'", [](auto& p, auto& v) { p.Topics->Item(2)->AddKeyword(v); }},
        {"stylesheet", "Topic 'Usage'", [](auto& p, auto& v) { p.Topics->Item(2)->AddStyleSheet(v); }},
        {"body", "Topic 'Intro'",
         [](auto& p, auto& v) { p.Topics->Item(1)->SetTopicSectionData("BodyText", v); }},
        {"related key", "Topic 'Usage'",
         [](auto& p, auto& v) {
             p.Topics->Item(2)->RelatedTopics()->Item(1)->ChildTopicKey = v;
             p.Topics->Item(2)->FireChanged();  // a key by itself marks nothing
         }},
    };
    const auto add = [&](const char* item, auto find, std::initializer_list<const char*> members) {
        for (const auto* member : members) {
            all.push_back({member, item, [find, member](QbProject& p, const std::string& v) {
                               putMember(*find(p), member, v);
                           }});
        }
    };
    add("Project settings", [](QbProject& p) { return self(&p); },
        {"Title", "CMPFileName", "TemplateName", "OutputFileName", "Help2Namespace", "Help2FileID",
         "SSProject", "HelpContextIDHeaderFile"});
    add("Topic '", [](QbProject& p) { return p.Topics->Item(2); },
        {"Name", "Title", "ContentsTitle", "Notes", "Status", "LayoutName", "HelpContextIDs"});
    add("Topic 'Usage'", [](QbProject& p) { return p.Topics->Item(2)->RelatedTopics()->Item(1); },
        {"Title", "Category", "URL"});
    add("Contents node '", [](QbProject& p) { return p.QbNodes()->Item(1)->ChildNodes->Item(1); },
        {"Key", "CaptionText", "SubContentsFileName", "TopicID", "StandardURL"});
    add("Glossary term '", [](QbProject& p) { return p.GlossaryItems()->Item(1); },
        {"Key", "Term", "Definition"});
    add("Task '", [](QbProject& p) { return p.Tasks->Item(1); },
        {"Key", "Priority", "Title", "Notes", "AssignedTo", "TopicID", "Status", "CreatedBy"});
    add("Booklet '", [](QbProject& p) { return p.Manifests()->Item(1); }, {"Key", "Name", "Notes"});
    add("Booklet 'Printed'",
        [](QbProject& p) { return p.Manifests()->Item(1)->Entries()->Item(1)->ChildEntries->Item(1); },
        {"Key", "Title"});
    add("Booklet 'Printed'", [](QbProject& p) { return p.Manifests()->Item(1)->BookletProperties; },
        {"TemplateName", "OutputFileName", "CoverpageTopicID", "Title", "HeaderHTML", "FooterHTML",
         "LinkPreProcessCodemark", "LinkPreProcessTopicInBooklet", "LinkPreProcessTopicNotInBooklet",
         "LinkPreProcessURLWithCaption", "LinkPreProcessURLNoCaption"});
    return all;
}

class ControlCharacters : public ProjectTest {
  protected:
    // A saved sample, so that there are files to be left alone.
    void start(ProjectTypeEnum type) {
        project = newProject();
        fillSample(*project);
        project->SetProjectType(type);
        project->SaveToDisk();
        outside.files->ForgetCalls();
    }
};

TEST_F(ControlCharacters, ATextThatAFileCannotHoldFailsTheSaveBeforeAnythingIsWritten) {
    for (const auto type : {ProjectTypeSingleFile, ProjectTypeSeparateFiles}) {
        for (const auto& field : fields()) {
            SCOPED_TRACE(std::string(field.item) + " " + field.name);
            start(type);
            field.set(*project, "bad\x01 text");
            EXPECT_THAT(failureOf([&] { project->SaveToDisk(); }),
                        AllOf(HasSubstr(field.item), HasSubstr("element '"), HasSubstr("cannot hold")));
            EXPECT_THAT(outside.files->Calls(), IsEmpty());
        }
    }
}

TEST_F(ControlCharacters, EveryKindOfBadCharacterFails) {
    for (const auto& bad : {std::string("\0", 1), std::string("\x08"), std::string("\x0B"),
                            std::string("\x1F"), std::string("\xFF"), std::string("\xED\xA0\x80"),
                            std::string("\xEF\xBF\xBE"), std::string("\xEF\xBF\xBF"), std::string("\xC3")}) {
        start(ProjectTypeSingleFile);
        project->Topics->Item(1)->SetTitle("a" + bad + "b");
        EXPECT_THAT(failureOf([&] { project->SaveToDisk(); }), HasSubstr("Topic 'Intro': element 'Topic'"));
        EXPECT_THAT(outside.files->Calls(), IsEmpty());
    }
}

TEST_F(ControlCharacters, CharactersThatAFileHoldsAreSaved) {
    start(ProjectTypeSingleFile);
    const std::string text = "\t\r\n \x7F\xC2\x80\u2028\uFDD0\U0010FFFF]]>";
    project->Topics->Item(1)->SetTitle(text);
    EXPECT_TRUE(project->SaveToDisk());
    const auto other = newProject();
    other->LoadFromFile(kFile);
    EXPECT_EQ(other->Topics->Item(1)->Title(), text);
}

TEST_F(ControlCharacters, TheElementIsNamedToo) {
    start(ProjectTypeSingleFile);
    project->Topics->Item(1)->AddKeyword("\x02");
    EXPECT_EQ(failureOf([&] { project->SaveToDisk(); }),
              "Topic 'Intro': element 'k': attribute 'Value' holds a character that a file cannot hold");
}

TEST_F(ControlCharacters, ACleanTopicWhoseFileStaysIsNotLookedAt) {
    start(ProjectTypeSeparateFiles);
    const auto topic = project->Topics->Item(1);
    topic->SetPauseEvents(true);
    topic->SetTitle("\x01");
    EXPECT_TRUE(project->SaveToDisk());
    newFile(topic->LocalSpec())->Delete();
    outside.files->ForgetCalls();
    EXPECT_NE(failureOf([&] { project->SaveToDisk(); }), "no failure");
    EXPECT_THAT(outside.files->Calls(), IsEmpty());
}

TEST_F(ControlCharacters, SavingAsTextFailsToo) {
    start(ProjectTypeSingleFile);
    project->SetTitle("\x01");
    EXPECT_NE(failureOf([&] { project->Save(); }), "no failure");
}

}  // namespace
}  // namespace quillbox
