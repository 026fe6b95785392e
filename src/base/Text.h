#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/Utf8.h"

namespace quillbox {

// All text is UTF-8. What says "same" or "any case" goes by Unicode case folding.
bool sameText(std::string_view a, std::string_view b);
bool startsWithText(std::string_view text, std::string_view beginning);
bool endsWithText(std::string_view text, std::string_view ending);

// One form for all spellings that count as the same key.
std::string foldKey(std::string_view text);

std::string lower(std::string_view text);
std::string upper(std::string_view text);

// The first character, not the first byte; empty for empty text.
std::string firstCharacter(std::string_view text);

// Takes blanks off both ends; other white space stays.
std::string_view trimBlanks(std::string_view text);

// Empty text gives no pieces.
std::vector<std::string> split(std::string_view text, std::string_view delimiter);
std::string join(const std::vector<std::string>& pieces, std::string_view delimiter);

std::string replaceAll(std::string_view text, std::string_view what, std::string_view with);
std::string replaceAllText(std::string_view text, std::string_view what, std::string_view with);

// "True" and "False", as files hold them.
std::string booleanText(bool value);

// The place of a text in alphabetical order: compares by bytes as the texts stand in a list for readers.
std::string sortKey(std::string_view text);

// The number at the beginning of the text, 0 where there is none: the way older files are read.
double leadingNumber(std::string_view text);

// A whole text that is a 32-bit number; fails for any other.
int integerOf(std::string_view text);

}  // namespace quillbox
