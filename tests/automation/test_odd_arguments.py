"""Every member of every class with arguments that no script should give: an error, never more."""

import copy
import datetime
import faulthandler
import operator
import os
import pickle
import re
import time
import unittest

import quillbox
from quillbox import ByRef, Error, platform
from support import MachineTest, add_child, add_node, add_topic, element, forget_shared_lists, variable

INFOS = {info.name: info for info in quillbox._quillbox.classes()}
ONE_CALL = 2.0  # seconds of the processor
WORDS_OF_OTHERS = re.compile(r"std::|basic_string|_M_|bad_|::at\b|stoi|stod|Unable to cast|pybind11|regex_error")


class Hostile:
    """A script's object that fails whatever is asked of it."""

    def __getattr__(self, name):
        raise RuntimeError("no " + name)

    def __str__(self):
        raise RuntimeError("no text")

    __repr__ = __str__

    def __call__(self, *arguments):
        raise RuntimeError("not now")


def odd_values():
    aware = datetime.datetime(2001, 1, 1, tzinfo=datetime.timezone.utc)
    return [
        None, True, False, 0, 1, -1, 2**31 - 1, -(2**31), 2**31, 2**64, -(10**30), 0.5, -1e308, float("inf"), float("nan"),
        "", "x", " ", "\0", "a\0b", "\ud800", "a\udfffb", "\U0010ffff\ufffe", "%", "%%x", "..", "/", "\\", "{", "<a b='",
        "x" * 70_000,
        datetime.datetime.min, datetime.datetime.max, datetime.date(1, 1, 1), aware, datetime.timedelta(1), b"x", 1j,
        [], (1, 2), {}, object(), int, len, lambda *arguments: 1 / 0, Hostile(), ByRef(), ByRef("x"), ByRef(ByRef()),
        quillbox.Topic(), quillbox.QbProject(), quillbox.QbNodes(), platform.FileSystemObject(), platform.Document(),
    ]


class OddArguments(MachineTest):
    def setUp(self):
        super().setUp()
        faulthandler.dump_traceback_later(110, exit=True)
        self.addCleanup(faulthandler.cancel_dump_traceback_later)
        self.addCleanup(os.chdir, os.getcwd())
        os.makedirs(self.path("work"))
        os.chdir(self.path("work"))
        self.boxes.answer = platform.mbCancel
        platform.SetWebRequest(lambda url: "no network here")
        self.addCleanup(platform.SetWebRequest, None)
        if hasattr(platform, "SetNewProjectForm"):
            platform.SetNewProjectForm(lambda form: None)
            self.addCleanup(platform.SetNewProjectForm, None)
        self.write("work/ids.h", "#define ID 1\n")

    def sample(self):
        """A project with one of everything."""
        forget_shared_lists()
        project = self.project(os.path.join("work", "manual.qbp"))
        project.HelpContextIDHeaderFile = self.path("work", "ids.h")
        project.BuildErrorsOrWarnings.connect(lambda document, result, cancel: setattr(cancel, "value", True))
        category = project.NewTopicCategory()
        project.TopicCategories.Add(category, category.Key)
        topic = add_topic(project, "Start", body="<h1>a</h1><a href='b.html'>c</a><img src='d.png'>")
        topic.AddKeyword("word")
        related = quillbox.RelatedTopic()
        topic.RelatedTopics.Add(related)
        add_child(add_node(project.QbNodes, "Book"), topic=topic)
        term = project.NewGlossaryItem("term", "means")
        project.GlossaryItems.Add(term, term.Key)
        task = project.NewTask()
        project.Tasks.Add(task, task.Key)
        file = project.NewOtherFile(self.path("work", "a.css"))
        project.OtherFiles.Add(file, file.LocalSpec)
        manifest = project.NewManifest("Guide")
        entry = manifest.NewManifestEntry(topic, "")
        manifest.Entries.Add(entry, entry.Key)
        project.Manifests.Add(manifest, manifest.Key)
        project.VariableValues.Add(variable("name", "value"), "name")
        return project

    def reached(self):
        """Objects of the classes that the library or its platform makes, from a fresh project."""
        project = self.sample()
        topic, manifest = project.Topics[1], project.Manifests[1]
        dom = project.NewDOM("<p id='x'>a</p>")
        links = topic.GetSuspectLinks()
        root = element("<e a='b'><f/></e>")
        found = [
            project, topic, project.Topics, project.TopicCategories, project.TopicCategories[1], topic.Keywords,
            topic.TopicSections, topic.TopicSections[1], topic.TopicSections[1].TopicSectionDef, topic.StyleSheets,
            topic.RelatedTopics, topic.RelatedTopics[1], project.QbNodes, project.QbNodes[1], project.GlossaryItems,
            project.GlossaryItems[1], project.Tasks, project.Tasks[1], project.OtherFiles, project.OtherFiles[1],
            project.Filename, project.Manifests, manifest, manifest.Entries, manifest.Entries[1],
            manifest.BookletProperties, project.VariableValues, project.VariableValues[1], project.HeaderIds,
            project.HeaderIds[1], links, links[1], quillbox.Root(),
            quillbox.TopicStatuses(), quillbox.TopicStatuses[1], dom, dom.body, dom.all, root, root.Attributes,
            root.Attributes[1], quillbox.Root().QuillboxPageTemplates(),
        ]
        objects = {type(one).__name__: one for one in found}
        return objects

    def attempt(self, what, call):
        """Gives what comes back; an error has to be one of ours, and to come soon."""
        started = time.process_time()
        result = None
        try:
            result = call()
        except Error as error:
            self.assertIsInstance(error.number, int, what)
            self.assertTrue(str(error), what)
            self.assertNotRegex(str(error), WORDS_OF_OTHERS, what)
        except (TypeError, AttributeError, IndexError) as error:  # an index is Python's own, where there are none
            self.assertTrue(str(error), what)
        self.assertLess(time.process_time() - started, ONE_CALL, what)
        return result

    def every_object(self):
        """For each class a maker of fresh objects: of one by itself, and of one inside a project."""
        for name, info in INFOS.items():
            if info.creatable and name != "VSSDatabase":  # there is no client
                yield info, getattr(quillbox, name, None) or getattr(platform, name)
        for name in list(self.reached()):
            yield INFOS[name], lambda name=name: self.reached()[name]

    def calls(self, count):
        """Argument lists for a member: too few, too many, and an odd one at each place."""
        for number in {*range(count), count + 1, count + 40}:
            yield (None,) * number
        for value in odd_values():
            yield (value,) * max(count, 1)
            for place in range(count if count > 1 else 0):
                yield tuple(value if place == at else "" for at in range(count))

    def call(self, what, function, count):
        for arguments in self.calls(count):
            self.attempt(what, lambda: function(*arguments))
        for keywords in ({"nonsense": 1}, {"\ud800": 1}, {"": None}):
            self.attempt(what, lambda: function(**keywords))

    def use(self, what, member, target):
        if member.kind == "method" or member.params:
            self.call(what, lambda *a, **k: getattr(target, member.name)(*a, **k), len(member.params))
        for value in odd_values():
            self.attempt(what, lambda: setattr(target, member.name, value))
            if member.params:
                self.attempt(what, lambda: getattr(target, member.name)[value])
                self.attempt(what, lambda: operator.setitem(getattr(target, member.name), value, value))
            elif member.kind != "method":
                self.attempt(what, lambda: getattr(target, member.name))
        self.attempt(what, lambda: delattr(target, member.name))

    def test_members(self):
        for info, fresh in self.every_object():
            for member in info.members:
                self.use(f"{info.name}.{member.name}", member, fresh())

    def test_events(self):
        for info, fresh in self.every_object():
            for event in info.events:
                what, target = f"{info.name}.{event.name}", fresh()
                for value in odd_values():
                    connection = self.attempt(what, lambda: getattr(target, event.name).connect(value))
                    self.attempt(what, lambda: setattr(target, event.name, value))
                    if connection:
                        connection.disconnect()
                        connection.disconnect()

    def test_handlers_that_fail_whatever_they_hear(self):
        project = self.sample()
        for name in (event.name for event in INFOS["QbProject"].events):
            getattr(project, name).connect(Hostile())
        for member in INFOS["QbProject"].members:
            self.use(member.name, member, project)

    def test_objects_as_collections_and_values(self):
        for info, fresh in self.every_object():
            target = fresh()
            for value in odd_values():
                for step in (operator.getitem, operator.delitem, operator.contains, operator.add, operator.lt,
                             operator.call):
                    self.attempt(info.name, lambda: step(target, value))
                self.attempt(info.name, lambda: operator.setitem(target, value, value))
                self.assertFalse(target == value, info.name)
            for step in (len, list, iter, hash, repr, str, bool, int, copy.copy, copy.deepcopy, pickle.dumps):
                self.attempt(info.name, lambda: step(target))
            self.attempt(info.name, lambda: type(target)(1))
            self.attempt(info.name, lambda: type("Derived", (type(target),), {})(1, x=2))
            self.attempt(info.name, lambda: object.__new__(type(target)))

    def test_functions_of_the_module_and_of_the_platform(self):
        self.addCleanup(platform.SetMessageBox, None)
        functions = {"CreateObject": 1, "typelib": 0, "ahConfigPath": 0, "BeforeDeleteTopic": 3, "ByRef": 1}
        of_platform = {"SetMessageBox": 1, "SetWebRequest": 1, "ReadRegistryValue": 3, "WriteRegistryValue": 4,
                       "DeleteRegistryValue": 3, "ReleaseRoot": 0}
        for module, counts in ((quillbox, functions), (platform, of_platform)):
            for name, count in counts.items():
                self.call(name, getattr(module, name), count)
        for hive in (platform.HKEY_CURRENT_USER, platform.HKEY_LOCAL_MACHINE):
            for value in odd_values():
                self.attempt("WriteRegistryValue", lambda: platform.WriteRegistryValue(hive, value, value, value))
                self.attempt("WriteRegistryValue", lambda: platform.WriteRegistryValue(hive, "Key", "Name", value))
                self.attempt("ReadRegistryValue", lambda: platform.ReadRegistryValue(hive, value, value))


if __name__ == "__main__":
    unittest.main()
