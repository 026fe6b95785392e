"""Reads a built site the way a visitor's browser would: pages, what they refer to, and where they lead."""

import html.parser
import re
import urllib.parse

REFERRING = {"href", "src", "action", "data", "poster"}


class Page(html.parser.HTMLParser):
    def __init__(self, text):
        super().__init__(convert_charrefs=True)
        self.references = []
        self.anchors = {"top", ""}
        self.duplicates = []
        self.language = self.direction = None
        self.feed(text)
        self.close()

    def handle_starttag(self, tag, attributes):
        values = dict(attributes)
        if tag == "html":
            self.language, self.direction = values.get("lang"), values.get("dir")
        if "id" in values:
            if values["id"] in self.anchors:
                self.duplicates.append(values["id"])
            self.anchors.add(values["id"])
        if tag == "a" and "name" in values:
            self.anchors.add(values["name"])
        for name in REFERRING & values.keys():
            self.references.append(values[name])
        if tag == "meta" and values.get("http-equiv", "").lower() == "refresh":
            self.references.append(re.split(r"url=", values["content"], flags=re.I)[1])

    handle_startendtag = handle_starttag


class Site:
    """All pages of a folder, and what is wrong with their references."""

    def __init__(self, folder):
        self.folder = folder
        self.pages = {str(file.relative_to(folder)): Page(file.read_text("utf-8")) for file in folder.rglob("*.html")}

    def target(self, page, reference):
        """The file and the fragment that a reference of a page leads to; none for another site."""
        parts = urllib.parse.urlsplit(reference)
        if parts.scheme or parts.netloc:
            return None
        whole = urllib.parse.urljoin("/" + urllib.parse.quote(page), urllib.parse.quote(parts.path, safe="/%"))
        return urllib.parse.unquote(whole).lstrip("/"), urllib.parse.unquote(parts.fragment)

    def dead_references(self):
        dead = []
        for name, page in self.pages.items():
            for reference in page.references:
                found = self.target(name, reference)
                if not found:
                    continue
                file, fragment = found
                exact = (self.folder / file).is_file()
                if not exact or (file in self.pages and fragment not in self.pages[file].anchors):
                    dead.append(f"{name}: {reference}")
        return dead

    def reached_from(self, start):
        reached, todo = {start}, [start]
        while todo:
            name = todo.pop()
            for reference in self.pages[name].references:
                found = self.target(name, reference)
                if found and found[0] in self.pages and found[0] not in reached:
                    reached.add(found[0])
                    todo.append(found[0])
        return reached
