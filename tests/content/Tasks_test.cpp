#include "content/Tasks.h"

#include "support/ProjectTest.h"

namespace quillbox {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class TasksTest : public ProjectTest {
  protected:
    Ref<Task> load(const std::string& created, const std::string& modified) const {
        const auto document = platform().xml->NewDocument();
        document->Parse("<Task Key='k' Priority='' Title='' AssignedTo='' TopicID='' Status='' CreatedOn='" +
                        created + "' CreatedBy='' ModifiedOn='" + modified + "' ModifiedBy=''>notes</Task>");
        const auto task = make<Task>();
        task->Load(document->RootElement());
        return task;
    }

    EventLog log{project};
};

TEST_F(TasksTest, ANewTaskIsStampedAsMadeAndNotAsModified) {
    const auto task = make<Task>();
    EXPECT_EQ(task->Status(), "Not Started");
    EXPECT_EQ(task->Priority(), "Medium");
    EXPECT_EQ(task->CreatedOn(), outside.system->now);
    EXPECT_EQ(task->CreatedBy(), "Writer");
    EXPECT_TRUE(task->ModifiedOn().IsZero());
    EXPECT_EQ(task->ModifiedBy(), "");
    EXPECT_EQ(task->Key, "");
}

TEST_F(TasksTest, TheProjectsNewTaskHasAKeyAndNoStamps) {
    const auto task = project->NewTask();
    EXPECT_EQ(task->Key.size(), 38u);
    EXPECT_EQ(task->ModifiedBy(), "");
    EXPECT_TRUE(task->ModifiedOn().IsZero());
    EXPECT_FALSE(task->PauseEvents());
    EXPECT_EQ(project->Tasks->Count(), 0);
    EXPECT_THAT(log.Take(), IsEmpty());
}

TEST_F(TasksTest, ATaskWithoutAProjectIsStampedByAChange) {
    const auto task = make<Task>();
    task->SetTitle("x");
    EXPECT_EQ(task->ModifiedOn(), outside.system->now);
    EXPECT_EQ(task->ModifiedBy(), "Writer");
}

TEST_F(TasksTest, EachSetterTellsMarksAndStampsAndTheKeyDoesNot) {
    const auto task = addTask("Work");
    const auto day = *Date::From({2001, 2, 3, 4, 5, 6, 0});
    for (const auto& [property, value] : std::vector<std::pair<const char*, Value>>{{"CreatedBy", "x"},
                                                                                    {"CreatedOn", day},
                                                                                    {"Status", "x"},
                                                                                    {"TopicID", "x"},
                                                                                    {"AssignedTo", "x"},
                                                                                    {"Notes", "x"},
                                                                                    {"Title", "x"},
                                                                                    {"Priority", "x"}}) {
        settle();
        log.Take();
        putMember(*task, property, value);
        EXPECT_EQ(getMember(*task, property), value);
        EXPECT_THAT(log.Take(), ElementsAre(HasSubstr("TaskChanged("), "DirtyStateChanged")) << property;
        EXPECT_TRUE(project->Tasks->Dirty());
        EXPECT_FALSE(project->ProjectDirty());
    }
    settle();
    log.Take();
    putMember(*task, "Key", "k");
    EXPECT_THAT(log.Take(), IsEmpty());
    EXPECT_FALSE(project->Dirty());
}

TEST_F(TasksTest, AStampThatIsSetIsOverwrittenUnlessPaused) {
    const auto task = addTask("Work");
    const auto day = *Date::From({2001, 2, 3, 4, 5, 6, 0});
    task->SetModifiedOn(day);
    task->SetModifiedBy("Somebody");
    EXPECT_EQ(task->ModifiedOn(), outside.system->now);
    EXPECT_EQ(task->ModifiedBy(), "Writer");
    settle();
    log.Take();
    task->SetPauseEvents(true);
    task->SetModifiedOn(day);
    task->SetModifiedBy("Somebody");
    task->SetTitle("y");
    task->FireChanged();
    EXPECT_EQ(task->ModifiedOn(), day);
    EXPECT_EQ(task->ModifiedBy(), "Somebody");
    EXPECT_THAT(log.Take(), IsEmpty());
    EXPECT_FALSE(project->Dirty());
}

TEST_F(TasksTest, AListenerSeesTheOldStamps) {
    const auto task = addTask("Work");
    task->SetTitle("again");
    outside.system->now = *Date::From({2027, 1, 1, 0, 0, 0, 0});
    outside.system->user = "Other";
    std::string seen;
    project->TaskChanged.connect([&](const Ref<Task>& changed) { seen = changed->ModifiedBy(); });
    task->FireChanged();
    EXPECT_EQ(seen, "Writer");
    EXPECT_EQ(task->ModifiedBy(), "Other");
    EXPECT_EQ(task->ModifiedOn(), outside.system->now);
}

TEST_F(TasksTest, AdditionsAndRemovalsAreToldAndMarkTheTasksAlone) {
    const auto task = project->NewTask();
    task->SetTitle("Work");
    settle();
    log.Take();
    project->Tasks->Add(task, task->Key);
    EXPECT_THAT(log.Take(), ElementsAre("TaskAdded(Work)", "DirtyStateChanged"));
    EXPECT_TRUE(project->Tasks->Dirty());
    EXPECT_FALSE(project->ProjectDirty());
    project->Tasks->Remove(task->Key);
    EXPECT_THAT(log.Take(), ElementsAre("TaskRemoved(Work)", "DirtyStateChanged"));
}

TEST_F(TasksTest, APauseOfTheCollectionHoldsTheEventsBackAndNotTheMarks) {
    project->Tasks->PauseEvents = true;
    const auto task = addTask("Work");
    settle();
    log.Take();
    task->SetTitle("x");
    EXPECT_THAT(log.Take(), ElementsAre("DirtyStateChanged"));
    EXPECT_TRUE(project->Tasks->Dirty());
}

TEST_F(TasksTest, ACleanMarkIsToldTooUnlikeThatOfTheContents) {
    project->QbNodes()->SetDirty(false);
    EXPECT_THAT(log.Take(), IsEmpty());
    project->Tasks->SetDirty(false);
    EXPECT_THAT(log.Take(), ElementsAre("DirtyStateChanged"));
    project->Load("<QbProject/>");
    EXPECT_THAT(log.Take(), Not(testing::Contains("DirtyStateChanged")));
    EXPECT_EQ(failureOf([&] { make<Tasks>()->SetDirty(false); }), "This object has no project");
}

TEST_F(TasksTest, DatesAreReadByPositionOnEveryMachine) {
    const auto task = load("05-03-2004 17:09:02", "30-12-1899 00:00:00");
    EXPECT_EQ(task->CreatedOn(), *Date::From({2004, 3, 5, 17, 9, 2, 0}));
    EXPECT_TRUE(task->ModifiedOn().IsZero());
    EXPECT_EQ(load("05/03/2004T17.09.02Z", "30-12-1899 00:00:00")->CreatedOn(), task->CreatedOn());
    EXPECT_FALSE(task->PauseEvents());
    EXPECT_EQ(task->Notes(), "notes");
}

TEST_F(TasksTest, ADateThatCannotBeReadFailsTheLoadAndLeavesTheTaskPaused) {
    for (const auto* bad :
         {"", "05-03-2004", "2004-03-05 17:09:02", "05-03-2004 17:09", "31-02-2004 00:00:00",
          "05-03-2004 24:00:00", "aa-bb-cccc dd:ee:ff", "00-00-0000 00:00:00"}) {
        EXPECT_NE(failureOf([&] { load(bad, "30-12-1899 00:00:00"); }), "no failure") << bad;
        EXPECT_NE(failureOf([&] { load("30-12-1899 00:00:00", bad); }), "no failure") << bad;
    }
    const auto document = platform().xml->NewDocument();
    document->Parse("<Task Key='k'/>");
    const auto task = make<Task>();
    EXPECT_THAT(failureOf([&] { task->Load(document->RootElement()); }), HasSubstr("'Priority'"));
    EXPECT_TRUE(task->PauseEvents());
}

TEST_F(TasksTest, ALoadEndsAPauseOfTheCaller) {
    const auto document = platform().xml->NewDocument();
    document->RootElement()->SetName("Task");
    make<Task>()->Save(document->RootElement());
    const auto task = make<Task>();
    task->SetPauseEvents(true);
    task->Load(document->RootElement());
    EXPECT_FALSE(task->PauseEvents());
    EXPECT_EQ(task->Status(), "Not Started");
}

TEST_F(TasksTest, SavedTasksHaveThisText) {
    const auto task = addTask("Check <it>");
    task->SetNotes("line 1\r\nline 2");
    task->SetAssignedTo("Ann");
    task->SetTopicID("{T}");
    addTask("");
    project->SetProjectType(ProjectTypeSeparateFiles);
    project->Tasks->Save(nullptr);
    EXPECT_EQ(bytes("/work/manual/ProjectData/Tasks.xml"),
              R"(<?xml version="1.0" encoding="UTF-8"?>
<Tasks>
  <Task Key="{00000000-0000-0000-0000-000000000001}" Priority="Medium" Title="Check &lt;it&gt;" AssignedTo="Ann" )"
              R"(TopicID="{T}" Status="Not Started" CreatedOn="14-03-2026 15:09:26" CreatedBy="Writer" )"
              R"(ModifiedOn="14-03-2026 15:09:26" ModifiedBy="Writer">line 1&#13;
line 2</Task>
  <Task Key="{00000000-0000-0000-0000-000000000002}" Priority="Medium" Title="" AssignedTo="" TopicID="" )"
              R"(Status="Not Started" CreatedOn="14-03-2026 15:09:26" CreatedBy="Writer" )"
              R"(ModifiedOn="14-03-2026 15:09:26" ModifiedBy="Writer"/>
</Tasks>
)");
}

}  // namespace
}  // namespace quillbox
