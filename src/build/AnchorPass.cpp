#include "build/AnchorPass.h"

namespace quillbox {

namespace {

std::size_t findAnchorSign(std::string_view text, std::size_t from) {
    for (auto at = text.find('%', from); at != std::string_view::npos; at = text.find('%', at + 1)) {
        if (at == 0 || text[at - 1] != '/') return at;
    }
    return std::string_view::npos;
}

bool isAnchor(std::string_view between) {
    return between.find_first_of("~:") != std::string_view::npos &&
           between.find_first_of("<>\"") == std::string_view::npos;
}

std::string link(std::string_view anchor) {
    const auto colon = anchor.find(':');
    const auto target = colon == std::string_view::npos ? anchor : anchor.substr(colon + 1);
    if (target.empty()) return {};
    auto caption = colon == std::string_view::npos ? std::string_view() : anchor.substr(0, colon);
    // Without a "~" this is the whole target.
    if (caption.empty()) caption = target.substr(target.rfind('~') + 1);
    return "<a href=\"" + std::string(target) + ".html\">" + std::string(caption) + "</a>";
}

}  // namespace

std::string resolveAnchors(std::string_view text) {
    std::string out;
    std::size_t start = 0;
    for (;;) {
        const auto open = findAnchorSign(text, start);
        if (open == std::string_view::npos) break;
        const auto close = findAnchorSign(text, open + 1);
        if (close == std::string_view::npos) break;
        const auto between = text.substr(open + 1, close - open - 1);
        if (isAnchor(between)) {
            out += text.substr(start, open - start);
            out += link(between);
            start = close + 1;
        } else {
            // The second sign may begin an anchor itself.
            out += text.substr(start, open + 1 - start);
            start = open + 1;
        }
    }
    out += text.substr(start);
    return out;
}

}  // namespace quillbox
