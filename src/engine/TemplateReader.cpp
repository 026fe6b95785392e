#include "engine/TemplateReader.h"

#include <algorithm>
#include <span>

#include "base/AutomationError.h"
#include "base/Text.h"
#include "engine/Disk.h"

namespace quillbox {

namespace {

class Reader {
  public:
    Reader(const std::string& folder, XMLParser& xml)
        : mFolder(folder), mFile(folder + "template.xml"), mXml(xml) {}

    TemplateDescription Run() {
        auto document = mXml.NewDocument();
        at(mFile, [&] { document->LoadFile(mFile); });
        const auto root = document->RootElement();
        if (root->Name() != "PageTemplate")
            fail(*root, "expected the root element PageTemplate, found " + root->Name());
        checkAttributes(*root, kTemplateAttributes);
        mResult.name = required(*root, "Name");
        mResult.supports = root->Find("Supports").value_or("");
        mResult.order = number(*root, "Order");
        for (const auto& child : root->Children()) readChild(*child);
        return std::move(mResult);
    }

  private:
    [[noreturn]] void fail(const XMLElement& element, const std::string& problem) const {
        const auto line = element.Line() > 0 ? ", line " + std::to_string(element.Line()) : std::string();
        throw AutomationError(mFile + line + ": " + problem);
    }

    std::string required(const XMLElement& element, const std::string& name) const {
        const auto value = element.Find(name);
        if (!value || trimBlanks(*value).empty()) {
            fail(element, "expected the attribute " + name + " of " + element.Name() + " with a text in it");
        }
        return *value;
    }

    int number(const XMLElement& element, const std::string& name) const {
        const auto value = element.Find(name);
        if (!value) return 0;
        try {
            return integerOf(*value);
        } catch (const AutomationError&) {
            fail(element, "expected a whole number in " + name + ", found '" + *value + "'");
        }
    }

    bool boolean(const XMLElement& element, const std::string& name) const {
        const auto value = element.Find(name).value_or("False");
        if (sameText(value, "True") || sameText(value, "False")) return sameText(value, "True");
        fail(element, "expected True or False in " + name + ", found '" + value + "'");
    }

    void checkAttributes(XMLElement& element, std::span<const std::string_view> known) const {
        for (const auto& attribute : element.Attributes()->Items()) {
            const bool fits = std::any_of(known.begin(), known.end(),
                                          [&](auto name) { return sameText(name, attribute->Name()); });
            if (fits) continue;
            std::string names;
            for (const auto& name : known) names += (names.empty() ? "" : ", ") + std::string(name);
            fail(element, "found the attribute " + attribute->Name() + ", expected of " + element.Name() +
                              ": " + names);
        }
    }

    void readChild(XMLElement& child) {
        if (child.Name() == "Namespace") {
            checkAttributes(child, kNamespaceAttributes);
            mResult.namespaces.push_back(required(child, "Name"));
        } else if (child.Name() == "Page") {
            readPage(child);
        } else if (child.Name() == "SearchIndex") {
            checkAttributes(child, kSearchAttributes);
            if (mResult.search) fail(child, "expected one SearchIndex, found another");
            mResult.search = {required(child, "Folder"), required(child, "Function")};
        } else {
            fail(child, "expected Namespace, Page or SearchIndex, found " + child.Name());
        }
    }

    void readPage(XMLElement& element) {
        checkAttributes(element, kPageAttributes);
        auto page = make<PageLayout>();
        page->Name = fileName(element);
        page->NamespaceItemType = element.Find("ItemType").value_or("");
        page->onlyWith = element.Find("OnlyWith").value_or("");
        page->onlyIfFree = boolean(element, "OnlyIfFree");
        page->isSearched = boolean(element, "Search");
        page->filter = element.Find("Filter").value_or("");
        page->line = element.Line();
        page->compileType = compileType(element);
        page->encoding = encoding(element);
        const auto output = element.Find("Output").value_or("");
        page->output = at(mFile, [&] { return splitTags(output, true); });
        if (page->compileType != 0 && page->IsBound()) {
            fail(element,
                 "expected no ItemType on a page with a CompileType: a compiler input is written once");
        }
        if (page->onlyIfFree && page->IsBound()) {
            fail(element, "expected no ItemType on a page with OnlyIfFree: it gives way to pages of items");
        }
        mResult.pages.push_back(page);
    }

    std::string fileName(const XMLElement& element) const {
        const auto name = required(element, "File");
        if (name.find_first_of("/\\") != std::string::npos || name == "..") {
            fail(element,
                 "expected in File the name of a file in the template's folder, found '" + name + "'");
        }
        if (!disk::isFile(mFolder + name))
            fail(element, "expected the page file '" + name + "' in " + mFolder);
        const bool twice = std::any_of(mResult.pages.begin(), mResult.pages.end(),
                                       [&](const auto& page) { return sameText(page->Name, name); });
        if (twice) fail(element, "expected each page file once, found '" + name + "' again");
        return name;
    }

    int compileType(const XMLElement& element) const {
        const auto value = element.Find("CompileType").value_or("");
        if (value.empty()) return 0;
        if (value != "1" && value != "2") {
            fail(element, "expected 1 (HTML Help) or 2 (Help 2.0) in CompileType, found '" + value + "'");
        }
        return value == "1" ? 1 : 2;
    }

    PageEncoding encoding(const XMLElement& element) const {
        const auto value = element.Find("Encoding").value_or("utf-8");
        if (sameText(value, "utf-8")) return PageEncoding::Utf8;
        if (sameText(value, "ansi")) return PageEncoding::Ansi;
        if (sameText(value, "ascii")) return PageEncoding::Ascii;
        if (sameText(value, "ascii-but-title")) return PageEncoding::AsciiButTitle;
        fail(element, "expected utf-8, ansi, ascii or ascii-but-title in Encoding, found '" + value + "'");
    }

    std::string mFolder, mFile;
    XMLParser& mXml;
    TemplateDescription mResult;
};

}  // namespace

TemplateDescription readTemplate(const std::string& folder, XMLParser& xml) {
    return Reader(folder, xml).Run();
}

}  // namespace quillbox
