import os
import unittest

import quillbox
from quillbox import ByRef
from support import Events, MachineTest, add_child, add_node, add_topic, element, saved


class Tree(MachineTest):
    """A with children B and C, B with child D, then E."""

    def setUp(self):
        super().setUp()
        self.p = self.project()
        self.nodes = self.p.QbNodes
        self.a = add_node(self.nodes, "A")
        self.b = add_child(self.a, "B")
        self.c = add_child(self.a, "C")
        self.d = add_child(self.b, "D")
        self.e = add_node(self.nodes, "E")
        self.order = [self.a, self.b, self.d, self.c, self.e]

    def test_the_tree_is_walked_parents_first_and_a_subtree_ends_before_the_next_sibling(self):
        self.assertEqual(list(self.nodes.AllNodes()), self.order)
        root = saved(self.nodes, "Nodes")
        self.assertEqual([n.get("c") for n in root.iter("n")], list("ABDCE"))

    def test_count_is_of_this_level_alone(self):
        self.assertEqual((self.nodes.Count, len(self.nodes), self.nodes.AllNodes().Count), (2, 2, 5))
        self.assertEqual(list(self.nodes), [self.a, self.e])

    def test_an_item_is_found_at_any_depth_and_removed_at_its_own_level_alone(self):
        self.assertEqual(self.nodes.Item(self.d.Key.lower()), self.d)
        self.assertIsNone(self.nodes.Item("{none}"))
        with self.assertFails():
            self.nodes.Remove(self.d.Key)
        self.b.ChildNodes.Remove(self.d.Key)
        self.assertIsNone(self.nodes.Item(self.d.Key))

    def test_a_position_out_of_range_reaches_into_the_children(self):
        third = add_child(self.e, "E1")
        self.assertEqual(self.nodes.Item(1), self.a)
        self.assertIsNone(self.nodes.Item(3))
        add_child(self.e, "E2")
        fourth = add_child(self.e, "E3")
        self.assertEqual(self.nodes.Item(3), fourth)
        self.assertEqual(self.e.ChildNodes.Item(1), third)

    def test_removing_takes_the_subtree_along_and_tells_once(self):
        self.p.Dirty = False
        events = Events(self.p, without=("DirtyStateChanged",))
        self.nodes.Remove(self.a.Key)
        self.assertEqual(events, [("QbNodeRemoved", self.a)])
        self.assertEqual((list(self.nodes.AllNodes()), bool(self.nodes.Dirty)), ([self.e], True))
        self.assertEqual((self.b.ParentNode, self.a.QbNodes), (self.a, self.nodes))

    def test_adding_marks_and_links_nothing(self):
        node = quillbox.QbNode()
        self.p.Dirty = False
        events = Events(self.p, without=("DirtyStateChanged",))
        self.nodes.Add(node, "k", Before=1)
        self.assertEqual(list(self.nodes), [node, self.a, self.e])
        self.assertEqual((node.QbNodes, node.ParentNode, bool(self.nodes.Dirty), events), (None, None, True, []))
        with self.assertFails("K"):
            self.nodes.Add(quillbox.QbNode(), "K")

    def test_an_empty_key_adds_an_item_without_key(self):
        node = quillbox.QbNode()
        self.nodes.Add(node, "")
        self.assertEqual(self.nodes.Item(3), node)
        self.assertIsNone(self.nodes.Item(""))

    def test_all_nodes_appends_to_a_collection_that_is_given(self):
        col = quillbox.QbNodes()
        extra = quillbox.QbNode()
        col.Add(extra, "extra")
        holder = ByRef(col)
        self.assertEqual(self.nodes.AllNodes(holder), col)
        self.assertEqual((list(col), holder.value), ([extra, *self.order], col))
        with self.assertFails():
            self.nodes.AllNodes(col)
        empty = ByRef()
        self.nodes.AllNodes(col=empty)
        self.assertEqual(list(empty.value), self.order)
        self.assertEqual((empty.value.QbProject, bool(empty.value.Dirty)), (None, True))

    def test_nodes_of_a_topic_are_found_by_the_exact_key_whatever_their_type(self):
        topic = add_topic(self.p)
        self.d.TopicID = self.a.TopicID = topic.Key
        self.c.TopicID = topic.Key.lower()
        self.assertEqual(list(self.nodes.NodesForTopic(topic)), [self.a, self.d])
        holder = ByRef()
        self.nodes.NodesForTopic(T=topic, col=holder)
        self.assertEqual(len(holder.value), 2)
        with self.assertFails():
            self.nodes.NodesForTopic(None)

    def test_the_dirty_flag_tells_when_set(self):
        self.p.Dirty = False
        events = Events(self.p)
        self.nodes.Dirty = True
        self.nodes.Dirty = False
        self.assertEqual(events, [("DirtyStateChanged",)])

    def test_the_own_events_of_the_class_are_never_raised_by_its_members(self):
        events = Events(self.nodes)
        self.nodes.Add(quillbox.QbNode())
        self.nodes.Remove(3)
        self.assertEqual(events, [])

    def test_a_tree_that_is_too_deep_fails_and_neither_crashes_nor_hangs(self):
        node = self.e
        for _ in range(20000):
            node = node.ChildNodes.NewNode(node)
        self.assertIsNone(self.nodes.Item("{none}"))
        for step in (self.nodes.AllNodes, self.p.Save, lambda: self.nodes.NodesForTopic(quillbox.Topic())):
            with self.assertFails("deep"):
                step()
        self.nodes.Remove(2)
        del node
        self.assertEqual(self.nodes.AllNodes().Count, 4)
        self.p.Save()


class LevelsInFiles(MachineTest):
    NODE = '<n key="%s" nt="0" ct="2" c="" i="-1" cfn="" tid="" url=""/>'

    def nodes(self, *keys):
        return "<x>" + "".join(self.NODE % key for key in keys) + "</x>"

    def test_a_load_links_nodes_to_the_collection_and_ends_clean(self):
        project = self.project()
        nodes = project.QbNodes
        nodes.Load(element(self.nodes("{A}", "{B}")))
        self.assertEqual([(n.Key, n.ParentNode, n.QbNodes) for n in nodes],
                         [("{A}", None, nodes), ("{B}", None, nodes)])
        self.assertFalse(nodes.Dirty)

    def test_a_load_adds_to_what_is_there_and_fails_on_the_first_key_that_is_taken(self):
        project = self.project()
        nodes = project.QbNodes
        nodes.Load(element(self.nodes("{A}")))
        nodes.Load(element(self.nodes("{B}")))
        nodes.Dirty = True
        with self.assertFails("{B}"):
            nodes.Load(element(self.nodes("{C}", "{B}", "{D}")))
        self.assertEqual([n.Key for n in nodes], ["{A}", "{B}", "{C}"])
        self.assertTrue(nodes.Dirty)

    def test_the_own_file_has_the_root_of_the_glossary_and_the_element_stays_empty(self):
        project = self.project(separate=True)
        node = add_node(project.QbNodes, "Book")
        self.assertXml(saved(project.QbNodes, "Nodes"), "<Nodes/>")
        self.assertEqual(project.QbNodes.LocalSpec, self.path("ProjectData", "TableOfContents.xml"))
        self.assertXml(
            self.xml("ProjectData/TableOfContents.xml"),
            f'<Glossary><n key="{node.Key}" nt="0" ct="2" c="Book" i="-1" cfn="" tid="" url=""/></Glossary>')
        self.assertTrue(project.QbNodes.Dirty)

    def test_an_unchanged_file_is_left_alone_and_a_deleted_one_comes_back(self):
        project = self.project(separate=True)
        add_node(project.QbNodes, "Book")
        project.SaveToDisk()
        path = self.path("ProjectData", "TableOfContents.xml")
        os.utime(path, (1, 1))
        project.SaveToDisk()
        self.assertEqual(os.stat(path).st_mtime, 1)
        os.remove(path)
        project.SaveToDisk()
        self.assertEqual(len(self.xml("ProjectData/TableOfContents.xml")), 1)

    def test_the_own_file_is_read_whatever_its_root(self):
        project = self.project(separate=True)
        self.write("ProjectData/TableOfContents.xml", self.nodes("{A}"))
        project.QbNodes.Load(None)
        self.assertEqual([n.Key for n in project.QbNodes], ["{A}"])

    def test_a_missing_file_gives_an_empty_tree_and_a_broken_one_is_named(self):
        project = self.project(separate=True)
        project.QbNodes.Load(None)
        self.assertEqual(len(project.QbNodes), 0)
        path = self.write("ProjectData/TableOfContents.xml", "<Glossary>")
        with self.assertFails(path):
            project.QbNodes.Load(None)

    def test_save_and_load_need_an_element_in_a_single_file_project(self):
        project = self.project()
        with self.assertFails():
            project.QbNodes.Save(None)
        with self.assertFails():
            project.QbNodes.Load(None)


if __name__ == "__main__":
    unittest.main()
