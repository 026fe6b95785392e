"""The script module over the library itself: classes, members, events and errors as scripts meet them."""

import ctypes
import datetime
import enum
import gc
import json
import shutil
import subprocess
import sys
import unittest
from pathlib import Path

import quillbox
from quillbox import ByRef, Error
from support import MachineTest, add_node, add_topic

TYPELIB = quillbox.typelib()


def library_path():
    """The shared library that this process has loaded."""
    with open("/proc/self/maps", encoding="utf-8") as maps:
        return next(line.split()[-1] for line in maps if "/libquillbox.so" in line)


class Classes(MachineTest):
    def test_every_creatable_class_is_made_by_call_and_by_name(self):
        for described in TYPELIB["classes"]:
            name = described["name"]
            with self.subTest(name=name):
                if described["creatable"]:
                    made, named = getattr(quillbox, name)(), quillbox.CreateObject(f"Quillbox.{name}")
                    self.assertEqual(type(made).__name__, name)
                    self.assertIs(type(made), type(named))
                    self.assertNotEqual(made, named)
                else:
                    with self.assertRaises(TypeError):
                        getattr(quillbox, name)()
                    with self.assertRaises(Error):
                        quillbox.CreateObject(f"Quillbox.{name}")

    def test_every_member_is_an_attribute_with_its_help_line(self):
        for described in TYPELIB["classes"]:
            made = quillbox.CreateObject(f"Quillbox.{described['name']}") if described["creatable"] else None
            for member in described["members"]:
                with self.subTest(name=f"{described['name']}.{member['name']}"):
                    self.assertTrue(member["help"])
                    if made is not None:
                        attribute = getattr(type(made), member["name"])
                        self.assertIn(member["help"], attribute.__doc__)
                        self.assertEqual(callable(attribute), member["kind"] == "method")

    def test_every_event_can_be_connected_and_disconnected(self):
        for described in TYPELIB["classes"]:
            if described["creatable"]:
                made = quillbox.CreateObject(f"Quillbox.{described['name']}")
                for event in described["events"]:
                    with self.subTest(name=f"{described['name']}.{event['name']}"):
                        getattr(made, event["name"]).connect(lambda *_: None).disconnect()

    def test_reading_every_plain_property_of_a_new_object_ends_in_a_value_or_an_error(self):
        for described in TYPELIB["classes"]:
            if described["creatable"]:
                made = quillbox.CreateObject(f"Quillbox.{described['name']}")
                for member in described["members"]:
                    if member["kind"].startswith("property") and not member["params"]:
                        try:
                            getattr(made, member["name"])
                        except Error as error:
                            self.assertTrue(error.description, member["name"])

    def test_classes_that_the_library_alone_makes(self):
        header = self.write("ids.h", "#define HELP_ID 17\n")
        project = self.project()
        project.HelpContextIDHeaderFile = header
        ids = project.HeaderIds
        self.assertIsInstance(ids, quillbox.HeaderIds)
        self.assertIsInstance(ids.Item(1), quillbox.HeaderId)


class Members(MachineTest):
    def test_properties_are_attributes(self):
        project = self.project()
        project.Title = "Handbuch für Gärtner"
        self.assertEqual(project.Title, "Handbuch für Gärtner")
        with self.assertRaises(AttributeError):
            project.QualifiedName = "x"
        with self.assertRaises(AttributeError):
            project.Titel
        with self.assertRaises(AttributeError):
            project.Titel = "x"

    def test_a_parameterised_property_in_all_its_forms(self):
        topic = add_topic(self.project())
        topic.TopicSectionData["BodyText"] = "<p>x</p>"
        self.assertEqual(topic.TopicSectionData("BodyText"), "<p>x</p>")
        self.assertEqual(topic.TopicSectionData["BodyText"], "<p>x</p>")
        self.assertEqual(topic.TopicSectionData(Key="BodyText"), "<p>x</p>")

    def test_methods_take_published_names(self):
        project = self.project()
        first, second = add_topic(project, "first"), project.NewTopic()
        project.Topics.Add(second, Key=second.Key, Before=1)
        self.assertEqual(list(project.Topics), [second, first])
        with self.assertRaises(TypeError):
            project.Topics.Add(second, key="x")

    def test_by_reference_arguments(self):
        project = self.project()
        add_node(project.QbNodes, "Book")
        nodes = ByRef()
        self.assertEqual(project.QbNodes.AllNodes(nodes), nodes.value)
        self.assertEqual(len(nodes.value), 1)
        self.assertEqual(len(project.QbNodes.AllNodes(quillbox.QbNodes())), 1)
        self.assertEqual(len(project.QbNodes.AllNodes()), 1)

    def test_none_both_ways(self):
        topic = add_topic(self.project())
        self.assertIsNone(topic.TopicCategory)
        topic.TopicCategory = None
        self.assertIsNone(topic.TopicCategory)

    def test_dates_are_naive(self):
        topic = quillbox.Topic()
        topic.CreatedOn = datetime.datetime(2024, 2, 29, 12, 30, 15)
        self.assertEqual(topic.CreatedOn, datetime.datetime(2024, 2, 29, 12, 30, 15))

    def test_enumerations_are_int_enums_and_their_values_names_of_the_module(self):
        self.assertTrue(issubclass(quillbox.CompileTypeEnum, enum.IntEnum))
        for described in TYPELIB["enumerations"]:
            for value in described["values"]:
                self.assertEqual(getattr(quillbox, value["name"]), value["value"])
                self.assertIs(getattr(getattr(quillbox, described["name"]), value["name"]), getattr(quillbox, value["name"]))
        project = self.project()
        project.CompileType = quillbox.CompileHelp2
        self.assertIs(project.CompileType, quillbox.CompileTypeEnum.CompileHelp2)
        project.CompileType = 1
        self.assertIs(project.CompileType, quillbox.CompileHTMLHelp1)

    def test_what_is_read_may_be_called(self):
        project = self.project()
        topic = add_topic(project, "Start")
        for name in ("ReadOnly", "IsCheckedOut", "CheckOutStatus", "QualifiedName", "LocalSpec", "InternalContentsTitle"):
            with self.subTest(name=name):
                self.assertEqual(getattr(topic, name)(), getattr(topic, name))
        file = project.NewOtherFile(self.path("picture.png"))
        self.assertEqual((file.IsImage(), file.IsImage), (True, True))
        self.assertEqual(str(file.IsImage), "True")

    def test_all_entries_is_a_value_and_may_be_called(self):
        project = self.project()
        manifest = project.NewManifest("Book")
        entry = manifest.NewManifestEntry(add_topic(project), "")
        manifest.Entries.Add(entry, entry.Key)
        entries = manifest.Entries
        self.assertEqual(list(entries.AllEntries), [entry])
        self.assertEqual(entries.AllEntries.Count, 1)
        self.assertEqual(entries.AllEntries[entry.Key], entry)
        more = quillbox.ManifestEntries()
        self.assertEqual(entries.AllEntries(more), more)
        self.assertEqual(len(more), 1)
        self.assertIsInstance(entries.AllEntries, quillbox.ManifestEntries)

    def test_members_of_an_interface_under_their_own_names(self):
        provider, names = quillbox.QbDataProvider(), quillbox.QbNamespaceProvider()
        self.assertEqual(provider.ParseForProperties("plain"), "plain")
        self.assertEqual(names.Name, "CM.Quillbox")
        listed = {c["name"]: [m["name"] for m in c["members"]] for c in TYPELIB["classes"]}
        self.assertNotIn("ParseForProperties", listed["QbDataProvider"])
        self.assertNotIn("GetItems", listed["QbNamespaceProvider"])

    def test_the_description_is_plain_data(self):
        self.assertEqual(json.loads(json.dumps(TYPELIB)), TYPELIB)


class CollectionsAndIdentity(MachineTest):
    def test_collections(self):
        project = self.project()
        topics = [add_topic(project, f"topic{number}") for number in range(5)]
        self.assertEqual(len(project.Topics), 5)
        self.assertEqual(list(project.Topics), topics)
        self.assertEqual(project.Topics[2], topics[1])
        self.assertEqual(project.Topics[topics[1].Key.lower()], topics[1])
        self.assertIsNone(project.Topics["none"])

    def test_identity_follows_the_object(self):
        project = self.project()
        topic = add_topic(project)
        self.assertEqual(project.Topics[1], topic)
        self.assertEqual(hash(project.Topics[1]), hash(topic))
        self.assertIs(project.Topics[1].QbProject, project)
        self.assertEqual({topic: 1}[project.TopicByName(topic.Name)], 1)

    def test_objects_go_when_nobody_holds_them(self):
        def use():
            project = self.project()
            project.TopicAdded.connect(lambda topic: project.Title)
            for number in range(20):
                add_topic(project, f"topic{number}", body="<p>x</p>")
            add_node(project.QbNodes, "Book", topic=project.Topics[1])
            project.Load(project.Save())

        use()
        gc.collect()
        before = quillbox._quillbox.alive()
        for _ in range(3):
            use()
        gc.collect()
        self.assertEqual(quillbox._quillbox.alive(), before)


class EventsAndErrors(MachineTest):
    def test_events_bring_their_arguments_in_order(self):
        project, heard = self.project(), []
        connection = project.TopicSectionChanged.connect(lambda *arguments: heard.append(arguments))
        topic = add_topic(project)
        heard.clear()
        topic.TopicSectionData["BodyText"] = "x"
        topic.TopicSectionData["BodyText"] = "y"
        self.assertEqual(heard[-1], (topic, topic.TopicSections[1]))
        connection.disconnect()
        heard.clear()
        topic.TopicSectionData["BodyText"] = "z"
        self.assertEqual(heard, [])

    def test_an_exception_in_a_handler_reaches_the_script(self):
        project = self.project()
        project.TopicAdded.connect(lambda topic: {}["missing"])
        with self.assertRaises(Error) as caught:
            add_topic(project)
        self.assertIsInstance(caught.exception.__cause__, KeyError)
        self.assertIn("missing", str(caught.exception))

    def test_errors_have_number_and_description(self):
        with self.assertRaises(Error) as caught:
            self.project().Topics.Remove("none")
        self.assertEqual(caught.exception.number, 65535)
        self.assertEqual(str(caught.exception), caught.exception.description)

    def test_python_objects_pass_through_plain_collections(self):
        document, thing = quillbox.platform.Document(), {"any": ["thing"]}
        document.Objects.Add(thing, "key")
        self.assertIs(document.Objects.Item("key"), thing)


class EntryPoints(MachineTest):
    def test_the_library_says_whether_it_is_held(self):
        program = (
            "import ctypes, gc, sys, quillbox\n"
            "library = ctypes.CDLL(sys.argv[1])\n"
            "told = [library.DllCanUnloadNow()]\n"
            "project = quillbox.QbProject()\n"
            "topic = project.NewTopic()\n"
            "topic.TopicSectionData['BodyText'] = 'x'\n"
            "told.append(library.DllCanUnloadNow())\n"
            "del project, topic\n"
            "gc.collect()\n"
            "told.append(library.DllCanUnloadNow())\n"
            "print(told)\n"
        )
        done = subprocess.run([sys.executable, "-c", program, library_path()], capture_output=True, text=True, timeout=60)
        self.assertEqual(done.stdout.strip(), "[0, 1, 0]", done.stderr)

    def test_classes_are_registered_and_taken_out(self):
        library, machine = ctypes.CDLL(library_path()), quillbox.platform.HKEY_LOCAL_MACHINE
        read = lambda key: quillbox.platform.ReadRegistryValue(machine, key, "")
        self.assertEqual(library.DllRegisterServer(), 0)
        identity = read("Software\\Classes\\Quillbox.Topic\\CLSID")
        self.assertRegex(identity, r"^\{[0-9A-F-]{36}\}$")
        path = read(f"Software\\Classes\\CLSID\\{identity}\\InprocServer32")
        self.assertTrue(Path(path).samefile(library_path()))
        self.assertEqual(read("Software\\Classes\\Quillbox.HeaderId\\CLSID"), "")
        self.assertEqual(library.DllUnregisterServer(), 0)
        self.assertEqual(read("Software\\Classes\\Quillbox.Topic\\CLSID"), "")


@unittest.skipUnless(shutil.which("mypy"), "no type checker")
class Stubs(unittest.TestCase):
    def test_the_stubs_and_a_script_pass_the_strict_type_checker(self):
        program = (
            "import quillbox\n"
            "from quillbox import ByRef\n\n"
            "project = quillbox.QbProject()\n"
            'project.Filename.Path = "a.qbp"\n'
            'project.Title, project.CompileType = "A", quillbox.CompileHelp2\n'
            "topic = project.NewTopic()\n"
            'topic.TopicSectionData["BodyText"] = "<p>x</p>"\n'
            "project.Topics.Add(topic, Key=topic.Key)\n"
            "names: list[str] = [t.Name for t in project.Topics]\n"
            "count: int = quillbox.TopicStatuses.Count + len(quillbox.TopicStatuses())\n"
            "path: str = quillbox.ahConfigPath()\n"
            "cancel, quiet = ByRef(), ByRef()\n"
            "quillbox.BeforeDeleteTopic(topic, cancel, quiet)\n"
            "project.TopicAdded.connect(lambda added: print(added.Name)).disconnect()\n"
            'project.Build(None, "", False, True, True)\n'
        )
        folder = Path(quillbox.__file__).parents[1]
        done = subprocess.run(
            ["mypy", "--strict", "--python-executable", sys.executable, "--cache-dir=/dev/null", "-c", program],
            env={"MYPYPATH": str(folder), "PATH": "/usr/bin:/bin"},
            capture_output=True, text=True, timeout=110,
        )
        self.assertEqual(done.stdout.strip(), "Success: no issues found in 1 source file")


if __name__ == "__main__":
    unittest.main()
