#include "engine/PageText.h"

#include <algorithm>
#include <array>

#include "base/Text.h"
#include "engine/Html.h"

namespace quillbox {

namespace {

constexpr std::array<std::string_view, 8> kLeftOut = {"script",   "style", "nav",  "footer",
                                                      "noscript", "svg",   "form", "template"};
// Words go on across their tags.
constexpr std::array<std::string_view, 29> kInline = {
    "a",     "abbr", "acronym", "b",      "bdi", "bdo", "big",  "cite", "code", "del",
    "dfn",   "em",   "font",    "i",      "ins", "kbd", "mark", "q",    "s",    "samp",
    "small", "span", "strike",  "strong", "sub", "sup", "tt",   "u",    "var"};

template <std::size_t N>
bool isOneOf(const std::array<std::string_view, N>& names, std::string_view name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

bool isWhite(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\f'; }

// A tag of a page. Comments and the like are tags without a name.
struct Tag {
    std::string name;
    bool ends = false;
    std::size_t begin = 0, end = 0;
};

bool isHeading(const Tag& tag) {
    return tag.name == "dt" ||
           (tag.name.size() == 2 && tag.name[0] == 'h' && tag.name[1] >= '1' && tag.name[1] <= '6');
}

// The first tag at or after a place; none where `begin` is past the end.
Tag nextTag(std::string_view html, std::size_t from) {
    for (auto at = html.find('<', from); at != std::string_view::npos; at = html.find('<', at + 1)) {
        Tag tag;
        tag.begin = at;
        if (html.substr(at, 4) == "<!--") {
            const auto close = html.find("-->", at + 4);
            tag.end = close == std::string_view::npos ? html.size() : close + 3;
            return tag;
        }
        auto letter = at + 1;
        tag.ends = letter < html.size() && html[letter] == '/';
        if (tag.ends) ++letter;
        for (; letter < html.size() && !isWhite(html[letter]) && html[letter] != '>' && html[letter] != '/';
             ++letter) {
            tag.name += static_cast<char>(html[letter] >= 'A' && html[letter] <= 'Z' ? html[letter] | 0x20
                                                                                     : html[letter]);
        }
        if (tag.name.empty() || !((tag.name[0] >= 'a' && tag.name[0] <= 'z') || tag.name[0] == '!')) continue;
        const auto close = endOfTag(html, letter);
        tag.end = close == std::string_view::npos ? html.size() : close + 1;
        return tag;
    }
    Tag none;
    none.begin = none.end = html.size();
    return none;
}

// Where the element that a tag opens ends, its end tag included.
std::size_t endOfElement(std::string_view html, const Tag& opening) {
    int depth = 1;
    for (auto tag = nextTag(html, opening.end); tag.begin < html.size(); tag = nextTag(html, tag.end)) {
        if (tag.name != opening.name) continue;
        depth += tag.ends ? -1 : 1;
        if (depth == 0) return tag.end;
    }
    return html.size();
}

// The value of an attribute in double quotes; empty where there is none.
std::string_view attribute(std::string_view tag, std::string_view name) {
    const auto wanted = " " + std::string(name) + "=\"";
    const auto found = tag.find(wanted);
    if (found == std::string_view::npos) return {};
    const auto value = tag.substr(found + wanted.size());
    return value.substr(0, value.find('"'));
}

std::string withSingleBlanks(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (const char c : text) {
        if (!isWhite(c)) {
            result += c;
        } else if (!result.empty() && result.back() != ' ') {
            result += ' ';
        }
    }
    if (result.ends_with(' ')) result.pop_back();
    return result;
}

}  // namespace

PageText::PageText(std::string_view html) {
    auto begin = html.size();
    for (auto tag = nextTag(html, 0); tag.begin < html.size(); tag = nextTag(html, tag.end)) {
        if (tag.ends || (tag.name != "body" && tag.name != "main")) continue;
        begin = tag.end;
        if (tag.name == "main") break;
    }
    readHead(html.substr(0, html.find("<body")));
    const auto body = html.substr(begin);
    readBody(body.substr(0, std::min(body.rfind("</main>"), body.size())));
}

void PageText::readHead(std::string_view head) {
    for (auto tag = nextTag(head, 0); tag.begin < head.size(); tag = nextTag(head, tag.end)) {
        if (tag.name == "title" && !tag.ends) {
            const auto text = head.substr(tag.end);
            mTitle = withSingleBlanks(withoutReferences(text.substr(0, text.find('<'))));
        } else if (tag.name == "meta") {
            const auto whole = head.substr(tag.begin, tag.end - tag.begin);
            if (attribute(whole, "name") == "keywords")
                addRun(TextPlace::Keywords, withoutReferences(attribute(whole, "content")));
        }
    }
}

void PageText::readBody(std::string_view body) {
    auto place = TextPlace::Body;
    bool titled = false;
    std::string text;
    const auto flush = [&](TextPlace next) {
        auto run = withSingleBlanks(withoutReferences(text));
        text.clear();
        if (place == TextPlace::Title && !run.empty()) mTitle = run;
        addRun(place, std::move(run));
        place = next;
    };
    for (std::size_t at = 0; at < body.size();) {
        const auto tag = nextTag(body, at);
        text += body.substr(at, tag.begin - at);
        at = tag.end;
        if (!tag.ends && isOneOf(kLeftOut, tag.name)) {
            at = endOfElement(body, tag);
            text += ' ';
        } else if (isHeading(tag)) {
            const bool isTitle = tag.name == "h1" && !titled && !tag.ends;
            titled = titled || isTitle;
            flush(tag.ends ? TextPlace::Body : isTitle ? TextPlace::Title : TextPlace::Heading);
        } else if (tag.name == "dd" && place == TextPlace::Heading) {
            flush(TextPlace::Body);
        } else if (!tag.name.empty() && !isOneOf(kInline, tag.name)) {
            text += ' ';
        }
    }
    flush(TextPlace::Body);
}

void PageText::addRun(TextPlace place, std::string text) {
    if (!text.empty()) mRuns.push_back({place, std::move(text)});
}

std::string PageText::Opening(std::size_t characters) const {
    std::string opening;
    for (const auto& run : mRuns) {
        if (run.place == TextPlace::Title || run.place == TextPlace::Keywords) continue;
        if (!opening.empty()) opening += ' ';
        opening += run.text;
        if (opening.size() > 4 * characters) break;
    }
    std::size_t at = 0, count = 0, blank = 0;
    for (; at < opening.size() && count <= characters; ++at) {
        if ((static_cast<unsigned char>(opening[at]) & 0xC0) != 0x80) ++count;
        if (opening[at] == ' ') blank = at;
    }
    if (at == opening.size()) return opening;
    // At a blank near the end, else, as in writing without blanks, at any character.
    if (blank > at / 2) at = blank;
    while (at > 0 && (static_cast<unsigned char>(opening[at]) & 0xC0) == 0x80) --at;
    return opening.substr(0, at) + "\u2026";
}

}  // namespace quillbox
