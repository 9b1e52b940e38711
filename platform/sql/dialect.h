#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/sql/ast.h"
#include "platform/sql/sql_text.h"
#include "platform/sql/writer.h"

namespace sql::writing {

// What the texts of one statement refer to by number.
class Numbers {
 public:
    explicit Numbers(int idSetBase) : idSetBase_(idSetBase) {}

    // The number of a set in "idset(N)": the same again for the same set.
    int addIdSet(const IdSetPtr& ids);
    // The number of a parameter, from 1: the same again for the same set and for Now.
    int addParameter(const Parameter& parameter);
    // The first number that is left for row keys.
    int firstKey() const { return static_cast<int>(parameters_.size()) + 1; }

    const std::vector<IdSetPtr>& idSets() const { return idSets_; }
    const std::vector<Parameter>& parameters() const { return parameters_; }

 private:
    int idSetBase_;
    std::vector<IdSetPtr> idSets_;
    std::vector<Parameter> parameters_;
};

// What a store takes, and the small words that differ.
struct Facts {
    int maxNesting;             // levels of parentheses that its parser surely takes
    std::size_t chainLength;    // terms that one AND or OR may join
    std::size_t maxColumns;     // of a SELECT, and terms of an order
    bool joinNeedsCondition;    // INNER JOIN cannot stand without ON
    std::size_t linkedColumns;  // with which rows can be followed by their links; 0: not at all
    bool setsInOrder;           // rows looked up by a set come in the order of its numbers
    bool listsAbsentRows;       // a list of keys may also stand for rows that an outer join has none of
    std::string_view oneGroup;  // behind GROUP BY: all rows there are, and no group where there are none
    std::string_view dateDiff;  // the function of this name
    // The function that does a whole calculation of floating numbers; empty: there is none.
    std::string_view calculate = {};
};

// How one store spells what the engine's statements ask for. Everything that two stores write alike stands in
// the writers that use it.
class Dialect {
 public:
    explicit Dialect(const Facts& facts) : facts_(facts) {}
    virtual ~Dialect() = default;
    Dialect(const Dialect&) = delete;
    Dialect& operator=(const Dialect&) = delete;

    const Facts& facts() const { return facts_; }
    // Parentheses around what binds less tightly than `least`; `nesting` grows to the levels inside.
    // Throws SyntaxError when the store could not read it.
    std::string wrapped(const Sql& sql, int least, int& nesting, std::size_t position) const;

    // A table, its rows, and what is bound to them. Throws SizeError for names that the store does not take.
    virtual std::string table(const TableInfo& table) const = 0;
    virtual std::string rowKey(const TableInfo& table, const std::string& alias) const = 0;
    virtual std::string keyParameter(int number) const = 0;
    // `key` is the parameter; one that may be Null also where both are.
    virtual std::string isKeyParameter(const std::string& key, int number, bool nullable) const = 0;

    // What the row of this counter (`number` is an expression) holds in a Long field, or the counter itself
    // where the field is ""; Null where there is no such row.
    virtual std::string link(const TableInfo&, const std::string&, const std::string&) const { return {}; }

    // Lists of row keys, one for each source from the parameter `first` on, as a source of rows "k" with the
    // keys k1, k2 ... and the place n in the list, from 1; and the condition that a source's `key` is the one
    // of its list.
    virtual std::string keyLists(int first, std::size_t sources) const = 0;
    virtual std::string isListedKey(const std::string& key, std::size_t source, bool nullable) const = 0;

    // A set of numbers: its number, the text that stands for it behind FROM with its numbers as
    // "sN.value", and the condition that `field` (`text` in its parentheses) is one of them.
    virtual int addSet(Numbers& numbers, const IdSetPtr& ids) const = 0;
    virtual std::string setSource(int number) const = 0;
    virtual std::string inSet(const Sql& field, const std::string& text, int number) const = 0;
    // The same where few rows are asked.
    virtual std::string isInSet(const Sql& field, const std::string& text, int number) const {
        return inSet(field, text, number);
    }

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

    // The call of a counting function; `nesting` as in wrapped.
    virtual std::string aggregate(const Expression& call, const Sql& argument, int& nesting) const = 0;
    // A field as it stands outside of counting functions where rows are grouped: by it alone (`own`), or by
    // something it is a part of.
    virtual Sql ofGroup(Sql field, bool own) const = 0;
    // What rows are grouped and ordered by: texts that are the same but for case stand together.
    virtual std::string sortKey(const Sql& sql) const = 0;
    virtual std::string orderTerm(const OrderTerm& term) const = 0;
    virtual std::string select(const SelectParts& parts) const = 0;
    // The rows of one table between two keys, in the order of these, all of which are read.
    virtual std::string range(const SelectParts& parts) const { return select(parts); }
    // Rows in the order of their keys, which are the first columns of `parts`; those with a Null among them
    // are left out. `shown`: which of the columns are given, by their places. They come from one pass through
    // `table`, whose own key among those is `key`.
    virtual std::string rowsByKeys(const SelectParts& parts, std::size_t, const std::vector<std::size_t>&,
                                   const std::string&, const std::string&) const {
        return select(parts);
    }
    // Rows by lists of their keys; in what order they come does not matter.
    virtual std::string rowsOfLists(const SelectParts& parts) const { return select(parts); }

 private:
    Facts facts_;
};

// The text of a SELECT from `columns` on, for dialects that have nothing to add.
std::string selectText(const Dialect& dialect, const SelectParts& parts, const std::string& columns);

const Dialect& sqliteDialect();
const Dialect& postgresDialect();

}  // namespace sql::writing
