// Character references of HTML text.

#include <unicode/utf8.h>

#include <array>
#include <cstdlib>
#include <unordered_map>

#include "engine/PageText.h"

namespace quillbox {

namespace {

// From U+00A0 on.
constexpr std::array<std::string_view, 96> kLatin = {
    "nbsp",   "iexcl",  "cent",   "pound",  "curren", "yen",    "brvbar", "sect",   "uml",    "copy",
    "ordf",   "laquo",  "not",    "shy",    "reg",    "macr",   "deg",    "plusmn", "sup2",   "sup3",
    "acute",  "micro",  "para",   "middot", "cedil",  "sup1",   "ordm",   "raquo",  "frac14", "frac12",
    "frac34", "iquest", "Agrave", "Aacute", "Acirc",  "Atilde", "Auml",   "Aring",  "AElig",  "Ccedil",
    "Egrave", "Eacute", "Ecirc",  "Euml",   "Igrave", "Iacute", "Icirc",  "Iuml",   "ETH",    "Ntilde",
    "Ograve", "Oacute", "Ocirc",  "Otilde", "Ouml",   "times",  "Oslash", "Ugrave", "Uacute", "Ucirc",
    "Uuml",   "Yacute", "THORN",  "szlig",  "agrave", "aacute", "acirc",  "atilde", "auml",   "aring",
    "aelig",  "ccedil", "egrave", "eacute", "ecirc",  "euml",   "igrave", "iacute", "icirc",  "iuml",
    "eth",    "ntilde", "ograve", "oacute", "ocirc",  "otilde", "ouml",   "divide", "oslash", "ugrave",
    "uacute", "ucirc",  "uuml",   "yacute", "thorn",  "yuml"};

// From U+0391 on, with a gap where capitals have no final sigma; then the small ones from U+03B1 on.
constexpr std::array<std::string_view, 57> kGreek = {
    "Alpha",   "Beta",  "Gamma",   "Delta", "Epsilon", "Zeta",  "Eta",     "Theta", "Iota",  "Kappa",
    "Lambda",  "Mu",    "Nu",      "Xi",    "Omicron", "Pi",    "Rho",     "",      "Sigma", "Tau",
    "Upsilon", "Phi",   "Chi",     "Psi",   "Omega",   "",      "",        "",      "",      "",
    "",        "",      "alpha",   "beta",  "gamma",   "delta", "epsilon", "zeta",  "eta",   "theta",
    "iota",    "kappa", "lambda",  "mu",    "nu",      "xi",    "omicron", "pi",    "rho",   "sigmaf",
    "sigma",   "tau",   "upsilon", "phi",   "chi",     "psi",   "omega"};

struct Named {
    std::string_view name;
    char32_t character;
};
constexpr std::array<Named, 28> kOthers = {{
    {"amp", '&'},      {"lt", '<'},       {"gt", '>'},        {"quot", '"'},     {"apos", '\''},
    {"OElig", 0x152},  {"oelig", 0x153},  {"Scaron", 0x160},  {"scaron", 0x161}, {"Yuml", 0x178},
    {"ensp", 0x2002},  {"emsp", 0x2003},  {"thinsp", 0x2009}, {"zwnj", 0x200C},  {"zwj", 0x200D},
    {"ndash", 0x2013}, {"mdash", 0x2014}, {"lsquo", 0x2018},  {"rsquo", 0x2019}, {"sbquo", 0x201A},
    {"ldquo", 0x201C}, {"rdquo", 0x201D}, {"bdquo", 0x201E},  {"bull", 0x2022},  {"hellip", 0x2026},
    {"euro", 0x20AC},  {"trade", 0x2122}, {"rarr", 0x2192},
}};

const std::unordered_map<std::string_view, char32_t>& references() {
    static const auto table = [] {
        std::unordered_map<std::string_view, char32_t> all;
        for (const auto& [name, character] : kOthers) all.emplace(name, character);
        for (std::size_t at = 0; at < kLatin.size(); ++at)
            all.emplace(kLatin[at], char32_t{0xA0} + static_cast<char32_t>(at));
        for (std::size_t at = 0; at < kGreek.size(); ++at)
            all.emplace(kGreek[at], char32_t{0x391} + static_cast<char32_t>(at));
        all.erase("");
        return all;
    }();
    return table;
}

// 0 for what is no reference. `name` stands between "&" and ";".
char32_t characterOf(std::string_view name) {
    if (!name.starts_with('#')) {
        const auto found = references().find(name);
        return found == references().end() ? 0 : found->second;
    }
    const bool hexadecimal = name.size() > 1 && (name[1] | 0x20) == 'x';
    const std::string digits(name.substr(hexadecimal ? 2 : 1));
    char* end = nullptr;
    const auto code = std::strtoul(digits.c_str(), &end, hexadecimal ? 16 : 10);
    const bool isCharacter =
        end && *end == '\0' && !digits.empty() && code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF);
    return isCharacter ? static_cast<char32_t>(code) : 0;
}

}  // namespace

std::string withoutReferences(std::string_view html) {
    static constexpr std::size_t kLongest = 10;
    std::string text;
    text.reserve(html.size());
    for (std::size_t at = 0; at < html.size(); ++at) {
        const auto end = html[at] == '&' ? html.substr(at, kLongest).find(';') : std::string_view::npos;
        const char32_t character =
            end == std::string_view::npos ? 0 : characterOf(html.substr(at + 1, end - 1));
        if (character == 0) {
            text += html[at];
            continue;
        }
        // A reader sees a blank in any case.
        if (character == 0xA0) {
            text += ' ';
        } else {
            std::array<char, 4> bytes{};
            std::int32_t size = 0;
            U8_APPEND_UNSAFE(bytes.data(), size, character);
            text.append(bytes.data(), static_cast<std::size_t>(size));
        }
        at += end;
    }
    return text;
}

}  // namespace quillbox
