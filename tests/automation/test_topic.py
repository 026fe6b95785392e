import unittest
from datetime import datetime

import quillbox
from support import ZERO_DATE, Events, MachineTest, add_topic, element, saved


class Properties(MachineTest):
    def setUp(self):
        super().setUp()
        self.t = quillbox.Topic()

    def test_a_new_topic_has_its_defaults(self):
        t = self.t
        for name in ("Key", "Name", "Title", "ContentsTitle", "InternalContentsTitle", "Notes", "Status", "LayoutName",
                     "HelpContextIDs", "QualifiedName", "RuntimeEntryNumber"):
            self.assertEqual(getattr(t, name), "", name)
        for name in ("NewTopicFlag", "AllStylesheets", "AutoGenerateIndexEntry", "IncludeInHelpFile"):
            self.assertTrue(getattr(t, name), name)
        for name in ("IsDefault", "Dirty", "PauseEvents"):
            self.assertFalse(getattr(t, name), name)
        self.assertEqual((t.CreatedOn, t.ModifiedOn), (ZERO_DATE, ZERO_DATE))
        self.assertEqual((t.QbProject, t.TopicCategory), (None, None))
        self.assertEqual((t.RuntimePageNumberStart, t.RuntimePageNumberEnd), (0, 0))
        for collection in (t.Keywords, t.StyleSheets, t.TopicSections, t.RelatedTopics):
            self.assertEqual(len(collection), 0)

    def test_every_property_holds_what_is_written(self):
        for name in ("Name", "Title", "Notes", "Status", "LayoutName", "HelpContextIDs", "ContentsTitle"):
            setattr(self.t, name, f"{name} ä")
            self.assertEqual(getattr(self.t, name), f"{name} ä")
        for name in ("IsDefault", "IncludeInHelpFile", "AutoGenerateIndexEntry", "AllStylesheets", "NewTopicFlag"):
            for value in (True, False):
                setattr(self.t, name, value)
                self.assertEqual(getattr(self.t, name), value)
        for name, value in (("Key", "{K}"), ("RuntimeEntryNumber", "2.1"), ("RuntimePageNumberStart", 7),
                            ("RuntimePageNumberEnd", 9)):
            setattr(self.t, name, value)
            self.assertEqual(getattr(self.t, name), value)
        self.assertEqual(self.t.QualifiedName, self.t.Name)

    def test_a_change_marks_and_stamps_a_topic_without_a_project_too(self):
        self.t.Title = "New"
        self.assertTrue(self.t.Dirty)
        self.assertNow(self.t.ModifiedOn)

    def test_dates_are_stored_and_mark_nothing(self):
        self.t.CreatedOn = self.t.ModifiedOn = datetime(2004, 3, 5, 17, 9, 2)
        self.assertEqual((self.t.CreatedOn, self.t.ModifiedOn), (datetime(2004, 3, 5, 17, 9, 2),) * 2)
        self.assertFalse(self.t.Dirty)

    def test_the_contents_title_falls_back_on_the_title(self):
        self.t.Title = "Title"
        self.assertEqual((self.t.ContentsTitle, self.t.InternalContentsTitle), ("Title", ""))
        self.t.ContentsTitle = "Contents"
        self.assertEqual((self.t.ContentsTitle, self.t.InternalContentsTitle), ("Contents", "Contents"))

    def test_what_can_only_be_read_cannot_be_written(self):
        for name in ("InternalContentsTitle", "StyleSheets", "QualifiedName", "RelatedTopics", "LocalSpec"):
            with self.subTest(name), self.assertRaises(AttributeError):
                setattr(self.t, name, None)

    def test_dirty_needs_a_project_when_set_and_not_when_cleared(self):
        with self.assertFails():
            self.t.Dirty = True
        self.t.Dirty = False
        self.assertFalse(self.t.Dirty)
        project = self.project()
        self.t.QbProject = project
        self.t.Dirty = True
        self.assertTrue(project.ProjectDirty)
        self.t.Dirty = False
        self.assertTrue(project.ProjectDirty)

    def test_members_that_need_a_project_fail_without_one(self):
        with self.assertFails():
            self.t.LocalSpec
        with self.assertFails():
            saved(self.t)
        with self.assertFails():
            self.t.Load(element('<t Key="{K}"/>'))

    def test_a_topic_does_not_keep_its_project_alive(self):
        self.t.QbProject = project = self.project()
        self.assertEqual(self.t.QbProject, project)
        del project
        self.assertIsNone(self.t.QbProject)

    def test_a_category_can_be_set_and_cleared_and_is_not_kept_alive(self):
        category = quillbox.TopicCategory()
        self.t.TopicCategory = category
        self.assertEqual(self.t.TopicCategory, category)
        self.t.TopicCategory = None
        self.assertIsNone(self.t.TopicCategory)
        self.t.TopicCategory = category
        del category
        self.assertIsNone(self.t.TopicCategory)

    def test_keywords_are_appended_and_may_repeat(self):
        for word in ("a", "b", "a"):
            self.t.AddKeyword(word)
        self.assertEqual(list(self.t.Keywords), ["a", "b", "a"])
        self.assertTrue(self.t.Dirty)
        self.t.Keywords = quillbox.platform.Collection()
        self.assertEqual(len(self.t.Keywords), 0)

    def test_the_local_file_stands_in_the_topic_folder_under_the_key(self):
        project = self.project()
        topic = project.NewTopic()
        self.assertEqual(topic.LocalSpec, self.path("TopicData", topic.Key + ".xml"))


class Paused(MachineTest):
    def test_a_paused_change_does_nothing_but_store(self):
        project = self.project()
        topic = add_topic(project)
        topic.Dirty = project.Dirty = False
        topic.ModifiedOn = ZERO_DATE
        topic.PauseEvents = True
        events = Events(project)
        topic.Title = "New"
        topic.AddKeyword("k")
        topic.RelatedTopics.Add(quillbox.RelatedTopic())
        topic.FireChanged()
        self.assertEqual((topic.Title, topic.Dirty, topic.ModifiedOn), ("New", False, ZERO_DATE))
        self.assertEqual((events, project.Dirty), ([], False))

    def test_the_own_events_of_a_paused_topic_are_raised_all_the_same(self):
        topic = add_topic(self.project())
        topic.PauseEvents = True
        events = Events(topic)
        topic.AllStylesheets = False
        topic.AddStyleSheet("a.css")
        topic.TopicSectionData["BodyText"] = "x"
        self.assertEqual(
            events.names(),
            ["TopicStyleSheetsChanged", "TopicStyleSheetAdded", "TopicStyleSheetsChanged", "TopicSectionDataChanged"])

    def test_a_pause_does_not_survive_a_load(self):
        project = self.project()
        topic = project.NewTopic()
        topic.PauseEvents = True
        topic.Load(element('<Topic Key="{K}"/>'))
        self.assertFalse(topic.PauseEvents)


class StyleSheets(MachineTest):
    def setUp(self):
        super().setUp()
        self.p = self.project()
        self.t = add_topic(self.p)
        self.t.AllStylesheets = False
        self.events = Events(self.t)

    def test_adding_and_removing_tell_the_name(self):
        self.t.AddStyleSheet(Filename="a.css")
        self.assertEqual(
            self.events.taken(), [("TopicStyleSheetAdded", "a.css"), ("TopicStyleSheetsChanged",)])
        self.t.RemoveStyleSheet("A.CSS")
        self.assertEqual(
            self.events.taken(), [("TopicStyleSheetRemoved", "A.CSS"), ("TopicStyleSheetsChanged",)])
        self.assertEqual(len(self.t.StyleSheets), 0)
        self.assertFalse(self.t.AllStylesheets)

    def test_a_second_one_of_the_same_name_fails(self):
        self.t.AddStyleSheet("a.css")
        self.events.clear()
        with self.assertFails("a.css"):
            self.t.AddStyleSheet("a.css")
        self.assertEqual((list(self.t.StyleSheets), self.events), (["a.css"], []))

    def test_removing_one_that_is_not_there_tells_all_the_same(self):
        self.t.Dirty = False
        self.t.RemoveStyleSheet("none.css")
        self.assertEqual(self.events.names(), ["TopicStyleSheetRemoved", "TopicStyleSheetsChanged"])
        self.assertTrue(self.t.Dirty)

    def test_all_stylesheets_throws_the_selection_away_for_good(self):
        self.t.AddStyleSheet("a.css")
        self.t.AllStylesheets = True
        self.assertEqual(len(self.t.StyleSheets), 0)
        self.t.AllStylesheets = False
        self.assertEqual(len(self.t.StyleSheets), 0)

    def test_a_stylesheet_is_included_when_all_are_or_it_is_selected(self):
        self.t.AddStyleSheet("css/a.css")
        self.assertTrue(self.t.IncludeStylesheet("css/a.css"))
        self.assertTrue(self.t.IncludeStylesheet("css\\a.css"))
        self.assertFalse(self.t.IncludeStylesheet("css/b.css"))
        self.t.AllStylesheets = True
        self.assertTrue(self.t.IncludeStylesheet(RelativeFileName="css/b.css"))


class OwnEvents(MachineTest):
    def test_fire_changed_tells_and_stamps(self):
        project = self.project()
        topic = project.NewTopic()
        events = Events(project)
        topic.FireChanged()
        self.assertEqual(events, [("TopicChanged", topic), ("DirtyStateChanged",)])
        self.assertTrue(topic.Dirty)
        self.assertNow(topic.ModifiedOn)

    def test_fire_related_topic_changed_tells_and_stamps(self):
        project = self.project()
        topic, related = project.NewTopic(), quillbox.RelatedTopic()
        events = Events(project, without=("DirtyStateChanged",))
        topic.FireRelatedTopicChanged(related)
        self.assertEqual(events, [("TopicRelatedTopicChanged", topic, related), ("TopicChanged", topic)])

    def test_fire_topic_section_changed_tells_and_does_not_stamp(self):
        project = self.project()
        topic, section = project.NewTopic(), quillbox.TopicSection()
        events = Events(project, without=("DirtyStateChanged",))
        topic.FireTopicSectionChanged(section)
        self.assertEqual(events, [("TopicSectionChanged", topic, section)])
        self.assertEqual((topic.Dirty, topic.ModifiedOn), (False, ZERO_DATE))

    def test_text_written_twice_is_told_once(self):
        topic = add_topic(self.project())
        events = Events(topic)
        for text in ("<p>a</p>", "<p>a</p>", "<p>A</p>"):
            topic.TopicSectionData["BodyText"] = text
        section = topic.TopicSections.Item("BodyText")
        self.assertEqual(events, [("TopicSectionDataChanged", section)] * 2)

    def test_a_topic_without_a_project_may_change_its_links_and_sections(self):
        topic = quillbox.Topic()
        topic.RelatedTopics.Add(quillbox.RelatedTopic())
        topic.TopicSectionData["BodyText"] = "x"
        self.assertTrue(topic.Dirty)
        self.assertEqual(topic.TopicSectionData("BodyText"), "x")


if __name__ == "__main__":
    unittest.main()
