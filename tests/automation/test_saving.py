import os
import stat
import unittest

import quillbox
from support import Events, MachineTest, add_node
from test_project_file import full_project, without_time


class TheProjectFile(MachineTest):
    def test_the_first_save_writes_the_file_and_no_backup(self):
        project = self.project()
        project.Title = "One"
        self.assertTrue(project.SaveToDisk())
        self.assertEqual(os.listdir(self.folder).count("manual.bak"), 0)
        self.assertEqual(self.xml("manual.qbp").get("Title"), "One")
        self.assertEqual(self.boxes.shown, [])

    def test_the_backup_holds_the_result_of_the_save_before(self):
        project = self.project()
        project.SaveToDisk()
        first = self.read("manual.qbp")
        project.Title = "Two"
        project.SaveToDisk()
        second = self.read("manual.qbp")
        self.assertEqual(self.read("manual.bak"), first)
        project.Title = "Three"
        project.SaveToDisk()
        self.assertEqual(self.read("manual.bak"), second)

    def test_a_file_of_the_user_with_the_name_of_the_backup_is_overwritten(self):
        project = self.project()
        project.SaveToDisk()
        self.write("manual.bak", "precious")
        project.SaveToDisk()
        self.assertIn(b"QbProject", self.read("manual.bak"))

    def test_the_extension_is_replaced_and_not_added_to(self):
        project = self.project("manual.v2.qbp")
        project.SaveToDisk()
        project.SaveToDisk()
        self.assertEqual(sorted(self.files()), ["manual.v2.bak", "manual.v2.qbp"])

    def test_a_save_clears_every_mark_and_tells_so(self):
        project = full_project(self)
        events = Events(project)
        self.assertTrue(project.SaveToDisk())
        self.assertEqual(set(events), {("DirtyStateChanged",)})
        p = project
        flags = (p.Dirty, p.ProjectDirty, p.TopicsDirty, p.Tasks.Dirty, p.GlossaryItems.Dirty, p.Manifests.Dirty,
                 p.QbNodes.Dirty, p.Topics.Item(1).Dirty, p.Topics.Item(1).NewTopicFlag, p.OtherFiles.Item(1).NewFlag)
        self.assertEqual([bool(flag) for flag in flags], [False] * 10)

    def test_a_read_only_file_ends_the_save_with_a_box_and_a_new_backup(self):
        project = self.project()
        project.SaveToDisk()
        before = self.read("manual.qbp")
        os.chmod(self.path("manual.qbp"), 0o444)
        project.Title = "Changed"
        events = Events(project)
        self.assertEqual(project.SaveToDisk(), False)
        self.assertEqual(
            self.boxes.shown,
            [(f"Could not save to '{self.path('manual.qbp')}'.  Please check that this file is accessible and is not "
              "read-only.", "Could not save", quillbox.platform.bsOK, quillbox.platform.biExclamation)])
        self.assertEqual((bool(project.Dirty), events), (True, []))
        self.assertEqual((self.read("manual.qbp"), self.read("manual.bak")), (before, before))

    def test_a_folder_that_is_not_there_ends_the_save_with_a_box(self):
        project = self.project(os.path.join("none", "manual.qbp"))
        project.Title = "x"
        self.assertFalse(project.SaveToDisk(CheckForNewOrDeletedSSItems=False))
        self.assertEqual(len(self.boxes.shown), 1)
        self.assertTrue(project.Dirty)

    def test_the_file_is_utf8_with_a_declaration(self):
        project = self.project()
        project.Title = "Größe 日本"
        project.SaveToDisk()
        content = self.read("manual.qbp")
        self.assertRegex(content.splitlines()[0].decode().lower(), r'^<\?xml version="1.0" encoding="utf-8"\?>')
        self.assertIn("Größe 日本".encode(), content)

    def test_a_save_keeps_the_permissions_of_the_file(self):
        project = self.project()
        project.SaveToDisk()
        os.chmod(self.path("manual.qbp"), 0o600)
        project.SaveToDisk()
        self.assertEqual(stat.S_IMODE(os.stat(self.path("manual.qbp")).st_mode), 0o600)

    def test_saving_what_was_loaded_changes_nothing_but_the_time(self):
        for separate in (False, True):
            with self.subTest(separate=separate):
                full_project(self, separate).SaveToDisk()
                self.loaded().SaveToDisk()
                second = self.files()
                self.loaded().SaveToDisk()
                third = self.files()
                self.assertEqual(sorted(second), sorted(third))
                for name in second:
                    if name not in ("manual.qbp", "manual.bak"):
                        self.assertEqual(second[name], third[name], name)
                lines = list(zip(second["manual.qbp"].splitlines(), third["manual.qbp"].splitlines()))
                self.assertLessEqual(sum(old != new for old, new in lines), 1)
                self.assertEqual(without_time(second["manual.qbp"]), without_time(third["manual.qbp"]))


class SeparateFiles(MachineTest):
    def setUp(self):
        super().setUp()
        self.p = full_project(self, separate=True)
        self.p.SaveToDisk()
        self.topics = [os.path.join("TopicData", topic.Key + ".xml") for topic in self.p.Topics]

    def test_each_topic_and_collection_has_a_file_of_its_own(self):
        self.assertEqual(
            sorted(self.files()),
            sorted(["manual.qbp", *self.topics,
                    *(os.path.join("ProjectData", name + ".xml")
                      for name in ("Glossary", "Manifests", "TableOfContents", "Tasks"))]))
        roots = {name: self.xml(name).tag for name in self.files() if name != "manual.qbp"}
        self.assertEqual(
            {os.path.basename(name): tag for name, tag in roots.items() if "ProjectData" in name},
            {"Glossary.xml": "Glossary", "Manifests.xml": "Manifests", "TableOfContents.xml": "Glossary",
             "Tasks.xml": "Tasks"})
        self.assertEqual({roots[name] for name in self.topics}, {"Topic"})

    def test_everything_comes_back(self):
        again = self.loaded()
        self.assertEqual([t.Name for t in again.Topics], ["Start", "Next"])
        self.assertEqual([n.CaptionText for n in again.QbNodes], ["Book"])
        self.assertEqual((again.GlossaryItems.Count, again.Tasks.Count, again.Manifests.Count), (1, 1, 1))
        self.assertEqual(again.ProjectType, quillbox.ProjectTypeSeparateFiles)
        self.assertFalse(again.Dirty)

    def mark_files(self):
        """Puts a mark into each file, so that a write shows."""
        for name in self.files():
            if name != "manual.qbp":
                self.write(name, self.read(name) + b"<!-- old -->")

    def written(self):
        return {os.path.basename(name) for name, content in self.files().items()
                if not content.endswith(b"<!-- old -->")} - {"manual.qbp", "manual.bak"}

    def test_only_what_changed_is_written(self):
        self.mark_files()
        self.p.SaveToDisk()
        self.assertEqual(self.written(), set())
        self.p.Topics.Item(1).Title = "New"
        self.p.SaveToDisk()
        self.assertEqual(self.written(), {os.path.basename(self.topics[0])})
        self.p.Tasks.Item(1).Status = "Done"
        self.p.GlossaryItems.Item(1).Term = "Seed"
        self.p.SaveToDisk()
        self.assertEqual(self.written(), {os.path.basename(self.topics[0]), "Tasks.xml", "Glossary.xml"})

    def test_a_clean_file_that_was_deleted_comes_back(self):
        for name in (self.topics[0], os.path.join("ProjectData", "TableOfContents.xml")):
            before = self.read(name)
            os.remove(self.path(name))
            self.p.SaveToDisk()
            self.assertEqual(self.read(name), before)

    def test_a_clean_topic_with_a_file_adds_its_key_alone_to_the_project_file(self):
        self.assertEqual(
            [list(t.attrib) for t in self.xml("manual.qbp").iter("Topic")], [["Key"], ["Key"]])
        self.assertNotIn("Key", self.xml(self.topics[0]).attrib)

    def test_the_file_of_a_removed_topic_stays_without_source_control(self):
        self.p.Topics.Remove(1)
        self.p.SaveToDisk()
        self.assertIn(self.topics[0], self.files())
        self.assertEqual([t.Name for t in self.loaded().Topics], ["Next"])

    def test_saving_to_text_writes_the_files_on_the_way(self):
        self.p.Topics.Item(1).Title = "By text"
        self.mark_files()
        before = self.read("manual.qbp")
        self.p.Save()
        self.assertEqual(self.written(), {os.path.basename(self.topics[0])})
        self.assertEqual(self.read("manual.qbp"), before)
        self.assertFalse(self.p.Topics.Item(1).Dirty)

    def test_an_edit_of_a_loaded_topic_reaches_its_file(self):
        again = self.loaded()
        again.Topics.Item(2).TopicSectionData["BodyText"] = "<p>edited</p>"
        again.SaveToDisk()
        self.assertEqual(self.xml(self.topics[1]).find("s").text, "<p>edited</p>")
        self.assertEqual(self.loaded().Topics.Item(2).TopicSectionData("BodyText"), "<p>edited</p>")


class Conversion(MachineTest):
    def test_a_single_file_project_becomes_separate_files_and_single_again_with_edits_between(self):
        full_project(self).SaveToDisk()
        project = self.loaded()
        project.ProjectType = quillbox.ProjectTypeSeparateFiles
        project.Topics.Item(1).Title = "Edited once"
        project.SaveToDisk()
        project = self.loaded()
        self.assertEqual((project.Topics.Item(1).Title, project.Topics.Item(2).Title), ("Edited once", "Next"))
        project.Topics.Item(2).Title = "Edited twice"
        project.ProjectType = quillbox.ProjectTypeSingleFile
        project.SaveToDisk()
        project = self.loaded()
        self.assertEqual([t.Title for t in project.Topics], ["Edited once", "Edited twice"])
        self.assertEqual(len(self.xml("manual.qbp").find("Nodes")), 1)

    def test_files_left_from_an_earlier_conversion_do_not_win(self):
        project = full_project(self)
        project.ProjectType = quillbox.ProjectTypeSeparateFiles
        project.SaveToDisk()
        project.ProjectType = quillbox.ProjectTypeSingleFile
        add_node(project.QbNodes, "Later")
        project.Topics.Item(1).Title = "Later"
        project.SaveToDisk()
        project = self.loaded()
        project.ProjectType = quillbox.ProjectTypeSeparateFiles
        project.SaveToDisk()
        again = self.loaded()
        self.assertEqual(again.Topics.Item(1).Title, "Later")
        self.assertEqual([n.CaptionText for n in again.QbNodes], ["Book", "Later"])


class FailedSave(MachineTest):
    def test_text_that_a_file_cannot_hold_names_its_place_and_touches_no_file(self):
        def topic(project):
            project.Topics.Item(1).Notes = "a\x01b"

        def body(project):
            project.Topics.Item(2).TopicSectionData["BodyText"] = "\x0b"

        def term(project):
            project.GlossaryItems.Item(1).Term = "bad\x02"

        def node(project):
            project.QbNodes.Item(1).StandardURL = "\x1f"

        def title(project):
            project.Title = "\x00"

        def half(project):
            project.Tasks.Item(1).Notes = "\ud800"

        for separate in (False, True):
            for spoil, place in ((topic, "Start"), (body, "Next"), (term, "bad"), (node, "Book"), (title, "Title"),
                                 (half, "Proofread")):
                with self.subTest(place, separate=separate):
                    project = full_project(self, separate)
                    project.SaveToDisk()
                    before = self.files()
                    with self.assertFails(place):
                        spoil(project)
                        project.SaveToDisk()
                    self.assertEqual(self.files(), before)

    def test_a_topic_whose_key_is_no_file_name_writes_nothing_outside_its_folder(self):
        for key in ("../outside", "a/b", "..\\outside"):
            with self.subTest(key):
                project = self.project(separate=True)
                topic = project.NewTopic()
                topic.Key = key
                project.Topics.Add(topic, key)
                with self.assertFails(key):
                    project.SaveToDisk()
                self.assertLessEqual(set(self.files()), {"manual.qbp", "manual.bak"})


if __name__ == "__main__":
    unittest.main()
