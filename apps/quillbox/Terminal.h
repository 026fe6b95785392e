#pragma once

#include <string>
#include <string_view>

namespace quillbox::cli {

// A bar on the last line of the terminal, gone when all is done; nothing where standard error is none.
void showProgress(const std::string& caption, int done, int total);
void clearProgress();

// The text on one line and fit for a terminal: control characters as "%1B".
std::string printable(std::string_view text);

// How many characters a text has.
std::size_t characters(std::string_view text);

}  // namespace quillbox::cli
