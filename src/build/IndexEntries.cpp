// The index of a help file: keywords and titles, sorted, each with the page that it leads to.

#include "base/Text.h"
#include "build/CompilerInputs.h"
#include "build/IndexItems.h"
#include "build/ItemFamily.h"
#include "build/QbDataProvider.h"
#include "project/QbProject.h"
#include "topics/Keyword.h"
#include "topics/Topic.h"

namespace quillbox {

namespace {

constexpr const char* kSitemapScrap = "_INDEX_ENTRY";

Ref<Keyword> newKeyword(const std::string& name, const std::string& page) {
    auto keyword = make<Keyword>();
    keyword->Name = name;
    keyword->QualifiedName = page;
    return keyword;
}

std::string sitemapLevel(const std::string& level, const std::string& inner) {
    return R"(<LI><OBJECT type="text/sitemap"><param name="Name" value=")" + level +
           R"("><param name="See Also" value=")" + level + R"("></OBJECT><UL><UL>)" + inner + "</UL></UL>";
}

std::string indentedLevel(const std::string& level, const std::string& inner) {
    return level + "<blockquote>" + inner + "</blockquote>";
}

}  // namespace

std::string indexEntries(const ContentStream& stream, const std::string& scrapName) {
    const bool help2 = isHelp2(stream.document);
    const auto scrap = !scrapName.empty() ? scrapName : help2 ? "_INDEX_ENTRY_V2" : kSitemapScrap;
    const auto wrap = scrap == kSitemapScrap ? sitemapLevel : indentedLevel;
    const auto pageTemplate = stream.document.Template();
    if (!pageTemplate) throw AutomationError("The index needs a template that is being generated");
    const auto def = pageTemplate->NamespaceDefs()->ByRootName("QbProject")->Item(1);
    const auto data = stream.data.Copy();
    const auto entries = sortedIndexEntries(stream.project);
    if (entries.empty()) return {};
    const auto pieces = splitTags(stream.document.Scrap(scrap));
    const auto place = "the scrap '" + scrap + "'";
    std::string lines;
    for (const auto& [entry, topic] : entries) {
        const auto levels = help2 ? std::vector{std::string(trimBlanks(entry))} : indexLevels(entry);
        data->SetCurrentItem(def, newKeyword(levels.back(), topic->Name()), "Keyword", nullptr);
        const auto begin = lines.size();
        data->ExpandPieces(pieces, nullptr, place, lines);
        if (levels.size() > 1) {
            auto text = lines.substr(begin);
            for (auto level = levels.rbegin() + 1; level != levels.rend(); ++level) text = wrap(*level, text);
            lines.replace(begin, std::string::npos, text);
        }
        lines += "\r\n";
    }
    return lines;
}

}  // namespace quillbox
