import os
import unittest

import quillbox
from support import MachineTest


class HeaderTest(MachineTest):
    def read_header(self, text):
        project = self.project()
        project.HelpContextIDHeaderFile = self.write("ids.h", text)
        return project.HeaderIds

    def only(self, line):
        ids = self.read_header(line + "\n")
        self.assertEqual(len(ids), 1, line)
        return ids.Item(1).Name, ids.Item(1).Value, ids.Item(1).Comment


class Reading(HeaderTest):
    def test_without_a_header_file_there_is_no_list(self):
        self.assertIsNone(self.project().HeaderIds)

    def test_a_definition_has_a_name_a_value_and_a_comment(self):
        self.assertEqual(self.only("#define IDH_TOPIC1 100 // Main window"), ("IDH_TOPIC1", 100, "Main window"))
        self.assertEqual(self.only("#define A 1 /* b */"), ("A", 1, "b */"))
        self.assertEqual(self.only("#define A 1"), ("A", 1, ""))

    def test_number_forms(self):
        for text, value in {
            "0x00C8": 200, "0d300": 300, "0x10L": 16, "(1000)": 0, "IDH_BASE + 1": 0, "0X1F": 0, "&H1F": 31,
            "&O17": 15, "0xFFFF": -1, "0x8000": -32768, "0x7FFF": 32767, "0x10000": 65536, "0xFFFFFFFF": -1, "-5": -5,
            "12.5": 12, "13.5": 14, "007": 7, "2147483647": 2147483647, "-2147483648": -2147483648, "": 0,
        }.items():
            self.assertEqual(self.only(f"#define A {text} // c" if text else "#define A  // c")[1], value, text)

    def test_a_value_that_does_not_fit_fails_and_names_the_line(self):
        with self.assertFails("ids.h:2"):
            self.read_header("#define A 1\n#define B 2147483648\n")

    def test_other_lines_are_passed_over(self):
        ids = self.read_header(
            "\n#DEFINE X 1\n# define Y 1\n#ifdef Z\n#defined A 1\n// #define B 1\n  \n#define\tC 1\n#define D 4\n#endif\n")
        self.assertEqual([(i.Name, i.Value) for i in ids], [("D", 4)])

    def test_an_indented_definition_is_cut_wrongly(self):
        self.assertEqual(self.only("  #define NAME 5")[0], "e")
        self.assertEqual(self.only("#define    NAME   5   ")[:2], ("NAME", 5))

    def test_a_slash_cuts_the_line_at_its_first_place(self):
        self.assertEqual(self.only("#define A 1 // see docs/a.txt"), ("A", 1, "see docs/a.txt"))
        self.assertEqual(self.only("#define A 10/2"), ("A", 10, ""))
        self.assertEqual(self.only("#define A 10/2 more"), ("A", 10, "more"))

    def test_a_name_alone_ends_the_load_with_a_failure(self):
        for line in ("#define NAME", "#define NAME\t5", "#define NAME/5"):
            with self.subTest(line), self.assertFails("ids.h:2"):
                self.read_header("#define A 1\n" + line + "\n#define B 2\n")

    def test_what_was_read_before_a_failure_stays_in_the_list(self):
        ids = self.read_header("#define OLD 1\n")
        path = self.write("broken.h", "#define A 1\n#define NAME\n#define B 2\n")
        with self.assertFails(path):
            ids.Load(path)
        self.assertEqual([i.Name for i in ids], ["A"])

    def test_an_empty_file_gives_an_empty_list(self):
        ids = self.read_header("")
        self.assertEqual((len(ids), ids.Count), (0, 0))

    def test_line_ends_of_any_system_and_none_at_the_end_are_read(self):
        self.assertEqual([i.Name for i in self.read_header("#define A 1\r\n#define B 2")], ["A", "B"])

    def test_a_file_that_is_not_there_fails_and_is_named(self):
        project = self.project()
        project.HelpContextIDHeaderFile = self.path("none.h")
        with self.assertFails(self.path("none.h")):
            project.HeaderIds
        with self.assertFails():
            self.read_header("").Load(self.folder)

    def test_what_never_ends_is_not_read(self):
        os.mkfifo(self.path("pipe.h"))
        project = self.project()
        for path in (self.path("pipe.h"), "/dev/zero"):
            project.HelpContextIDHeaderFile = path
            with self.subTest(path), self.assertFails(path):
                project.HeaderIds

    def test_each_read_is_a_fresh_list(self):
        project = self.project()
        project.HelpContextIDHeaderFile = self.write("ids.h", "#define A 1\n")
        first = project.HeaderIds
        self.write("ids.h", "#define A 1\n#define B 2\n")
        self.assertEqual((len(first), len(project.HeaderIds)), (1, 2))
        self.assertEqual(self.read("ids.h"), b"#define A 1\n#define B 2\n")
        self.assertEqual(os.listdir(self.folder).count("ids.h"), 1)


class Items(HeaderTest):
    def setUp(self):
        super().setUp()
        self.ids = self.read_header("#define First 1\n#define x 2\n#define X 3\n")

    def test_the_position_of_an_item_is_found_by_number_and_by_name(self):
        for index, position in ((1, 1), (3, 3), (4, 0), (0, 0), (-1, 0), ("X", 2), ("first", 1), ("none", 0), ("", 0),
                                ("2", 2), ("5", 0), ("3 or so", 3)):
            self.assertEqual(self.ids.ItemIndex(index), position, index)
            self.assertEqual(self.ids.ValidIndex(index), position != 0, index)
            self.assertEqual(self.ids.Exists(Index=index), position != 0, index)

    def test_an_item_is_given_by_position_or_name_and_a_miss_is_none(self):
        self.assertEqual(self.ids.Item(2).Value, 2)
        self.assertEqual((self.ids["X"], self.ids.Item("x")), (self.ids.Item(2), self.ids[2]))
        for index in (0, 5, "5", "none", "", -1):
            self.assertIsNone(self.ids.Item(index), index)

    def test_a_text_that_reads_as_a_valid_position_goes_to_the_collection_as_a_key_and_fails(self):
        with self.assertFails():
            self.ids.Item("2")

    def test_a_name_that_begins_with_a_digit_cannot_be_looked_up(self):
        self.ids.Add("10ABC", 5)
        self.assertEqual(self.ids.ItemIndex("10ABC"), 0)
        self.assertIsNone(self.ids.Item("10ABC"))

    def test_removing_by_position_or_name_and_of_nothing(self):
        for index in (9, "none", "", 0):
            self.ids.Remove(index)
        self.assertEqual(len(self.ids), 3)
        self.ids.Remove("x")
        self.ids.Remove(1)
        self.assertEqual([i.Value for i in self.ids], [3])

    def test_an_item_is_added_before_behind_or_at_the_end_and_given_back(self):
        made = self.ids.Add("A", 10, "c")
        self.assertEqual((made.Name, made.Value, made.Comment), ("A", 10, "c"))
        self.ids.Add(Name="B", Before=1, After=1)
        self.ids.Add("C", After="first")
        self.ids.Add("D", Before=99, After=99)
        empty = self.ids.Add()
        self.assertEqual((empty.Name, empty.Value, empty.Comment), ("", 0, ""))
        self.assertEqual([i.Name for i in self.ids], ["B", "First", "C", "x", "X", "A", "D", ""])

    def test_clear_empties_the_list(self):
        self.ids.Clear()
        self.assertEqual((len(self.ids), list(self.ids)), (0, []))

    def test_an_item_is_three_plain_fields(self):
        item = self.ids.Item(1)
        item.Name, item.Value, item.Comment = "n", -7, "c"
        self.assertEqual((self.ids.Item(1).Name, self.ids.Item(1).Value, self.ids.Item(1).Comment), ("n", -7, "c"))

    def test_scripts_cannot_make_them(self):
        for made in (quillbox.HeaderIds, quillbox.HeaderId):
            with self.assertRaises(TypeError):
                made()


if __name__ == "__main__":
    unittest.main()
