#pragma once

#include <string>

#include "base/Date.h"

namespace quillbox {

// A date of the project file. Written in one fixed form; the forms that older files hold in the fashion of
// their machine's locale are read too: day, month and year in any usual order and separator, with or without
// a time, "AM" and "PM". Where day and month could be either, the day comes first, unless the time is told
// with "AM" or "PM". Fails for any other text.
Date dateOfLocale(const std::string& text);
std::string localeText(const Date& date);

}  // namespace quillbox
