#include "engine/PageEncoding.h"

#include <unicode/locid.h>
#include <unicode/ucnv.h>
#include <unicode/uloc.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "base/AutomationError.h"
#include "base/Text.h"

namespace quillbox {

namespace {

struct CodePage {
    std::string_view number, converter, charset;
};

constexpr std::array<CodePage, 14> kCodePages = {{
    {"874", "windows-874", "windows-874"},
    {"932", "windows-932", "shift_jis"},
    {"936", "windows-936", "gb2312"},
    {"949", "windows-949", "ks_c_5601-1987"},
    {"950", "windows-950", "big5"},
    {"1250", "windows-1250", "windows-1250"},
    {"1251", "windows-1251", "windows-1251"},
    {"1252", "windows-1252", "windows-1252"},
    {"1253", "windows-1253", "windows-1253"},
    {"1254", "windows-1254", "windows-1254"},
    {"1255", "windows-1255", "windows-1255"},
    {"1256", "windows-1256", "windows-1256"},
    {"1257", "windows-1257", "windows-1257"},
    {"1258", "windows-1258", "windows-1258"},
}};

// Languages that are not written in the western code page; a script decides before the language does.
struct LanguageCodePage {
    std::string_view number, languages;
};
constexpr std::array<LanguageCodePage, 12> kLanguages = {{
    {"874", " th "},
    {"932", " ja "},
    {"949", " ko "},
    {"1250", " bs cs hr hu pl ro sk sl sq "},
    {"1251", " be bg ky mk mn ru sr tg tt uk kk "},
    {"1253", " el "},
    {"1254", " az tr uz "},
    {"1255", " he iw yi "},
    {"1256", " ar fa ps ug ur "},
    {"1257", " et lt lv "},
    {"1258", " vi "},
    {"936", " zh "},
}};

std::string_view codePageOf(const icu::Locale& locale) {
    const std::string_view language = locale.getLanguage(), script = locale.getScript(),
                           country = locale.getCountry();
    if (language == "zh" && (script == "Hant" || country == "TW" || country == "HK" || country == "MO"))
        return "950";
    if (script == "Cyrl") return "1251";
    if (script == "Latn" && language == "sr") return "1250";
    const auto wanted = " " + std::string(language) + " ";
    const auto found = std::find_if(kLanguages.begin(), kLanguages.end(), [&](const auto& row) {
        return row.languages.find(wanted) != std::string_view::npos;
    });
    return found == kLanguages.end() ? "1252" : found->number;
}

const CodePage& codePage(std::string_view number) {
    return *std::find_if(kCodePages.begin(), kCodePages.end(),
                         [&](const auto& row) { return row.number == number; });
}

using Converter = std::unique_ptr<UConverter, decltype(&ucnv_close)>;

Converter openConverter(std::string_view number) {
    UErrorCode status = U_ZERO_ERROR;
    Converter converter(ucnv_open(std::string(codePage(number).converter).c_str(), &status), &ucnv_close);
    if (U_FAILURE(status))
        throw AutomationError("The code page " + std::string(number) + " is not known here");
    ucnv_setFromUCallBack(converter.get(), UCNV_FROM_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &status);
    return converter;
}

// One character; empty where the code page cannot hold it.
std::string_view held(UConverter* converter, UChar32 character, std::array<char, 8>& buffer) {
    std::array<UChar, 2> units{};
    std::int32_t count = 0;
    if (character < 0x10000) {
        units[static_cast<std::size_t>(count++)] = static_cast<UChar>(character);
    } else {
        units = {U16_LEAD(character), U16_TRAIL(character)};
        count = 2;
    }
    UErrorCode status = U_ZERO_ERROR;
    const auto size = ucnv_fromUChars(converter, buffer.data(), static_cast<std::int32_t>(buffer.size()),
                                      units.data(), count, &status);
    if (U_FAILURE(status)) return {};
    return {buffer.data(), static_cast<std::size_t>(size)};
}

// How many bytes of the text are ASCII before the first that is not.
std::size_t asciiLength(std::string_view text) {
    constexpr std::uint64_t kHighBits = 0x8080808080808080;
    using Block = std::array<std::uint64_t, 4>;
    std::size_t at = 0;
    for (Block block{}; at + sizeof block <= text.size(); at += sizeof block) {
        std::memcpy(&block, text.data() + at, sizeof block);
        if ((block[0] | block[1] | block[2] | block[3]) & kHighBits) break;
    }
    while (at < text.size() && static_cast<unsigned char>(text[at]) < 0x80) ++at;
    return at;
}

std::string lineAround(const std::string& text, std::size_t at) {
    const auto begin = at == 0 ? std::string::npos : text.rfind('\n', at - 1);
    const auto from = begin == std::string::npos ? 0 : begin + 1;
    auto line = text.substr(from, std::min<std::size_t>(text.find('\n', at) - from, 200));
    while (!isValidUtf8(line)) line.pop_back();
    while (!line.empty() && (line.back() == '\r' || line.back() == ' ')) line.pop_back();
    return line;
}

class Encoder {
  public:
    Encoder(const std::string& page, const std::string& text, PageEncoding encoding, const Language& language,
            EncodingNotes& notes)
        : mPage(page), mText(text), mEncoding(encoding), mLanguage(language), mNotes(notes) {
        if (encoding == PageEncoding::AsciiButTitle) findTitle();
    }

    std::string Run(const std::vector<RawRange>& raw) {
        mOut.reserve(mText.size() + mText.size() / 8);
        std::size_t at = 0;
        for (const auto& range : raw) {
            convert(at, range.begin);
            mOut.append(mText, range.begin, range.end - range.begin);
            at = range.end;
        }
        convert(at, mText.size());
        return std::move(mOut);
    }

  private:
    void findTitle() {
        const auto begin = findTag("<title>", 0);
        const auto end = findTag("</title>", begin);
        if (end < mText.size()) mTitle = {begin, end};
    }

    std::size_t findTag(std::string_view tag, std::size_t from) const {
        for (auto at = mText.find('<', from); at != std::string::npos; at = mText.find('<', at + 1)) {
            if (sameText(std::string_view(mText).substr(at, tag.size()), tag)) return at;
        }
        return mText.size();
    }

    bool inCodePage(std::size_t at) const {
        if (mEncoding == PageEncoding::Ansi) return true;
        return mEncoding == PageEncoding::AsciiButTitle && at >= mTitle.begin && at < mTitle.end;
    }

    void convert(std::size_t from, std::size_t to) {
        const auto* bytes = mText.data();
        auto at = static_cast<std::int64_t>(from);
        while (at < static_cast<std::int64_t>(to)) {
            auto start = static_cast<std::size_t>(at);
            const auto plain = asciiLength({bytes + start, to - start});
            mOut.append(bytes + start, plain);
            start += plain;
            if (start == to) return;
            at = static_cast<std::int64_t>(start);
            UChar32 character = 0;
            U8_NEXT_OR_FFFD(bytes, at, static_cast<std::int64_t>(to), character);
            put(character, start);
        }
    }

    void put(UChar32 character, std::size_t at) {
        std::array<char, 8> buffer;
        if (inCodePage(at)) {
            if (!mConverter) mConverter = openConverter(mLanguage.codePage);
            const auto inPage = held(mConverter.get(), character, buffer);
            mOut += inPage;
            if (!inPage.empty()) return;
            tell(character, at);
        }
        mOut += "&#" + std::to_string(character) + ";";
    }

    void tell(UChar32 character, std::size_t at) {
        if (!mNotes.told.insert(static_cast<char32_t>(character)).second) return;
        std::array<char, 16> code;
        std::snprintf(code.data(), code.size(), "U+%04X", static_cast<unsigned>(character));
        auto note = mPage + ": " + code.data() + " is not in code page " + mLanguage.codePage +
                    " and stands as a character reference";
        if (const auto line = lineAround(mText, at); isQuotable(line)) note += ", first in: " + line;
        mNotes.lines.push_back(std::move(note));
    }

    // Whoever reads the log takes these words for the compiler's.
    static bool isQuotable(const std::string& line) {
        return line.find("Error:") == std::string::npos && line.find("Warning:") == std::string::npos;
    }

    const std::string& mPage;
    const std::string& mText;
    PageEncoding mEncoding;
    const Language& mLanguage;
    EncodingNotes& mNotes;
    Converter mConverter{nullptr, &ucnv_close};
    RawRange mTitle{0, 0};
    std::string mOut;
};

std::string toText(const icu::UnicodeString& wide) {
    std::string text;
    wide.toUTF8String(text);
    return text;
}

// What the tag leaves open, such as the country, is filled in with what is most likely.
icu::Locale localeOf(const std::string& tag) {
    const auto name = tag.substr(0, tag.find_first_of(".@"));
    const auto locale = icu::Locale::createCanonical(name.c_str());
    const bool known = !locale.isBogus() && *locale.getISO3Language() != '\0' && !sameText(name, "posix");
    if (!known || locale.getLanguage() == std::string_view("und")) return icu::Locale("en_US");
    if (*locale.getCountry() != '\0') return locale;
    UErrorCode status = U_ZERO_ERROR;
    auto likely = locale;
    likely.addLikelySubtags(status);
    if (U_FAILURE(status)) return locale;
    const bool scripted = *locale.getScript() != '\0';
    const auto language =
        std::string(locale.getLanguage()) + (scripted ? "_" + std::string(locale.getScript()) : "");
    return icu::Locale((language + "_" + likely.getCountry()).c_str());
}

}  // namespace

Language languageOf(const std::string& tag) {
    const auto locale = localeOf(tag);
    const auto& page = codePage(codePageOf(locale));
    auto id = locale.getLCID();
    if (id == 0) id = 0x0409;
    std::array<char, 16> hexadecimal;
    std::snprintf(hexadecimal.data(), hexadecimal.size(), "0x%04x", static_cast<unsigned>(id));
    icu::UnicodeString name;
    locale.getDisplayName(icu::Locale::getUS(), name);
    UErrorCode status = U_ZERO_ERROR;
    return {locale.toLanguageTag<std::string>(status),
            toText(name),
            hexadecimal.data(),
            std::to_string(id),
            std::string(page.number),
            std::string(page.charset),
            locale.isRightToLeft() != 0};
}

std::string environmentLanguage() {
    for (const auto* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const char* value = std::getenv(name);
        if (value != nullptr && *value != '\0') return value;
    }
    return {};
}

bool isAsItStands(std::string_view text, PageEncoding encoding) {
    return encoding == PageEncoding::Utf8 || asciiLength(text) == text.size();
}

std::string encode(const std::string& page, const std::string& text, PageEncoding encoding,
                   const Language& language, const std::vector<RawRange>& raw, EncodingNotes& notes) {
    return isAsItStands(text, encoding) ? text : Encoder(page, text, encoding, language, notes).Run(raw);
}

}  // namespace quillbox
