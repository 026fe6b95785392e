#include "engine/Html.h"

namespace quillbox {

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
            case '\r':
                break;
            case '\n':
                html += ' ';
                break;
            default:
                html += c;
        }
    }
    return html;
}

bool isRemote(std::string_view link) {
    if (link.starts_with('/') || link.starts_with('\\')) return true;
    const auto end = link.find_first_of(":/?#");
    return end != std::string_view::npos && link[end] == ':';
}

std::string_view withoutFragment(std::string_view link) { return link.substr(0, link.find_first_of("?#")); }

}  // namespace quillbox
