"""An installation below a prefix of its own: programs, script module, headers, package, data, manual page.

QUILLBOX_BUILD names the build tree."""

import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

BUILD = os.environ.get("QUILLBOX_BUILD", "")
HERE = pathlib.Path(__file__).resolve().parent


@unittest.skipUnless(BUILD, "QUILLBOX_BUILD names no build tree")
class Installation(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory(prefix="quillbox-install-")
        cls.addClassCleanup(folder.cleanup)
        cls.folder = pathlib.Path(folder.name)
        cls.prefix = cls.folder / "prefix"
        cls.run_program("cmake", "--install", BUILD, "--prefix", cls.prefix)

    @classmethod
    def run_program(cls, *command, **environment):
        """What a program writes, in an environment that knows nothing of the build tree."""
        known = {name: value for name, value in os.environ.items() if name not in ("PYTHONPATH", "LD_LIBRARY_PATH")}
        known.update(HOME=str(cls.folder), XDG_CONFIG_DIRS=str(cls.folder / "etc"), **environment)
        known.pop("QUILLBOX_REGISTRY", None)
        done = subprocess.run([str(part) for part in command], cwd=cls.folder, env=known, capture_output=True, text=True,
                              timeout=280)
        if done.returncode:
            raise AssertionError(f"{command}: {done.stdout}{done.stderr}")
        return done.stdout

    def found(self, pattern):
        paths = list(self.prefix.rglob(pattern))
        self.assertEqual(len(paths), 1, (pattern, paths))
        return paths[0]

    def test_the_command_line_runs_with_its_data(self):
        program = self.prefix / "bin" / "quillbox"
        types = self.prefix / "share" / "quillbox" / "Configuration" / "ProjectTypes"
        shutil.copy(types / "SoftwareManual.qbp", types / "Installed.qbp")
        self.run_program(program, "new", "manual.qbp", "--type", "Installed")
        self.assertIn("manual", self.run_program(program, "info", "manual.qbp"))
        self.assertIn("HTML Help", self.run_program(program, "templates"))

    def test_the_script_module_runs_with_its_stubs(self):
        package = self.found("_quillbox*.so").parent
        self.assertTrue((package / "__init__.pyi").exists() and (package / "py.typed").exists())
        out = self.run_program(
            sys.executable, "-c", "import quillbox; print(quillbox.__file__, quillbox.ahConfigPath(), "
            "quillbox.QbProject().NewManifest('m').Name)", PYTHONPATH=str(package.parent))
        self.assertEqual(out.split(), [str(package / "__init__.py"), f"{self.prefix}/share/quillbox/Configuration/", "m"])

    def test_other_projects_find_link_and_run_the_library(self):
        build = self.folder / "consumer"
        self.run_program("cmake", "-S", HERE / "consumer", "-B", build, f"-DCMAKE_PREFIX_PATH={self.prefix}",
                         "-DCMAKE_CXX_FLAGS=-Wall -Wextra -Wpedantic -Werror",
                         "-DCMAKE_C_FLAGS=-std=c99 -Wall -Wextra -Werror")
        self.run_program("cmake", "--build", build)
        lines = self.run_program(build / "consumer", self.folder / "consumed.qbp").splitlines()
        self.assertEqual(lines[0:2] + lines[-1:], ["Getting started", lines[1], "65535"])
        self.assertRegex(lines[1], r"^1 Guide \d+$")
        self.assertEqual(self.run_program(build / "consumer_c"), "1 1\n")

    def test_nothing_installed_leads_back_to_the_build_tree(self):
        texts = {path: path.read_text() for path in self.prefix.rglob("*.cmake")}
        for path in (self.prefix / "bin" / "quillbox", self.found("_quillbox*.so"), self.found("libquillbox.so")):
            texts[path] = self.run_program("readelf", "-d", path)
        for path, text in texts.items():
            for place in (BUILD, str(HERE.parents[1])):
                self.assertFalse(place in text, f"{path} names {place}")

    def test_the_manual_page_is_there(self):
        self.assertIn(".TH QUILLBOX 1", self.found("quillbox.1").read_text())


if __name__ == "__main__":
    unittest.main()
