#include "exchange/table_import.h"

#include <QDir>
#include <QFile>
#include <algorithm>
#include <map>
#include <memory>
#include <stdexcept>
#include <unordered_map>

#include "data/schema.h"
#include "exchange/csv.h"
#include "exchange/plain_values.h"
#include "exchange/table_files.h"
#include "platform/dao/names.h"
#include "platform/text/utf8.h"

namespace exchange {
namespace {

constexpr std::size_t kRowsAtOnce = 2000;
constexpr char kEnding[] = ".csv";

[[noreturn]] void failIn(const std::string& file, const std::string& why) {
    throw std::runtime_error(file + ": " + why);
}

[[noreturn]] void failAt(const std::string& file, int line, const std::string& why) {
    throw std::runtime_error(file + ", line " + std::to_string(line) + ": " + why);
}

// One of the folder's files, read from end to end.
class TableFile {
 public:
    TableFile(const QDir& folder, const std::string& name) : name_(name) {
        QFile file(folder.filePath(QString::fromStdString(name)));
        if (!file.open(QIODevice::ReadOnly)) {
            failIn(name, file.errorString().toStdString());
        }
        text_ = file.readAll();
        if (file.error() != QFileDevice::NoError) {
            failIn(name, file.errorString().toStdString());
        }
        if (text_.startsWith("\xEF\xBB\xBF")) {
            text_.remove(0, 3);
        }
        reader_ = std::make_unique<CsvReader>(
            std::string_view(text_.constData(), static_cast<std::size_t>(text_.size())), ',',
            CsvReader::Manner::Strict);
        if (!next()) {
            failIn(name, "it is empty; the first line names the columns.");
        }
        heading_ = record_;
    }

    bool next() {
        try {
            return reader_->next(record_);
        } catch (const CsvError& error) {
            failAt(name_, error.line(), std::string(error.what()) + '.');
        }
    }
    const std::vector<CsvField>& heading() const { return heading_; }
    // A record of as many fields as the heading has.
    const std::vector<CsvField>& record() const {
        if (record_.size() != heading_.size()) {
            failAt(name_, reader_->line(),
                   std::to_string(record_.size()) + " fields, and the heading has " +
                       std::to_string(heading_.size()) + '.');
        }
        return record_;
    }
    int line() const { return reader_->line(); }
    [[noreturn]] void fail(std::size_t column, const std::string& why) const {
        throw std::runtime_error(name_ + ", line " + std::to_string(line()) + ", column " +
                                 heading_[column].text + ": " + why + '.');
    }
    const std::string& name() const { return name_; }

 private:
    std::string name_;
    QByteArray text_;
    std::unique_ptr<CsvReader> reader_;
    std::vector<CsvField> heading_;
    std::vector<CsvField> record_;
};

// The numbers of the rows that were taken so far, by table, and the line that each stands in.
using Numbers = std::map<std::string, std::unordered_map<std::int32_t, int>>;

// What a field's values have to keep to.
class ColumnRule {
 public:
    ColumnRule(const dao::TableDef& table, const dao::FieldDef& field, Numbers& numbers) : field_(field) {
        if (field.counter) {
            own_ = &numbers[table.Name()];
        }
        for (const dao::Relation& relation : data::shopSchema().relations) {
            if (dao::sameName(relation.foreignTable, table.Name()) &&
                dao::sameName(relation.foreignField, field.Name)) {
                parent_ = relation.table;
                parents_ = &numbers[parent_];
            }
        }
    }

    const dao::FieldDef& field() const { return field_; }

    // Throws std::invalid_argument with what is wrong.
    dao::Value read(const CsvField& cell, int line) const {
        if (cell.text.empty() && !cell.quoted) {
            return null();
        }
        dao::Value value = plainValue(cell.text, field_.Type);
        if (value.type() == dao::Type::Text) {
            checkText(cell.text);
        }
        if (own_ != nullptr) {
            checkOwn(value.asLong(), line);
        }
        if (parents_ != nullptr && !parents_->contains(value.asLong())) {
            throw std::invalid_argument("there is no row of that number in the table " + parent_);
        }
        return value;
    }

 private:
    dao::Value null() const {
        if (own_ != nullptr) {
            throw std::invalid_argument("the row has no number");
        }
        return {};
    }
    void checkText(const std::string& text) const {
        if (!alphabet::isSound(text)) {
            throw std::invalid_argument("is no UTF-8, or holds a zero character");
        }
        if (field_.Size > 0 && alphabet::lettersIn(text) > static_cast<std::size_t>(field_.Size)) {
            throw std::invalid_argument("is longer than " + std::to_string(field_.Size) + " characters");
        }
    }
    void checkOwn(std::int32_t number, int line) const {
        if (number < 1) {
            throw std::invalid_argument("a row's number is 1 or more");
        }
        const auto [found, isNew] = own_->try_emplace(number, line);
        if (!isNew) {
            throw std::invalid_argument("stands in line " + std::to_string(found->second) + ", too");
        }
    }

    const dao::FieldDef& field_;
    std::unordered_map<std::int32_t, int>* own_ = nullptr;
    std::string parent_;
    std::unordered_map<std::int32_t, int>* parents_ = nullptr;
};

std::string shortened(const std::string& text) {
    constexpr std::size_t kMost = 40;
    return text.size() <= kMost ? text : text.substr(0, kMost).append("...");
}

// One table's file into the new shop.
class TableImport {
 public:
    TableImport(const QDir& folder, const dao::TableDef& table, Numbers& numbers)
        : table_(table), file_(folder, table.Name() + kEnding) {
        std::vector<dao::Type> types;
        for (std::size_t column = 0; column < file_.heading().size(); ++column) {
            addRule(column, numbers);
            types.push_back(NewShop::typeOf(rules_.back().field()));
        }
        for (const dao::FieldDef& field : table.Fields()) {
            if (std::none_of(rules_.begin(), rules_.end(),
                             [&](const ColumnRule& rule) { return &rule.field() == &field; })) {
                failAt(file_.name(), 1, "there is no column " + field.Name + '.');
            }
        }
        block_.reset(types);
    }

    void into(NewShop& shop) {
        bool isAdded = false;
        while (file_.next()) {
            addRow();
            if (block_.rows() == kRowsAtOnce) {
                add(shop);
                isAdded = true;
            }
        }
        // Also of no row at all: there is a table that a shop may be without.
        if (block_.rows() > 0 || !isAdded) {
            add(shop);
        }
    }

 private:
    void addRule(std::size_t column, Numbers& numbers) {
        const std::string& name = file_.heading()[column].text;
        const auto found =
            std::find_if(table_.Fields().begin(), table_.Fields().end(),
                         [&](const dao::FieldDef& field) { return dao::sameName(field.Name, name); });
        if (found == table_.Fields().end()) {
            failAt(file_.name(), 1, "the table has no field \"" + shortened(name) + "\".");
        }
        if (std::any_of(rules_.begin(), rules_.end(),
                        [&](const ColumnRule& rule) { return &rule.field() == &*found; })) {
            failAt(file_.name(), 1, "the column " + name + " stands here twice.");
        }
        rules_.emplace_back(table_, *found, numbers);
    }

    void addRow() {
        const std::vector<CsvField>& record = file_.record();
        block_.startRow();
        for (std::size_t column = 0; column < record.size(); ++column) {
            try {
                block_.add(rules_[column].read(record[column], file_.line()));
            } catch (const std::invalid_argument& error) {
                file_.fail(column, '"' + shortened(record[column].text) + "\": " + error.what());
            }
        }
        block_.endRow();
    }

    void add(NewShop& shop) {
        std::vector<std::string_view> fields;
        fields.reserve(rules_.size());
        for (const ColumnRule& rule : rules_) {
            fields.push_back(rule.field().Name);
        }
        shop.add(table_.Name(), fields, block_);
        block_.clear();
    }

    const dao::TableDef& table_;
    TableFile file_;
    std::vector<ColumnRule> rules_;
    dao::RowBlock block_;
};

void readCounters(const QDir& folder, NewShop& shop) {
    if (!folder.exists(QLatin1String(kCountersFile))) {
        return;
    }
    TableFile file(folder, kCountersFile);
    if (file.heading().size() != 2 || file.heading()[0].text != "Table" ||
        file.heading()[1].text != "Highest") {
        failAt(file.name(), 1, "the columns are Table and Highest.");
    }
    while (file.next()) {
        const dao::TableDef* table = NewShop::table(file.record()[0].text);
        if (table == nullptr || !table->Fields().front().counter) {
            file.fail(0, "no table of a shop that counts its rows is called so");
        }
        try {
            shop.countFrom(table->Name(), plainValue(file.record()[1].text, dao::dbLong).asLong());
        } catch (const std::invalid_argument& error) {
            file.fail(1, error.what());
        }
    }
}

// Nothing in the folder is passed over in silence.
void needOnlyTables(const QDir& folder) {
    for (const QString& name : folder.entryList({QStringLiteral("*.csv")}, QDir::Files)) {
        const std::string file = name.toStdString();
        if (file != kCountersFile &&
            NewShop::table(file.substr(0, file.size() - (sizeof kEnding - 1))) == nullptr) {
            failIn(file, "a shop has no such table.");
        }
    }
}

bool isOptional(const dao::TableDef& table) {
    return dao::sameName(table.Name(), data::documentNumbers().Name());
}

// With a row a line; a line break within a text counts as well, it is only for who watches.
std::int64_t linesIn(const QDir& folder, const dao::TableDef& table) {
    QFile file(folder.filePath(QString::fromStdString(table.Name() + kEnding)));
    return file.open(QIODevice::ReadOnly) ? file.readAll().count('\n') : 0;
}

}  // namespace

void readTableFiles(const std::string& from, const std::string& target, const dao::RowWatch& watch) {
    const QDir folder(QString::fromStdString(from));
    if (!folder.exists()) {
        throw std::runtime_error("There is no folder '" + from + "'.");
    }
    needOnlyTables(folder);
    const std::vector<dao::TableDef> tables = NewShop::tables();
    std::int64_t rows = 0;
    for (const dao::TableDef& table : tables) {
        rows += linesIn(folder, table);
    }
    NewShop shop(target);
    shop.watch(rows, watch);
    Numbers numbers;
    for (const dao::TableDef& table : tables) {
        if (!isOptional(table) || folder.exists(QString::fromStdString(table.Name() + kEnding))) {
            TableImport(folder, table, numbers).into(shop);
        }
    }
    readCounters(folder, shop);
    shop.keep();
    shop.appear();
}

}  // namespace exchange
