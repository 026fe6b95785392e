#pragma once

#include <map>
#include <string>
#include <vector>

namespace quillbox {

// A fenced block of the guide that a test has to do with: "```KIND NAME option=value".
struct GuideBlock {
    std::string kind, name;
    std::map<std::string, std::string> options;
    std::string text;
    // Of the line with the opening fence, from 1.
    std::size_t line = 0;
};

// What the guide writes, and what it says comes out. A block "template" begins an example with the text of
// its page, a block "file FOLDER/NAME" one with a whole template; "scrap NAME" and "project" add to the
// example that was begun last; "result", "output NAME" and "failure" say what comes of it.
struct GuideExample {
    std::size_t line = 0;
    // The template's name, and its files by their names in its folder.
    std::string name;
    std::map<std::string, std::string> files;
    // Which page a "result" is.
    std::string page;
    bool isBooklet = false;
    std::vector<std::string> settings;
    std::vector<GuideBlock> outcomes;
};

// The text without the line ends at its end.
std::string withoutLastLineEnd(std::string text);

class Guide {
  public:
    explicit Guide(std::string file);

    const std::vector<GuideExample>& Examples() const { return mExamples; }
    // Everything that the examples write.
    std::string WrittenText() const;
    const std::string& Text() const { return mText; }
    // The guide with other texts in its outcomes, by the line of their block.
    void Rewrite(const std::map<std::size_t, std::string>& texts) const;

  private:
    void add(const GuideBlock& block);
    void begin(const GuideBlock& block);

    std::string mFile, mText;
    std::vector<GuideExample> mExamples;
};

}  // namespace quillbox
