#include <gmock/gmock.h>

#include <sstream>

#include "frame/typelib/TypeLibrary.h"

namespace quillbox {
namespace {

// The order that callers were promised, typed by hand: who moves a member breaks them.
struct Published {
    const char* name;
    const char* members;
    const char* events = "";
    bool creatable = true;
};

const std::vector<Published> kClasses = {
    {"Root",
     "TopicStatuses TopicSectionDefs ahConfigPath QuillboxPageTemplates SSDatabase SSUser SSPassword "
     "VSSDatabase "
     "IsSourceSafeAvailable BeforeDeleteTopic IsCodemarkInstalled NewProjectDialog"},
    {"QbNamespaceProvider", ""},
    {"Topic",
     "NewTopicFlag Keywords Key TopicSections RuntimeEntryNumber RuntimePageNumberStart RuntimePageNumberEnd "
     "HelpContextIDs IncludeInHelpFile AutoGenerateIndexEntry AllStylesheets StyleSheets LayoutName Dirty "
     "Notes "
     "ModifiedOn CreatedOn Status PauseEvents TopicCategory IsDefault ContentsTitle InternalContentsTitle "
     "AddKeyword "
     "Name Title Load Save QbProject RelatedTopics QualifiedName FireChanged GetSuspectLinks "
     "TopicSectionData "
     "NewTopicSection FireRelatedTopicChanged FireTopicSectionChanged AddStyleSheet RemoveStyleSheet "
     "IncludeStylesheet LocalSpec SSSpec CheckOutStatus CheckOut CheckedOutToUser ReadOnly CheckedOut "
     "GetLatestSSVersion CheckIn IsDifferent UndoCheckout IsCheckedOut AddToSourceSafe",
     "TopicSectionDataChanged(TopicSection) TopicStyleSheetAdded(Filename) TopicStyleSheetRemoved(Filename) "
     "TopicStyleSheetsChanged() CheckoutStatusChanged()"},
    {"Topics", "PauseEvents QbProject Item Remove Add Count NewEnum"},
    {"QbProject",
     "Filename VariableValues Topics TopicCategories OtherFiles Tasks SpellIgnoreAllWordList QbNodes "
     "TopicsDirty "
     "ProjectType SSProject SSActivated Manifests GlossaryItems Help2FileID Help2Namespace Title "
     "OutputFileName "
     "CompileType SpellLastCheckDateTime TemplateName Name CMPFileName Dirty FireQbNodeChanged "
     "FireTopicAdded "
     "FireTopicRemoved FireQbNodeRemoved FireTopicChanged FireTopicRelatedTopicsChanged "
     "FireTopicCategoryAdded "
     "FireTopicCategoryChanged FireTopicCategoryRemoved LoadFromFile Load QualifiedName Save NewTopic "
     "NewTopicCategory TopicByName GetSuspectLinks NewOtherFile FireOtherFileAdded FireOtherFileRemoved "
     "FireTopicRelatedTopicChanged FireTopicSectionChanged SpellAddIgnoreAllWord ParseURL NewGlossaryItem "
     "FireGlossaryItemAdded FireGlossaryItemChanged FireGlossaryItemRemoved BuildBooklets Build "
     "DefaultTopicLayout "
     "NewManifest FireManifestChanged FireTopicCheckoutStatusChanged NewDOM FireManifestEntryChanged "
     "SortedTopics "
     "TopicDataPath ProjectDataPath ProjectDataSpec TopicDataSpec GetCheckOutStatus VSSItem CheckOut CheckIn "
     "UndoCheckout GetLatestSSVersion CheckOutStatus CheckedOut IsDifferent AddToSourceSafe ReadOnly "
     "FireProjectElementCheckOutStatusChanged ProjectDirty FireDirtyStateChanged SaveToDisk FireTaskAdded "
     "FireTaskChanged FireTaskRemoved NewTask IsProjectFileInSourceSafe IsGlossaryInSourceSafe "
     "IsTOCInSourceSafe "
     "IsManifestsInSourceSafe IsProjectFolderInSourceSafe DoesSSProjectExist DoesSSItemExist "
     "FireOtherFileCheckoutStatusChanged IncrementingValues HelpContextIDHeaderFile HeaderIds VSSDatabase "
     "CreateSourceSafeProjectFolder CopySupportFiles Template PauseEvents",
     "Changed() TopicAdded(Topic) TopicRemoved(Topic) TopicChanged(Topic) "
     "TopicSectionChanged(Topic,TopicSection) "
     "TopicRelatedTopicChanged(Topic,RelatedTopic) TopicRelatedTopicsChanged(Topic) QbNodeChanged(QbNode) "
     "QbNodeRemoved(QbNode) TopicCategoryAdded(TopicCategory) TopicCategoryChanged(TopicCategory) "
     "TopicCategoryRemoved(TopicCategory) OtherFileAdded(OtherFile) OtherFileRemoved(OtherFile) "
     "CheckoutStatusChanged() TopicCheckoutStatusChanged(Topic) OtherFileCheckoutStatusChanged(OtherFile) "
     "ProjectElementCheckOutStatusChanged(ProjectElementType) BookletBuildProgress(Status) "
     "TopicTemplateChanged(NewTemplateName) GlossaryItemAdded(Item) GlossaryItemRemoved(Item) "
     "GlossaryItemChanged(Item) TaskAdded(Task) TaskChanged(Task) TaskRemoved(Task) "
     "ManifestChanged(Manifest) "
     "ManifestEntryChanged(Manifest,ManifestEntry) LinkCheckStartTopic(TopicIndex) DirtyStateChanged() "
     "BuildErrorsOrWarnings(&doc,&res,&Cancel) SourceSafeProgress(Caption) LoadProgress(Caption)"},
    {"QbDataProvider", "Document"},
    {"RelatedTopic", "ChildTopicKey URL RelatedTopicType Title Category ParentTopic ChildTopic Load Save"},
    {"RelatedTopics", "Topic Item Remove Add Count NewEnum", "ItemAdded(Item) ItemRemoved(Item)"},
    {"QbNode",
     "Key ChildNodes CMPFileName StandardURL TopicID SubContentsFileName Icon CaptionText CaptionType "
     "QbNodeType "
     "QbNodes ParentNode Save Load Topic CreateNodeDef"},
    {"QbNodes",
     "Dirty AllNodes NodesForTopic QbProject Item Remove Add Count NewEnum Save Load NewNode LocalSpec "
     "SSSpec "
     "CheckOut CheckIn GetLatestVersion IsCheckedOut CheckOutStatus ReadOnly IsDifferent UndoCheckout "
     "PauseEvents",
     "ItemAdded(Item) ItemRemoved(Item)"},
    {"TopicCategory", "Key Name QbProject Load Save"},
    {"TopicCategories", "PauseEvents QbProject Item Remove Add Count NewEnum TopicCategoryByName"},
    {"OtherFile",
     "Filename QbProject Load Save IsImage RelativeFileName IsStyleSheet LocalSpec SSSpec CheckOutStatus "
     "CheckOut "
     "CheckedOutToUser ReadOnly CheckedOut GetLatestSSVersion CheckIn IsDifferent UndoCheckout IsCheckedOut "
     "AddToSourceSafe NewFlag",
     "CheckoutStatusChanged()"},
    {"OtherFiles", "PauseEvents QbProject Item Remove Add Count NewEnum Exists"},
    {"TopicStatus", "Name Caption Icon Load Save"},
    {"TopicStatuses", "Item Remove Add Count NewEnum Load Save"},
    {"LinkInfo",
     "Topic Section LinkStatus LinkType LinkText Load SplitURL Verify ChangeLinkText LinkCaption"},
    {"LinkInfos", "Item Remove Add Count NewEnum"},
    {"TopicSection", "Tag Topic Data TopicSectionDef"},
    {"TopicSections", "Item Remove Add Count NewEnum TopicSectionByCaption"},
    {"TopicSectionDef", "Key Caption"},
    {"TopicSectionDefs", "Item Remove Add Count NewEnum Populate"},
    {"DummyWizardHost", "Document"},
    {"GlossaryItem", "Key Definition Term QbProject Load Save"},
    {"GlossaryItems",
     "Dirty QbProject Item Remove Add Count NewEnum ItemByTerm LocalSpec SSSpec CheckOut IsDifferent "
     "UndoCheckout "
     "CheckIn GetLatestVersion IsCheckedOut CheckOutStatus Save Load ReadOnly PauseEvents"},
    {"BuildResult", "Cancelled CompilerLog"},
    {"Manifest",
     "Key BookletProperties IncludeFlag ManifestType Notes Name Entries QbProject NewManifestEntry Load Save "
     "QualifiedName FireManifestEntryAdded FireManifestEntryRemoved FireManifestEntryChanged FireChanged "
     "EntryByTopic",
     "Changed() ManifestEntryAdded(Entry) ManifestEntryRemoved(Entry) ManifestEntryChanged(Entry)"},
    {"Manifests",
     "Dirty QbProject Item Remove Add Count NewEnum LocalSpec SSSpec CheckOut CheckIn GetLatestVersion "
     "IsCheckedOut "
     "CheckOutStatus Save Load ReadOnly IsDifferent UndoCheckout"},
    // Title is written at one place and read at another; it is listed at the first.
    {"ManifestEntry",
     "Key ChildEntries PageBreakAfter PageBreakBefore ParentEntry Title RuntimeTitle Manifest Topic Load "
     "Save "
     "RuntimePageNumberEnd RuntimePageNumberStart RuntimeEntryNumber RuntimePageBreak"},
    {"ManifestEntries", "Parent Item Remove Add Count NewEnum AllEntries"},
    {"BookletProperties",
     "Title EntryNumbering GenerateTOC OutputFileName Manifest PaperSize MarginBottom MarginTop MarginRight "
     "MarginLeft UnPrintableBottom UnPrintableTop UnPrintableRight UnPrintableLeft FooterHTML HeaderHTML "
     "PageBreaks "
     "CoverpageTopicID TemplateName Load Save Template CoverPageTopic RawCoverPage "
     "LinkPreProcessURLNoCaption "
     "LinkPreProcessURLWithCaption LinkPreProcessTopicNotInBooklet LinkPreProcessTopicInBooklet "
     "LinkPreProcessCodemark"},
    {"Enums", ""},
    {"Task",
     "PauseEvents QbProject ModifiedBy ModifiedOn CreatedBy CreatedOn Status TopicID AssignedTo Notes Title "
     "Priority "
     "Key Load Save FireChanged"},
    {"Tasks",
     "Dirty QbProject Item Remove Add Count NewEnum Load Save ReadOnly LocalSpec SSSpec CheckOut IsDifferent "
     "UndoCheckout CheckIn GetLatestVersion IsCheckedOut CheckOutStatus PauseEvents"},
    {"BookletLinkInfo", "LinkCaption LinkURL LinkTopic"},
    {"HeaderIds", "Load ValidIndex Remove NewEnum ItemIndex Item Exists Count Clear Add", "", false},
    {"HeaderId", "Name Comment Value", "", false},
};

constexpr const char* kEnumerations[][2] = {
    {"CompileTypeEnum", "CompileNone=0 CompileHTMLHelp1=1 CompileHelp2=2"},
    {"ProjectTypeEnum", "ProjectTypeSingleFile=0 ProjectTypeSeparateFiles=1"},
    {"RelatedTopicTypeEnum", "rttTopic=0 rttURL=1"},
    {"QbNodeTypeEnum", "ntStandard=0 ntSingleTopic=1 ntSubContents=2 ntCMContents=3"},
    {"QbProjectCaptionTypeEnum", "ctDefault=1 ctSpecific=2"},
    {"OtherFileTypeEnum", "oftStylesheet=0 oftOther=1"},
    {"LinkStatusTypeEnum", "lsUnverified=0 lsBroken=1 lsOK=2"},
    {"LinkTypeEnum", "ltHyperlink=0 ltImage=1"},
    {"ManifestTypeEnum", "mtBooklet=0 mtBrowseSequence=1"},
    {"EntryPageBreakEnum", "epbDefault=0 epbAlways=1 epbNever=2"},
    {"PageBreaksEnum", "pbBeforeTopLevelEntries=0 pbBeforeAllEntries=1"},
    {"PaperSizeEnum", "psLetter=1 psA4=9"},
    {"EntryNumberingEnum", "enNone=0 enTopicTitles=1 enTopicTitlesAndHTMLHeadings=2"},
    {"CheckOutStatusEnum",
     "StatusCheckedIn=0 StatusCheckedOutWrongDirectory=1 StatusCheckedOutToOtherUser=2 "
     "StatusCheckedOutToCurrentUser=3"},
    {"ProjectElementTypeEnum",
     "ProjectElementTableOfContents=1 ProjectElementManifests=2 ProjectElementGlossary=3 "
     "ProjectElementTasks=4"},
};

// What the plug-in interfaces of the document engine hold, in the order of their slots.
const std::pair<const char*, const char*> kInterfaces[] = {
    {"QbNamespaceProvider",
     "GetItems(NameSpaceDef,ParentItem,Filter) DocumentDataProvider() Initialise(Document) "
     "GetRootItem(NameSpaceDef,Moniker) GetObjectFromQualifiedName(QualifiedName) "
     "GetNamespaceDefFromObject(NamespaceDefs,obj) AddRootItem(RootItem) "
     "StreamContent(OutputFile,ContentType) Name() ContentCreated(Item,NameSpaceDef,Filename) "
     "BeforeProcessRootItem(RootItem) AfterProcessRootItem(RootItem) BeforeProcessItem(Item,RootItem) "
     "AfterProcessItem(Item,RootItem) GetModuleItems() BrowseForMoniker(Filename,Flags) "
     "VerifyMoniker(Moniker,&Message)"},
    {"QbDataProvider",
     "ProvideData(Element,FileSystemObject) Initialise(ParserTemplate) Terminate() CurrentRootItem() "
     "CurrentParentItem() CurrentItemType() CurrentItem() NamespaceDef() "
     "SetCurrentItem(NameSpaceDef,Item,ItemType,ParentItem) ParseForProperties(S) GetProperty(Item) Clone()"},
    {"DummyWizardHost",
     "ControlEnabled() ControlVisible() MoveToWizardStage() AddCustomWizardPage() AddCustomProjectSelector() "
     "ModuleListChanged() Settings() RootProject()"},
};

std::vector<std::string> words(const char* text) {
    std::istringstream in(text);
    return {std::istream_iterator<std::string>(in), {}};
}

std::vector<const ClassInfo*> publishedClasses() {
    std::vector<const ClassInfo*> classes;
    for (const auto& info : TypeLibrary::Get().Classes()) {
        if (info.published) classes.push_back(&info);
    }
    return classes;
}

template <class Info>
std::string signature(const Info& info) {
    std::string text;
    for (const auto& param : info.params)
        text += (text.empty() ? "" : ",") + std::string(param.byRef ? "&" : "") + param.name;
    return info.name + "(" + text + ")";
}

TEST(PublishedOrder, ClassesStandInTheirOrder) {
    std::vector<std::string> expected, found;
    for (const auto& one : kClasses) expected.push_back(one.name);
    for (const auto* info : publishedClasses()) found.push_back(info->name);
    EXPECT_EQ(found, expected);
}

TEST(PublishedOrder, MembersStandInTheirOrder) {
    for (const auto& one : kClasses) {
        const auto* info = TypeLibrary::Get().FindClass(one.name);
        ASSERT_NE(info, nullptr) << one.name;
        std::vector<std::string> found;
        for (const auto& member : info->members) {
            if (member.listed) found.push_back(member.name);
        }
        EXPECT_EQ(found, words(one.members)) << one.name;
    }
}

TEST(PublishedOrder, MembersOfInterfacesStandInTheirOrderWithTheirArguments) {
    for (const auto& [name, members] : kInterfaces) {
        std::vector<std::string> found;
        for (const auto& member : TypeLibrary::Get().FindClass(name)->members) {
            if (!member.listed) found.push_back(signature(member));
        }
        EXPECT_EQ(found, words(members)) << name;
    }
}

TEST(PublishedOrder, EventsHaveTheirPlacesIdentifiersAndArguments) {
    for (const auto& one : kClasses) {
        const auto* info = TypeLibrary::Get().FindClass(one.name);
        ASSERT_NE(info, nullptr) << one.name;
        std::vector<std::string> found;
        for (const auto& event : info->events) {
            found.push_back(signature(event));
            EXPECT_EQ(event.id, static_cast<int>(found.size())) << one.name << " " << event.name;
        }
        EXPECT_EQ(found, words(one.events)) << one.name;
    }
}

TEST(PublishedOrder, ClassesThatCallersCreateCanBeCreated) {
    for (const auto& one : kClasses) {
        const auto* info = TypeLibrary::Get().FindClass(one.name);
        ASSERT_NE(info, nullptr) << one.name;
        EXPECT_EQ(info->creatable, one.creatable) << one.name;
        EXPECT_EQ(static_cast<bool>(info->create), one.creatable) << one.name;
    }
}

TEST(PublishedOrder, CollectionsHaveItemAsDefaultMember) {
    for (const auto* info : publishedClasses()) {
        EXPECT_EQ(info->defaultMember, info->FindMember("NewEnum") ? "Item" : "") << info->name;
    }
}

TEST(PublishedOrder, EnumerationsHaveTheirValues) {
    std::vector<const EnumerationInfo*> published;
    for (const auto& one : TypeLibrary::Get().Enumerations()) {
        if (one.published) published.push_back(&one);
    }
    ASSERT_EQ(published.size(), std::size(kEnumerations));
    for (std::size_t i = 0; i < published.size(); ++i) {
        EXPECT_EQ(published[i]->name, kEnumerations[i][0]);
        std::vector<std::string> values;
        for (const auto& [name, value] : published[i]->values)
            values.push_back(name + "=" + std::to_string(value));
        EXPECT_EQ(values, words(kEnumerations[i][1])) << published[i]->name;
    }
}

TEST(PublishedOrder, EveryClassAndMemberHasAHelpLine) {
    for (const auto& info : TypeLibrary::Get().Classes()) {
        EXPECT_FALSE(info.help.empty()) << info.name;
        for (const auto& member : info.members) {
            EXPECT_FALSE(member.help.empty()) << info.name << "." << member.name;
            EXPECT_NE(member.name, "") << info.name;
            for (const auto& param : member.params) EXPECT_FALSE(param.name.empty() || param.type.empty());
        }
    }
}

TEST(PublishedOrder, EveryMemberCanBeReadOrWritten) {
    for (const auto& info : TypeLibrary::Get().Classes()) {
        for (const auto& member : info.members) {
            const auto reads = member.kind != MemberKind::PropertyWrite;
            const auto writes =
                member.kind == MemberKind::Property || member.kind == MemberKind::PropertyWrite;
            EXPECT_EQ(static_cast<bool>(member.read), reads) << info.name << "." << member.name;
            EXPECT_EQ(static_cast<bool>(member.write), writes) << info.name << "." << member.name;
        }
    }
}

TEST(PublishedOrder, NamesAreFoundInAnyCaseAndUnknownOnesAreNot) {
    const auto& library = TypeLibrary::Get();
    EXPECT_EQ(library.FindClass("qbPROJECT"), library.FindClass("QbProject"));
    EXPECT_NE(library.FindClass("QbProject")->FindMember("title"), nullptr);
    EXPECT_EQ(library.FindClass("QbProjects"), nullptr);
    EXPECT_EQ(library.FindClass("QbProject")->FindMember("Titles"), nullptr);
    EXPECT_NE(library.CreateObject("Quillbox.Topic"), nullptr);
    EXPECT_THROW(library.CreateObject("Quillbox.HeaderIds"), AutomationError);
    EXPECT_THROW(library.CreateObject("Codemark.Topic"), AutomationError);
}

}  // namespace
}  // namespace quillbox
