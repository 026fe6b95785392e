"""Building a project: what is written, what is asked, what is told, and what a host can do about it."""

import os
import stat
import unittest

import quillbox
from quillbox import ByRef
from support import MachineTest, add_topic, variable

platform = quillbox.platform

TEMPLATE = """<PageTemplate Name="Plain">
  <Namespace Name="CM.Quillbox"/>
  <Page File="Page.html" ItemType="cm.quillbox:topic"/>
  <Page File="Wide.html" ItemType="cm.quillbox:topic"/>
  <Page File="Map.html"/>
  <Page File="project.hhp" CompileType="1" Output="%%helpfiletitle%%.hhp"/>
  <Page File="project.hxc" CompileType="2" Output="%%helpfiletitle%%.hxc"/>
</PageTemplate>"""
# Says what the file "say" holds, a line a run, and makes the compiled file.
COMPILER = """#!/bin/sh
echo "run $(basename "$1")"
head -n 1 say; sed -i 1d say
echo compiled > Manual.chm
"""


class BuildCase(MachineTest):
    def setUp(self):
        super().setUp()
        self.template("Plain", TEMPLATE, {
            "Page.html": "<h1>%%itemtitle%%</h1>%%topicsection:name=BodyText%%",
            "Wide.html": "wide %%itemtitle%%",
            "Map.html": "%%projecttitle%% %%defaulttopic%%",
            "project.hhp": "%%streamcontent:name=files%%",
            "project.hxc": "<x/>",
            "support/look.css": "p {}",
        })
        os.makedirs(self.path("work"))
        self.manual = self.project("work/manual.qbp")
        self.manual.Title = "Manual"
        self.manual.OutputFileName = self.path("work", "Manual.chm")
        self.manual.CompileType = quillbox.CompileHTMLHelp1
        self.document = platform.Document()

    def template(self, folder, description, files=None):
        for name, text in {"template.xml": description, **(files or {})}.items():
            self.write(f"install/Templates/{folder}/{name}", text)

    def build(self, compiler="", compile=False, cleanup=True):
        return self.manual.Build(ByRef(self.document), compiler, False, compile, cleanup)

    def compiler(self, *log):
        path = self.write("hhc", COMPILER)
        os.chmod(path, os.stat(path).st_mode | stat.S_IXUSR)
        self.write("work/say", "".join(line + "\n" for line in log))
        return path

    def written(self):
        """The files of the working folder, but for the build's own notes."""
        return sorted(os.path.relpath(os.path.join(folder, name), self.path("work"))
                      for folder, _, names in os.walk(self.path("work")) for name in names if name[0] != ".")

    def page(self, name):
        return self.read("work/" + name).decode()


class Pages(BuildCase):
    def test_are_written_for_each_topic_of_the_help_file_with_the_templates_files(self):
        add_topic(self.manual, "Intro", "Introduction", "<p>Hello</p>")
        add_topic(self.manual, "Draft").IncludeInHelpFile = False
        result = self.build()
        self.assertEqual(self.written(), ["Intro.html", "Manual.hhp", "Map.html", "look.css"])
        self.assertEqual(self.page("Intro.html"), "<h1>Introduction</h1><p>Hello</p>")
        self.assertEqual(self.page("Map.html"), "Manual Intro.html")
        self.assertEqual(self.page("Manual.hhp"), "look.css\r\nIntro.html\r\nMap.html\r\n")
        self.assertFalse(result.Cancelled)
        self.assertEqual(result.CompilerLog, "")

    def test_go_by_the_layout_that_a_topic_chooses(self):
        add_topic(self.manual, "One")
        add_topic(self.manual, "Two").LayoutName = "wide"
        add_topic(self.manual, "Three").LayoutName = "Unknown"
        self.build()
        self.assertEqual(self.page("One.html"), "<h1>One</h1>")
        self.assertEqual(self.page("Two.html"), "wide Two")
        self.assertNotIn("Three.html", self.written())

    def test_have_the_projects_variables(self):
        add_topic(self.manual, "Intro", "Intro", "%%variable:name=Product%%%%variable:name=None%%")
        self.manual.VariableValues.Add(variable("Product", "Quill & Ink"), "Product")
        self.build()
        self.assertEqual(self.page("Intro.html"), "<h1>Intro</h1>Quill & Ink")

    def test_lie_beside_the_project_and_the_help_file_where_it_is_wanted(self):
        os.makedirs(self.path("elsewhere"))
        self.manual.OutputFileName = self.path("elsewhere", "Manual.chm")
        add_topic(self.manual, "Intro")
        self.build(self.compiler("fine"), compile=True, cleanup=False)
        self.assertIn("Intro.html", self.written())
        self.assertEqual(self.read("elsewhere/Manual.chm"), b"compiled\n")

    def test_that_did_not_change_are_not_written_again(self):
        add_topic(self.manual, "Intro")
        self.build()
        before = os.stat(self.path("work", "Intro.html")).st_mtime_ns
        self.build()
        self.assertEqual(os.stat(self.path("work", "Intro.html")).st_mtime_ns, before)

    def test_never_take_the_place_of_a_file_of_the_project(self):
        self.write("work/look.css", "the author's own")
        file = self.manual.NewOtherFile(self.path("work", "look.css"))
        self.manual.OtherFiles.Add(file, file.LocalSpec)
        with self.assertFails("look.css"):
            self.build()
        self.assertEqual(self.page("look.css"), "the author's own")

    def test_are_told_as_they_are_written(self):
        add_topic(self.manual, "Intro")
        told = []
        self.document.ContentCreated.connect(told.append)
        self.build()
        self.assertEqual(told, ["Intro.html", "Map.html", "Manual.hhp"])

    def test_can_be_left_out_by_a_host(self):
        add_topic(self.manual, "Intro")
        add_topic(self.manual, "Secret")

        def leave_out(page, definition, item, dont_generate):
            self.assertEqual(definition.Name, "cm.quillbox:topic")
            self.assertIn(page.Name, ("Page.html", "Wide.html"))
            if item.Name == "Secret":
                dont_generate.value = True

        self.document.BeforeOutputNamespacePage.connect(leave_out)
        self.build()
        self.assertNotIn("Secret.html", self.written())
        self.assertIn("Intro.html", self.written())


class Template(BuildCase):
    def test_is_the_one_named_or_the_first_for_help(self):
        self.template("APrint", '<PageTemplate Name="APrint" Supports="p"><Namespace Name="CM.Quillbox"/></PageTemplate>')
        self.template("AForeign", '<PageTemplate Name="AForeign"/>')
        self.assertEqual(self.manual.Template.Name, "Plain")
        self.manual.TemplateName = "No longer there"
        self.assertEqual(self.manual.Template.Name, "Plain")
        self.assertEqual(self.manual.TemplateName, "No longer there")
        self.manual.TemplateName = "APRINT"
        self.assertEqual(self.manual.Template.Name, "APrint")

    def test_gives_its_first_topic_page_as_the_default_layout(self):
        self.assertEqual(self.manual.DefaultTopicLayout(), "Page.html")

    def test_is_needed(self):
        os.remove(self.path("install", "Templates", "Plain", "template.xml"))
        self.assertIsNone(self.manual.Template)
        self.assertEqual(self.manual.DefaultTopicLayout(), "")
        with self.assertFails("no page template"):
            self.build()
        self.assertEqual(self.written(), [])

    def test_copies_its_support_files_beside_the_project(self):
        self.manual.CopySupportFiles()
        self.assertEqual(self.written(), ["look.css"])


class Compiling(BuildCase):
    def setUp(self):
        super().setUp()
        add_topic(self.manual, "Intro")

    def test_gives_the_log_and_deletes_what_was_only_needed_on_the_way(self):
        result = self.build(self.compiler("fine"), compile=True)
        self.assertEqual(result.CompilerLog, "run Manual.hhp\nfine\n")
        self.assertEqual(self.written(), ["Manual.chm", "look.css", "say"])

    def test_keeps_all_files_where_nothing_is_to_be_deleted(self):
        self.build(self.compiler("fine"), compile=True, cleanup=False)
        self.assertIn("Intro.html", self.written())

    def test_goes_on_until_the_log_is_clean(self):
        asked = []

        def hear(document, result, cancel):
            asked.append((document.value, result.value.CompilerLog, cancel.value))

        self.manual.BuildErrorsOrWarnings.connect(hear)
        result = self.build(self.compiler("Error: 1", "Warning: 2", "warning: 3"), compile=True)
        self.assertEqual([log for _, log, _ in asked],
                         ["run Manual.hhp\nError: 1\n", "run Manual.hhp\nWarning: 2\n"])
        self.assertEqual({cancel for _, _, cancel in asked}, {False})
        self.assertEqual(asked[0][0], self.document)
        self.assertEqual(result.CompilerLog, "run Manual.hhp\nwarning: 3\n")

    def test_ends_where_the_host_cancels(self):
        self.manual.BuildErrorsOrWarnings.connect(lambda document, result, cancel: setattr(cancel, "value", True))
        result = self.build(self.compiler("Error: 1", "fine"), compile=True)
        self.assertEqual(result.CompilerLog, "run Manual.hhp\nError: 1\n")
        self.assertFalse(result.Cancelled)

    def test_passes_the_failure_of_a_handler_on(self):
        def fail(document, result, cancel):
            raise ValueError("enough")

        self.manual.BuildErrorsOrWarnings.connect(fail)
        with self.assertRaises(quillbox.Error) as caught:
            self.build(self.compiler("Error: 1"), compile=True)
        self.assertIsInstance(caught.exception.__cause__, ValueError)

    def test_needs_a_compiler_for_help_2_before_anything_is_written(self):
        self.manual.CompileType = quillbox.CompileHelp2
        with self.assertFails("No compiler was given for Help 2.0"):
            self.build("/never/used", compile=True)
        self.assertEqual(self.written(), [])
        self.build()
        self.assertIn("Manual.hxc", self.written())

    def test_without_a_compile_type_is_for_html_help(self):
        self.manual.CompileType = quillbox.CompileNone
        self.build()
        self.assertEqual(self.document.CompileType, "1")
        self.assertEqual(self.document.CompilerInputFile, self.path("work", "Manual.hhp"))


class Asking(BuildCase):
    QUESTION = ("The specified output path '{}' doesn't exist.  Would you like to create it?",
                "Codemark path does not exist", platform.bsYesNo, platform.biQuestion)

    def question(self):
        return (self.QUESTION[0].format(self.path("new", "place", "")), *self.QUESTION[1:])

    def setUp(self):
        super().setUp()
        self.manual.OutputFileName = self.path("new", "place", "Manual.chm")

    def test_makes_the_output_folder_on_yes(self):
        self.boxes.answer = platform.mbYes
        self.assertFalse(self.build().Cancelled)
        self.assertEqual(self.boxes.shown, [self.question()])
        self.assertTrue(os.path.isdir(self.path("new", "place")))

    def test_fails_on_no_as_there_is_nothing_to_unload(self):
        self.boxes.answer = platform.mbNo
        with self.assertFails("unload"):
            self.build()
        self.assertEqual(self.boxes.shown, [
            self.question(),
            ("Could not access output path, build cancelled", "", platform.bsOK, platform.biInformation)])
        self.assertFalse(os.path.exists(self.path("new")))
        self.assertEqual(self.written(), [])


class Building(BuildCase):
    def test_makes_a_document_of_its_own_where_it_is_given_none(self):
        add_topic(self.manual, "Intro")
        passed = ByRef()
        self.manual.Build(passed, "", False, False, False)
        self.assertIsNone(passed.value)
        self.assertIn("Intro.html", self.written())

    def test_lets_the_document_go(self):
        self.build()
        self.assertEqual(self.document.Objects.Count, 0)
        self.assertEqual(self.document.Title, "Manual")
        self.assertEqual(self.document.OutputPath, self.path("work", ""))
        self.assertEqual((self.document.SwitchA, self.document.SwitchB, self.document.SwitchC), (False, True, True))

    def test_is_cancelled_inside_the_engine(self):
        for name in ("One", "Two", "Three"):
            add_topic(self.manual, name)
        self.document.ContentCreated.connect(lambda name: self.document.Cancel())
        self.assertTrue(self.build().Cancelled)
        self.assertEqual([name for name in self.written() if name.endswith(".html")], ["One.html"])

    def test_tells_how_far_it_is(self):
        for name in ("One", "Two"):
            add_topic(self.manual, name)
        told = []
        self.document.Progress.connect(lambda *progress: told.append(progress))
        self.build()
        self.assertEqual(told, [("Generating content: writing One.html", 1, 3),
                                ("Generating content: writing Two.html", 2, 3),
                                ("Generating content: writing Map.html", 3, 3)])

    def test_of_the_same_project_twice_gives_the_same_bytes(self):
        add_topic(self.manual, "Intro", body="%%incrementingvalue:Name=n%%")
        self.build()
        first = self.files()
        self.build()
        self.assertEqual(self.files(), first)

    def test_inside_a_build_is_refused(self):
        add_topic(self.manual, "Intro")
        failures = []

        def again(name):
            try:
                self.manual.Build(ByRef(), "", False, False, False)
            except quillbox.Error as error:
                failures.append(error.description)

        self.document.ContentCreated.connect(again)
        self.build()
        self.assertEqual(set(failures), {"A build of this project is under way already"})

    def test_goes_on_without_a_related_project_that_nothing_can_load(self):
        self.manual.CMPFileName = self.path("missing.cmp")
        add_topic(self.manual, "Intro")
        result = self.manual.Build(ByRef(self.document), "", True, False, False)
        self.assertFalse(result.Cancelled)
        self.assertEqual(self.boxes.shown, [])
        self.assertIn("Intro.html", self.written())


class BadInput(BuildCase):
    def test_a_topic_whose_name_is_no_file_name_is_told_and_nothing_is_written(self):
        topic = add_topic(self.manual, "Intro", "The start")
        for name, reason in (("../x", "leaves the output folder"), ("/x", "absolute path"), ("CON", "names a device"),
                             ("", "has no name"), ("a\nb", "control character")):
            topic.Name = name
            with self.subTest(name), self.assertFails("Page.html", "'Plain'", "'The start'", reason):
                self.build()
        self.assertEqual(self.written(), [])
        self.assertEqual(os.path.exists(self.path("x.html")), False)

    def test_two_topics_of_one_name_in_any_case_are_told(self):
        add_topic(self.manual, "Intro")
        add_topic(self.manual, "INTRO")
        with self.assertFails("'INTRO.html'", "'Intro.html'"):
            self.build()

    def test_what_a_template_cannot_give_shows_in_the_page(self):
        add_topic(self.manual, "Intro", body="%%nothing:like=this%% %%scrap:name=_GONE%%")
        self.build()
        self.assertEqual(self.page("Intro.html"), "<h1>Intro</h1>%%nothing:like=this%% !MISSING SCRAP '_GONE'!")

    def test_a_tag_that_fails_in_a_topic_names_page_line_section_and_topic(self):
        add_topic(self.manual, "Intro", body="<p>\n%%literal%%</p>")
        with self.assertFails("Page.html, line 1", "Intro.html", "'BodyText'", "'Intro'", "line 2, %%literal%%", "'value'"):
            self.build()

    def test_a_broken_template_names_its_file_and_line(self):
        self.template("Plain", '<PageTemplate Name="Plain">\n<Pages/></PageTemplate>')
        with self.assertFails("template.xml, line 2", "expected Namespace, Page or SearchIndex, found Pages"):
            self.build()

    def test_a_page_of_an_unknown_kind_names_the_line_and_the_kinds_there_are(self):
        self.template("Plain", TEMPLATE.replace('File="Wide.html" ItemType="cm.quillbox:topic"',
                                                'File="Wide.html" ItemType="cm.quillbox:subject"'))
        with self.assertFails("template.xml, line 4", "'cm.quillbox:subject'", "cm.quillbox:topic, "):
            self.build()


class Booklets(BuildCase):
    def test_cannot_be_printed_yet(self):
        with self.assertFails("Booklets cannot be printed yet"):
            self.manual.BuildBooklets(ByRef())


if __name__ == "__main__":
    unittest.main()
