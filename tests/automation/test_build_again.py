"""Builds that come after others: in the same folder after changes, and in the same process."""

import os
import subprocess
import sys
import unittest

import quillbox
from support import MachineTest, add_child, add_node, add_topic, variable

SHARED = os.path.join(os.environ["QUILLBOX_SOURCE_DIR"], "share", "quillbox", "")


def glossary(project, **terms):
    for term, definition in terms.items():
        item = project.NewGlossaryItem(term, definition)
        project.GlossaryItems.Add(item, item.Key)


def add_link(topic, target):
    link = quillbox.RelatedTopic()
    link.ChildTopicKey, link.Category, link.ParentTopic = target.Key, "See also", topic
    topic.RelatedTopics.Add(link)


def manual(project):
    """A project with all that pages are made of."""
    project.Title = "Manual"
    glossary(project, api="what programs call", term="a word", Ümlaut="ä, ö, ü")
    project.VariableValues.Add(variable("Language", "de"), "Language")
    project.VariableValues.Add(variable("Copyright", "© somebody"), "Copyright")
    body = '<p>An $$API$$ and <a href="Second.html">more</a> on $$term$$: %%projecttitle%%</p>'
    topics = [add_topic(project, name, "On " + name, body) for name in ("First", "Second", "Third", "Fourth")]
    for number, topic in enumerate(topics):
        topic.AddKeyword(f"word|level {number}")
        topic.HelpContextIDs = str(number)
        add_link(topic, topics[number - 1])
    topics[1].IsDefault = True
    book = add_node(project.QbNodes, topic=topics[0])
    for topic in topics[1:]:
        add_child(book, topic=topic)


def guide(project):
    """Another, with other settings and some of the same names."""
    project.Title = "Guide"
    for name in ("First", "Other"):
        add_node(project.QbNodes, topic=add_topic(project, name, name + " of the guide", "<p>$$api$$ ж</p>"))


PROJECTS = {"manual": manual, "guide": guide}


def build(project, template="HTML Help"):
    project.TemplateName = template
    project.CompileType = quillbox.CompileHTMLHelp1
    project.Build(None, "", False, False, False)


def build_file(path):
    project = quillbox.QbProject()
    project.Filename.Path = path
    project.LoadFromFile(path)
    build(project)


class RealTemplates(MachineTest):
    def setUp(self):
        super().setUp()
        self.set_install_folder(SHARED)


class AfterChanges(RealTemplates):
    def assertLikeACleanBuild(self, project):
        build(project)
        os.makedirs(self.path("clean"), exist_ok=True)
        for name in os.listdir(self.path("clean")):
            os.remove(self.path("clean", name))
        project.Filename.Path = self.path("clean", "manual.qbp")
        build(project)
        project.Filename.Path = self.path("work", "manual.qbp")
        files = self.files()
        again = {name[len("work/"):]: text for name, text in files.items() if name.startswith("work/")}
        clean = {name[len("clean/"):]: text for name, text in files.items() if name.startswith("clean/")}
        self.assertEqual(sorted(again), sorted(clean))
        for name in clean:
            self.assertEqual(again[name], clean[name], name)
        return again

    def test_a_build_leaves_what_a_clean_one_writes(self):
        os.makedirs(self.path("work"))
        project = self.project("work/manual.qbp")
        manual(project)
        build(project)
        topics = {topic.Name: topic for topic in project.Topics}

        def edited():
            topics["First"].TopicSectionData["BodyText"] = "<p>Rewritten $$term$$</p>"

        def renamed():
            topics["Second"].Name = "Renamed"

        def renamed_in_case():
            topics["Third"].Name = "THIRD"

        def left_out():
            topics["Fourth"].IncludeInHelpFile = False

        def removed():
            project.Topics.Remove(topics["Third"].Key)

        def glossary_changed():
            project.GlossaryItems.ItemByTerm("api").Definition = "another meaning"

        def glossary_emptied():
            for item in list(project.GlossaryItems):
                project.GlossaryItems.Remove(item.Key)

        def titled():
            project.Title = "Handbook"

        def language_changed():
            project.VariableValues.Item("Language").Value = "ru"

        def contents_changed():
            project.QbNodes.Remove(1)

        for change in (edited, renamed, renamed_in_case, left_out, removed, glossary_changed, glossary_emptied,
                       titled, language_changed, contents_changed):
            with self.subTest(change.__name__):
                change()
                files = self.assertLikeACleanBuild(project)
        self.assertEqual(sorted(files), [".quillbox-build", "First.html", "Handbook.hhc", "Handbook.hhk",
                                         "Handbook.hhp", "Renamed.html", "help.css"])

    def test_a_link_to_a_page_that_is_gone_does_not_bring_it_into_the_help_file(self):
        os.makedirs(self.path("work"))
        project = self.project("work/manual.qbp")
        manual(project)
        build(project)
        project.Topics.Remove(project.TopicByName("Second").Key)
        build(project)
        self.assertIn(b'href="Second.html"', self.read("work/First.html"))
        self.assertNotIn(b"Second.html", self.read("work/Manual.hhp").partition(b"[FILES]")[2])


class InOneProcess(RealTemplates):
    def copies(self, folder):
        """The projects, each in a folder of its own."""
        for name, make in PROJECTS.items():
            if not os.path.exists(self.path(name + ".qbp")):
                project = self.project(name + ".qbp")
                make(project)
                project.SaveToDisk()
            self.write(f"{folder}/{name}/{name}.qbp", self.read(name + ".qbp"))
            yield self.path(folder, name, name + ".qbp")

    def built(self, folder):
        return {name[len(folder):]: text for name, text in self.files().items() if name.startswith(folder + "/")}

    def test_builds_know_nothing_of_each_other(self):
        for path in self.copies("alone"):
            subprocess.run([sys.executable, __file__, path], check=True, timeout=60)
        alone = self.built("alone")
        self.assertIn("/guide/Guide.hhp", alone)
        for turn in ("first", "second"):
            for path in self.copies(turn):
                build_file(path)
            together = self.built(turn)
            self.assertEqual(sorted(together), sorted(alone))
            for name, text in alone.items():
                self.assertEqual(together[name], text, name)


if __name__ == "__main__":
    if sys.argv[1:2] and sys.argv[1].endswith(".qbp"):
        build_file(sys.argv[1])
    else:
        unittest.main()
