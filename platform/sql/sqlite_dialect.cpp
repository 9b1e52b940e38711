#include <algorithm>
#include <utility>

#include "platform/sql/close_numbers.h"
#include "platform/sql/dialect.h"

namespace sql::writing {

namespace {

constexpr int kMaxNesting = 24;
constexpr std::uint64_t kDense = 3;  // rows that are gone through in the time in which one is looked up

constexpr Facts kFacts = {
    .chainLength = 50,
    .maxColumns = 1900,
    .joinNeedsCondition = false,
    .linkedColumns = 60,
    .setsInOrder = true,
    .listsAbsentRows = false,
    .oneGroup = "NULL",
    .dateDiff = "dao_datediff",
    .calculate = "dao_calculate",
};

class SqliteValues final : public ValueSpelling {
 public:
    SqliteValues() : ValueSpelling(kMaxNesting) {}

    Sql value(Sql sql) const override {
        if (sql.truth) {
            sql.text = "-(" + sql.text + ")";
            sql.precedence = kUnary;
            ++sql.nesting;
            sql.truth = false;
        }
        return sql;
    }

    Sql condition(Sql sql) const override { return sql; }

    std::string real(double number) const override { return shortest(number); }

    std::string text(std::string_view text) const override { return quotedText(text); }

    std::string now(Numbers& numbers) const override {
        numbers.noteTime();
        return "dao_now()";
    }

    Sql number(Sql sql) const override { return sql; }

    Sql quotient(const Expression& e, const Sql& left, const Sql& right) const override {
        return e.op == Expression::Op::Divide ? division(e, left, right) : wholeDivision(e, left, right);
    }

    Sql joinedText(const Sql& sql) const override {
        Sql result;
        result.nesting = sql.nesting + (sql.type == Type::Single ? 3 : 1);
        if (sql.type == Type::Null) {
            result.text = "''";
            result.nesting = 0;
        } else if (sql.type == Type::Text && sql.notNull) {
            result = sql;
        } else if (sql.type == Type::Single) {
            // As many digits as a Single holds, not those of the double that the store keeps it in.
            result.text = "CASE WHEN " + sql.text + " IS NULL THEN '' ELSE dao_text(CAST(printf('%.7g', " +
                          sql.text + ") AS REAL)) END";
        } else {
            result.text = "dao_text(" + sql.text + ")";
        }
        return result;
    }

    std::string compared(const Sql& sql, bool collating, int least, int& nesting,
                         std::size_t position) const override {
        return collating ? wrapped(sql, kCollate, nesting, position) + " COLLATE DAO_TEXT"
                         : wrapped(sql, least, nesting, position);
    }

    std::string stored(const Sql& number, Type type, std::size_t position) const override {
        int nesting = 0;
        switch (type) {
            case Type::YesNo:
                return "-(" + number.text + " <> 0)";
            case Type::Long:
                return whole(number.text);
            case Type::Single:
                // Cut to the digits that a Single has, so that the field compares as if the engine had read
                // and written it: adding and taking away a large multiple rounds off the rest.
                return "(SELECT v * 536870913.0 - (v * 536870913.0 - v) FROM (SELECT " + number.text +
                       " AS v))";
            case Type::Currency:
                return whole(wrapped(number, kProduct, nesting, position) + " * 10000.0");
            default:
                return "(SELECT CASE WHEN v IS NOT NULL THEN dao_text(v) END FROM (SELECT " + number.text +
                       " AS v))";
        }
    }

 private:
    static std::string whole(const std::string& number) { return "CAST(ROUND(" + number + ") AS INTEGER)"; }

    Sql division(const Expression& e, const Sql& left, const Sql& right) const {
        Sql result;
        std::string divisor = wrapped(right, kProduct + 1, result.nesting, e.position);
        std::string dividend = wrapped(left, kProduct, result.nesting, e.position);
        if (e.children[1]->kind == Expression::Kind::Integer) {
            divisor += ".0";
        } else if (!left.real && !right.real) {
            dividend = "1.0 * " + wrapped(left, kProduct + 1, result.nesting, e.position);
        }
        result.text = dividend + " / " + divisor;
        result.precedence = kProduct;
        result.real = true;
        return result;
    }

    Sql wholeDivision(const Expression& e, const Sql& left, const Sql& right) const {
        Sql result;
        result.nesting = std::max(left.nesting, right.nesting);
        const auto operand = [&](const Sql& sql) {
            if (!sql.real && (sql.type == Type::Long || sql.type == Type::YesNo)) {
                return wrapped(sql, kProduct + 1, result.nesting, e.position);
            }
            ++result.nesting;
            return whole(sql.text);
        };
        const std::string dividend = operand(left);
        result.text = dividend + (e.op == Expression::Op::Mod ? " % " : " / ") + operand(right);
        result.precedence = kProduct;
        return result;
    }
};

class SqliteLookups final : public LookupSpelling {
 public:
    std::string keyParameter(int number) const override { return "?" + std::to_string(number); }

    std::string isKeyParameter(const std::string& key, int number, bool nullable) const override {
        return key + (nullable ? " IS " : " = ") + keyParameter(number);
    }

    std::string link(const TableInfo& table, const std::string& field,
                     const std::string& number) const override {
        return "dao_link(" + quotedText(table.name) + ", " + quotedText(field) + ", " + number + ")";
    }

    // The first list leads: of the others only what stands at its place is looked up. Of joins made by CROSS
    // the store keeps the order.
    std::string keyLists(int first, std::size_t sources) const override {
        std::string lists = "idlist(" + keyParameter(first) + ") AS k";
        for (std::size_t source = 1; source < sources; ++source) {
            lists += " CROSS JOIN idlist(" + keyParameter(first + static_cast<int>(source)) + ", k.n) AS " +
                     listName(source);
        }
        return lists;
    }

    std::string isListedKey(const std::string& key, std::size_t source, bool) const override {
        return key + " = " + listName(source) + ".value";
    }

    int addSet(Numbers& numbers, const IdSetPtr& ids) const override { return numbers.addIdSet(ids); }

    std::string setSource(int number) const override {
        const std::string set = std::to_string(number);
        return "idset(" + set + ") AS s" + set;
    }

    std::string inSet(const Sql&, const std::string& text, int number) const override {
        return text + " IN (SELECT value FROM idset(" + std::to_string(number) + "))";
    }

    std::string inDenseSet(const Sql& field, const IdSetPtr& ids, int number) const override {
        if (!areClose(ids->front(), ids->back(), ids->size(), kDense)) {
            return {};
        }
        return field.text + " BETWEEN " + std::to_string(ids->front()) + " AND " +
               std::to_string(ids->back()) + " AND dao_in_idset(" + std::to_string(number) + ", " +
               field.text + ")";
    }

    // Behind IN all numbers would be put into a table first.
    std::string isInSet(const Sql&, const std::string& text, int number) const override {
        return "EXISTS (SELECT 1 FROM idset(" + std::to_string(number) + ") WHERE value = " + text + ")";
    }

 private:
    static std::string listName(std::size_t source) {
        return source == 0 ? "k" : "k" + std::to_string(source);
    }
};

class SqliteSelects final : public SelectSpelling {
 public:
    SqliteSelects(const ValueSpelling& values, const LookupSpelling& lookups)
        : values_(values), lookups_(lookups) {}

    std::string table(const TableInfo& table) const override { return quotedName(table.name); }

    std::string rowKey(const TableInfo&, const std::string& alias) const override { return alias + ".rowid"; }

    std::string aggregate(const Expression& call, const Sql& argument, int& nesting) const override {
        std::string inner = argument.text;
        if (argument.type == Type::Text) {
            inner = values_.wrapped(argument, kCollate, nesting, call.position) + " COLLATE DAO_TEXT";
        }
        return call.text + (call.distinct ? "(DISTINCT " : "(") + inner + ")";
    }

    Sql ofGroup(Sql field, bool) const override { return field; }

    std::string sortKey(const Sql& sql) const override {
        std::string result = values_.value(sql).text;
        if (sql.type != Type::Text) {
            return result;
        }
        return (sql.precedence < kCollate ? "(" + result + ")" : result) + " COLLATE DAO_TEXT";
    }

    std::string orderTerm(const OrderTerm& term) const override {
        return sortKey(term.sql) + (term.descending ? " DESC" : "");
    }

    std::string select(const SelectParts& parts) const override {
        std::vector<std::string> columns;
        for (const SelectedColumn& column : parts.columns) {
            std::string text = values_.value(column.sql).text;
            if (parts.distinct && column.sql.type == Type::Text) {
                text += " COLLATE DAO_TEXT";
            }
            columns.push_back(column.name.empty() ? text : text + " AS " + column.name);
        }
        return selectText(*this, kFacts.chainLength, parts,
                          (parts.distinct ? "SELECT DISTINCT " : "SELECT ") + listed(columns));
    }

    // It goes by the keys alone: another index would give them another order.
    std::string range(const SelectParts& parts) const override {
        if (parts.columns.size() > kMostArguments) {
            return select(parts);
        }
        SelectParts along = parts;
        along.from += " NOT INDEXED";
        along.order.clear();
        return gathered(along);
    }

    // Whoever reads them says from which key to which: a large table is read in pieces, side by side.
    std::string rowsByKeys(const SelectParts& parts, std::size_t keys, const std::vector<std::size_t>& shown,
                           const std::string& table, const std::string& key) const override {
        std::string head = "SELECT dao_sorted(" + std::to_string(keys) + ", '";
        for (const std::size_t place : shown) {
            head += std::to_string(place) + " ";
        }
        SelectParts piece = parts;
        piece.conditions.insert(piece.conditions.begin(), key + " BETWEEN " + lookups_.keyParameter(1) +
                                                              " AND " + lookups_.keyParameter(2));
        return handedOver(piece, head + "', " + quotedText(table) + ", ");
    }

    std::string rowsOfLists(const SelectParts& parts) const override {
        return parts.columns.size() > kMostArguments ? select(parts) : gathered(parts);
    }

 private:
    // Handed over row by row as the store comes upon them, where a function of its takes as many columns.
    static constexpr std::size_t kMostArguments = 100;
    std::string gathered(const SelectParts& parts) const { return handedOver(parts, "SELECT dao_gather("); }
    std::string handedOver(const SelectParts& parts, const std::string& head) const {
        std::vector<std::string> columns;
        columns.reserve(parts.columns.size());
        for (const SelectedColumn& column : parts.columns) {
            columns.push_back(values_.value(column.sql).text);
        }
        return selectText(*this, kFacts.chainLength, parts, head + listed(columns) + ")");
    }

    const ValueSpelling& values_;
    const LookupSpelling& lookups_;
};

}  // namespace

const Dialect& sqliteDialect() {
    static const SqliteValues values;
    static const SqliteLookups lookups;
    static const SqliteSelects selects(values, lookups);
    static const Dialect dialect = {kFacts, values, lookups, selects};
    return dialect;
}

}  // namespace sql::writing
