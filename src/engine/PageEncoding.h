#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace quillbox {

// How a page is written to disk. Pages are UTF-8 while they are made.
enum class PageEncoding {
    Utf8,
    // The language's code page; decimal character references for what it cannot hold.
    Ansi,
    // Decimal character references for all that is not ASCII.
    Ascii,
    // As ASCII, but the text of <title> in the code page: the search list of a help viewer shows its bytes.
    AsciiButTitle,
};

// What compiled help has to know of a language.
struct Language {
    std::string tag;       // "en-US"
    std::string name;      // "English (United States)"
    std::string id;        // "0x0409"
    std::string number;    // "1033"
    std::string codePage;  // "1252"
    std::string charset;   // "windows-1252", as a page names it
    bool isRightToLeft = false;
};

// Of a tag such as "de", "de-DE" or "pt_BR.UTF-8"; one that says nothing counts as English (United States).
Language languageOf(const std::string& tag);

// The language of the environment that this process runs in.
std::string environmentLanguage();

// A stretch of a page that keeps its bytes.
struct RawRange {
    std::size_t begin, end;
};

// What a build has to tell of characters that a code page cannot hold: each once, with the page and the line
// where it came up first.
struct EncodingNotes {
    std::set<char32_t> told;
    std::vector<std::string> lines;
};

// Whether the bytes of a page are its text.
bool isAsItStands(std::string_view text, PageEncoding encoding);

// The bytes of a page.
std::string encode(const std::string& page, const std::string& text, PageEncoding encoding,
                   const Language& language, const std::vector<RawRange>& raw, EncodingNotes& notes);

}  // namespace quillbox
