import unittest

import quillbox
from quillbox import ByRef, epbAlways, epbDefault, epbNever
from support import GUID, Events, add_topic, saved
from test_manifests import ManifestTest


class Entries(ManifestTest):
    def test_a_new_entry_has_key_topic_and_title_and_is_not_added(self):
        manifest = self.add()
        entry = manifest.NewManifestEntry(self.topic, "Own")
        self.assertRegex(entry.Key, GUID)
        self.assertEqual((entry.Manifest, entry.Topic, entry.Title, len(manifest.Entries)), (manifest, self.topic, "Own", 0))
        self.assertEqual(
            (entry.PageBreakBefore, entry.PageBreakAfter, entry.ParentEntry, len(entry.ChildEntries)),
            (epbDefault, epbDefault, None, 0))
        self.assertEqual(entry.ChildEntries.Parent, entry)

    def test_the_runtime_title_is_the_own_one_else_that_of_the_topic(self):
        entry = self.add().NewManifestEntry(Topic=self.topic, Title="Own")
        self.assertEqual(entry.RuntimeTitle, "Own")
        entry.Title = ""
        self.assertEqual(entry.RuntimeTitle, "Getting started")
        self.assertEqual(saved(entry, "me").get("t"), "")
        entry.Topic = None
        self.assertEqual((entry.RuntimeTitle, entry.Topic), ("", None))

    def test_each_notifying_setter_is_told_by_manifest_and_project(self):
        manifest = self.add()
        entry = manifest.NewManifestEntry(None, "")
        events = Events(manifest, self.p)
        for name, value in (("PageBreakBefore", epbAlways), ("PageBreakAfter", epbNever), ("Title", "t"),
                            ("Topic", self.topic), ("ParentEntry", entry)):
            self.p.Dirty = False
            events.clear()
            setattr(entry, name, value)
            self.assertEqual(getattr(entry, name), value)
            self.assertEqual(
                events,
                [("ManifestEntryChanged", entry), ("ManifestEntryChanged", manifest, entry), ("DirtyStateChanged",),
                 ("DirtyStateChanged",)], name)
            self.assertTrue(self.p.Manifests.Dirty)
        events.clear()
        entry.Key, entry.RuntimePageBreak, entry.RuntimeEntryNumber = "{K}", True, "1"
        entry.RuntimePageNumberStart = entry.RuntimePageNumberEnd = 3
        self.assertEqual(events, [])

    def test_an_entry_without_a_manifest_cannot_be_changed(self):
        with self.assertFails():
            quillbox.ManifestEntry().Title = "x"

    def test_runtime_numbers_are_those_of_the_topic_where_there_is_one(self):
        manifest = self.add()
        first, second = manifest.NewManifestEntry(self.topic, ""), manifest.NewManifestEntry(self.topic, "")
        alone = manifest.NewManifestEntry(None, "x")
        for name, one, two in (("RuntimeEntryNumber", "1", "2"), ("RuntimePageNumberStart", 4, 5),
                               ("RuntimePageNumberEnd", 6, 7)):
            setattr(first, name, one)
            setattr(second, name, two)
            self.assertEqual((getattr(first, name), getattr(self.topic, name)), (two, two))
            setattr(alone, name, one)
            self.assertEqual((getattr(alone, name), getattr(self.topic, name)), (one, two))
        first.RuntimePageBreak = True
        self.assertEqual((bool(first.RuntimePageBreak), bool(second.RuntimePageBreak)), (True, False))

    def test_entries_are_walked_parents_first(self):
        manifest, order = self.tree()
        self.assertEqual(list(manifest.Entries.AllEntries), order)
        self.assertEqual(list(manifest.Entries.AllEntries()), order)
        col = quillbox.ManifestEntries()
        self.assertEqual(manifest.Entries.AllEntries(col), col)
        self.assertEqual((list(col), col.Parent), (order, None))
        holder = ByRef()
        manifest.Entries.AllEntries(col=holder)
        self.assertEqual(len(holder.value), 6)
        with self.assertFails():
            manifest.Entries.AllEntries(col)

    def test_an_entry_is_found_at_any_depth_and_removed_at_its_own_level_alone(self):
        manifest, (one, two, a, b, deep, three) = self.tree()
        entries = manifest.Entries
        self.assertEqual((entries.Item(deep.Key), entries.Item(2), len(entries)), (deep, two, 3))
        self.assertIsNone(entries.Item("none"))
        self.assertIsNone(entries.Item(4))
        with self.assertFails():
            entries.Remove(deep.Key)
        b.ChildEntries.Remove(deep.Key)
        self.assertIsNone(entries.Item(deep.Key))

    def test_a_position_out_of_range_asks_the_children(self):
        manifest, (one, two, *_) = self.tree()
        children = [self.entry(two.ChildEntries, str(n)) for n in range(3)]
        self.assertEqual(manifest.Entries.Item(5), children[2])

    def test_adding_at_the_top_tells_the_manifest_and_below_an_entry_nobody(self):
        manifest, order = self.tree()
        entry = manifest.NewManifestEntry(None, "new")
        self.p.Dirty = False
        events = Events(manifest)
        manifest.Entries.Add(entry, entry.Key)
        self.assertEqual((events.taken(), bool(self.p.Manifests.Dirty)), ([("ManifestEntryAdded", entry)], True))
        self.p.Dirty = False
        order[0].ChildEntries.Add(manifest.Entries.Item(1), "k")
        self.assertEqual((events, self.p.Dirty), ([], False))

    def test_removing_tells_the_manifest_at_every_level(self):
        manifest, (one, two, a, *_) = self.tree()
        for entries, entry in ((manifest.Entries, one), (two.ChildEntries, a)):
            self.p.Dirty = False
            events = Events(manifest)
            entries.Remove(entry.Key)
            self.assertEqual((events, bool(self.p.Manifests.Dirty)), ([("ManifestEntryRemoved", entry)], True))

    def test_of_two_entries_of_a_topic_the_first_is_found(self):
        manifest, order = self.tree()
        for entry in (order[4], order[5]):
            entry.Topic = self.topic
        self.assertEqual(manifest.EntryByTopic(self.topic), order[4])
        self.assertIsNone(manifest.EntryByTopic(T=add_topic(self.p, "Other")))

    def test_removing_a_topic_without_a_key_leaves_entries_without_a_topic_alone(self):
        manifest = self.add()
        entry = manifest.NewManifestEntry(None, "Cover")
        manifest.Entries.Add(entry, entry.Key)
        keyless = quillbox.Topic()
        keyless.Title = "Keyless"
        self.p.Topics.Add(keyless)
        self.p.Topics.Remove(2)
        self.assertEqual(entry.Title, "Cover")


if __name__ == "__main__":
    unittest.main()
