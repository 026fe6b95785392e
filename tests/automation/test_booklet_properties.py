import locale
import os
import shutil
import subprocess
import unittest
from unittest import mock

import quillbox
from support import BOOKLET, Events, MachineTest, add_topic, element, saved

TEXTS = ["Title", "OutputFileName", "FooterHTML", "HeaderHTML", "CoverpageTopicID", "TemplateName",
         "LinkPreProcessURLNoCaption", "LinkPreProcessURLWithCaption", "LinkPreProcessTopicNotInBooklet",
         "LinkPreProcessTopicInBooklet", "LinkPreProcessCodemark"]
LENGTHS = [kind + side for kind in ("Margin", "UnPrintable") for side in ("Bottom", "Top", "Right", "Left")]
NUMBERS = {"EntryNumbering": quillbox.enTopicTitles, "PaperSize": quillbox.psLetter,
           "PageBreaks": quillbox.pbBeforeAllEntries}
FLAGS = ["GenerateTOC", "RawCoverPage"]
REQUIRED = ["TemplateName", "PageBreaks", "UnPrintableLeft", "UnPrintableRight", "UnPrintableTop", "UnPrintableBottom",
            "MarginLeft", "MarginRight", "MarginTop", "MarginBottom", "PaperSize", "OutputFileName",
            "CoverpageTopicID"]


class BookletTest(MachineTest):
    def setUp(self):
        super().setUp()
        self.p = self.project()
        self.manifest = self.p.NewManifest("Guide", quillbox.mtBrowseSequence)
        self.b = self.manifest.BookletProperties

    def fill(self):
        for name in TEXTS:
            setattr(self.b, name, f"<{name}> & ä")
        for place, name in enumerate(LENGTHS):
            setattr(self.b, name, place + 0.75)
        for name, value in NUMBERS.items():
            setattr(self.b, name, value)
        for name in FLAGS:
            setattr(self.b, name, True)

    def values(self, b):
        return {name: getattr(b, name) for name in (*TEXTS, *LENGTHS, *NUMBERS, *FLAGS)}


class Properties(BookletTest):
    def test_new_properties_have_their_bare_defaults(self):
        b = quillbox.BookletProperties()
        self.assertEqual(
            self.values(b),
            {**dict.fromkeys(TEXTS, ""), **dict.fromkeys(LENGTHS, 0), "EntryNumbering": quillbox.enNone,
             "PaperSize": quillbox.psA4, "PageBreaks": quillbox.pbBeforeTopLevelEntries, "GenerateTOC": False,
             "RawCoverPage": False})
        self.assertEqual((b.Manifest, b.Template, b.CoverPageTopic), (None, None, None))

    def test_every_property_holds_what_is_written_and_tells_each_time(self):
        events = Events(self.manifest)
        for name, value in [*((n, "text") for n in TEXTS), *((n, 2.5) for n in LENGTHS), *NUMBERS.items(),
                            *((n, True) for n in FLAGS)]:
            for _ in range(2):
                setattr(self.b, name, value)
                self.assertEqual(getattr(self.b, name), value)
                self.assertEqual(events.taken(), [("Changed",)], name)

    def test_the_manifest_is_set_without_a_notice_and_not_kept_alive(self):
        b = quillbox.BookletProperties()
        manifest = quillbox.Manifest()
        events = Events(manifest)
        b.Manifest = manifest
        self.assertEqual((b.Manifest, events), (manifest, []))
        del manifest
        self.assertIsNone(b.Manifest)

    def test_without_a_manifest_a_change_fails_and_a_load_does_not(self):
        b = quillbox.BookletProperties()
        with self.assertFails():
            b.Title = "x"
        b.Load(element(BOOKLET))
        self.assertEqual(b.TemplateName, "Print")

    def test_a_template_that_is_not_installed_is_none(self):
        for name in ("", "Not installed"):
            self.b.TemplateName = name
            self.assertIsNone(self.b.Template)

    def test_an_installed_template_is_found_by_its_name(self):
        self.write("install/Templates/Print/template.xml",
                   '<PageTemplate Name="Print" Supports="p"><Namespace Name="CM.Quillbox"/></PageTemplate>')
        self.b.TemplateName = "print"
        self.assertEqual(self.b.Template.Name, "Print")

    def test_the_topic_of_the_cover_page_is_found_by_its_key(self):
        self.assertIsNone(self.b.CoverPageTopic)
        self.b.CoverpageTopicID = "{none}"
        self.assertIsNone(self.b.CoverPageTopic)
        topic = add_topic(self.p)
        self.b.CoverpageTopicID = topic.Key
        self.assertEqual(self.b.CoverPageTopic, topic)

    def test_a_link_info_is_three_plain_fields(self):
        info = quillbox.BookletLinkInfo()
        self.assertEqual((info.LinkCaption, info.LinkURL, info.LinkTopic), ("", "", None))
        topic = quillbox.Topic()
        info.LinkCaption, info.LinkURL, info.LinkTopic = "c", "u", topic
        self.assertEqual((info.LinkCaption, info.LinkURL, info.LinkTopic), ("c", "u", topic))
        info.LinkTopic = None
        self.assertIsNone(info.LinkTopic)


class BookletFile(BookletTest):
    def test_attributes_and_children_are_written_in_order(self):
        self.fill()
        self.b.TemplateName, self.b.Title, self.b.HeaderHTML, self.b.FooterHTML = "T", "Title", "<b>h</b>", "f"
        root = saved(self.b, "bookletproperties")
        self.assertEqual(
            list(root.attrib),
            ["TemplateName", "PageBreaks", "UnPrintableLeft", "UnPrintableRight", "UnPrintableTop", "UnPrintableBottom",
             "MarginLeft", "MarginRight", "MarginTop", "MarginBottom", "PaperSize", "OutputFileName", "CoverpageTopicID",
             "EntryNumbering", "GenerateTOC", "Title", "RawCoverPage", "LinkPPCodemark", "LinkPPTopicInBooklet",
             "LinkPPTopicNotInBooklet", "LinkPPURLWithCaption", "LinkPPURLNoCaption"])
        self.assertEqual([(child.tag, child.text) for child in root], [("HeaderHTML", "<b>h</b>"), ("FooterHTML", "f")])
        self.assertEqual(
            [root.get(name) for name in ("TemplateName", "PageBreaks", "PaperSize", "EntryNumbering", "GenerateTOC",
                                         "MarginBottom", "MarginTop", "LinkPPURLNoCaption")],
            ["T", "1", "1", "1", "True", "0.75", "1.75", "<LinkPreProcessURLNoCaption> & ä"])

    def test_everything_comes_back(self):
        self.fill()
        self.p.Manifests.Add(self.manifest, self.manifest.Key)
        again = self.project_of(self.p.Save()).Manifests.Item(1)
        self.assertEqual(self.values(again.BookletProperties), self.values(self.b))
        self.assertEqual(again.BookletProperties.Manifest, again)

    def test_a_load_tells_nothing(self):
        events = Events(self.manifest)
        self.b.Load(element(BOOKLET))
        self.assertEqual(events, [])
        self.assertEqual((self.b.MarginLeft, self.b.FooterHTML, bool(self.b.GenerateTOC)), (10, "bottom", True))

    def test_older_files_leave_what_they_do_not_know(self):
        self.fill()
        before = self.values(self.b)
        self.b.Load(element("<x " + " ".join(f'{name.upper()}="3"' for name in REQUIRED) + "/>"))
        after = self.values(self.b)
        self.assertEqual({n: v for n, v in after.items() if n not in REQUIRED},
                         {n: v for n, v in before.items() if n not in REQUIRED})
        self.assertEqual((after["TemplateName"], after["MarginTop"]), ("3", 3))

    def test_a_required_attribute_that_is_missing_ends_the_load_and_silences_the_rest(self):
        for name in REQUIRED:
            b = quillbox.BookletProperties()
            text = BOOKLET.replace(f" {name}=", " other=")
            with self.subTest(name), self.assertFails():
                b.Load(element(text))
            b.Title = "nobody hears this"
            self.assertEqual(b.Title, "nobody hears this")

    def test_an_optional_number_that_is_none_leaves_the_value(self):
        self.b.EntryNumbering = quillbox.enTopicTitles
        self.b.Load(element(BOOKLET.replace('EntryNumbering="2"', 'EntryNumbering="two"')))
        self.assertEqual(self.b.EntryNumbering, quillbox.enTopicTitles)

    def test_numbers_are_read_up_to_the_first_other_character(self):
        for text, value in (("0.75", 0.75), ("0,75", 0), ("12mm", 12), ("", 0), ("x", 0), ("-1.5", -1.5)):
            self.b.Load(element(BOOKLET.replace('MarginLeft="10"', f'MarginLeft="{text}"')))
            self.assertEqual(self.b.MarginLeft, value, text)

    @unittest.skipUnless(shutil.which("localedef"), "no tool that makes a locale")
    def test_a_machine_with_a_decimal_comma_loses_fractions(self):
        source = self.write("locales/comma.src", 'LC_NUMERIC\ndecimal_point ","\nthousands_sep "."\nEND LC_NUMERIC\n')
        subprocess.run(["localedef", "-c", "-i", source, self.path("locales", "xx_XX")], capture_output=True)
        with mock.patch.dict(os.environ, LOCPATH=self.path("locales")):
            before = locale.setlocale(locale.LC_NUMERIC)
            locale.setlocale(locale.LC_NUMERIC, "xx_XX")
            self.addCleanup(locale.setlocale, locale.LC_NUMERIC, before)
        self.assertEqual(locale.localeconv()["decimal_point"], ",")
        for value, text in ((0.75, "0"), (12.5, "12"), (10, "10"), (-1.5, "-1"), (-0.5, "0")):
            self.b.MarginLeft = value
            self.assertEqual(self.b.MarginLeft, value)
            self.assertEqual(saved(self.b).get("MarginLeft"), text)
        self.b.Load(element(BOOKLET))
        self.assertEqual(self.b.MarginRight, 11.5)

    def test_header_and_footer_are_known_by_their_exact_names(self):
        self.b.Load(element(BOOKLET.replace("HeaderHTML", "headerhtml")))
        self.assertEqual((self.b.HeaderHTML, self.b.FooterHTML), ("", "bottom"))


if __name__ == "__main__":
    unittest.main()
