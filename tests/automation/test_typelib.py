"""Holds the description of the library against the published order, typed here by hand."""

import unittest

import quillbox

# Name: a property; Name/r: one that can only be read; Name(...): a method, or a property with parameters.
# &x: by reference; [x]: may be left out.
COLLECTION = "Item/r(Key) Remove(Key) Add(Item,[Key],[Before],[After]) Count/r NewEnum/r"
COLLECTION_OF_CONTENT = COLLECTION.replace("Add(Item", "Add(&Item")
STORED = "Load(&e) Save(&e)"

CLASSES = {
    "Root": """TopicStatuses/r TopicSectionDefs/r ahConfigPath() QuillboxPageTemplates([SupportsFlag]) SSDatabase/r
        SSUser/r SSPassword/r VSSDatabase/r IsSourceSafeAvailable() BeforeDeleteTopic(T,&Cancel,&NoPrompt)
        IsCodemarkInstalled() NewProjectDialog()""",
    "QbNamespaceProvider": "",
    "Topic": f"""NewTopicFlag Keywords Key TopicSections RuntimeEntryNumber RuntimePageNumberStart RuntimePageNumberEnd
        HelpContextIDs IncludeInHelpFile AutoGenerateIndexEntry AllStylesheets StyleSheets/r LayoutName Dirty Notes
        ModifiedOn CreatedOn Status PauseEvents TopicCategory IsDefault ContentsTitle InternalContentsTitle/r
        AddKeyword(Keyword) Name Title {STORED} QbProject RelatedTopics/r QualifiedName/r FireChanged()
        GetSuspectLinks([AddToCollection],[&DOM]) TopicSectionData(Key) NewTopicSection(Key,[Data])
        FireRelatedTopicChanged(RelatedTopic) FireTopicSectionChanged(TopicSection) AddStyleSheet(Filename)
        RemoveStyleSheet(Filename) IncludeStylesheet(RelativeFileName) LocalSpec/r SSSpec/r CheckOutStatus/r
        CheckOut([Comment]) CheckedOutToUser/r ReadOnly/r CheckedOut/r GetLatestSSVersion()
        CheckIn([Comment],[KeepCheckedOut]) IsDifferent/r UndoCheckout() IsCheckedOut/r AddToSourceSafe()""",
    "Topics": f"PauseEvents QbProject {COLLECTION}",
    "QbProject": None,
    "QbDataProvider": "Document",
    "RelatedTopic": f"ChildTopicKey URL RelatedTopicType Title Category ParentTopic ChildTopic/r {STORED}",
    "RelatedTopics": f"Topic {COLLECTION}",
    "QbNode": """Key ChildNodes CMPFileName StandardURL TopicID SubContentsFileName Icon CaptionText CaptionType
        QbNodeType QbNodes ParentNode Save(&e) Load(&e) Topic/r CreateNodeDef(Parent,TOCDefinition)""",
    "QbNodes": f"""Dirty AllNodes([&col]) NodesForTopic(T,[&col]) QbProject {COLLECTION_OF_CONTENT} Save(&e) Load(&e)
        NewNode(Parent) LocalSpec/r SSSpec/r CheckOut([Comment]) CheckIn([Comment],[KeepCheckedOut]) GetLatestVersion()
        IsCheckedOut/r CheckOutStatus/r ReadOnly/r IsDifferent/r UndoCheckout() PauseEvents""",
    "TopicCategory": f"Key Name QbProject {STORED}",
    "TopicCategories": f"PauseEvents QbProject {COLLECTION} TopicCategoryByName(Name)",
    "OtherFile": f"""Filename QbProject {STORED} IsImage/r RelativeFileName/r IsStyleSheet/r LocalSpec/r SSSpec/r
        CheckOutStatus/r CheckOut([Comment]) CheckedOutToUser/r ReadOnly/r CheckedOut/r GetLatestSSVersion()
        CheckIn([Comment],[KeepCheckedOut]) IsDifferent/r UndoCheckout() IsCheckedOut/r AddToSourceSafe() NewFlag""",
    "OtherFiles": f"PauseEvents QbProject {COLLECTION_OF_CONTENT} Exists(Filename)",
    "TopicStatus": f"Name Caption Icon {STORED}",
    "TopicStatuses": f"{COLLECTION} {STORED}",
    "LinkInfo": None,
    "LinkInfos": COLLECTION,
    "TopicSection": "Tag Topic Data TopicSectionDef",
    "TopicSections": f"{COLLECTION} TopicSectionByCaption(Caption)",
    "TopicSectionDef": "Key Caption",
    "TopicSectionDefs": f"{COLLECTION} Populate()",
    "DummyWizardHost": "Document",
    "GlossaryItem": f"Key Definition Term QbProject {STORED}",
    "GlossaryItems": f"""Dirty QbProject {COLLECTION_OF_CONTENT} ItemByTerm(Term) LocalSpec/r SSSpec/r CheckOut([Comment])
        IsDifferent/r UndoCheckout() CheckIn([Comment],[KeepCheckedOut]) GetLatestVersion() IsCheckedOut/r
        CheckOutStatus/r Save(&e) Load(&e) ReadOnly/r PauseEvents""",
    "BuildResult": "Cancelled CompilerLog",
    "Manifest": f"""Key BookletProperties IncludeFlag ManifestType Notes Name Entries/r QbProject
        NewManifestEntry(Topic,Title) {STORED} QualifiedName/r FireManifestEntryAdded(Entry)
        FireManifestEntryRemoved(Entry) FireManifestEntryChanged(Entry) FireChanged() EntryByTopic(T)""",
    "Manifests": f"""Dirty QbProject {COLLECTION} LocalSpec/r SSSpec/r CheckOut([Comment])
        CheckIn([Comment],[KeepCheckedOut]) GetLatestVersion() IsCheckedOut/r CheckOutStatus/r Save(&e) Load(&e)
        ReadOnly/r IsDifferent/r UndoCheckout()""",
    "ManifestEntry": f"""Key ChildEntries PageBreakAfter PageBreakBefore ParentEntry Title RuntimeTitle/r Manifest Topic
        {STORED} RuntimePageNumberEnd RuntimePageNumberStart RuntimeEntryNumber RuntimePageBreak""",
    "ManifestEntries": f"Parent {COLLECTION} AllEntries/r([&col])",
    "BookletProperties": f"""Title EntryNumbering GenerateTOC OutputFileName Manifest PaperSize MarginBottom MarginTop
        MarginRight MarginLeft UnPrintableBottom UnPrintableTop UnPrintableRight UnPrintableLeft FooterHTML HeaderHTML
        PageBreaks CoverpageTopicID TemplateName {STORED} Template/r CoverPageTopic/r RawCoverPage
        LinkPreProcessURLNoCaption LinkPreProcessURLWithCaption LinkPreProcessTopicNotInBooklet
        LinkPreProcessTopicInBooklet LinkPreProcessCodemark""",
    "Enums": "",
    "Task": f"""PauseEvents QbProject ModifiedBy ModifiedOn CreatedBy CreatedOn Status TopicID AssignedTo Notes Title
        Priority Key {STORED} FireChanged()""",
    "Tasks": f"""Dirty QbProject {COLLECTION_OF_CONTENT} {STORED} ReadOnly/r LocalSpec/r SSSpec/r CheckOut([Comment])
        IsDifferent/r UndoCheckout() CheckIn([Comment],[KeepCheckedOut]) GetLatestVersion() IsCheckedOut/r
        CheckOutStatus/r PauseEvents""",
    "BookletLinkInfo": "LinkCaption LinkURL LinkTopic",
    "HeaderIds": """Load(Filename) ValidIndex(Index) Remove(Index) NewEnum/r ItemIndex(Index) Item/r(Index) Exists(Index)
        Count/r Clear() Add([Name],[Value],[Comment],[Before],[After])""",
    "HeaderId": "Name Comment Value",
}

PROJECT_BEFORE = """Filename VariableValues Topics TopicCategories OtherFiles Tasks SpellIgnoreAllWordList QbNodes
    TopicsDirty ProjectType SSProject SSActivated Manifests GlossaryItems/r Help2FileID Help2Namespace Title
    OutputFileName CompileType SpellLastCheckDateTime TemplateName Name CMPFileName Dirty FireQbNodeChanged(QbNode)
    FireTopicAdded(Topic) FireTopicRemoved(Topic) FireQbNodeRemoved(QbNode) FireTopicChanged(Topic)
    FireTopicRelatedTopicsChanged(Topic) FireTopicCategoryAdded(TopicCategory)
    FireTopicCategoryChanged(TopicCategory) FireTopicCategoryRemoved(TopicCategory) LoadFromFile(Filename) Load(Source)
    QualifiedName/r Save() NewTopic() NewTopicCategory() TopicByName(Name) GetSuspectLinks() NewOtherFile(Filename)
    FireOtherFileAdded(OtherFile) FireOtherFileRemoved(OtherFile) FireTopicRelatedTopicChanged(Topic,RelatedTopic)
    FireTopicSectionChanged(Topic,TopicSection) SpellAddIgnoreAllWord(Word) ParseURL(Source)
    NewGlossaryItem(Term,Definition) FireGlossaryItemAdded(Item) FireGlossaryItemChanged(Item)
    FireGlossaryItemRemoved(Item) BuildBooklets([&PassedDoc])
    Build([&PassedDoc],[CompilerFileName],[BuildRelatedCMP],[Compile],[CleanupAfterBuild]) DefaultTopicLayout()
    NewManifest(Name,[ManifestType]) FireManifestChanged(Manifest) FireTopicCheckoutStatusChanged(Topic) NewDOM(BodyHTML)
    FireManifestEntryChanged(Manifest,Entry) SortedTopics/r""".split()
PROJECT_SOURCE_CONTROL = set("""TopicDataPath/r ProjectDataPath/r ProjectDataSpec/r TopicDataSpec/r
    GetCheckOutStatus(Spec,CheckOutPath) VSSItem(Spec) CheckOut([Recurse],[Comment])
    CheckIn([Recurse],[Comment],[KeepCheckedOut]) UndoCheckout([Recurse]) GetLatestSSVersion([Recurse]) CheckOutStatus/r
    CheckedOut/r IsDifferent/r AddToSourceSafe([AddTopics]) ReadOnly/r""".split())
PROJECT_AFTER = """ReadOnly/r FireProjectElementCheckOutStatusChanged(ProjectElementType) ProjectDirty/r
    FireDirtyStateChanged() SaveToDisk([CheckForNewOrDeletedSSItems]) FireTaskAdded(Task) FireTaskChanged(Task)
    FireTaskRemoved(Task) NewTask() IsProjectFileInSourceSafe/r IsGlossaryInSourceSafe/r IsTOCInSourceSafe/r
    IsManifestsInSourceSafe/r IsProjectFolderInSourceSafe/r DoesSSProjectExist(Spec) DoesSSItemExist(Spec)
    FireOtherFileCheckoutStatusChanged(OtherFile) IncrementingValues HelpContextIDHeaderFile HeaderIds/r VSSDatabase/r
    CreateSourceSafeProjectFolder(ProjectSpec) CopySupportFiles() Template/r PauseEvents""".split()

EVENTS = {
    "QbProject": """Changed() TopicAdded(Topic) TopicRemoved(Topic) TopicChanged(Topic)
        TopicSectionChanged(Topic,TopicSection) TopicRelatedTopicChanged(Topic,RelatedTopic)
        TopicRelatedTopicsChanged(Topic) QbNodeChanged(QbNode) QbNodeRemoved(QbNode) TopicCategoryAdded(TopicCategory)
        TopicCategoryChanged(TopicCategory) TopicCategoryRemoved(TopicCategory) OtherFileAdded(OtherFile)
        OtherFileRemoved(OtherFile) CheckoutStatusChanged() TopicCheckoutStatusChanged(Topic)
        OtherFileCheckoutStatusChanged(OtherFile) ProjectElementCheckOutStatusChanged(ProjectElementType)
        BookletBuildProgress(Status) TopicTemplateChanged(NewTemplateName) GlossaryItemAdded(Item)
        GlossaryItemRemoved(Item) GlossaryItemChanged(Item) TaskAdded(Task) TaskChanged(Task) TaskRemoved(Task)
        ManifestChanged(Manifest) ManifestEntryChanged(Manifest,ManifestEntry) LinkCheckStartTopic(TopicIndex)
        DirtyStateChanged() BuildErrorsOrWarnings(&doc,&res,&Cancel) SourceSafeProgress(Caption) LoadProgress(Caption)""",
    "Topic": """TopicSectionDataChanged(TopicSection) TopicStyleSheetAdded(Filename) TopicStyleSheetRemoved(Filename)
        TopicStyleSheetsChanged() CheckoutStatusChanged()""",
    "OtherFile": "CheckoutStatusChanged()",
    "Manifest": "Changed() ManifestEntryAdded(Entry) ManifestEntryRemoved(Entry) ManifestEntryChanged(Entry)",
    "RelatedTopics": "ItemAdded(Item) ItemRemoved(Item)",
    "QbNodes": "ItemAdded(Item) ItemRemoved(Item)",
}

ENUMERATIONS = {
    "CompileTypeEnum": {"CompileNone": 0, "CompileHTMLHelp1": 1, "CompileHelp2": 2},
    "ProjectTypeEnum": {"ProjectTypeSingleFile": 0, "ProjectTypeSeparateFiles": 1},
    "RelatedTopicTypeEnum": {"rttTopic": 0, "rttURL": 1},
    "QbNodeTypeEnum": {"ntStandard": 0, "ntSingleTopic": 1, "ntSubContents": 2, "ntCMContents": 3},
    "QbProjectCaptionTypeEnum": {"ctDefault": 1, "ctSpecific": 2},
    "OtherFileTypeEnum": {"oftStylesheet": 0, "oftOther": 1},
    "LinkStatusTypeEnum": {"lsUnverified": 0, "lsBroken": 1, "lsOK": 2},
    "LinkTypeEnum": {"ltHyperlink": 0, "ltImage": 1},
    "ManifestTypeEnum": {"mtBooklet": 0, "mtBrowseSequence": 1},
    "EntryPageBreakEnum": {"epbDefault": 0, "epbAlways": 1, "epbNever": 2},
    "PageBreaksEnum": {"pbBeforeTopLevelEntries": 0, "pbBeforeAllEntries": 1},
    "PaperSizeEnum": {"psLetter": 1, "psA4": 9},
    "EntryNumberingEnum": {"enNone": 0, "enTopicTitles": 1, "enTopicTitlesAndHTMLHeadings": 2},
    "CheckOutStatusEnum": {"StatusCheckedIn": 0, "StatusCheckedOutWrongDirectory": 1, "StatusCheckedOutToOtherUser": 2,
                           "StatusCheckedOutToCurrentUser": 3},
    "ProjectElementTypeEnum": {"ProjectElementTableOfContents": 1, "ProjectElementManifests": 2,
                               "ProjectElementGlossary": 3, "ProjectElementTasks": 4},
}

DEFAULTS = {
    ("QbProject", "NewManifest", "ManifestType"): 0,
    ("QbProject", "SaveToDisk", "CheckForNewOrDeletedSSItems"): True,
    ("QbProject", "CheckOut", "Recurse"): False,
    ("QbProject", "CheckOut", "Comment"): "Checked out by Quillbox",
    ("QbProject", "CheckIn", "Recurse"): False,
    ("QbProject", "CheckIn", "Comment"): "Checked In by Quillbox",
    ("QbProject", "CheckIn", "KeepCheckedOut"): True,
    ("QbProject", "UndoCheckout", "Recurse"): False,
    ("QbProject", "GetLatestSSVersion", "Recurse"): False,
    ("QbNodes", "CheckOut", "Comment"): "Checked out by Quillbox",
    ("QbNodes", "CheckIn", "Comment"): "Checked In by Quillbox",
    ("QbNodes", "CheckIn", "KeepCheckedOut"): True,
    ("Topic", "CheckOut", "Comment"): "Checked Out by Quillbox",
    ("OtherFile", "CheckOut", "Comment"): "Checked Out by Quillbox",
    ("HeaderIds", "Add", "Name"): "",
    ("HeaderIds", "Add", "Value"): 0,
}


def rendered(member):
    params = ",".join(
        ("[%s]" if p["optional"] else "%s") % (("&" if p["byref"] else "") + p["name"]) for p in member["params"])
    if member.get("kind", "method") == "method":
        return f"{member['name']}({params})"
    suffix = {"property": "", "property-read": "/r", "property-write": "/w"}[member["kind"]]
    return member["name"] + suffix + (f"({params})" if params else "")


class Library(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.library = quillbox.typelib()
        cls.classes = {c["name"]: c for c in cls.library["classes"]}

    def members(self, name):
        return [rendered(member) for member in self.classes[name]["members"]]

    def test_classes_stand_in_the_published_order(self):
        self.assertEqual(self.library["library"], "Quillbox")
        self.assertEqual(list(self.classes), list(CLASSES))

    def test_members_stand_in_the_published_order(self):
        for name, members in CLASSES.items():
            if members is not None:
                with self.subTest(name):
                    self.assertEqual(self.members(name), members.split())

    def test_members_of_the_project_stand_in_the_published_order(self):
        members = self.members("QbProject")
        self.assertEqual(members[:len(PROJECT_BEFORE)], PROJECT_BEFORE)
        self.assertEqual(members[-len(PROJECT_AFTER):], PROJECT_AFTER)
        between = members[len(PROJECT_BEFORE):1 - len(PROJECT_AFTER)]
        self.assertEqual((set(between), len(between)), (PROJECT_SOURCE_CONTROL, len(PROJECT_SOURCE_CONTROL)))

    def test_members_of_a_link_stand_in_the_published_order(self):
        self.assertEqual(
            [member["name"] for member in self.classes["LinkInfo"]["members"]],
            "Topic Section LinkStatus LinkType LinkText Load SplitURL Verify ChangeLinkText LinkCaption".split())

    def test_events_have_their_arguments_and_ids_in_order(self):
        for name, described in self.classes.items():
            with self.subTest(name):
                events = described["events"]
                self.assertEqual([rendered(event) for event in events], EVENTS.get(name, "").split())
                self.assertEqual([event["id"] for event in events], list(range(1, len(events) + 1)))

    def test_enumerations_have_their_values_in_order(self):
        self.assertEqual(
            {e["name"]: {v["name"]: v["value"] for v in e["values"]} for e in self.library["enumerations"]}, ENUMERATIONS)
        self.assertEqual([e["name"] for e in self.library["enumerations"]], list(ENUMERATIONS))

    def test_each_value_is_a_name_of_the_module(self):
        for name, values in ENUMERATIONS.items():
            for value, number in values.items():
                self.assertEqual(getattr(quillbox, value), number)
                self.assertIs(getattr(getattr(quillbox, name), value), getattr(quillbox, value))

    def test_all_but_the_header_identifiers_are_creatable(self):
        for name, described in self.classes.items():
            creatable = not name.startswith("HeaderId")
            self.assertEqual(described["creatable"], creatable, name)
            if creatable:
                made = quillbox.CreateObject("Quillbox." + name)
                self.assertEqual(type(made).__name__, name)
            else:
                with self.assertRaises((TypeError, quillbox.Error)):
                    quillbox.CreateObject("Quillbox." + name)
                with self.assertRaises(TypeError):
                    getattr(quillbox, name)()

    def test_collections_have_item_as_their_default_member(self):
        for name, described in self.classes.items():
            collection = any(member["name"] == "NewEnum" for member in described["members"])
            self.assertEqual(described["default"], "Item" if collection else "", name)

    def test_defaults_of_parameters(self):
        for (name, member, parameter), default in DEFAULTS.items():
            with self.subTest(f"{name}.{member}.{parameter}"):
                found = next(m for m in self.classes[name]["members"] if m["name"] == member)
                self.assertEqual(next(p for p in found["params"] if p["name"] == parameter)["default"], default)

    def test_everything_has_a_line_of_help_and_a_known_type(self):
        plain = {"", "Boolean", "Long", "Single", "Double", "String", "Date", "Variant", "Object", "Collection"}
        known = plain | set(self.classes) | set(ENUMERATIONS) | set(dir(quillbox.platform))
        for name, described in self.classes.items():
            self.assertNotEqual(described["help"], "", name)
            for member in described["members"]:
                self.assertNotEqual(member["help"], "", f"{name}.{member['name']}")
                for typed in (member, *member["params"]):
                    self.assertIn(typed["type"], known, f"{name}.{member['name']}")


class Surface(unittest.TestCase):
    def test_an_unknown_member_or_class_is_refused(self):
        project = quillbox.QbProject()
        with self.assertRaises(AttributeError):
            project.Nonsense
        with self.assertRaises(AttributeError):
            project.Nonsense = 1
        with self.assertRaises(AttributeError):
            quillbox.Nonsense
        with self.assertRaises(quillbox.Error):
            quillbox.CreateObject("Quillbox.Nonsense")

    def test_arguments_are_checked(self):
        project = quillbox.QbProject()
        for arguments, keywords in (((), {}), ((1, 2), {}), ((), {"name": "x"}), (("x",), {"Name": "x"})):
            with self.assertRaises(TypeError):
                project.TopicByName(*arguments, **keywords)

    def test_a_value_of_another_kind_is_refused(self):
        project = quillbox.QbProject()
        for name, value in (("Dirty", "maybe"), ("CompileType", "two"), ("SpellLastCheckDateTime", 5),
                            ("Topics", quillbox.QbNodes())):
            with self.subTest(name), self.assertRaises(quillbox.Error):
                setattr(project, name, value)

    def test_a_property_that_can_only_be_read_may_be_called(self):
        project = quillbox.QbProject()
        self.assertEqual((project.ProjectDirty(), project.QualifiedName()), (False, ""))


if __name__ == "__main__":
    unittest.main()
