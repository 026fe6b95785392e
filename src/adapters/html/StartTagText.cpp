#include "adapters/html/CleanText.h"
#include "adapters/html/Writer.h"

namespace quillbox::html {

namespace {

// An attribute in the text of a start tag, such as `HREF = 'x'`.
struct Written {
    std::size_t begin;
    std::size_t nameEnd;
    std::size_t end;
    bool lacksValue;  // nothing behind its "="
};

constexpr std::string_view kSpace = " \t\r\n\f";

std::size_t skip(std::string_view text, std::size_t at, std::string_view what) {
    const auto found = text.find_first_not_of(what, at);
    return found == std::string_view::npos ? text.size() : found;
}

std::size_t seek(std::string_view text, std::size_t at, std::string_view what) {
    const auto found = text.find_first_of(what, at);
    return found == std::string_view::npos ? text.size() : found;
}

std::size_t endOfValue(std::string_view tag, std::size_t at) {
    if (at < tag.size() && (tag[at] == '"' || tag[at] == '\'')) {
        const auto end = tag.find(tag[at], at + 1);
        return end == std::string_view::npos ? tag.size() : end + 1;
    }
    return seek(tag, at, " \t\r\n\f>");
}

// The attributes in a tag, cut as an HTML parser cuts them. `at` moves behind the last.
bool nextAttribute(std::string_view tag, std::size_t& at, Written& found) {
    const auto begin = skip(tag, at, " \t\r\n\f/");
    if (begin >= tag.size() || tag[begin] == '>') return false;
    found.begin = begin;
    found.nameEnd = seek(tag, begin + 1, " \t\r\n\f/>=");
    found.end = found.nameEnd;
    found.lacksValue = false;
    const auto equals = skip(tag, found.nameEnd, kSpace);
    if (equals < tag.size() && tag[equals] == '=') {
        const auto value = skip(tag, equals + 1, kSpace);
        found.end = endOfValue(tag, value);
        found.lacksValue = found.end == value;
    }
    at = found.end;
    return true;
}

void write(std::string& text, std::string_view name, const std::string& value) {
    text.append(name).append("=\"").append(escapedValue(value)).append("\"");
}

std::string wholeTag(const StartTag& tag, std::string_view name) {
    std::string text("<");
    text += name;
    for (const auto& attribute : tag.attributes) write(text += ' ', attribute.name, attribute.value);
    return text += '>';
}

}  // namespace

std::string startTagText(const StartTag& tag, std::string_view name, std::string_view source) {
    if (source.empty()) return wholeTag(tag, name);
    std::string text;
    std::size_t done = 0;
    std::size_t at = seek(source, 1, " \t\r\n\f/>");
    Written written{};
    auto attribute = tag.attributes.begin();
    while (attribute != tag.attributes.end() && nextAttribute(source, at, written)) {
        const auto spelled = source.substr(written.begin, written.nameEnd - written.begin);
        if (!sameName(spelled, attribute->name)) continue;  // a second of the same name
        if (attribute->changed) {
            text += source.substr(done, written.begin - done);
            write(text, spelled, attribute->value);
            done = written.end;
        }
        ++attribute;
    }
    text += source.substr(done, at - done);
    // What is appended must not become the value.
    if (written.lacksValue && done < at && attribute != tag.attributes.end()) text += "\"\"";
    for (; attribute != tag.attributes.end(); ++attribute) {
        if (attribute->changed) write(text += ' ', attribute->name, attribute->value);
    }
    text += source.substr(at);
    if (!text.ends_with('>')) text += '>';
    return text;
}

}  // namespace quillbox::html
