#include "engine/Html.h"

namespace quillbox {

namespace {

bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

}  // namespace

std::string htmlText(std::string_view text) {
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

std::string plainText(std::string_view html) {
    std::string text;
    const auto addBlank = [&] {
        if (!text.empty() && text.back() != ' ') text += ' ';
    };
    for (std::size_t at = 0; at < html.size(); ++at) {
        const char c = html[at];
        const char next = at + 1 < html.size() ? html[at + 1] : ' ';
        const bool isTag = c == '<' && (next == '/' || next == '!' || next == '?' || isLetter(next));
        if (isTag) {
            const bool isComment = html.substr(at, 4) == "<!--";
            const auto end = html.find(isComment ? "-->" : ">", at);
            if (end == std::string_view::npos) break;
            at = end + (isComment ? 2 : 0);
            addBlank();
        } else if (c == ' ' || c == '\t' || c == '\r' || c == '\n') {
            addBlank();
        } else if (c == '<') {
            text += "&lt;";
        } else if (c == '>') {
            text += "&gt;";
        } else if (c == '"') {
            text += "&quot;";
        } else {
            text += c;
        }
    }
    if (text.ends_with(' ')) text.pop_back();
    return text;
}

bool isRemote(std::string_view link) {
    if (link.starts_with('/') || link.starts_with('\\')) return true;
    const auto end = link.find_first_of(":/?#");
    return end != std::string_view::npos && link[end] == ':';
}

std::string_view withoutFragment(std::string_view link) { return link.substr(0, link.find_first_of("?#")); }

}  // namespace quillbox
