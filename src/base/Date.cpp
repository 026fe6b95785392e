#include "base/Date.h"

#include <chrono>
#include <cstdio>

namespace quillbox {

namespace {

using namespace std::chrono;

constexpr sys_days kZero = sys_days{year{1899} / December / day{30}};

std::string digits(int number, int width) {
    char buffer[16];
    std::snprintf(buffer, sizeof buffer, "%0*d", width, number);
    return buffer;
}

}  // namespace

std::optional<Date> Date::From(const Parts& p) {
    if (p.year < 1 || p.year > 9999 || p.month < 1 || p.month > 12 || p.day < 1 || p.day > 31) return {};
    const year_month_day day{year{p.year}, month(static_cast<unsigned>(p.month)),
                             std::chrono::day(static_cast<unsigned>(p.day))};
    if (!day.ok()) return {};
    if (p.hour < 0 || p.hour > 23 || p.minute < 0 || p.minute > 59 || p.second < 0 || p.second > 59)
        return {};
    if (p.microsecond < 0 || p.microsecond > 999999) return {};
    Date date;
    const auto time = hours(p.hour) + minutes(p.minute) + seconds(p.second) + microseconds(p.microsecond);
    date.mMicroseconds = microseconds(sys_days(day) - kZero + time).count();
    return date;
}

Date::Parts Date::Split() const {
    const auto sinceZero = microseconds(mMicroseconds);
    const auto whole = floor<days>(sinceZero);
    const year_month_day date{kZero + whole};
    const hh_mm_ss time{sinceZero - whole};
    return {int(date.year()),
            int(unsigned(date.month())),
            int(unsigned(date.day())),
            int(time.hours().count()),
            int(time.minutes().count()),
            int(time.seconds().count()),
            int(time.subseconds().count())};
}

Date Date::Midnight() const {
    Date date;
    date.mMicroseconds = microseconds(floor<days>(microseconds(mMicroseconds))).count();
    return date;
}

std::int64_t Date::SecondsSince(const Date& other) const {
    return (mMicroseconds - other.mMicroseconds) / 1'000'000;
}

std::string Date::Format(std::string_view pattern) const {
    const Parts parts = Split();
    std::string text;
    while (!pattern.empty()) {
        const auto two = pattern.substr(0, 2);
        std::size_t taken = 2;
        if (pattern.substr(0, 4) == "yyyy") {
            text += digits(parts.year, 4);
            taken = 4;
        } else if (two == "mm") {
            text += digits(parts.month, 2);
        } else if (two == "dd") {
            text += digits(parts.day, 2);
        } else if (two == "hh") {
            text += digits(parts.hour, 2);
        } else if (two == "nn") {
            text += digits(parts.minute, 2);
        } else if (two == "ss") {
            text += digits(parts.second, 2);
        } else {
            text += pattern.front();
            taken = 1;
        }
        pattern.remove_prefix(taken);
    }
    return text;
}

}  // namespace quillbox
