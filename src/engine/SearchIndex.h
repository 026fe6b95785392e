#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace quillbox {

// Gathers the words of pages and writes them as scripts that a page can load from any place, a folder too.
// Each script makes one call, FUNCTION("NAME", DATA). N counts from 0:
//
// words-N: words in ascending order, each [word, posting, ...]. A posting is ten times the step from the page
// of the posting before (from 0 at first), plus a weight of 1 to 9. A word that would make its script too
// large goes on in the next.
//
// pages-N: pages in their order, each [file, title, opening].
//
// index: {pages, firstPages, firstWords}, which are the number of pages, the number of the first page of each
// pages-N, and the first word of each words-N.
class SearchIndex {
  public:
    // The text of a script stays below that many bytes, but for one long entry.
    static constexpr std::size_t kLargest = 150000;

    explicit SearchIndex(std::string function, std::size_t largest = kLargest)
        : mFunction(std::move(function)), mLargest(largest) {}

    void Add(const std::string& page, std::string_view html);

    struct Script {
        std::string name, text;
    };
    std::vector<Script> Scripts() const;

  private:
    struct Posting {
        std::uint32_t page;
        std::uint8_t weight;
    };
    struct Word {
        std::string form;
        std::vector<Posting> postings;
        // What the page in work has gathered.
        std::uint32_t score = 0;
    };

    void count(std::string_view word, std::uint32_t score);
    std::uint32_t numberOf(std::string_view word);
    std::string script(const std::string& name, const std::string& data) const;
    std::vector<Script> pageScripts(std::string& firstPages) const;
    std::vector<Script> wordScripts(std::string& firstWords) const;

    std::string mFunction;
    std::size_t mLargest;
    std::vector<std::string> mPages;
    std::vector<Word> mWords;
    std::unordered_map<std::string, std::uint32_t> mByForm;
    // Each spelling that was met, so that its form is worked out once.
    std::unordered_map<std::string, std::uint32_t> mBySpelling;
    std::vector<std::uint32_t> mOfPage;
    std::size_t mLength = 0;
};

}  // namespace quillbox
