#include "platform/engine/Tags.h"

#include <algorithm>
#include <typeinfo>

#include "base/AutomationError.h"
#include "base/Text.h"

namespace quillbox {

namespace {

constexpr std::string_view kDelimiter = "%%";
constexpr int kDeepest = 100;
constexpr long kMostTags = 10'000'000;
// No honest text nests like this; one that doubles at each level gets here soon.
constexpr int kDeep = 10;
constexpr long kMostDeepTags = 100'000;
constexpr std::size_t kLongest = std::size_t{1} << 30;

std::size_t findOutsideQuotes(std::string_view text, std::size_t from) {
    bool quoted = false;
    auto start = from;
    for (auto at = text.find(kDelimiter, from); at != std::string_view::npos;
         at = text.find(kDelimiter, at + 1)) {
        const auto between = text.substr(start, at - start);
        if (std::count(between.begin(), between.end(), '"') % 2 != 0) quoted = !quoted;
        if (!quoted) return at;
        start = at;
    }
    return std::string_view::npos;
}

std::size_t findDelimiter(std::string_view text, std::size_t from, bool inQuotes) {
    return inQuotes ? text.find(kDelimiter, from) : findOutsideQuotes(text, from);
}

std::string_view withoutQuotes(std::string_view value) {
    if (value.starts_with('"')) value.remove_prefix(1);
    if (value.ends_with('"')) value.remove_suffix(1);
    return value;
}

void addAttribute(SplitTag& element, std::string_view piece) {
    const auto sign = piece.find('=');
    if (sign == std::string_view::npos) return;
    const auto rest = piece.substr(sign + 1);
    const auto value = withoutQuotes(rest.substr(0, rest.find('=')));
    element.Add(piece.substr(0, sign), value);
}

Ref<SplitTag> parseTag(std::string_view tag) {
    auto element = make<SplitTag>();
    const auto colon = tag.find(':');
    element->Add("type", tag.substr(0, colon));
    if (colon == std::string_view::npos) return element;
    for (const auto& piece : split(tag.substr(colon + 1), ",")) addAttribute(*element, piece);
    return element;
}

class Splitter {
  public:
    Splitter(std::string_view text, bool replaceInQuotes) : mText(text), mInQuotes(replaceInQuotes) {}

    TagPieces Run() {
        std::size_t start = 0;
        for (;;) {
            const auto open = findDelimiter(mText, start, mInQuotes);
            if (open == std::string_view::npos) break;
            const auto inside = open + kDelimiter.size();
            const auto close = findDelimiter(mText, inside, mInQuotes);
            if (close == std::string_view::npos) break;
            const auto end = close + kDelimiter.size();
            addText(mText.substr(start, open - start));
            addTag(mText.substr(inside, close - inside), mText.substr(open, end - open));
            start = end;
        }
        addText(mText.substr(start));
        return std::move(mPieces);
    }

  private:
    void addText(std::string_view text) {
        if (text.empty()) return;
        mPieces.push_back({std::string(text), nullptr, mLine});
        count(text);
    }

    void addTag(std::string_view tag, std::string_view written) {
        Ref<SplitTag> element;
        try {
            element = parseTag(tag);
        } catch (const AutomationError& error) {
            throw AutomationError("Line " + std::to_string(mLine) + ": the tag " + std::string(written) +
                                  " cannot be read: " + error.Description());
        }
        if (sameText(tag.substr(0, tag.find(':')), "ReplaceInQuotes")) {
            if (hasAttribute(*element, "value"))
                mInQuotes = sameText(attributeText(*element, "value"), "True");
        } else {
            mPieces.push_back({std::string(written), element, mLine});
        }
        count(written);
    }

    void count(std::string_view text) {
        mLine += static_cast<int>(std::count(text.begin(), text.end(), '\n'));
    }

    std::string_view mText;
    bool mInQuotes;
    int mLine = 1;
    TagPieces mPieces;
};

// What is being expanded on this thread, from the outermost text to the innermost.
struct Expansion {
    int depth = 0;
    long tags = 0, deepTags = 0;

    void Count() {
        ++tags;
        if (depth > kDeep) ++deepTags;
        if (tags > kMostTags || deepTags > kMostDeepTags)
            throw AutomationError("The expansion of a text never ends");
    }
};
thread_local Expansion running;

class Level {
  public:
    Level() : mExpansion(running) {
        if (mExpansion.depth == kDeepest) {
            throw AutomationError(
                "Tags expand into tags more than 100 levels deep: a variable or scrap contains itself");
        }
        if (mExpansion.depth++ == 0) mExpansion.tags = mExpansion.deepTags = 0;
    }
    ~Level() { --mExpansion.depth; }
    Level(const Level&) = delete;
    Level& operator=(const Level&) = delete;

    void CountTag() { mExpansion.Count(); }

  private:
    Expansion& mExpansion;
};

const std::string* find(const SplitTag& tag, std::string_view name) {
    for (const auto& [known, value] : tag.attributes) {
        if (known == name) return &value;
    }
    return nullptr;
}

}  // namespace

const SplitTag* asSplitTag(const Element& tag) {
    return typeid(tag) == typeid(SplitTag) ? static_cast<const SplitTag*>(&tag) : nullptr;
}

void SplitTag::Add(std::string_view name, std::string_view value) {
    Attributes->Add(Value(value), Value(name));
    if (attributes.empty()) type = lower(value);
    if (!name.empty()) attributes.emplace_back(foldKey(name), value);
}

bool hasAttribute(const Element& tag, std::string_view name) {
    const auto* split = asSplitTag(tag);
    return split ? find(*split, name) != nullptr : tag.Attributes->Find(Value(name)) != nullptr;
}

std::string attributeText(const Element& tag, std::string_view name) {
    if (const auto* split = asSplitTag(tag)) {
        const auto* value = find(*split, name);
        return value ? *value : std::string();
    }
    const auto* value = tag.Attributes->Find(Value(name));
    return value ? toText(*value) : std::string();
}

std::string tagType(const Element& tag) {
    const auto* split = asSplitTag(tag);
    return split ? split->type : lower(attributeText(tag, "type"));
}

TagPieces splitTags(std::string_view text, bool replaceInQuotes) {
    return Splitter(text, replaceInQuotes).Run();
}

void expandTags(const TagPieces& pieces, const std::function<std::string(const TagPiece&)>& valueOf,
                std::string& out) {
    Level level;
    // A value is as long as its tag, more or less.
    std::size_t size = out.size();
    for (const auto& piece : pieces) size += piece.text.size();
    if (size > out.capacity()) out.reserve(std::max(size, out.capacity() * 2));
    for (const auto& piece : pieces) {
        if (!piece.element) {
            out += piece.text;
            continue;
        }
        level.CountTag();
        const auto value = valueOf(piece);
        out += value.starts_with("!UNCRECOGNISED") ? piece.text : value;
        if (out.size() > kLongest) throw AutomationError("An expanded text is longer than 1 GiB");
    }
}

}  // namespace quillbox
