#include "project/LocaleDate.h"

#include <vector>

#include "base/AutomationError.h"
#include "base/Text.h"

namespace quillbox {

namespace {

struct Number {
    int value = 0;
    std::size_t digits = 0;
};

std::vector<Number> numbersOf(const std::string& text) {
    std::vector<Number> numbers;
    bool within = false;
    for (const char c : text) {
        if (c < '0' || c > '9') {
            within = false;
            continue;
        }
        if (!within) numbers.emplace_back();
        within = true;
        if (++numbers.back().digits > 4) return {};
        numbers.back().value = numbers.back().value * 10 + (c - '0');
    }
    return numbers;
}

bool contains(const std::string& text, const char* word) {
    return lower(text).find(word) != std::string::npos;
}

}  // namespace

Date dateOfLocale(const std::string& text) {
    const auto numbers = numbersOf(text);
    const bool am = contains(text, "am");
    const bool pm = contains(text, "pm");
    if (numbers.size() == 3 || numbers.size() == 5 || numbers.size() == 6) {
        Date::Parts parts;
        if (numbers[0].digits == 4) {
            parts.year = numbers[0].value;
            parts.month = numbers[1].value;
            parts.day = numbers[2].value;
        } else {
            const bool monthFirst = (am || pm || numbers[1].value > 12) && numbers[0].value <= 12;
            parts.day = numbers[monthFirst ? 1 : 0].value;
            parts.month = numbers[monthFirst ? 0 : 1].value;
            parts.year = numbers[2].value;
            if (numbers[2].digits == 2) parts.year += parts.year < 30 ? 2000 : 1900;
        }
        if (numbers.size() > 3) {
            parts.hour = numbers[3].value;
            parts.minute = numbers[4].value;
            if (numbers.size() > 5) parts.second = numbers[5].value;
            if (pm && parts.hour < 12) parts.hour += 12;
            if (am && parts.hour == 12) parts.hour = 0;
        }
        if (const auto date = Date::From(parts)) return *date;
    }
    throw AutomationError("'" + text + "' is not a date");
}

std::string localeText(const Date& date) { return date.Format("dd/mm/yyyy hh:nn:ss"); }

}  // namespace quillbox
