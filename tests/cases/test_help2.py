"""The inputs that the template Help 2.0 writes for its compiler: well-formed, and of the shapes that it reads."""

import re
import unittest
import xml.etree.ElementTree as ElementTree

from support import Case

# Each element with the attributes that it must have, those that it may have, and the elements that may stand in it.
SHAPES = {
    "HelpCollection": ({"DTDVersion", "LangId", "Title"}, {"FileVersion", "Copyright"},
                       ["CompilerOptions", "TOCDef", "KeywordIndexDef", "ItemMoniker"]),
    "CompilerOptions": (set(), {"OutputFile", "CreateFullTextIndex", "CompileResult", "StopWordFile"}, ["IncludeFile"]),
    "IncludeFile": ({"File"}, set(), []),
    "TOCDef": ({"File"}, {"Id"}, []),
    "KeywordIndexDef": ({"File"}, {"Id"}, []),
    "ItemMoniker": ({"Name", "ProgId", "InitData"}, set(), []),
    "HelpFileList": ({"DTDVersion"}, {"FileVersion", "LangId"}, ["File"]),
    "File": ({"Url"}, set(), []),
    "HelpTOC": ({"DTDVersion"}, {"FileVersion", "LangId", "PluginStyle", "PluginTitle"}, ["HelpTOCNode"]),
    "HelpTOCNode": (set(), {"Title", "Url", "NodeType"}, ["HelpTOCNode"]),
    "HelpIndex": ({"DTDVersion", "Name"}, {"Title", "Visible", "LangId"}, ["Keyword"]),
    "Keyword": ({"Term"}, set(), ["Jump"]),
    "Jump": ({"Url"}, set(), []),
}
CHOICES = {"CreateFullTextIndex": {"Yes", "No"}, "CompileResult": {"Hxs", "HxiHxs"}, "Visible": {"Yes", "No"},
           "NodeType": {"TOC", "Regular"}, "PluginStyle": {"Hierarchical", "Flat"}, "DTDVersion": {"1.0"}}
ROOTS = {".hxc": "HelpCollection", ".hxf": "HelpFileList", ".hxt": "HelpTOC", ".hxk": "HelpIndex"}


class Help2(Case):
    def project(self, change=lambda text: text):
        file = self.handbook()
        text = file.read_text().replace('CompileType="1"', 'CompileType="2"')
        file.write_text(change(text.replace("handbook.chm", "handbook.HxS")))
        return file

    def build(self, file, *options):
        out, err = self.run_program("build", file, "--template", "Help 2.0", *options)
        inputs = {path.name: path for path in file.parent.iterdir() if path.suffix in ROOTS}
        return inputs, out, err

    def check(self, inputs):
        roots = {}
        for name, path in inputs.items():
            root = ElementTree.parse(path).getroot()
            self.assertEqual(root.tag, ROOTS[path.suffix], name)
            for element in root.iter():
                required, optional, children = SHAPES[element.tag]
                self.assertLessEqual(required, set(element.attrib), (name, element.tag))
                self.assertLessEqual(set(element.attrib), required | optional, (name, element.tag))
                places = [children.index(child.tag) for child in element]
                self.assertEqual(places, sorted(places), (name, element.tag))
                self.assertEqual((element.text or "").strip() + (element.tail or "").strip(), "", name)
                for attribute, choices in CHOICES.items():
                    self.assertIn(element.get(attribute, next(iter(choices))), choices, name)
            roots[name] = root
        return roots

    def test_have_the_shapes_that_the_compiler_reads(self):
        inputs, _, _ = self.build(self.project(), "--no-compile")
        self.assertEqual(sorted(inputs), sorted(
            prefix + "Quillbox Handbook" + end
            for prefix, ends in (("", (".hxc", ".hxf", ".hxk", ".hxt", "_NamedUrl.hxk")),
                                 ("COL_", (".hxc", ".hxk", ".hxt", "_NamedUrl.hxk"))) for end in ends))
        roots = self.check(inputs)
        title = "Quillbox Handbook"
        nodes = roots[title + ".hxt"]
        self.assertEqual([node.get("Title") for node in nodes][:3], ["Welcome", "Getting started", "Concepts"])
        self.assertEqual([node.get("Url") for node in nodes[1]], ["Installing.html", "FirstProject.html"])
        self.assertIsNone(nodes[1].get("Url"))
        self.assertEqual(nodes[-1].get("Url"), "Glossary.html")
        self.assertEqual(roots[title + ".hxc"].get("LangId"), "1033")
        self.assertEqual(roots["COL_" + title + ".hxt"][0].attrib, {"NodeType": "TOC", "Url": "QuillboxHandbook"})
        home = roots["COL_" + title + "_NamedUrl.hxk"].find("Keyword[@Term='HomePage']/Jump")
        self.assertEqual(home.get("Url"), "ms-help://Quillbox.Handbook/QuillboxHandbook/Welcome.html")

    def test_name_only_files_that_are_there(self):
        project = self.project()
        roots = self.check(self.build(project, "--no-compile")[0])
        for name, root in roots.items():
            for element in root.iter():
                url = element.get("File") or element.get("Url") or ""
                if element.tag in ("File", "Jump", "HelpTOCNode") and element.get("NodeType") != "TOC" \
                        or element.get("File"):
                    if url and "://" not in url:
                        self.assertTrue((project.parent / url.split("#")[0]).is_file(), f"{name}: {url}")
        listed = {file.get("Url") for file in roots["Quillbox Handbook.hxf"]}
        self.assertLessEqual({"Welcome.html", "Glossary.html", "help2.css", "images/cover.png"}, listed)

    def test_hold_any_title_and_keyword(self):
        nasty = 'A < B & "C" > \'D\' Ω 漢字 Größe'
        project = self.project(lambda text: text.replace('Title="Quillbox Handbook"', 'Title="Tom &amp; &quot;Jerry&quot;"')
                               .replace("© 2026", "&lt;©&gt; &amp;").replace('"Language">en<', '"Language">ja<'))
        topic = next(file for file in (project.parent / "TopicData").iterdir() if ' Name="Welcome"' in file.read_text())
        tree = ElementTree.parse(topic)
        tree.getroot().set("Title", nasty)
        tree.getroot().set("ContentsTitle", nasty)
        ElementTree.SubElement(tree.getroot(), "k", Value=nasty + "|Tools|Options")
        tree.write(topic, "UTF-8", xml_declaration=True)
        roots = self.check(self.build(project, "--no-compile")[0])
        title = 'Tom & "Jerry"'
        self.assertEqual(roots[title + ".hxc"].get("Title"), title)
        self.assertEqual({root.get("LangId") for root in roots.values()}, {"1041"})
        self.assertIn("<©> &", roots[title + ".hxc"].get("Copyright"))
        self.assertEqual(roots[title + ".hxc"].find("TOCDef").get("File"), title + ".hxt")
        self.assertEqual(roots[title + ".hxt"][0].get("Title"), nasty)
        terms = [keyword.get("Term") for keyword in roots[title + ".hxk"]]
        self.assertIn(nasty, terms)
        # Levels are no levels here: the whole keyword is one entry.
        self.assertIn(nasty + "|Tools|Options", terms)

    def test_lead_to_pages_of_any_name(self):
        project = self.project()
        for topic in (project.parent / "TopicData").iterdir():
            topic.write_text(topic.read_text().replace(' Name="Recipes"', ' Name="C# &amp; 100%"'))
        roots = self.check(self.build(project, "--no-compile")[0])
        self.assertTrue((project.parent / "C# & 100%.html").is_file())
        self.assertIn("C# & 100%.html", [file.get("Url") for file in roots["Quillbox Handbook.hxf"]])
        for name in ("Quillbox Handbook.hxk", "Quillbox Handbook.hxt"):
            self.assertIn("C%23 & 100%25.html", [element.get("Url") for element in roots[name].iter()], name)

    def test_an_empty_contents_and_index_are_well_formed_too(self):
        project = self.project()
        (project.parent / "ProjectData" / "TableOfContents.xml").write_text("<Glossary/>")
        for topic in (project.parent / "TopicData").iterdir():
            text = re.sub(r"<k [^>]*/>", "", topic.read_text())
            topic.write_text(text.replace('AutoGenerateIndexEntry="True"', 'AutoGenerateIndexEntry="False"'))
        roots = self.check(self.build(project, "--no-compile")[0])
        self.assertEqual(len(roots["Quillbox Handbook.hxt"]) + len(roots["Quillbox Handbook.hxk"]), 0)

    def test_are_what_a_build_gives_and_nothing_is_deleted(self):
        inputs, out, err = self.build(self.project())
        self.assertEqual(out.strip(), str(inputs["Quillbox Handbook.hxc"].parent) + "/")
        self.assertIn("Help 2.0 is not compiled here", err)
        self.assertEqual(len(inputs), 9)
        self.assertTrue((inputs["Quillbox Handbook.hxc"].parent / "Welcome.html").is_file())

    def test_are_not_for_a_project_of_html_help_whose_pages_stay_all_the_same(self):
        project = self.handbook()
        inputs, out, err = self.build(project)
        self.assertEqual(inputs, {})
        self.assertEqual(out.strip(), str(project.parent) + "/")
        self.assertIn("the template 'Help 2.0' has no input", err)
        self.assertTrue((project.parent / "Welcome.html").is_file())


if __name__ == "__main__":
    unittest.main()
