#include "data/schema.h"

#include <QFile>
#include <algorithm>
#include <charconv>
#include <istream>
#include <map>
#include <sstream>
#include <tuple>

#include "platform/dao/dbengine.h"
#include "platform/dao/names.h"

// See common/string_table.cpp.
static void keepSchemaLinked() {
    Q_INIT_RESOURCE(shop);
}

namespace data {
namespace {

const std::map<std::string, dao::FieldType> kTypes{
    {"counter", dao::dbLong},      {"long", dao::dbLong}, {"single", dao::dbSingle}, {"text", dao::dbText},
    {"currency", dao::dbCurrency}, {"date", dao::dbDate}, {"yesno", dao::dbBoolean}, {"memo", dao::dbMemo},
};

struct Line {
    int number = 0;
    bool indented = false;
    std::vector<std::string> words;
    std::string text;  // without the blanks around it
};

Line splitLine(const std::string& raw, int number) {
    Line line;
    line.number = number;
    line.indented = !raw.empty() && (raw[0] == ' ' || raw[0] == '\t');
    std::istringstream words(raw);
    for (std::string word; words >> word;) {
        line.words.push_back(word);
    }
    if (!line.words.empty()) {
        const auto first = raw.find_first_not_of(" \t");
        const auto last = raw.find_last_not_of(" \t\r");
        line.text = raw.substr(first, last - first + 1);
    }
    return line;
}

const dao::FieldDef* fieldOf(const dao::TableDef& table, const std::string& name) {
    for (const dao::FieldDef& field : table.Fields()) {
        if (dao::sameName(field.Name, name)) {
            return &field;
        }
    }
    return nullptr;
}

class SchemaReader {
 public:
    SchemaReader(std::istream& text, std::string name) : text_(text), name_(std::move(name)) {}

    Schema read() {
        std::string raw;
        int number = 0;
        while (std::getline(text_, raw)) {
            line_ = splitLine(raw, ++number);
            if (line_.words.empty() || line_.words[0][0] == '#') {
                continue;
            }
            if (line_.indented) {
                readInside();
            } else {
                closeSection();
                readHead();
            }
        }
        closeSection();
        checkRelations();
        return std::move(schema_);
    }

 private:
    enum class Section { None, Table, Query };

    [[noreturn]] void fail(const std::string& message) const { failAt(line_.number, message); }
    [[noreturn]] void failAt(int line, const std::string& message) const {
        throw TextError(name_, line, message);
    }

    void readHead() {
        const std::string& word = line_.words[0];
        if (word == "table" && line_.words.size() == 2) {
            if (std::any_of(schema_.tables.begin(), schema_.tables.end(), [&](const dao::TableDef& t) {
                    return dao::sameName(t.Name(), line_.words[1]);
                })) {
                fail("table " + line_.words[1] + " stands here twice");
            }
            schema_.tables.emplace_back(line_.words[1]);
            open(Section::Table);
        } else if (word == "query" && line_.words.size() == 2) {
            if (std::any_of(schema_.queries.begin(), schema_.queries.end(),
                            [&](const auto& q) { return dao::sameName(q.first, line_.words[1]); })) {
                fail("query " + line_.words[1] + " stands here twice");
            }
            schema_.queries.emplace_back(line_.words[1], std::string());
            open(Section::Query);
        } else if (word == "relation") {
            readRelation();
        } else {
            fail("expected \"table NAME\", \"query NAME\" or \"relation A.FIELD -> B.FIELD\"");
        }
    }

    void open(Section section) {
        section_ = section;
        sectionLine_ = line_.number;
    }

    void closeSection() {
        if (section_ == Section::Table && schema_.tables.back().Fields().empty()) {
            failAt(sectionLine_, "table " + schema_.tables.back().Name() + " has no fields");
        }
        if (section_ == Section::Query && schema_.queries.back().second.empty()) {
            failAt(sectionLine_, "query " + schema_.queries.back().first + " has no statement");
        }
        section_ = Section::None;
    }

    void readInside() {
        if (section_ == Section::Table) {
            readField();
        } else if (section_ == Section::Query) {
            std::string& statement = schema_.queries.back().second;
            statement += (statement.empty() ? "" : " ") + line_.text;
        } else {
            fail("an indented line outside a table or query");
        }
    }

    void readField() {
        const auto& words = line_.words;
        dao::TableDef& table = schema_.tables.back();
        const auto type = words.size() < 2 ? kTypes.end() : kTypes.find(words[1]);
        if (type == kTypes.end()) {
            fail(
                "expected a field's name and one of the types counter, text N, memo, long, single, currency, "
                "date, yesno");
        }
        if (fieldOf(table, words[0]) != nullptr) {
            fail("field " + words[0] + " stands twice in table " + table.Name());
        }
        dao::FieldDef field = table.CreateField(words[0], type->second);
        field.counter = words[1] == "counter";
        if (words[1] == "text") {
            field.Size = words.size() == 3 ? readSize(words[2]) : 0;
        }
        if (words.size() > (words[1] == "text" ? 3U : 2U) || (words[1] == "text" && field.Size == 0)) {
            fail("type " + words[1] +
                 (words[1] == "text" ? " takes its length, 1 to 255" : " takes nothing more"));
        }
        if (field.counter && std::any_of(table.Fields().begin(), table.Fields().end(),
                                         [](const dao::FieldDef& f) { return f.counter; })) {
            fail("table " + table.Name() + " has a counter already");
        }
        table.Append(field);
    }

    static int readSize(const std::string& word) {
        int size = 0;
        const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), size);
        const bool good =
            error == std::errc() && end == word.data() + word.size() && size >= 1 && size <= 255;
        return good ? size : 0;
    }

    void readRelation() {
        const auto& words = line_.words;
        const bool cascade = words.size() == 5 && words[4] == "cascade";
        if (!(words.size() == 4 || cascade) || words[2] != "->") {
            fail("expected \"relation A.FIELD -> B.FIELD\", with \"cascade\" behind it or not");
        }
        dao::Relation relation;
        std::tie(relation.table, relation.field) = splitField(words[1]);
        std::tie(relation.foreignTable, relation.foreignField) = splitField(words[3]);
        relation.cascadeDelete = cascade;
        schema_.relations.push_back(relation);
        relationLines_.push_back(line_.number);
    }

    std::pair<std::string, std::string> splitField(const std::string& word) const {
        const auto point = word.find('.');
        if (point == 0 || point == std::string::npos || point + 1 == word.size()) {
            fail("\"" + word + "\" is no TABLE.FIELD");
        }
        return {word.substr(0, point), word.substr(point + 1)};
    }

    // Relations may stand before their tables, so they are looked at when everything is known.
    void checkRelations() const {
        for (std::size_t i = 0; i < schema_.relations.size(); ++i) {
            const dao::Relation& r = schema_.relations[i];
            checkEnd(r.table, r.field, relationLines_[i]);
            checkEnd(r.foreignTable, r.foreignField, relationLines_[i]);
        }
    }

    void checkEnd(const std::string& table, const std::string& field, int line) const {
        const auto found =
            std::find_if(schema_.tables.begin(), schema_.tables.end(),
                         [&](const dao::TableDef& t) { return dao::sameName(t.Name(), table); });
        if (found == schema_.tables.end()) {
            failAt(line, "there is no table " + table);
        }
        if (fieldOf(*found, field) == nullptr) {
            failAt(line, "table " + table + " has no field " + field);
        }
    }

    std::istream& text_;
    std::string name_;
    Schema schema_;
    Line line_;
    Section section_ = Section::None;
    int sectionLine_ = 0;
    std::vector<int> relationLines_;
};

}  // namespace

Schema readSchema(std::istream& text, const std::string& name) {
    return SchemaReader(text, name).read();
}

const Schema& shopSchema() {
    static const Schema schema = [] {
        keepSchemaLinked();
        QFile file(QStringLiteral(":/schema.txt"));
        file.open(QIODevice::ReadOnly);
        std::istringstream text(file.readAll().toStdString());
        return readSchema(text, "schema.txt");
    }();
    return schema;
}

dao::TableDef documentNumbers() {
    dao::TableDef table("DocNumber");
    table.Append(table.CreateField("PredracunBroj", dao::dbLong));
    table.Append(table.CreateField("RacunBroj", dao::dbLong));
    return table;
}

void createSchema(dao::Database& database, const Schema& schema) {
    for (const dao::TableDef& table : schema.tables) {
        database.TableDefs().Append(table);
    }
    for (const dao::Relation& relation : schema.relations) {
        database.CreateRelation(relation);
    }
    for (const auto& [name, statement] : schema.queries) {
        database.CreateQueryDef(name, statement);
    }
    database.setForm(kShopForm);
}

void raiseForm(dao::Database& database) {
    if (database.Form() >= kShopForm) {
        return;
    }
    dao::DBEngine::BeginTrans();
    try {
        // From 0, the files of version 1.0.1, to 1: nothing but the number itself.
        database.setForm(kShopForm);
        dao::DBEngine::CommitTrans();
    } catch (...) {
        dao::DBEngine::Rollback();
        throw;
    }
}

}  // namespace data
