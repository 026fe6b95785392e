#include "support/MadeUpProject.h"
#include "support/ProjectTest.h"

namespace quillbox {
namespace {

constexpr unsigned kProjects = 200;

// Properties that hold for projects of any content.
class RoundTrip : public ProjectTest {
  protected:
    Ref<QbProject> madeUp(unsigned seed) const {
        auto made = newProject();
        MadeUpProject(seed).Fill(*made);
        return made;
    }
    Ref<QbProject> loaded(const std::string& text) const {
        auto read = newProject();
        read->Load(text);
        return read;
    }
    Ref<QbProject> loadedFromDisk() const {
        auto read = newProject();
        read->LoadFromFile(kFile);
        return read;
    }
    // All files of a project, with their bytes.
    std::map<std::string, std::string> files(QbProject& of) const {
        std::map<std::string, std::string> all;
        const auto take = [&](const std::string& path) { all[path] = bytes(path); };
        take(kFile);
        for (const auto& topic : of.Topics->Items()) take(topic->LocalSpec());
        for (const auto* name : {"Glossary.xml", "Manifests.xml", "TableOfContents.xml", "Tasks.xml"}) {
            take(of.ProjectDataPath() + name);
        }
        return all;
    }
    static void touchAll(QbProject& of) {
        for (const auto& topic : of.Topics->Items()) topic->SetDirty(true);
        of.GlossaryItems()->SetDirty(true);
        of.Manifests()->SetDirty(true);
        of.QbNodes()->SetDirty(true);
        of.Tasks->SetDirty(true);
    }
};

TEST_F(RoundTrip, TheSecondSaveAndTheThirdAreTheSameBytes) {
    for (unsigned seed = 0; seed < kProjects; ++seed) {
        const auto second = loaded(madeUp(seed)->Save())->Save();
        ASSERT_EQ(loaded(second)->Save(), second) << seed;
    }
}

TEST_F(RoundTrip, SeparateFilesComeBackByteForByteToo) {
    for (unsigned seed = 0; seed < kProjects; ++seed) {
        const auto made = madeUp(seed);
        made->SetProjectType(ProjectTypeSeparateFiles);
        made->SaveToDisk();
        const auto second = loadedFromDisk();
        touchAll(*second);
        second->SaveToDisk();
        const auto before = files(*second);
        const auto third = loadedFromDisk();
        touchAll(*third);
        third->SaveToDisk();
        ASSERT_EQ(files(*third), before) << seed;
    }
}

TEST_F(RoundTrip, TextsComeBackToTheByte) {
    for (unsigned seed = 0; seed < kProjects; ++seed) {
        const auto made = madeUp(seed);
        const auto read = loaded(made->Save());
        ASSERT_EQ(read->Title(), made->Title());
        ASSERT_EQ(read->OutputFileName(), made->OutputFileName());
        ASSERT_EQ(read->SpellLastCheckDateTime(), made->SpellLastCheckDateTime());
        ASSERT_EQ(read->Topics->Count(), made->Topics->Count());
        for (int i = 1; i <= made->Topics->Count(); ++i) {
            const auto a = made->Topics->Item(i), b = read->Topics->Item(i);
            ASSERT_EQ(b->Key, a->Key);
            ASSERT_EQ(b->Name(), a->Name());
            ASSERT_EQ(b->ContentsTitle(), a->ContentsTitle());
            ASSERT_EQ(b->TopicSectionData("BodyText"), a->TopicSectionData("BodyText"));
            ASSERT_EQ(b->Keywords->Texts(), a->Keywords->Texts());
            ASSERT_EQ(b->StyleSheets()->Texts(), a->StyleSheets()->Texts());
            ASSERT_EQ(b->TopicCategory() != nullptr, a->TopicCategory() != nullptr);
            for (int r = 1; r <= a->RelatedTopics()->Count(); ++r) {
                ASSERT_EQ(b->RelatedTopics()->Item(r)->URL(), a->RelatedTopics()->Item(r)->URL());
                ASSERT_EQ(b->RelatedTopics()->Item(r)->ChildTopicKey,
                          a->RelatedTopics()->Item(r)->ChildTopicKey);
            }
        }
        for (int i = 1; i <= made->GlossaryItems()->Count(); ++i) {
            ASSERT_EQ(read->GlossaryItems()->Item(i)->Term(), made->GlossaryItems()->Item(i)->Term());
            ASSERT_EQ(read->GlossaryItems()->Item(i)->Definition(),
                      made->GlossaryItems()->Item(i)->Definition());
        }
        for (int i = 1; i <= made->Tasks->Count(); ++i) {
            ASSERT_EQ(read->Tasks->Item(i)->Notes(), made->Tasks->Item(i)->Notes());
            ASSERT_EQ(read->Tasks->Item(i)->CreatedOn(), made->Tasks->Item(i)->CreatedOn());
        }
        ASSERT_EQ(read->QbNodes()->AllNodes()->Count(), made->QbNodes()->AllNodes()->Count());
        for (const auto& node : made->QbNodes()->AllNodes()->Items()) {
            const auto same = read->QbNodes()->Item(node->Key);
            ASSERT_EQ(same->CaptionText(), node->CaptionText());
            ASSERT_EQ(same->StandardURL(), node->StandardURL());
        }
    }
}

TEST_F(RoundTrip, ConvertingThereAndBackLosesNothingAlsoWithEditsInBetween) {
    for (unsigned seed = 0; seed < kProjects; ++seed) {
        const auto text = loaded(madeUp(seed)->Save())->Save();
        const auto edit = [&](QbProject& p) {
            p.SetTitle("edited");
            if (const auto topic = p.Topics->Item(1)) topic->SetTitle("edited");
            if (const auto item = p.GlossaryItems()->Item(1)) item->SetDefinition("edited");
            if (const auto node = p.QbNodes()->Item(1)) node->SetIcon(77);
        };
        const auto expected = loaded(text);
        edit(*expected);

        const auto single = loaded(text);
        single->SetProjectType(ProjectTypeSeparateFiles);
        ASSERT_TRUE(single->SaveToDisk());
        const auto separate = loadedFromDisk();
        ASSERT_EQ(separate->ProjectType(), ProjectTypeSeparateFiles);
        edit(*separate);
        ASSERT_TRUE(separate->SaveToDisk());
        const auto back = loadedFromDisk();
        back->SetProjectType(ProjectTypeSingleFile);
        ASSERT_TRUE(back->SaveToDisk());
        ASSERT_EQ(bytes(kFile), loaded(expected->Save())->Save()) << seed;
    }
}

TEST_F(RoundTrip, ConvertingWritesOverFilesOfAnEarlierTime) {
    fillSample(*project);
    project->SetProjectType(ProjectTypeSeparateFiles);
    project->SaveToDisk();
    project->SetProjectType(ProjectTypeSingleFile);
    project->Topics->Item(1)->SetTitle("newer");
    project->GlossaryItems()->Item(1)->SetDefinition("newer");
    project->SaveToDisk();
    const auto text = bytes(kFile);
    const auto single = loadedFromDisk();
    EXPECT_FALSE(single->Dirty());
    single->SetProjectType(ProjectTypeSeparateFiles);
    single->SaveToDisk();
    const auto back = loadedFromDisk();
    EXPECT_EQ(back->Topics->Item(1)->Title(), "newer");
    EXPECT_EQ(back->GlossaryItems()->Item(1)->Definition(), "newer");
}

TEST_F(RoundTrip, NoObjectIsLeftBehind) {
    const auto before = Object::Alive();
    for (unsigned seed = 0; seed < 20; ++seed) {
        const auto made = madeUp(seed);
        const auto read = loaded(made->Save());
        if (const auto topic = read->Topics->Item(1)) read->Topics->Remove(topic->Key);
        read->TopicByName("x");
    }
    resetModule();
    EXPECT_EQ(Object::Alive(), before);
}

}  // namespace
}  // namespace quillbox
