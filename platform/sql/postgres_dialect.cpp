#include <algorithm>
#include <cctype>
#include <utility>

#include "platform/sql/dialect.h"

namespace sql::writing {

namespace {

constexpr int kMaxNesting = 500;

constexpr Facts kFacts = {
    .chainLength = 50,
    .maxColumns = 1600,
    .joinNeedsCondition = true,
    .linkedColumns = 0,
    .setsInOrder = false,
    .listsAbsentRows = true,
    .oneGroup = "NULL::int",
    .dateDiff = "dao.datediff",
};

bool isWhole(const Sql& sql) {
    return !sql.real && (sql.type == Type::Long || sql.type == Type::YesNo);
}

// What cannot bind more loosely than anything around it.
Sql atom(std::string text, const Sql& from) {
    Sql result = from;
    result.text = std::move(text);
    result.precedence = kAtom;
    return result;
}

// The server takes a bare number behind ORDER BY or GROUP BY for the place of a column, and a bare Null or
// text there not at all.
bool isBareConstant(const std::string& text) {
    const std::size_t first = text.find_first_not_of('-');
    return text == "NULL" || (first != std::string::npos &&
                              std::all_of(text.begin() + static_cast<std::ptrdiff_t>(first), text.end(),
                                          [](unsigned char c) { return std::isdigit(c) != 0; }));
}

std::string key(const Sql& text) {
    return "dao.key(" + text.text + ") COLLATE \"C\"";
}

// The server has condition, whole and floating numbers of several widths apart, and mixes none of them by
// itself as the engine does: numbers are reckoned with as float8, and Yes/No is a smallint.
class PostgresValues final : public ValueSpelling {
 public:
    PostgresValues() : ValueSpelling(kMaxNesting) {}

    Sql value(Sql sql) const override {
        if (sql.truth) {
            sql.text = yesNo(sql.text);
            sql.precedence = kUnary;
            ++sql.nesting;
            sql.truth = false;
        }
        return sql;
    }

    Sql condition(Sql sql) const override {
        if (sql.type == Type::Null) {
            return atom("NULL::boolean", sql);
        }
        if (!sql.truth) {
            int nesting = sql.nesting;
            sql.text = wrapped(sql, kSum, nesting, 0) + " <> 0";
            sql.precedence = kEquality;
            sql.nesting = nesting;
            sql.truth = true;
        }
        return sql;
    }

    std::string real(double number) const override { return "float8 '" + shortest(number) + "'"; }

    std::string text(std::string_view text) const override { return quotedText(text) + "::text"; }

    std::string now(Numbers& numbers) const override {
        return "$" + std::to_string(numbers.addParameter({Parameter::Kind::Now, nullptr})) + "::float8";
    }

    Sql number(Sql sql) const override {
        if (sql.real && sql.type != Type::Single) {
            return sql;
        }
        Sql result = cast(sql, "float8");
        result.real = true;
        return result;
    }

    Sql quotient(const Expression& e, const Sql& left, const Sql& right) const override {
        const bool whole = e.op != Expression::Op::Divide;
        const Sql dividend = whole ? wholeNumber(left) : number(left);
        const Sql divisor = whole ? wholeNumber(right) : number(right);
        Sql result;
        result.nesting = divisor.nesting + 1;
        result.text = wrapped(dividend, kProduct, result.nesting, e.position) +
                      (e.op == Expression::Op::Mod ? " % " : " / ") + "NULLIF(" + divisor.text + ", 0)";
        result.precedence = kProduct;
        result.real = !whole;
        return result;
    }

    Sql joinedText(const Sql& sql) const override {
        if (sql.type == Type::Text && sql.notNull) {
            return sql;
        }
        Sql result;
        result.nesting = sql.nesting + 1;
        if (sql.type == Type::Null) {
            result.text = "''::text";
        } else if (sql.type == Type::Text) {
            result.text = "coalesce(" + sql.text + ", '')";
        } else if (isWhole(sql)) {
            result.text = "coalesce(" + cast(sql, "text").text + ", '')";
        } else if (sql.type == Type::Single) {
            result.text = "dao.digits(" + sql.text + ")";
        } else {
            result.text = "dao.digits(" + number(sql).text + ")";
        }
        return result;
    }

    std::string compared(const Sql& sql, bool collating, int least, int& nesting,
                         std::size_t position) const override {
        if (sql.type == Type::Null) {
            return "NULL";
        }
        if (sql.type == Type::Single) {
            return wrapped(number(sql), least, nesting, position);
        }
        if (sql.type != Type::Text) {
            return wrapped(sql, least, nesting, position);
        }
        nesting = std::max(nesting, sql.nesting + 1);
        return collating ? key(sql) : "dao.key(" + sql.text + ")";
    }

    std::string stored(const Sql& given, Type type, std::size_t position) const override {
        const Sql wide = number(given);
        int nesting = 0;
        switch (type) {
            case Type::YesNo:
                return yesNo(wide.text + " <> 0");
            case Type::Long:
                return "dao.round(" + wide.text + ")";
            case Type::Single:
                return cast(wide, "real").text;
            case Type::Currency:
                return "dao.round(" + wrapped(wide, kProduct, nesting, position) + " * " + real(10000) + ")";
            default:
                return "(SELECT CASE WHEN v IS NOT NULL THEN dao.digits(v) END FROM (SELECT " + wide.text +
                       " AS v) AS s)";
        }
    }

 private:
    static std::string yesNo(const std::string& condition) { return "-(" + condition + ")::int::smallint"; }

    Sql cast(const Sql& sql, const std::string& type) const {
        if (sql.type == Type::Null) {
            return atom("NULL::" + type, sql);
        }
        int nesting = sql.nesting;
        Sql result = atom(wrapped(sql, kAtom, nesting, 0) + "::" + type, sql);
        result.nesting = nesting;
        return result;
    }

    Sql wholeNumber(const Sql& sql) const {
        if (isWhole(sql)) {
            return cast(sql, "bigint");
        }
        Sql result = atom("dao.round(" + number(sql).text + ")", sql);
        ++result.nesting;
        return result;
    }
};

class PostgresLookups final : public LookupSpelling {
 public:
    std::string keyParameter(int number) const override { return "$" + std::to_string(number) + "::bigint"; }

    std::string isKeyParameter(const std::string& key, int number, bool nullable) const override {
        return key + (nullable ? " IS NOT DISTINCT FROM " : " = ") + keyParameter(number);
    }

    std::string keyLists(int first, std::size_t sources) const override {
        std::string lists;
        std::string names;
        for (std::size_t source = 0; source < sources; ++source) {
            lists += (source == 0 ? "" : ", ") + array(first + static_cast<int>(source));
            names += "k" + std::to_string(source + 1) + ", ";
        }
        return "unnest(" + lists + ") WITH ORDINALITY AS k(" + names + "n)";
    }

    // The outer side of a join that has no row stands in the list as the lowest number there is.
    std::string isListedKey(const std::string& key, std::size_t source, bool nullable) const override {
        const std::string listed = "k.k" + std::to_string(source + 1);
        return nullable ? key + " IS NOT DISTINCT FROM NULLIF(" + listed + ", '-9223372036854775808'::bigint)"
                        : key + " = " + listed;
    }

    int addSet(Numbers& numbers, const IdSetPtr& ids) const override {
        return numbers.addParameter({Parameter::Kind::Ids, ids});
    }

    std::string setSource(int number) const override {
        return "unnest(" + array(number) + ") AS s" + std::to_string(number) + "(value)";
    }

    std::string inSet(const Sql& field, const std::string& text, int number) const override {
        return text + " = ANY(" + array(number) + (isWhole(field) ? ")" : "::float8[])");
    }

 private:
    static std::string array(int number) { return "$" + std::to_string(number) + "::bigint[]"; }
};

class PostgresSelects final : public SelectSpelling {
 public:
    explicit PostgresSelects(const ValueSpelling& values) : values_(values) {}

    std::string table(const TableInfo& table) const override {
        checkLength(table.name);
        for (const ColumnInfo& column : table.columns) {
            checkLength(column.name);
        }
        return "shop." + quotedName(table.name);
    }

    std::string rowKey(const TableInfo& table, const std::string& alias) const override {
        const ColumnInfo* counter = table.counter();
        return alias + "." + (counter == nullptr ? "dao_row" : quotedName(counter->name));
    }

    std::string aggregate(const Expression& call, const Sql& argument, int&) const override {
        const std::string distinct = call.distinct ? "DISTINCT " : "";
        if (call.text == "Sum" && argument.type == Type::Currency) {
            return "sum(" + distinct + argument.text + ")::bigint";
        }
        if (call.text == "Sum" || call.text == "Avg") {
            return call.text + "(" + distinct + values_.number(argument).text + ")";
        }
        if (argument.type != Type::Text) {
            return call.text + "(" + distinct + selected(argument) + ")";
        }
        if (call.text == "Count") {
            return "count(" + distinct + (call.distinct ? key(argument) : argument.text) + ")";
        }
        return "(array_agg(" + argument.text + " ORDER BY " + key(argument) +
               (call.text == "Max" ? " DESC NULLS LAST" : " NULLS LAST") + "))[1]";
    }

    Sql ofGroup(Sql field, bool own) const override {
        if (own && field.type != Type::Text) {
            return field;
        }
        // Texts of one group differ in case alone; of what is a part only, all fields have to be of one row.
        return own ? atom("min(" + field.text + " COLLATE \"C\")", field)
                   : atom("(array_agg(" + field.text + "))[1]", field);
    }

    std::string sortKey(const Sql& sql) const override {
        if (sql.type == Type::Text) {
            return key(sql);
        }
        const Sql result = values_.value(sql);
        return isBareConstant(result.text) ? result.text + "::float8" : result.text;
    }

    // Null stands before everything else, which the server has the other way round.
    std::string orderTerm(const OrderTerm& term) const override {
        return sortKey(term.sql) + direction(term);
    }

    std::string select(const SelectParts& parts) const override {
        if (parts.columns.size() + parts.order.size() > kFacts.maxColumns) {
            throw SizeError("The statement has too many columns.");
        }
        if (parts.distinct) {
            return distinctRows(parts);
        }
        std::vector<std::string> columns;
        columns.reserve(parts.columns.size());
        for (const SelectedColumn& column : parts.columns) {
            columns.push_back(selected(column.sql) + (column.name.empty() ? "" : " AS " + column.name));
        }
        return selectText(*this, kFacts.chainLength, parts, "SELECT " + listed(columns));
    }

 private:
    // The server cuts off what is longer.
    static void checkLength(const std::string& name) {
        constexpr std::size_t kMostBytes = 63;
        if (name.size() > kMostBytes) {
            throw SizeError("The name '" + name + "' is too long for the server.");
        }
    }

    static std::string direction(const OrderTerm& term) {
        const std::string result = term.descending ? " DESC" : "";
        return term.sql.notNull ? result : result + (term.descending ? " NULLS LAST" : " NULLS FIRST");
    }

    // A column of the width that its type tells.
    std::string selected(const Sql& sql) const {
        if (sql.type == Type::Null) {
            return "NULL::text";
        }
        return sql.type == Type::Double ? values_.number(sql).text : values_.value(sql).text;
    }

    // Rows whose texts differ in case alone are one row, and what orders them need not be among the columns.
    std::string distinctRows(const SelectParts& parts) const {
        SelectParts inner = parts;
        inner.order.clear();
        std::vector<std::string> keys;
        std::vector<std::string> columns;
        std::vector<std::string> outer;
        for (const SelectedColumn& column : parts.columns) {
            const std::string name = "d" + std::to_string(outer.size());
            keys.push_back(sortKey(column.sql));
            columns.push_back(selected(column.sql) + " AS " + name);
            outer.push_back("d." + name + (column.name.empty() ? "" : " AS " + column.name));
        }
        std::string order;
        for (std::size_t i = 0; i < parts.order.size(); ++i) {
            const std::string name = "o" + std::to_string(i);
            columns.push_back(sortKey(parts.order[i].sql) + " AS " + name);
            order += (i == 0 ? " ORDER BY d." : ", d.") + name +
                     (parts.order[i].sql.type == Type::Text ? " COLLATE \"C\"" : "") +
                     direction(parts.order[i]);
        }
        return "SELECT " + listed(outer) + " FROM (" +
               selectText(*this, kFacts.chainLength, inner,
                          "SELECT DISTINCT ON (" + listed(keys) + ") " + listed(columns)) +
               ") AS d" + order;
    }

    const ValueSpelling& values_;
};

}  // namespace

const Dialect& postgresDialect() {
    static const PostgresValues values;
    static const PostgresLookups lookups;
    static const PostgresSelects selects(values);
    static const Dialect dialect = {kFacts, values, lookups, selects};
    return dialect;
}

}  // namespace sql::writing
