#include <ostream>

#include "support/SourceControlTest.h"

namespace quillbox {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// One kind of element, and how it differs from the others.
struct Kind {
    const char* name;
    std::function<Ref<Object>(QbProject&)> find;
    const char* spec;     // behind the project's folder; the topic's key stands for "*"
    const char* comment;  // of a check-out that names none
    const char* event;    // what the project raises
    bool tellsKept;       // a check-in that keeps the element tells too
    bool keptAndSame;     // the result of a check-in that keeps an unchanged element
    const char* getLatest;
};
void PrintTo(const Kind& kind, std::ostream* out) { *out << kind.name; }

const std::vector<Kind> kKinds = {
    {"QbNodes", [](QbProject& p) { return p.QbNodes(); }, "ProjectData/TableOfContents.xml",
     "Checked out by Quillbox", "ProjectElementCheckOutStatusChanged(1)", true, true, "GetLatestVersion"},
    {"Manifests", [](QbProject& p) { return p.Manifests(); }, "ProjectData/Manifests.xml",
     "Checked out by Quillbox", "ProjectElementCheckOutStatusChanged(2)", true, true, "GetLatestVersion"},
    {"GlossaryItems", [](QbProject& p) { return p.GlossaryItems(); }, "ProjectData/Glossary.xml",
     "Checked out by Quillbox", "ProjectElementCheckOutStatusChanged(3)", true, true, "GetLatestVersion"},
    {"Tasks", [](QbProject& p) { return p.Tasks; }, "ProjectData/Tasks.xml", "Checked out by Quillbox",
     "ProjectElementCheckOutStatusChanged(4)", true, true, "GetLatestVersion"},
    {"Topic", [](QbProject& p) { return p.Topics->Item(1); }, "TopicData/*.xml", "Checked Out by Quillbox",
     "TopicCheckoutStatusChanged(Intro)", false, true, "GetLatestSSVersion"},
    {"OtherFile", [](QbProject& p) { return p.OtherFiles->Item(1); }, "img/a.png", "Checked Out by Quillbox",
     "OtherFileCheckoutStatusChanged(/work/manual/img/a.png)", false, true, "GetLatestSSVersion"},
    {"QbProject", [](QbProject& p) { return self(&p); }, "Manual.qbp", "Checked out by Quillbox",
     "CheckoutStatusChanged", false, false, "GetLatestSSVersion"},
};

class Elements : public SourceControlTest, public testing::WithParamInterface<Kind> {
  protected:
    Elements() {
        import();
        element = GetParam().find(*project);
        spec = "$/help/manual/" + replaceAll(GetParam().spec, "*", topic->Key);
    }

    bool call(const std::string& member, Arguments arguments = {}) {
        return toBoolean(callMember(*element, member, arguments));
    }
    // The project's commands have one argument more in front.
    bool command(const std::string& member, Arguments arguments = {}) {
        if (isProject()) arguments.insert(arguments.begin(), Value());
        return call(member, std::move(arguments));
    }
    Value read(const std::string& member) { return getMember(*element, member); }
    int status() { return toInteger(read("CheckOutStatus")); }
    bool isProject() const { return std::string(GetParam().name) == "QbProject"; }
    bool has(const std::string& member) const {
        return TypeLibrary::Get().ClassOf(*element).FindMember(member);
    }
    FakeSourceSafe::Entry& entry() { return safe->At(spec); }
    std::string local() { return toText(isProject() ? Value(kFile) : read("LocalSpec")); }
    void changeFile() { outside.files->Put(local(), "changed"); }
    void answerOk() { outside.messages->answers = {MessageAnswer::mbOK}; }

    Ref<Object> element;
    std::string spec;
    EventLog log{project};
};

TEST_P(Elements, ACheckedInElementIsReadOnlyUntilItIsCheckedOut) {
    EXPECT_EQ(status(), StatusCheckedIn);
    EXPECT_EQ(read("ReadOnly"), Value(true));
    log.Take();
    EXPECT_TRUE(command("CheckOut"));
    EXPECT_THAT(log.Take(), ElementsAre(GetParam().event));
    EXPECT_THAT(safe->Take(), ElementsAre("Checkout " + spec + " '" + GetParam().comment + "'"));
    EXPECT_EQ(status(), StatusCheckedOutToCurrentUser);
    EXPECT_EQ(read("ReadOnly"), Value(false));
    if (has("CheckedOut")) {
        EXPECT_EQ(read("CheckedOut"), Value(true));
    }
    if (has("IsCheckedOut")) {
        EXPECT_EQ(read("IsCheckedOut"), Value(true));
    }
    if (has("CheckedOutToUser")) {
        EXPECT_EQ(read("CheckedOutToUser"), Value("Writer"));
    }
}

TEST_P(Elements, ACheckOutFromAnyOtherStateIsRefusedInSilence) {
    for (const auto* user : {"Writer", "Somebody"}) {
        entry().user = user;
        entry().folder = "/elsewhere";
        log.Take();
        EXPECT_FALSE(command("CheckOut", {"x"}));
        EXPECT_EQ(status(), *user == 'W' ? StatusCheckedOutWrongDirectory : StatusCheckedOutToOtherUser);
    }
    EXPECT_THAT(safe->Take(), IsEmpty());
    EXPECT_THAT(log.Take(), IsEmpty());
    EXPECT_THAT(outside.messages->shown, IsEmpty());
}

TEST_P(Elements, AFailedCallIsToldInABox) {
    safe->failingCall = "Checkout";
    answerOk();
    log.Take();
    EXPECT_FALSE(command("CheckOut"));
    ASSERT_EQ(outside.messages->shown.size(), 1u);
    EXPECT_EQ(outside.messages->shown[0].text,
              "SourceSafe Check Out of item '" + spec + "' failed.  Error 77 (the disk is full)");
    EXPECT_EQ(outside.messages->shown[0].title, "");
    EXPECT_EQ(outside.messages->shown[0].buttons, MessageButtons::bsOK);
    EXPECT_THAT(log.Take(), IsEmpty());
}

TEST_P(Elements, ACheckInOfAChangedElementStoresItAndKeepsItOnlyIfAsked) {
    command("CheckOut");
    changeFile();
    EXPECT_EQ(read("IsDifferent"), Value(true));
    log.Take();
    safe->Take();
    EXPECT_TRUE(command("CheckIn", {"c", true}));
    EXPECT_THAT(safe->Take(), ElementsAre("Checkin " + spec + " 'c' keep"));
    EXPECT_EQ(log.Take(),
              GetParam().tellsKept ? std::vector<std::string>{GetParam().event} : std::vector<std::string>{});
    EXPECT_EQ(status(), StatusCheckedOutToCurrentUser);
    outside.files->Put(local(), "changed again");
    EXPECT_TRUE(command("CheckIn", {"d", false}));
    EXPECT_THAT(safe->Take(), ElementsAre("Checkin " + spec + " 'd'"));
    EXPECT_THAT(log.Take(), ElementsAre(GetParam().event));
    EXPECT_EQ(status(), StatusCheckedIn);
    EXPECT_EQ(entry().text, "changed again");
}

TEST_P(Elements, ACheckInWithoutArgumentsKeepsAndHasAComment) {
    command("CheckOut");
    changeFile();
    safe->Take();
    EXPECT_TRUE(call("CheckIn"));
    EXPECT_THAT(safe->Take(), ElementsAre("Checkin " + spec + " 'Checked In by Quillbox' keep"));
}

TEST_P(Elements, ACheckInOfAnUnchangedElementStoresNoNewVersion) {
    command("CheckOut");
    log.Take();
    safe->Take();
    EXPECT_EQ(command("CheckIn", {"c", true}), GetParam().keptAndSame);
    EXPECT_THAT(safe->Take(), IsEmpty());
    EXPECT_THAT(log.Take(), IsEmpty());
    EXPECT_TRUE(command("CheckIn", {"c", false}));
    EXPECT_THAT(safe->Take(), ElementsAre("UndoCheckout " + spec));
    EXPECT_THAT(log.Take(), ElementsAre(GetParam().event));
    EXPECT_EQ(status(), StatusCheckedIn);
}

TEST_P(Elements, ACheckInOfACheckedInElementIsRefused) {
    changeFile();
    log.Take();
    EXPECT_FALSE(command("CheckIn", {"c", true}));
    EXPECT_THAT(outside.messages->shown, IsEmpty());
    outside.files->Put(local(), entry().text);
    EXPECT_EQ(command("CheckIn", {"c", true}), GetParam().keptAndSame);
    answerOk();
    EXPECT_FALSE(command("CheckIn", {"c", false}));
    EXPECT_EQ(outside.messages->shown.at(0).text,
              "SourceSafe Undo Check Out of item '" + spec + "' failed.  Error 5 (not checked out)");
    EXPECT_THAT(log.Take(), IsEmpty());
}

TEST_P(Elements, AFailedCheckInIsToldInABoxAndIsNoEvent) {
    command("CheckOut");
    changeFile();
    safe->failingCall = "Checkin";
    answerOk();
    log.Take();
    EXPECT_FALSE(command("CheckIn", {"c", false}));
    EXPECT_EQ(outside.messages->shown.at(0).text,
              "SourceSafe Check In of item '" + spec + "' failed.  Error 77 (the disk is full)");
    EXPECT_THAT(log.Take(), IsEmpty());
}

TEST_P(Elements, AnUndoneCheckOutRenewsTheFileAndTells) {
    command("CheckOut");
    if (std::string(GetParam().name) != "Topic") changeFile();
    log.Take();
    EXPECT_TRUE(call("UndoCheckout"));
    EXPECT_THAT(log.Take(), ElementsAre(GetParam().event));
    EXPECT_EQ(status(), StatusCheckedIn);
    EXPECT_EQ(bytes(local()), entry().text);
    answerOk();
    EXPECT_FALSE(call("UndoCheckout"));
    EXPECT_EQ(outside.messages->shown.size(), 1u);
    EXPECT_THAT(log.Take(), IsEmpty());
}

TEST_P(Elements, TheLatestVersionIsFetchedUnlessAnybodyHasIt) {
    entry().text = "newer";
    log.Take();
    EXPECT_TRUE(call(GetParam().getLatest));
    EXPECT_EQ(bytes(local()), "newer");
    for (const auto* user : {"Writer", "Somebody"}) {
        entry().user = user;
        safe->Take();
        EXPECT_FALSE(call(GetParam().getLatest));
        EXPECT_THAT(safe->Take(), IsEmpty());
    }
    entry().user.clear();
    safe->failingCall = "Get";
    EXPECT_FALSE(call(GetParam().getLatest));
    EXPECT_THAT(outside.messages->shown, IsEmpty());
    EXPECT_THAT(log.Take(), IsEmpty());
}

TEST_P(Elements, AnElementThatTheDatabaseDoesNotKnowIsCheckedInAndTakesNoCommand) {
    safe->entries.erase(spec);
    EXPECT_EQ(status(), StatusCheckedIn);
    EXPECT_EQ(read("IsDifferent"), Value(false));
    EXPECT_FALSE(command("CheckOut"));
    EXPECT_FALSE(call("UndoCheckout"));
    EXPECT_FALSE(call(GetParam().getLatest));
    EXPECT_THAT(outside.messages->shown, IsEmpty());
}

TEST_P(Elements, PausesDoNotHoldTheStatusBack) {
    project->SetPauseEvents(true);
    if (std::string(GetParam().name) == "Topic") topic->SetPauseEvents(true);
    log.Take();
    command("CheckOut");
    EXPECT_THAT(log.Take(), ElementsAre(GetParam().event));
}

TEST_P(Elements, InASingleFileProjectNothingIsReadOnly) {
    project->SetSSActivated(false);
    project->SetProjectType(ProjectTypeSingleFile);
    file->ResetReadOnlyCache();
    outside.files->SetReadOnly(local(), true);
    EXPECT_EQ(read("ReadOnly"), Value(false));
    project->SetProjectType(ProjectTypeSeparateFiles);
    file->ResetReadOnlyCache();
    EXPECT_EQ(read("ReadOnly"), Value(true));
}

TEST_P(Elements, AFileThatWasDeletedComesBackWithASaveAlthoughTheElementIsCheckedIn) {
    const auto before = bytes(local());
    newFile(local())->Delete();
    ASSERT_TRUE(project->SaveToDisk());
    EXPECT_EQ(status(), StatusCheckedIn);
    // What is not of its own making a project cannot bring back.
    const bool isOurs = std::string(GetParam().name) != "OtherFile";
    EXPECT_EQ(bytes(local()), isOurs ? before : "no such file");
}

INSTANTIATE_TEST_SUITE_P(Each, Elements, testing::ValuesIn(kKinds),
                         [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace quillbox
