import unittest
from datetime import datetime

import quillbox
from support import GUID, ZERO_DATE, Events, MachineTest, add_topic

TEXTS = {
    "Title": "Handbook",
    "CMPFileName": "/a/related.cmp",
    "OutputFileName": "/out/help.chm",
    "Help2Namespace": "NS.One",
    "Help2FileID": "File1",
    "HelpContextIDHeaderFile": "/a/ids.h",
    "TemplateName": "Web Help",
    "SSProject": "$/Manual/",
}


class Settings(MachineTest):
    def setUp(self):
        super().setUp()
        self.p = quillbox.QbProject()

    def test_a_new_project_is_empty_and_not_dirty(self):
        p = self.p
        self.assertFalse(p.Dirty)
        self.assertFalse(p.ProjectDirty)
        self.assertFalse(p.TopicsDirty)
        for collection in (p.Topics, p.TopicCategories, p.OtherFiles, p.Tasks, p.QbNodes, p.GlossaryItems,
                           p.Manifests, p.VariableValues, p.SpellIgnoreAllWordList):
            self.assertEqual(len(collection), 0)
        self.assertEqual((p.Filename.FullPath, p.QualifiedName), ("", ""))
        self.assertIsNone(p.IncrementingValues)
        self.assertIsNone(p.HeaderIds)

    def test_every_text_setting_is_empty_at_first_and_holds_what_is_written(self):
        for name, text in TEXTS.items():
            with self.subTest(name):
                self.assertEqual(getattr(self.p, name), "")
                setattr(self.p, name, text)
                self.assertEqual(getattr(self.p, name), text)

    def test_text_of_any_script_round_trips(self):
        for text in ("ä \u03a9 \u65e5\u672c \U0001f331", "a\tb\r\nc", " blank ends ", "<&\"'>]]>"):
            self.p.Title = text
            self.assertEqual(self.p.Title, text)

    def test_name_is_accepted_discarded_and_reads_the_title(self):
        events = Events(self.p)
        self.p.Name = "ignored"
        self.assertEqual((self.p.Name, self.p.Title, events), ("", "", []))
        self.p.Title = "Real"
        self.p.Name = "ignored"
        self.assertEqual((self.p.Name, self.p.Title), ("Real", "Real"))

    def test_compile_type_below_one_reads_as_html_help_one(self):
        self.assertEqual(self.p.CompileType, quillbox.CompileHTMLHelp1)
        for value in (quillbox.CompileNone, -3):
            self.p.CompileType = value
            self.assertEqual(self.p.CompileType, quillbox.CompileHTMLHelp1)
        self.p.CompileType = quillbox.CompileHelp2
        self.assertEqual(self.p.CompileType, quillbox.CompileTypeEnum.CompileHelp2)

    def test_the_date_of_the_spelling_check_is_zero_at_first_and_naive(self):
        self.assertEqual(self.p.SpellLastCheckDateTime, ZERO_DATE)
        self.p.SpellLastCheckDateTime = datetime(2004, 3, 5, 17, 9, 2)
        self.assertEqual(self.p.SpellLastCheckDateTime, datetime(2004, 3, 5, 17, 9, 2))

    def test_project_type(self):
        self.assertEqual(self.p.ProjectType, quillbox.ProjectTypeSingleFile)
        self.p.ProjectType = quillbox.ProjectTypeSeparateFiles
        self.assertEqual(self.p.ProjectType, quillbox.ProjectTypeSeparateFiles)

    def test_qualified_name_is_the_full_path_of_the_file(self):
        self.p.Filename.Path = self.path("manual.qbp")
        self.assertEqual(self.p.QualifiedName, self.path("manual.qbp"))

    def test_what_can_only_be_read_cannot_be_written(self):
        for name in ("GlossaryItems", "ProjectDirty", "QualifiedName", "HeaderIds", "SortedTopics", "Template"):
            with self.subTest(name), self.assertRaises(AttributeError):
                setattr(self.p, name, None)

    def test_content_collections_can_be_replaced(self):
        for name, made in {
            "Topics": quillbox.Topics(), "QbNodes": quillbox.QbNodes(), "OtherFiles": quillbox.OtherFiles(),
            "Tasks": quillbox.Tasks(), "Manifests": quillbox.Manifests(),
            "TopicCategories": quillbox.TopicCategories(), "Filename": quillbox.platform.FileSystemObject(),
        }.items():
            with self.subTest(name):
                setattr(self.p, name, made)
                self.assertEqual(getattr(self.p, name), made)
        self.assertFalse(self.p.Dirty)

    def test_the_glossary_is_made_on_first_read_and_knows_its_project(self):
        self.assertEqual(self.p.GlossaryItems, self.p.GlossaryItems)
        self.assertEqual(self.p.GlossaryItems.QbProject, self.p)

    def test_collections_know_their_project_and_do_not_keep_it_alive(self):
        topics = self.p.Topics
        self.assertEqual(topics.QbProject, self.p)
        del self.p
        self.assertIsNone(topics.QbProject)


class Dirty(MachineTest):
    def setUp(self):
        super().setUp()
        self.p = self.project()

    def flags(self):
        p = self.p
        return {name: bool(value) for name, value in (
            ("project", p.ProjectDirty), ("topics", p.TopicsDirty), ("tasks", p.Tasks.Dirty),
            ("glossary", p.GlossaryItems.Dirty), ("manifests", p.Manifests.Dirty), ("nodes", p.QbNodes.Dirty)
        ) if value}

    def test_settings_mark_the_project_file(self):
        for name, text in TEXTS.items():
            self.p.Dirty = False
            setattr(self.p, name, text)
            self.assertEqual(self.flags(), {} if name == "TemplateName" else {"project": True}, name)
        self.p.Dirty = False
        for name, value in (("CompileType", 2), ("SpellLastCheckDateTime", datetime(2020, 1, 1)),
                            ("ProjectType", 1), ("SSActivated", True), ("SSActivated", False)):
            setattr(self.p, name, value)
            self.assertEqual(self.flags(), {"project": True}, name)
            self.p.Dirty = False

    def test_dirty_is_true_while_any_of_the_six_flags_is(self):
        p = self.p
        for owner in (p.Tasks, p.GlossaryItems, p.Manifests, p.QbNodes):
            owner.Dirty = True
            self.assertTrue(p.Dirty)
            self.assertFalse(p.ProjectDirty)
            owner.Dirty = False
            self.assertFalse(p.Dirty)
        p.TopicsDirty = True
        self.assertTrue(p.Dirty)
        self.assertFalse(p.ProjectDirty)

    def test_dirty_false_clears_all_flags_and_dirty_true_sets_one(self):
        p = self.p
        for owner in (p.Tasks, p.GlossaryItems, p.Manifests, p.QbNodes):
            owner.Dirty = True
        p.TopicsDirty = True
        p.Dirty = True
        self.assertEqual(len(self.flags()), 6)
        p.Dirty = False
        self.assertEqual(self.flags(), {})
        p.Dirty = True
        self.assertEqual(self.flags(), {"project": True})

    def test_a_task_leaves_the_project_file_clean(self):
        task = self.p.NewTask()
        self.p.Tasks.Add(task, task.Key)
        self.assertEqual(self.flags(), {"tasks": True})

    def test_a_change_of_a_topic_marks_the_topics_alone(self):
        topic = add_topic(self.p)
        self.p.Dirty = False
        topic.Title = "New"
        self.assertEqual(self.flags(), {"topics": True})
        self.assertTrue(topic.Dirty)

    def test_paused_topics_mark_the_topics_all_the_same(self):
        topic = add_topic(self.p)
        self.p.Dirty = False
        self.p.Topics.PauseEvents = True
        events = Events(self.p)
        self.p.FireTopicChanged(topic)
        self.assertEqual(self.flags(), {"topics": True})
        self.assertEqual(events, [("DirtyStateChanged",)])

    def test_pause_is_true_only_while_all_six_collections_are_paused(self):
        p = self.p
        six = (p.Topics, p.QbNodes, p.GlossaryItems, p.OtherFiles, p.Tasks, p.TopicCategories)
        self.assertFalse(p.PauseEvents)
        p.Topics.PauseEvents = True
        self.assertFalse(p.PauseEvents)
        p.PauseEvents = True
        self.assertTrue(p.PauseEvents)
        self.assertTrue(all(collection.PauseEvents for collection in six))
        for collection in six:
            collection.PauseEvents = False
            self.assertFalse(p.PauseEvents)
            collection.PauseEvents = True
        p.PauseEvents = False
        self.assertFalse(any(collection.PauseEvents for collection in six))


class Factories(MachineTest):
    def setUp(self):
        super().setUp()
        self.p = self.project()

    def test_a_new_topic_has_a_key_a_date_and_the_first_status_and_is_not_added(self):
        events = Events(self.p)
        topic = self.p.NewTopic()
        self.assertRegex(topic.Key, GUID)
        self.assertNow(topic.CreatedOn)
        self.assertEqual((topic.ModifiedOn, topic.Status), (ZERO_DATE, "Draft"))
        self.assertEqual((topic.QbProject, topic.PauseEvents, topic.Dirty), (self.p, False, False))
        self.assertEqual((self.p.Topics.Count, events, self.p.Dirty), (0, [], False))

    def test_a_new_category_has_a_key(self):
        category = self.p.NewTopicCategory()
        self.assertRegex(category.Key, GUID)
        self.assertEqual((category.QbProject, category.Name, self.p.TopicCategories.Count), (self.p, "", 0))

    def test_a_new_other_file_has_its_name(self):
        file = self.p.NewOtherFile(self.path("a.png"))
        self.assertEqual((file.Filename.FullPath, file.QbProject), (self.path("a.png"), self.p))
        self.assertEqual((self.p.OtherFiles.Count, bool(file.NewFlag)), (0, True))

    def test_a_new_glossary_item_has_a_key_its_term_and_definition(self):
        item = self.p.NewGlossaryItem(Definition="What it is", Term="It")
        self.assertRegex(item.Key, GUID)
        self.assertEqual((item.Term, item.Definition, item.QbProject), ("It", "What it is", self.p))
        self.assertEqual(self.p.GlossaryItems.Count, 0)
        self.assertTrue(self.p.GlossaryItems.Dirty)

    def test_a_new_task_has_a_key_and_no_stamps(self):
        task = self.p.NewTask()
        self.assertRegex(task.Key, GUID)
        self.assertEqual((task.QbProject, task.PauseEvents, task.ModifiedBy), (self.p, False, ""))
        self.assertEqual((task.ModifiedOn, self.p.Tasks.Count, self.p.Dirty), (ZERO_DATE, 0, False))

    def test_keys_are_never_the_same(self):
        keys = {self.p.NewTopic().Key for _ in range(100)}
        self.assertEqual(len(keys), 100)

    def test_a_topic_is_found_by_its_name_in_any_case_and_the_first_one_wins(self):
        first = add_topic(self.p, "Überblick")
        add_topic(self.p, "ÜBERBLICK")
        self.assertEqual(self.p.TopicByName("überblick"), first)
        self.assertEqual(self.p.TopicByName(Name="ÜBERBLICK"), first)
        self.assertIsNone(self.p.TopicByName("none"))
        first.Name = "Else"
        self.assertEqual(self.p.TopicByName("else"), first)

    def test_sorted_topics_are_a_fresh_list_without_a_project(self):
        topics = [add_topic(self.p, name) for name in ("pear", "apple", "fig", "apple")]
        events = Events(self.p)
        found = self.p.SortedTopics
        self.assertEqual(list(found), [topics[1], topics[3], topics[2], topics[0]])
        self.assertEqual(found.Item(topics[0].Key), topics[0])
        self.assertIsNone(found.QbProject)
        self.assertNotEqual(found, self.p.SortedTopics)
        found.Remove(1)
        self.assertEqual((self.p.Topics.Count, events), (4, []))

    def test_an_ignored_word_is_kept_once_and_marks_nothing(self):
        for word in ("Quillbox", "quillbox", "qbp"):
            self.p.SpellAddIgnoreAllWord(word)
        self.assertEqual(list(self.p.SpellIgnoreAllWordList), ["Quillbox", "qbp"])
        self.assertEqual(self.p.SpellIgnoreAllWordList.Item("QBP"), "qbp")
        self.assertFalse(self.p.Dirty)

    def test_plain_collections_take_items_with_keys_and_places(self):
        words = self.p.SpellIgnoreAllWordList
        words.Add("b", "k")
        words.Add("a", Before="k")
        words.Add("c", Key="c", After=2)
        self.assertEqual([words.Item(1), words["k"], words[3]], ["a", "b", "c"])
        words.Remove("K")
        self.assertEqual((list(words), words.Count), (["a", "c"], 2))
        with self.assertFails():
            words.Item("k")
        with self.assertFails():
            words.Remove(3)
        with self.assertFails():
            words.Add("d", "C")
        with self.assertFails():
            words.Add("d", Before="none")
        self.assertEqual(list(words), ["a", "c"])


if __name__ == "__main__":
    unittest.main()
