#include "engine/Words.h"

#include <unicode/locid.h>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/uscript.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <vector>

#include "base/AutomationError.h"

namespace quillbox {

namespace {

enum class Kind { None, Small, Capital, Dense };

Kind kindOfAscii(unsigned char c) {
    if (c >= 'A' && c <= 'Z') return Kind::Capital;
    return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') ? Kind::Small : Kind::None;
}

bool isDense(UChar32 character) {
    static constexpr UChar32 kLongVowel = 0x30FC;
    if (character < 0x0E00) return false;
    UErrorCode status = U_ZERO_ERROR;
    switch (uscript_getScript(character, &status)) {
        case USCRIPT_HAN:
        case USCRIPT_HIRAGANA:
        case USCRIPT_KATAKANA:
        case USCRIPT_THAI:
        case USCRIPT_LAO:
        case USCRIPT_KHMER:
        case USCRIPT_MYANMAR:
            return true;
        default:
            return character == kLongVowel;
    }
}

Kind kindOf(UChar32 character) {
    if (character < 0x80) return kindOfAscii(static_cast<unsigned char>(character));
    const auto mask = U_GET_GC_MASK(character);
    if ((mask & (U_GC_L_MASK | U_GC_N_MASK | U_GC_M_MASK)) == 0) return Kind::None;
    if (isDense(character)) return Kind::Dense;
    return (mask & U_GC_LU_MASK) != 0 ? Kind::Capital : Kind::Small;
}

// A run of characters of one kind of writing, with the places where its words may part.
class Run {
  public:
    Run(std::string_view text, const std::function<void(std::string_view)>& take)
        : mText(text), mTake(take) {}

    void Add(Kind kind, std::size_t begin, std::size_t end) {
        const bool isWord = kind == Kind::Small || kind == Kind::Capital;
        if (mKind != Kind::None && isWord != (mKind != Kind::Dense)) Close();
        if (mKind == Kind::None) mBegin = begin;
        if (kind == Kind::Dense || (kind == Kind::Capital && mKind == Kind::Small)) mParts.push_back(begin);
        mKind = kind;
        mEnd = end;
    }

    void Close() {
        if (mKind == Kind::Dense) {
            closeDense();
        } else if (mKind != Kind::None) {
            mTake(mText.substr(mBegin, mEnd - mBegin));
            for (const auto part : mParts) mTake(mText.substr(part, mEnd - part));
        }
        mKind = Kind::None;
        mParts.clear();
    }

  private:
    void closeDense() {
        mParts.push_back(mEnd);
        for (std::size_t at = 0; at + 2 < mParts.size(); ++at)
            mTake(mText.substr(mParts[at], mParts[at + 2] - mParts[at]));
        const auto last = mParts[mParts.size() - 2];
        mTake(mText.substr(last, mEnd - last));
    }

    std::string_view mText;
    const std::function<void(std::string_view)>& mTake;
    Kind mKind = Kind::None;
    std::size_t mBegin = 0, mEnd = 0;
    std::vector<std::size_t> mParts;
};

bool isAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](unsigned char c) { return c < 0x80; });
}

// The accents of Latin, Greek and Cyrillic, and the vowel points of Hebrew and Arabic. Marks of other
// writings make other words.
bool isAccent(char16_t c) {
    return (c >= 0x300 && c <= 0x36F) || (c >= 0x591 && c <= 0x5C7) || (c >= 0x64B && c <= 0x65F) ||
           c == 0x670;
}

const icu::Normalizer2& normalizer(bool composing) {
    UErrorCode status = U_ZERO_ERROR;
    const auto* found =
        composing ? icu::Normalizer2::getNFKCInstance(status) : icu::Normalizer2::getNFKDInstance(status);
    if (U_FAILURE(status) || !found) throw AutomationError("The tables for normal forms of text are missing");
    return *found;
}

}  // namespace

void forEachWord(std::string_view text, const std::function<void(std::string_view word)>& take) {
    Run run(text, take);
    const auto size = static_cast<std::int64_t>(text.size());
    for (std::int64_t at = 0; at < size;) {
        const auto begin = static_cast<std::size_t>(at);
        UChar32 character = 0;
        U8_NEXT_OR_FFFD(text.data(), at, size, character);
        const auto kind = kindOf(character);
        if (kind == Kind::None) {
            run.Close();
        } else {
            run.Add(kind, begin, static_cast<std::size_t>(at));
        }
    }
    run.Close();
}

std::string searchForm(std::string_view word) {
    if (isAscii(word)) {
        std::string form(word);
        for (auto& c : form) {
            if (c >= 'A' && c <= 'Z') c = static_cast<char>(c | 0x20);
        }
        return form;
    }
    UErrorCode status = U_ZERO_ERROR;
    auto parts = normalizer(false).normalize(
        icu::UnicodeString::fromUTF8(icu::StringPiece(word.data(), static_cast<std::int32_t>(word.size()))),
        status);
    icu::UnicodeString bare;
    for (std::int32_t at = 0; at < parts.length(); ++at) {
        if (!isAccent(parts[at])) bare.append(parts[at]);
    }
    bare.toLower(icu::Locale::getRoot());
    static constexpr char16_t kFinalSigma = 0x3C2, kSigma = 0x3C3, kSharpS = 0xDF;
    bare.findAndReplace(icu::UnicodeString(kFinalSigma), icu::UnicodeString(kSigma));
    bare.findAndReplace(icu::UnicodeString(kSharpS), u"ss");
    std::string form;
    normalizer(true).normalize(bare, status).toUTF8String(form);
    if (U_FAILURE(status)) throw AutomationError("A word cannot be brought into its normal form");
    return form;
}

}  // namespace quillbox
