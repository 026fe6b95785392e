"""What each shipped template makes of the handbook, held against expected/TEMPLATE/."""

import re
import unittest

from support import Case

# The pages that show what a template does; all inputs of its compiler are held too.
PAGES = ("Welcome.html", "Projects.html", "TopicBodies.html", "Languages.html", "Glossary.html")

TEMPLATES = {
    "HTML Help": {"compile_type": 1, "encoding": "cp1252"},
    "Help 2.0": {"compile_type": 2, "encoding": "utf-8"},
}


class Templates(Case):
    def site(self, template, compile_type):
        project = self.handbook()
        text = project.read_text()
        project.write_text(re.sub(r'CompileType="\d"', f'CompileType="{compile_type}"', text))
        self.run_program("build", project, "--template", template, "--site", template, "--no-compile")
        return self.folder / template

    def test_make_of_the_handbook_what_is_expected(self):
        for template, how in TEMPLATES.items():
            with self.subTest(template):
                site = self.site(template, how["compile_type"])
                files = {}
                for file in site.iterdir():
                    if file.name in PAGES or file.suffix.startswith(".h") and file.suffix != ".html":
                        text = file.read_bytes().decode(how["encoding"]).replace("\r\n", "\n")
                        files[file.name] = re.sub(r"Quillbox \d+\.\d+\.\d+", "Quillbox VERSION", text)
                self.assertLessEqual(set(PAGES), set(files))
                self.assert_expected_folder(template, files)

    def test_leave_no_tag_and_no_complaint_in_a_page(self):
        for template, how in TEMPLATES.items():
            site = self.site(template, how["compile_type"])
            for file in site.glob("*.*"):
                if file.suffix.startswith(".h"):
                    text = file.read_bytes().decode(how["encoding"])
                    for trace in ("!MISSING", "!ERROR", "!NO PROPERTY", "!INVALID", "!UNCRECOGNISED"):
                        self.assertNotIn(trace, text, f"{template}: {file.name}")


if __name__ == "__main__":
    unittest.main()
