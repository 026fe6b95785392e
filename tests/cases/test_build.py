import re
import shutil
import subprocess
import unittest

from support import Case


def entities(text):
    """The title of every node of a contents or index file, in order."""
    return re.findall(r'<param name="Name" value="([^"]*)"', text)


class CompiledHandbook(Case):
    """The handbook, built by the command line and taken apart by readers of others."""

    def build(self):
        project = self.handbook()
        output = self.folder / "out.chm"
        self.run_program("build", project, "--output", output, "--keep")
        return project.parent, output

    def unpack(self, chm):
        target = self.folder / "unpacked"
        target.mkdir()
        subprocess.run(["extract_chmLib", chm, target], check=True, capture_output=True)
        return target

    def test_holds_every_page_that_was_written(self):
        source, chm = self.build()
        unpacked = self.unpack(chm)
        pages = sorted(page.name for page in source.glob("*.html"))
        self.assertGreaterEqual(len(pages), 20)
        for name in pages:
            self.assertEqual((unpacked / name).read_bytes(), (source / name).read_bytes(), name)
        for name in ("css/handbook.css", "help.css"):
            self.assertEqual((unpacked / name).read_bytes(), (source / name).read_bytes(), name)
        self.assertTrue(list((unpacked / "images").glob("*.png")))

    def test_has_contents_index_and_default_page_in_place(self):
        source, chm = self.build()
        unpacked = self.unpack(chm)
        contents = entities(next(unpacked.glob("*.hhc")).read_text("cp1252"))
        self.assertEqual(contents[0], "Welcome")
        self.assertGreaterEqual(len(contents), 30)
        index = entities(next(unpacked.glob("*.hhk")).read_text("cp1252"))
        self.assertGreaterEqual(len(index), 30)
        system = (unpacked / "#SYSTEM").read_bytes()
        for text in (b"Welcome.html", b"Quillbox Handbook"):
            self.assertIn(text + b"\0", system)

    def test_is_read_by_a_second_reader_too(self):
        _, chm = self.build()
        listed = subprocess.run(["7z", "l", "-ba", chm], check=True, capture_output=True, text=True).stdout
        self.assertIn("Welcome.html", listed)

    def test_leaves_nothing_behind_without_keep(self):
        project = self.handbook()
        before = {p.relative_to(project.parent) for p in project.parent.rglob("*")}
        self.run_program("build", project, "--output", self.folder / "out.chm")
        after = {p.relative_to(project.parent) for p in project.parent.rglob("*")}
        self.assertEqual({str(p) for p in after - before}, {"help.css"})

    def test_a_second_build_writes_no_page_again(self):
        project = self.handbook()
        self.run_program("build", project, "--no-compile")
        times = {page: page.stat().st_mtime_ns for page in project.parent.glob("*.html")}
        self.run_program("build", project, "--no-compile")
        self.assertEqual(times, {page: page.stat().st_mtime_ns for page in project.parent.glob("*.html")})


class Site(Case):
    def test_holds_pages_and_other_files_and_leaves_the_project_alone(self):
        project = self.handbook()
        before = sorted(project.parent.rglob("*"))
        self.run_program("build", project, "--site", "site", "--no-compile")
        site = self.folder / "site"
        self.assertTrue((site / "Welcome.html").is_file())
        self.assertTrue((site / "css" / "handbook.css").is_file())
        self.assertEqual(sorted(project.parent.rglob("*")), before)

    def test_holds_the_help_file_too_where_it_is_compiled(self):
        project = self.handbook()
        before = sorted(project.parent.rglob("*"))
        out, _ = self.run_program("build", project, "--template", "HTML Help", "--site", "site")
        site = self.folder / "site"
        self.assertEqual(out, f"{site}/\n")
        self.assertTrue((site / "Welcome.html").is_file())
        listed = subprocess.run(["7z", "l", "-ba", site / "handbook.chm"], check=True, capture_output=True, text=True)
        self.assertIn("css/handbook.css", listed.stdout.replace("\\", "/"))
        self.assertEqual(sorted(project.parent.rglob("*")), before)

    def test_every_link_between_its_pages_leads_somewhere(self):
        self.run_program("build", self.handbook(), "--site", "site", "--no-compile")
        site = self.folder / "site"
        for page in site.glob("*.html"):
            text = page.read_text()
            for link in re.findall(r'(?:href|src)="([^"#?:]+)[^":]*"', text):
                self.assertTrue((site / link).is_file(), f"{page.name}: {link}")


class Failures(Case):
    def test_an_unknown_template_is_named_with_those_there_are(self):
        _, err = self.run_program("build", self.handbook(), "--template", "Nonsense", status=2)
        self.assertIn("HTML Help", err)

    def test_an_output_that_cannot_be_written_is_named(self):
        blocked = self.folder / "blocked"
        blocked.mkdir()
        (blocked / "out.chm").mkdir()
        _, err = self.run_program("build", self.handbook(), "--output", blocked / "out.chm", status=2)
        self.assertIn("out.chm", err)


if __name__ == "__main__":
    if not all(map(shutil.which, ("chmcmd", "extract_chmLib", "7z"))):
        raise SystemExit("chmcmd, extract_chmLib and 7z are needed")
    unittest.main()
