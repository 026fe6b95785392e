import gc
import unittest
import weakref

import quillbox
from support import Events, MachineTest, add_topic


class Sections(MachineTest):
    def setUp(self):
        super().setUp()
        self.p = self.project()
        self.t = add_topic(self.p)

    def test_a_topic_with_no_section_reads_empty_and_the_first_write_makes_it(self):
        self.assertEqual((self.t.TopicSectionData("BodyText"), self.t.TopicSectionData["Unknown"]), ("", ""))
        self.assertEqual(len(self.t.TopicSections), 0)
        self.t.TopicSectionData["BodyText"] = "<p>x</p>"
        section = self.t.TopicSections.Item("bodytext")
        self.assertEqual((section.Data, section.Topic, len(self.t.TopicSections)), ("<p>x</p>", self.t, 1))
        self.assertEqual(self.t.TopicSectionData(Key="BodyText"), "<p>x</p>")

    def test_a_section_knows_its_definition_by_its_key(self):
        section = self.t.NewTopicSection("BodyText")
        self.assertEqual(section.TopicSectionDef, quillbox.TopicSectionDefs.Item("BodyText"))
        self.assertEqual((section.TopicSectionDef.Key, section.TopicSectionDef.Caption), ("BodyText", "Body Text"))
        self.assertEqual(section.Data, "")

    def test_a_new_section_is_added_and_told(self):
        events = Events(self.p, without=("DirtyStateChanged",))
        section = self.t.NewTopicSection("BodyText", Data="<p>x</p>")
        self.assertEqual(self.t.TopicSections.Item(1), section)
        self.assertEqual(events, [("TopicSectionChanged", self.t, section)])

    def test_an_unknown_key_fails_and_so_does_a_second_section(self):
        with self.assertFails("Summary"):
            self.t.NewTopicSection("Summary", "x")
        with self.assertFails("Summary"):
            self.t.TopicSectionData["Summary"] = "x"
        self.assertEqual(len(self.t.TopicSections), 0)
        self.t.NewTopicSection("BodyText", "x")
        with self.assertFails("BodyText"):
            self.t.NewTopicSection("BodyText", "y")
        self.assertEqual(self.t.TopicSectionData("BodyText"), "x")

    def test_data_written_directly_is_told_each_time_unless_the_topic_is_paused(self):
        section = self.t.NewTopicSection("BodyText", "x")
        self.t.Dirty = False
        events = Events(self.p, without=("DirtyStateChanged",))
        section.Data = "x"
        section.Data = "x"
        self.assertEqual(events.taken(), [("TopicSectionChanged", self.t, section)] * 2)
        self.assertFalse(self.t.Dirty)
        self.t.PauseEvents = True
        section.Data = "y"
        self.assertEqual((section.Data, events), ("y", []))

    def test_a_section_may_stand_alone(self):
        section = quillbox.TopicSection()
        section.Data = "x"
        self.assertEqual((section.Data, section.Topic, section.TopicSectionDef), ("x", None, None))
        with self.assertFails():
            section.TopicSectionDef = None
        definition = quillbox.TopicSectionDef()
        definition.Key = "BodyText"
        section.TopicSectionDef = definition
        self.assertEqual(section.TopicSectionDef, quillbox.TopicSectionDefs.Item(1))

    def test_after_the_last_root_went_a_section_still_finds_its_definition(self):
        section = self.t.NewTopicSection("BodyText")
        root = quillbox.Root()
        before = section.TopicSectionDef
        del root
        self.assertEqual(section.TopicSectionDef.Key, "BodyText")
        self.assertNotEqual(section.TopicSectionDef, before)

    def test_a_section_is_found_by_its_caption_in_any_case(self):
        section = self.t.NewTopicSection("BodyText")
        self.assertEqual(self.t.TopicSections.TopicSectionByCaption("BODY text"), section)
        self.assertIsNone(self.t.TopicSections.TopicSectionByCaption("Summary"))

    def test_a_tag_holds_a_value_or_an_object(self):
        section = quillbox.TopicSection()
        self.assertIsNone(section.Tag)
        for tag in (5, "text", True, 1.5, self.t, None):
            section.Tag = tag
            self.assertEqual(section.Tag, tag)

    def test_a_tag_holds_its_object_for_as_long_as_the_section_lives(self):
        class Tag:
            pass

        section, tag = quillbox.TopicSection(), Tag()
        section.Tag = tag
        held = weakref.ref(tag)
        del tag
        gc.collect()
        self.assertIs(section.Tag, held())
        self.assertIsNotNone(held())
        del section
        gc.collect()
        self.assertIsNone(held())

    def test_a_tag_is_not_saved(self):
        self.t.NewTopicSection("BodyText", "x").Tag = "secret"
        self.assertNotIn("secret", self.p.Save())

    def test_lists_of_sections_and_definitions_tell_misses_apart(self):
        for collection, item in ((quillbox.TopicSections(), quillbox.TopicSection()),
                                 (quillbox.TopicSectionDefs(), quillbox.TopicSectionDef())):
            collection.Add(item, "k")
            self.assertEqual((collection.Item("K"), collection.Item(1), collection.Count), (item, item, 1))
            self.assertIsNone(collection.Item("none"))
            self.assertIsNone(collection.Item(2))
            with self.assertFails():
                collection.Add(item, "K")
            with self.assertFails():
                collection.Remove("none")
            collection.Remove("k")
            self.assertEqual(list(collection), [])

    def test_populating_twice_fails(self):
        definitions = quillbox.TopicSectionDefs()
        definitions.Populate()
        self.assertEqual([(d.Key, d.Caption) for d in definitions], [("BodyText", "Body Text")])
        with self.assertFails("BodyText"):
            definitions.Populate()


if __name__ == "__main__":
    unittest.main()
