#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/sql/numbers.h"
#include "platform/sql/sql_text.h"

namespace sql::writing {

// How one store spells values.
class ValueSpelling {
 public:
    // `maxNesting`: levels of parentheses that the store's parser surely takes.
    explicit ValueSpelling(int maxNesting) : maxNesting_(maxNesting) {}
    virtual ~ValueSpelling() = default;
    ValueSpelling(const ValueSpelling&) = delete;
    ValueSpelling& operator=(const ValueSpelling&) = delete;

    // Parentheses around what binds less tightly than `least`; `nesting` grows to the levels inside.
    // Throws SyntaxError when the store could not read it.
    std::string wrapped(const Sql& sql, int least, int& nesting, std::size_t position) const;

    // Whether the store surely reads so many levels of parentheses.
    bool takes(int nesting) const { return nesting <= maxNesting_; }

    // A value of the engine: Yes/No as 0 and -1. And a Yes/No or Null as what can stand behind WHERE.
    virtual Sql value(Sql sql) const = 0;
    virtual Sql condition(Sql sql) const = 0;
    virtual std::string real(double number) const = 0;
    virtual std::string text(std::string_view text) const = 0;
    virtual std::string now(Numbers& numbers) const = 0;

    // A value, no text, in the width that the engine reckons in.
    virtual Sql number(Sql sql) const = 0;
    // `e` is a division by `/`, `\` or Mod: the first never cuts off what stands behind the point, the others
    // round their operands to whole numbers first. Division by zero is Null.
    virtual Sql quotient(const Expression& e, const Sql& left, const Sql& right) const = 0;
    // A value that is no date as an operand of `&`, and how it binds there: Null as ''.
    virtual Sql joinedText(const Sql& sql) const = 0;
    // One operand of =, <, BETWEEN or IN, brought to one measure with the others. `collating`: they are
    // texts, and this is the one operand that tells how they compare, where one is enough.
    virtual std::string compared(const Sql& sql, bool collating, int least, int& nesting,
                                 std::size_t position) const = 0;
    // A number as a column of type YesNo, Long, Single, Currency or Text keeps it.
    virtual std::string stored(const Sql& number, Type type, std::size_t position) const = 0;

 private:
    int maxNesting_;
};

}  // namespace sql::writing
