#include "headerids/HeaderIds.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>

#include "base/Text.h"
#include "frame/Platform.h"

namespace quillbox {

namespace {

constexpr std::string_view kDefine = "#define ";

// Digits of a base at the beginning of the text. Up to four hexadecimal digits are a signed 16-bit number.
double prefixed(std::string_view digits, int base) {
    std::uint64_t number = 0;
    const auto [stop, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number, base);
    if (error == std::errc::result_out_of_range)
        throw AutomationError("Overflow: the number does not fit 32 bits");
    const auto bits = base == 16 ? 4 * (stop - digits.data()) : 3 * (stop - digits.data());
    if (number <= 0xFFFF && bits <= 18) return static_cast<std::int16_t>(number);
    if (number <= 0xFFFFFFFF) return static_cast<std::int32_t>(number);
    return static_cast<double>(number);
}

int valueOf(std::string_view text) {
    double number = 0;
    if (text.starts_with("0x")) {
        number = prefixed(text.substr(2), 16);
    } else if (text.starts_with("0d")) {
        number = leadingNumber(text.substr(2));
    } else if (startsWithText(text, "&H")) {
        number = prefixed(text.substr(2), 16);
    } else if (startsWithText(text, "&O")) {
        number = prefixed(text.substr(2), 8);
    } else {
        number = leadingNumber(text);
    }
    number = std::nearbyint(number);
    using Limits = std::numeric_limits<int>;
    if (!(number >= Limits::min() && number <= Limits::max())) {
        throw AutomationError("Overflow: the number does not fit 32 bits");
    }
    return static_cast<int>(number);
}

}  // namespace

void HeaderIds::Load(const std::string& filename) {
    Clear();
    const auto file = newFile(filename);
    if (!file->Exists()) throw AutomationError("The file '" + filename + "' does not exist");
    file->Open(kReadWhole);
    for (int number = 1; !file->EndOfFile(); ++number) {
        const auto line = file->ReadLine();
        inside([&] { return filename + ":" + std::to_string(number); }, [&] { loadLine(line); });
    }
    file->Close();
}

void HeaderIds::loadLine(const std::string& line) {
    if (!trimBlanks(line).starts_with(kDefine)) return;
    // Counted in the line as it stands: an indented definition is cut wrongly. It is meant so.
    auto text = trimBlanks(std::string_view(line).substr(kDefine.size()));
    std::string comment;
    if (const auto slash = text.find('/'); slash != std::string_view::npos) {
        if (slash + 2 <= text.size()) comment = trimBlanks(text.substr(slash + 2));
        text = text.substr(0, slash);
    }
    const auto blank = text.find(' ');
    if (blank == std::string_view::npos) {
        throw AutomationError("Invalid argument: a definition needs a blank between its name and its value");
    }
    const auto name = text.substr(0, blank);
    const int value = valueOf(trimBlanks(text.substr(blank)));
    if (!name.empty()) Add(std::string(name), value, comment);
}

int HeaderIds::ItemIndex(const quillbox::Value& index) const {
    if (index.IsBlank()) return 0;
    const auto* text = index.If<std::string>();
    double number = 0;
    ignoringFailures([&] { number = text ? leadingNumber(*text) : toNumber(index); });
    if (number != 0) return number >= 1 && number <= Count() ? static_cast<int>(number) : 0;
    if (!text || text->empty()) return 0;
    int position = 0;
    for (const auto& id : Items()) {
        ++position;
        if (sameText(id->Name, *text)) return position;
    }
    return 0;
}

Ref<HeaderId> HeaderIds::Item(const quillbox::Value& index) const {
    const auto* text = index.If<std::string>();
    if (text && leadingNumber(*text) != 0 && ValidIndex(index)) return mCol.At(index);
    const int position = ItemIndex(index);
    return position ? mCol.At(position) : nullptr;
}

void HeaderIds::Remove(const quillbox::Value& index) {
    if (const int position = ItemIndex(index)) mCol.Remove(position);
}

Ref<HeaderId> HeaderIds::Add(const std::string& name, int value, const std::string& comment,
                             const quillbox::Value& before, const quillbox::Value& after) {
    const auto id = make<HeaderId>();
    id->Name = name;
    id->Value = value;
    id->Comment = comment;
    if (const int position = ItemIndex(before)) {
        mCol.Add(id, {}, position);
    } else if (const int follower = ItemIndex(after)) {
        mCol.Add(id, {}, {}, follower);
    } else {
        mCol.Add(id);
    }
    return id;
}

}  // namespace quillbox
