#include "exchange/table_files.h"

#include <QDir>
#include <QFile>
#include <stdexcept>

#include "exchange/csv.h"
#include "exchange/plain_values.h"
#include "exchange/still_shop.h"
#include "exchange/unfinished.h"
#include "platform/system/files.h"
#include "platform/text/utf8.h"

namespace exchange {
namespace {

constexpr std::size_t kBuffer = 1 << 20;
constexpr std::int64_t kRowsBetweenNews = 5000;

// A file that is written line by line; a disk that is full is told, not found out by the bookkeeper.
class TextFile {
 public:
    explicit TextFile(const QString& path) : file_(path) {
        if (!file_.open(QIODevice::WriteOnly | QIODevice::NewOnly, platform::kForUserAlone)) {
            fail();
        }
    }
    std::string& line() { return buffer_; }
    void endLine() {
        buffer_ += "\r\n";
        if (buffer_.size() >= kBuffer) {
            flush();
        }
    }
    void finish() {
        flush();
        if (!file_.flush()) {
            fail();
        }
        file_.close();
    }

 private:
    void flush() {
        if (file_.write(buffer_.data(), static_cast<qint64>(buffer_.size())) !=
            static_cast<qint64>(buffer_.size())) {
            fail();
        }
        buffer_.clear();
    }
    [[noreturn]] void fail() const {
        throw std::runtime_error("'" + file_.fileName().toStdString() +
                                 "' cannot be written: " + file_.errorString().toStdString());
    }

    QFile file_;
    std::string buffer_;
};

void needSound(const dao::TableDef& table, std::size_t field, dao::ShopReading::Row row) {
    if (!alphabet::isSound(row[field].textRef())) {
        throw std::runtime_error("The table " + table.Name() +
                                 " holds a text that is no UTF-8, in the field " +
                                 table.Fields()[field].Name + " of the row that begins with " +
                                 plainText(row[0]) + ". Type it anew first.");
    }
}

void addRow(std::string& line, const dao::TableDef& table, dao::ShopReading::Row row) {
    for (std::size_t i = 0; i < row.size(); ++i) {
        if (i > 0) {
            line += ',';
        }
        if (row[i].isNull()) {
            continue;
        }
        if (row[i].type() == dao::Type::Text) {
            needSound(table, i, row);
            addCsvText(line, row[i].textRef());
        } else {
            line += plainText(row[i]);
        }
    }
}

void addNames(std::string& line, const dao::TableDef& table) {
    for (const dao::FieldDef& field : table.Fields()) {
        if (&field != &table.Fields().front()) {
            line += ',';
        }
        addCsvText(line, field.Name);
    }
}

void writeTable(dao::ShopReading& rows, const dao::TableDef& table, const QDir& folder,
                const dao::RowWatch& watch) {
    TextFile file(folder.filePath(QString::fromStdString(table.Name()) + QStringLiteral(".csv")));
    addNames(file.line(), table);
    file.endLine();
    dao::RowState state{table.Name(), 0, rows.rowsIn(table.Name())};
    rows.read(table.Name(), [&](dao::ShopReading::Row row) {
        addRow(file.line(), table, row);
        file.endLine();
        if (++state.done % kRowsBetweenNews == 0 && watch) {
            watch(state);
        }
    });
    file.finish();
}

bool hasCounter(const dao::TableDef& table) {
    for (const dao::FieldDef& field : table.Fields()) {
        if (field.counter) {
            return true;
        }
    }
    return false;
}

void writeCounters(dao::ShopReading& rows, const QDir& folder) {
    TextFile file(folder.filePath(QLatin1String(kCountersFile)));
    file.line() += "Table,Highest";
    file.endLine();
    for (const dao::TableDef& table : rows.tables()) {
        if (hasCounter(table)) {
            addCsvText(file.line(), table.Name());
            file.line() += ',' + std::to_string(rows.highestNumber(table.Name()));
            file.endLine();
        }
    }
    file.finish();
}

}  // namespace

void writeTableFiles(StillShop& shop, const std::string& folder, const dao::RowWatch& watch) {
    Unfinished unfinished(folder);
    QDir made(QString::fromStdString(unfinished.path()));
    platform::makeOwnFolder(made.path());
    for (const dao::TableDef& table : shop.rows().tables()) {
        writeTable(shop.rows(), table, made, watch);
    }
    writeCounters(shop.rows(), made);
    unfinished.finish();
}

}  // namespace exchange
