#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace quillbox {

// The conditions of tags: "Title isnot empty and not itemtype is 'topic'". A name stands for a property of
// the item, a text in single quotes for itself ('' is one quote), "variable 'NAME'" for a variable, and "page
// 'NAME'" is true where the build writes a page of that name. Comparing ignores case. A name alone is true
// unless it is empty, False or 0.
class ConditionExpression {
  public:
    // Where a condition gets its values.
    struct Facts {
        std::function<std::string(const std::string&)> property;
        std::function<std::string(const std::string&)> variable;
        // "True" or "False".
        std::function<std::string(const std::string&)> page;
        std::string itemType;
    };

    virtual ~ConditionExpression() = default;
    virtual bool Holds(const Facts& facts) const = 0;
};

// The words with a meaning of their own.
inline constexpr std::string_view kConditionWords[] = {"is",    "isnot",    "and",      "or",  "not",
                                                       "empty", "itemtype", "variable", "page"};

// None for a text that is no condition.
std::shared_ptr<const ConditionExpression> parseCondition(std::string_view text);

}  // namespace quillbox
