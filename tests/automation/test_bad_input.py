"""Damaged and hostile files: each is an error that names the file, and nothing changes on disk."""

import os
import re
import unittest

import quillbox
from support import BOOKLET, MachineTest
from test_project_file import full_project

DEEP = 100_000

BROKEN = {
    "empty": b"",
    "no XML": b"this is a letter",
    "binary": bytes(range(256)) * 40,
    "an end tag that is missing": b"<%(root)s><a></%(root)s>",
    "an attribute twice": b"<%(root)s a='1' a='2'/>",
    "an attribute twice in another case": b"<%(root)s Key='1' KEY='2' k='3' K='4'><",
    "two roots": b"<%(root)s/><%(root)s/>",
    "an unknown entity": b"<%(root)s>&unknown;</%(root)s>",
    "a bare ampersand": b"<%(root)s a='b & c'/>",
    "a character that XML cannot hold": b"<%(root)s>&#1;</%(root)s>",
    "a zero byte": b"<%(root)s a='\0'/>",
    "a comment without end": b"<%(root)s/><!-- ",
    "half of UTF-16": b"\xff\xfe<\0a",
    "very deep": b"<%(root)s>" + b"<a>" * DEEP + b"</a>" * DEEP + b"</%(root)s>",
    "very deep and cut off": b"<n>" * DEEP,
    "an entity bomb": (
        b'<!DOCTYPE x [<!ENTITY a "aaaaaaaaaaaaaaaaaaaaaaaa">'
        + b"".join(b'<!ENTITY %c "%s">' % (98 + n, b"&%c;" % (97 + n) * 50) for n in range(12))
        + b"]><%(root)s>&m;</%(root)s>"),
    "an entity that holds itself": b'<!DOCTYPE x [<!ENTITY a "&b;"><!ENTITY b "&a;">]><%(root)s>&a;</%(root)s>',
}


class BrokenFiles(MachineTest):
    def each(self, root):
        for name, content in BROKEN.items():
            with self.subTest(name):
                yield content.replace(b"%(root)s", root.encode())

    def assertRefused(self, path, step):
        before = self.files()
        with self.assertFails(path):
            step()
        self.assertEqual(self.files(), before)

    def test_a_project_file(self):
        for content in self.each("QbProject"):
            path = self.write("manual.qbp", content)
            project = self.project()
            project.Title = "Kept"
            self.assertRefused(path, lambda: project.LoadFromFile(path))
            self.assertEqual(project.Title, "Kept")

    def test_a_project_file_that_is_cut_off_anywhere(self):
        full_project(self).SaveToDisk()
        whole = self.read("manual.qbp").rstrip()
        for length in range(0, len(whole) - 1, 37):
            path = self.write("manual.qbp", whole[:length])
            with self.subTest(length):
                self.assertRefused(path, self.loaded)

    def test_a_topic_file(self):
        self.write("manual.qbp", '<QbProject ProjectType="1"><Topic Key="{K}"/></QbProject>')
        for content in self.each("Topic"):
            self.assertRefused(self.write("TopicData/{K}.xml", content), self.loaded)

    def test_the_file_of_each_collection(self):
        full_project(self, separate=True).SaveToDisk()
        for name, root in (("TableOfContents", "Glossary"), ("Glossary", "Glossary"), ("Tasks", "Tasks"),
                           ("Manifests", "Manifests")):
            path = self.path("ProjectData", name + ".xml")
            good = self.read(path)
            for content in self.each(root):
                self.write(path, content)
                self.assertRefused(path, self.loaded)
            self.write(path, good)
        self.assertEqual(self.loaded().Tasks.Count, 1)

    def test_the_defaults_of_booklets(self):
        project = self.project()
        path = self.path("install", "Configuration", "bookletproperties.xml")
        for content in self.each("BookletProperties"):
            self.write(path, content)
            self.assertRefused(path, lambda: project.NewManifest("m"))

    def test_the_list_of_statuses(self):
        path = self.path("install", "Configuration", "statuscodes.xml")
        for content in self.each("s"):
            self.write(path, content)
            self.assertRefused(path, lambda: quillbox.Root().TopicStatuses)

    def test_text_that_is_given(self):
        for content in self.each("QbProject"):
            project = self.project()
            with self.assertFails():
                project.Load(content.decode("latin-1"))
            self.assertFalse(project.Dirty)


class WrongContent(MachineTest):
    NODE = '<n key="%s" nt="0" ct="2" c="" i="-1" cfn="" tid="" url="">%s</n>'

    def assertRefused(self, content, *mentions):
        path = self.write("manual.qbp", f"<QbProject>\n{content}\n</QbProject>")
        before = self.files()
        with self.assertFails(path, *mentions):
            self.loaded()
        self.assertEqual(self.files(), before)

    def test_repeated_keys(self):
        self.assertRefused('<Topic Key="{A}"/>\n<Topic Key="{a}"/>', "{a}")
        self.assertRefused('<cat Name="x" Key="{A}"/><cat Name="y" Key="{A}"/>', "{A}")
        self.assertRefused('<file FileName="a.png"/><file FileName="A.PNG"/>')
        self.assertRefused('<VariableValue Name="a"/><VariableValue Name="A"/>')
        self.assertRefused("<Nodes>" + (self.NODE % ("{A}", "")) * 2 + "</Nodes>", "{A}")
        self.assertRefused('<Tasks><Task Key="{A}"/></Tasks>', "Priority")
        self.assertRefused('<GlossaryItems><i Key="{A}" Term="a"/><i Key="{A}" Term="b"/></GlossaryItems>', "{A}")
        self.assertRefused('<Manifests><m k="{A}" n="" t="0"/><m k="{A}" n="" t="0"/></Manifests>', "{A}")
        self.assertRefused(
            '<Manifests><m k="{A}" n="" t="0"><me k="{B}" t="" tid=""/><me k="{B}" t="" tid=""/></m></Manifests>', "{B}")

    def test_numbers_that_are_none_or_do_not_fit(self):
        for number in ("", "x", "1x", "99999999999", "1e400", "nan", "0x10"):
            self.assertRefused(
                f'<Nodes><n key="" nt="{number}" ct="2" c="" i="-1" cfn="" tid="" url=""/></Nodes>', "nt")

    def test_dates_of_tasks_that_are_none(self):
        task = '<Task Key="" Priority="" Title="" AssignedTo="" TopicID="" Status="" CreatedOn="%s" CreatedBy="" ' \
               'ModifiedOn="%s" ModifiedBy=""/>'
        good = "05-03-2004 17:09:02"
        for bad in ("", "05-03-2004", "00-03-2004 17:09:02", "31-02-2004 17:09:02", "05-13-2004 17:09:02",
                    "05-03-0000 17:09:02", "05-03-2004 24:00:00", "05-03-2004 17:60:00", "05-03-2004 17:09:-1"):
            for dates in ((bad, good), (good, bad)):
                self.assertRefused("<Tasks>\n" + task % dates + "</Tasks>", "line 3, element 'Task'", f"'{bad}'")

    def test_numbers_of_a_booklet_that_do_not_fit(self):
        for name, number in (("PaperSize", "99999999999"), ("PageBreaks", "-3000000000"), ("MarginLeft", "1e39"),
                             ("UnPrintableTop", "9" * 400)):
            booklet = re.sub(f' {name}="[^"]*"', f' {name}="{number}"', BOOKLET[BOOKLET.index("<B"):])
            self.assertRefused(
                '<Manifests><m k="" n="" t="0">\n' + booklet.replace("BookletProperties", "bookletproperties") +
                "</m></Manifests>", "line 3, element 'bookletproperties'", "fit")

    def test_the_line_of_the_element_is_named(self):
        self.assertRefused('<Topic Key="{A}"/>\n\n<Topic Key="{B}"><s k="Nonsense"/></Topic>', "4", "Nonsense")

    def test_paths_that_lead_elsewhere_are_only_names(self):
        self.write("manual.qbp", '<QbProject><file FileName="../../outside.png"/><file FileName="/etc/passwd"/></QbProject>')
        project = self.loaded()
        self.assertEqual(project.OtherFiles.Count, 2)
        project.SaveToDisk()
        self.assertEqual(sorted(self.files()), ["manual.bak", "manual.qbp"])

    def test_a_topic_key_that_leads_elsewhere_reads_nothing_there(self):
        self.write("secret.xml", '<Topic Name="secret"/>')
        for key in ("../secret", "..\\secret", self.path("secret")):
            self.write("project/manual.qbp", f'<QbProject ProjectType="1"><Topic Key="{key}"/></QbProject>')
            with self.subTest(key), self.assertFails(key):
                self.loaded(os.path.join("project", "manual.qbp"))

    def test_an_outside_entity_is_not_read(self):
        secret = self.write("secret.txt", "secret")
        path = self.write(
            "manual.qbp", f'<!DOCTYPE x [<!ENTITY e SYSTEM "file://{secret}">]><QbProject Title="a">&e;<SpellIgnoreAllWord'
            "List>&e;</SpellIgnoreAllWordList></QbProject>")
        with self.assertFails(path):
            self.loaded()

    def test_a_folder_in_place_of_the_file_fails_or_is_told(self):
        os.makedirs(self.path("folder.qbp"))
        project = self.project("folder.qbp")
        with self.assertFails("folder.qbp"):
            project.LoadFromFile(self.path("folder.qbp"))
        self.assertFalse(project.SaveToDisk())
        self.assertEqual(len(self.boxes.shown), 1)

    def test_a_deep_tree_that_is_allowed_round_trips(self):
        depth = 400
        nodes = ""
        for level in range(depth):
            nodes = self.NODE % (f"{{{level}}}", nodes)
        project = self.project_of(f"<QbProject><Nodes>{nodes}</Nodes></QbProject>")
        self.assertEqual(project.QbNodes.AllNodes().Count, depth)
        self.assertEqual(self.project_of(project.Save()).QbNodes.AllNodes().Count, depth)

    def test_very_long_texts_round_trip(self):
        project = self.project()
        topic = project.NewTopic()
        topic.TopicSectionData["BodyText"] = "<p>" + "long & wide ä " * 200_000 + "</p>"
        project.Topics.Add(topic, topic.Key)
        project.SaveToDisk()
        self.assertEqual(
            self.loaded().Topics.Item(1).TopicSectionData("BodyText"), topic.TopicSectionData("BodyText"))


if __name__ == "__main__":
    unittest.main()
