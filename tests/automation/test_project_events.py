import unittest
from datetime import datetime

import quillbox
from support import Events, MachineTest, add_child, add_node, add_topic

DIRTY = ("DirtyStateChanged",)
CHANGED = ("Changed",)


class EventTest(MachineTest):
    def setUp(self):
        super().setUp()
        self.p = self.project()
        self.events = Events(self.p)

    def assertRaised(self, *expected):
        self.assertEqual(self.events.taken(), list(expected))


class OfSettings(EventTest):
    def test_a_setting_raises_changed_and_then_the_dirty_state(self):
        for name in ("Title", "CMPFileName", "OutputFileName", "Help2Namespace", "Help2FileID",
                     "HelpContextIDHeaderFile", "SSProject"):
            for _ in range(2):
                setattr(self.p, name, "same value")
                self.assertRaised(CHANGED, DIRTY)

    def test_project_type_and_source_control_raise_changed_too(self):
        self.p.ProjectType = quillbox.ProjectTypeSeparateFiles
        self.assertRaised(CHANGED, DIRTY)
        self.p.SSActivated = True
        self.assertRaised(CHANGED, DIRTY)
        self.p.SSActivated = False
        self.assertRaised(CHANGED, DIRTY)

    def test_compile_type_and_spelling_date_raise_the_dirty_state_alone(self):
        self.p.CompileType = quillbox.CompileHelp2
        self.p.SpellLastCheckDateTime = datetime(2020, 2, 2)
        self.assertRaised(DIRTY, DIRTY)

    def test_the_template_name_is_told_and_marks_nothing(self):
        self.p.TemplateName = "Web Help"
        self.assertRaised(CHANGED, ("TopicTemplateChanged", "Web Help"))
        self.assertFalse(self.p.Dirty)
        self.p.Topics.PauseEvents = True
        self.p.TemplateName = "HTML Help"
        self.assertRaised(CHANGED)

    def test_dirty_true_tells_once_and_dirty_false_twice(self):
        self.p.Dirty = True
        self.assertRaised(DIRTY)
        self.p.Dirty = False
        self.assertRaised(DIRTY, DIRTY)

    def test_topics_dirty_tells_only_when_set(self):
        self.p.TopicsDirty = True
        self.p.TopicsDirty = True
        self.assertRaised(DIRTY, DIRTY)
        self.p.TopicsDirty = False
        self.assertRaised()

    def test_collections_tell_when_they_become_dirty(self):
        for collection in (self.p.GlossaryItems, self.p.Manifests, self.p.QbNodes):
            collection.Dirty = True
            self.assertRaised(DIRTY)
            collection.Dirty = False
            self.assertRaised()
        self.p.Tasks.Dirty = True
        self.p.Tasks.Dirty = False
        self.assertRaised(DIRTY, DIRTY)

    def test_a_handler_runs_before_the_project_is_marked_and_may_change_it(self):
        seen = []

        def handler():
            seen.append((self.p.Title, bool(self.p.ProjectDirty)))
            if len(seen) == 1:
                self.p.Title = "second"

        connection = self.p.Changed.connect(handler)
        self.p.Title = "first"
        self.assertEqual(seen, [("first", False), ("second", False)])
        self.assertEqual(self.p.Title, "second")
        connection.disconnect()
        self.p.Title = "third"
        self.assertEqual(len(seen), 2)

    def test_an_exception_in_a_handler_reaches_the_caller_before_the_mark(self):
        def handler():
            raise ValueError("not now")

        self.p.Changed.connect(handler)
        with self.assertFails("not now") as caught:
            self.p.Title = "x"
        self.assertIsInstance(caught.exception.__cause__, ValueError)
        self.assertEqual(self.p.Title, "x")
        self.assertFalse(self.p.Dirty)


class OfTopics(EventTest):
    def setUp(self):
        super().setUp()
        self.t = add_topic(self.p, "Start")
        self.p.Dirty = False
        self.events.clear()

    def test_adding_and_removing(self):
        topic = self.p.NewTopic()
        self.p.Topics.Add(topic, topic.Key)
        self.assertRaised(("TopicAdded", topic), DIRTY, DIRTY)
        self.assertTrue(self.p.TopicsDirty and self.p.ProjectDirty)
        self.p.Topics.Remove(topic.Key)
        self.assertRaised(("TopicRemoved", topic), DIRTY, DIRTY)

    def test_a_property_of_a_topic(self):
        for name in ("Name", "Title", "Notes", "Status", "LayoutName", "HelpContextIDs", "ContentsTitle"):
            setattr(self.t, name, "text")
            self.assertRaised(("TopicChanged", self.t), DIRTY)
        for name in ("IsDefault", "IncludeInHelpFile", "AutoGenerateIndexEntry", "AllStylesheets"):
            setattr(self.t, name, True)
            self.assertRaised(("TopicChanged", self.t), DIRTY)

    def test_text_of_a_section(self):
        self.t.TopicSectionData["BodyText"] = "<p>one</p>"
        section = self.t.TopicSections.Item("BodyText")
        changed = [("TopicSectionChanged", self.t, section), DIRTY, ("TopicChanged", self.t), DIRTY]
        self.assertRaised(*changed)
        self.t.TopicSectionData["BodyText"] = "<p>two</p>"
        self.assertRaised(*changed)
        self.t.TopicSectionData["BodyText"] = "<p>two</p>"
        self.assertRaised()
        section.Data = "<p>two</p>"
        self.assertRaised(*changed[:2])

    def test_see_also_links(self):
        link = quillbox.RelatedTopic()
        link.ParentTopic = self.t
        self.assertRaised(("TopicRelatedTopicChanged", self.t, link), DIRTY, ("TopicChanged", self.t), DIRTY)
        self.t.RelatedTopics.Add(link)
        self.assertRaised(("TopicRelatedTopicsChanged", self.t), DIRTY, ("TopicChanged", self.t), DIRTY)
        self.t.RelatedTopics.Remove(1)
        self.assertRaised(("TopicRelatedTopicsChanged", self.t), DIRTY, ("TopicChanged", self.t), DIRTY)

    def test_a_removed_topic_leaves_its_title_in_nodes_and_entries(self):
        self.t.ContentsTitle = "Frozen"
        node = add_child(add_node(self.p.QbNodes, "Book"), topic=self.t)
        other = add_node(self.p.QbNodes, "Other")
        other.TopicID = self.t.Key
        manifest = self.p.NewManifest("Booklet")
        self.p.Manifests.Add(manifest, manifest.Key)
        entry = manifest.NewManifestEntry(self.t, "")
        manifest.Entries.Add(entry, entry.Key)
        self.p.Topics.Remove(self.t.Key)
        self.assertEqual(
            (node.CaptionText, node.QbNodeType, node.CaptionType, node.TopicID),
            ("Frozen", quillbox.ntStandard, quillbox.ctSpecific, ""))
        self.assertEqual((other.CaptionText, other.TopicID), ("Other", self.t.Key))
        self.assertEqual((entry.Title, entry.Topic, entry.RuntimeTitle), ("Frozen", None, "Frozen"))

    def test_a_handler_of_the_removal_runs_before_the_repair_and_after_the_removal(self):
        node = add_node(self.p.QbNodes, topic=self.t)
        seen = []
        self.p.TopicRemoved.connect(lambda topic: seen.append((self.p.Topics.Count, node.QbNodeType)))
        self.p.Topics.Remove(1)
        self.assertEqual(seen, [(0, quillbox.ntSingleTopic)])
        self.assertEqual(node.QbNodeType, quillbox.ntStandard)

    def test_fire_topic_removed_repairs_by_itself_and_while_paused(self):
        node = add_node(self.p.QbNodes, topic=self.t)
        self.p.PauseEvents = True
        self.events.clear()
        self.p.FireTopicRemoved(self.t)
        self.assertEqual((node.QbNodeType, node.CaptionText), (quillbox.ntStandard, "Start"))
        self.assertEqual(set(self.events.taken()), {DIRTY})


class OfOtherContent(EventTest):
    def test_categories(self):
        category = self.p.NewTopicCategory()
        category.Name = "Guides"
        self.assertRaised(("TopicCategoryChanged", category), DIRTY)
        self.p.TopicCategories.Add(category, category.Key)
        self.assertRaised(("TopicCategoryAdded", category), DIRTY)
        self.p.TopicCategories.Remove(category.Key)
        self.assertRaised(("TopicCategoryRemoved", category), DIRTY)

    def test_other_files(self):
        file = self.p.NewOtherFile(self.path("a.png"))
        self.p.OtherFiles.Add(file, file.Filename.FullPath)
        self.assertRaised(("OtherFileAdded", file), DIRTY)
        self.p.OtherFiles.Remove(1)
        self.assertRaised(("OtherFileRemoved", file), DIRTY)

    def test_glossary(self):
        item = self.p.NewGlossaryItem("term", "meaning")
        self.assertRaised(("GlossaryItemChanged", item), DIRTY, ("GlossaryItemChanged", item), DIRTY)
        self.p.GlossaryItems.Add(item, item.Key)
        self.assertRaised(("GlossaryItemAdded", item), DIRTY, DIRTY)
        self.p.GlossaryItems.Remove(item.Key)
        self.assertRaised(("GlossaryItemRemoved", item), DIRTY, DIRTY)

    def test_tasks(self):
        task = self.p.NewTask()
        self.assertRaised()
        task.Title = "Write"
        self.assertRaised(("TaskChanged", task), DIRTY)
        self.p.Tasks.Add(task, task.Key)
        self.assertRaised(("TaskAdded", task), DIRTY)
        self.p.Tasks.Remove(task.Key)
        self.assertRaised(("TaskRemoved", task), DIRTY)

    def test_contents_nodes(self):
        node = self.p.QbNodes.NewNode(None)
        self.assertRaised()
        node.CaptionText = "Book"
        self.assertRaised(("QbNodeChanged", node), DIRTY, DIRTY)
        self.p.QbNodes.Remove(node.Key)
        self.assertRaised(("QbNodeRemoved", node), DIRTY, DIRTY)
        self.p.QbNodes.Add(node, node.Key)
        self.assertRaised(DIRTY)

    def test_manifests(self):
        manifest = self.p.NewManifest("Guide")
        self.assertRaised(("ManifestChanged", manifest), DIRTY, ("ManifestChanged", manifest), DIRTY)
        self.p.Manifests.Add(manifest, manifest.Key)
        self.assertRaised(DIRTY)
        entry = manifest.NewManifestEntry(None, "Cover")
        changed = [("ManifestEntryChanged", manifest, entry), DIRTY, DIRTY]
        self.assertRaised(*changed, *changed)
        manifest.Entries.Add(entry, entry.Key)
        self.assertRaised(DIRTY)
        self.p.Manifests.Remove(manifest.Key)
        self.assertRaised(DIRTY)


class FireMembers(EventTest):
    def setUp(self):
        super().setUp()
        self.t = quillbox.Topic()
        made = self.p
        section, related = quillbox.TopicSection(), quillbox.RelatedTopic()
        node, category, file = quillbox.QbNode(), quillbox.TopicCategory(), quillbox.OtherFile()
        item, task = quillbox.GlossaryItem(), quillbox.Task()
        # Event: its arguments, what pauses it, and the flags that are set.
        self.pausable = {
            "TopicAdded": ([self.t], made.Topics, {"topics", "project"}),
            "TopicRemoved": ([self.t], made.Topics, {"topics", "project"}),
            "TopicChanged": ([self.t], made.Topics, {"topics"}),
            "TopicRelatedTopicsChanged": ([self.t], made.Topics, {"topics"}),
            "TopicRelatedTopicChanged": ([self.t, related], made.Topics, {"project"}),
            "TopicSectionChanged": ([self.t, section], made.Topics, {"project"}),
            "QbNodeChanged": ([node], made.QbNodes, {"nodes"}),
            "QbNodeRemoved": ([node], made.QbNodes, {"nodes"}),
            "TopicCategoryAdded": ([category], made.TopicCategories, {"project"}),
            "TopicCategoryChanged": ([category], made.TopicCategories, {"project"}),
            "TopicCategoryRemoved": ([category], made.TopicCategories, {"project"}),
            "OtherFileAdded": ([file], made.OtherFiles, {"project"}),
            "OtherFileRemoved": ([file], made.OtherFiles, {"project"}),
            "GlossaryItemAdded": ([item], made.GlossaryItems, {"glossary"}),
            "GlossaryItemChanged": ([item], made.GlossaryItems, {"glossary"}),
            "GlossaryItemRemoved": ([item], made.GlossaryItems, {"glossary"}),
            "TaskAdded": ([task], made.Tasks, set()),
            "TaskChanged": ([task], made.Tasks, set()),
            "TaskRemoved": ([task], made.Tasks, set()),
        }
        manifest, entry = quillbox.Manifest(), quillbox.ManifestEntry()
        self.unpausable = {
            "ManifestChanged": ([manifest], {"manifests"}),
            "ManifestEntryChanged": ([manifest, entry], {"manifests"}),
            "TopicCheckoutStatusChanged": ([self.t], set()),
            "OtherFileCheckoutStatusChanged": ([file], set()),
            "ProjectElementCheckOutStatusChanged": ([quillbox.ProjectElementGlossary], set()),
        }

    def fire(self, name, arguments):
        self.p.Dirty = False
        self.events.clear()
        result = getattr(self.p, "Fire" + name)(*arguments)
        raised = [event for event in self.events.taken() if event != DIRTY]
        p = self.p
        flags = {"project": p.ProjectDirty, "topics": p.TopicsDirty, "tasks": p.Tasks.Dirty, "nodes": p.QbNodes.Dirty,
                 "glossary": p.GlossaryItems.Dirty, "manifests": p.Manifests.Dirty}
        self.assertIsNone(result)
        return raised, {flag for flag, value in flags.items() if value}

    def test_each_raises_its_event_with_its_arguments_and_sets_its_flags(self):
        for name, (arguments, _, flags) in self.pausable.items():
            with self.subTest(name):
                self.assertEqual(self.fire(name, arguments), ([(name, *arguments)], flags))

    def test_a_paused_collection_holds_the_event_back_and_not_the_flags(self):
        for name, (arguments, owner, flags) in self.pausable.items():
            with self.subTest(name):
                owner.PauseEvents = True
                self.assertEqual(self.fire(name, arguments), ([], flags))
                owner.PauseEvents = False

    def test_a_paused_topic_holds_back_its_sections_and_links_alone(self):
        self.t.PauseEvents = True
        for name in ("TopicSectionChanged", "TopicRelatedTopicChanged"):
            arguments, _, flags = self.pausable[name]
            self.assertEqual(self.fire(name, arguments), ([], flags))
        self.assertEqual(self.fire("TopicChanged", [self.t]), ([("TopicChanged", self.t)], {"topics"}))

    def test_nothing_pauses_the_others(self):
        self.p.PauseEvents = True
        for name, (arguments, flags) in self.unpausable.items():
            with self.subTest(name):
                self.assertEqual(self.fire(name, arguments), ([(name, *arguments)], flags))

    def test_dirty_state(self):
        self.p.FireDirtyStateChanged()
        self.assertRaised(DIRTY)
        self.assertFalse(self.p.Dirty)


if __name__ == "__main__":
    unittest.main()
