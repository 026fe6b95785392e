import contextlib
import os
import unittest

import quillbox
from support import GUID, Events, MachineTest, add_topic

OLD_FILE = """<TopicSet Title="Old">
<cat Name="Guides" Key="C1"/>
<topic Key="T1" Name="One" Category="C1"><c>&lt;p&gt;old body&lt;/p&gt;</c><r t="T2" cat="See also"/></topic>
<topic Key="T2" Name="Two"><r t="T1" cat="See also"/><r t="T9" cat="lost"/></topic>
<nodes><n key="N1" nt="1" ct="1" c="" i="-1" cfn="" tid="T2" url=""><n key="N2" nt="0" ct="2" c="x" i="-1" cfn="" tid=""
 url="a.html"/></n></nodes>
<glossaryitem Key="G1" Term="seed">a plant</glossaryitem>
<manifest k="M1" n="Guide" t="0"><me k="E1" t="" tid="T1"><me k="E2" t="gone" tid="T9"/></me></manifest>
</TopicSet>"""


class OldKeys(MachineTest):
    def setUp(self):
        super().setUp()
        self.p = self.project_of(OLD_FILE)

    def test_every_key_becomes_a_new_one(self):
        p = self.p
        nodes, entries = p.QbNodes.AllNodes(), p.Manifests.Item(1).Entries.AllEntries()
        keys = [item.Key for group in (p.Topics, p.TopicCategories, p.GlossaryItems, p.Manifests, nodes, entries)
                for item in group]
        self.assertEqual((len(keys), len(set(keys))), (9, 9))
        for key in keys:
            self.assertRegex(key, GUID)

    def test_items_are_found_by_their_new_keys(self):
        for collection in (self.p.Topics, self.p.TopicCategories, self.p.GlossaryItems, self.p.Manifests,
                           self.p.QbNodes):
            for item in collection:
                self.assertEqual(collection.Item(item.Key), item)
            self.assertIsNone(collection.Item("T1"))

    def test_links_still_point_to_the_right_topics(self):
        one, two = self.p.Topics
        self.assertEqual([r.ChildTopic for r in one.RelatedTopics], [two])
        self.assertEqual([r.ChildTopicKey for r in two.RelatedTopics], [one.Key, "T9"])
        self.assertEqual(self.p.QbNodes.Item(1).Topic, two)
        self.assertEqual(one.TopicCategory, self.p.TopicCategories.Item(1))
        entries = self.p.Manifests.Item(1).Entries.AllEntries()
        self.assertEqual([e.Topic for e in entries], [one, None])

    def test_content_stays_and_nothing_is_dirty(self):
        self.assertEqual(self.p.Topics.Item(1).TopicSectionData("BodyText"), "<p>old body</p>")
        self.assertEqual(self.p.Title, "Old")
        self.assertFalse(self.p.Dirty)
        events = Events(self.p)
        self.p.Title = "New"
        self.assertEqual(events.names(), ["Changed", "DirtyStateChanged"])

    def test_new_keys_are_not_made_twice(self):
        again = self.project_of(self.p.Save())
        self.assertEqual([t.Key for t in again.Topics], [t.Key for t in self.p.Topics])


class WhileLoading(MachineTest):
    TEXT = (
        '<QbProject TemplateName="Web Help" Title="T"><SpellIgnoreAllWordList>a</SpellIgnoreAllWordList>'
        '<cat Name="C" Key="{C}"/><file FileName="a.png"/><file FileName="b.png"/><Topic Key="{T}" Name="Start"/>'
        '<GlossaryItems><glossaryitem Key="{G}" Term="t">d</glossaryitem></GlossaryItems>'
        '<Manifests><manifest k="{M}" n="m" t="0"/></Manifests>'
        '<Nodes><n key="{N}" nt="0" ct="2" c="x" i="-1" cfn="" tid="" url=""/></Nodes><Tasks/></QbProject>')

    def test_progress_is_told_for_each_element_of_the_second_pass(self):
        project = self.project()
        captions = []
        project.LoadProgress.connect(captions.append)
        project.PauseEvents = True
        project.Load(self.TEXT)
        self.assertEqual(
            captions,
            ["Loading Spelling Settings", "Loading Other Files List", "Loading Other Files List", "Loading Glossary",
             "Loading Booklets", "Loading Table of Contents", "Loading Tasks"])

    def test_item_events_are_raised_and_changed_and_dirty_state_are_not(self):
        project = self.project()
        events = Events(project, without=("LoadProgress",))
        project.Load(self.TEXT)
        category, topic, node = project.TopicCategories.Item(1), project.Topics.Item(1), project.QbNodes.Item(1)
        files = list(project.OtherFiles)
        self.assertEqual(
            events,
            [("TopicTemplateChanged", "Web Help"), ("TopicCategoryChanged", category), ("TopicCategoryAdded", category),
             ("TopicAdded", topic), ("OtherFileAdded", files[0]), ("OtherFileAdded", files[1]),
             *[("QbNodeChanged", node)] * 7])
        self.assertFalse(project.Dirty)

    def test_a_setting_changed_by_a_handler_is_silent_and_the_end_of_the_load_clears_its_mark(self):
        project = self.project()
        events = Events(project, without=("LoadProgress", "OtherFileAdded"))
        seen = []

        def handler(caption):
            project.Title = caption
            seen.append(bool(project.ProjectDirty))

        project.LoadProgress.connect(handler)
        project.Load('<QbProject><file FileName="a.png"/></QbProject>')
        self.assertEqual((seen, events), ([True], []))
        self.assertEqual((project.Title, project.Dirty), ("Loading Other Files List", False))


    def test_a_handler_that_loads_again_does_no_harm(self):
        for event in ("LoadProgress", "TopicAdded", "OtherFileAdded", "TopicCategoryAdded", "TopicCategoryChanged",
                      "QbNodeChanged", "TopicTemplateChanged"):
            with self.subTest(event):
                project = self.project()
                loads = []

                def again(*_):
                    if len(loads) < 3:
                        loads.append(event)
                        project.Load(self.TEXT)

                getattr(project, event).connect(again)
                with contextlib.suppress(quillbox.Error):
                    project.Load(self.TEXT)
                self.assertEqual(loads, [event] * 3)
                project.Load("<QbProject/>")
                self.assertEqual((len(project.Topics), bool(project.Dirty)), (0, False))


class LoadFromFile(MachineTest):
    def test_a_missing_file_raises_nothing_and_changes_nothing(self):
        project = self.project()
        project.Title = "Here"
        add_topic(project)
        events = Events(project)
        project.LoadFromFile(self.path("none.qbp"))
        self.assertEqual((project.Title, project.Topics.Count, events), ("Here", 1, []))
        self.assertEqual(project.Filename.FullPath, self.path("manual.qbp"))
        self.assertTrue(project.Dirty)

    def test_a_file_is_read_and_becomes_the_file_of_the_project(self):
        path = self.write("a/there.qbp", '<QbProject Title="There"/>')
        project = quillbox.QbProject()
        project.LoadFromFile(Filename=path)
        self.assertEqual((project.Title, project.Filename.FullPath, project.Dirty), ("There", path, False))

    def test_the_file_name_is_set_after_the_load(self):
        topic_folder = os.path.join("TopicData", "{A}.xml")
        self.write(os.path.join("here", topic_folder), '<Topic Name="Found" Title=""/>')
        path = self.write("here/p.qbp", '<QbProject ProjectType="1"><Topic Key="{A}"/></QbProject>')
        project = quillbox.QbProject()
        project.Filename.Path = self.path("elsewhere", "p.qbp")
        project.LoadFromFile(path)
        self.assertEqual((project.Topics.Item("{A}").Name, project.Filename.FullPath), ("", path))
        project.LoadFromFile(path)
        self.assertEqual(project.Topics.Item("{A}").Name, "Found")

    def test_a_read_only_file_loads_normally(self):
        path = self.write("manual.qbp", '<QbProject Title="Locked"/>')
        os.chmod(path, 0o444)
        self.assertEqual(self.loaded().Title, "Locked")

    def test_files_in_other_encodings_are_read(self):
        text = '<QbProject Title="Größe"/>'
        declared = '<?xml version="1.0" encoding="%s"?>' + text
        for name, content in {
            "utf-8": text.encode(), "mark": b"\xef\xbb\xbf" + text.encode(), "utf-16": text.encode("utf-16"),
            "big endian": b"\xfe\xff" + text.encode("utf-16-be"),
            "latin": (declared % "iso-8859-1").encode("latin-1"),
            "windows": (declared % "windows-1252").encode("cp1252"),
        }.items():
            with self.subTest(name):
                self.write("manual.qbp", content)
                self.assertEqual(self.loaded().Title, "Größe")

    def test_satellite_files_that_are_missing_give_empty_collections(self):
        self.write("manual.qbp", '<QbProject ProjectType="1"><Topic Key="{A}"/><GlossaryItems/><Manifests/><Nodes/>'
                                 "<Tasks/></QbProject>")
        project = self.loaded()
        self.assertEqual([t.Key for t in project.Topics], ["{A}"])
        self.assertEqual([t.Status for t in project.Topics], ["In Progress"])
        for collection in (project.GlossaryItems, project.Manifests, project.QbNodes, project.Tasks):
            self.assertEqual((len(collection), collection.Dirty), (0, False))


class FailedLoad(MachineTest):
    def test_text_that_does_not_parse_changes_nothing(self):
        project = self.project()
        add_topic(project)
        project.Dirty = False
        with self.assertFails():
            project.Load("<QbProject Title='x'>")
        events = Events(project)
        self.assertEqual((project.Title, project.Topics.Count, project.Dirty), ("", 1, False))
        project.Title = "still tells"
        self.assertEqual(events.names(), ["Changed", "DirtyStateChanged"])

    def test_a_failure_in_the_second_half_leaves_the_project_loading_and_partly_filled(self):
        project = self.project()
        with self.assertFails("Mystery"):
            project.Load('<QbProject Title="New"><topic Key="{A}"/><topic Key="{B}"><s k="Mystery">x</s></topic>'
                         '<topic Key="{C}"/></QbProject>')
        self.assertEqual((project.Title, [t.Key for t in project.Topics]), ("New", ["{A}"]))
        events = Events(project)
        project.Title = "unheard"
        self.assertEqual(events, [])
        project.Load("<QbProject/>")
        project.Title = "heard"
        self.assertEqual(events.names(), ["Changed", "DirtyStateChanged"])


if __name__ == "__main__":
    unittest.main()
