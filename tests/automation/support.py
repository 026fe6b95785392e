"""What the tests of published behaviour share: a machine of their own, what it showed and told, and its files."""

import os
import shutil
import tempfile
import unittest
import xml.etree.ElementTree as ElementTree
from contextlib import contextmanager
from datetime import datetime, timedelta

# Whether there is a client of source control is asked once in a process.
os.environ["QUILLBOX_NO_SOURCESAFE"] = "1"

import quillbox

SETTINGS_KEY = "Software\\Merivane\\Quillbox"
GUID = r"^\{[0-9A-F]{8}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{12}\}$"
ZERO_DATE = datetime(1899, 12, 30)

STATUSES = (
    '<?xml version="1.0"?><list><s Name="Draft" Caption="A draft" Icon="draft.png"/>'
    '<s Name="In Progress" Caption="Being written" Icon="progress.png"/></list>'
)
BOOKLET = (
    '<?xml version="1.0"?><BookletProperties TemplateName="Print" PageBreaks="1" UnPrintableLeft="1" '
    'UnPrintableRight="2" UnPrintableTop="3" UnPrintableBottom="4" MarginLeft="10" MarginRight="11.5" MarginTop="12" '
    'MarginBottom="13" PaperSize="1" OutputFileName="" CoverpageTopicID="" EntryNumbering="2" GenerateTOC="True">'
    "<HeaderHTML>top</HeaderHTML><FooterHTML>bottom</FooterHTML></BookletProperties>"
)


class MessageBoxes:
    """Stands in for the message boxes: notes each one, and answers what a test says."""

    def __init__(self):
        self.answer = quillbox.platform.mbOK
        self.shown = []

    def __call__(self, text, title, buttons, icon):
        self.shown.append((text, title, buttons, icon))
        return self.answer


class Events(list):
    """Notes the events of objects in the order in which they are raised: name and arguments."""

    def __init__(self, *sources, without=()):
        super().__init__()
        described = {c["name"]: c["events"] for c in quillbox.typelib()["classes"]}
        for source in sources:
            for event in described[type(source).__name__]:
                if event["name"] not in without:
                    getattr(source, event["name"]).connect(self._note(event["name"]))

    def _note(self, name):
        return lambda *arguments: self.append((name, *arguments))

    def taken(self):
        """The events so far; the list starts anew."""
        noted = self[:]
        self.clear()
        return noted

    def names(self):
        return [event[0] for event in self]


class MachineTest(unittest.TestCase):
    """A test with a temporary machine: settings, configuration folder, working folder, message boxes."""

    def setUp(self):
        self.folder = tempfile.mkdtemp(prefix="quillbox-")
        self.addCleanup(shutil.rmtree, self.folder, True)
        self.install_folder = self.path("install")
        self.configuration = self.path("install", "Configuration")
        os.makedirs(self.configuration)
        os.makedirs(self.path("install", "Templates"))
        os.makedirs(self.path("registry"))
        self._point_settings_at(self.path("registry"))
        self.set_install_folder(self.install_folder + os.sep)
        self.write("install/Configuration/statuscodes.xml", STATUSES)
        self.write("install/Configuration/bookletproperties.xml", BOOKLET)
        self.boxes = MessageBoxes()
        quillbox.platform.SetMessageBox(self.boxes)
        self.addCleanup(quillbox.platform.SetMessageBox, None)
        forget_shared_lists()

    def _point_settings_at(self, folder):
        before = os.environ.get("QUILLBOX_REGISTRY")
        os.environ["QUILLBOX_REGISTRY"] = folder
        if before is None:
            self.addCleanup(os.environ.pop, "QUILLBOX_REGISTRY")
        else:
            self.addCleanup(os.environ.__setitem__, "QUILLBOX_REGISTRY", before)

    def set_install_folder(self, folder):
        quillbox.platform.WriteRegistryValue(quillbox.platform.HKEY_LOCAL_MACHINE, SETTINGS_KEY, "InstallDir", folder)

    # Files.

    def path(self, *names):
        return os.path.join(self.folder, *names)

    def write(self, name, text):
        path = self.path(name)
        os.makedirs(os.path.dirname(path), exist_ok=True)
        with open(path, "wb") as file:
            file.write(text if isinstance(text, bytes) else text.encode())
        return path

    def read(self, name):
        with open(self.path(name), "rb") as file:
            return file.read()

    def xml(self, name):
        return ElementTree.fromstring(self.read(name))

    def files(self):
        """Every file of the working folder with its content."""
        found = {}
        for folder, folders, names in os.walk(self.folder):
            folders[:] = [name for name in folders if name not in ("install", "registry")]
            for name in names:
                path = os.path.join(folder, name)
                found[os.path.relpath(path, self.folder)] = self.read(path)
        return found

    # Projects.

    def project(self, name="manual.qbp", separate=False):
        project = quillbox.QbProject()
        project.Filename.Path = self.path(name)
        if separate:
            project.ProjectType = quillbox.ProjectTypeSeparateFiles
            project.Dirty = False
        return project

    def loaded(self, name="manual.qbp"):
        project = quillbox.QbProject()
        project.Filename.Path = self.path(name)
        project.LoadFromFile(self.path(name))
        return project

    def project_of(self, xml_text):
        """A project that was loaded from text."""
        project = self.project()
        project.Load(xml_text)
        return project

    # Statements.

    @contextmanager
    def assertFails(self, *mentions):
        with self.assertRaises(quillbox.Error) as caught:
            yield caught
        self.assertEqual(caught.exception.number, 65535)
        self.assertNotEqual(caught.exception.description, "")
        self.assertEqual(str(caught.exception), caught.exception.description)
        for mention in mentions:
            self.assertIn(mention, caught.exception.description)

    def assertNow(self, date):
        self.assertIsInstance(date, datetime)
        self.assertIsNone(date.tzinfo)
        self.assertLess(abs(datetime.now() - date), timedelta(seconds=30))

    def assertXml(self, element, expected):
        """Same names, attributes in the same order, same texts, same children."""
        self.assertEqual(shape(element), shape(ElementTree.fromstring(expected)))


def forget_shared_lists():
    """Drops the shared lists that tests before this one left: they go with the last Root."""
    quillbox.platform.ReleaseRoot()
    quillbox.Root()


def shape(element):
    """An element as nested plain data. White space between child elements says nothing."""
    text = element.text or ""
    if len(element) and not text.strip():
        text = ""
    return [element.tag, list(element.attrib.items()), text, [shape(child) for child in element]]


def add_topic(project, name="Start", title="", body=None):
    topic = project.NewTopic()
    topic.Name = name
    topic.Title = title or name
    if body is not None:
        topic.TopicSectionData["BodyText"] = body
    project.Topics.Add(topic, topic.Key)
    return topic


def add_node(nodes, caption="", topic=None, parent=None):
    node = nodes.NewNode(parent)
    if topic is not None:
        node.QbNodeType = quillbox.ntSingleTopic
        node.TopicID = topic.Key
    else:
        node.CaptionText = caption
    return node


def add_child(parent, caption="", topic=None):
    return add_node(parent.ChildNodes, caption, topic, parent)


def variable(name, value):
    made = quillbox.platform.VariableValue()
    made.Name = name
    made.Value = value
    return made


def element(xml_text):
    """An XML element as the members Load and Save take it."""
    document = quillbox.platform.XMLDocument()
    document.Parse(xml_text, quillbox.ByRef())
    return document.RootElement


def saved(item, name="e"):
    """What an item saves into an element of that name."""
    document = quillbox.platform.XMLDocument()
    root = document.RootElement
    root.Name = name
    item.Save(root)
    return ElementTree.fromstring(document.ToXml)
