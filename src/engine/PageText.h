#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quillbox {

// How much a word tells by the place where it stands.
enum class TextPlace { Title, Heading, Keywords, Body };

// A run of text of a page, without markup.
struct TextRun {
    TextPlace place;
    std::string text;
};

// What a page says to its reader: its keywords and the text of its `main` element, or of its body where it
// has none. Navigation, footers, scripts and the like are left out.
class PageText {
  public:
    explicit PageText(std::string_view html);

    // The text of the first `h1`, else of the `title`.
    const std::string& Title() const { return mTitle; }
    // How the text of the body begins, in about that many characters.
    std::string Opening(std::size_t characters) const;
    const std::vector<TextRun>& Runs() const { return mRuns; }

  private:
    void readHead(std::string_view head);
    void readBody(std::string_view body);
    void addRun(TextPlace place, std::string text);

    std::string mTitle;
    std::vector<TextRun> mRuns;
};

// The characters of HTML text: references such as "&auml;" and "&#228;" as what they stand for.
std::string withoutReferences(std::string_view html);

}  // namespace quillbox
