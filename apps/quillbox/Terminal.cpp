#include "Terminal.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>

namespace quillbox::cli {

namespace {

// The bytes of a control character at the beginning: one of ASCII, or one of the 32 behind it.
std::size_t controlAt(std::string_view text) {
    const auto first = static_cast<unsigned char>(text[0]);
    if (first < 0x20 || first == 0x7F) return 1;
    const bool second = first == 0xC2 && text.size() > 1 && static_cast<unsigned char>(text[1]) < 0xA0;
    return second ? 2 : 0;
}

std::string cut(const std::string& text, std::size_t most) {
    if (characters(text) <= most) return text;
    std::size_t end = 0;
    for (std::size_t count = 0; count < most; ++count) {
        do ++end;
        while ((static_cast<unsigned char>(text[end]) & 0xC0) == 0x80);
    }
    return text.substr(0, end) + "…";
}

}  // namespace

void clearProgress() {
    if (isatty(STDERR_FILENO)) std::fprintf(stderr, "\r\033[K");
}

void showProgress(const std::string& caption, int done, int total) {
    if (done == total) return clearProgress();
    if (!isatty(STDERR_FILENO)) return;
    constexpr int kWidth = 30;
    constexpr std::size_t kLongestCaption = 30;
    const int filled = total > 0 ? kWidth * done / total : 0;
    std::fprintf(stderr, "\r[%.*s%*s] %d of %d %s\033[K", filled, "##############################",
                 kWidth - filled, "", done, total, cut(printable(caption), kLongestCaption).c_str());
}

std::string printable(std::string_view text) {
    std::string line;
    while (!text.empty()) {
        const auto control = controlAt(text);
        if (control > 0) {
            char escape[4];
            std::snprintf(escape, sizeof escape, "%%%02X", static_cast<unsigned char>(text[control - 1]));
            line += escape;
        } else {
            line += text.front();
        }
        text.remove_prefix(std::max<std::size_t>(control, 1));
    }
    return line;
}

std::size_t characters(std::string_view text) {
    return static_cast<std::size_t>(std::count_if(
        text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

}  // namespace quillbox::cli
