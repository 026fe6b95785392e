#include "content/QbNode.h"

#include "platform/engine/Contents.h"
#include "support/ProjectTest.h"

namespace quillbox {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class QbNodeTest : public ProjectTest {
  protected:
    QbNodeTest() {
        settle();
        log.Take();
    }

    Ref<NodeDef> def(const Ref<QbNode>& node) const {
        const auto definition = make<TOCDefinition>();
        node->CreateNodeDef(nullptr, definition);
        return definition->Nodes->Item(1);
    }
    Ref<QbNode> load(const std::string& attributes) const {
        const auto document = platform().xml->NewDocument();
        document->Parse("<n " + attributes + "/>");
        const auto node = make<QbNode>();
        node->SetQbNodes(project->QbNodes());
        node->Load(document->RootElement());
        return node;
    }

    Ref<Topic> topic = addTopic("Intro");
    EventLog log{project};
};

TEST_F(QbNodeTest, ANewNodeHasItsDefaults) {
    const auto node = make<QbNode>();
    EXPECT_EQ(node->QbNodeType(), ntStandard);
    EXPECT_EQ(node->CaptionType(), ctSpecific);
    EXPECT_EQ(node->Icon(), -1);
    EXPECT_EQ(node->CaptionText(), "");
    EXPECT_EQ(node->Key, "");
    EXPECT_EQ(node->ChildNodes->Count(), 0);
    EXPECT_NE(node->ChildNodes, make<QbNode>()->ChildNodes);
    EXPECT_EQ(node->ParentNode(), nullptr);
    EXPECT_EQ(node->QbNodes(), nullptr);
    EXPECT_EQ(node->Topic(), nullptr);
}

TEST_F(QbNodeTest, EachSetterTellsAndMarksTheTree) {
    const auto node = project->QbNodes()->NewNode(nullptr);
    for (const auto& [property, value] :
         std::vector<std::pair<const char*, Value>>{{"CMPFileName", "x"},
                                                    {"StandardURL", "x"},
                                                    {"TopicID", "x"},
                                                    {"SubContentsFileName", "x"},
                                                    {"Icon", 4},
                                                    {"CaptionType", 1},
                                                    {"QbNodeType", 2},
                                                    {"CaptionText", "x"}}) {
        settle();
        log.Take();
        putMember(*node, property, value);
        EXPECT_EQ(getMember(*node, property), value);
        EXPECT_THAT(log.Take(),
                    ElementsAre(HasSubstr("QbNodeChanged"), "DirtyStateChanged", "DirtyStateChanged"))
            << property;
        EXPECT_TRUE(project->QbNodes()->Dirty());
        EXPECT_FALSE(project->ProjectDirty());
    }
}

TEST_F(QbNodeTest, KeyParentAndLevelTellNothing) {
    const auto node = addNode("a");
    settle();
    log.Take();
    node->Key = "k";
    node->SetParentNode(addNode("b"));
    node->SetQbNodes(project->QbNodes());
    EXPECT_EQ(log.Count("QbNodeChanged"), 1);  // the caption of b
}

TEST_F(QbNodeTest, AChangeAtAnyDepthReachesTheTopLevel) {
    const auto deep = addNode("c", addNode("b", addNode("a")));
    settle();
    log.Take();
    deep->SetIcon(1);
    EXPECT_THAT(log.Take(), ElementsAre("QbNodeChanged(c)", "DirtyStateChanged", "DirtyStateChanged"));
    EXPECT_TRUE(project->QbNodes()->Dirty());
    EXPECT_TRUE(deep->QbNodes()->Dirty());
}

TEST_F(QbNodeTest, ANodeOutsideAnyCollectionChangesAlone) {
    const auto node = make<QbNode>();
    node->SetCaptionText("x");
    node->SetQbNodeType(ntSingleTopic);
    EXPECT_EQ(node->CaptionText(), "x");
    EXPECT_THAT(log.Take(), IsEmpty());
    EXPECT_FALSE(project->Dirty());
}

TEST_F(QbNodeTest, ACollectionWithoutAProjectIsMarkedAllTheSame) {
    const auto nodes = make<QbNodes>();
    nodes->NewNode(nullptr)->SetCaptionText("x");
    EXPECT_TRUE(nodes->Dirty());
    EXPECT_EQ(failureOf([&] {
                  nodes->Item(1)->SetTopicID("k");
                  nodes->Item(1)->Topic();
              }),
              "This contents node has no project");
}

TEST_F(QbNodeTest, AFailureOfAHandlerIsPassedOverAndTheLevelIsMarked) {
    project->QbNodeChanged.connect([](const Ref<QbNode>&) { throw AutomationError("not now"); });
    const auto node = addNode("x");
    settle();
    node->SetCaptionText("y");
    EXPECT_TRUE(project->QbNodes()->Dirty());
}

TEST_F(QbNodeTest, TheDefaultCaptionEmptiesTheTextAndTheSpecificOneKeepsIt) {
    const auto node = addNode("text");
    node->SetCaptionType(ctSpecific);
    EXPECT_EQ(node->CaptionText(), "text");
    node->SetCaptionType(ctDefault);
    EXPECT_EQ(node->CaptionText(), "");
}

TEST_F(QbNodeTest, TheTypeForcesTargetAndCaption) {
    const auto node = addNode("text");
    const auto fill = [&] {
        node->SetStandardURL("a.html");
        node->SetTopicID("k");
        node->SetCaptionText("text");
    };
    fill();
    node->SetQbNodeType(ntCMContents);
    EXPECT_EQ(node->TopicID(), "");
    EXPECT_EQ(node->StandardURL(), "a.html");
    EXPECT_EQ(node->CaptionType(), ctDefault);
    EXPECT_EQ(node->CaptionText(), "text");
    fill();
    node->SetQbNodeType(ntSingleTopic);
    EXPECT_EQ(node->TopicID(), "k");
    EXPECT_EQ(node->StandardURL(), "");
    EXPECT_EQ(node->CaptionType(), ctDefault);
    fill();
    node->SetQbNodeType(ntStandard);
    EXPECT_EQ(node->TopicID(), "");
    EXPECT_EQ(node->StandardURL(), "a.html");
    EXPECT_EQ(node->CaptionType(), ctSpecific);
    fill();
    node->SetCaptionType(ctDefault);
    node->SetQbNodeType(ntSubContents);
    EXPECT_EQ(node->TopicID(), "k");
    EXPECT_EQ(node->StandardURL(), "a.html");
    EXPECT_EQ(node->CaptionType(), ctDefault);
}

TEST_F(QbNodeTest, WritingATypeOverAStandardNodeEmptiesTheGlossaryUrl) {
    const auto node = addNode("x");
    for (const auto type : {ntStandard, ntSubContents, ntCMContents}) {
        node->SetQbNodeType(ntStandard);
        node->SetStandardURL("GLOSSARY.html");
        node->SetQbNodeType(type);
        EXPECT_EQ(node->StandardURL(), "") << type;
    }
    node->SetQbNodeType(ntSingleTopic);
    node->SetStandardURL("GLOSSARY.HTML");
    node->SetQbNodeType(ntStandard);
    EXPECT_EQ(node->StandardURL(), "GLOSSARY.HTML");
}

TEST_F(QbNodeTest, TheTopicIsLookedUpWhateverTheType) {
    const auto node = addNode("x");
    node->SetTopicID(topic->Key);
    EXPECT_EQ(node->Topic(), topic);
    node->SetTopicID("unknown");
    EXPECT_EQ(node->Topic(), nullptr);
}

TEST_F(QbNodeTest, ASavedNodeHasAllItsAttributesInOrder) {
    const auto book = addNode("A & B");
    addTopicNode(topic, book)->SetIcon(3);
    book->SetStandardURL("u");
    book->SetSubContentsFileName("sub");
    book->SetCMPFileName("not saved");
    const auto document = platform().xml->NewDocument();
    document->RootElement()->SetName("n");
    book->Save(document->RootElement());
    EXPECT_EQ(document->ToXml(),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<n key=\"" + book->Key +
                  "\" nt=\"0\" ct=\"2\" c=\"A &amp; B\" i=\"-1\" cfn=\"sub\" tid=\"\" url=\"u\">\n"
                  "  <n key=\"" +
                  book->ChildNodes->Item(1)->Key + "\" nt=\"1\" ct=\"1\" c=\"\" i=\"3\" cfn=\"\" tid=\"" +
                  topic->Key + "\" url=\"\"/>\n</n>\n");
    const auto read = make<QbNode>();
    read->SetQbNodes(project->QbNodes());
    read->Load(document->RootElement());
    EXPECT_EQ(read->CMPFileName(), "");
    EXPECT_EQ(read->SubContentsFileName(), "sub");
    const auto child = read->ChildNodes->Item(1);
    EXPECT_EQ(child->Topic(), topic);
    EXPECT_EQ(child->Icon(), 3);
    EXPECT_EQ(child->ParentNode(), read);
    EXPECT_EQ(child->QbNodes(), read->ChildNodes);
    EXPECT_EQ(read->ChildNodes->QbProject(), project);
}

TEST_F(QbNodeTest, TheCaptionTypeOfTheFileWinsOverTheOneThatTheTypeForces) {
    const auto node = load("Key='k' nt='1' ct='2' c='own' i='-1' cfn='' tid='t' url=''");
    EXPECT_EQ(node->QbNodeType(), ntSingleTopic);
    EXPECT_EQ(node->CaptionType(), ctSpecific);
    EXPECT_EQ(node->CaptionText(), "own");
}

TEST_F(QbNodeTest, ATopicNodeWithoutATopicLoadsAsAStandardOne) {
    const auto node = load("key='k' nt='1' ct='1' c='' i='-1' cfn='' tid='' url=''");
    EXPECT_EQ(node->QbNodeType(), ntStandard);
    EXPECT_EQ(node->CaptionType(), ctSpecific);
}

TEST_F(QbNodeTest, ANodeNeedsItsLevelAllAttributesAndNumbers) {
    const std::vector<std::pair<const char*, const char*>> attributes = {
        {"key", "k"}, {"nt", "0"}, {"ct", "2"}, {"c", ""},
        {"i", "-1"},  {"cfn", ""}, {"tid", ""}, {"url", ""}};
    const auto without = [&](const std::string& left, const std::string& value) {
        std::string text;
        for (const auto& [name, usual] : attributes) {
            if (name != left) text += std::string(name) + "='" + usual + "' ";
            if (name == left && !value.empty()) text += left + "='" + value + "' ";
        }
        return failureOf([&] { load(text); });
    };
    EXPECT_EQ(without("none", ""), "no failure");
    for (const auto& [name, usual] : attributes) {
        EXPECT_THAT(without(name, ""), HasSubstr("'n'")) << name;
    }
    for (const auto* number : {"nt", "ct", "i"}) {
        for (const auto* bad : {"x", "1x", "1.5", "99999999999", " ", "0x1"}) {
            EXPECT_EQ(without(number, bad), std::string("line 1, element 'n', attribute '") + number +
                                                "': '" + bad + "' is not a number");
        }
    }
    const auto document = platform().xml->NewDocument();
    document->Parse("<n key='k' nt='0' ct='2' c='' i='-1' cfn='' tid='' url=''/>");
    EXPECT_NE(failureOf([&] { make<QbNode>()->Load(document->RootElement()); }), "no failure");
}

TEST_F(QbNodeTest, ANodeOfATopicLinksToItsPageUnderItsTitle) {
    topic->SetContentsTitle("In the contents");
    const auto node = addTopicNode(topic);
    EXPECT_EQ(def(node)->Caption, "In the contents");
    EXPECT_EQ(def(node)->LinkTarget, "Intro.html");
    EXPECT_EQ(def(node)->Kind, 0);
    EXPECT_FALSE(def(node)->HasCustomIcon);
    EXPECT_TRUE(def(node)->Included);
    node->SetIcon(7);
    EXPECT_TRUE(def(node)->HasCustomIcon);
    EXPECT_EQ(def(node)->IconNumber, 7);
}

TEST_F(QbNodeTest, ATopicThatIsGoneGivesTheTextAndNoLink) {
    const auto node = addTopicNode(topic);
    node->SetTopicID("gone");
    EXPECT_EQ(def(node)->Caption, "");
    EXPECT_EQ(def(node)->LinkTarget, "");
    node->SetCaptionText("kept");
    EXPECT_EQ(def(node)->Caption, "kept");
}

TEST_F(QbNodeTest, TheGlossaryCaptionNeedsTheExactUrl) {
    const auto node = addNode("");
    const auto caption = [&](const char* url, QbProjectCaptionTypeEnum type) {
        node->SetStandardURL(url);
        node->SetCaptionType(type);
        node->SetCaptionText("own");
        return def(node)->Caption;
    };
    EXPECT_EQ(caption("Glossary.html", ctDefault), "Glossary");
    EXPECT_EQ(caption("Glossary.html", ctSpecific), "own");
    EXPECT_EQ(caption("glossary.html", ctDefault), "own");
    EXPECT_EQ(caption("other.html", ctDefault), "own");
}

TEST_F(QbNodeTest, OtherTypesHaveTheirTargets) {
    const auto node = addNode("x");
    node->SetStandardURL("u.html");
    EXPECT_EQ(def(node)->LinkTarget, "u.html");
    node->SetQbNodeType(ntSubContents);
    EXPECT_EQ(def(node)->LinkTarget, "");
    EXPECT_EQ(def(node)->Kind, 0);
    node->SetQbNodeType(ntCMContents);
    EXPECT_EQ(def(node)->LinkTarget, "");
    EXPECT_EQ(def(node)->Kind, 3);
}

TEST_F(QbNodeTest, DefinitionsStandParentsFirstAndKnowTheirParents) {
    const auto a = addNode("A");
    const auto b = addNode("B", a);
    addNode("D", b);
    addNode("C", a);
    addNode("E");
    const auto definition = make<TOCDefinition>();
    for (const auto& node : project->QbNodes()->Items()) {
        EXPECT_EQ(node->CreateNodeDef(nullptr, definition), Value(Ref<Object>()));
    }
    std::vector<std::string> captions;
    for (const auto& one : definition->Nodes->Items()) {
        const auto parent = one->Parent.Get();
        captions.push_back((parent ? parent->Caption : "") + ">" + one->Caption);
        EXPECT_EQ(one->TOCDefinition.Get(), definition);
        EXPECT_EQ(definition->Nodes->Item(one->Key), one);
    }
    EXPECT_THAT(captions, ElementsAre(">A", "A>B", "B>D", "A>C", ">E"));
}

}  // namespace
}  // namespace quillbox
