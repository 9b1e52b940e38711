#pragma once

#include <string>

#include "platform/sql/numbers.h"
#include "platform/sql/sql_text.h"

namespace sql::writing {

// How one store spells what rows are looked up by: their keys, the links between them, sets of numbers.
class LookupSpelling {
 public:
    LookupSpelling() = default;
    virtual ~LookupSpelling() = default;
    LookupSpelling(const LookupSpelling&) = delete;
    LookupSpelling& operator=(const LookupSpelling&) = delete;

    // A row's key as it is bound.
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
};

}  // namespace sql::writing
