"""Ctrl-C, compilers that complain, and templates from a folder of one's own."""

import os
import pathlib
import pty
import re
import signal
import subprocess
import time
import unittest

from support import PROGRAM, Case

TOPIC = ('<Topic Key="{{{0:08d}-0000-0000-0000-000000000000}}" Name="Page{0}" Title="Page {0}" IsDefault="False">'
         '<s k="BodyText">&lt;p&gt;Text {0}&lt;/p&gt;</s></Topic>')
PATIENCE = 60


class Build(Case):
    def setUp(self):
        super().setUp()
        self.bin = self.folder / "bin"
        self.bin.mkdir()
        self.environment = dict(os.environ, QUILLBOX_REGISTRY=str(self.folder / "registry"),
                                PATH=f"{self.bin}:{os.environ['PATH']}")

    def project(self, topics=3):
        file = self.folder / "work" / "made.qbp"
        file.parent.mkdir()
        file.write_text('<QbProject ProjectType="0" Title="Made" OutputFilename="made.chm" CompileType="1">' +
                        "".join(TOPIC.format(number) for number in range(1, topics + 1)) + "</QbProject>")
        return file

    def compiler(self, script, name="hhc"):
        """Puts a compiler on the path that does what a shell script says."""
        file = self.bin / name
        file.write_text(f"#!/bin/sh\n{script}\n")
        file.chmod(0o755)

    def start(self, *arguments, **more):
        return subprocess.Popen([PROGRAM, *map(str, arguments)], cwd=self.folder, env=self.environment,
                                stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, **more)

    def run_build(self, *arguments, status=0):
        with self.start("build", *arguments, stderr=subprocess.PIPE, text=True) as process:
            out, err = process.communicate(timeout=PATIENCE)
        self.assertEqual(process.returncode, status, out + err)
        return out, err

    def wait_for(self, condition):
        end = time.monotonic() + PATIENCE
        while not condition():
            self.assertLess(time.monotonic(), end, "waited too long")
            time.sleep(0.01)


class CtrlC(Build):
    def test_stops_between_two_pages_and_leaves_each_of_them_whole(self):
        project = self.project(topics=3000)
        site = self.folder / "site"
        terminal, end = pty.openpty()
        with self.start("build", project, "--site", site, "--no-compile", stderr=end) as process:
            os.close(end)
            # Nobody reads more of the terminal, so that the program stands still in the middle of its progress.
            begun = os.read(terminal, 1).decode()
            process.send_signal(signal.SIGINT)
            shown = begun + self.read_all(terminal)
            process.wait(timeout=PATIENCE)
            self.assertEqual(process.stdout.read(), b"")
        self.assertEqual(process.returncode, 128 + signal.SIGINT, shown)
        pages = list(site.glob("Page*.html"))
        self.assertLess(len(pages), 3000)
        self.assertIn(f"quillbox: stopped, with {len(pages)} of 3000 pages written", shown)
        for page in pages:
            self.assertTrue(page.read_text().rstrip().endswith("</html>"), page.name)
        self.assertFalse(list(site.glob("*.hhp")))

    def read_all(self, terminal):
        text = b""
        while True:
            try:
                text += os.read(terminal, 65536)
            except OSError:
                os.close(terminal)
                return text.decode()

    def test_ends_the_compiler_and_puts_the_old_help_file_back(self):
        project = self.project()
        output = project.parent / "made.chm"
        output.write_text("the old one")
        self.compiler("echo half > made.chm; echo begun > begun; sleep 60")
        with self.start("build", project, "--keep", stderr=subprocess.PIPE, text=True) as process:
            self.wait_for((project.parent / "begun").exists)
            process.send_signal(signal.SIGINT)
            _, err = process.communicate(timeout=PATIENCE)
        self.assertEqual(process.returncode, 128 + signal.SIGINT, err)
        self.assertEqual(err, "quillbox: stopped, with 3 of 3 pages written\n")
        self.assertEqual(output.read_text(), "the old one")
        self.assertEqual({p.name for p in project.parent.iterdir()} - {"begun", "help.css", ".quillbox-build"},
                         {"made.qbp", "made.chm", "Page1.html", "Page2.html", "Page3.html",
                          "Made.hhp", "Made.hhc", "Made.hhk"})

    def test_cleans_up_as_a_build_that_ended_does(self):
        project = self.project()
        self.compiler("echo begun > begun; sleep 60")
        with self.start("build", project, stderr=subprocess.PIPE, text=True) as process:
            self.wait_for((project.parent / "begun").exists)
            process.send_signal(signal.SIGINT)
            process.communicate(timeout=PATIENCE)
        self.assertEqual({p.name for p in project.parent.iterdir()}, {"made.qbp", "begun", "help.css"})

    def test_a_second_one_ends_the_program_at_once(self):
        project = self.project()
        # One that does not listen, and goes by itself some time after the test.
        self.compiler("trap '' TERM; echo begun > begun; sleep 10")
        with self.start("build", project, stderr=subprocess.PIPE, text=True) as process:
            self.wait_for((project.parent / "begun").exists)
            start = time.monotonic()
            while process.poll() is None:
                process.send_signal(signal.SIGTERM)
                time.sleep(0.05)
            self.assertLess(time.monotonic() - start, 10)
        self.assertEqual(process.returncode, -signal.SIGTERM)

    def test_a_request_to_end_does_what_ctrl_c_does(self):
        project = self.project()
        self.compiler("echo begun > begun; sleep 10")
        with self.start("build", project, stderr=subprocess.PIPE, text=True) as process:
            self.wait_for((project.parent / "begun").exists)
            process.send_signal(signal.SIGTERM)
            _, err = process.communicate(timeout=PATIENCE)
        self.assertEqual(process.returncode, 128 + signal.SIGTERM, err)
        self.assertIn("quillbox: stopped", err)


class Compiling(Build):
    def test_takes_hhc_where_there_is_one_and_chmcmd_else(self):
        project = self.project()
        self.compiler('echo chm by chmcmd > made.chm', "chmcmd")
        self.run_build(project)
        self.assertEqual((project.parent / "made.chm").read_text(), "chm by chmcmd\n")
        self.compiler('echo chm by hhc > made.chm')
        self.run_build(project)
        self.assertEqual((project.parent / "made.chm").read_text(), "chm by hhc\n")

    def test_tells_each_problem_with_the_file_and_exits_with_1(self):
        project = self.project()
        self.compiler("echo compiling; echo 'HHC5010: Warning: Page2.html: a | long \"line\"   kept'; "
                      "echo warning: not counted; echo chm > made.chm")
        out, err = self.run_build(project, status=1)
        self.assertEqual(out, "")
        self.assertEqual(err, "made.qbp: HHC5010: Warning: Page2.html: a | long \"line\"   kept\n")

    def test_tells_all_that_the_compiler_said_once_it_failed(self):
        project = self.project()
        self.compiler("echo compiling; echo 'Error: cannot open Page9.html'; exit 1")
        _, err = self.run_build(project, status=1)
        self.assertEqual(err.splitlines(), ["compiling", "made.qbp: Error: cannot open Page9.html",
                                            "made.qbp: Error: hhc ended without a compiled file, with status 1"])
        self.assertFalse((project.parent / "made.chm").exists())

    def test_tells_a_character_that_the_code_page_cannot_hold(self):
        project = self.project()
        project.write_text(project.read_text().replace('Title="Page 2"', 'Title="\u4e66 2"'))
        self.environment["LANG"] = "en_US.UTF-8"
        self.compiler("echo 'Note: of the compiler'; echo chm > made.chm")
        _, err = self.run_build(project)
        self.assertRegex(err, r"^Note: \S+: U\+4E66 is not in code page 1252")
        self.assertEqual(len(err.splitlines()), 1)


class OwnTemplates(Build):
    def template(self, name, xml, page="%%itemtitle%%"):
        folder = self.folder / "Mine" / name
        folder.mkdir(parents=True)
        (folder / "template.xml").write_text(xml)
        (folder / "topic.html").write_text(page)

    GOOD = ('<PageTemplate Name="{}"><Namespace Name="CM.Quillbox"/>'
            '<Page File="topic.html" ItemType="cm.quillbox:topic"/></PageTemplate>')

    def test_come_from_the_folder_that_is_named(self):
        self.template("First", self.GOOD.format("First"))
        self.run_build(self.project(), "--templates", "Mine", "--template", "First", "--site", "site", "--no-compile")
        self.assertEqual((self.folder / "site" / "Page2.html").read_text(), "Page 2")
        out, _ = self.run_program("templates", "--templates", "Mine")
        self.assertIn("First", out.splitlines())

    def test_are_listed_with_the_reason_where_they_cannot_be_read(self):
        self.template("Bad", '<PageTemplate Name="Bad"><Pages/></PageTemplate>')
        out, err = self.run_program("templates", "--templates", "Mine", status=1)
        self.assertIn("HTML Help", out.splitlines())
        self.assertEqual(out.splitlines()[-1], "Bad\t(broken)")
        self.assertRegex(err, r"Mine/Bad/template.xml, line 1: expected Namespace, Page or SearchIndex, found Pages\n$")

    def test_a_folder_that_is_not_there_is_told(self):
        _, err = self.run_program("templates", "--templates", "Nowhere", status=2)
        self.assertEqual(err, "quillbox: There is no folder of templates 'Nowhere'\n")


if __name__ == "__main__":
    unittest.main()
