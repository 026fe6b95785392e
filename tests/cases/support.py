"""What the command-line cases share: running the program on a copy of a project, and expected output.

QUILLBOX names the program. With QUILLBOX_UPDATE=1 in the environment the files in expected/ are written anew."""

import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest

SOURCE = pathlib.Path(__file__).resolve().parents[2]
HANDBOOK = SOURCE / "examples" / "handbook"
EXPECTED = pathlib.Path(__file__).resolve().parent / "expected"
PROGRAM = os.environ.get("QUILLBOX", str(SOURCE / "out" / "dev" / "bin" / "quillbox"))


class Case(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="quillbox-case-")
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def handbook(self):
        """A copy of the handbook to work on: what is in the repository, and nothing that a build left there."""
        copy = self.folder / "handbook"
        listed = subprocess.run(["git", "ls-files", "-z", "."], cwd=HANDBOOK, capture_output=True, check=True)
        for name in listed.stdout.decode().rstrip("\0").split("\0"):
            (copy / name).parent.mkdir(parents=True, exist_ok=True)
            shutil.copy(HANDBOOK / name, copy / name)
        return copy / "handbook.qbp"

    def run_program(self, *arguments, status=0):
        """Runs the program, checks its exit status, and gives what it wrote to standard output and error."""
        environment = dict(os.environ, QUILLBOX_REGISTRY=str(self.folder / "registry"))
        done = subprocess.run([PROGRAM, *map(str, arguments)], cwd=self.folder, env=environment, text=True,
                              capture_output=True, stdin=subprocess.DEVNULL, timeout=120)
        self.assertEqual(done.returncode, status, done.stdout + done.stderr)
        return done.stdout, done.stderr

    def assert_expected(self, name, text):
        """Holds a text against a file of expected/; the case's own folder is written as FOLDER."""
        text = text.replace(str(self.folder), "FOLDER")
        file = EXPECTED / name
        if os.environ.get("QUILLBOX_UPDATE"):
            file.write_text(text)
        self.assertEqual(file.read_text(), text, f"see {file}")

    def assert_expected_folder(self, name, texts):
        """Holds texts by file name against a folder of expected/, which may hold nothing else."""
        folder = EXPECTED / name
        update = bool(os.environ.get("QUILLBOX_UPDATE"))
        if update:
            shutil.rmtree(folder, ignore_errors=True)
        for file, text in texts.items():
            if update:
                (folder / file).parent.mkdir(parents=True, exist_ok=True)
            if update or (folder / file).is_file():
                self.assert_expected(f"{name}/{file}", text)
        held = [str(file.relative_to(folder)) for file in folder.rglob("*") if file.is_file()]
        self.assertEqual(sorted(held), sorted(texts), f"see {folder}")
