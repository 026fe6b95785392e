import os
import unittest
from datetime import datetime

import quillbox
from support import Events, MachineTest, add_node, add_topic, shape, variable
from xml.etree import ElementTree

ATTRIBUTES = [
    "ProjectType", "Version", "SaveDateTime", "CMPFileName", "TemplateName", "SpellLastCheckDateTime", "Title",
    "OutputFilename", "CompileType", "Help2Namespace", "Help2FileID", "SSActivated", "SSProject",
    "HelpContextIDHeaderFile",
]


class Writing(MachineTest):
    def saved(self, project):
        return ElementTree.fromstring(project.Save())

    def test_the_root_has_its_attributes_in_order(self):
        root = self.saved(self.project())
        self.assertEqual((root.tag, list(root.attrib)), ("QbProject", ATTRIBUTES))
        self.assertRegex(root.get("Version"), r"^\d+\.\d+\.\d+$")
        written = datetime.strptime(root.get("SaveDateTime"), "%d/%m/%Y %H:%M:%S")
        self.assertNow(written)

    def test_a_project_with_nothing_set_writes_its_defaults(self):
        root = self.saved(self.project())
        self.assertEqual(
            {name: root.get(name) for name in ATTRIBUTES if name not in ("Version", "SaveDateTime",
                                                                         "SpellLastCheckDateTime")},
            {"ProjectType": "0", "CMPFileName": "", "TemplateName": "", "Title": "", "OutputFilename": "",
             "CompileType": "1", "Help2Namespace": "", "Help2FileID": "", "SSActivated": "False", "SSProject": "",
             "HelpContextIDHeaderFile": ""})

    def test_settings_are_written_as_they_read(self):
        project = self.project()
        project.Title = "A & <B>"
        project.CompileType = quillbox.CompileHelp2
        project.SSProject = "$/Manual"
        project.SSActivated = True  # no client here, so it reads False
        root = self.saved(project)
        self.assertEqual(
            [root.get(name) for name in ("Title", "CompileType", "SSProject", "SSActivated", "ProjectType")],
            ["A & <B>", "2", "$/Manual/", "False", "0"])

    def test_children_stand_in_order_with_their_content(self):
        project = full_project(self)
        topic = project.Topics.Item(1)
        root = self.saved(project)
        self.assertEqual(
            [child.tag for child in root],
            ["SpellIgnoreAllWordList", "cat", "cat", "VariableValue", "VariableValue", "file", "Topic", "Topic",
             "GlossaryItems", "Manifests", "Nodes", "Tasks"])
        self.assertEqual(root.find("SpellIgnoreAllWordList").text, "Quillbox|qbp")
        self.assertEqual(
            [(v.get("Name"), v.text) for v in root.iter("VariableValue")], [("Product", "Seeder"), ("Edition", "2")])
        self.assertEqual(root.find("file").attrib, {"FileName": os.path.join("images", "a.png")})
        self.assertEqual(root.find("Topic").get("Key"), topic.Key)
        self.assertEqual(root.find("GlossaryItems/glossaryitem").text, "a plant")
        self.assertEqual(root.find("Manifests/manifest").get("n"), "Guide")
        self.assertEqual(root.find("Nodes/n").get("c"), "Book")
        self.assertEqual(root.find("Tasks/Task").get("Title"), "Proofread")

    def test_a_variable_with_an_empty_name_is_not_written(self):
        project = self.project()
        project.VariableValues.Add(variable("", "lost"))
        project.VariableValues.Add(variable("Kept", "x"), "Kept")
        self.assertEqual([v.get("Name") for v in self.saved(project).iter("VariableValue")], ["Kept"])

    def test_a_separate_files_project_keeps_the_keys_of_topics_alone(self):
        project = full_project(self, separate=True)
        root = self.saved(project)
        self.assertEqual([t.attrib for t in root.iter("Topic")], [{"Key": t.Key} for t in project.Topics])
        for name in ("GlossaryItems", "Manifests", "Nodes", "Tasks"):
            self.assertEqual(shape(root.find(name)), [name, [], "", []])
        self.assertEqual(root.get("ProjectType"), "1")
        self.assertEqual(len(list(root.iter("cat"))), 2)

    def test_save_to_text_changes_no_flag_of_the_project_itself(self):
        project = full_project(self)
        events = Events(project)
        project.Save()
        self.assertTrue(project.ProjectDirty and project.TopicsDirty)
        self.assertTrue(project.Tasks.Dirty and project.GlossaryItems.Dirty and project.QbNodes.Dirty)
        self.assertFalse(project.Topics.Item(1).Dirty)
        self.assertEqual(events, [])


class Reading(MachineTest):
    def test_every_setting_comes_back(self):
        project = self.project_of(
            '<QbProject ProjectType="0" Version="9.9.9" SaveDateTime="nonsense" CMPFileName="r.cmp" TemplateName="T" '
            'Title="&#228; title" OutputFilename="o.chm" CompileType="2" Help2Namespace="N" Help2FileID="F" '
            'SSActivated="True" SSProject="$/P" HelpContextIDHeaderFile="i.h"/>')
        self.assertEqual(
            [project.CMPFileName, project.TemplateName, project.Title, project.OutputFileName, project.CompileType,
             project.Help2Namespace, project.Help2FileID, project.SSProject, project.HelpContextIDHeaderFile],
            ["r.cmp", "T", "ä title", "o.chm", quillbox.CompileHelp2, "N", "F", "$/P/", "i.h"])
        self.assertEqual((project.SSActivated, project.Dirty), (False, False))

    def test_attributes_are_found_in_any_letter_case(self):
        for name in ("Help2FileID", "Help2fileid", "HELP2FILEID"):
            self.assertEqual(self.project_of(f'<QbProject {name}="F1"/>').Help2FileID, "F1")

    def test_an_absent_or_unreadable_attribute_leaves_the_value(self):
        project = self.project()
        project.Title, project.CompileType, project.OutputFileName = "Old", 2, "o.chm"
        project.Load('<QbProject CompileType="two" ProjectType=""/>')
        self.assertEqual(
            (project.Title, project.CompileType, project.OutputFileName, project.ProjectType), ("Old", 2, "o.chm", 0))

    def test_the_spelling_date_round_trips(self):
        project = self.project()
        for date in (datetime(2024, 2, 29, 23, 59, 58), datetime(1999, 12, 31)):
            project.SpellLastCheckDateTime = date
            self.assertEqual(self.project_of(project.Save()).SpellLastCheckDateTime, date)

    def test_elements_are_known_in_any_letter_case_and_the_root_is_not(self):
        inner = ('<FILE FileName="a.css"/><TOPIC Key="{K}" Name="Start"/><Cat Name="C" Key="{C}"/>'
                 '<NODES/><variablevalue Name="V">x</variablevalue>')
        project = self.project_of(f"<QbProject>{inner}</QbProject>")
        self.assertEqual(
            (project.OtherFiles.Count, project.Topics.Item(1).Name, project.TopicCategories.Count), (1, "Start", 1))
        self.assertEqual(project.VariableValues.Item("V").Value, "x")
        for root in ("qbproject", "QBPROJECT", "topicset", "Other"):
            project = self.project_of(f'<{root} Title="Seen">{inner}</{root}>')
            self.assertEqual((project.Topics.Count, project.OtherFiles.Count, project.Title), (0, 0, "Seen"), root)

    def test_old_settings_among_the_variables_are_no_variables(self):
        project = self.project_of(
            '<QbProject TemplateName="attribute"><VariableValue Name="Template">Web Help</VariableValue>'
            '<VariableValue Name="HelpCompilerVersion">2.0 or so</VariableValue>'
            '<VariableValue Name="OutputFileName">o.chm</VariableValue><VariableValue Name="Help2Namespace">N'
            '</VariableValue><VariableValue Name="Help2FileID">F</VariableValue>'
            '<VariableValue Name="template">kept</VariableValue></QbProject>')
        self.assertEqual(
            [project.TemplateName, project.CompileType, project.OutputFileName, project.Help2Namespace,
             project.Help2FileID], ["Web Help", 2, "o.chm", "N", "F"])
        self.assertEqual([(v.Name, v.Value) for v in project.VariableValues], [("template", "kept")])

    def test_without_a_template_name_a_variable_of_that_key_serves(self):
        project = self.project_of('<QbProject><VariableValue Name="TEMPLATE">Web Help</VariableValue></QbProject>')
        self.assertEqual(project.TemplateName, "Web Help")

    def test_the_word_list_is_split_and_an_absent_one_leaves_the_words(self):
        project = self.project_of(
            "<QbProject><SpellIgnoreAllWordList>one|two words</SpellIgnoreAllWordList></QbProject>")
        self.assertEqual(list(project.SpellIgnoreAllWordList), ["one", "two words"])
        project.Load("<QbProject/>")
        self.assertEqual(list(project.SpellIgnoreAllWordList), ["one", "two words"])

    def test_an_empty_word_list_comes_back_as_it_was_written(self):
        project = self.project_of("<QbProject><SpellIgnoreAllWordList></SpellIgnoreAllWordList></QbProject>")
        self.assertEqual([word for word in project.SpellIgnoreAllWordList if word], [])
        again = ElementTree.fromstring(project.Save())
        self.assertIn(again.find("SpellIgnoreAllWordList").text, (None, ""))

    def test_older_elements_at_the_top_are_read(self):
        project = self.project_of(
            '<QbProject><glossaryitem Key="{G}" Term="seed">a plant</glossaryitem>'
            '<manifest k="{M}" n="First" t="0"/><m k="{N}" n="Second" t="1" i="True"/></QbProject>')
        self.assertEqual(project.GlossaryItems.Item("{G}").Term, "seed")
        self.assertEqual([m.Name for m in project.Manifests], ["First", "Second"])
        self.assertTrue(project.Manifests.Item("{N}").IncludeFlag)
        self.assertFalse(project.Dirty)

    def test_unknown_elements_are_passed_over(self):
        project = self.project_of("<QbProject><future a='b'><topic Key='x'/></future></QbProject>")
        self.assertEqual((project.Topics.Count, project.Dirty), (0, False))

    def test_collections_are_replaced_and_know_their_project(self):
        project = full_project(self)
        held = [project.Topics, project.QbNodes, project.Tasks, project.Manifests, project.GlossaryItems,
                project.OtherFiles, project.TopicCategories, project.VariableValues]
        project.Load("<QbProject/>")
        now = [project.Topics, project.QbNodes, project.Tasks, project.Manifests, project.GlossaryItems,
               project.OtherFiles, project.TopicCategories, project.VariableValues]
        for old, new in zip(held, now):
            self.assertNotEqual(old, new)
            self.assertEqual(len(new), 0)
        self.assertEqual([c.QbProject for c in now[:-1]], [project] * 7)
        self.assertEqual(held[0].Count, 2)

    def test_everything_round_trips(self):
        project = full_project(self)
        project.SaveToDisk()
        first = self.loaded().Save()
        second = self.project_of(first).Save()
        self.assertEqual(without_time(first), without_time(second))
        again = self.loaded()
        self.assertEqual([t.Name for t in again.Topics], ["Start", "Next"])
        self.assertEqual(again.Topics.Item(1).TopicSectionData["BodyText"], BODY)
        self.assertEqual(again.Topics.Item(1).TopicCategory, again.TopicCategories.Item(2))
        self.assertEqual(again.Topics.Item(1).RelatedTopics.Item(1).ChildTopic, again.Topics.Item(2))
        self.assertEqual(again.Manifests.Item(1).Entries.Item(1).Topic, again.Topics.Item(1))
        self.assertEqual(again.QbNodes.Item(1).ChildNodes.Item(1).Topic, again.Topics.Item(2))
        self.assertEqual(again.OtherFiles.Item(1).LocalSpec, self.path("images", "a.png"))
        self.assertEqual(again.OtherFiles.Item(self.path("images", "a.png")), again.OtherFiles.Item(1))


BODY = "<p class='a'>x &amp; y &lt; z ]]> \r\n\ttab \u00e4\u65e5\U0001f331</p> "


def full_project(test, separate=False):
    project = test.project(separate=separate)
    project.Title = "Full"
    for name in ("Guides", "Reference"):
        category = project.NewTopicCategory()
        category.Name = name
        project.TopicCategories.Add(category, category.Key)
    for name, value in (("Product", "Seeder"), ("Edition", "2")):
        project.VariableValues.Add(variable(name, value), name)
    for word in ("Quillbox", "qbp"):
        project.SpellAddIgnoreAllWord(word)
    file = project.NewOtherFile(test.path("images", "a.png"))
    project.OtherFiles.Add(file, file.Filename.FullPath)
    start, following = add_topic(project, "Start", body=BODY), add_topic(project, "Next")
    start.TopicCategory = project.TopicCategories.Item(2)
    start.AddKeyword("sow")
    related = quillbox.RelatedTopic()
    related.ChildTopicKey = following.Key
    start.RelatedTopics.Add(related)
    item = project.NewGlossaryItem("seed", "a plant")
    project.GlossaryItems.Add(item, item.Key)
    manifest = project.NewManifest("Guide")
    entry = manifest.NewManifestEntry(start, "")
    manifest.Entries.Add(entry, entry.Key)
    project.Manifests.Add(manifest, manifest.Key)
    book = add_node(project.QbNodes, "Book")
    add_node(book.ChildNodes, topic=following, parent=book)
    task = project.NewTask()
    task.Title = "Proofread"
    project.Tasks.Add(task, task.Key)
    return project


def without_time(text):
    root = ElementTree.fromstring(text)
    root.attrib.pop("SaveDateTime")
    return shape(root)


if __name__ == "__main__":
    unittest.main()
