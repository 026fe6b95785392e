#include <gmock/gmock.h>

#include "build/BuildResult.h"
#include "build/BuildTest.h"
#include "build/DummyWizardHost.h"
#include "build/LateBoundDouble.h"

namespace quillbox {
namespace {

using testing::ElementsAre;

// A loader of the sibling product and a plug-in, as another library would bring them.
class RelatedProjectTest : public BuildTest {
  protected:
    RelatedProjectTest() {
        outside.classes->classes["Codemark.Root"] = [] { return make<LateBoundDouble>("Root"); };
        outside.classes->classes["Codemark.Loader"] = [this] { return loader; };
        outside.files->Put("/work/manual/Code.cmp", "a project");
        project->SetCMPFileName("/work/manual/Code.cmp");
        loader->methods["Load"] = [this](Arguments& arguments) {
            auto& document = dynamic_cast<Document&>(*toObject(arguments.at(0)));
            loaded = toText(arguments.at(1));
            if (!pageTemplates.empty()) document.PageTemplates = make<PageTemplates>();
            for (const auto& name : pageTemplates) {
                document.PageTemplates->Add(make<FakeTemplate>(name, "", make<NamespaceDefs>()), name);
            }
            document.Objects->Add(plugIns, "PlugIns");
            document.Objects->Add(exclusions, "NamespaceExclusions");
            return Value::None();
        };
        loader->methods["Unload"] = [](Arguments&) { return Value::None(); };
        plugIn->methods["AttachHost"] = [this](Arguments& arguments) {
            host = std::dynamic_pointer_cast<DummyWizardHost>(toObject(arguments.at(0)));
            EXPECT_EQ(host->HostedDocument, document);
            return Value::None();
        };
        plugIn->methods["Prepare"] = [](Arguments&) { return Value::None(); };
        plugIn->methods["FindExcluded"] = [this](Arguments& arguments) {
            const auto found = excluded.find(toText(arguments.at(0)));
            return found == excluded.end() ? Value::None() : Value(Ref<Object>(found->second));
        };
        plugIns->Add(plugIn);
    }

    Ref<BuildResult> build() {
        auto passed = std::static_pointer_cast<Document>(document);
        return project->Build(passed, "", true, true, true);
    }
    // What the one box told.
    std::string box() const {
        if (outside.messages->shown.size() != 1) return "not one box";
        const auto& shown = outside.messages->shown.front();
        EXPECT_EQ(shown.buttons, MessageButtons::bsOK);
        EXPECT_EQ(shown.icon, MessageIcon::biExclamation);
        return shown.title + ": " + shown.text;
    }

    std::vector<std::string> pageTemplates = {"Code"};
    std::map<std::string, Ref<LateBoundDouble>> excluded;
    std::string loaded;
    Ref<LateBoundDouble> loader = make<LateBoundDouble>("Loader"), plugIn = make<LateBoundDouble>("PlugIn");
    Ref<Collection> plugIns = make<Collection>(), exclusions = make<Collection>();
    Ref<DummyWizardHost> host;
    Ref<FakeDocument> document = std::dynamic_pointer_cast<FakeDocument>(engine->NewDocument());
};

TEST_F(RelatedProjectTest, IsLoadedBuiltAndUnloaded) {
    document->onBuild = [&](FakeDocument& d) {
        EXPECT_EQ(d.PageTemplates->Count(), 2);
        EXPECT_EQ(d.PageTemplates->Item(2), helpTemplate);
    };
    EXPECT_FALSE(build()->Cancelled);
    EXPECT_EQ(loaded, "/work/manual/Code.cmp");
    EXPECT_THAT(loader->calls, ElementsAre("Load", "Unload"));
    EXPECT_THAT(plugIn->calls, ElementsAre("AttachHost", "Prepare"));
    EXPECT_EQ(document->builds, 1);
    ASSERT_NE(host, nullptr);
    EXPECT_EQ(host->HostedDocument, nullptr);
}

TEST_F(RelatedProjectTest, ExcludesWhatAPlugInKnows) {
    excluded["Ns~A"] = make<LateBoundDouble>("Class");
    excluded["Ns~A"]->values = {{"IncludeFlag", true}, {"ExcludeFlag", false}};
    excluded["Ns~B"] = make<LateBoundDouble>("Class");
    excluded["Ns~B"]->values = {{"ExcludeFlag", false}};  // has no IncludeFlag
    for (const auto* name : {"Ns~A", "Ns~B", "Ns~Unknown"}) exclusions->Add(name);
    build();
    EXPECT_EQ(excluded["Ns~A"]->values["IncludeFlag"], Value(false));
    EXPECT_EQ(excluded["Ns~A"]->values["ExcludeFlag"], Value(true));
    EXPECT_EQ(excluded["Ns~B"]->values["ExcludeFlag"], Value(true));
    EXPECT_THAT(exclusions->Texts(), ElementsAre("Ns~Unknown"));
    EXPECT_THAT(plugIn->calls,
                ElementsAre("AttachHost", "Prepare", "FindExcluded", "FindExcluded", "FindExcluded"));
}

TEST_F(RelatedProjectTest, EndsTheBuildWhereItsFileIsMissing) {
    project->SetCMPFileName("/work/manual/Gone.cmp");
    outside.messages->answers = {MessageAnswer::mbOK};
    EXPECT_TRUE(build()->Cancelled);
    EXPECT_EQ(box(),
              "Codemark file not found: The Codemark file '/work/manual/Gone.cmp' could not be found.  Build "
              "cancelled");
    EXPECT_TRUE(loader->calls.empty());
    EXPECT_EQ(document->builds, 0);
}

TEST_F(RelatedProjectTest, EndsTheBuildWhereItBringsNoTemplates) {
    pageTemplates.clear();
    outside.messages->answers = {MessageAnswer::mbOK};
    EXPECT_TRUE(build()->Cancelled);
    EXPECT_EQ(box(),
              "Codemark file invalid: Could not load from Codemark project file '/work/manual/Code.cmp'. "
              "Build cancelled");
    EXPECT_EQ(document->builds, 0);
}

TEST_F(RelatedProjectTest, IsLeftOutWhereItsLoaderIsNotToBeHad) {
    outside.classes->classes.erase("Codemark.Loader");
    EXPECT_FALSE(build()->Cancelled);
    EXPECT_EQ(document->builds, 1);
    EXPECT_EQ(document->PageTemplates->Count(), 1);
}

TEST_F(RelatedProjectTest, IsUnloadedWhenTheOutputFolderIsRefused) {
    project->SetOutputFileName("/new/place/Manual.chm");
    outside.messages->answers = {MessageAnswer::mbNo, MessageAnswer::mbOK};
    EXPECT_TRUE(build()->Cancelled);
    EXPECT_THAT(loader->calls, ElementsAre("Load", "Unload"));
    EXPECT_EQ(document->Objects->Count(), 0);
    EXPECT_EQ(document->builds, 0);
}

TEST(DummyWizardHostTest, DoesNothing) {
    const auto host = make<DummyWizardHost>();
    for (const auto* name : {"ControlEnabled", "ControlVisible", "MoveToWizardStage", "AddCustomWizardPage",
                             "AddCustomProjectSelector", "ModuleListChanged", "Settings", "RootProject"}) {
        Arguments none;
        EXPECT_EQ(callMember(*host, name, none), Value::None()) << name;
    }
    EXPECT_EQ(host->Document(), Value::None());
}

}  // namespace
}  // namespace quillbox
