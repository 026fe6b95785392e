import unittest

import quillbox
from quillbox import rttTopic, rttURL
from support import Events, MachineTest, add_topic, element, saved


class RelatedTest(MachineTest):
    def setUp(self):
        super().setUp()
        self.p = self.project()
        self.t, self.other = add_topic(self.p, "Start"), add_topic(self.p, "Other")

    def link(self, key="", category=""):
        related = quillbox.RelatedTopic()
        related.ChildTopicKey, related.Category = key, category
        return related


class OneLink(RelatedTest):
    def test_a_new_link_leads_to_a_topic_and_is_empty(self):
        related = quillbox.RelatedTopic()
        self.assertEqual(
            (related.ChildTopicKey, related.URL, related.Title, related.Category, related.RelatedTopicType,
             related.ParentTopic), ("", "", "", "", rttTopic, None))

    def test_each_property_holds_what_is_written_and_tells_but_the_key(self):
        related = self.link()
        related.ParentTopic = self.t
        for name, value in (("URL", "http://x/"), ("RelatedTopicType", rttURL), ("Title", "t"), ("Category", "c"),
                            ("ParentTopic", self.t)):
            events = Events(self.p, without=("DirtyStateChanged",))
            setattr(related, name, value)
            self.assertEqual(getattr(related, name), value)
            self.assertEqual(events, [("TopicRelatedTopicChanged", self.t, related), ("TopicChanged", self.t)], name)
        events = Events(self.p)
        related.ChildTopicKey = self.other.Key
        self.assertEqual((related.ChildTopicKey, events), (self.other.Key, []))

    def test_the_topic_it_leads_to_is_found_by_its_key(self):
        related = self.link(self.other.Key.lower())
        with self.assertFails():
            related.ChildTopic
        related.ParentTopic = self.t
        self.assertEqual(related.ChildTopic, self.other)
        for key in ("{none}", ""):
            related.ChildTopicKey = key
            self.assertIsNone(related.ChildTopic)

    def test_the_parent_is_not_kept_alive(self):
        related, topic = self.link(), quillbox.Topic()
        related.ParentTopic = topic
        del topic
        self.assertIsNone(related.ParentTopic)


class List(RelatedTest):
    def setUp(self):
        super().setUp()
        self.links = self.t.RelatedTopics

    def test_the_list_is_one_object_and_knows_its_topic(self):
        self.assertEqual(self.t.RelatedTopics, self.links)
        self.assertEqual(self.links.Topic, self.t)
        self.assertIsNone(quillbox.RelatedTopics().Topic)

    def test_adding_and_removing_raise_events_of_the_list(self):
        events = Events(self.links)
        one, two = self.link(), self.link()
        self.links.Add(one)
        self.links.Add(Item=two, Key="k", Before=1)
        self.links.Remove("K")
        self.assertEqual(events, [("ItemAdded", one), ("ItemAdded", two), ("ItemRemoved", two)])
        self.assertEqual(list(self.links), [one])

    def test_the_same_link_twice_is_two_items_and_two_events(self):
        events = Events(self.links)
        one = self.link()
        self.links.Add(one)
        self.links.Add(one)
        self.assertEqual((len(self.links), events), (2, [("ItemAdded", one)] * 2))

    def test_a_miss_fails_and_no_event_is_raised(self):
        self.links.Add(self.link())
        events = Events(self.links)
        for key in (2, 0, "none"):
            with self.subTest(key), self.assertFails():
                self.links.Item(key)
            with self.subTest(key), self.assertFails():
                self.links.Remove(key)
        self.assertEqual((events, len(self.links)), ([], 1))

    def test_a_list_alone_tells_no_topic(self):
        links = quillbox.RelatedTopics()
        events = Events(self.p)
        links.Add(self.link())
        self.assertEqual((events, len(links)), ([], 1))


class LinkFile(RelatedTest):
    def test_the_element_has_its_attributes_in_order(self):
        related = self.link("{C}", "See also")
        related.Title, related.URL, related.RelatedTopicType = "More", "http://x/?a&b", rttURL
        self.assertXml(saved(related, "r"), '<r t="{C}" cat="See also" Title="More" rt="1" URL="http://x/?a&amp;b"/>')

    def test_everything_comes_back(self):
        related = self.link(self.other.Key, "See also")
        related.Title, related.URL, related.RelatedTopicType = "More", "http://x/", rttURL
        self.t.RelatedTopics.Add(related)
        project = self.project_of(self.p.Save())
        again = project.Topics.Item(1).RelatedTopics.Item(1)
        self.assertEqual(
            (again.ChildTopic, again.Category, again.Title, again.URL, again.RelatedTopicType, again.ParentTopic),
            (project.Topics.Item(2), "See also", "More", "http://x/", rttURL, project.Topics.Item(1)))

    def test_older_files_without_the_optional_attributes_load(self):
        related = quillbox.RelatedTopic()
        related.Load(element('<r t="{C}" cat="x" rt="none"/>'))
        self.assertEqual(
            (related.ChildTopicKey, related.Category, related.Title, related.RelatedTopicType), ("{C}", "x", "", rttTopic))

    def test_a_link_without_key_or_category_ends_the_load_of_its_topic(self):
        for text in ('<r cat="x"/>', '<r t="{C}"/>'):
            topic = self.p.NewTopic()
            with self.subTest(text), self.assertFails():
                topic.Load(element(f'<Topic Key="{{K}}">{text}</Topic>'))
            with self.assertFails():
                quillbox.RelatedTopic().Load(element(text))

    def test_a_load_gives_the_notices_of_its_properties(self):
        related = self.link()
        related.ParentTopic = self.t
        events = Events(self.p, without=("DirtyStateChanged",))
        related.Load(element('<r t="{C}" cat="x" Title="y" rt="1" URL="z"/>'))
        self.assertEqual(events, [("TopicRelatedTopicChanged", self.t, related), ("TopicChanged", self.t)] * 4)


if __name__ == "__main__":
    unittest.main()
