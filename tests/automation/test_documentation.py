"""Runs the Python of the readme, the guide and the handbook."""

import contextlib
import html
import io
import os
import re
import shutil
import unittest
from pathlib import Path
from xml.etree import ElementTree

import quillbox
from support import MachineTest

SOURCE = Path(os.environ.get("QUILLBOX_SOURCE_DIR") or Path(__file__).resolve().parents[2])
COMPILER = shutil.which("chmcmd") or shutil.which("hhc")


def fenced(document):
    return re.findall(r"^```python\n(.*?)^```", (SOURCE / document).read_text(encoding="utf-8"), re.M | re.S)


def handbook_samples():
    """The Python of each topic of the handbook, by the topic's name."""
    samples = {}
    for path in sorted((SOURCE / "examples/handbook/TopicData").glob("*.xml")):
        topic = ElementTree.parse(path).getroot()
        for body in topic.iter("s"):
            for marked in re.findall(r"<pre[^>]*>(.*?)</pre>", body.text or "", re.S):
                text = html.unescape(re.sub(r"<[^>]+>", "", marked))
                if is_python(text):
                    samples.setdefault(topic.get("Name"), []).append(text)
    return samples


def is_python(text):
    if not re.search(r"\b(quillbox|project|topic|link)\.", text):
        return False
    try:
        compile(text, "sample", "exec")
    except SyntaxError:
        return False
    return True


class DocumentationTest(MachineTest):
    def setUp(self):
        super().setUp()
        os.environ["QUILLBOX_REGISTRY"] = self.path("empty registry")  # the own templates serve
        shutil.copytree(SOURCE / "examples/handbook", self.path("handbook"))
        before = os.getcwd()
        os.chdir(self.folder)
        self.addCleanup(os.chdir, before)

    def run_sample(self, text, names):
        """Runs it in the test's own folder; what it prints is what its comments say."""
        for place, folder in (("/tmp/garden", "garden"), ("/home/me/garden", "handbook"), ("/home/me/handbook", "handbook"),
                              ("examples/handbook", "handbook")):
            text = text.replace(place, self.path(folder))
        printed = io.StringIO()
        with contextlib.redirect_stdout(printed):
            exec(compile(text, "sample", "exec"), names)
        promised = re.findall(r"^print\(.*\)\s+# ([^:\n]+)", text, re.M)
        if promised:
            self.assertEqual([line.strip() for line in printed.getvalue().splitlines()][-len(promised):], promised)
        return printed.getvalue()


class Readme(DocumentationTest):
    @unittest.skipUnless(COMPILER, "no help compiler here")
    def test_the_script_of_ten_lines_makes_a_project_and_a_help_file(self):
        script = fenced("README.md")[0]
        lines = [line for line in script.splitlines() if line.strip()]
        self.assertEqual((lines[0], len(lines)), ("import quillbox", 11))
        self.run_sample(script, {})
        self.assertEqual([t.Name for t in self.loaded("garden/garden.qbp").Topics], ["Sowing"])
        self.assertEqual(self.read("garden/garden.chm")[:4], b"ITSF")


class Guide(DocumentationTest):
    @unittest.skipUnless(COMPILER, "no help compiler here")
    def test_the_samples_run_in_their_order(self):
        names = {}
        samples = fenced("docs/automation.md")
        self.assertGreaterEqual(len(samples), 6)
        output = [self.run_sample(sample.replace("\n...\n", "\n"), names) for sample in samples]
        self.assertIn("Quillbox", output[0])
        self.assertIn("scrap = A named text.\n", output)
        self.assertTrue(any("property-read QualifiedName String" in text for text in output))


class Handbook(DocumentationTest):
    """Each topic's samples run one after the other, with the handbook as the project at hand."""

    def names_for(self, name):
        project = self.loaded("handbook/handbook.qbp")
        topic = project.TopicByName("Topics")
        names = {"quillbox": quillbox, "project": project, "topic": topic}
        if name == "Events":
            names["topic"] = project.NewTopic()
        if name == "Variables":
            project.VariableValues.Remove("ProductName")
        if name == "CheckingLinks":
            topic.TopicSectionData["BodyText"] = "<p><a href='gone.html'>gone</a></p>"
            names["link"] = topic.GetSuspectLinks().Item(1)
        return names

    def test_the_samples_of_every_topic_run(self):
        samples = handbook_samples()
        self.assertGreaterEqual(sum(map(len, samples.values())), 30)
        for name, texts in samples.items():
            if name == "FirstProject" and not COMPILER:
                continue
            with self.subTest(name):
                names = self.names_for(name)
                for text in texts:
                    self.run_sample(text, names)

    def test_a_sample_of_the_handbook_changes_what_it_says(self):
        names = self.names_for("CheckingLinks")
        for text in handbook_samples()["CheckingLinks"]:
            self.run_sample(text, names)
        self.assertIn("Topics.html#body", names["topic"].TopicSectionData("BodyText"))
        again = self.loaded("handbook/handbook.qbp")
        self.assertIn("Topics.html#body", again.TopicByName("Topics").TopicSectionData("BodyText"))


if __name__ == "__main__":
    unittest.main()
