import os
import unittest
from datetime import datetime, time

import quillbox
from support import GUID, Events, MachineTest, add_topic, element, saved


class FileTest(MachineTest):
    def setUp(self):
        super().setUp()
        self.p = self.project()

    def load(self, attributes="", children="", project=None):
        topic = quillbox.Topic()
        topic.QbProject = project or self.p
        topic.Load(element(f'<Topic Key="{{K}}" {attributes}>{children}</Topic>'))
        return topic


class Saving(FileTest):
    def test_the_element_has_its_attributes_and_children_in_order(self):
        category = self.p.NewTopicCategory()
        topic = add_topic(self.p, "Start", "Title & more", "<p>x</p>")
        topic.TopicCategory = category
        topic.Status, topic.LayoutName, topic.HelpContextIDs = "Done", "Wide", "1,2"
        topic.IsDefault = True
        topic.IncludeInHelpFile = topic.AutoGenerateIndexEntry = topic.AllStylesheets = False
        topic.AddStyleSheet("a.css")
        topic.AddKeyword("sow")
        related = quillbox.RelatedTopic()
        related.ChildTopicKey, related.Category, related.Title = "{C}", "See also", "More"
        topic.RelatedTopics.Add(related)
        topic.Notes = "a note"
        topic.CreatedOn, topic.ModifiedOn = datetime(2004, 3, 5, 17, 9, 2), datetime(2014, 12, 31, 0, 5)
        self.assertXml(
            saved(topic, "Topic"),
            f'<Topic Key="{topic.Key}" Name="Start" Title="Title &amp; more" ContentsTitle="Title &amp; more" '
            'IsDefault="True" Status="Done" CreatedOn="05-03-2004 17:09" ModifiedOn="31-12-2014 00:05" '
            'LayoutName="Wide" AllStyleSheets="False" AutoGenerateIndexEntry="False" IncludeInHelpFile="False" '
            f'HelpContextIDs="1,2" Category="{category.Key}"><st><f>a.css</f></st><Notes>a note</Notes>'
            '<k Value="sow"/><r t="{C}" cat="See also" Title="More" rt="0" URL=""/><s k="BodyText">&lt;p&gt;x&lt;/p&gt;'
            "</s></Topic>")

    def test_with_all_stylesheets_no_list_is_written_and_notes_always_are(self):
        root = saved(add_topic(self.p))
        self.assertEqual([child.tag for child in root], ["Notes"])
        self.assertEqual((root.get("AllStyleSheets"), root.get("Category")), ("True", ""))

    def test_saving_clears_the_flags_of_the_topic(self):
        topic = add_topic(self.p)
        saved(topic)
        self.assertEqual((bool(topic.NewTopicFlag), bool(topic.Dirty)), (False, False))


class Loading(FileTest):
    def test_every_attribute_and_child_comes_back(self):
        category = self.p.NewTopicCategory()
        self.p.TopicCategories.Add(category, category.Key)
        topic = self.load(
            'Name="Start" Title="T" ContentsTitle="C" IsDefault="True" Status="Done" LayoutName="Wide" '
            'AllStyleSheets="False" AutoGenerateIndexEntry="False" IncludeInHelpFile="False" HelpContextIDs="1,2" '
            f'Category="{category.Key}"',
            '<ST><f>a.css</f><f>b.css</f></ST><NOTES> n </NOTES><K value="sow"/><k VALUE="sow"/>'
            '<r t="{C}" cat="x"/><S k="BodyText">&lt;p&gt; body</S>')
        self.assertEqual(
            [topic.Key, topic.Name, topic.Title, topic.ContentsTitle, topic.Status, topic.LayoutName,
             topic.HelpContextIDs, topic.Notes],
            ["{K}", "Start", "T", "C", "Done", "Wide", "1,2", "n"])
        self.assertEqual(
            [bool(v) for v in (topic.IsDefault, topic.AllStylesheets, topic.AutoGenerateIndexEntry,
                               topic.IncludeInHelpFile, topic.NewTopicFlag, topic.Dirty)],
            [True, False, False, False, False, False])
        self.assertEqual(topic.TopicCategory, category)
        self.assertEqual((list(topic.StyleSheets), list(topic.Keywords)), (["a.css", "b.css"], ["sow", "sow"]))
        self.assertEqual(topic.RelatedTopics.Item(1).ChildTopicKey, "{C}")
        self.assertEqual(topic.RelatedTopics.Item(1).ParentTopic, topic)
        self.assertEqual(topic.TopicSectionData("BodyText"), "<p> body")

    def test_times_of_day_are_dropped(self):
        topic = self.load('CreatedOn="05-03-2004 17:09" ModifiedOn="31/12/2014 00:05"')
        self.assertEqual((topic.CreatedOn, topic.ModifiedOn), (datetime(2004, 3, 5), datetime(2014, 12, 31)))
        self.assertEqual(topic.CreatedOn.time(), time(0, 0))

    def test_an_absent_date_becomes_now_and_the_topic_stays_clean(self):
        topic = self.load('ModifiedOn="no date at all"')
        self.assertNow(topic.CreatedOn)
        self.assertNow(topic.ModifiedOn)
        self.assertFalse(topic.Dirty)

    def test_a_load_tells_nothing(self):
        events = Events(self.p)
        self.load('Name="x" Title="y"', '<s k="BodyText">b</s><k value="k"/><r t="a" cat="b"/>')
        self.assertEqual(set(events.names()) - {"DirtyStateChanged"}, set())

    def test_an_absent_status_becomes_in_progress(self):
        self.assertEqual(self.load().Status, "In Progress")
        self.assertEqual(self.load('Status=""').Status, "In Progress")
        self.assertEqual(self.load('Status="Unheard of"').Status, "Unheard of")

    def test_booleans_are_true_for_the_exact_text_alone(self):
        for text in ("true", "TRUE", "1", "", " True"):
            topic = self.load(f'IsDefault="{text}" AllStylesheets="{text}" IncludeInHelpFile="{text}"')
            self.assertEqual(
                [bool(v) for v in (topic.IsDefault, topic.AllStylesheets, topic.IncludeInHelpFile)], [False] * 3, text)
        topic = self.load()
        self.assertTrue(topic.AllStylesheets and topic.IncludeInHelpFile and topic.AutoGenerateIndexEntry)

    def test_a_contents_title_equal_to_the_title_is_none(self):
        topic = add_topic(self.p, title="Same")
        topic.ContentsTitle = "Same"
        again = self.project_of(self.p.Save()).Topics
        self.assertEqual((again.Item(1).ContentsTitle, again.Item(1).InternalContentsTitle), ("Same", ""))
        self.assertEqual(self.load('Title="Same" ContentsTitle="same"').InternalContentsTitle, "same")

    def test_notes_that_are_a_line_break_alone_are_empty(self):
        topic = add_topic(self.p)
        for notes, back in (("\r\n", ""), ("  \r\n ", ""), ("\r\n\r\n", "\r\n\r\n"), ("  two\r\nlines ", "two\r\nlines")):
            topic.Notes = notes
            self.assertEqual(self.project_of(self.p.Save()).Topics.Item(1).Notes, back, repr(notes))

    def test_an_unknown_category_is_none(self):
        self.assertIsNone(self.load('Category="{none}"').TopicCategory)

    def test_the_older_form_of_the_body_is_read(self):
        self.assertEqual(self.load(children="<C>&lt;p&gt;old&lt;/p&gt;</C>").TopicSectionData("BodyText"), "<p>old</p>")

    def test_a_list_of_stylesheets_is_passed_over_when_all_are_used(self):
        self.assertEqual(len(self.load('AllStylesheets="True"', "<st><f>a.css</f></st>").StyleSheets), 0)

    def test_an_empty_key_becomes_a_new_one_and_an_absent_one_fails(self):
        topic = quillbox.Topic()
        topic.QbProject = self.p
        topic.Load(element('<Topic Key=""/>'))
        self.assertRegex(topic.Key, GUID)
        with self.assertFails("Key"):
            topic.Load(element("<Topic/>"))

    def test_a_second_load_replaces_what_the_first_read(self):
        topic = self.load('Name="One"', '<k value="a"/><s k="BodyText">x</s><r t="a" cat=""/>')
        held = topic.Keywords
        topic.Load(element('<Topic Key="{K}" Title="Two"/>'))
        self.assertEqual((topic.Name, topic.Title), ("One", "Two"))
        self.assertEqual((len(topic.Keywords), len(topic.TopicSections), len(topic.RelatedTopics)), (0, 0, 0))
        self.assertEqual(len(held), 1)

    def test_what_cannot_be_read_ends_the_load_and_leaves_the_topic_paused(self):
        for children in ('<s k="Other">x</s>', "<s>x</s>", '<k word="a"/>', '<r cat="x"/>',
                         '<s k="BodyText"/><s k="bodytext"/>'):
            topic = quillbox.Topic()
            topic.QbProject = self.p
            with self.subTest(children), self.assertFails():
                topic.Load(element(f'<Topic Key="{{K}}">{children}</Topic>'))
            self.assertTrue(topic.PauseEvents)

    def test_links_that_were_loaded_are_heard(self):
        topic = self.load(children='<r t="a" cat="b"/>')
        events = Events(self.p, without=("DirtyStateChanged",))
        topic.RelatedTopics.Remove(1)
        self.assertEqual(events, [("TopicRelatedTopicsChanged", topic), ("TopicChanged", topic)])


class OwnFile(FileTest):
    def setUp(self):
        super().setUp()
        self.p = self.project(separate=True)

    def test_a_topic_without_a_file_loads_from_its_key_alone(self):
        topic = self.load('Name="ignored" Status="ignored"', '<k value="ignored"/>')
        self.assertEqual((topic.Key, topic.Name, topic.Status, len(topic.Keywords)), ("{K}", "", "In Progress", 0))
        self.assertEqual(self.files(), {})

    def test_a_topic_is_read_from_its_file(self):
        self.write("TopicData/{K}.xml", '<Topic Key="{other}" Name="Filed"><s k="BodyText">b</s></Topic>')
        topic = self.load('Name="ignored"')
        self.assertEqual((topic.Key, topic.Name, topic.TopicSectionData("BodyText")), ("{K}", "Filed", "b"))

    def test_a_broken_file_is_named_in_the_error(self):
        path = self.write("TopicData/{K}.xml", "<Topic Name=")
        with self.assertFails(path):
            self.load()

    def test_a_save_writes_everything_but_the_key_into_the_file(self):
        topic = add_topic(self.p, "Start")
        self.assertXml(saved(topic, "Topic"), f'<Topic Key="{topic.Key}"/>')
        root = self.xml(os.path.join("TopicData", topic.Key + ".xml"))
        self.assertEqual((root.tag, root.get("Name"), root.get("Key")), ("Topic", "Start", None))
        self.assertFalse(topic.Dirty)

    def test_a_clean_topic_with_a_file_keeps_its_flags_and_its_file(self):
        topic = add_topic(self.p, "Start")
        saved(topic)
        topic.NewTopicFlag = True
        path = self.write(os.path.join("TopicData", topic.Key + ".xml"), "untouched")
        self.assertXml(saved(topic, "Topic"), f'<Topic Key="{topic.Key}"/>')
        self.assertTrue(topic.NewTopicFlag)
        self.assertEqual(self.read(path), b"untouched")

    def test_save_and_load_without_an_element_use_the_file_alone(self):
        topic = add_topic(self.p, "Start")
        topic.Save(None)
        topic.Title = "In memory"
        topic.Load(None)
        self.assertEqual(topic.Title, "Start")

    def test_the_root_of_the_file_takes_the_place_of_an_element_that_is_passed_by_reference(self):
        topic = add_topic(self.p, "Start")
        given = element("<Topic/>")
        holder = quillbox.ByRef(given)
        topic.Save(holder)
        self.assertNotEqual(holder.value, given)
        self.assertEqual(holder.value.Attributes.Item("Name").Value, "Start")
        holder = quillbox.ByRef(element(f'<Topic Key="{topic.Key}"/>'))
        topic.Load(e=holder)
        self.assertEqual(holder.value.Attributes.Item("name").Value, "Start")
        holder = quillbox.ByRef()
        self.p.QbNodes.Save(holder)
        self.assertEqual(holder.value.Name, "Glossary")
        single = self.project()
        holder = quillbox.ByRef(given)
        single.Tasks.Save(holder)
        self.assertEqual(holder.value, given)

    def test_without_an_element_a_single_file_topic_fails(self):
        single = self.project()
        topic = single.NewTopic()
        with self.assertFails():
            topic.Save(None)
        with self.assertFails():
            topic.Load(None)


if __name__ == "__main__":
    unittest.main()
