import json
import re
import unittest

import site_reader as reader
from support import Case


class WebHelp(Case):
    """The handbook as a site, read without running its scripts."""

    def site(self, project=None):
        self.run_program("build", project or self.handbook(), "--template", "Web Help", "--site", "site", "--no-compile")
        return reader.Site(self.folder / "site")

    def change(self, project, old, new):
        changed = [file for file in project.parent.rglob("*") if file.suffix in (".qbp", ".xml") and old in file.read_text()]
        self.assertTrue(changed, old)
        for file in changed:
            file.write_text(file.read_text().replace(old, new))

    def test_every_reference_leads_somewhere(self):
        site = self.site()
        self.assertGreaterEqual(len(site.pages), 30)
        self.assertEqual(site.dead_references(), [])

    def test_every_page_is_reached_from_the_start_page_without_scripts(self):
        site = self.site()
        self.assertEqual(set(site.pages) - site.reached_from("index.html"), set())

    def test_an_id_stands_once_a_page(self):
        self.assertEqual({name: page.duplicates for name, page in self.site().pages.items() if page.duplicates}, {})

    def test_leaves_no_tag_behind_and_asks_no_other_site(self):
        self.site()
        for file in (self.folder / "site").rglob("*"):
            if file.suffix not in (".html", ".js", ".css"):
                continue
            text = file.read_text()
            self.assertNotRegex(text, r"!MISSING|!UNCRECOGNISED|!NO PROPERTY|!ERROR|!INVALID", file.name)
            self.assertNotRegex(text, r"""(src|<link[^>]* href)=["']?(https?:)?//""", file.name)

    def test_contents_are_no_part_of_pages(self):
        self.site()
        page = (self.folder / "site" / "Welcome.html").read_text()
        self.assertNotIn("ContentsTree.html", page)
        self.assertIn("ContentsTree.html", (self.folder / "site" / "webhelp" / "contents.js").read_text())

    def scripts(self, pattern):
        """The data of the scripts of the search index, in the order of their numbers."""
        folder = self.folder / "site" / "webhelp" / "search"
        files = sorted(folder.glob(pattern), key=lambda file: int(re.search(r"\d+", file.name)[0]))
        return [json.loads(re.fullmatch(r'webhelp\.take\("[^"]*",(.*)\);\n', file.read_text(), re.S)[1]) for file in files]

    def test_search_index_knows_pages_and_words(self):
        self.site()
        pages = [page for script in self.scripts("pages-*.js") for page in script]
        self.assertIn("ContentsTree.html", [file for file, _, _ in pages])
        words = {word: postings for script in self.scripts("words-*.js") for word, *postings in script}
        self.assertEqual(sorted(words), list(words))
        number, found = 0, []
        for posting in words["ntstandard"]:
            number += posting // 10
            found.append(pages[number][0])
        self.assertIn("ContentsTree.html", found)

    def test_a_second_build_is_the_same_to_the_byte(self):
        project = self.handbook()
        self.site(project)
        files = {file: file.read_bytes() for file in (self.folder / "site").rglob("*") if file.is_file()}
        self.site(project)
        self.assertEqual({file: file.read_bytes() for file in (self.folder / "site").rglob("*") if file.is_file()}, files)

    def test_a_topic_named_index_is_the_start_page(self):
        project = self.handbook()
        self.change(project, 'Name="ContentsTree"', 'Name="Index"')
        site = self.site(project)
        self.assertNotIn("index.html", site.pages)
        self.assertIn("<h1>The contents tree</h1>", (self.folder / "site" / "Index.html").read_text())

    def test_topics_may_have_the_names_of_the_pages_of_the_template(self):
        project = self.handbook()
        self.change(project, 'Name="ContentsTree"', 'Name="contents"')
        self.change(project, 'Name="FileFormat"', 'Name="search"')
        site = self.site(project)
        for name in ("contents.html", "search.html", "webhelp/contents.html", "webhelp/search.html", "index.html"):
            self.assertIn(name, site.pages)

    def test_links_to_topics_with_signs_in_their_names(self):
        project = self.handbook()
        self.change(project, 'Name="ContentsTree"', 'Name="C# &amp; 50%25"')
        site = self.site(project)
        self.assertIn("C# & 50%25.html", site.pages)
        dead = [one for one in site.dead_references() if ": ContentsTree.html" not in one]
        self.assertEqual(dead, [])
        self.assertIn("C# & 50%25.html", site.reached_from("index.html"))
        self.assertIn("C%23 &amp; 50%2525.html", (self.folder / "site" / "webhelp" / "contents.js").read_text())

    def test_escapes_titles_everywhere(self):
        project = self.handbook()
        title = "</script><b> & \\ 'x' “y”"
        self.change(project, 'Title="The contents tree" ContentsTitle="The contents tree"',
                    'Title="&lt;/script>&lt;b> &amp; \\ \'x\' “y”" ContentsTitle="&lt;/script>&lt;b> &amp; \\ \'x\' “y”"')
        self.site(project)
        site = self.folder / "site"
        shown = "&lt;/script&gt;&lt;b&gt; &amp; \\ 'x' “y”"
        self.assertIn(f"<h1>{shown}</h1>", (site / "ContentsTree.html").read_text())
        self.assertIn(shown, (site / "webhelp" / "contents.html").read_text())
        self.assertIn(shown, (site / "webhelp" / "index.html").read_text())
        self.assertIn(title, [name for script in self.scripts("pages-*.js") for _, name, _ in script])
        self.assertNotIn("</script>", (site / "webhelp" / "contents.js").read_text())

    def test_escapes_the_title_of_the_project(self):
        project = self.handbook()
        self.change(project, 'Title="Quillbox Handbook"', 'Title="A &amp; B &lt;i>"')
        site = self.site(project)
        for name in site.pages:
            text = (self.folder / "site" / name).read_text().split('<div class="text">')[0]
            self.assertIn("A &amp; B &lt;i&gt;</a>", text, name)
            self.assertNotIn("<i>", text, name)

    def test_a_project_of_nothing_has_a_start_page_that_stays(self):
        project = self.handbook()
        text = re.sub(r"  <(Topic|file) [^>]*/>\n", "", project.read_text())
        project.write_text(text)
        for file in project.parent.glob("ProjectData/*.xml"):
            file.unlink()
        site = self.site(project)
        self.assertEqual(sorted(site.pages), ["index.html", "webhelp/contents.html", "webhelp/index.html", "webhelp/search.html"])
        self.assertEqual(site.dead_references(), [])
        self.assertNotIn("refresh", (self.folder / "site" / "index.html").read_text())

    def test_tells_language_and_direction(self):
        project = self.handbook()
        self.change(project, '<VariableValue Name="Language">en<', '<VariableValue Name="Language">ar<')
        page = self.site(project).pages["Welcome.html"]
        self.assertEqual((page.language, page.direction), ("ar-EG", "rtl"))

    def test_a_topic_left_out_of_the_help_leaves_no_dead_link_around_the_text(self):
        project = self.handbook()
        for file in project.parent.rglob("*.xml"):
            if 'Name="ContentsTree"' in file.read_text():
                file.write_text(file.read_text().replace('IncludeInHelpFile="True"', 'IncludeInHelpFile="False"'))
        site = self.site(project)
        self.assertNotIn("ContentsTree.html", site.pages)
        self.assertEqual([dead for dead in site.dead_references() if dead.startswith("webhelp/")], [])


if __name__ == "__main__":
    unittest.main()
