#include "base/Text.h"

#include <unicode/bytestream.h>
#include <unicode/casemap.h>
#include <unicode/coll.h>
#include <unicode/normalizer2.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <bit>
#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <locale>
#include <memory>
#include <random>
#include <sstream>

#include "base/AutomationError.h"
#include "base/FoldedMap.h"

namespace quillbox {

namespace {

// Text that is all ASCII is the usual case, and is gone through eight characters at a time.
using Word = std::uint64_t;
constexpr Word kOnes = 0x0101010101010101;
constexpr Word kHighBits = kOnes * 0x80;

static_assert(std::endian::native == std::endian::little);

constexpr Word every(unsigned char c) { return kOnes * c; }

template <class Number>
Number loaded(const char* from) {
    Number number = 0;
    std::memcpy(&number, from, sizeof number);
    return number;
}

// Up to eight characters; zeros for those beyond the end.
Word wordAt(std::string_view text, std::size_t at) {
    const auto* from = text.data() + at;
    const auto left = text.size() - at;
    if (left >= sizeof(Word)) return loaded<Word>(from);
    // Two loads that overlap, as a copy of unknown length costs more than the rest.
    const auto both = [&]<class Part>(Part first, Part last) {
        return Word{first} | Word{last} << (left - sizeof(Part)) * 8;
    };
    if (left >= 4) return both(loaded<std::uint32_t>(from), loaded<std::uint32_t>(from + left - 4));
    if (left >= 2) return both(loaded<std::uint16_t>(from), loaded<std::uint16_t>(from + left - 2));
    return left == 1 ? static_cast<unsigned char>(*from) : 0;
}

// Of ASCII characters: the high bit of each between two letters.
constexpr Word marksOf(Word word, char first, char last) {
    const auto from = static_cast<unsigned char>(0x80 - first),
               beyond = static_cast<unsigned char>(0x7F - last);
    return (word + every(from)) & ~(word + every(beyond)) & kHighBits;
}
constexpr Word lowered(Word word) { return word | (marksOf(word, 'A', 'Z') >> 2); }
constexpr Word uppered(Word word) { return word & ~(marksOf(word, 'a', 'z') >> 2); }

char asciiLower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }
char asciiUpper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; }

bool isAscii(std::string_view text) {
    Word bits = 0;
    for (std::size_t at = 0; at < text.size(); at += sizeof bits) bits |= wordAt(text, at);
    return (bits & kHighBits) == 0;
}

// Of ASCII text.
template <Word (*Map)(Word)>
std::string mapped(std::string_view text) {
    std::string result(text);
    std::size_t at = 0;
    for (; at + sizeof(Word) <= text.size(); at += sizeof(Word)) {
        const auto word = Map(wordAt(text, at));
        std::memcpy(result.data() + at, &word, sizeof word);
    }
    for (auto rest = Map(wordAt(text, at)); at < text.size(); ++at, rest >>= 8)
        result[at] = static_cast<char>(rest);
    return result;
}

constexpr Word asItStands(Word word) { return word; }

// Another in each process: nobody can make texts that fall into one place of a table.
Word hashSeed() {
    static const Word seed = [] {
        std::random_device device;
        return Word{device()} << 32 | device();
    }();
    return seed;
}

Word mixed(Word word) {
    constexpr Word kFactor = 0x9E3779B97F4A7C15;
    __extension__ using Wide = unsigned __int128;
    const auto product = Wide{word} * kFactor;
    return static_cast<Word>(product) ^ static_cast<Word>(product >> 64);
}

// `bits` gets those that are set in any of the characters.
template <Word (*Map)(Word)>
std::size_t hashOf(std::string_view text, Word& bits) {
    auto hash = mixed(hashSeed() ^ text.size());
    for (std::size_t at = 0; at < text.size(); at += sizeof(Word)) {
        const auto word = wordAt(text, at);
        bits |= word;
        hash = mixed(hash ^ Map(word));
    }
    return hash;
}

icu::StringPiece piece(std::string_view text) {
    return {text.data(), static_cast<std::int32_t>(text.size())};
}

// A number that no double holds: the largest where it is too large, else next to nothing.
double atTheLimit(std::string digits) {
    std::istringstream stream(std::move(digits));
    stream.imbue(std::locale::classic());
    double number = 0;
    stream >> number;
    return number;
}

std::string fold(std::string_view text) {
    std::string folded;
    icu::StringByteSink<std::string> sink(&folded);
    UErrorCode status = U_ZERO_ERROR;
    icu::CaseMap::utf8Fold(0, piece(text), sink, nullptr, status);
    return folded;
}

}  // namespace

bool sameText(std::string_view a, std::string_view b) {
    const auto common = std::min(a.size(), b.size());
    for (std::size_t at = 0; at < common; at += sizeof(Word)) {
        const auto one = wordAt(a.substr(0, common), at), other = wordAt(b.substr(0, common), at);
        if (one == other) continue;
        if ((one | other) & kHighBits) return foldKey(a) == foldKey(b);
        // What follows cannot make two different letters the same.
        if (lowered(one) != lowered(other)) return false;
    }
    return a.size() == b.size();
}

bool startsWithText(std::string_view text, std::string_view beginning) {
    return text.size() >= beginning.size() && sameText(text.substr(0, beginning.size()), beginning);
}

bool endsWithText(std::string_view text, std::string_view ending) {
    return text.size() >= ending.size() && sameText(text.substr(text.size() - ending.size()), ending);
}

std::string foldKey(std::string_view text) {
    if (isAscii(text)) return mapped<lowered>(text);
    UErrorCode status = U_ZERO_ERROR;
    const auto* nfc = icu::Normalizer2::getNFCInstance(status);
    std::string normal;
    icu::StringByteSink<std::string> sink(&normal);
    nfc->normalizeUTF8(0, piece(fold(text)), sink, nullptr, status);
    return normal;
}

std::size_t TextHash::operator()(std::string_view text) const {
    Word bits = 0;
    return hashOf<asItStands>(text, bits);
}

std::size_t FoldedHash::operator()(std::string_view text) const {
    Word bits = 0;
    const auto hash = hashOf<lowered>(text, bits);
    return bits & kHighBits ? hashOf<lowered>(foldKey(text), bits) : hash;
}

std::string lower(std::string_view text) {
    if (isAscii(text)) return mapped<lowered>(text);
    std::string result;
    icu::StringByteSink<std::string> sink(&result);
    UErrorCode status = U_ZERO_ERROR;
    icu::CaseMap::utf8ToLower("", 0, piece(text), sink, nullptr, status);
    return result;
}

std::string upper(std::string_view text) {
    if (isAscii(text)) return mapped<uppered>(text);
    std::string result;
    icu::StringByteSink<std::string> sink(&result);
    UErrorCode status = U_ZERO_ERROR;
    icu::CaseMap::utf8ToUpper("", 0, piece(text), sink, nullptr, status);
    return result;
}

std::string firstCharacter(std::string_view text) {
    if (text.empty()) return {};
    std::int32_t end = 0;
    U8_FWD_1(text.data(), end, static_cast<std::int32_t>(text.size()));
    return std::string(text.substr(0, static_cast<std::size_t>(end)));
}

std::string_view trimBlanks(std::string_view text) {
    const auto first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::vector<std::string> split(std::string_view text, std::string_view delimiter) {
    std::vector<std::string> pieces;
    if (text.empty()) return pieces;
    for (std::size_t start = 0;;) {
        const auto found = text.find(delimiter, start);
        pieces.emplace_back(text.substr(start, found - start));
        if (found == std::string_view::npos) return pieces;
        start = found + delimiter.size();
    }
}

std::string join(const std::vector<std::string>& pieces, std::string_view delimiter) {
    std::string text;
    for (const auto& one : pieces) {
        if (&one != &pieces.front()) text += delimiter;
        text += one;
    }
    return text;
}

std::string replaceAll(std::string_view text, std::string_view what, std::string_view with) {
    if (what.empty()) return std::string(text);
    std::string result;
    result.reserve(text.size());
    for (;;) {
        const auto found = text.find(what);
        result += text.substr(0, found);
        if (found == std::string_view::npos) return result;
        result += with;
        text.remove_prefix(found + what.size());
    }
}

std::string replaceAllText(std::string_view text, std::string_view what, std::string_view with) {
    if (what.empty()) return std::string(text);
    std::string result;
    result.reserve(text.size() + with.size());
    // Of what is no letter there is no other case, so that most places need no closer look.
    const bool exact = static_cast<unsigned char>(what.front()) < 0x80 &&
                       asciiLower(what.front()) == asciiUpper(what.front());
    for (std::size_t at = 0; at < text.size();) {
        if (exact) {
            const auto next = std::min(text.find(what.front(), at), text.size());
            result += text.substr(at, next - at);
            at = next;
            if (at == text.size()) break;
        }
        if (startsWithText(text.substr(at), what)) {
            result += with;
            at += what.size();
        } else {
            result += text[at++];
        }
    }
    return result;
}

std::string sortKey(std::string_view text) {
    static const std::unique_ptr<icu::Collator> collator = [] {
        UErrorCode status = U_ZERO_ERROR;
        return std::unique_ptr<icu::Collator>(icu::Collator::createInstance(icu::Locale::getRoot(), status));
    }();
    const auto wide = icu::UnicodeString::fromUTF8(piece(text));
    if (!collator) return foldKey(text);
    std::string key(128, '\0');
    const auto fill = [&] {
        return static_cast<std::size_t>(collator->getSortKey(
            wide, reinterpret_cast<std::uint8_t*>(key.data()), static_cast<std::int32_t>(key.size())));
    };
    const auto size = fill();
    const bool fits = size <= key.size();
    key.resize(size);
    if (!fits) fill();
    return key;
}

std::string booleanText(bool value) { return value ? "True" : "False"; }

double leadingNumber(std::string_view text) {
    text = trimBlanks(text);
    if (!text.empty() && text.front() == '+') text.remove_prefix(1);
    // Words such as "inf" are no numbers here.
    const auto digit = text.find_first_of("0123456789.");
    if (digit > 1 || (digit == 1 && text.front() != '-')) return 0;
    double number = 0;
    const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error == std::errc::result_out_of_range) return atTheLimit({text.data(), stop});
    return number;
}

int integerOf(std::string_view text) {
    const auto trimmed = trimBlanks(text);
    int number = 0;
    const auto end = trimmed.data() + trimmed.size();
    const auto [stop, error] = std::from_chars(trimmed.data(), end, number);
    if (error != std::errc() || stop != end)
        throw AutomationError("'" + std::string(text) + "' is not a number");
    return number;
}

}  // namespace quillbox
