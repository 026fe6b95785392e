#include "engine/Conditions.h"

#include <optional>
#include <vector>

#include "base/Text.h"

namespace quillbox {

namespace {

using Expression = std::shared_ptr<const ConditionExpression>;
using Facts = ConditionExpression::Facts;

constexpr int kDeepest = 100;

struct Word {
    std::string text;
    bool quoted = false;
};

bool isWhite(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

// None where a quote is not closed.
std::optional<std::vector<Word>> splitWords(std::string_view text) {
    std::vector<Word> words;
    for (std::size_t at = 0; at < text.size();) {
        const char c = text[at];
        if (isWhite(c)) {
            ++at;
        } else if (c == '(' || c == ')') {
            words.push_back({std::string(1, c), false});
            ++at;
        } else if (c == '\'') {
            Word word{"", true};
            for (++at;; ++at) {
                if (at >= text.size()) return std::nullopt;
                if (text[at] != '\'') {
                    word.text += text[at];
                } else if (text.substr(at, 2) == "''") {
                    word.text += text[at++];
                } else {
                    break;
                }
            }
            ++at;
            words.push_back(std::move(word));
        } else {
            const auto end = text.find_first_of(" \t\r\n()'", at);
            words.push_back({std::string(text.substr(at, end - at)), false});
            at = end == std::string_view::npos ? text.size() : end;
        }
    }
    return words;
}

class Operand {
  public:
    enum class Kind { Text, Property, Variable, Page, ItemType };
    Operand(Kind kind, std::string text) : mKind(kind), mText(std::move(text)) {}

    bool IsItemType() const { return mKind == Kind::ItemType; }
    std::string Value(const Facts& facts) const {
        switch (mKind) {
            case Kind::Text:
                return mText;
            case Kind::Property:
                return facts.Property(mText);
            case Kind::Variable:
                return facts.Variable(mText);
            case Kind::Page:
                return booleanText(facts.IsPage(mText));
            case Kind::ItemType:
                return facts.ItemType();
        }
        return {};
    }

  private:
    Kind mKind;
    std::string mText;
};

// An item type is known with its family or without.
bool isType(const std::string& type, const std::string& asked) {
    return sameText(type, asked) || sameText(type.substr(type.find(':') + 1), asked);
}

class Comparison : public ConditionExpression {
  public:
    Comparison(Operand left, std::optional<Operand> right, bool wanted)
        : mLeft(std::move(left)), mRight(std::move(right)), mWanted(wanted) {}
    bool Holds(const Facts& facts) const override { return isEqual(facts) == mWanted; }

  private:
    bool isEqual(const Facts& facts) const {
        const auto left = mLeft.Value(facts);
        if (!mRight) return left.empty();
        const auto right = mRight->Value(facts);
        return mLeft.IsItemType() ? isType(left, right) : sameText(left, right);
    }

    Operand mLeft;
    // None stands for "empty".
    std::optional<Operand> mRight;
    bool mWanted;
};

class Truth : public ConditionExpression {
  public:
    explicit Truth(Operand operand) : mOperand(std::move(operand)) {}
    bool Holds(const Facts& facts) const override {
        const auto value = mOperand.Value(facts);
        return !value.empty() && value != "0" && !sameText(value, "False");
    }

  private:
    Operand mOperand;
};

class Not : public ConditionExpression {
  public:
    explicit Not(Expression inner) : mInner(std::move(inner)) {}
    bool Holds(const Facts& facts) const override { return !mInner->Holds(facts); }

  private:
    Expression mInner;
};

// "and" and "or": ends at the first part that decides.
class Chain : public ConditionExpression {
  public:
    Chain(std::vector<Expression> parts, bool deciding) : mParts(std::move(parts)), mDeciding(deciding) {}
    bool Holds(const Facts& facts) const override {
        for (const auto& part : mParts) {
            if (part->Holds(facts) == mDeciding) return mDeciding;
        }
        return !mDeciding;
    }

  private:
    std::vector<Expression> mParts;
    bool mDeciding;
};

// Each step gives none where the words make no sense.
class Parser {
  public:
    explicit Parser(std::vector<Word> words) : mWords(std::move(words)) {}

    Expression Run() {
        auto whole = alternatives();
        return mNext == mWords.size() ? whole : nullptr;
    }

  private:
    bool takes(std::string_view keyword) {
        if (mNext == mWords.size() || mWords[mNext].quoted || !sameText(mWords[mNext].text, keyword))
            return false;
        ++mNext;
        return true;
    }

    Expression alternatives() { return chain("or", true, &Parser::conjunction); }
    Expression conjunction() { return chain("and", false, &Parser::negation); }

    Expression chain(std::string_view keyword, bool deciding, Expression (Parser::*part)()) {
        std::vector<Expression> parts;
        do {
            parts.push_back((this->*part)());
            if (!parts.back()) return nullptr;
        } while (takes(keyword));
        return parts.size() == 1 ? parts.front() : std::make_shared<Chain>(std::move(parts), deciding);
    }

    Expression negation() {
        bool negated = false;
        while (takes("not")) negated = !negated;
        auto inner = test();
        return inner && negated ? std::make_shared<Not>(inner) : inner;
    }

    Expression test() {
        if (takes("(")) {
            if (++mDepth > kDeepest) return nullptr;
            auto inner = alternatives();
            --mDepth;
            return takes(")") ? inner : nullptr;
        }
        auto left = operand();
        if (!left) return nullptr;
        const bool wanted = takes("is");
        if (!wanted && !takes("isnot")) return std::make_shared<Truth>(std::move(*left));
        if (takes("empty")) return std::make_shared<Comparison>(std::move(*left), std::nullopt, wanted);
        auto right = operand();
        return right ? std::make_shared<Comparison>(std::move(*left), std::move(right), wanted) : nullptr;
    }

    std::optional<Operand> operand() {
        if (mNext == mWords.size()) return std::nullopt;
        if (mWords[mNext].quoted) return Operand(Operand::Kind::Text, mWords[mNext++].text);
        if (takes("itemtype")) return Operand(Operand::Kind::ItemType, "");
        if (takes("variable")) return named(Operand::Kind::Variable);
        if (takes("page")) return named(Operand::Kind::Page);
        if (takes("(") || takes(")")) return std::nullopt;
        for (const auto keyword : kConditionWords) {
            if (sameText(mWords[mNext].text, keyword)) return std::nullopt;
        }
        return Operand(Operand::Kind::Property, mWords[mNext++].text);
    }

    std::optional<Operand> named(Operand::Kind kind) {
        if (mNext == mWords.size() || !mWords[mNext].quoted) return std::nullopt;
        return Operand(kind, mWords[mNext++].text);
    }

    std::vector<Word> mWords;
    std::size_t mNext = 0;
    int mDepth = 0;
};

}  // namespace

std::shared_ptr<const ConditionExpression> parseCondition(std::string_view text) {
    auto words = splitWords(text);
    return words ? Parser(std::move(*words)).Run() : nullptr;
}

}  // namespace quillbox
