#include "platform/engine/Contents.h"
#include "support/ProjectTest.h"

namespace quillbox {
namespace {

using testing::HasSubstr;

constexpr int kDeepest = 900;
constexpr int kMadeByAScript = 100'000;

class DeepTree : public ProjectTest {
  protected:
    // A chain of nodes; gives the last.
    Ref<QbNode> grow(int levels) const {
        Ref<QbNode> last;
        for (int level = 0; level < levels; ++level) {
            last = (last ? last->ChildNodes : project->QbNodes())->NewNode(last);
        }
        return last;
    }
    Ref<ManifestEntry> growEntries(const Ref<Manifest>& manifest, int levels) const {
        Ref<ManifestEntry> last;
        for (int level = 0; level < levels; ++level) {
            const auto entry = manifest->NewManifestEntry(nullptr, "");
            (last ? last->ChildEntries : manifest->Entries())->Add(entry, entry->Key);
            last = entry;
        }
        return last;
    }
    static void expectTooDeep(const std::function<void()>& step) {
        EXPECT_THAT(failureOf(step), HasSubstr("nested too deep"));
    }
};

TEST_F(DeepTree, ATreeOfManyLevelsIsWalkedSavedAndLoaded) {
    const auto last = grow(kDeepest);
    const auto lastEntry = growEntries(addManifest("m"), kDeepest);
    EXPECT_EQ(project->QbNodes()->AllNodes()->Count(), kDeepest);
    EXPECT_EQ(project->QbNodes()->Item(last->Key), last);
    const auto text = project->Save();
    const auto other = newProject();
    other->Load(text);
    EXPECT_EQ(other->QbNodes()->AllNodes()->Count(), kDeepest);
    EXPECT_EQ(other->Manifests()->Item(1)->Entries()->AllEntries()->Count(), kDeepest);
    EXPECT_NE(other->QbNodes()->Item(last->Key), nullptr);
    EXPECT_NE(other->Manifests()->Item(1)->Entries()->Item(lastEntry->Key), nullptr);
    const auto definition = make<TOCDefinition>();
    project->QbNodes()->Item(1)->CreateNodeDef(nullptr, definition);
    EXPECT_EQ(definition->Nodes->Count(), kDeepest);
}

TEST_F(DeepTree, OneLevelMoreFailsToBeSavedAndNoFileIsTouched) {
    grow(kDeepest + 1);
    outside.files->ForgetCalls();
    expectTooDeep([&] { project->SaveToDisk(); });
    EXPECT_TRUE(outside.files->Calls().empty());
}

TEST_F(DeepTree, ATreeThatAScriptMadeTooDeepFailsAndDoesNotCrash) {
    const auto last = grow(kMadeByAScript);
    const auto topic = addTopic("One");
    auto nodes = project->QbNodes();
    Ref<QbNodes> col;
    expectTooDeep([&] { nodes->AllNodes(); });
    expectTooDeep([&] { nodes->NodesForTopic(topic, col); });
    expectTooDeep([&] { project->Save(); });
    expectTooDeep([&] { project->Topics->Remove(1); });
    expectTooDeep([&] { nodes->Item(1)->CreateNodeDef(nullptr, make<TOCDefinition>()); });
    EXPECT_EQ(nodes->Item(last->Key), nullptr);
    EXPECT_EQ(nodes->Item("unknown"), nullptr);
    last->SetCaptionText("still told");
    EXPECT_TRUE(nodes->Dirty());
    nodes->Remove(1);
    EXPECT_EQ(nodes->Count(), 0);
}

TEST_F(DeepTree, AnOutlineThatAScriptMadeTooDeepFailsAndDoesNotCrash) {
    const auto manifest = addManifest("m");
    growEntries(manifest, kMadeByAScript);
    expectTooDeep([&] { manifest->Entries()->AllEntries(); });
    expectTooDeep([&] { manifest->AssignEntryNumbers(); });
    expectTooDeep([&] { manifest->EntryByTopic(nullptr); });
    expectTooDeep([&] { project->SaveToDisk(); });
    EXPECT_EQ(manifest->Entries()->Item("unknown"), nullptr);
}

TEST_F(DeepTree, ADeepTreeMayOutliveItsProject) {
    auto last = grow(kMadeByAScript);
    std::weak_ptr<QbNode> first = project->QbNodes()->Item(1);
    project.reset();
    EXPECT_TRUE(first.expired());
    EXPECT_EQ(last->ParentNode(), nullptr);
    EXPECT_EQ(last.use_count(), 1);
}

TEST_F(DeepTree, AHeldPartOfATreeStaysWhole) {
    grow(3);
    const auto second = project->QbNodes()->Item(1)->ChildNodes->Item(1);
    project.reset();
    EXPECT_EQ(second->ChildNodes->Count(), 1);
    EXPECT_EQ(second->ParentNode(), nullptr);
}

TEST_F(DeepTree, ANodeInsideItselfFailsAndDoesNotHang) {
    const auto node = addNode("loop");
    node->ChildNodes->Add(node, "inside");
    EXPECT_THAT(failureOf([&] { project->QbNodes()->AllNodes(); }), HasSubstr("already"));
    expectTooDeep([&] { project->Save(); });
    expectTooDeep([&] { node->CreateNodeDef(nullptr, make<TOCDefinition>()); });
    EXPECT_EQ(project->QbNodes()->Item("unknown"), nullptr);
    EXPECT_EQ(project->QbNodes()->Item("inside"), node);
    node->ChildNodes->Remove(1);
}

TEST_F(DeepTree, AnEntryInsideItselfFailsAndDoesNotHang) {
    const auto manifest = addManifest("m");
    const auto entry = addEntry(manifest, nullptr, "loop");
    entry->ChildEntries->Add(entry);
    expectTooDeep([&] { manifest->AssignEntryNumbers(); });
    expectTooDeep([&] { project->Save(); });
    EXPECT_NE(failureOf([&] { manifest->Entries()->AllEntries(); }), "no failure");
    entry->ChildEntries->Remove(1);
}

std::string nested(const std::string& open, const std::string& close, int levels) {
    std::string text;
    for (int level = 0; level < levels; ++level) text += open;
    for (int level = 0; level < levels; ++level) text += close;
    return text;
}

TEST_F(DeepTree, AFileWithATreeThatIsTooDeepFailsToLoad) {
    const auto node = "<n key='k' nt='0' ct='2' c='' i='0' cfn='' tid='' url=''>";
    const auto load = [&](int levels) {
        return failureOf([&] {
            newProject()->Load("<QbProject><Nodes>" + nested(node, "</n>", levels) + "</Nodes></QbProject>");
        });
    };
    EXPECT_EQ(load(kDeepest), "no failure");
    EXPECT_THAT(load(kDeepest + 1), HasSubstr("nested too deep"));
    EXPECT_THAT(load(50'000), HasSubstr("deeper than 1000"));
    const auto entries = [&](int levels) {
        return failureOf([&] {
            newProject()->Load("<QbProject><Manifests><manifest k='k' n='' t='0'>" +
                               nested("<me k='' t='' tid=''>", "</me>", levels) +
                               "</manifest></Manifests></QbProject>");
        });
    };
    EXPECT_EQ(entries(kDeepest), "no failure");
    EXPECT_THAT(entries(kDeepest + 1), HasSubstr("nested too deep"));
}

}  // namespace
}  // namespace quillbox
