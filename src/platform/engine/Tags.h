#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/engine/Providers.h"

namespace quillbox {

// What somebody worked out about a tag, to have it at hand the next time.
struct TagNotes {
    virtual ~TagNotes() = default;
};

// A tag of a text that was split. It stays as it is, so its attributes stand in a table of their own too,
// where they are found at once however often they are asked for.
class SplitTag final : public Element {
  public:
    // The type comes first.
    void Add(std::string_view name, std::string_view value);

    std::string type;
    // By folded names.
    std::vector<std::pair<std::string, std::string>> attributes;
    // Of the project's data provider and of the common one. None at first.
    mutable std::unique_ptr<const TagNotes> notes, commonNotes;
};
// None for a tag that a caller made up.
const SplitTag* asSplitTag(const Element& tag);

// Reading the attributes of any tag, by names in lower case.
bool hasAttribute(const Element& tag, std::string_view name);
// Empty for an attribute that is not there.
std::string attributeText(const Element& tag, std::string_view name);
// In lower case.
std::string tagType(const Element& tag);

// A stretch of template text: plain text, or one tag.
struct TagPiece {
    // Plain text; of a tag, the tag as written with both its "%%".
    std::string text;
    // None for plain text.
    Ref<Element> element;
    // Where the piece begins in the text that was split.
    int line = 1;
};
using TagPieces = std::vector<TagPiece>;

// Splits template text at its tags. With `replaceInQuotes` False, tags inside double quotes are plain text
// until a ReplaceInQuotes tag says otherwise; such tags are obeyed here and leave nothing behind. Fails for a
// tag that names an attribute twice.
TagPieces splitTags(std::string_view text, bool replaceInQuotes = false);

// Appends the text with the value of each tag in its place; a value that begins "!UNCRECOGNISED" leaves the
// tag as written. Fails when expansions nest deeper than 100 levels or never seem to end.
void expandTags(const TagPieces& pieces, const std::function<std::string(const TagPiece&)>& valueOf,
                std::string& out);

}  // namespace quillbox
