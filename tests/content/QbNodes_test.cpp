#include "content/QbNodes.h"

#include "support/ProjectTest.h"

namespace quillbox {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr const char* kContents = "/work/manual/ProjectData/TableOfContents.xml";

class QbNodesTest : public ProjectTest {
  protected:
    // A with children B and C, B with child D, followed by E.
    QbNodesTest() {
        a = addNode("A");
        b = addNode("B", a);
        d = addNode("D", b);
        c = addNode("C", a);
        e = addNode("E");
        settle();
        log.Take();
    }
    static std::vector<std::string> captions(const Ref<QbNodes>& nodes) {
        std::vector<std::string> texts;
        for (const auto& node : nodes->Items()) texts.push_back(node->CaptionText());
        return texts;
    }

    Ref<QbNode> a, b, c, d, e;
    Ref<QbNodes> nodes = project->QbNodes();
    EventLog log{project};
};

TEST_F(QbNodesTest, TheWalkGivesParentsBeforeChildren) {
    EXPECT_THAT(captions(nodes->AllNodes()), ElementsAre("A", "B", "D", "C", "E"));
    EXPECT_EQ(nodes->Count(), 2);
    EXPECT_EQ(nodes->AllNodes()->Count(), 5);
}

TEST_F(QbNodesTest, TheWalkGivesTheSameNodesAndNoProject) {
    const auto all = nodes->AllNodes();
    EXPECT_EQ(all->Item(3), d);
    EXPECT_EQ(all->QbProject(), nullptr);
    EXPECT_TRUE(all->Dirty());
    EXPECT_FALSE(project->Dirty());
    EXPECT_EQ(d->QbNodes(), b->ChildNodes);
    EXPECT_THAT(log.Take(), IsEmpty());
}

TEST_F(QbNodesTest, TheWalkAppendsToACollectionAndFailsOnANodeThatIsInItAlready) {
    const auto other = make<QbNode>();
    auto col = make<QbNodes>();
    col->Add(other);
    EXPECT_EQ(nodes->AllNodes(col), col);
    EXPECT_EQ(col->Count(), 6);
    EXPECT_EQ(col->Item(1), other);
    EXPECT_THAT(failureOf([&] { nodes->AllNodes(col); }), HasSubstr("already"));
}

TEST_F(QbNodesTest, TheWalkComesBackInItsArgumentAsAScriptPassesIt) {
    Arguments arguments{Value::None()};
    const auto result = callMember(*nodes, "AllNodes", arguments);
    EXPECT_EQ(arguments[0], result);
    EXPECT_EQ(getMember(*toObject(result), "Count"), Value(5));
    Arguments none;
    EXPECT_NE(toObject(callMember(*nodes, "AllNodes", none)), nullptr);
}

TEST_F(QbNodesTest, NodesForATopicMatchTheKeyWithCaseAtAllDepths) {
    const auto topic = addTopic("One");
    topic->Key = "Key";
    d->SetTopicID("Key");
    e->SetTopicID("Key");
    c->SetTopicID("key");
    Ref<QbNodes> col;
    EXPECT_THAT(captions(nodes->NodesForTopic(topic, col)), ElementsAre("D", "E"));
    EXPECT_NE(failureOf([&] { nodes->NodesForTopic(nullptr, col); }), "no failure");
}

TEST_F(QbNodesTest, ItemSearchesBelowAndRemoveDoesNot) {
    EXPECT_EQ(nodes->Item(d->Key), d);
    EXPECT_NE(failureOf([&] { nodes->Remove(d->Key); }), "no failure");
    EXPECT_THAT(log.Take(), IsEmpty());
    b->ChildNodes->Remove(d->Key);
    EXPECT_EQ(nodes->Item(d->Key), nullptr);
}

TEST_F(QbNodesTest, APositionOutOfRangeReachesIntoTheLevelsBelow) {
    const auto third = addNode("F", a);
    EXPECT_EQ(nodes->Item(2), e);
    EXPECT_EQ(nodes->Item(3), third);
    EXPECT_EQ(nodes->Item(4), nullptr);
}

TEST_F(QbNodesTest, ARemovalIsToldMarksAndTakesTheSubtree) {
    nodes->Remove(a->Key);
    EXPECT_THAT(log.Take(), ElementsAre("QbNodeRemoved(A)", "DirtyStateChanged", "DirtyStateChanged"));
    EXPECT_TRUE(nodes->Dirty());
    EXPECT_THAT(captions(nodes->AllNodes()), ElementsAre("E"));
    EXPECT_EQ(a->ChildNodes->Count(), 2);
    EXPECT_EQ(a->QbNodes(), nodes);
}

TEST_F(QbNodesTest, ARemovalBelowMarksBothLevels) {
    b->ChildNodes->Remove(1);
    EXPECT_THAT(log.Take(), ElementsAre("QbNodeRemoved(D)", "DirtyStateChanged", "DirtyStateChanged"));
    EXPECT_TRUE(nodes->Dirty());
    EXPECT_TRUE(b->ChildNodes->Dirty());
}

TEST_F(QbNodesTest, AnAdditionLinksNothingAndIsNoEvent) {
    const auto node = make<QbNode>();
    nodes->Add(node, "k");
    EXPECT_EQ(node->QbNodes(), nullptr);
    EXPECT_EQ(node->ParentNode(), nullptr);
    EXPECT_THAT(log.Take(), ElementsAre("DirtyStateChanged"));
    EXPECT_TRUE(nodes->Dirty());
}

TEST_F(QbNodesTest, ANewNodeIsLinkedKeyedAndMarksNothing) {
    const auto node = a->ChildNodes->NewNode(e);
    EXPECT_EQ(node->QbNodes(), a->ChildNodes);
    EXPECT_EQ(node->ParentNode(), e);
    EXPECT_EQ(node->ChildNodes->QbProject(), project);
    EXPECT_EQ(a->ChildNodes->Item(3), node);
    EXPECT_EQ(a->ChildNodes->Item(node->Key), node);
    EXPECT_THAT(log.Take(), IsEmpty());
    EXPECT_FALSE(project->Dirty());
}

TEST_F(QbNodesTest, OnlyThePauseOfTheTopLevelCounts) {
    a->ChildNodes->PauseEvents = true;
    b->SetCaptionText("x");
    EXPECT_EQ(log.Count("QbNodeChanged"), 1);
    nodes->PauseEvents = true;
    b->SetCaptionText("y");
    EXPECT_EQ(log.Count("QbNodeChanged"), 1);
    EXPECT_TRUE(nodes->Dirty());
}

TEST_F(QbNodesTest, ASecondLoadWithoutAClearedCollectionFailsOnTheFirstKey) {
    const auto document = platform().xml->NewDocument();
    document->RootElement()->SetName("Nodes");
    nodes->Save(document->RootElement());
    EXPECT_THAT(failureOf([&] { nodes->Load(document->RootElement()); }), HasSubstr(a->Key));
    const auto other = make<QbNodes>();
    other->SetQbProject(project);
    other->Load(document->RootElement());
    EXPECT_THAT(captions(other->AllNodes()), ElementsAre("A", "B", "D", "C", "E"));
    EXPECT_FALSE(other->Dirty());
    EXPECT_EQ(other->Item(1)->ParentNode(), nullptr);
    EXPECT_EQ(other->Item(1)->QbNodes(), other);
}

TEST_F(QbNodesTest, TheFileIsNamedAsTheGlossarysRootAndHoldsTheTree) {
    project->SetProjectType(ProjectTypeSeparateFiles);
    nodes->SetDirty(true);
    nodes->Save(nullptr);
    EXPECT_THAT(bytes(kContents), HasSubstr("?>\n<Glossary>\n  <n key=\"" + a->Key + "\""));
    EXPECT_THAT(bytes(kContents), HasSubstr("\n      <n key=\"" + d->Key + "\""));
    EXPECT_TRUE(nodes->Dirty());
}

TEST_F(QbNodesTest, AnUnchangedTreeLeavesItsFileAloneAndAMissingFileComesBack) {
    project->SetProjectType(ProjectTypeSeparateFiles);
    outside.files->Put(kContents, "mine");
    nodes->SetDirty(false);
    nodes->Save(nullptr);
    EXPECT_EQ(bytes(kContents), "mine");
    newFile(kContents)->Delete();
    nodes->Save(nullptr);
    EXPECT_THAT(bytes(kContents), HasSubstr("<Glossary>"));
}

TEST_F(QbNodesTest, AMissingFileLoadsAsAnEmptyTree) {
    project->SetProjectType(ProjectTypeSeparateFiles);
    const auto other = make<QbNodes>();
    other->SetQbProject(project);
    other->Load(nullptr);
    EXPECT_EQ(other->Count(), 0);
}

TEST_F(QbNodesTest, WithoutAFileAnElementIsNeeded) {
    EXPECT_NE(failureOf([&] { nodes->Load(nullptr); }), "no failure");
    EXPECT_NE(failureOf([&] { nodes->Save(nullptr); }), "no failure");
    EXPECT_EQ(failureOf([&] { make<QbNodes>()->Save(nullptr); }), "This object has no project");
}

}  // namespace
}  // namespace quillbox
