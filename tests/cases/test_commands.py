import json
import unittest

from support import HANDBOOK, Case


class Info(Case):
    def test_counts_what_the_handbook_holds(self):
        out, _ = self.run_program("info", self.handbook())
        self.assert_expected("info.txt", out)

    def test_tells_programs_every_kind_of_content(self):
        out, _ = self.run_program("info", self.handbook(), "--json")
        info = json.loads(out)
        for kind in ("topics", "categories", "contents", "glossary", "tasks", "otherFiles", "manifests", "variables",
                     "headerIds"):
            self.assertTrue(info[kind], kind)
        self.assertTrue(any(topic["relatedTopics"] for topic in info["topics"]))


class HeaderIds(Case):
    def test_lists_names_values_and_comments(self):
        out, _ = self.run_program("headerids", HANDBOOK / "handbook.h")
        self.assert_expected("headerids.txt", out)

    def test_a_file_that_is_not_there_is_unusable(self):
        _, err = self.run_program("headerids", "none.h", status=2)
        self.assertIn("none.h", err)


class Convert(Case):
    def test_there_and_back_loses_nothing(self):
        project = self.handbook()
        before, _ = self.run_program("info", project, "--json")
        self.run_program("convert", project, "--single-file")
        single, _ = self.run_program("info", project, "--json")
        self.run_program("convert", project, "--separate-files")
        after, _ = self.run_program("info", project, "--json")
        self.assertEqual(json.loads(single)["projectType"], "single-file")
        self.assertEqual(before, after)

    def test_needs_to_know_the_type(self):
        self.run_program("convert", self.handbook(), status=2)


class New(Case):
    def test_makes_a_project_that_loads_again(self):
        out, _ = self.run_program("new", "made/manual", "--type", "SoftwareManual")
        path = out.strip()
        self.assertTrue(path.endswith("made/manual.qbp"), path)
        info = json.loads(self.run_program("info", path, "--json")[0])
        self.assertEqual(info["title"], "manual")

    def test_leaves_a_file_alone_that_is_there(self):
        project = self.handbook()
        before = project.read_bytes()
        self.run_program("new", project, status=2)
        self.assertEqual(project.read_bytes(), before)

    def test_names_the_types_that_there_are(self):
        _, err = self.run_program("new", "x.qbp", "--type", "Nonsense", status=2)
        self.assertIn("installed are", err)


class WrongUsage(Case):
    def test_ends_with_status_2(self):
        for arguments in ([], ["nonsense"], ["build"], ["info", "a", "b"], ["info", "none.qbp"]):
            with self.subTest(arguments=arguments):
                _, err = self.run_program(*arguments, status=2)
                self.assertTrue(err.strip())


class BadProjects(Case):
    def test_one_plain_sentence_names_the_file(self):
        sound = self.handbook().read_text()
        cases = {
            "empty.qbp": "",
            "truncated.qbp": sound[: len(sound) // 2],
            "deep.qbp": "<QbProject>" + "<a>" * 100000,
            "bomb.qbp": '<!DOCTYPE x [<!ENTITY a "aaaa"><!ENTITY b "&a;&a;">]><QbProject>&b;</QbProject>',
            "binary.qbp": "\0\1\2\3" * 100,
            "twice.qbp": '<QbProject><Topic Key="{1}" Name="a"/><Topic Key="{1}" Name="b"/></QbProject>',
        }
        for name, text in cases.items():
            with self.subTest(name):
                path = self.folder / name
                path.write_text(text)
                out, err = self.run_program("info", path, status=2)
                self.assertEqual(out, "")
                self.assertEqual(len(err.strip().splitlines()), 1, err)
                self.assertIn(name, err)
                self.assertEqual(path.read_text(), text)


if __name__ == "__main__":
    unittest.main()
