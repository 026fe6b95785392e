import unittest

import quillbox
from quillbox import ByRef, lsBroken, lsOK, lsUnverified, ltHyperlink, ltImage
from support import Events, MachineTest, add_topic


class LinksTest(MachineTest):
    def setUp(self):
        super().setUp()
        self.p = self.project()
        # The first topic of a project is seen with a base; what is tested stands in others.
        add_topic(self.p, "First")
        self.fetched = []
        self.fetch_error = ""
        quillbox.platform.SetWebRequest(self.fetch)
        self.addCleanup(quillbox.platform.SetWebRequest, None)

    def fetch(self, url):
        self.fetched.append(url)
        return self.fetch_error

    def topic(self, body, name="Topic1"):
        return add_topic(self.p, name, body=body)

    def elements(self, body, tag="a"):
        return list(self.p.NewDOM(body).all.tags(tag))

    def link(self, text, kind=ltHyperlink, topic=None):
        link = quillbox.LinkInfo()
        link.Topic, link.LinkText, link.LinkType = topic or self.p.Topics.Item(1), text, kind
        return link

    def status(self, text, kind=ltHyperlink, external=False):
        link = self.link(text, kind)
        link.Verify(external)
        return link.LinkStatus

    def statuses(self, cases, kind=ltHyperlink):
        for text, expected in cases:
            with self.subTest(text):
                self.assertEqual(self.status(text, kind), expected)


def texts(links):
    return [link.LinkText for link in links]


class OneLink(LinksTest):
    def test_a_new_one_is_unverified_and_empty(self):
        link = quillbox.LinkInfo()
        self.assertEqual((link.Topic, link.Section, link.LinkStatus, link.LinkType, link.LinkText, link.LinkCaption),
                         (None, "", lsUnverified, ltHyperlink, "", ""))

    def test_every_property_holds_what_is_written(self):
        link, topic = quillbox.LinkInfo(), self.p.Topics.Item(1)
        for name, value in (("Topic", topic), ("Section", "s"), ("LinkStatus", lsBroken), ("LinkType", ltImage),
                            ("LinkText", "x"), ("LinkCaption", "<b>y</b>"), ("Topic", None)):
            setattr(link, name, value)
            self.assertEqual(getattr(link, name), value, name)

    def test_values_of_the_enumerations(self):
        self.assertEqual((int(lsUnverified), int(lsBroken), int(lsOK)), (0, 1, 2))
        self.assertEqual((int(ltHyperlink), int(ltImage)), (0, 1))

    def test_keeps_its_topic_alive(self):
        link, topic = quillbox.LinkInfo(), quillbox.Topic()
        topic.Name = "kept"
        link.Topic = topic
        del topic
        self.assertEqual(link.Topic.Name, "kept")


class Load(LinksTest):
    def load(self, element, *verify):
        link = quillbox.LinkInfo()
        link.LinkText, link.LinkCaption, link.LinkType, link.LinkStatus = "%41", "old", ltImage, lsOK
        link.Load(self.p.Topics.Item(1), element, *verify)
        return link

    def test_reads_a_hyperlink(self):
        link = self.load(self.elements("<A HREF='http://x/a%20b'>see <b>this</b></A>")[0], False)
        self.assertEqual((link.LinkType, link.LinkText, link.LinkCaption, link.LinkStatus, link.Topic),
                         (ltHyperlink, "http://x/a b", "see <b>this</b>", lsUnverified, self.p.Topics.Item(1)))

    def test_reads_an_image(self):
        link = self.load(self.elements("<IMG SRC='http://x/i.gif' alt=y>", "img")[0], False)
        self.assertEqual((link.LinkType, link.LinkText, link.LinkCaption), (ltImage, "http://x/i.gif", ""))

    def test_an_anchor_without_an_address_has_no_text(self):
        link = self.load(self.elements("<a name=x>y</a>")[0], False)
        self.assertEqual((link.LinkType, link.LinkText, link.LinkCaption), (ltHyperlink, "", "y"))
        link = self.load(self.elements("<img alt=x>", "img")[0], False)
        self.assertEqual((link.LinkType, link.LinkText), (ltImage, ""))

    def test_another_element_leaves_type_and_caption_and_decodes_the_old_text(self):
        link = self.load(self.elements("<p>x</p>", "p")[0], False)
        self.assertEqual((link.LinkType, link.LinkText, link.LinkCaption, link.LinkStatus),
                         (ltImage, "A", "old", lsUnverified))
        self.assertEqual(link.Topic, self.p.Topics.Item(1))

    def test_verifies_unless_told_not_to(self):
        gone = self.elements("<a href='mailto:a@b'>x</a>")[0]
        self.assertEqual(self.load(gone).LinkStatus, lsOK)
        self.assertEqual(self.load(gone, True).LinkStatus, lsOK)
        self.assertEqual(self.load(gone, False).LinkStatus, lsUnverified)
        self.load(self.elements("<a href='http://x/'>x</a>")[0])
        self.assertEqual(self.fetched, [])

    def test_needs_an_element(self):
        with self.assertFails():
            quillbox.LinkInfo().Load(self.p.Topics.Item(1), None)


class SplitURL(LinksTest):
    def split(self, own, source):
        url, bookmark, query = ByRef("-"), ByRef("-"), ByRef("-")
        self.link(own).SplitURL(source, url, bookmark, query)
        return url.value, bookmark.value, query.value

    def test_a_bookmark_comes_first_and_parts_that_are_not_there_stay(self):
        self.assertEqual(self.split("x", " a.html # b "), ("a.html", "b", "-"))
        self.assertEqual(self.split("x?y", "a?q#b?r#c"), ("a?q", "b?r#c", "-"))
        self.assertEqual(self.split("x", "#"), ("", "", "-"))

    def test_a_query_is_looked_for_by_the_links_own_text(self):
        self.assertEqual(self.split("x?y", " a ? q?r "), ("a", "-", "q?r"))
        self.assertEqual(self.split("", "a?q"), ("a?q", "-", "-"))
        self.assertEqual(self.split("x", " a "), (" a ", "-", "-"))

    def test_a_source_without_any_sign_fails_where_the_own_text_holds_a_query(self):
        with self.assertFails("Invalid argument"):
            self.split("x?y", "plain")


class Statuses(LinksTest):
    """One test a row."""

    def setUp(self):
        super().setUp()
        self.topic("<a name='here'></a><a id='there'></a><p id='para'></p>")
        self.write("there.txt", "")
        self.write("sub/Topic1.html", "")

    def test_an_empty_address_or_a_mere_anchor_is_fine(self):
        self.statuses([("", lsOK), ("#", lsOK), ("?a=1", lsOK)])
        self.assertEqual(len(self.topic("<a name=x>y</a><a>z</a><a href=''>z</a>", "Anchors").GetSuspectLinks()), 0)

    def test_a_bookmark_in_the_same_topic_is_fine_where_it_is_an_anchor(self):
        topic = self.p.TopicByName("Topic1")
        for text, expected in (("#here", lsOK), ("#there", lsOK), ("#para", lsBroken), ("#none", lsBroken),
                               ("#Here", lsBroken)):
            link = self.link(text, topic=topic)
            link.Verify()
            self.assertEqual(link.LinkStatus, expected, text)

    def test_a_topic_that_exists_is_fine(self):
        self.statuses([("Topic1.html", lsOK), ("TOPIC1.HTML", lsOK)])

    def test_a_topic_with_a_bookmark_is_fine_where_it_is_an_anchor_there(self):
        self.statuses([("Topic1.html#here", lsOK), ("Topic1.html#there", lsOK)])

    def test_a_topic_without_that_anchor_is_broken_whatever_files_there_are(self):
        self.write("Topic1.html", "<a name='none'></a>")
        self.write("Topic1.html#none", "")
        self.statuses([("Topic1.html#none", lsBroken), ("Topic1.html#para", lsBroken)])

    def test_the_glossary_is_fine(self):
        self.statuses([("glossary.html", lsOK), ("glossary.html#x", lsOK), ("GLOSSARY.HTML", lsOK)])

    def test_scripts_and_mail_are_fine(self):
        self.statuses([("javascript:x()", lsOK), ("JavaScript:x('http://y')", lsOK), ("mailto:a@b", lsOK)])

    def test_an_address_stays_unverified_without_external_checking(self):
        self.statuses([("http://x/", lsUnverified), ("HTTP://x/", lsUnverified)])
        self.statuses([("http://x/i.gif", lsUnverified)], ltImage)
        self.assertEqual(self.fetched, [])

    def test_an_address_is_judged_by_the_request_with_external_checking(self):
        self.assertEqual(self.status("http://x/a?b#c", external=True), lsOK)
        self.fetch_error = "not found"
        self.assertEqual(self.status("http://x/gone", external=True), lsBroken)
        self.assertEqual(self.fetched, ["http://x/a?b#c", "http://x/gone"])

    def test_other_schemes_are_never_checked(self):
        for external in (False, True):
            for text in ("https://x/", "ftp://x/", "file:///x", "C:\\x.html", "x:y"):
                self.assertEqual(self.status(text, external=external), lsOK, text)
        self.assertEqual(self.fetched, [])

    def test_a_tilde_is_fine_in_a_project_with_generated_content(self):
        self.statuses([("Ns~Class.html", lsBroken)])
        self.p.CMPFileName = "code.cmp"
        self.statuses([("Ns~Class.html", lsOK), ("Ns.html", lsBroken)])
        self.statuses([("a~b.gif", lsOK)], ltImage)

    def test_a_file_in_the_projects_folder_is_fine(self):
        self.statuses([("there.txt", lsOK), ("sub/Topic1.html", lsOK), ("sub\\Topic1.html", lsOK)])

    def test_a_file_that_is_not_there_is_broken(self):
        self.statuses([("gone.txt", lsBroken), ("sub/gone.html", lsBroken), ("Gone.html", lsBroken)])


class EdgeCases(LinksTest):
    def test_a_page_that_is_no_topic_may_be_a_file(self):
        self.statuses([("Topic9.html", lsBroken)])
        self.write("Topic9.html", "")
        self.statuses([("Topic9.html", lsOK)])

    def test_an_extension_of_four_letters_takes_no_topic_test(self):
        self.topic("")
        self.statuses([("Topic1.htm", lsBroken)])
        self.write("Topic1.htm", "")
        self.statuses([("Topic1.htm", lsOK)])

    def test_a_folder_takes_no_topic_test(self):
        self.topic("")
        self.statuses([("sub/Topic1.html", lsBroken), ("sub\\Topic1.html", lsBroken)])

    def test_an_image_takes_no_topic_test(self):
        self.topic("")
        self.statuses([("Topic1.html", lsBroken), ("glossary.html", lsBroken)], ltImage)

    def test_escapes_are_decoded_before_the_file_is_looked_for(self):
        topic = self.topic("<img src='a%20b.gif'>")
        self.assertEqual(texts(topic.GetSuspectLinks()), ["a b.gif"])
        self.write("a b.gif", "")
        self.assertEqual(len(topic.GetSuspectLinks()), 0)

    def test_a_decoded_percent_sign_is_decoded_again(self):
        topic = self.topic("<a href='a%25b'>1</a><a href='a%2541.txt'>2</a><a href='%e9%80'>3</a>")
        self.assertEqual(texts(topic.GetSuspectLinks()), ["a\x0b", "aA.txt", "é€"])

    def test_a_percent_sign_at_the_end_becomes_a_nul(self):
        self.assertEqual(texts(self.topic("<a href='a%'>x</a>").GetSuspectLinks()), ["a\0"])

    def test_a_status_that_was_decided_stays_unless_the_topic_test_decides_anew(self):
        link = self.link("file.txt")
        link.Verify()
        self.write("file.txt", "")
        link.Verify()
        self.assertEqual(link.LinkStatus, lsBroken)
        self.topic("")
        link = self.link("Topic1.html")
        link.LinkStatus = lsBroken
        link.Verify()
        self.assertEqual(link.LinkStatus, lsOK)

    def test_a_link_without_a_topic_cannot_be_verified(self):
        with self.assertFails():
            quillbox.LinkInfo().Verify()

    def test_an_anchor_is_looked_for_in_the_text_as_it_is_now(self):
        target, topic = self.topic("", "Target"), self.topic("<a href='Target.html#x'>1</a><a href='#y'>2</a>")
        self.assertEqual(len(topic.GetSuspectLinks()), 2)
        target.TopicSectionData["BodyText"] = "<a name=x></a>"
        self.assertEqual(texts(topic.GetSuspectLinks()), ["#y"])
        target.TopicSections.Item("BodyText").Data = "<a name=z></a>"
        topic.TopicSectionData["BodyText"] += "<a name=y></a>"
        self.assertEqual(texts(topic.GetSuspectLinks()), ["Target.html#x"])


class SuspectLinksOfATopic(LinksTest):
    def test_hyperlinks_come_before_images_each_in_the_order_of_the_text(self):
        topic = self.topic("<img src=1.gif><a href=2.htm>x<img src=3.gif></a><A HREF=4.htm></A><a href=2.htm>y</a>")
        links = topic.GetSuspectLinks()
        self.assertEqual(texts(links), ["2.htm", "4.htm", "2.htm", "1.gif", "3.gif"])
        self.assertEqual([link.LinkType for link in links], [ltHyperlink] * 3 + [ltImage] * 2)
        self.assertEqual(links[1].LinkCaption, "x<img src=3.gif>")
        self.assertTrue(all(link.Topic == topic and link.LinkStatus == lsBroken for link in links))

    def test_there_are_none_without_links(self):
        for body in (None, "", "<p>text</p>"):
            self.assertEqual(len(self.topic(body, "None").GetSuspectLinks()), 0)

    def test_a_collection_that_was_passed_is_added_to_and_comes_back(self):
        passed = quillbox.LinkInfos()
        passed.Add(quillbox.LinkInfo())
        self.assertEqual(self.topic("<p>x</p>", "None").GetSuspectLinks(passed), passed)
        self.assertEqual(len(passed), 1)
        self.assertEqual(self.topic("<a href=x.htm>y</a>").GetSuspectLinks(AddToCollection=passed), passed)
        self.assertEqual(texts(passed), ["", "x.htm"])

    def test_a_document_that_was_passed_is_filled_and_not_handed_back(self):
        document = self.p.NewDOM("<a href=old.htm>x</a>")
        dom = ByRef(document)
        links = self.topic("<a href=http://x/>x</a><a href='#none'>y</a>").GetSuspectLinks(None, dom)
        self.assertEqual(texts(links), ["http://x/", "#none"])
        self.assertIsNone(dom.value)
        self.assertEqual(document.body.innerHTML, "<a href=http://x/>x</a><a href='#none'>y</a>")
        dom = ByRef()
        self.assertEqual(len(self.topic("").GetSuspectLinks(None, dom)), 0)
        self.assertIsNone(dom.value)

    def test_a_scan_that_fails_leaves_what_it_found_in_the_collection(self):
        self.topic("<div>" * 1000, "Deep")
        passed = quillbox.LinkInfos()
        with self.assertFails("nests deeper"):
            self.topic("<a href=x.htm>1</a><a href='Deep.html#y'>2</a><a href=z.htm>3</a>").GetSuspectLinks(passed)
        self.assertEqual(texts(passed), ["x.htm"])


class SuspectLinksOfAProject(LinksTest):
    def test_tells_each_topic_by_its_position_and_collects_in_their_order(self):
        self.topic("<a href=b.htm>x</a>", "B")
        self.topic("<p>x</p>", "C")
        self.topic("<a href=d.htm>x</a><a href=http://x/>x</a>", "D")
        events = Events(self.p)
        self.assertEqual(texts(self.p.GetSuspectLinks()), ["b.htm", "d.htm", "http://x/"])
        self.assertEqual(events, [("LinkCheckStartTopic", index) for index in (1, 2, 3, 4)])

    def test_an_event_comes_before_its_topic_is_scanned(self):
        self.topic("<a href=b.htm>x</a>", "B")
        self.topic("", "C")

        def heal(index):
            self.p.Topics.Item(index).TopicSectionData["BodyText"] = f"<a href={index}.htm>x</a>"

        self.p.LinkCheckStartTopic.connect(heal)
        self.assertEqual(texts(self.p.GetSuspectLinks()), ["2.htm", "3.htm"])

    def test_only_the_first_topic_is_seen_with_a_base(self):
        body = "<a href=gone.htm>x</a><a href='#gone'>x</a><img src=gone.gif>"
        self.p.Topics.Item(1).TopicSectionData["BodyText"] = body
        self.topic(body, "B")
        found = [(link.Topic.Name, link.LinkText) for link in self.p.GetSuspectLinks()]
        self.assertEqual(found, [("First", "#gone"), ("B", "gone.htm"), ("B", "#gone"), ("B", "gone.gif")])

    def test_a_handler_that_fails_ends_the_scan(self):
        def fail(index):
            raise ValueError("stop")

        self.p.LinkCheckStartTopic.connect(fail)
        with self.assertRaises(Exception):
            self.p.GetSuspectLinks()

    def test_an_empty_project_has_none(self):
        self.assertEqual(len(self.project("empty.qbp").GetSuspectLinks()), 0)


class List(LinksTest):
    def test_adds_by_key_and_position_and_fails_for_a_miss(self):
        links = quillbox.LinkInfos()
        one, two, three, four = (self.link(text) for text in "1234")
        links.Add(one, "K")
        links.Add(two)
        links.Add(three, "", 1)
        links.Add(four, After="k")
        self.assertEqual(texts(links), ["3", "1", "4", "2"])
        self.assertEqual((links["K"], links.Item(1), len(links), links.Count), (one, three, 4, 4))
        links.Remove("K")
        links.Remove(1)
        self.assertEqual(texts(links), ["4", "2"])
        for key in (0, 3, "K", ""):
            with self.assertFails():
                links.Item(key)


class ChangeLinkText(LinksTest):
    def test_changes_every_link_with_that_text_and_nothing_else(self):
        topic = self.topic("<p>a &amp; b <A class=k  HREF='old.htm'>1</A>\n<a href=Old.htm>2</a><a href=old.htm>3</a>"
                           "<img src=old.htm>")
        link = topic.GetSuspectLinks().Item(1)
        self.p.Dirty = topic.Dirty = False
        link.ChangeLinkText("new.htm")
        self.assertEqual(topic.TopicSectionData("BodyText"),
                         "<p>a &amp; b <A class=k  HREF=\"new.htm\">1</A>\n<a href=Old.htm>2</a><a href=\"new.htm\">3"
                         "</a><img src=old.htm>")
        self.assertEqual((link.LinkText, link.LinkStatus), ("new.htm", lsOK))
        self.assertTrue(topic.Dirty)

    def test_an_image_keeps_its_source(self):
        topic = self.topic("<img src='old.gif' alt=x><a href=old.gif>y</a>")
        link = topic.GetSuspectLinks().Item(2)
        link.ChangeLinkText("new.gif")
        self.assertEqual(topic.TopicSectionData("BodyText"),
                         "<img src='old.gif' alt=x href=\"new.gif\"><a href=old.gif>y</a>")
        self.assertEqual((link.LinkText, link.LinkStatus), ("new.gif", lsOK))

    def test_tells_the_change_and_marks_even_where_nothing_matched(self):
        topic = self.topic("<a href=x.htm>1</a>")
        topic.Dirty = False
        events = Events(self.p)
        self.link("none.htm", topic=topic).ChangeLinkText("y.htm")
        self.assertEqual(topic.TopicSectionData("BodyText"), "<a href=x.htm>1</a>")
        self.assertTrue(topic.Dirty)
        self.assertNotIn("TopicSectionChanged", events.names())
        self.link("x.htm", topic=topic).ChangeLinkText("y.htm")
        self.assertEqual(events.names().count("TopicSectionChanged"), 1)

    def test_needs_a_topic(self):
        with self.assertFails():
            quillbox.LinkInfo().ChangeLinkText("x")


class Documents(LinksTest):
    def test_of_the_project_have_its_folder_as_their_base(self):
        document = self.p.NewDOM("<a href='x y.htm'>z</a>")
        self.assertEqual(document.documentElement.outerHTML,
                         f'<html><head><base href="{self.folder}/"/></head><body><a href=\'x y.htm\'>z</a></body></html>')
        self.assertEqual(list(document.all.tags("a"))[0].getAttribute("href", 0),
                         f"file:///{self.folder.lstrip('/')}/x y.htm")

    def test_take_the_body_as_it_stands(self):
        document = self.p.NewDOM("<html><body class=k>x</body></html>")
        self.assertIn("<body><html><body class=k>x</body></html></body></html>", document.documentElement.outerHTML)
        self.assertEqual(document.body.className, "k")

    def test_addresses_below_the_projects_folder_are_made_relative(self):
        folder = self.folder.lstrip("/")
        for source, expected in ((f"file:///{folder}/x%20y.html", "x y.html"),
                                 (f"FILE:///{folder.upper()}/a%20b#c%20d", "a b#c d"),
                                 (f"file:///{folder}/1;file:///{folder}/2", "1;2"),
                                 ("file:///elsewhere/x%41", "file:///elsewhere/x%41"), ("", "")):
            self.assertEqual(self.p.ParseURL(source), expected)


if __name__ == "__main__":
    unittest.main()
