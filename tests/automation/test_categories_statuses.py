import os
import unittest

import quillbox
from support import Events, MachineTest, add_topic, element, saved


class Categories(MachineTest):
    def setUp(self):
        super().setUp()
        self.p = self.project()
        self.categories = self.p.TopicCategories

    def add(self, name):
        category = self.p.NewTopicCategory()
        category.Name = name
        self.categories.Add(category, category.Key)
        return category

    def test_items_are_found_by_position_key_and_name(self):
        guides, reference = self.add("Guides"), self.add("Reference")
        self.assertEqual((self.categories.Item(2), self.categories.Item(guides.Key)), (reference, guides))
        self.assertEqual(self.categories.TopicCategoryByName("REFERENCE"), reference)
        self.assertIsNone(self.categories.TopicCategoryByName("none"))
        self.assertIsNone(self.categories.Item("none"))
        self.assertIsNone(self.categories.Item(3))

    def test_of_equal_names_the_first_is_found(self):
        first = self.add("Same")
        self.add("same")
        self.assertEqual(self.categories.TopicCategoryByName("SAME"), first)

    def test_renaming_tells_and_marks_and_leaves_the_key(self):
        category = self.add("Guides")
        key = category.Key
        self.p.Dirty = False
        events = Events(self.p)
        category.Name = "Tutorials"
        self.assertEqual(events, [("TopicCategoryChanged", category), ("DirtyStateChanged",)])
        self.assertTrue(self.p.ProjectDirty)
        self.assertEqual((category.Name, category.Key), ("Tutorials", key))

    def test_a_paused_collection_does_not_reach_the_project_and_a_rename_still_marks(self):
        self.categories.PauseEvents = True
        category = self.p.NewTopicCategory()
        events = Events(self.p, without=("DirtyStateChanged",))
        self.categories.Add(category, category.Key)
        self.assertFalse(self.p.Dirty)
        category.Name = "Quiet"
        self.assertEqual(events, [])
        self.assertTrue(self.p.Dirty)
        self.p.Dirty = False
        self.categories.Remove(category.Key)
        self.assertEqual((self.p.Dirty, events, len(self.categories)), (False, [], 0))

    def test_a_category_without_a_project_cannot_be_named(self):
        with self.assertFails():
            quillbox.TopicCategory().Name = "x"

    def test_removing_an_unknown_key_fails_and_a_key_that_is_taken_too(self):
        category = self.add("Guides")
        with self.assertFails():
            self.categories.Remove("none")
        with self.assertFails():
            self.categories.Add(category, category.Key)
        self.assertEqual(list(self.categories), [category])

    def test_a_topic_keeps_a_removed_category_while_it_lives_and_loses_it_by_saving(self):
        category = self.add("Guides")
        topic = add_topic(self.p)
        topic.TopicCategory = category
        self.categories.Remove(1)
        self.assertEqual(topic.TopicCategory, category)
        self.assertIsNone(self.project_of(self.p.Save()).Topics.Item(1).TopicCategory)

    def test_the_element_has_name_and_key(self):
        category = self.add("A & B")
        self.assertXml(saved(category, "cat"), f'<cat Name="A &amp; B" Key="{category.Key}"/>')

    def test_a_load_tells_and_needs_both_attributes(self):
        category = quillbox.TopicCategory()
        category.QbProject = self.p
        events = Events(self.p)
        category.Load(element('<cat name="N" KEY="{K}"/>'))
        self.assertEqual((category.Key, category.Name), ("{K}", "N"))
        self.assertEqual(events, [("TopicCategoryChanged", category), ("DirtyStateChanged",)])
        for text in ('<cat Name="N"/>', '<cat Key="K"/>'):
            with self.assertFails():
                category.Load(element(text))


class Statuses(MachineTest):
    def test_the_file_gives_the_list_in_its_order(self):
        statuses = quillbox.Root().TopicStatuses
        self.assertEqual(
            [(s.Name, s.Caption, s.Icon) for s in statuses],
            [("Draft", "A draft", "draft.png"), ("In Progress", "Being written", "progress.png")])
        self.assertEqual(statuses.Item("draft"), statuses.Item(1))
        self.assertIsNone(statuses.Item("none"))

    def test_the_installation_offers_in_progress(self):
        os.environ["QUILLBOX_REGISTRY"] = self.path("empty")
        self.assertIsNotNone(quillbox.Root().TopicStatuses.Item("In Progress"))

    def test_a_status_without_an_icon_stops_the_load_and_the_error_goes_to_the_first_caller(self):
        self.write(
            "install/Configuration/statuscodes.xml",
            '<a><b Name="One" Caption="1" Icon="1"/><b Name="Two" Caption="2"/><b Name="Three" Caption="3" Icon=""/></a>')
        root = quillbox.Root()
        with self.assertFails("Icon", "statuscodes.xml"):
            root.TopicStatuses
        self.assertEqual([s.Name for s in root.TopicStatuses], ["One"])
        self.assertEqual(self.project().NewTopic().Status, "One")

    def test_a_name_that_comes_twice_fails_and_those_before_it_stay(self):
        statuses = quillbox.TopicStatuses()
        status = '<s Name="%s" Caption="" Icon=""/>'
        with self.assertFails("a"):
            statuses.Load(element("<x>" + status % "A" + status % "a" + status % "B" + "</x>"))
        self.assertEqual([s.Name for s in statuses], ["A"])

    def test_an_empty_list_gives_no_first_status(self):
        self.write("install/Configuration/statuscodes.xml", "<none/>")
        self.assertIsNone(quillbox.Root().TopicStatuses.Item(1))
        self.assertEqual(self.project().NewTopic().Status, "")

    def test_a_status_file_that_does_not_parse_does_not_stop_a_new_topic(self):
        self.write("install/Configuration/statuscodes.xml", "<none")
        self.assertEqual(self.project().NewTopic().Status, "")

    def test_a_status_holds_three_texts(self):
        status = quillbox.TopicStatus()
        self.assertEqual((status.Name, status.Caption, status.Icon), ("", "", ""))
        status.Name, status.Caption, status.Icon = "N", "C", "I"
        self.assertEqual((status.Name, status.Caption, status.Icon), ("N", "C", "I"))

    def test_saving_writes_an_empty_element_a_status(self):
        root = quillbox.Root()
        self.assertXml(saved(root.TopicStatuses.Item(1), "Status"), "<Status/>")
        self.assertXml(saved(root.TopicStatuses, "list"), "<list><Status/><Status/></list>")

    def test_the_list_can_be_changed_for_the_process(self):
        root = quillbox.Root()
        status = quillbox.TopicStatus()
        status.Name = "First"
        root.TopicStatuses.Add(status, "First", Before=1)
        self.assertEqual(self.project().NewTopic().Status, "First")
        root.TopicStatuses.Remove("First")
        with self.assertFails():
            root.TopicStatuses.Remove("First")

    def test_a_topic_may_hold_a_status_that_is_not_in_the_list(self):
        topic = self.project().NewTopic()
        topic.Status = "Unheard of"
        self.assertEqual(topic.Status, "Unheard of")


if __name__ == "__main__":
    unittest.main()
