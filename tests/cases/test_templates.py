"""What each shipped template makes of the handbook, held against expected/TEMPLATE/."""

import re
import unittest

from support import Case

# The pages that show what a template does with topics.
PAGES = ("Welcome.html", "Projects.html", "TopicBodies.html", "Languages.html", "Glossary.html")
ALL_INPUTS = ("*.hh?", "*.hx?")

# A new template is a row here: how it is built and written, and what it writes besides.
TEMPLATES = {
    "HTML Help": {"compile_type": 1, "encoding": "cp1252", "also": ALL_INPUTS},
    "Help 2.0": {"compile_type": 2, "encoding": "utf-8", "also": ALL_INPUTS},
    "Web Help": {"compile_type": 1, "encoding": "utf-8", "also": ("index.html", "webhelp/*.html", "webhelp/contents.js")},
}
# What is printed is not written for readers of a help file.
PRINT_TEMPLATES = {"Booklet"}


class Templates(Case):
    def site(self, template, compile_type):
        project = self.handbook()
        text = project.read_text()
        project.write_text(re.sub(r'CompileType="\d"', f'CompileType="{compile_type}"', text))
        self.run_program("build", project, "--template", template, "--site", template, "--no-compile")
        return self.folder / template

    def held(self, template, how):
        """The texts to hold by their names in the site."""
        site = self.site(template, how["compile_type"])
        found = [site / page for page in PAGES] + [file for name in how["also"] for file in sorted(site.glob(name))]
        return {str(file.relative_to(site)): file.read_bytes().decode(how["encoding"]) for file in found}

    def test_are_all_held(self):
        out, _ = self.run_program("templates")
        self.assertEqual({line.split("\t")[0].strip() for line in out.splitlines()}, {*TEMPLATES, *PRINT_TEMPLATES})

    def test_make_of_the_handbook_what_is_expected(self):
        for template, how in TEMPLATES.items():
            with self.subTest(template):
                texts = self.held(template, how)
                self.assertGreater(len(texts), len(PAGES))
                self.assert_expected_folder(template, {
                    name: re.sub(r"Quillbox \d+\.\d+\.\d+", "Quillbox VERSION", text.replace("\r\n", "\n"))
                    for name, text in texts.items()})

    def test_leave_no_complaint_in_a_page(self):
        for template, how in TEMPLATES.items():
            for name, text in self.held(template, how).items():
                for trace in ("!MISSING", "!ERROR", "!NO PROPERTY", "!INVALID", "!UNCRECOGNISED"):
                    self.assertNotIn(trace, text, f"{template}: {name}")


if __name__ == "__main__":
    unittest.main()
