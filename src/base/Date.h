#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quillbox {

// Local date and time without a zone. The zero is 1899-12-30 00:00:00.
class Date {
  public:
    struct Parts {
        int year = 1899, month = 12, day = 30, hour = 0, minute = 0, second = 0, microsecond = 0;
    };

    Date() = default;

    // Empty where the parts name no day or time between the years 1 and 9999.
    static std::optional<Date> From(const Parts& parts);

    Parts Split() const;
    bool IsZero() const { return mMicroseconds == 0; }
    Date Midnight() const;
    std::int64_t SecondsSince(const Date& other) const;

    // Replaces "yyyy", "mm", "dd", "hh", "nn" and "ss" of a pattern by the parts, with leading zeros.
    std::string Format(std::string_view pattern) const;

    auto operator<=>(const Date&) const = default;

  private:
    std::int64_t mMicroseconds = 0;
};

}  // namespace quillbox
