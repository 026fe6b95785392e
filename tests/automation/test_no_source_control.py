"""What the members of source control say on a machine without the client."""

import os
import unittest

import quillbox
from quillbox.platform import HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE, WriteRegistryValue
from support import SETTINGS_KEY, Events, MachineTest, add_topic
from test_project_file import full_project

SOURCE_CONTROL_KEY = "Software\\Microsoft\\SourceSafe"


class Session(MachineTest):
    def test_the_client_is_not_available_and_there_is_no_session(self):
        root, project = quillbox.Root(), self.project()
        self.assertFalse(root.IsSourceSafeAvailable())
        self.assertFalse(quillbox.IsSourceSafeAvailable())
        self.assertIsNone(root.VSSDatabase)
        self.assertIsNone(project.VSSDatabase)
        with self.assertFails():
            quillbox.platform.VSSDatabase()

    def test_without_settings_database_and_login_are_empty(self):
        root = quillbox.Root()
        self.assertEqual((root.SSDatabase, root.SSUser, root.SSPassword), ("", "", ""))

    def test_login_and_database_come_from_the_settings_of_the_user(self):
        WriteRegistryValue(HKEY_LOCAL_MACHINE, SOURCE_CONTROL_KEY, "Current Database", "/machine/srcsafe.ini")
        self.assertEqual(quillbox.Root().SSDatabase, "/machine/srcsafe.ini")
        for name, value in (("SSDatabase", "/mine/srcsafe.ini"), ("SSUser", "ann"), ("SSPassword", "secret")):
            WriteRegistryValue(HKEY_CURRENT_USER, SETTINGS_KEY, name, value)
        self.assertEqual(
            [quillbox.SSDatabase, quillbox.SSUser, quillbox.SSPassword], ["/mine/srcsafe.ini", "ann", "secret"])

    def test_a_database_folder_becomes_its_ini_file_and_an_ini_file_stays(self):
        self.write("db/srcsafe.ini", "")
        self.write("db/OTHER.INI", "")
        self.write("db/data.mdb", "")
        for setting, database in (
            (self.path("db"), self.path("db", "srcsafe.ini")),
            (self.path("db") + os.sep, self.path("db", "srcsafe.ini")),
            (self.path("db", "srcsafe.ini"), self.path("db", "srcsafe.ini")),
            (self.path("db", "OTHER.INI"), self.path("db", "OTHER.INI")),
            (self.path("db", "data.mdb"), self.path("db", "srcsafe.ini")),
            (self.path("none"), self.path("none")),
        ):
            WriteRegistryValue(HKEY_CURRENT_USER, SETTINGS_KEY, "SSDatabase", setting)
            self.assertEqual(quillbox.Root().SSDatabase, database, setting)


class Project(MachineTest):
    def setUp(self):
        super().setUp()
        self.p = self.project()

    def test_a_spec_reads_with_a_final_slash_and_an_empty_one_empty(self):
        for written, read in (("$/A", "$/A/"), ("$/A/", "$/A/"), ("", "")):
            self.p.SSProject = written
            self.assertEqual(self.p.SSProject, read)

    def test_folders_and_their_specs(self):
        self.p.SSProject = "$/A"
        self.assertEqual(
            [self.p.TopicDataPath, self.p.ProjectDataPath, self.p.TopicDataSpec, self.p.ProjectDataSpec],
            [self.path("TopicData") + os.sep, self.path("ProjectData") + os.sep, "$/A/TopicData\\", "$/A/ProjectData\\"])

    def test_specs_of_the_elements(self):
        self.p.SSProject = "$/A"
        topic = add_topic(self.p)
        file = self.p.NewOtherFile(self.path("images", "a.png"))
        self.assertEqual(
            [e.SSSpec for e in (self.p.QbNodes, self.p.GlossaryItems, self.p.Tasks, self.p.Manifests, topic, file)],
            ["$/A/ProjectData\\TableOfContents.xml", "$/A/ProjectData\\Glossary.xml", "$/A/ProjectData\\Tasks.xml",
             "$/A/ProjectData\\Manifests.xml", f"$/A/TopicData\\{topic.Key}.xml", "$/A/images/a.png"])
        self.assertEqual(self.p.Manifests.LocalSpec, self.path("ProjectData", "Manifests.xml"))

    def test_an_activated_project_acts_as_not_activated_and_saves_so(self):
        self.p.SSActivated = True
        self.assertEqual((self.p.SSActivated, self.p.ProjectType), (False, quillbox.ProjectTypeSingleFile))
        again = self.project_of('<QbProject SSActivated="True" ProjectType="0"/>')
        self.assertEqual((again.SSActivated, again.ProjectType), (False, quillbox.ProjectTypeSingleFile))
        self.assertIn('SSActivated="False"', again.Save())

    def test_nothing_exists_and_everything_reads_checked_in(self):
        self.p.SSProject = "$/A"
        p = self.p
        self.assertEqual(
            [p.IsProjectFileInSourceSafe, p.IsGlossaryInSourceSafe, p.IsTOCInSourceSafe, p.IsManifestsInSourceSafe,
             p.IsProjectFolderInSourceSafe, p.DoesSSProjectExist("$/A"), p.DoesSSItemExist(Spec="$/A/x")], [False] * 7)
        self.assertIsNone(p.VSSItem("$/A"))
        self.assertEqual(p.GetCheckOutStatus("$/A/x", CheckOutPath=self.folder), quillbox.StatusCheckedIn)
        self.assertEqual((p.CheckOutStatus, p.CheckedOut, p.IsDifferent), (quillbox.StatusCheckedIn, False, False))
        self.assertIsNone(p.CreateSourceSafeProjectFolder("$/A/B"))

    def test_commands_of_the_project_give_false_without_a_box_or_an_event(self):
        add_topic(self.p)
        self.p.Topics.Item(1).NewTopicFlag = False
        events = Events(self.p)
        for command, arguments in (("CheckOut", {}), ("CheckOut", {"Recurse": True, "Comment": "x"}), ("CheckIn", {}),
                                   ("CheckIn", {"KeepCheckedOut": False}), ("UndoCheckout", {"Recurse": True}),
                                   ("GetLatestSSVersion", {"Recurse": True})):
            with self.subTest(command, **arguments):
                self.assertEqual(getattr(self.p, command)(**arguments), False)
        self.assertEqual((events, self.boxes.shown), ([], []))


class Elements(MachineTest):
    def test_collections(self):
        project = full_project(self, separate=True)
        project.SaveToDisk()
        events = Events(project)
        for element in (project.QbNodes, project.GlossaryItems, project.Tasks, project.Manifests):
            with self.subTest(type(element).__name__):
                self.assertEqual(element.CheckOutStatus, quillbox.StatusCheckedIn)
                self.assertEqual(
                    [element.IsCheckedOut, element.IsDifferent, element.ReadOnly, element.CheckOut(),
                     element.CheckOut(Comment="x"), element.CheckIn(KeepCheckedOut=False), element.UndoCheckout(),
                     element.GetLatestVersion()], [False] * 8)
                self.assertEqual((element.CheckIn(), element.CheckIn("c", True)), (True, True))
        self.assertEqual((events, self.boxes.shown), ([], []))

    def test_a_check_in_of_a_dirty_collection_saves_it_first(self):
        project = full_project(self, separate=True)
        project.SaveToDisk()
        project.GlossaryItems.Item(1).Term = "changed"
        project.GlossaryItems.CheckIn()
        self.assertEqual(self.xml("ProjectData/Glossary.xml")[0].get("Term"), "changed")

    def test_topics_and_other_files(self):
        project = full_project(self, separate=True)
        project.SaveToDisk()
        for element in (project.Topics.Item(1), project.OtherFiles.Item(1)):
            events = Events(project, element)
            with self.subTest(type(element).__name__):
                self.assertEqual(element.CheckOutStatus, quillbox.StatusCheckedIn)
                self.assertEqual(
                    [element.CheckedOut, element.IsCheckedOut, element.IsDifferent, element.ReadOnly,
                     element.CheckOut("x"), element.CheckIn(KeepCheckedOut=False), element.UndoCheckout(),
                     element.GetLatestSSVersion()], [False] * 8)
                self.assertEqual((element.CheckIn(), element.CheckedOutToUser), (True, ""))
                self.assertEqual(events, [])

    def test_a_new_topic_reads_as_checked_out_here_and_may_be_written(self):
        project = self.project(separate=True)
        topic = add_topic(project)
        self.assertEqual(topic.CheckOutStatus, quillbox.StatusCheckedOutToCurrentUser)
        self.assertEqual(
            (bool(topic.CheckedOut), bool(topic.IsCheckedOut), bool(topic.ReadOnly), topic.CheckedOutToUser),
            (True, True, False, ""))


class ReadOnly(MachineTest):
    def lock_all(self):
        for folder, _, names in os.walk(self.folder):
            for name in names:
                os.chmod(os.path.join(folder, name), 0o444)

    def elements(self, project):
        return [project, project.QbNodes, project.GlossaryItems, project.Tasks, project.Manifests,
                project.Topics.Item(1), project.OtherFiles.Item(1)]

    def test_in_a_single_file_project_nothing_is_read_only(self):
        self.write("images/a.png", "x")
        project = full_project(self)
        project.SaveToDisk()
        self.lock_all()
        self.assertEqual([bool(e.ReadOnly) for e in self.elements(self.loaded())], [False] * 7)

    def test_in_a_separate_files_project_the_attribute_of_the_file_says_it(self):
        self.write("images/a.png", "x")
        full_project(self, separate=True).SaveToDisk()
        self.assertEqual([bool(e.ReadOnly) for e in self.elements(self.loaded())], [False] * 7)
        self.lock_all()
        self.assertEqual([bool(e.ReadOnly) for e in self.elements(self.loaded())], [True] * 7)

    def test_topics_and_other_files_ask_once_until_the_project_type_changes(self):
        self.write("images/a.png", "x")
        full_project(self, separate=True).SaveToDisk()
        project = self.loaded()
        topic, file = project.Topics.Item(1), project.OtherFiles.Item(1)
        self.assertFalse(topic.ReadOnly or file.ReadOnly or project.Tasks.ReadOnly)
        self.lock_all()
        self.assertFalse(topic.ReadOnly or file.ReadOnly)
        self.assertTrue(project.Tasks.ReadOnly and project.ReadOnly)
        project.ProjectType = quillbox.ProjectTypeSeparateFiles
        self.assertFalse(topic.ReadOnly)
        project.ProjectType = quillbox.ProjectTypeSingleFile
        project.ProjectType = quillbox.ProjectTypeSeparateFiles
        self.assertTrue(topic.ReadOnly)

    def test_a_new_topic_is_never_read_only(self):
        project = self.project(separate=True)
        topic = add_topic(project)
        os.chmod(self.write(f"TopicData/{topic.Key}.xml", "<Topic/>"), 0o444)
        self.assertFalse(topic.ReadOnly)
        topic.NewTopicFlag = False
        self.assertTrue(topic.ReadOnly)


if __name__ == "__main__":
    unittest.main()
