import os
import unittest

import quillbox
from support import Events, MachineTest, element, saved


class GlossaryTest(MachineTest):
    def setUp(self):
        super().setUp()
        self.p = self.project()
        self.items = self.p.GlossaryItems

    def add(self, term, definition="", project=None):
        item = (project or self.p).NewGlossaryItem(term, definition)
        (project or self.p).GlossaryItems.Add(item, item.Key)
        return item


class Items(GlossaryTest):
    def test_an_item_alone_tells_nobody(self):
        item = quillbox.GlossaryItem()
        self.assertEqual((item.Key, item.Term, item.Definition, item.QbProject), ("", "", "", None))
        item.Key, item.Term, item.Definition = "{K}", "t", "d"
        self.assertEqual((item.Key, item.Term, item.Definition), ("{K}", "t", "d"))

    def test_a_change_is_told_and_marks_and_the_key_is_not(self):
        item = self.add("t")
        self.p.Dirty = False
        events = Events(self.p, without=("DirtyStateChanged",))
        item.Key = "{K}"
        self.assertEqual((events, self.items.Dirty), ([], False))
        item.Term = "t"
        item.Definition = "d"
        self.assertEqual(events, [("GlossaryItemChanged", item)] * 2)
        self.assertTrue(self.items.Dirty)
        self.assertFalse(self.p.ProjectDirty)

    def test_a_term_is_found_in_any_case_and_not_trimmed(self):
        api, other = self.add("api"), self.add("Überblick")
        self.assertEqual((self.items.ItemByTerm("API"), self.items.ItemByTerm(Term="ÜBERBLICK")), (api, other))
        self.assertIsNone(self.items.ItemByTerm(" API"))
        api.Term = "sdk"
        self.assertIsNone(self.items.ItemByTerm("api"))
        self.assertEqual(self.items.ItemByTerm("SDK"), api)

    def test_of_two_items_with_one_term_the_earlier_is_found(self):
        first, second = self.add("api"), self.add("API")
        self.assertEqual(len(self.items), 2)
        self.assertEqual(self.items.ItemByTerm("Api"), first)
        self.items.Remove(first.Key)
        self.assertEqual(self.items.ItemByTerm("Api"), second)

    def test_an_unknown_key_gives_none_and_cannot_be_removed(self):
        item = self.add("api")
        self.assertEqual((self.items.Item(1), self.items.Item(item.Key)), (item, item))
        self.assertIsNone(self.items.Item("none"))
        self.assertIsNone(self.items.Item(2))
        with self.assertFails("none"):
            self.items.Remove("none")

    def test_before_wins_and_an_empty_key_is_none(self):
        first = self.add("a")
        second, third = quillbox.GlossaryItem(), quillbox.GlossaryItem()
        self.items.Add(second, "", Before=1)
        self.items.Add(third, Before=2, After=2)
        self.assertEqual(list(self.items), [second, third, first])

    def test_a_pause_holds_the_events_back_and_not_the_mark(self):
        self.items.PauseEvents = True
        events = Events(self.p, without=("DirtyStateChanged",))
        item = self.add("api")
        self.p.Dirty = False
        item.Definition = "x"
        self.assertTrue(self.items.Dirty)
        self.p.Dirty = False
        self.items.Remove(1)
        self.assertTrue(self.items.Dirty)
        self.assertEqual(events, [])

    def test_a_collection_without_a_project_fails_after_the_item_went_in(self):
        items, item = quillbox.GlossaryItems(), quillbox.GlossaryItem()
        with self.assertFails():
            items.Add(item, "k")
        self.assertEqual((list(items), items.Dirty), ([item], False))
        with self.assertFails():
            items.Remove("k")
        self.assertEqual(len(items), 0)

    def test_dirty_tells_when_set_alone(self):
        events = Events(self.p)
        self.items.Dirty = True
        self.items.Dirty = False
        self.assertEqual(events, [("DirtyStateChanged",)])


class GlossaryFile(GlossaryTest):
    def test_an_item_has_its_key_its_term_and_its_definition_as_text(self):
        item = self.add("a & b", "<b>markup</b> & more")
        self.assertXml(
            saved(item, "glossaryitem"),
            f'<glossaryitem Key="{item.Key}" Term="a &amp; b">&lt;b&gt;markup&lt;/b&gt; &amp; more</glossaryitem>')
        self.assertXml(
            saved(self.items, "GlossaryItems"),
            f'<GlossaryItems><glossaryitem Key="{item.Key}" Term="a &amp; b">&lt;b&gt;markup&lt;/b&gt; &amp; more'
            "</glossaryitem></GlossaryItems>")

    def test_key_and_definition_survive_a_save_and_a_load(self):
        for definition in ("<p>x</p>", " blanks ", "a\r\nb\tc", "]]>", ""):
            item = self.add("t", definition)
            again = self.project_of(self.p.Save()).GlossaryItems.Item(item.Key)
            self.assertEqual((again.Key, again.Term, again.Definition), (item.Key, "t", definition))

    def test_a_load_tells_nothing_and_ends_clean(self):
        events = Events(self.p)
        self.items.Load(element('<x><any key="{A}" TERM="t">d</any></x>'))
        self.assertEqual([(i.Key, i.Term, i.Definition, i.QbProject) for i in self.items], [("{A}", "t", "d", self.p)])
        self.assertEqual((events, self.items.Dirty), ([], False))
        self.assertEqual(self.items.ItemByTerm("T"), self.items.Item("{A}"))

    def test_a_load_adds_to_what_is_there_and_stops_at_the_first_fault(self):
        self.items.Load(element('<x><i Key="{A}" Term="t"/></x>'))
        for fault in ('<i Key="{A}" Term="again"/>', '<i Term="no key"/>', '<i Key="{C}"/>'):
            with self.subTest(fault), self.assertFails():
                self.items.Load(element(f'<x><i Key="{{B{len(self.items)}}}" Term="t"/>{fault}</x>'))
        self.assertEqual(len(self.items), 4)

    def test_the_own_file(self):
        project = self.project(separate=True)
        item = self.add("t", "d", project)
        self.assertEqual(project.GlossaryItems.LocalSpec, self.path("ProjectData", "Glossary.xml"))
        self.assertXml(saved(project.GlossaryItems, "GlossaryItems"), "<GlossaryItems/>")
        self.assertXml(
            self.xml("ProjectData/Glossary.xml"),
            f'<Glossary><glossaryitem Key="{item.Key}" Term="t">d</glossaryitem></Glossary>')
        self.assertTrue(project.GlossaryItems.Dirty)

    def test_a_clean_glossary_is_written_only_where_its_file_is_missing(self):
        project = self.project(separate=True)
        saved(project.GlossaryItems)
        path = self.path("ProjectData", "Glossary.xml")
        self.assertXml(self.xml(path), "<Glossary/>")
        self.write(path, "untouched")
        saved(project.GlossaryItems)
        self.assertEqual(self.read(path), b"untouched")
        os.remove(path)
        saved(project.GlossaryItems)
        self.assertXml(self.xml(path), "<Glossary/>")

    def test_a_missing_file_gives_an_empty_glossary(self):
        project = self.project(separate=True)
        project.GlossaryItems.Load(None)
        self.assertEqual(len(project.GlossaryItems), 0)


if __name__ == "__main__":
    unittest.main()
