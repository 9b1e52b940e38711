#include "platform/sql/describe.h"

#include <functional>

#include "platform/sql/ast.h"
#include "platform/sql/parser.h"
#include "platform/sql/writer.h"

namespace {

using Lines = std::vector<std::string>;

std::string typeName(sql::Type type) {
    switch (type) {
        case sql::Type::Null:
            return "Null";
        case sql::Type::YesNo:
            return "YesNo";
        case sql::Type::Long:
            return "Long";
        case sql::Type::Single:
            return "Single";
        case sql::Type::Double:
            return "Double";
        case sql::Type::Currency:
            return "Currency";
        case sql::Type::Date:
            return "Date";
        case sql::Type::Text:
            return "Text";
    }
    return "?";
}

std::string columnsOf(const sql::WrittenSelect& select) {
    std::string result = "C";
    for (const sql::ResultColumn& column : select.columns) {
        result += " " + column.name + ":" + typeName(column.type);
        if (column.source >= 0) {
            result += "@" + std::to_string(column.source) + "." + column.field;
        }
    }
    return result;
}

std::string sourcesOf(const sql::WrittenSelect& select) {
    std::string result = "U";
    for (std::size_t i = 0; i < select.sources.size(); ++i) {
        result += " " + select.sources[i].table + (select.sources[i].nullable ? "?" : "") +
                  (select.uniqueSource == static_cast<int>(i) ? "*" : "");
    }
    return result;
}

Lines caught(const std::function<void(Lines&)>& body) {
    Lines lines;
    try {
        body(lines);
    } catch (const sql::SyntaxError& error) {
        lines.push_back("E " + std::to_string(error.position()) + " " + error.what());
    } catch (const sql::NameError& error) {
        lines.push_back(std::string("N ") +
                        (error.kind() == sql::NameError::Kind::Table ? "table " : "field ") + error.name());
    }
    return lines;
}

}  // namespace

Lines describe(const std::string& text, const sql::Catalog& catalog) {
    return caught([&](Lines& lines) {
        const sql::StatementPtr statement = sql::parse(text);
        lines.push_back("T " + sql::dump(*statement));
        if (statement->kind != sql::Statement::Kind::Select) {
            lines.push_back("A " + sql::sqliteWriter().action(*statement, catalog, 0).text);
            return;
        }
        const sql::WrittenSelect select = sql::sqliteWriter().select(*statement, catalog, 0);
        lines.push_back(columnsOf(select));
        lines.push_back(sourcesOf(select));
        lines.push_back("R " + select.rows);
        if (!select.sources.empty()) {
            lines.push_back("K " + select.keys);
            lines.push_back("F " + select.fetch);
        }
    });
}

Lines describeCriterion(const std::string& criterion) {
    return caught([&](Lines& lines) { lines.push_back("T " + sql::dump(*sql::parseCriterion(criterion))); });
}

Lines describeFind(const std::string& text, const std::string& criterion, const sql::Catalog& catalog) {
    return caught([&](Lines& lines) {
        const sql::StatementPtr statement = sql::parse(text);
        const sql::ExpressionPtr wanted = sql::parseCriterion(criterion);
        lines.push_back("T " + sql::dump(*wanted));
        lines.push_back("K " + sql::sqliteWriter().find(*statement, *wanted, catalog, 0).keys);
    });
}
