import unittest

import quillbox
from support import Events, MachineTest, add_topic


class TopicsTest(MachineTest):
    def setUp(self):
        super().setUp()
        self.p = self.project()
        self.topics = self.p.Topics

    def new(self, key):
        topic = quillbox.Topic()
        topic.Key = key
        return topic


class Items(TopicsTest):
    def test_an_item_is_found_by_position_and_by_key_in_any_case(self):
        one, two = self.new("{a}"), self.new("{b}")
        self.topics.Add(one, "{a}")
        self.topics.Add(Item=two, Key="{b}")
        self.assertEqual((self.topics.Item(1), self.topics.Item("{B}")), (one, two))
        self.assertEqual((self.topics[2], self.topics["{a}"]), (two, one))
        self.assertEqual((self.topics.Count, len(self.topics), list(self.topics)), (2, 2, [one, two]))

    def test_an_unknown_key_or_position_gives_none(self):
        self.topics.Add(self.new("{a}"), "{a}")
        for key in ("{b}", "", 0, 2, -1, 2**31 - 1):
            self.assertIsNone(self.topics.Item(key), key)

    def test_one_library_object_is_one_python_object(self):
        topic = self.new("{a}")
        self.topics.Add(topic, "{a}")
        found = self.topics.Item(1)
        self.assertEqual(found, topic)
        self.assertEqual(hash(found), hash(topic))
        self.assertIn(topic, {found})
        self.assertNotEqual(found, self.new("{a}"))

    def test_before_and_after_say_the_place_and_before_wins(self):
        a, b, c, d, e = (self.new(key) for key in "abcde")
        self.topics.Add(a, "a")
        self.topics.Add(b, "b", 1)
        self.topics.Add(c, "c", After="b")
        self.topics.Add(d, "d", Before="a", After="b")
        self.topics.Add(e, After=4)
        self.assertEqual(list(self.topics), [b, c, d, a, e])

    def test_a_place_that_is_not_there_fails_and_adds_nothing(self):
        for place in ({"Before": 1}, {"After": "x"}, {"Before": 0}):
            with self.subTest(place), self.assertFails():
                self.topics.Add(self.new("{a}"), "{a}", **place)
        self.assertEqual((self.topics.Count, self.p.Dirty), (0, False))

    def test_a_key_that_is_taken_fails_and_nothing_else_happens(self):
        self.topics.Add(self.new("{a}"), "{a}")
        self.p.Dirty = False
        events = Events(self.p)
        with self.assertFails("{A}"):
            self.topics.Add(self.new("{a}"), "{A}")
        self.assertEqual((self.topics.Count, events, self.p.Dirty), (1, [], False))

    def test_an_item_with_an_empty_key_is_reached_by_position_alone(self):
        one, two = self.new("{a}"), self.new("{b}")
        self.topics.Add(one, "")
        self.topics.Add(two)
        self.assertEqual(list(self.topics), [one, two])
        self.assertIsNone(self.topics.Item(""))
        self.assertIsNone(self.topics.Item("{a}"))
        self.topics.Remove(1)
        self.assertEqual(list(self.topics), [two])

    def test_removing_an_unknown_key_fails_and_tells_nothing(self):
        events = Events(self.p)
        for key in ("{x}", 1, 0):
            with self.subTest(key), self.assertFails():
                self.topics.Remove(key)
        self.assertEqual((events, self.p.Dirty), ([], False))

    def test_a_walk_is_over_a_snapshot(self):
        for key in "abc":
            self.topics.Add(self.new(key), key)
        seen = []
        for topic in self.topics:
            seen.append(topic.Key)
            self.topics.Remove(topic.Key)
        self.assertEqual((seen, self.topics.Count), (["a", "b", "c"], 0))

    def test_something_that_is_no_topic_is_refused(self):
        for item in (None, "text", quillbox.QbNode()):
            with self.subTest(item), self.assertFails():
                self.topics.Add(item)
        self.assertEqual(self.topics.Count, 0)


class WithoutTheProject(TopicsTest):
    def test_a_collection_without_a_project_tells_nobody(self):
        topics = quillbox.Topics()
        topic = add_topic(self.p)
        events = Events(self.p)
        topics.Add(topic, topic.Key)
        topics.Remove(topic.Key)
        self.assertEqual((events, topics.Count, topics.QbProject), ([], 0, None))
        with self.assertFails():
            topics.Remove(topic.Key)

    def test_a_paused_collection_does_not_reach_the_project_at_all(self):
        topic = add_topic(self.p)
        node = self.p.QbNodes.NewNode(None)
        node.QbNodeType, node.TopicID = quillbox.ntSingleTopic, topic.Key
        self.p.Dirty = False
        self.topics.PauseEvents = True
        events = Events(self.p)
        added = self.new("{a}")
        self.topics.Add(added, "{a}")
        self.topics.Remove(topic.Key)
        self.assertEqual((events, self.p.Dirty, list(self.topics)), ([], False, [added]))
        self.assertEqual((node.QbNodeType, node.TopicID), (quillbox.ntSingleTopic, topic.Key))

    def test_a_parent_can_be_set(self):
        topics = quillbox.Topics()
        topics.QbProject = self.p
        events = Events(self.p, without=("DirtyStateChanged",))
        topic = self.new("{a}")
        topics.Add(topic, "{a}")
        self.assertEqual((topics.QbProject, events), (self.p, [("TopicAdded", topic)]))


class Lifetime(TopicsTest):
    def test_a_removed_topic_can_be_added_again(self):
        topic = add_topic(self.p)
        for _ in range(2):
            self.topics.Remove(topic.Key)
            self.topics.Add(topic, topic.Key)
        self.assertEqual(list(self.topics), [topic])

    def test_a_collection_keeps_its_items(self):
        add_topic(self.p, "Kept")
        self.assertEqual(self.topics.Item(1).Name, "Kept")

    def test_of_many_topics_each_is_found_under_its_key(self):
        for number in range(5000):
            topic = quillbox.Topic()
            self.topics.Add(topic, f"k{number}")
        self.assertEqual([self.topics.Item(f"K{n}") == self.topics.Item(n + 1) for n in (0, 2500, 4999)], [True] * 3)


if __name__ == "__main__":
    unittest.main()
