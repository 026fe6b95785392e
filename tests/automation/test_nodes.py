import unittest

import quillbox
from quillbox import ctDefault, ctSpecific, ntCMContents, ntSingleTopic, ntStandard, ntSubContents
from support import GUID, Events, MachineTest, add_child, add_node, add_topic, element, saved

NODE = '<n key="{K}" nt="%s" ct="%s" c="%s" i="%s" cfn="%s" tid="%s" url="%s"/>'


class Properties(MachineTest):
    def setUp(self):
        super().setUp()
        self.n = quillbox.QbNode()

    def test_a_new_node_is_a_standard_one_with_an_empty_level_of_its_own(self):
        n = self.n
        self.assertEqual((n.QbNodeType, n.CaptionType, n.Icon), (ntStandard, ctSpecific, -1))
        for name in ("Key", "CaptionText", "SubContentsFileName", "StandardURL", "TopicID", "CMPFileName"):
            self.assertEqual(getattr(n, name), "", name)
        self.assertEqual((n.ParentNode, n.QbNodes, n.Topic), (None, None, None))
        self.assertEqual(len(n.ChildNodes), 0)
        self.assertNotEqual(n.ChildNodes, quillbox.QbNode().ChildNodes)

    def test_outside_a_collection_a_change_is_the_field_alone(self):
        for name, value in (("CMPFileName", "a.cmp"), ("StandardURL", "u.html"), ("TopicID", "{T}"),
                            ("SubContentsFileName", "s.hhc"), ("Icon", 7), ("CaptionText", "c"), ("Key", "{K}"),
                            ("QbNodeType", ntSubContents), ("CaptionType", ctSpecific)):
            setattr(self.n, name, value)
            self.assertEqual(getattr(self.n, name), value)
        self.assertIsNone(self.n.QbNodes)

    def test_the_default_caption_type_empties_the_caption_and_the_specific_one_keeps_it(self):
        self.n.CaptionText = "Kept"
        self.n.CaptionType = ctSpecific
        self.assertEqual(self.n.CaptionText, "Kept")
        self.n.CaptionType = ctDefault
        self.assertEqual((self.n.CaptionText, self.n.CaptionType), ("", ctDefault))

    def test_each_node_type_sets_what_belongs_to_it(self):
        cases = {
            ntStandard: ("", "u.html", ctSpecific),
            ntSingleTopic: ("{T}", "", ctDefault),
            ntSubContents: ("{T}", "u.html", ctSpecific),
            ntCMContents: ("", "u.html", ctDefault),
        }
        for kind, (topic, url, caption_type) in cases.items():
            node = quillbox.QbNode()
            node.TopicID, node.StandardURL, node.CaptionText = "{T}", "u.html", "kept"
            node.QbNodeType = kind
            self.assertEqual(
                (node.TopicID, node.StandardURL, node.CaptionType, node.CaptionText),
                (topic, url, caption_type, "kept"), kind)

    def test_writing_the_standard_type_over_a_glossary_node_empties_its_url(self):
        self.n.StandardURL = "GLOSSARY.HTML"
        self.n.QbNodeType = ntStandard
        self.assertEqual(self.n.StandardURL, "")

    def test_any_type_over_a_standard_glossary_node_empties_its_url(self):
        self.n.StandardURL = "glossary.html"
        self.n.QbNodeType = ntSubContents
        self.assertEqual(self.n.StandardURL, "")

    def test_a_glossary_url_of_another_type_is_left_to_the_new_type(self):
        self.n.QbNodeType = ntSingleTopic
        self.n.StandardURL = "GLOSSARY.HTML"
        self.n.QbNodeType = ntStandard
        self.assertEqual(self.n.StandardURL, "GLOSSARY.HTML")
        self.n.QbNodeType = ntSubContents
        self.n.StandardURL = "GLOSSARY.HTML"
        self.n.QbNodeType = ntSingleTopic
        self.assertEqual(self.n.StandardURL, "")

    def test_the_parent_and_the_collection_are_not_kept_alive(self):
        nodes, parent = quillbox.QbNodes(), quillbox.QbNode()
        self.n.QbNodes, self.n.ParentNode = nodes, parent
        self.assertEqual((self.n.QbNodes, self.n.ParentNode), (nodes, parent))
        del nodes, parent
        self.assertEqual((self.n.QbNodes, self.n.ParentNode), (None, None))


class InAProject(MachineTest):
    def setUp(self):
        super().setUp()
        self.p = self.project()
        self.topic = add_topic(self.p, "Start", "Getting started")
        self.n = self.p.QbNodes.NewNode(None)
        self.p.Dirty = False

    def test_each_notifying_setter_tells_and_marks_the_tree(self):
        events = Events(self.p)
        for name, value in (("CMPFileName", "a"), ("StandardURL", "a"), ("TopicID", "a"), ("SubContentsFileName", "a"),
                            ("Icon", 1), ("CaptionText", "a"), ("CaptionType", ctDefault),
                            ("QbNodeType", ntSubContents)):
            self.p.Dirty = False
            events.clear()
            setattr(self.n, name, value)
            self.assertEqual(events[0], ("QbNodeChanged", self.n), name)
            self.assertTrue(self.p.QbNodes.Dirty, name)
            self.assertFalse(self.p.ProjectDirty, name)

    def test_handles_and_key_tell_nothing(self):
        events = Events(self.p)
        self.n.Key, self.n.ParentNode, self.n.QbNodes = "{K}", None, self.p.QbNodes
        self.n.ChildNodes = quillbox.QbNodes()
        self.assertEqual((events, self.p.Dirty), ([], False))

    def test_a_change_at_any_depth_reaches_the_flag_of_the_top(self):
        deep = add_child(add_child(self.n, "B"), "C")
        self.p.Dirty = False
        deep.Icon = 3
        self.assertTrue(self.p.QbNodes.Dirty and deep.QbNodes.Dirty and self.p.Dirty)

    def test_a_pause_on_a_child_collection_has_no_effect(self):
        child = add_child(self.n, "B")
        events = Events(self.p, without=("DirtyStateChanged",))
        self.n.ChildNodes.PauseEvents = True
        child.CaptionText = "told"
        self.assertEqual(events.taken(), [("QbNodeChanged", child)])
        self.p.QbNodes.PauseEvents = True
        child.CaptionText = "not told"
        self.assertEqual(events, [])
        self.assertTrue(self.p.QbNodes.Dirty)

    def test_a_collection_without_a_project_still_gets_its_flag(self):
        nodes = quillbox.QbNodes()
        node = nodes.NewNode(None)
        self.assertFalse(nodes.Dirty)
        node.CaptionText = "x"
        self.assertTrue(nodes.Dirty)

    def test_the_topic_is_found_by_its_key_whatever_the_type(self):
        self.n.TopicID = self.topic.Key
        self.assertEqual(self.n.Topic, self.topic)
        self.n.TopicID = "{none}"
        self.assertIsNone(self.n.Topic)

    def test_a_new_node_stands_at_the_end_with_its_handles_and_marks_nothing(self):
        events = Events(self.p)
        node = self.p.QbNodes.NewNode(None)
        child = node.ChildNodes.NewNode(Parent=node)
        self.assertEqual(list(self.p.QbNodes), [self.n, node])
        self.assertRegex(node.Key, GUID)
        self.assertEqual((node.QbNodes, node.ParentNode), (self.p.QbNodes, None))
        self.assertEqual((child.QbNodes, child.ParentNode), (node.ChildNodes, node))
        self.assertEqual((node.ChildNodes.QbProject, child.ChildNodes.QbProject), (self.p, self.p))
        self.assertEqual((events, self.p.Dirty), ([], False))

    def test_a_parent_is_only_a_handle(self):
        node = self.p.QbNodes.NewNode(self.n)
        self.assertEqual((node.ParentNode, len(self.n.ChildNodes), list(self.p.QbNodes)), (self.n, 0, [self.n, node]))


class ElementOfANode(MachineTest):
    def setUp(self):
        super().setUp()
        self.p = self.project()

    def load(self, *values):
        node = self.p.QbNodes.NewNode(None)
        node.Load(element(NODE % values))
        return node

    def test_all_eight_attributes_are_written_in_order_and_the_related_project_is_not(self):
        node = self.p.QbNodes.NewNode(None)
        node.CMPFileName = "lost.cmp"
        child = add_child(node, "a < b")
        self.assertXml(
            saved(node, "n"),
            f'<n key="{node.Key}" nt="0" ct="2" c="" i="-1" cfn="" tid="" url=""><n key="{child.Key}" nt="0" ct="2" '
            'c="a &lt; b" i="-1" cfn="" tid="" url=""/></n>')
        node.Load(element(NODE % (0, 2, "", -1, "", "", "")))
        again = quillbox.QbNode()
        again.QbNodes = self.p.QbNodes
        again.Load(element(NODE % (3, 1, "", -1, "", "", "")))
        self.assertEqual(again.CMPFileName, "")

    def test_every_attribute_comes_back(self):
        node = self.load(2, 2, "Caption", 5, "s.hhc", "{T}", "u.html")
        self.assertEqual(
            [node.Key, node.QbNodeType, node.CaptionType, node.CaptionText, node.Icon, node.SubContentsFileName,
             node.TopicID, node.StandardURL], ["{K}", ntSubContents, ctSpecific, "Caption", 5, "s.hhc", "{T}", "u.html"])

    def test_the_caption_type_of_the_file_wins_over_that_of_the_node_type(self):
        node = self.load(1, 2, "Own", -1, "", "{T}", "")
        self.assertEqual((node.CaptionType, node.CaptionText), (ctSpecific, "Own"))
        node = self.load(0, 1, "Own", -1, "", "", "u.html")
        self.assertEqual((node.CaptionType, node.CaptionText), (ctDefault, "Own"))

    def test_a_topic_node_without_a_topic_loads_as_a_standard_one(self):
        node = self.load(1, 1, "x", -1, "", "", "")
        self.assertEqual((node.QbNodeType, node.CaptionType), (ntStandard, ctSpecific))

    def test_children_are_read_whatever_their_name_and_linked(self):
        node = self.p.QbNodes.NewNode(None)
        node.Load(element('<n key="{A}" nt="0" ct="2" c="" i="-1" cfn="" tid="" url=""><any key="{B}" nt="0" ct="2" '
                          'c="" i="-1" cfn="" tid="" url=""/></n>'))
        child = node.ChildNodes.Item("{B}")
        self.assertEqual((child.ParentNode, child.QbNodes, node.ChildNodes.QbProject), (node, node.ChildNodes, self.p))
        self.assertTrue(node.ChildNodes.Dirty)

    def test_a_missing_attribute_or_a_number_that_is_none_ends_the_load_part_way(self):
        node = self.p.QbNodes.NewNode(None)
        with self.assertFails("'i'"):
            node.Load(element('<n key="{A}" nt="0" ct="2" c="read" cfn="" tid="" url=""/>'))
        self.assertEqual((node.Key, node.CaptionText), ("{A}", "read"))
        for values in (("x", 2, "", -1, "", "", ""), (0, "", "", -1, "", "", ""), (0, 2, "", "1.5.2", "", "", "")):
            with self.subTest(values), self.assertFails():
                self.load(*values)

    def test_a_node_needs_its_collection_before_it_is_loaded(self):
        with self.assertFails():
            quillbox.QbNode().Load(element(NODE % (0, 2, "", -1, "", "", "")))


class NodeDefs(MachineTest):
    def setUp(self):
        super().setUp()
        self.p = self.project()
        self.topic = add_topic(self.p, "Start", "Getting started")
        self.toc = quillbox.platform.TOCDefinition()

    def made(self, node):
        node.CreateNodeDef(None, self.toc)
        return list(self.toc.Nodes)

    def test_a_subtree_comes_flat_with_parents_before_children(self):
        a = add_node(self.p.QbNodes, "A")
        b = add_child(a, "B")
        add_child(b, "D")
        add_child(a, "C")
        defs = self.made(a)
        self.assertEqual([d.Caption for d in defs], ["A", "B", "D", "C"])
        self.assertEqual([d.Parent for d in defs], [None, defs[0], defs[1], defs[0]])
        self.assertEqual({d.TOCDefinition for d in defs}, {self.toc})
        self.assertEqual(len({d.Key for d in defs}), 4)
        self.assertEqual(self.toc.Nodes.Item(defs[2].Key), defs[2])

    def test_captions(self):
        def caption(url="", caption_type=ctSpecific, text="", topic=""):
            node = self.p.QbNodes.NewNode(None)
            node.CaptionType = caption_type
            node.StandardURL, node.CaptionText, node.TopicID = url, text, topic
            return self.made(node)[-1].Caption

        key = self.topic.Key
        self.assertEqual(caption(caption_type=ctDefault, text="own", topic=key), "Getting started")
        self.assertEqual(caption(caption_type=ctSpecific, text="own", topic=key), "own")
        self.assertEqual(caption(caption_type=ctDefault, text="own", topic="{gone}"), "own")
        self.assertEqual(caption(caption_type=ctDefault, text="", topic="{gone}"), "")
        self.assertEqual(caption("Glossary.html", ctDefault, "own"), "Glossary")
        self.assertEqual(caption("glossary.html", ctDefault, "own"), "own")
        self.assertEqual(caption("Glossary.html", ctSpecific, "own"), "own")

    def test_targets_and_kinds(self):
        def target(kind, url="", topic=""):
            node = self.p.QbNodes.NewNode(None)
            node.QbNodeType = kind
            node.StandardURL, node.TopicID = url, topic
            made = self.made(node)[-1]
            return made.LinkTarget, made.Kind

        self.assertEqual(target(ntSingleTopic, topic=self.topic.Key), ("Start.html", 0))
        self.assertEqual(target(ntSingleTopic, topic="{gone}"), ("", 0))
        self.assertEqual(target(ntStandard, "u.html"), ("u.html", 0))
        self.assertEqual(target(ntCMContents, "u.html"), ("", 3))
        self.assertEqual(target(ntSubContents, "u.html"), ("", 0))

    def test_icons(self):
        node = add_node(self.p.QbNodes, "x")
        self.assertFalse(self.made(node)[-1].HasCustomIcon)
        node.Icon = 0
        made = self.made(node)[-1]
        self.assertEqual((bool(made.HasCustomIcon), made.IconNumber, bool(made.Included)), (True, 0, True))


if __name__ == "__main__":
    unittest.main()
