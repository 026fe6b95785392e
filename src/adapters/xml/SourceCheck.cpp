#include "adapters/xml/SourceCheck.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <string_view>
#include <vector>

#include "adapters/xml/Rules.h"
#include "base/AutomationError.h"
#include "base/Text.h"
#include "base/Utf8.h"

namespace quillbox::xml {

namespace {

constexpr std::string_view kBlanks = " \t\r\n";

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

bool isXmlScalar(std::uint32_t scalar) {
    if (scalar < 0x20) return scalar == '\t' || scalar == '\n' || scalar == '\r';
    return scalar <= 0x10FFFF && (scalar < 0xD800 || scalar > 0xDFFF) && scalar != 0xFFFE && scalar != 0xFFFF;
}

class SourceCheck {
  public:
    explicit SourceCheck(std::string& source) : mSource(source), mText(source) {}

    SourceLines Run() {
        if (const auto odd = findNonXml(mText); odd != std::string_view::npos) {
            fail(odd, "XML cannot hold " + describeNonXml(mText, odd));
        }
        if (mText.starts_with("\xEF\xBB\xBF")) mAt = 3;
        const auto beginning = mAt;
        if (rest().starts_with("<?xml") && rest().size() > 5 && isBlank(rest()[5]))
            skipPast("?>", "a declaration");
        while (mAt < mText.size()) {
            checkText();
            if (mAt < mText.size()) checkMarkup();
        }
        if (!mOpen.empty()) {
            fail(mAt, quoted(mOpen.back().name) + " of line " + std::to_string(mOpen.back().line) +
                          " is not closed");
        }
        if (!mRootSeen) fail(beginning, "there is no element");
        return std::move(mLines);
    }

  private:
    struct OpenElement {
        std::string_view name;
        int line;
    };

    std::string_view rest() const { return mText.substr(mAt); }

    static std::string quoted(std::string_view name) {
        std::string text = "'";
        text += name.substr(0, 100);
        text += '\'';
        return text;
    }

    [[noreturn]] void fail(std::size_t offset, const std::string& what) const {
        const int line = 1 + static_cast<int>(std::count(
                                 mText.begin(), mText.begin() + static_cast<std::ptrdiff_t>(offset), '\n'));
        throw AutomationError("line " + std::to_string(line) + ": " + what);
    }

    // The line of the current place; each call counts on from the last one.
    int line() {
        const char* from = mText.data() + mCounted;
        const char* const end = mText.data() + mAt;
        while (from < end && (from = static_cast<const char*>(std::memchr(
                                  from, '\n', static_cast<std::size_t>(end - from)))) != nullptr) {
            ++mLine;
            ++from;
        }
        mCounted = mAt;
        return mLine;
    }

    void skipPast(std::string_view end, const char* what) {
        const auto found = mText.find(end, mAt);
        if (found == std::string_view::npos) fail(mAt, std::string(what) + " does not end");
        mAt = found + end.size();
    }

    void skipBlanks() { mAt = std::min(mText.find_first_not_of(kBlanks, mAt), mText.size()); }

    // From the current place to the next "<" or the end.
    void checkText() {
        const auto end = std::min(mText.find('<', mAt), mText.size());
        const auto text = mText.substr(mAt, end - mAt);
        if (mOpen.empty()) {
            const auto odd = text.find_first_not_of(kBlanks);
            if (odd != std::string_view::npos) fail(mAt + odd, "there is text outside the root element");
        } else {
            if (const auto odd = text.find("]]>"); odd != std::string_view::npos) {
                fail(mAt + odd, "']]>' stands in text");
            }
            for (auto at = text.find('&'); at != std::string_view::npos; at = text.find('&', at + 1)) {
                checkReference(mAt + at);
            }
        }
        mAt = end;
    }

    void checkReference(std::size_t at) const {
        const auto end = mText.substr(at, 32).find(';');
        if (end == std::string_view::npos) fail(at, "there is a '&' that begins no reference");
        const auto name = mText.substr(at + 1, end - 1);
        if (name == "lt" || name == "gt" || name == "amp" || name == "quot" || name == "apos") return;
        if (!name.starts_with('#')) fail(at, "the entity '" + std::string(name) + "' is not defined");
        const bool hexadecimal = name.starts_with("#x");
        const auto digits = name.substr(hexadecimal ? 2 : 1);
        std::uint32_t scalar = 0;
        const auto last = digits.data() + digits.size();
        const auto [stop, error] = std::from_chars(digits.data(), last, scalar, hexadecimal ? 16 : 10);
        if (error != std::errc() || stop != last || !isXmlScalar(scalar)) {
            fail(at, "'&" + std::string(name) + ";' is no character");
        }
    }

    void checkMarkup() {
        if (rest().starts_with("<!--")) {
            mAt += 4;
            skipPast("-->", "a comment");
        } else if (rest().starts_with("<![CDATA[")) {
            if (mOpen.empty()) fail(mAt, "there is text outside the root element");
            skipPast("]]>", "a CDATA section");
        } else if (rest().starts_with("<!DOCTYPE")) {
            blankDocumentType();
        } else if (rest().starts_with("<?")) {
            checkInstruction();
        } else if (rest().starts_with("</")) {
            checkEndTag();
        } else {
            checkStartTag();
        }
    }

    void checkInstruction() {
        const auto start = mAt;
        mAt += 2;
        const auto target = name();
        if (target.size() == 3 && sameText(target, "xml"))
            fail(start, "there is an XML declaration inside the document");
        skipPast("?>", "a processing instruction");
    }

    void blankDocumentType() {
        const auto start = mAt;
        if (mRootSeen) fail(start, "there is a document type declaration inside the document");
        int brackets = 0;
        for (;;) {
            mAt = mText.find_first_of("<>[]'\"", mAt + 1);
            if (mAt == std::string_view::npos) fail(start, "a document type declaration does not end");
            const char c = mText[mAt];
            if (c == '<') {
                if (rest().starts_with("<!ENTITY")) fail(mAt, "a DOCTYPE with ENTITY is refused");
                if (rest().starts_with("<!--")) mAt = endOfPart(mAt + 4, "-->", start);
                if (rest().starts_with("<?")) mAt = endOfPart(mAt + 2, "?>", start);
            } else if (c == '\'' || c == '"') {
                mAt = endOfPart(mAt + 1, std::string_view(&c, 1), start);
            } else if (c == '[') {
                ++brackets;
            } else if (c == ']') {
                --brackets;
            } else if (brackets == 0) {
                break;
            }
        }
        ++mAt;
        for (auto at = start; at < mAt; ++at) {
            if (!isBlank(mSource[at])) mSource[at] = ' ';
        }
    }

    std::size_t endOfPart(std::size_t from, std::string_view end, std::size_t start) const {
        const auto found = mText.find(end, from);
        if (found == std::string_view::npos) fail(start, "a document type declaration does not end");
        return found + end.size() - 1;
    }

    std::string_view name() {
        const auto start = mAt;
        if (mAt < mText.size() && isNameStart(mText[mAt])) {
            while (mAt < mText.size() && isNameCharacter(mText[mAt])) ++mAt;
        }
        if (mAt == start) fail(start, "a name is missing");
        return mText.substr(start, mAt - start);
    }

    void checkEndTag() {
        const auto start = mAt;
        mAt += 2;
        const auto closed = name();
        skipBlanks();
        if (!rest().starts_with('>')) fail(mAt, "the end tag " + quoted(closed) + " does not end");
        ++mAt;
        if (mOpen.empty()) fail(start, quoted(closed) + " is closed and was not open");
        const auto& open = mOpen.back();
        if (open.name != closed) {
            fail(start, quoted(closed) + " is closed where " + quoted(open.name) + " of line " +
                            std::to_string(open.line) + " is open");
        }
        mOpen.pop_back();
    }

    void checkStartTag() {
        const auto start = mAt++;
        const auto element = name();
        if (mOpen.empty() && mRootSeen) fail(start, "there is a second root element, " + quoted(element));
        if (mOpen.size() == kMaxDepth) {
            fail(start, "elements are nested deeper than " + std::to_string(kMaxDepth));
        }
        mRootSeen = true;
        const int startLine = line();
        mLines.Add(start, startLine);
        if (checkAttributes(element)) mOpen.push_back({element, startLine});
    }

    // To the end of a start tag; tells whether the element is open then.
    bool checkAttributes(std::string_view element) {
        mAttributes.clear();
        for (;;) {
            const auto before = mAt;
            skipBlanks();
            if (rest().starts_with('>') || rest().starts_with("/>")) break;
            if (mAt == mText.size()) fail(mAt, "the tag of " + quoted(element) + " does not end");
            if (mAt == before) fail(mAt, "there is no blank before an attribute of " + quoted(element));
            checkAttribute(element);
        }
        checkDuplicates(element);
        const bool open = mText[mAt] == '>';
        mAt += open ? 1 : 2;
        return open;
    }

    void checkAttribute(std::string_view element) {
        const auto attribute = name();
        mAttributes.push_back(attribute);
        skipBlanks();
        if (!rest().starts_with('=')) fail(mAt, place(attribute, element) + " has no value");
        ++mAt;
        skipBlanks();
        if (!rest().starts_with('"') && !rest().starts_with('\'')) {
            fail(mAt, place(attribute, element) + " has a value without quotes");
        }
        const auto start = mAt;
        const char quote = mText[mAt++];
        for (; mAt < mText.size() && mText[mAt] != quote; ++mAt) {
            if (mText[mAt] == '<') fail(mAt, place(attribute, element) + " holds a '<'");
            if (mText[mAt] == '&') checkReference(mAt);
        }
        if (mAt == mText.size()) fail(start, place(attribute, element) + " does not end");
        ++mAt;
    }

    static std::string place(std::string_view attribute, std::string_view element) {
        return "the attribute " + quoted(attribute) + " of " + quoted(element);
    }

    void checkDuplicates(std::string_view element) {
        constexpr std::size_t kFew = 12;
        if (mAttributes.size() > kFew) {
            std::sort(mAttributes.begin(), mAttributes.end());
            const auto twice = std::adjacent_find(mAttributes.begin(), mAttributes.end());
            if (twice != mAttributes.end()) fail(mAt, place(*twice, element) + " is there twice");
            return;
        }
        for (std::size_t i = 1; i < mAttributes.size(); ++i) {
            for (std::size_t j = 0; j < i; ++j) {
                if (mAttributes[i] == mAttributes[j])
                    fail(mAt, place(mAttributes[i], element) + " is there twice");
            }
        }
    }

    std::string& mSource;
    const std::string_view mText;
    std::size_t mAt = 0;
    std::size_t mCounted = 0;
    int mLine = 1;
    bool mRootSeen = false;
    std::vector<OpenElement> mOpen;
    std::vector<std::string_view> mAttributes;
    SourceLines mLines;
};

}  // namespace

SourceLines checkSource(std::string& source) { return SourceCheck(source).Run(); }

}  // namespace quillbox::xml
