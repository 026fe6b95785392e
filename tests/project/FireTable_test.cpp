#include "support/ProjectTest.h"
#include "topics/RelatedTopics.h"
#include "topics/TopicSection.h"

namespace quillbox {
namespace {

using testing::ElementsAreArray;
using testing::IsEmpty;

// What a call of the hub raises and what it leaves marked.
struct Row {
    const char* member;
    Arguments arguments;
    std::string event;     // empty for none
    const char* silencer;  // the collection whose flag holds the event back; empty where nothing does
    bool marksTopics, marksProject;
    const char* marksList;  // the collection that is marked; empty for none
};

class FireTable : public ProjectTest {
  protected:
    FireTable() {
        topic->SetQbProject(project);
        topic->SetName("Intro");
        section->SetData("<p/>");
        related->SetTitle("See");
        node->SetCaptionText("Node");
        category->SetQbProject(project);
        category->SetName("Class");
        item->SetTerm("Term");
        task->SetTitle("Work");
        manifest->SetName("Book");
        settle();
    }

    // A related topic and a section are of the topic, which may be paused too.
    std::vector<Row> rows() const {
        const Arguments t{topic}, n{node}, c{category}, f{file}, g{item}, k{task}, m{manifest};
        return {
            {"FireTopicAdded", t, "TopicAdded(Intro)", "Topics", true, true, ""},
            {"FireTopicRemoved", t, "TopicRemoved(Intro)", "Topics", true, true, ""},
            {"FireTopicChanged", t, "TopicChanged(Intro)", "Topics", true, false, ""},
            {"FireTopicRelatedTopicsChanged", t, "TopicRelatedTopicsChanged(Intro)", "Topics", true, false,
             ""},
            {"FireTopicRelatedTopicChanged",
             {topic, related},
             "TopicRelatedTopicChanged(Intro, See)",
             "Topics",
             false,
             true,
             ""},
            {"FireTopicSectionChanged",
             {topic, section},
             "TopicSectionChanged(Intro, <p/>)",
             "Topics",
             false,
             true,
             ""},
            {"FireQbNodeChanged", n, "QbNodeChanged(Node)", "QbNodes", false, false, "QbNodes"},
            {"FireQbNodeRemoved", n, "QbNodeRemoved(Node)", "QbNodes", false, false, "QbNodes"},
            {"FireTopicCategoryAdded", c, "TopicCategoryAdded(Class)", "TopicCategories", false, true, ""},
            {"FireTopicCategoryChanged", c, "TopicCategoryChanged(Class)", "TopicCategories", false, true,
             ""},
            {"FireTopicCategoryRemoved", c, "TopicCategoryRemoved(Class)", "TopicCategories", false, true,
             ""},
            {"FireOtherFileAdded", f, "OtherFileAdded(/work/manual/a.css)", "OtherFiles", false, true, ""},
            {"FireOtherFileRemoved", f, "OtherFileRemoved(/work/manual/a.css)", "OtherFiles", false, true,
             ""},
            {"FireGlossaryItemAdded", g, "GlossaryItemAdded(Term)", "GlossaryItems", false, false,
             "GlossaryItems"},
            {"FireGlossaryItemChanged", g, "GlossaryItemChanged(Term)", "GlossaryItems", false, false,
             "GlossaryItems"},
            {"FireGlossaryItemRemoved", g, "GlossaryItemRemoved(Term)", "GlossaryItems", false, false,
             "GlossaryItems"},
            {"FireTaskAdded", k, "TaskAdded(Work)", "Tasks", false, false, ""},
            {"FireTaskChanged", k, "TaskChanged(Work)", "Tasks", false, false, ""},
            {"FireTaskRemoved", k, "TaskRemoved(Work)", "Tasks", false, false, ""},
            {"FireManifestChanged", m, "ManifestChanged(Book)", "", false, false, "Manifests"},
            {"FireManifestEntryChanged",
             {manifest, entry},
             "ManifestEntryChanged(Book, Entry)",
             "",
             false,
             false,
             "Manifests"},
            {"FireTopicCheckoutStatusChanged", t, "TopicCheckoutStatusChanged(Intro)", "", false, false, ""},
            {"FireOtherFileCheckoutStatusChanged", f, "OtherFileCheckoutStatusChanged(/work/manual/a.css)",
             "", false, false, ""},
            {"FireProjectElementCheckOutStatusChanged",
             {3},
             "ProjectElementCheckOutStatusChanged(3)",
             "",
             false,
             false,
             ""},
            {"FireDirtyStateChanged", {}, "DirtyStateChanged", "", false, false, ""},
        };
    }

    void call(const Row& row) {
        settle();
        log.Take();
        auto arguments = row.arguments;
        callMember(*project, row.member, arguments);
    }
    // The event, if it is not held back, then a change of the dirty state for each mark.
    std::vector<std::string> expected(const Row& row, bool silenced) const {
        std::vector<std::string> lines;
        if (!silenced) lines.push_back(row.event);
        const int marks = row.marksTopics + row.marksProject + (*row.marksList != '\0');
        lines.insert(lines.end(), static_cast<std::size_t>(marks), "DirtyStateChanged");
        return lines;
    }
    void expectMarks(const Row& row) const {
        EXPECT_EQ(project->TopicsDirty(), row.marksTopics);
        EXPECT_EQ(project->ProjectDirty(), row.marksProject);
        for (const std::string list : {"QbNodes", "GlossaryItems", "Manifests", "Tasks"}) {
            const auto object = toObject(getMember(*project, list));
            EXPECT_EQ(toBoolean(getMember(*object, "Dirty")), list == row.marksList) << list;
        }
    }

    Ref<Topic> topic = make<Topic>();
    Ref<TopicSection> section = make<TopicSection>();
    Ref<RelatedTopic> related = make<RelatedTopic>();
    Ref<QbNode> node = make<QbNode>();
    Ref<TopicCategory> category = make<TopicCategory>();
    Ref<OtherFile> file = project->NewOtherFile("/work/manual/a.css");
    Ref<GlossaryItem> item = make<GlossaryItem>();
    Ref<Task> task = make<Task>();
    Ref<Manifest> manifest = make<Manifest>();
    Ref<ManifestEntry> entry = manifest->NewManifestEntry(nullptr, "Entry");
    EventLog log{project};
};

TEST_F(FireTable, EachRowRaisesItsEventThenMarks) {
    for (const auto& row : rows()) {
        SCOPED_TRACE(row.member);
        call(row);
        EXPECT_THAT(log.Take(), ElementsAreArray(expected(row, false)));
        expectMarks(row);
    }
}

TEST_F(FireTable, APausedCollectionHoldsTheEventBackAndNotTheMarks) {
    for (const auto& row : rows()) {
        SCOPED_TRACE(row.member);
        for (const std::string list :
             {"Topics", "QbNodes", "TopicCategories", "OtherFiles", "GlossaryItems", "Tasks"}) {
            SCOPED_TRACE(list);
            const auto object = toObject(getMember(*project, list));
            putMember(*object, "PauseEvents", true);
            call(row);
            EXPECT_THAT(log.Take(), ElementsAreArray(expected(row, list == row.silencer)));
            expectMarks(row);
            putMember(*object, "PauseEvents", false);
        }
    }
}

TEST_F(FireTable, APausedTopicHoldsBackItsSectionsAndRelatedTopicsAlone) {
    topic->SetPauseEvents(true);
    for (const auto& row : rows()) {
        SCOPED_TRACE(row.member);
        const std::string member = row.member;
        const bool isOfTopic =
            member == "FireTopicRelatedTopicChanged" || member == "FireTopicSectionChanged";
        call(row);
        EXPECT_THAT(log.Take(), ElementsAreArray(expected(row, isOfTopic)));
        expectMarks(row);
    }
}

TEST_F(FireTable, ALoadHoldsBackTheChangeOfTheDirtyState) {
    const auto connection = project->LoadProgress.connect([&](const std::string&) {
        log.Take();
        project->FireDirtyStateChanged();
        EXPECT_THAT(log.Take(), IsEmpty());
    });
    project->Load("<QbProject><Tasks/></QbProject>");
}

TEST_F(FireTable, AChangeOfAnEntryGivesAnEmptyValue) {
    Arguments arguments{manifest, entry};
    EXPECT_EQ(callMember(*project, "FireManifestEntryChanged", arguments), Value::None());
}

TEST_F(FireTable, NoneInPlaceOfAnItemDoesNoHarm) {
    for (const auto& row : rows()) {
        auto arguments = row.arguments;
        for (auto& argument : arguments) {
            if (argument.If<Ref<Object>>()) argument = Value::None();
        }
        EXPECT_EQ(failureOf([&] { callMember(*project, row.member, arguments); }), "no failure")
            << row.member;
    }
}

TEST_F(FireTable, TheTableHasEveryFireMember) {
    std::set<std::string> members;
    for (const auto& row : rows()) members.insert(row.member);
    for (const auto& member : TypeLibrary::Get().ClassOf(*project).members) {
        if (member.name.starts_with("Fire")) {
            EXPECT_TRUE(members.contains(member.name)) << member.name;
        }
    }
}

}  // namespace
}  // namespace quillbox
