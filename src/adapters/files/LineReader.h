#pragma once

#include <algorithm>
#include <string>
#include <utility>

namespace quillbox::files {

// Gives a text line by line. Lines end in CR LF, LF or CR; an end behind the last line begins no other.
class LineReader {
  public:
    explicit LineReader(std::string text) : mText(std::move(text)) {}

    bool AtEnd() const { return mAt == mText.size(); }

    std::string Next() {
        const auto end = std::min(mText.find_first_of("\r\n", mAt), mText.size());
        auto line = mText.substr(mAt, end - mAt);
        mAt = mText.compare(end, 2, "\r\n") == 0 ? end + 2 : std::min(end + 1, mText.size());
        return line;
    }

  private:
    std::string mText;
    std::size_t mAt = 0;
};

}  // namespace quillbox::files
