"""The platform's objects as scripts hold them."""

import gc
import os
import stat
import unittest

import quillbox
from quillbox import ByRef, Error, platform
from support import MachineTest


class Xml(MachineTest):
    def parsed(self, text):
        document, result = platform.XMLDocument(), ByRef()
        document.Parse(text, result)
        self.assertIs(result.value, True)
        return document

    def test_a_document_is_parsed_and_read(self):
        root = self.parsed('<a Name="x" Key="y"><b>one</b><c>two</c></a>').RootElement
        self.assertEqual(root.Name, "a")
        self.assertEqual([child.Text for child in root.Children], ["one", "two"])
        self.assertEqual(root.Attributes.Item("NAME").Value, "x")
        self.assertEqual(root.Attributes["key"].Name, "Key")
        self.assertEqual(root.Attributes[2].Value, "y")
        self.assertEqual([attribute.Value for attribute in root.Attributes], ["x", "y"])
        self.assertEqual((len(root.Attributes), root.Attributes.Count), (2, 2))
        with self.assertRaises(Error) as caught:
            root.Attributes.Item("missing")
        self.assertIn("missing", str(caught.exception))
        with self.assertRaises(Error):
            root.Attributes.Item(3)

    def test_a_document_is_made_and_written(self):
        document = platform.XMLDocument()
        root = document.RootElement
        self.assertEqual(root.Name, "")
        root.Name = "a"
        self.assertEqual(root.AddAttribute("n", 'v"<').Value, 'v"<')
        child = root.AddChild("b", "text & more")
        child.Text = child.Text + "!"
        again = self.parsed(document.ToXml).RootElement
        self.assertEqual(again.Attributes["n"].Value, 'v"<')
        self.assertEqual(again.Children[1].Text, "text & more!")

    def test_text_that_is_not_well_formed_is_an_error_with_its_line(self):
        document = platform.XMLDocument()
        for text in ("<a>\n<b></a>", "", "plain", "<a/><a/>"):
            result = ByRef(True)
            with self.assertRaises(Error):
                document.Parse(text, result)
        with self.assertRaises(Error) as caught:
            document.Parse("<a>\n\n<b></a>")
        self.assertIn("3", str(caught.exception))

    def test_elements_are_themselves_again_and_keep_their_document(self):
        document = self.parsed("<a><b><c x='1'/></b></a>")
        self.assertIs(document.RootElement, document.RootElement)
        element = document.RootElement.Children[1]
        number = hash(element)
        self.assertEqual(element, document.RootElement.Children[1])
        self.assertEqual(hash(document.RootElement.Children[1]), number)
        del document
        gc.collect()
        self.assertEqual(element.Children[1].Attributes["x"].Value, "1")

    def test_elements_are_made_by_their_document_alone(self):
        for name in ("XMLElement", "XMLAttributes", "XMLAttribute"):
            with self.assertRaises(TypeError):
                getattr(platform, name)()

    def test_an_item_loads_from_an_element_and_saves_into_one(self):
        project = self.project()
        item = project.NewTopicCategory()
        item.Load(self.parsed('<cat Key="{K}" Name="Guides"/>').RootElement)
        self.assertEqual((item.Key, item.Name), ("{K}", "Guides"))
        document = platform.XMLDocument()
        document.RootElement.Name = "cat"
        item.Save(document.RootElement)
        self.assertEqual(document.RootElement.Attributes["Name"].Value, "Guides")


class Files(MachineTest):
    def file(self, *names):
        file = platform.FileSystemObject()
        file.Path = self.path(*names)
        return file

    def test_a_new_object_has_no_path(self):
        self.assertEqual(platform.FileSystemObject().FullPath, "")

    def test_the_parts_of_a_path(self):
        file = self.file("folder", "name.part.txt")
        self.assertEqual(file.FullPath, self.path("folder", "name.part.txt"))
        self.assertEqual(file.Directory, self.path("folder") + os.sep)
        self.assertEqual((file.FileName, file.BaseName, file.Extension), ("name.part.txt", "name.part", "txt"))
        file.Extension = "bak"
        file.BaseName = "other"
        self.assertEqual(file.FileName, "other.bak")

    def test_a_file_is_written_and_read(self):
        file = self.file("a.txt")
        self.assertEqual(file.Exists, False)
        file.Open(4, 2, 1, 32767)
        file.Write("first\r\nsecond €")
        file.Close()
        self.assertTrue(file.Exists())
        text = ByRef()
        self.assertEqual(file.ReadAll(text), "first\r\nsecond €")
        self.assertEqual(text.value, "first\r\nsecond €")
        file.Open(3, 1, 1, 32767)
        lines = []
        while not file.EndOfFile:
            lines.append(file.ReadLine())
        file.Close()
        self.assertEqual(lines, ["first", "second €"])

    def test_folders_are_made_and_listed(self):
        file = platform.FileSystemObject()
        file.SetDirectory(self.path("made", "deep"))
        self.assertEqual(file.DirectoryExists, False)
        file.CreateDirectory()
        file.CreateDirectory()
        self.assertEqual(file.DirectoryExists, True)
        for name in ("b.qbp", "a.QBP", "c.txt"):
            self.write(os.path.join("made", "deep", name), "x")
        found = ByRef()
        listed = file.ListFiles("*.qbp", 0, found)
        self.assertEqual(listed, found.value)
        self.assertEqual([one.FileName for one in found.value], ["a.QBP", "b.qbp"])
        self.assertEqual(found.value.Count, 2)

    def test_read_only_is_what_the_owner_may_not_write(self):
        file = self.file("a.txt")
        self.write("a.txt", "x")
        self.assertEqual(file.IsReadOnly, False)
        os.chmod(file.FullPath, stat.S_IREAD)
        self.assertEqual(file.IsReadOnly, True)
        with self.assertRaises(Error) as caught:
            file.Open(4, 2, 3, 32767)
        self.assertIn("a.txt", str(caught.exception))

    def test_a_path_relative_to_a_file(self):
        base, file = self.file("p.qbp"), self.file("images", "x.png")
        file.RelativeTo = base
        self.assertEqual(file.RelativePath, os.path.join("images", "x.png"))
        file.RelativeTo = None
        self.assertEqual(file.FullPath, self.path("images", "x.png"))
        with self.assertRaises(AttributeError):
            file.RelativeTo

    def test_failures_name_the_path(self):
        file = self.file("missing.txt")
        with self.assertRaises(Error) as caught:
            file.ReadAll()
        self.assertIn("missing.txt", str(caught.exception))


class Html(MachineTest):
    def setUp(self):
        super().setUp()
        body = '<h1 class="big">Title</h1><p id="x">One <b>two</b></p><a name="here">a</a><a href="b.htm">b</a>'
        self.dom = self.project().NewDOM(body)

    def test_elements_by_tag_name_and_position(self):
        self.assertIsInstance(self.dom, platform.HTMLDocument)
        self.assertIsInstance(self.dom.all, platform.IHTMLElementCollection)
        links = self.dom.all.tags("A")
        self.assertEqual((len(links), links.length), (2, 2))
        self.assertEqual([link.tagName.lower() for link in links], ["a", "a"])
        self.assertEqual(links.item(0), links[0])
        self.assertIsNone(links.item(2))
        self.assertIsNone(self.dom.all.item("nothing"))
        self.assertEqual(len(self.dom.anchors), 1)

    def test_attributes(self):
        heading = self.dom.all.tags("h1").item(0)
        self.assertEqual(heading.className, "big")
        heading.setAttribute("title", "t", 1)
        self.assertEqual(heading.getAttribute("title", 0), "t")
        with self.assertRaises(Error):
            heading.getAttribute("missing")

    def test_markup_is_read_and_put(self):
        paragraph = self.dom.all.tags("p").item(0)
        self.assertEqual(paragraph.outerText.strip(), "One two")
        paragraph.innerHTML = "<i>new</i>"
        self.assertIn("<i>new</i>", self.dom.body.innerHTML)
        paragraph.outerHTML = ""
        self.assertNotIn("<i>new</i>", self.dom.documentElement.outerHTML)


class Engine(MachineTest):
    def test_a_document_has_its_settings_and_lists(self):
        document = platform.Document()
        document.OutputPath, document.Compile = "/tmp/x/", True
        self.assertEqual((document.OutputPath, document.Compile), ("/tmp/x/", True))
        value = platform.VariableValue()
        value.Name, value.Value = "Product", "Quillbox"
        document.VariableValues.Add(value, value.Name)
        self.assertEqual(document.VariableValues["product"], value)
        document.VariableValues = platform.VariableValues()
        self.assertEqual(len(document.VariableValues), 0)
        self.assertIsInstance(document.PageTemplates, platform.PageTemplates)
        self.assertFalse(document.Cancelled)

    def test_an_element_is_a_tag_with_attributes(self):
        element = platform.Element()
        self.assertEqual(element.Kind, 2)
        element.Attributes.Add("title", "type")
        self.assertEqual(element.Attributes["TYPE"], "title")

    def test_required_lists_are_not_none(self):
        document = platform.Document()
        for name in ("VariableValues", "Objects", "PageTemplates"):
            with self.subTest(name=name), self.assertRaises(Error):
                setattr(document, name, None)

    def test_classes_that_the_engine_alone_makes(self):
        for name in ("PageTemplate", "TemplatePage", "LoadedPage", "HTMLDocument", "IHTMLElement", "VSSItem"):
            with self.subTest(name=name), self.assertRaises(TypeError):
                getattr(platform, name)()


class Settings(MachineTest):
    def test_values_are_kept_in_the_file_of_their_hive(self):
        place = (platform.HKEY_CURRENT_USER, "Software\\Test", "Name")
        self.assertEqual(platform.ReadRegistryValue(*place), "")
        platform.WriteRegistryValue(*place, "a value")
        self.assertEqual(platform.ReadRegistryValue(*place), "a value")
        self.assertIn(b"[Software\\Test]", self.read("registry/current_user.ini"))
        platform.DeleteRegistryValue(*place)
        self.assertEqual(platform.ReadRegistryValue(*place), "")


if __name__ == "__main__":
    unittest.main()
