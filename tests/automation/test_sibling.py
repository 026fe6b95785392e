"""Objects of another maker's library, created by the name of their class and used by the names of their members."""

import os
import subprocess
import sys
import unittest

import quillbox
from quillbox import ByRef, Error, platform
from support import MachineTest

SIBLING = os.environ.get("QUILLBOX_SIBLING", "")


def register(name, identity="{COUNTER}", path=SIBLING):
    machine = platform.HKEY_LOCAL_MACHINE
    platform.WriteRegistryValue(machine, f"Software\\Classes\\{name}\\CLSID", "", identity)
    platform.WriteRegistryValue(machine, f"Software\\Classes\\CLSID\\{identity}\\InprocServer32", "", path)


@unittest.skipUnless(SIBLING, "QUILLBOX_SIBLING names no library")
class Sibling(MachineTest):
    def setUp(self):
        super().setUp()
        register("Sibling.Counter")
        self.counter = quillbox.CreateObject("Sibling.Counter")

    def test_its_members_are_found_by_name_in_any_case(self):
        self.counter.Count = 5
        self.assertEqual((self.counter.Count, self.counter.count), (5, 5))
        self.assertEqual((self.counter.Add(2), self.counter.add(1)), (7, 8))

    def test_what_is_passed_by_reference_comes_back(self):
        number = ByRef(21)
        self.assertIsNone(self.counter.Double(number))
        self.assertEqual(number.value, 42)

    def test_its_failures_are_ours_with_their_number(self):
        with self.assertRaises(Error) as caught:
            self.counter.Fail()
        self.assertEqual((caught.exception.number, str(caught.exception)), (77, "The sibling fails"))
        for use in (lambda: self.counter.Nothing, lambda: setattr(self.counter, "Nothing", 1),
                    lambda: setattr(self.counter, "Count", "many"), lambda: self.counter.Add(),
                    lambda: self.counter.Add("x")):
            with self.assertRaises(Error):
                use()
        self.assertEqual(self.counter.Count, 0)

    def test_objects_pass_both_ways_as_themselves(self):
        topic, other, script = quillbox.Topic(), quillbox.CreateObject("Sibling.Counter"), {"any": "thing"}
        for friend in (topic, other, script, None):
            self.counter.Friend = friend
            self.assertIs(self.counter.Friend, friend)
        self.assertNotEqual(self.counter, other)

    def test_the_library_holds_it_as_itself(self):
        collection, section = platform.Document().Objects, quillbox.TopicSection()
        collection.Add(self.counter, "key")
        section.Tag = self.counter
        self.assertIs(collection.Item("key"), self.counter)
        self.counter.Count = 3
        self.assertEqual((collection["key"].Count, section.Tag.Add(1)), (3, 4))

    def test_it_is_no_object_of_ours(self):
        project = self.project()
        for use in (lambda: project.Topics.Add(self.counter), lambda: project.FireTopicAdded(self.counter),
                    lambda: setattr(project, "Topics", self.counter), lambda: setattr(project, "Title", self.counter)):
            with self.assertRaises(Error):
                use()
        self.assertEqual(len(project.Topics), 0)

    def test_a_class_that_cannot_be_created_says_why(self):
        register("Gone.Class", "{GONE}", "/no/such/library.so")
        register("Sibling.Other", "{OTHER}")
        for name, reason in (("Nobody.Class", "No class 'Nobody.Class' is registered"), ("Gone.Class", "does not load"),
                             ("Sibling.Other", "does not offer it")):
            with self.subTest(name), self.assertRaises(Error) as caught:
                quillbox.CreateObject(name)
            self.assertIn(reason, str(caught.exception))

    def test_the_sibling_product_is_found_where_it_is_registered(self):
        def installed():
            program = "import quillbox; print(bool(quillbox.Root().IsCodemarkInstalled()))"
            done = subprocess.run([sys.executable, "-c", program], capture_output=True, text=True, timeout=60)
            return done.stdout.strip() or done.stderr

        self.assertEqual(installed(), "False")
        register("Codemark.Root")
        self.assertEqual(installed(), "True")


if __name__ == "__main__":
    unittest.main()
