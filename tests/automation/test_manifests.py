import os
import unittest

import quillbox
from quillbox import epbAlways, epbDefault, epbNever, mtBooklet, mtBrowseSequence
from support import GUID, Events, MachineTest, add_topic, element, saved


class ManifestTest(MachineTest):
    def setUp(self):
        super().setUp()
        self.p = self.project()
        self.topic = add_topic(self.p, "Start", "Getting started")

    def add(self, name="Guide", kind=mtBooklet):
        manifest = self.p.NewManifest(name, kind)
        self.p.Manifests.Add(manifest, manifest.Key)
        return manifest

    def entry(self, entries, title="", topic=None, parent=None):
        manifest = self.p.Manifests.Item(1)
        entry = manifest.NewManifestEntry(topic, title)
        entry.ParentEntry = parent
        entries.Add(entry, entry.Key)
        return entry

    def tree(self):
        """1, 2 with children 2.1 and 2.2, which has 2.2.1, and 3."""
        manifest = self.add()
        one = self.entry(manifest.Entries, "one")
        two = self.entry(manifest.Entries, "two")
        a = self.entry(two.ChildEntries, "two a", parent=two)
        b = self.entry(two.ChildEntries, "two b", parent=two)
        deep = self.entry(b.ChildEntries, "deep", parent=b)
        three = self.entry(manifest.Entries, "three")
        return manifest, [one, two, a, b, deep, three]


class NewManifest(ManifestTest):
    def test_a_booklet_takes_its_properties_from_the_configuration(self):
        manifest = self.p.NewManifest("Guide")
        self.assertRegex(manifest.Key, GUID)
        self.assertEqual(
            (manifest.Name, manifest.ManifestType, manifest.QbProject, len(self.p.Manifests)),
            ("Guide", mtBooklet, self.p, 0))
        booklet = manifest.BookletProperties
        self.assertEqual((booklet.TemplateName, booklet.MarginRight, booklet.HeaderHTML, booklet.EntryNumbering),
                         ("Print", 11.5, "top", quillbox.enTopicTitlesAndHTMLHeadings))
        self.assertEqual(booklet.Manifest, manifest)

    def test_a_browse_sequence_keeps_the_bare_defaults(self):
        manifest = self.p.NewManifest(Name="Walk", ManifestType=mtBrowseSequence)
        self.assertEqual((manifest.ManifestType, manifest.BookletProperties.TemplateName), (mtBrowseSequence, ""))

    def test_a_root_of_another_name_is_passed_over(self):
        for root in ("bookletproperties", "Other"):
            self.write("install/Configuration/bookletproperties.xml", f"<{root} TemplateName='x'/>")
            self.assertEqual(self.p.NewManifest("m").BookletProperties.TemplateName, "")

    def test_a_missing_or_broken_file_fails_a_booklet_alone(self):
        path = self.write("install/Configuration/bookletproperties.xml", "<BookletProperties")
        with self.assertFails(path):
            self.p.NewManifest("m")
        os.remove(path)
        with self.assertFails(path):
            self.p.NewManifest("m")
        self.assertEqual(self.p.NewManifest("m", mtBrowseSequence).Name, "m")


class OfAManifest(ManifestTest):
    def test_a_manifest_alone_has_its_defaults(self):
        manifest = quillbox.Manifest()
        self.assertEqual(
            (manifest.Key, manifest.Name, manifest.Notes, manifest.ManifestType, bool(manifest.IncludeFlag)),
            ("", "", "", mtBooklet, False))
        self.assertEqual((manifest.Entries.Parent, manifest.QbProject, len(manifest.Entries)), (manifest, None, 0))
        manifest.Name, manifest.Notes, manifest.IncludeFlag = "n", "x", True
        self.assertEqual((manifest.Name, manifest.Notes, bool(manifest.IncludeFlag)), ("n", "x", True))
        self.assertEqual(manifest.QualifiedName, "n_Manifest")

    def test_changes_are_told_by_the_manifest_and_by_the_project(self):
        manifest = self.add()
        self.p.Dirty = False
        events = Events(manifest, self.p)
        told = [("Changed",), ("ManifestChanged", manifest), ("DirtyStateChanged",)]
        manifest.Name = manifest.Name
        self.assertEqual(events.taken(), told)
        manifest.Notes = "x"
        manifest.ManifestType = mtBrowseSequence
        manifest.FireChanged()
        manifest.BookletProperties.Title = "T"
        self.assertEqual(events.taken(), told * 4)
        self.assertTrue(self.p.Manifests.Dirty)
        self.assertFalse(self.p.ProjectDirty)
        manifest.Key = "{K}"
        self.assertEqual(events, [])

    def test_the_include_flag_tells_only_when_it_changes(self):
        manifest = self.add()
        events = Events(manifest)
        manifest.IncludeFlag = False
        self.assertEqual(events.taken(), [])
        manifest.IncludeFlag = True
        manifest.IncludeFlag = True
        self.assertEqual(events, [("Changed",)])

    def test_adding_and_removing_manifests_marks_and_tells_no_event(self):
        events = Events(self.p, without=("DirtyStateChanged",))
        manifest = quillbox.Manifest()
        self.p.Dirty = False
        self.p.Manifests.Add(manifest, "k")
        self.assertTrue(self.p.Manifests.Dirty)
        self.p.Dirty = False
        self.assertEqual((self.p.Manifests.Item("K"), self.p.Manifests.Item(1)), (manifest, manifest))
        self.assertIsNone(self.p.Manifests.Item("none"))
        with self.assertFails("none"):
            self.p.Manifests.Remove("none")
        with self.assertFails("k"):
            self.p.Manifests.Add(manifest, "k")
        self.p.Manifests.Remove(1)
        self.assertEqual((bool(self.p.Manifests.Dirty), events), (True, []))

    def test_fire_members_of_entries(self):
        manifest, entry = self.add(), quillbox.ManifestEntry()
        events = Events(manifest, self.p)
        manifest.FireManifestEntryAdded(entry)
        manifest.FireManifestEntryRemoved(entry)
        self.assertEqual(
            events.taken(),
            [("ManifestEntryAdded", entry), ("DirtyStateChanged",), ("ManifestEntryRemoved", entry),
             ("DirtyStateChanged",)])
        manifest.FireManifestEntryChanged(entry)
        # Both the manifest and the project have an event of that name.
        self.assertEqual(
            events,
            [("ManifestEntryChanged", entry), ("ManifestEntryChanged", manifest, entry), ("DirtyStateChanged",),
             ("DirtyStateChanged",)])


class ManifestFile(ManifestTest):
    def test_the_elements_have_their_attributes_in_order(self):
        manifest, (one, two, *_) = self.tree()
        two.ChildEntries.Remove(1)
        two.ChildEntries.Remove(1)
        manifest.Entries.Remove(3)
        one.Topic, one.PageBreakBefore, one.PageBreakAfter = self.topic, epbAlways, epbNever
        manifest.Notes, manifest.IncludeFlag = "a note", True
        root = saved(manifest, "manifest")
        booklet = root[-1]
        root.remove(booklet)
        self.assertEqual(booklet.tag, "bookletproperties")
        self.assertXml(
            root,
            f'<manifest k="{manifest.Key}" n="Guide" t="0" i="True">a note<me k="{one.Key}" t="one" tid="{self.topic.Key}" '
            f'pbb="1"/><me k="{two.Key}" t="two" tid="" pbb="0"/></manifest>')

    def test_everything_but_the_break_after_comes_back(self):
        manifest, order = self.tree()
        order[0].Topic, order[0].PageBreakBefore, order[0].PageBreakAfter = self.topic, epbNever, epbAlways
        manifest.Notes, manifest.IncludeFlag = " two\r\nlines ", True
        manifest.ManifestType = mtBrowseSequence
        project = self.project_of(self.p.Save())
        again = project.Manifests.Item(manifest.Key)
        self.assertEqual(
            (again.Name, again.Notes, again.ManifestType, bool(again.IncludeFlag)),
            ("Guide", " two\r\nlines ", mtBrowseSequence, True))
        entries = list(again.Entries.AllEntries())
        self.assertEqual([e.Title for e in entries], ["one", "two", "two a", "two b", "deep", "three"])
        self.assertEqual([e.Key for e in entries], [e.Key for e in order])
        self.assertEqual(
            (entries[0].Topic, entries[0].PageBreakBefore, entries[0].PageBreakAfter),
            (project.Topics.Item(1), epbNever, epbDefault))
        self.assertEqual([e.ParentEntry for e in entries],
                         [None, None, entries[1], entries[1], entries[3], None])
        self.assertEqual({e.Manifest for e in entries}, {again})
        self.assertFalse(project.Manifests.Dirty)

    def test_notes_that_are_a_line_break_alone_are_empty(self):
        manifest = self.add()
        manifest.Notes = " \r\n "
        self.assertEqual(self.project_of(self.p.Save()).Manifests.Item(1).Notes, "")

    def test_an_unknown_topic_is_none_and_its_key_is_saved_back(self):
        manifest = quillbox.Manifest()
        manifest.QbProject = self.p
        manifest.Load(element('<manifest k="{M}" n="m" t="0"><me k="{E}" t="" tid="{gone}"/></manifest>'))
        entry = manifest.Entries.Item(1)
        self.assertEqual((entry.Topic, entry.RuntimeTitle, entry.PageBreakBefore), (None, "", epbDefault))
        self.assertEqual(saved(manifest)[0].get("tid"), "{gone}")

    def test_names_of_entries_are_exact_and_other_children_are_passed_over(self):
        manifest = quillbox.Manifest()
        manifest.QbProject = self.p
        inner = '<any k="{F}" t="f" tid=""/>'
        manifest.Load(element(
            f'<manifest k="{{M}}" n="m" t="0"><ME k="{{A}}" t="" tid=""/><me k="{{E}}" t="" tid="">{inner}</me></manifest>'))
        self.assertEqual([e.Key for e in manifest.Entries.AllEntries()], ["{E}", "{F}"])

    def test_a_load_tells_no_change_and_replaces_the_entries(self):
        manifest, order = self.tree()
        self.p.Dirty = False
        events = Events(self.p, without=("DirtyStateChanged",))
        held = manifest.Entries
        manifest.Load(element('<manifest k="{M}" n="m" t="1" i="true"><me k="{E}" t="x" tid=""/></manifest>'))
        self.assertEqual(events, [])
        self.assertEqual((len(held), len(manifest.Entries), manifest.Entries.Parent), (3, 1, manifest))
        self.assertFalse(manifest.IncludeFlag)

    def test_a_missing_attribute_ends_the_load_and_silences_the_manifest(self):
        for text in ('<manifest n="m" t="0"/>', '<manifest k="" t="0"/>', '<manifest k="" n=""/>',
                     '<manifest k="" n="" t="0"><me k="" tid=""/></manifest>',
                     '<manifest k="" n="" t="0"><me k="" t=""/></manifest>',
                     '<manifest k="" n="" t="0"><me t="" tid=""/></manifest>'):
            with self.subTest(text), self.assertFails():
                quillbox.Manifest().Load(element(text))
        manifest = quillbox.Manifest()
        with self.assertFails("'n'"):
            manifest.Load(element('<manifest k="{M}"/>'))
        events = Events(manifest)
        manifest.Name = "silent"
        self.assertEqual(events, [])

    def test_the_own_file_is_written_when_missing_and_read(self):
        project = self.project(separate=True)
        project.Manifests.Load(None)
        self.assertEqual((len(project.Manifests), project.Manifests.Dirty), (0, False))
        self.assertXml(saved(project.Manifests, "Manifests"), "<Manifests/>")
        self.assertXml(self.xml("ProjectData/Manifests.xml"), "<Manifests/>")
        manifest = project.NewManifest("Guide")
        project.Manifests.Add(manifest, manifest.Key)
        saved(project.Manifests)
        self.assertTrue(project.Manifests.Dirty)
        again = self.project(separate=True)
        again.Manifests.Load(None)
        self.assertEqual([m.Name for m in again.Manifests], ["Guide"])


if __name__ == "__main__":
    unittest.main()
