import os
import unittest

import quillbox
from quillbox import ByRef
from quillbox.platform import mbCancel, mbNo, mbYes
from support import SETTINGS_KEY, MachineTest, add_child, add_node, add_topic


class SharedLists(MachineTest):
    def test_the_lists_are_one_object_for_every_root(self):
        first, second = quillbox.Root(), quillbox.Root()
        self.assertEqual(first.TopicStatuses, second.TopicStatuses)
        self.assertEqual(first.TopicSectionDefs, second.TopicSectionDefs)

    def test_the_lists_survive_one_of_two_roots_and_go_with_the_last(self):
        first, second = quillbox.Root(), quillbox.Root()
        statuses, definitions = first.TopicStatuses, first.TopicSectionDefs
        del first
        self.assertEqual(second.TopicStatuses, statuses)
        self.assertEqual(second.TopicSectionDefs, definitions)
        del second
        third = quillbox.Root()
        self.assertNotEqual(third.TopicStatuses, statuses)
        self.assertNotEqual(third.TopicSectionDefs, definitions)

    def test_the_status_file_is_read_again_after_the_last_root_went(self):
        root = quillbox.Root()
        self.assertEqual(root.TopicStatuses.Count, 2)
        self.write("install/Configuration/statuscodes.xml", '<a><b Name="Done" Caption="" Icon=""/></a>')
        self.assertEqual(quillbox.Root().TopicStatuses.Count, 2)
        del root
        self.assertEqual([status.Name for status in quillbox.Root().TopicStatuses], ["Done"])

    def test_a_project_that_outlives_the_last_root_finds_the_lists_made_anew(self):
        project = self.project()
        root = quillbox.Root()
        topic = add_topic(project, body="<p>x</p>")
        del root
        self.assertEqual(project.NewTopic().Status, "Draft")
        self.assertEqual(topic.TopicSections.Item(1).TopicSectionDef.Caption, "Body Text")

    def test_without_a_status_file_the_list_is_empty_and_so_is_the_status_of_a_new_topic(self):
        os.remove(self.path("install", "Configuration", "statuscodes.xml"))
        root = quillbox.Root()
        self.assertEqual(root.TopicStatuses.Count, 0)
        self.assertEqual(self.project().NewTopic().Status, "")
        self.write("install/Configuration/statuscodes.xml", '<a><b Name="Late" Caption="" Icon=""/></a>')
        self.assertEqual(root.TopicStatuses.Count, 0)

    def test_the_section_definitions_hold_the_body_alone(self):
        definitions = quillbox.Root().TopicSectionDefs
        self.assertEqual([(d.Key, d.Caption) for d in definitions], [("BodyText", "Body Text")])

    def test_members_of_the_global_object_are_names_of_the_module(self):
        self.assertEqual(len(quillbox.TopicSectionDefs), 1)
        self.assertEqual(quillbox.TopicStatuses.Item(1).Name, "Draft")
        self.assertEqual(quillbox.ahConfigPath(), self.configuration + os.sep)
        self.assertFalse(quillbox.IsCodemarkInstalled())


class ConfigurationPath(MachineTest):
    def config_path(self):
        return quillbox.Root().ahConfigPath()

    def test_the_install_folder_with_and_without_its_final_separator_gives_the_same_path(self):
        for folder in (self.install_folder, self.install_folder + os.sep):
            self.set_install_folder(folder)
            self.assertEqual(self.config_path(), self.path("install", "Configuration") + os.sep)

    def test_the_setting_is_read_afresh_at_every_call(self):
        root = quillbox.Root()
        root.ahConfigPath()
        self.set_install_folder("/elsewhere")
        self.assertEqual(root.ahConfigPath(), os.path.join("/elsewhere", "Configuration") + os.sep)

    def test_without_the_setting_the_path_is_the_separator_and_the_folder(self):
        quillbox.platform.DeleteRegistryValue(
            quillbox.platform.HKEY_LOCAL_MACHINE, SETTINGS_KEY, "InstallDir")
        self.assertEqual(self.config_path(), os.sep + "Configuration" + os.sep)

    def test_without_any_settings_file_the_own_data_folder_serves(self):
        os.environ["QUILLBOX_REGISTRY"] = self.path("empty")
        self.assertTrue(os.path.isfile(os.path.join(self.config_path(), "statuscodes.xml")))
        self.assertGreater(len(quillbox.Root().TopicStatuses), 0)


class Settings(MachineTest):
    def test_an_absent_value_reads_as_empty_text(self):
        self.assertEqual(
            quillbox.platform.ReadRegistryValue(quillbox.platform.HKEY_CURRENT_USER, SETTINGS_KEY, "None"), "")

    def test_a_value_is_written_read_and_deleted_per_hive(self):
        user, machine = quillbox.platform.HKEY_CURRENT_USER, quillbox.platform.HKEY_LOCAL_MACHINE
        quillbox.platform.WriteRegistryValue(user, "Software\\A", "V", "one = \\ two")
        quillbox.platform.WriteRegistryValue(machine, "Software\\A", "V", "other")
        self.assertEqual(quillbox.platform.ReadRegistryValue(user, "Software\\A", "V"), "one = \\ two")
        self.assertEqual(quillbox.platform.ReadRegistryValue(machine, "Software\\A", "V"), "other")
        quillbox.platform.DeleteRegistryValue(user, "Software\\A", "V")
        self.assertEqual(quillbox.platform.ReadRegistryValue(user, "Software\\A", "V"), "")


class BeforeDeleteTopic(MachineTest):
    def setUp(self):
        super().setUp()
        self.p = self.project()
        self.topic = add_topic(self.p, "Sowing", "When to sow")
        self.other = add_topic(self.p, "Other")

    def ask(self, answer=mbYes, no_prompt=False):
        self.boxes.answer = answer
        cancel, prompt = ByRef(False), ByRef(no_prompt)
        quillbox.Root().BeforeDeleteTopic(self.topic, cancel, prompt)
        return cancel.value, prompt.value

    def link(self, source, target):
        related = quillbox.RelatedTopic()
        related.ChildTopicKey = target.Key
        source.RelatedTopics.Add(related)
        return related

    def test_the_question_is_asked_once_with_the_name_of_the_topic(self):
        add_node(self.p.QbNodes, topic=self.topic)
        add_child(add_node(self.p.QbNodes, "Book"), topic=self.topic)
        self.ask()
        self.assertEqual(
            self.boxes.shown,
            [("There are one or more Table of Contents nodes that point to this Topic ('Sowing').  Do you want to "
              "delete those too ?", "", quillbox.platform.bsYesNoCancel, quillbox.platform.biQuestion)])

    def test_yes_removes_the_nodes_at_every_level_and_no_prompt_comes_back_true(self):
        add_node(self.p.QbNodes, topic=self.topic)
        book = add_node(self.p.QbNodes, "Book")
        add_child(book, topic=self.topic)
        kept = add_child(book, topic=self.other)
        self.assertEqual(self.ask(mbYes), (False, True))
        self.assertEqual(list(self.p.QbNodes.AllNodes()), [book, kept])

    def test_no_cuts_the_nodes_loose_with_the_title_of_the_topic(self):
        self.topic.ContentsTitle = "In the contents"
        node = add_node(self.p.QbNodes, topic=self.topic)
        self.assertEqual(self.ask(mbNo), (False, True))
        self.assertEqual(list(self.p.QbNodes), [node])
        self.assertEqual(
            (node.CaptionText, node.CaptionType, node.QbNodeType, node.TopicID),
            ("In the contents", quillbox.ctSpecific, quillbox.ntStandard, ""))

    def test_cancel_changes_nothing_and_comes_back_in_cancel(self):
        node = add_node(self.p.QbNodes, topic=self.topic)
        self.link(self.other, self.topic)
        self.assertEqual(self.ask(mbCancel), (True, False))
        self.assertEqual((node.QbNodeType, node.TopicID), (quillbox.ntSingleTopic, self.topic.Key))
        self.assertEqual(self.other.RelatedTopics.Count, 1)

    def test_no_prompt_that_is_true_on_entry_still_asks(self):
        add_node(self.p.QbNodes, topic=self.topic)
        self.ask(no_prompt=True)
        self.assertEqual(len(self.boxes.shown), 1)

    def test_without_a_node_nothing_is_asked_and_the_links_from_other_topics_go_all_the_same(self):
        self.link(self.other, self.topic)
        kept = self.link(self.other, self.other)
        for flags in ((False, False), (False, True)):
            self.assertEqual(self.ask(no_prompt=flags[1]), flags)
        self.assertEqual(self.boxes.shown, [])
        self.assertEqual(list(self.other.RelatedTopics), [kept])

    def test_of_two_neighbouring_links_the_second_stays(self):
        for target in (self.topic, self.topic, self.other, self.topic):
            self.link(self.other, target)
        self.ask()
        self.assertEqual(
            [related.ChildTopicKey for related in self.other.RelatedTopics], [self.topic.Key, self.other.Key])

    def test_the_topic_and_its_own_links_stay(self):
        self.link(self.topic, self.topic)
        self.ask()
        self.assertEqual(self.p.Topics.Item(self.topic.Key), self.topic)
        self.assertEqual(self.topic.RelatedTopics.Count, 1)

    def test_plain_values_are_accepted_in_place_of_references(self):
        quillbox.BeforeDeleteTopic(self.topic, False, False)
        quillbox.BeforeDeleteTopic(T=self.topic, Cancel=False, NoPrompt=ByRef(True))
        self.assertEqual(self.boxes.shown, [])

    def test_a_topic_without_a_project_fails(self):
        with self.assertFails():
            quillbox.BeforeDeleteTopic(quillbox.Topic(), ByRef(False), ByRef(False))


class PageTemplates(MachineTest):
    def setUp(self):
        super().setUp()
        self.template("Pages", "", "CM.Quillbox")
        self.template("Print", "p", "CM.Quillbox")
        self.template("Foreign", "p", "CM.Other")

    def template(self, name, supports, namespace):
        self.write(
            f"install/Templates/{name}/template.xml",
            f'<PageTemplate Name="{name}" Supports="{supports}"><Namespace Name="{namespace}"/></PageTemplate>')

    def names(self, *flag):
        return sorted(template.Name for template in quillbox.QuillboxPageTemplates(*flag))

    def test_only_templates_for_this_product_are_given(self):
        self.assertEqual(self.names(), ["Pages", "Print"])
        self.assertEqual(self.names(""), ["Pages", "Print"])
        self.assertEqual(quillbox.QuillboxPageTemplates().Item("print").Name, "Print")

    def test_a_flag_selects_those_that_have_it_in_the_same_case(self):
        self.assertEqual(self.names("p"), ["Print"])
        self.assertEqual(self.names("P"), [])
        self.assertEqual([t.Name for t in quillbox.QuillboxPageTemplates(SupportsFlag="p")], ["Print"])


if __name__ == "__main__":
    unittest.main()
