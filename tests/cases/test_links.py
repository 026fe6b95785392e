import http.server
import json
import re
import threading
import unittest
import xml.etree.ElementTree as ElementTree

from support import Case


def body_section(tree):
    return next(section for section in tree.getroot().iter("s") if section.get("k") == "BodyText")


def place(body, offset):
    """The line and the column of a character, from 1."""
    before = body[:offset]
    return before.count("\n") + 1, offset - (before.rfind("\n") + 1) + 1


class LinkCase(Case):
    def topic_file(self, project, name):
        for path in sorted((project.parent / "TopicData").iterdir()):
            if ElementTree.parse(path).getroot().get("Name") == name:
                return path
        raise LookupError(name)

    def set_body(self, project, name, body):
        """Gives a topic another body; what else its file holds stays."""
        path = self.topic_file(project, name)
        tree = ElementTree.parse(path)
        body_section(tree).text = body
        tree.write(path, encoding="utf-8", xml_declaration=True)

    def body(self, project, name):
        return body_section(ElementTree.parse(self.topic_file(project, name))).text

    def suspects(self, project, *options, status):
        return json.loads(self.run_program("links", project, "--json", *options, status=status)[0])


class IntactHandbook(LinkCase):
    def test_has_nothing_to_report(self):
        out, err = self.run_program("links", self.handbook())
        self.assertEqual(out, "")
        self.assertRegex(err, r"^\d+ topics: no broken link\n$")

    def test_is_an_empty_list_for_programs(self):
        self.assertEqual(self.suspects(self.handbook(), status=0), [])


class LinksBrokenByHand(LinkCase):
    """Three links of the handbook, each broken in another way."""

    def setUp(self):
        super().setUp()
        self.project = self.handbook()
        self.broken = []
        self.damage("Topics", r'(<a href=")[A-Z]\w+\.html(#\w+)?(")', "NoSuchTopic.html", "hyperlink")
        self.damage("ContentsTree", r'(<img src=")images/[^"]+()(")', "images/no such.png", "image")
        self.damage("Welcome", r'(<a href=")([A-Z]\w+)\.html(")', "Topics.html#no-such-place", "hyperlink")

    def damage(self, topic, pattern, target, kind):
        body = self.body(self.project, topic)
        found = list(re.finditer(pattern, body))[-1]
        self.set_body(self.project, topic, body[: found.start()] + found[1] + target + found[3] + body[found.end() :])
        line, column = place(body, found.start())
        self.broken.append({"topic": topic, "kind": kind, "status": "broken", "link": target, "line": line,
                            "column": column, "offset": found.start()})

    def test_are_the_three_that_programs_are_told(self):
        told = self.suspects(self.project, status=1)
        for one in told:
            del one["caption"]
        self.assertCountEqual(told, self.broken)

    def test_are_one_line_each_for_people(self):
        out, err = self.run_program("links", self.project, status=1)
        lines = out.splitlines()
        self.assertEqual(len(lines), 3, out)
        for one in self.broken:
            place = f"{one['line']}:{one['column']}"
            told = [line for line in lines if re.split(r"\s{2,}", line) ==
                    [one["topic"], place, one["status"], one["kind"], one["link"]]]
            self.assertEqual(len(told), 1, f"{one}\n{out}")
        columns = {re.search(r"broken", line).start() for line in lines}
        self.assertEqual(len(columns), 1, "the columns stand below each other")
        self.assertRegex(err, r"^\d+ topics: 3 broken links\n$")


class Positions(LinkCase):
    def test_count_characters_and_lines_of_the_body(self):
        project = self.handbook()
        body = "é𝄞 <a\nhref='x.htm'>x</a>\n\nüü<IMG SRC='y.gif'> <a href='http://example.org/'>z</a>\n"
        self.set_body(project, "Welcome", body)
        told = self.suspects(project, status=1)
        self.assertEqual([(one["link"], one["line"], one["column"]) for one in told],
                         [("x.htm", 1, 4), ("y.gif", 4, 3), ("http://example.org/", 4, 21)])
        for one in told:
            self.assertRegex(body[one["offset"] :], r"^<(a\s|IMG )")

    def test_lines_may_end_as_they_like(self):
        project = self.handbook()
        path = self.topic_file(project, "Welcome")
        self.set_body(project, "Welcome", "MARK")
        path.write_text(path.read_text().replace("MARK", "a&#13;b&#13;&#10;c&#10;&lt;a href='x.htm'&gt;"))
        self.assertEqual([(one["line"], one["column"], one["offset"]) for one in self.suspects(project, status=1)],
                         [(4, 1, 7)])

    def test_one_link_in_badly_nested_text_stands_at_its_one_tag(self):
        project = self.handbook()
        body = "<table><p><a href='x.htm'>1<p>2</a></table>"
        self.set_body(project, "Welcome", body)
        self.assertEqual({one["offset"] for one in self.suspects(project, status=1)}, {body.index("<a")})


class OtherSites(LinkCase):
    def setUp(self):
        super().setUp()
        self.asked = asked = []

        class Answer(http.server.BaseHTTPRequestHandler):
            def do_GET(self):
                asked.append(self.path)
                self.send_response(200 if self.path == "/good" else 404)
                self.end_headers()

            def log_message(self, *_):
                pass

        server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Answer)
        self.site = f"http://127.0.0.1:{server.server_port}"
        thread = threading.Thread(target=server.serve_forever)
        thread.start()
        self.addCleanup(server.server_close)
        self.addCleanup(thread.join)
        self.addCleanup(server.shutdown)
        self.project = self.handbook()
        self.set_body(self.project, "Welcome", f"<a href='{self.site}/good'>1</a><a href='{self.site}/good#a'>2</a>"
                                               f"<img src='{self.site}/gone.png'>"
                                               f"<a href='{self.site.replace('http', 'https')}/x'>3</a>")

    def test_are_left_alone_and_not_called_broken(self):
        told = self.suspects(self.project, status=0)
        self.assertEqual([one["status"] for one in told], ["unverified"] * 3)
        self.assertEqual(self.asked, [])
        _, err = self.run_program("links", self.project)
        self.assertIn("3 to other sites not looked up", err)

    def test_are_fetched_once_each_when_asked_for(self):
        told = self.suspects(self.project, "--external", status=1)
        self.assertEqual([one["link"].rpartition("/")[2] for one in told], ["gone.png", "x"])
        self.assertEqual(told[0]["reason"], "The server answered with the error 404: not found")
        self.assertIn("127.0.0.1", told[1]["reason"])
        self.assertCountEqual(self.asked, ["/good", "/gone.png"])
        out, _ = self.run_program("links", self.project, "--external", status=1)
        self.assertIn("gone.png  (The server answered with the error 404: not found)\n", out)


class UnusableInput(LinkCase):
    def test_ends_with_status_2(self):
        _, err = self.run_program("links", "none.qbp", status=2)
        self.assertIn("none.qbp", err)
        self.run_program("links", status=2)

    def test_a_body_that_cannot_be_read_is_named(self):
        project = self.handbook()
        self.set_body(project, "Welcome", "<div>" * 1000)
        _, err = self.run_program("links", project, status=2)
        self.assertIn("Topic 'Welcome': The HTML nests deeper than 500 elements", err)

    def test_control_characters_do_not_reach_the_terminal(self):
        project = self.handbook()
        self.set_body(project, "Welcome", "<a href='%1b[31mred%c2%85%0ax.htm'>x</a>")
        out, _ = self.run_program("links", project, status=1)
        self.assertIn("%1B[31mred", out)
        self.assertEqual(len(out.splitlines()), 1)


if __name__ == "__main__":
    unittest.main()
