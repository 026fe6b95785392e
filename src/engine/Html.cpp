#include "engine/Html.h"

#include <algorithm>

#include "engine/CharSet.h"

namespace quillbox {

namespace {

bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
int hexadecimal(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    const char letter = static_cast<char>(c | 0x20);
    return letter >= 'a' && letter <= 'f' ? letter - 'a' + 10 : -1;
}

bool isPlain(std::string_view text) {
    static constexpr CharSet kSpecial("&<>\"\r\n");
    return kSpecial.Find(text) == std::string_view::npos;
}

std::string escapedText(std::string_view text) {
    std::string html;
    html.reserve(text.size() + 16);
    for (const char c : text) {
        switch (c) {
            case '&':
                html += "&amp;";
                break;
            case '<':
                html += "&lt;";
                break;
            case '>':
                html += "&gt;";
                break;
            case '"':
                html += "&quot;";
                break;
            case '\n':
                html += ' ';
                break;
            default:
                // What is left below the blank is no text; XML cannot hold it at all.
                if (static_cast<unsigned char>(c) >= ' ' || c == '\t') html += c;
        }
    }
    return html;
}

}  // namespace

std::string htmlText(std::string_view text) { return isPlain(text) ? std::string(text) : escapedText(text); }

std::string htmlText(std::string&& text) { return isPlain(text) ? std::move(text) : escapedText(text); }

std::string plainText(std::string_view html) {
    std::string text;
    const auto addBlank = [&] {
        if (!text.empty() && text.back() != ' ') text += ' ';
    };
    static constexpr CharSet kSpecial(" \t\r\n<>\"");
    for (std::size_t at = 0; at < html.size(); ++at) {
        const auto plain = std::min(kSpecial.Find(html, at), html.size());
        text.append(html, at, plain - at);
        at = plain;
        if (at == html.size()) break;
        const char c = html[at];
        const char next = at + 1 < html.size() ? html[at + 1] : ' ';
        const bool isTag = c == '<' && (next == '/' || next == '!' || next == '?' || isLetter(next));
        if (isTag) {
            const bool isComment = html.substr(at, 4) == "<!--";
            const auto end = isComment ? html.find("-->", at) : endOfTag(html, at);
            if (end == std::string_view::npos) break;
            at = end + (isComment ? 2 : 0);
            addBlank();
        } else if (c == ' ' || c == '\t' || c == '\r' || c == '\n') {
            addBlank();
        } else if (c == '<') {
            text += "&lt;";
        } else if (c == '>') {
            text += "&gt;";
        } else {
            text += "&quot;";
        }
    }
    if (text.ends_with(' ')) text.pop_back();
    return text;
}

std::string scriptText(std::string_view text) {
    static constexpr const char* kDigits = "0123456789abcdef";
    std::string script;
    script.reserve(text.size() + 16);
    for (const char c : text) {
        const auto code = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            script += '\\';
            script += c;
        } else if (code < 0x20 || c == '\'' || c == '<' || c == 0x7F) {
            script += "\\u00";
            script += kDigits[code >> 4];
            script += kDigits[code & 15];
        } else {
            script += c;
        }
    }
    return script;
}

std::string anchorName(std::string_view text) {
    static constexpr const char* kDigits = "0123456789abcdef";
    std::string name;
    for (const char c : text) {
        const auto code = static_cast<unsigned char>(c);
        const char letter = static_cast<char>(c | 0x20);
        if (c == ' ') {
            name += '-';
        } else if (code >= 0x80 || c == '_' || (c >= '0' && c <= '9') || (letter >= 'a' && letter <= 'z')) {
            name += c;
        } else {
            name += '.';
            name += kDigits[code >> 4];
            name += kDigits[code & 15];
        }
    }
    return name;
}

bool isRemote(std::string_view link) {
    if (link.starts_with('/') || link.starts_with('\\')) return true;
    static constexpr CharSet kEnds(":/?#");
    const auto end = kEnds.Find(link);
    return end != std::string_view::npos && link[end] == ':';
}

std::size_t endOfTag(std::string_view html, std::size_t from) {
    static constexpr CharSet kMarks(">\"'");
    auto at = kMarks.Find(html, from);
    while (at != std::string_view::npos && html[at] != '>') {
        const auto close = html.find(html[at], at + 1);
        at = close == std::string_view::npos ? close : kMarks.Find(html, close + 1);
    }
    return at;
}

std::string nameAsLink(std::string_view name) {
    static constexpr CharSet kSpecial("%#?");
    if (kSpecial.Find(name) == std::string_view::npos) return std::string(name);
    std::string link;
    for (const char c : name) {
        if (c == '%') {
            link += "%25";
        } else if (c == '#') {
            link += "%23";
        } else if (c == '?') {
            link += "%3F";
        } else {
            link += c;
        }
    }
    return link;
}

std::string decodedLink(std::string_view link) {
    std::string text;
    text.reserve(link.size());
    for (std::size_t at = 0; at < link.size(); ++at) {
        const int high = link[at] == '%' && at + 2 < link.size() ? hexadecimal(link[at + 1]) : -1;
        const int low = high < 0 ? -1 : hexadecimal(link[at + 2]);
        if (low < 0) {
            text += link[at];
        } else {
            text += static_cast<char>(high * 16 + low);
            at += 2;
        }
    }
    return text;
}

std::string_view withoutFragment(std::string_view link) {
    static constexpr CharSet kEnds("?#");
    return link.substr(0, kEnds.Find(link));
}

}  // namespace quillbox
