"""A build along with a related project, which a library of somebody else brings."""

import os
import pathlib
import shutil
import subprocess
import unittest

from support import PROGRAM, SOURCE, Case

BUILT = pathlib.Path(PROGRAM).resolve().parents[1]
REGISTER = os.environ.get("QUILLBOX_REGISTER", str(BUILT / "bin" / "quillbox_register"))
RELATED = os.environ.get("QUILLBOX_RELATED", str(BUILT / "lib" / "libquillbox_related.so"))
GARDEN = SOURCE / "examples" / "garden"


class Related(Case):
    def setUp(self):
        super().setUp()
        self.project = self.folder / "garden" / "garden.qbp"
        shutil.copytree(GARDEN, self.project.parent)
        self.code = self.project.parent / "garden.cmp"
        self.register()

    def register(self):
        """The library registers its own classes; those of the other one are written as its set-up would."""
        registry = self.folder / "registry"
        registry.mkdir()
        subprocess.run([REGISTER], env=dict(os.environ, QUILLBOX_REGISTRY=str(registry)), check=True)
        with open(registry / "local_machine.ini", "a") as file:
            for name, class_id in (("Codemark.Root", "{ROOT}"), ("Codemark.Loader", "{LOADER}")):
                file.write(f"\n[Software\\Classes\\{name}\\CLSID]\n={class_id}\n"
                           f"\n[Software\\Classes\\CLSID\\{class_id}\\InprocServer32]\n={RELATED}\n")

    def build(self, *arguments, status=0):
        return self.run_program("build", self.project, "--site", "site", "--no-compile", *arguments, status=status)

    def log(self):
        return pathlib.Path(str(self.code) + ".log").read_text().splitlines()

    def test_is_loaded_asked_for_exclusions_built_with_and_unloaded(self):
        self.code.write_text("template HTML Help\nexclude Ns~A\nexclude Ns~Unknown\nexclude Ns~B\nexclude FixedC\n"
                             "member Ns~B\nmember Ns~A\nmember FixedC\nmember Ns~Kept\n")
        self.template("Own")
        self.build("--related", "--templates", "Mine", "--template", "Own")
        self.assertEqual(self.log(), [
            "Load garden.cmp", "AttachHost DummyWizardHost of a Document", "Prepare", "FindExcluded Ns~A",
            "FindExcluded Ns~Unknown", "FindExcluded Ns~B", "FindExcluded FixedC", "Unload Document",
            "left on the list: Ns~Unknown", "Ns~B: IncludeFlag False, ExcludeFlag True",
            "Ns~A: IncludeFlag False, ExcludeFlag True", "FixedC: IncludeFlag True, ExcludeFlag True",
            "Ns~Kept: IncludeFlag True, ExcludeFlag False"])
        self.assertEqual((self.folder / "site" / "Soil.html").read_text(), "by Own")

    def template(self, name):
        folder = self.folder / "Mine" / name
        folder.mkdir(parents=True)
        (folder / "template.xml").write_text(
            f'<PageTemplate Name="{name}"><Namespace Name="CM.Quillbox"/>'
            '<Page File="topic.html" ItemType="cm.quillbox:topic"/></PageTemplate>')
        (folder / "topic.html").write_text("by %%templatename%%")

    def test_that_is_missing_ends_the_build_and_says_so(self):
        out, err = self.build("--related", status=1)
        self.assertEqual((out, err), ("", "Codemark file not found: The Codemark file 'garden.cmp' could not be "
                                          "found.  Build cancelled\n"))
        self.assertFalse(list((self.folder / "site").iterdir()))

    def test_without_templates_ends_the_build_and_says_so(self):
        self.code.write_text("exclude Ns~A\n")
        out, err = self.build("--related", status=1)
        self.assertEqual((out, err), ("", "Codemark file invalid: Could not load from Codemark project file "
                                          "'garden.cmp'. Build cancelled\n"))
        self.assertFalse(list((self.folder / "site").iterdir()))

    def test_that_fails_ends_the_build_with_its_own_words(self):
        self.code.write_text("fail\n")
        _, err = self.build("--related", status=2)
        self.assertEqual(err, "quillbox: The related project is damaged\n")

    def test_is_left_alone_where_nobody_asks_for_it(self):
        self.build()
        self.assertFalse(pathlib.Path(str(self.code) + ".log").exists())

    def test_is_left_out_where_its_product_is_not_installed(self):
        (self.folder / "registry" / "local_machine.ini").unlink()
        _, err = self.build("--related")
        self.assertEqual(err, "")

    def test_is_unloaded_when_the_output_folder_is_refused(self):
        self.code.write_text("template Own\n")
        self.template("Own")
        text = self.project.read_text()
        self.project.write_text(text.replace('OutputFilename="garden.chm"', 'OutputFilename="none/garden.chm"'))
        out, err = self.build("--related", "--templates", "Mine", status=1)
        self.assertEqual(out, "")
        self.assertEqual(err, f"Codemark path does not exist: The specified output path '{self.project.parent}/none/' "
                              "doesn't exist.  Would you like to create it?\n"
                              "Could not access output path, build cancelled\n")
        self.assertEqual(self.log()[-1], "Unload Document")
        self.assertFalse(list((self.folder / "site").iterdir()))

    def test_is_where_marked_links_and_links_with_a_tilde_lead(self):
        self.build()
        page = (self.folder / "site" / "Marks.html").read_text()
        self.assertIn('<a href="Garden~Rose.html">Roses in code</a> and <a href="Garden~Bed.html">Bed</a>', page)
        text = self.project.read_text().replace("A spade lasts for life.",
                                                '&lt;a href="Garden~Spade.html"&gt;spade&lt;/a&gt;')
        self.project.write_text(text)
        out, _ = self.run_program("links", self.project)
        self.assertNotIn("Spade", out)
        self.project.write_text(text.replace('CMPFileName="garden.cmp"', 'CMPFileName=""'))
        out, _ = self.run_program("links", self.project, status=1)
        self.assertIn("Garden~Spade.html", out)
        self.build()
        page = (self.folder / "site" / "Marks.html").read_text()
        self.assertIn("%Roses in code:Garden~Rose% and %Garden~Bed%", page)


if __name__ == "__main__":
    unittest.main()
