#pragma once

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
    class Facts {
      public:
        virtual ~Facts() = default;
        virtual std::string Property(const std::string& name) const = 0;
        virtual std::string Variable(const std::string& name) const = 0;
        virtual bool IsPage(const std::string& name) const = 0;
        virtual std::string ItemType() const = 0;
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
