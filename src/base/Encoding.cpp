#include "base/Encoding.h"

#include <unicode/ucnv.h>

#include <array>
#include <memory>
#include <optional>
#include <string_view>

#include "base/AutomationError.h"
#include "base/Text.h"
#include "base/Utf8.h"

namespace quillbox {

namespace {

using Converter = std::unique_ptr<UConverter, decltype(&ucnv_close)>;

Converter openConverter(const std::string& encoding) {
    UErrorCode status = U_ZERO_ERROR;
    Converter converter(ucnv_open(encoding.c_str(), &status), &ucnv_close);
    if (U_FAILURE(status)) throw AutomationError("The encoding '" + encoding + "' is not known");
    return converter;
}

std::string convert(std::string_view bytes, const std::string& encoding) {
    const auto from = openConverter(encoding);
    const auto to = openConverter("UTF-8");
    UErrorCode status = U_ZERO_ERROR;
    ucnv_setToUCallBack(from.get(), UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &status);
    std::array<UChar, 4096> pivot;
    UChar* pivotSource = pivot.data();
    UChar* pivotTarget = pivot.data();
    std::array<char, 16384> chunk;
    std::string text;
    text.reserve(bytes.size());
    const char* source = bytes.data();
    const char* const end = source + bytes.size();
    for (bool first = true;; first = false) {
        char* target = chunk.data();
        status = U_ZERO_ERROR;
        ucnv_convertEx(to.get(), from.get(), &target, chunk.data() + chunk.size(), &source, end, pivot.data(),
                       &pivotSource, &pivotTarget, pivot.data() + pivot.size(), first, true, &status);
        text.append(chunk.data(), target);
        if (status == U_BUFFER_OVERFLOW_ERROR) continue;
        if (U_FAILURE(status)) throw AutomationError("The text is not valid " + encoding);
        return text;
    }
}

std::string validUtf8(std::string bytes) {
    if (const auto odd = findInvalidUtf8(bytes); odd != std::string::npos) {
        throw AutomationError("The text is not valid UTF-8, at byte " + std::to_string(odd + 1));
    }
    return bytes;
}

// The encoding that an XML declaration at the beginning names.
std::optional<std::string> declaredEncoding(std::string_view bytes) {
    if (!bytes.starts_with("<?xml")) return {};
    const auto declaration = bytes.substr(0, bytes.substr(0, 1024).find("?>"));
    auto at = declaration.find("encoding");
    if (at == std::string_view::npos) return {};
    at = declaration.find_first_not_of(" \t\r\n", at + 8);
    if (at == std::string_view::npos || declaration[at] != '=') return {};
    at = declaration.find_first_not_of(" \t\r\n", at + 1);
    if (at == std::string_view::npos || (declaration[at] != '"' && declaration[at] != '\'')) return {};
    const auto end = declaration.find(declaration[at], at + 1);
    if (end == std::string_view::npos) return {};
    return std::string(declaration.substr(at + 1, end - at - 1));
}

// A declaration that was read byte by byte stands in no encoding of wider units, whatever it says.
bool isWideEncoding(std::string_view encoding) {
    return startsWithText(encoding, "UTF-16") || startsWithText(encoding, "UTF-32") ||
           startsWithText(encoding, "UCS-") || startsWithText(encoding, "ISO-10646-UCS");
}

}  // namespace

std::string decodeText(std::string bytes) {
    using namespace std::string_view_literals;
    const std::string_view view = bytes;
    if (view.starts_with("\xEF\xBB\xBF"sv)) {
        bytes.erase(0, 3);
        return validUtf8(std::move(bytes));
    }
    if (view.starts_with("\xFF\xFE"sv)) return convert(view.substr(2), "UTF-16LE");
    if (view.starts_with("\xFE\xFF"sv)) return convert(view.substr(2), "UTF-16BE");
    if (view.starts_with("<\0?\0"sv)) return convert(view, "UTF-16LE");
    if (view.starts_with("\0<\0?"sv)) return convert(view, "UTF-16BE");
    if (const auto encoding = declaredEncoding(view); encoding && !isWideEncoding(*encoding)) {
        if (sameText(*encoding, "UTF-8")) return validUtf8(std::move(bytes));
        return convert(view, *encoding);
    }
    if (findInvalidUtf8(view) == std::string_view::npos) return bytes;
    return convert(view, "windows-1252");
}

}  // namespace quillbox
