"""The providers of a build as a script reaches them: items by their kinds, and the values of tags."""

import unittest

import quillbox
from support import MachineTest, add_node, add_topic, variable

platform = quillbox.platform

TEMPLATE = '<PageTemplate Name="Plain"><Namespace Name="CM.Quillbox"/></PageTemplate>'
SCRAPS = {
    "_T_header": "<ul>", "_T_body": "<li>%%itemtitle%%</li>", "_T_SEPARATOR": ",", "_T_footer": "</ul>%%itemtitle%%",
    "_GLOSSARYREFERENCE": "<dfn>%%glossaryitemterm%%</dfn>", "_BOLD": "<b>%%literal%%</b>",
    "_INDEX_ENTRY": "%%itemtitle%% -> %%linktarget%%", "_NODE": "%%nodecaption%%",
}


def definition(kind):
    made = platform.NamespaceDef()
    made.Name = "cm.quillbox:" + kind
    return made


def tag(type, **attributes):
    made = platform.Element()
    for name, value in {"type": type, **attributes}.items():
        made.Attributes.Add(value, name)
    return made


class ProviderCase(MachineTest):
    def setUp(self):
        super().setUp()
        self.write("install/Templates/Plain/template.xml", TEMPLATE)
        for name, text in SCRAPS.items():
            self.write(f"install/Templates/Plain/scraps/{name}.html", text)
        self.write("work/readme.txt", "")
        self.manual = self.project("work/manual.qbp")
        self.manual.Title = "Manual"
        self.document = platform.Document()
        self.document.Objects.Add(self.manual, "CM.Quillbox")
        self.document.PageTemplates.Add(self.manual.Template, "Plain")
        self.document.TemplateName = "Plain"
        self.document.Title = "Help Title"
        self.document.OutputPath = self.path("work", "")
        self.document.CompileType = "1"
        self.items = self.document.NamespaceProvider("Quillbox.QbNamespaceProvider")
        self.data = quillbox.QbDataProvider()
        self.data.Document = self.document
        self.data.CurrentRootItem = self.manual

    def expanded(self, text, item=None, parent=None):
        self.data.SetCurrentItem(None, item, type(item).__name__, parent)
        return self.data.ParseForProperties(text)

    def names(self, kind, parent=None, filter="", of="Name"):
        return [getattr(item, of) for item in self.items.GetItems(definition(kind), parent, filter)]

    def streamed(self, content):
        file = platform.FileSystemObject()
        file.Path = self.path("work", "streamed.txt")
        file.Open(4, 2, 1, 32767)
        self.items.StreamContent(file, content)
        file.Close()
        return self.read("work/streamed.txt").decode()


class Items(ProviderCase):
    def test_have_the_provider_of_their_name(self):
        self.assertEqual(self.items.Name, "CM.Quillbox")
        self.assertIsInstance(self.items.DocumentDataProvider, quillbox.QbDataProvider)
        self.assertEqual(self.items.DocumentDataProvider.Document, self.document)

    def test_are_the_project_and_its_topics(self):
        add_topic(self.manual, "Two")
        add_topic(self.manual, "Draft").IncludeInHelpFile = False
        add_topic(self.manual, "One")
        self.assertEqual(list(self.items.GetItems(definition("qbproject"), None, "")), [self.manual])
        self.assertEqual(list(self.items.GetItems(definition("TopicSet"), None, "")), [self.manual])
        self.assertEqual(self.names("topic"), ["Two", "One"])
        self.assertEqual(self.names("topic", self.manual), ["Two", "One"])

    def test_are_none_of_no_kind_and_of_an_unknown_one(self):
        for nothing in (None, definition("nonsense")):
            found = self.items.GetItems(nothing, self.manual, "")
            self.assertEqual(found.Count, 0)

    def test_are_none_of_a_kind_that_is_switched_off(self):
        add_topic(self.manual, "One")
        off = definition("topic")
        off.ProvideIncludeFlag = True
        off.IncludeFlag = False
        self.assertEqual(self.items.GetItems(off, None, "").Count, 0)
        self.assertEqual(self.items.GetItems(off, None, "access=public,includeall=false").Count, 1)

    def test_of_the_glossary_go_by_their_letters(self):
        self.assertEqual(len(self.names("glossaryletter", filter="type=all")), 26)
        for term in ("  alpha", "9 lives", "Anchor", "beta"):
            item = self.manual.NewGlossaryItem(term, "x")
            self.manual.GlossaryItems.Add(item, item.Key)
        letters = list(self.items.GetItems(definition("glossaryletter"), None, ""))
        self.assertEqual([(one.Name, one.Value) for one in letters], [("9", "1"), ("A", "2"), ("B", "1")])
        self.assertEqual(self.names("glossaryitem", letters[1], of="Term"), ["  alpha", "Anchor"])
        self.assertEqual(len(self.names("glossaryletter", filter="TYPE=All")), 27)

    def test_of_see_also_links_go_by_category_in_its_first_spelling(self):
        topic = add_topic(self.manual, "One")
        for category in ("Tools", "tools", ""):
            link = quillbox.RelatedTopic()
            link.ParentTopic = topic
            link.Category = category
            topic.RelatedTopics.Add(link)
        self.assertEqual(self.names("linkcategory", topic), ["Tools", ""])
        self.assertEqual(self.names("linkcategory", topic, "type=notblank"), ["Tools"])
        self.assertEqual(self.names("linkcategory", topic, "type=blank"), [""])
        tools = self.items.GetItems(definition("linkcategory"), topic, "")[1]
        self.assertEqual(self.items.GetItems(definition("link"), tools, "").Count, 2)
        self.assertEqual(self.names("linkcategory", self.manual), [])

    def test_of_a_booklet_are_there_while_it_is_being_built(self):
        manifest = self.manual.NewManifest("Book")
        self.manual.Manifests.Add(manifest, manifest.Key)
        entry = manifest.NewManifestEntry(None, "Part")
        manifest.Entries.Add(entry, entry.Key)
        self.assertEqual(self.names("manifest"), [])
        self.assertEqual(self.names("manifestentry", manifest, of="Title"), ["Part"])
        self.assertEqual(self.names("manifestentry", entry), [])
        self.assertEqual(self.names("manifestentry"), [])

    def test_are_found_by_qualified_name(self):
        topic = add_topic(self.manual, "One")
        self.assertEqual(self.items.GetObjectFromQualifiedName(self.path("work", "manual.qbp")), self.manual)
        self.assertEqual(self.items.GetObjectFromQualifiedName(topic.Key), topic)
        self.assertIsNone(self.items.GetObjectFromQualifiedName("One"))


class StartPage(ProviderCase):
    def test_is_the_last_topic_that_is_marked(self):
        for name in ("One", "Two", "Three"):
            add_topic(self.manual, name).IsDefault = name != "One"
        self.items.BeforeProcessRootItem(self.manual)
        self.assertEqual(self.document.DefaultTopic, "Three.html")
        self.assertEqual((self.document.ProgressVerb, self.document.ProgressCaption), ("writing", "Generating content"))

    def test_is_the_first_topic_where_none_is_marked_even_one_that_is_left_out(self):
        add_topic(self.manual, "Draft").IncludeInHelpFile = False
        add_topic(self.manual, "One")
        self.items.BeforeProcessRootItem(self.manual)
        self.assertEqual(self.document.DefaultTopic, "Draft.html")


class Streams(ProviderCase):
    def test_list_each_file_once_and_no_compiler_input(self):
        for name in ("One.html", "Two.html", "One.html", "Manual.hhp", "Manual.HXT"):
            self.items.ContentCreated(None, None, self.path("work", name))
        self.assertEqual(self.streamed("files"), "One.html\r\nTwo.html\r\n")
        self.document.CompileType = "2"
        self.assertEqual(self.streamed("Files"), '<File Url = "One.html"/>\r\n<File Url = "Two.html"/>\r\n')

    def test_give_context_ids_for_html_help_alone(self):
        topic = add_topic(self.manual, "One")
        topic.Key = "T1"
        topic.HelpContextIDs = "10,20"
        add_topic(self.manual, "Two").HelpContextIDs = "   "
        self.assertEqual(self.streamed("map"), "#define IDH_T1_10 10\r\n#define IDH_T1_20 20\r\n")
        self.assertEqual(self.streamed("alias"), "IDH_T1_10 = One.html\r\nIDH_T1_20 = One.html\r\n")
        self.document.CompileType = "2"
        self.assertEqual(self.streamed("map") + self.streamed("alias"), "")

    def test_give_the_index_sorted_with_each_title_once(self):
        topic = add_topic(self.manual, "One", "Start")
        for keyword in ("Zoom", "start", "Adding"):
            topic.AddKeyword(keyword)
        self.assertEqual(self.streamed("index"),
                         "Adding -> One.html\r\nstart -> One.html\r\nZoom -> One.html\r\n")

    def test_name_the_input_of_the_compiler(self):
        for compile_type, extension in (("1", ".hhp"), ("2", ".hxc"), ("0", ".hhp")):
            self.document.CompileType = compile_type
            self.items.AfterProcessItem(None, None)
            self.assertEqual(self.document.CompilerInputFile, self.path("work", "Help Title" + extension))


class Tags(ProviderCase):
    def test_leave_other_text_alone(self):
        for text in ("", "plain", "50% off", "one %% alone", "%%unknown%%", "%%unknown:name=x%%"):
            self.assertEqual(self.expanded(text, self.manual), text)

    def test_read_the_current_item(self):
        topic = add_topic(self.manual, "One", "First")
        topic.TopicSectionData["BodyText"] = "<p>Body</p>"
        self.assertEqual(self.expanded("%%itemtitle%%|%%itemqualifiedname%%|%%linktarget%%", topic), "First|One|One.html")
        self.assertEqual(self.expanded("%%topicsection:name=bodytext%%", topic), "<p>Body</p>")
        self.assertEqual(self.expanded("%%projecttitle%%|%%helpfiletitle%%", topic), "Manual|Help Title")
        self.assertEqual(self.data.GetProperty("TITLE"), "First")
        self.assertEqual(self.data.CurrentItem, topic)

    def test_have_attributes_and_formats(self):
        self.assertEqual(self.expanded("%%literal:value=a<crlf>b%%"), "a<br>b")
        self.assertEqual(self.expanded("%%literal:value=x,ValueFormat=@_BOLD%%"), "<b>x</b>")
        self.assertEqual(self.expanded("%%literal:value=,EmptyFormat=none%%"), "none")
        self.assertEqual(self.expanded("%%literal:value=it's,ForScript=true%%"), "it\\'s")
        self.assertEqual(self.expanded("%%literal:value=a,b%%"), "a")
        self.assertEqual(self.data.ProvideData(tag("literal", value="50/%"), None), "50%")

    def test_may_depend_on_a_condition(self):
        topic = add_topic(self.manual, "One", "First")
        for condition, value in (("Title is 'First'", "x"), ("Title is empty", ""), ("Title is", "!INVALID CONDITION TYPE!")):
            text = f"%%literal:value=x,condition={condition},EmptyFormat=none%%"
            self.assertEqual(self.expanded(text, topic), value)

    def test_that_miss_an_attribute_fail_with_its_name(self):
        for text, missing in (("%%literal%%", "value"), ("%%scrap%%", "name"), ("%%topicsection%%", "name"),
                              ("%%filtereditemlist:scrap=T%%", "namespace"),
                              ("%%filtereditemlist:namespace=topic%%", "scrap")):
            with self.subTest(text), self.assertFails(f"'{missing}'", text):
                self.expanded(text, self.manual)

    def test_count(self):
        text = "%%incrementingvalue:Name=x,InitialValue=5%% "
        self.assertEqual(self.expanded(text * 3), "5 6 7 ")
        self.assertEqual(self.manual.IncrementingValues.Item("x"), 7)
        copy = self.data.Clone()
        self.assertEqual(copy.ParseForProperties("%%incrementingvalue:Name=x%%"), "1")
        self.assertEqual(self.expanded("%%incrementingvalue:InitialValue=5%%"), "")

    def test_expand_variables_in_quotes_and_swallow_what_fails_in_them(self):
        for name, value in (("a", '<a title="%%literal:value=x%%">'), ("b", "%%literal%%"), ("c", "(%%variable:name=c%%)")):
            self.document.VariableValues.Add(variable(name, value), name)
        self.assertEqual(self.expanded("%%variable:name=A%%"), '<a title="x">')
        self.assertEqual(self.expanded("%%variable:name=b%%%%variable:name=gone%%%%variable%%"), "")
        self.assertEqual(self.expanded("%%variable:name=c%%"), "()")

    def test_list_items(self):
        self.assertEqual(self.expanded("%%filtereditemlist:namespace=topic,scrap=T%%", self.manual), "")
        for name in ("One", "Two"):
            add_topic(self.manual, name)
        self.assertEqual(self.expanded("%%filtereditemlist:namespace=Topic,scrap=_T%%", self.manual),
                         "<ul>\r\n<li>One</li>,<li>Two</li></ul>%%itemtitle%%")
        self.assertEqual(self.expanded("%%filtereditemlist:namespace=None,scrap=T%%", self.manual),
                         "!ERROR: Namespace not found 'none'!")

    def test_write_the_contents_into_the_page(self):
        add_node(self.manual.QbNodes, topic=add_topic(self.manual, "One", "First & last"))
        file = platform.FileSystemObject()
        file.Path = self.path("work", "page.html")
        file.Open(4, 2, 1, 32767)
        self.assertEqual(self.data.ProvideData(tag("tableofcontents", NodeScrap="_NODE"), file), "")
        file.Close()
        self.assertEqual(self.read("work/page.html"), b"First &amp; last\n")
        self.assertEqual(self.document.TOCDefs.Item("Plain").Nodes.Count, 1)
        self.assertEqual(self.data.ProvideData(tag("filename"), file), "page")

    def test_resolve_terms_and_anchors_of_a_body(self):
        item = self.manual.NewGlossaryItem("widget", "a thing")
        self.manual.GlossaryItems.Add(item, item.Key)
        topic = add_topic(self.manual, "One", body="$$Widget$$ $$nothing$$ %Ns~Class% 50% and 60%")
        body = "%%topicsection:name=BodyText%%"
        self.assertEqual(self.expanded(body, topic), "<dfn>widget</dfn> nothing %Ns~Class% 50% and 60%")
        self.manual.CMPFileName = "Code.cmp"
        self.assertEqual(self.expanded(body, topic),
                         '<dfn>widget</dfn> nothing <a href="Ns~Class.html">Class</a> 50% and 60%')


class Provider(ProviderCase):
    def test_clones_what_it_holds(self):
        topic = add_topic(self.manual, "One")
        self.data.SetCurrentItem(definition("topic"), topic, "Topic", self.manual)
        copy = self.data.Clone()
        self.assertNotEqual(copy, self.data)
        self.assertEqual((copy.CurrentItem, copy.CurrentParentItem, copy.CurrentItemType, copy.CurrentRootItem, copy.Document),
                         (topic, self.manual, "Topic", self.manual, self.document))
        self.assertEqual(copy.NamespaceDef.Name, "cm.quillbox:topic")

    def test_without_a_document_fails_where_it_needs_one(self):
        lone = quillbox.QbDataProvider()
        self.assertIsNone(lone.Document)
        self.assertEqual(lone.ProvideData(tag("taggedcomment"), None), "")
        with self.assertFails("no document"):
            lone.ParseForProperties("%%date%%")

    def test_of_items_makes_a_document_where_it_gets_none(self):
        own = quillbox.QbNamespaceProvider()
        own.Initialise(None)
        made = own.GetItems(definition("qbproject"), None, "")
        self.assertEqual(made.Count, 1)
        self.assertNotEqual(made[1], self.manual)
        self.assertIsNone(own.DocumentDataProvider.Document)


if __name__ == "__main__":
    unittest.main()
