#include "adapters/html/Reading.h"

#include <algorithm>
#include <string>
#include <unordered_set>
#include <utility>

#include "base/AutomationError.h"

namespace quillbox::html {

namespace {

constexpr std::string_view kEndTags = "</body></html>";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// What costs the library more than its share. No page that somebody wrote comes near.
constexpr std::size_t kFreeNodes = 100'000;
constexpr std::size_t kNodesPerToken = 4;
constexpr std::size_t kMostNames = 10'000;
constexpr std::size_t kMostRootAttributes = 10'000;

const char* const kTooDeep = "The HTML nests deeper than 500 elements";

bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

// The library looks unknown names up one by one.
void checkNames(std::string_view source) {
    if (source.size() < 4 * kMostNames) return;
    std::unordered_set<std::string_view> names;
    for (auto at = source.find('<'); at != std::string_view::npos; at = source.find('<', at)) {
        ++at;
        if (at < source.size() && source[at] == '/') ++at;
        if (at >= source.size() || !isLetter(source[at])) continue;
        names.insert(source.substr(at, source.find_first_of(" \t\r\n\f/>", at) - at));
        if (names.size() > kMostNames)
            throw AutomationError("The HTML has more than 10,000 names of elements");
    }
}

Token::Kind kindOf(myhtml_token_node_t& token) {
    switch (myhtml_token_node_tag_id(&token)) {
        case MyHTML_TAG__TEXT:
            return Token::Kind::Text;
        case MyHTML_TAG__COMMENT:
            return Token::Kind::Comment;
        case MyHTML_TAG__DOCTYPE:
            return Token::Kind::Doctype;
        default:
            return myhtml_token_node_is_close(&token) ? Token::Kind::End : Token::Kind::Start;
    }
}

bool isPre(myhtml_tag_id_t id) {
    return id == MyHTML_TAG_PRE || id == MyHTML_TAG_LISTING || id == MyHTML_TAG_TEXTAREA;
}

myhtml_namespace_t spaceOf(Space space) {
    switch (space) {
        case Space::Svg:
            return MyHTML_NAMESPACE_SVG;
        case Space::MathMl:
            return MyHTML_NAMESPACE_MATHML;
        default:
            return MyHTML_NAMESPACE_HTML;
    }
}

}  // namespace

template <class Parse>
void Reading::Run(std::size_t size, Parse&& parse) {
    checkNames(mMarkup.source);
    mTokens.clear();
    mMarkup.text.reserve(size);
    if (mMarkup.source.starts_with(kByteOrderMark)) mOffset = kByteOrderMark.size();
    myhtml_callback_after_token_done_set(
        &mTree,
        [](myhtml_tree_t*, myhtml_token_node_t* token, void* reading) -> void* {
            static_cast<Reading*>(reading)->Take(*token);
            return reading;  // what the next call is given
        },
        this);
    myhtml_callback_tree_node_insert_set(
        &mTree,
        [](myhtml_tree_t*, myhtml_tree_node_t* node, void* reading) {
            static_cast<Reading*>(reading)->Inserted(*node);
        },
        this);
    const auto status = parse(mMarkup.source.data() + mOffset, size - mOffset);
    if (mFailure) throw AutomationError(mFailure);
    if (status != MyHTML_STATUS_OK)
        throw AutomationError("The HTML parser failed (" + std::to_string(status) + ")");
    SettleText();
}

void Reading::Document() {
    const auto parse = [&](const char* text, std::size_t size) {
        return myhtml_parse_single(&mTree, MyENCODING_UTF_8, text, size);
    };
    const auto size = mMarkup.source.size();
    Run(size, parse);
    if (!SwallowsEndTags()) return;
    StartAgain();
    Run(size - kEndTags.size(), parse);
    AddEndTags(size - kEndTags.size());
}

bool Reading::SwallowsEndTags() const {
    if (!mMarkup.source.ends_with(kEndTags)) return false;
    const auto count = mTokens.size();
    return count < 2 || mTokens[count - 1].name != "html" || mTokens[count - 2].name != "body" ||
           mTokens[count - 2].end != mTokens[count - 1].begin ||
           mTokens[count - 1].end != mMarkup.source.size();
}

void Reading::StartAgain() {
    mMarkup.text.clear();
    mJoined.clear();
    mJoinedCount = 0;
    mLastInserted = nullptr;
    mAfterPre = false;
    mInserted = mRootAttributes = 0;
}

void Reading::AddEndTags(std::size_t begin) {
    for (const auto* name : {"body", "html"}) {
        Token tag;
        tag.kind = Token::Kind::End;
        tag.name = name;
        tag.begin = static_cast<std::uint32_t>(begin);
        tag.end = tag.begin + static_cast<std::uint32_t>(kEndTags.size() / 2);
        mTokens.push_back(tag);
        begin = tag.end;
    }
}

void Reading::Fragment(std::string_view name, Space space) {
    const auto known = myhtml_tag_id_by_name(&mTree, name.data(), name.size());
    const myhtml_tag_id_t id = known == MyHTML_TAG__UNDEF ? myhtml_tag_id_t{MyHTML_TAG_DIV} : known;
    Run(mMarkup.source.size(), [&](const char* text, std::size_t size) {
        return myhtml_parse_fragment_single(&mTree, MyENCODING_UTF_8, text, size, id, spaceOf(space));
    });
}

void Reading::Take(myhtml_token_node_t& token) {
    const auto id = myhtml_token_node_tag_id(&token);
    SettleText();
    if (id == MyHTML_TAG__END_OF_FILE || mFailure) return;

    const auto position = myhtml_token_node_element_position(&token);
    const auto begin = position.begin + mOffset;
    const auto end = begin + position.length;
    const bool inOrder = begin >= (mTokens.empty() ? 0 : mTokens.back().end) && begin < end;
    if (!inOrder || end > mMarkup.source.size()) return;

    Token taken;
    taken.kind = kindOf(token);
    taken.begin = static_cast<std::uint32_t>(begin);
    taken.end = static_cast<std::uint32_t>(end);
    if (taken.kind == Token::Kind::Text) TakeText(token, taken);
    if (taken.kind == Token::Kind::End) {
        std::size_t length = 0;
        const auto* name = myhtml_tag_name_by_id(&mTree, id, &length);
        taken.name = {name, length};
    }
    mAfterPre = taken.kind == Token::Kind::Start && isPre(id);
    if (taken.kind == Token::Kind::Start && (id == MyHTML_TAG_BODY || id == MyHTML_TAG_HTML)) {
        // Each further one is compared with all attributes of the first.
        for (auto* one = myhtml_token_node_attribute_first(&token); one; one = myhtml_attribute_next(one)) {
            ++mRootAttributes;
        }
        if (mRootAttributes > kMostRootAttributes)
            Stop("The HTML has more than 10,000 attributes at its body");
    }
    mTokens.push_back(taken);
}

void Reading::TakeText(myhtml_token_node_t& token, Token& text) {
    mOpenText = &token;
    auto* string = myhtml_token_node_string(&token);
    const std::string_view decoded =
        string && string->data ? std::string_view(string->data, string->length) : std::string_view();
    // The first line end of a preformatted element is no part of it.
    const bool skips = mAfterPre && decoded.starts_with('\n');
    text.textBegin = static_cast<std::uint32_t>(mMarkup.text.size());
    mMarkup.text += decoded.substr(skips ? 1 : 0);
    text.textEnd = static_cast<std::uint32_t>(mMarkup.text.size());
    text.blank = isBlank(decoded);
    if (decoded.empty()) return;
    // The text is ours now. The library keeps none of it, as joining texts costs it time and memory by the
    // square. The first line end of a preformatted element is left, for the library to take away.
    const bool stays = mAfterPre && string->length > 1;
    if (mAfterPre && !stays) return;
    string->length = stays ? 1 : 0;
    if (stays) string->data[0] = 'x';
    string->data[string->length] = 0;
}

void Reading::Inserted(myhtml_tree_node_t& node) {
    mLastInserted = &node;
    auto* const token = myhtml_node_token(&node);
    if (token && token == mOpenText) mOpenText = nullptr;
    if (token && token == mSettledText && mSettledPlace) {
        mJoined[mSettledPlace].pop_back();
        --mJoinedCount;
    }
    auto* const parent = myhtml_node_parent(&node);
    const auto depth = parent ? reinterpret_cast<std::size_t>(myhtml_node_get_data(parent)) + 1 : 1;
    myhtml_node_set_data(&node, reinterpret_cast<void*>(depth));
    if (depth > kDeepest + 1) Stop(kTooDeep);  // a text may stand in the deepest element
    if (++mInserted > kFreeNodes + kNodesPerToken * mTokens.size()) {
        Stop("The HTML repeats too many elements that were never closed");
    }
}

// A text without a node was joined to another, or passed over.
void Reading::SettleText() {
    mSettledText = std::exchange(mOpenText, nullptr);
    mSettledPlace = mSettledText ? PlaceOfText() : nullptr;
    if (!mSettledPlace) return;
    mJoined[mSettledPlace].push_back(mTokens.size() - 1);
    ++mJoinedCount;
}

myhtml_tree_node_t* Reading::PlaceOfText() const {
    if (!mLastInserted) return nullptr;
    if (myhtml_node_tag_id(mLastInserted) == MyHTML_TAG__TEXT) return mLastInserted;
    if (mTokens.back().blank) return nullptr;
    // Text in a table, outside its cells, goes in front of the table.
    for (auto* at = mLastInserted; at; at = myhtml_node_parent(at)) {
        if (myhtml_node_tag_id(at) != MyHTML_TAG_TABLE) continue;
        auto* const before = myhtml_node_prev(at);
        return before && myhtml_node_tag_id(before) == MyHTML_TAG__TEXT ? before : nullptr;
    }
    return nullptr;
}

void Reading::Stop(const char* failure) {
    if (mFailure) return;
    mFailure = failure;
    constexpr int kTokensOnly =
        MyHTML_TREE_PARSE_FLAGS_WITHOUT_BUILD_TREE | MyHTML_TREE_PARSE_FLAGS_WITHOUT_PROCESS_TOKEN;
    myhtml_tree_parse_flags_set(&mTree, static_cast<myhtml_tree_parse_flags_t>(kTokensOnly));
}

Token* Reading::TokenOf(myhtml_tree_node_t& node) {
    auto* const token = myhtml_node_token(&node);
    if (!token) return nullptr;
    const auto begin = myhtml_token_node_element_position(token).begin + mOffset;
    for (int nearby = 0; nearby < 4 && mCursor < mTokens.size(); ++nearby, ++mCursor) {
        if (mTokens[mCursor].begin == begin) return &mTokens[mCursor++];
    }
    const auto found =
        std::lower_bound(mTokens.begin(), mTokens.end(), begin,
                         [](const Token& one, std::size_t wanted) { return one.begin < wanted; });
    if (found == mTokens.end() || found->begin != begin) return nullptr;
    mCursor = static_cast<std::size_t>(found - mTokens.begin()) + 1;
    return &*found;
}

const std::vector<std::size_t>* Reading::JoinedTo(myhtml_tree_node_t& text) const {
    if (mJoined.empty()) return nullptr;
    const auto found = mJoined.find(&text);
    return found == mJoined.end() ? nullptr : &found->second;
}

}  // namespace quillbox::html
