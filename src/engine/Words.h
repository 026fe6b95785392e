#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace quillbox {

// Cuts text into the words that a search finds. Writing without blanks between words, such as Chinese, gives
// each pair of neighbours, and the last character alone, so that one character finds what begins with it. A
// word in mixed case
// ("NewTopic") also gives its parts behind the first. The words come as they are written; see `searchForm`.
void forEachWord(std::string_view text, const std::function<void(std::string_view word)>& take);

// One form for all spellings that a search takes for the same: small letters, without accents, "ss" for a
// sharp s.
std::string searchForm(std::string_view word);

}  // namespace quillbox
