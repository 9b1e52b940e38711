#include "exchange/workbook.h"

#include <xlsxwriter.h>

#include <QFile>
#include <QString>
#include <charconv>
#include <cmath>
#include <stdexcept>

#include "exchange/plain_values.h"
#include "exchange/still_shop.h"
#include "exchange/unfinished.h"
#include "platform/system/files.h"

namespace exchange {
namespace {

constexpr std::int64_t kMostRows = LXW_ROW_MAX - 1;  // below the heading
constexpr qsizetype kMostLetters = 32767;
constexpr std::int64_t kRowsBetweenNews = 5000;
constexpr double kFirstDay = 0;
constexpr double kLastDay = 2958465;                         // 31 December 9999
constexpr std::int64_t kMostDigits = 1'000'000'000'000'000;  // a cell's number holds fifteen

// What a library that tells by number has to say.
void need(lxw_error error) {
    if (error != LXW_NO_ERROR) {
        throw std::runtime_error(std::string("The workbook cannot be written: ") + lxw_strerror(error));
    }
}

// How a workbook shows what is no plain number or text.
struct CellFormats {
    CellFormats() = default;
    explicit CellFormats(lxw_workbook* book)
        : heading(workbook_add_format(book)),
          day(numbered(book, "yyyy-mm-dd")),
          moment(numbered(book, "yyyy-mm-dd hh:mm:ss")),
          amount(numbered(book, "#,##0.00##")) {
        format_set_bold(heading);
    }

    lxw_format* heading = nullptr;
    lxw_format* day = nullptr;
    lxw_format* moment = nullptr;
    lxw_format* amount = nullptr;

 private:
    static lxw_format* numbered(lxw_workbook* book, const char* text) {
        lxw_format* const made = workbook_add_format(book);
        format_set_num_format(made, text);
        return made;
    }
};

class Workbook {
 public:
    Workbook(const std::string& path, const std::string& room) : path_(path), room_(room) {
        lxw_workbook_options options{};
        options.constant_memory = LXW_TRUE;
        options.tmpdir = room_.data();
        options.use_zip64 = LXW_TRUE;
        book_ = workbook_new_opt(path_.c_str(), &options);
        if (book_ == nullptr) {
            throw std::runtime_error("The workbook cannot be written: there is no memory for it.");
        }
        formats_ = CellFormats(book_);
    }
    Workbook(const Workbook&) = delete;
    Workbook& operator=(const Workbook&) = delete;
    ~Workbook() {
        if (book_ != nullptr) {
            workbook_close(book_);  // it gives back what it holds
        }
    }

    void startSheet(const dao::TableDef& table) {
        sheet_ = workbook_add_worksheet(book_, table.Name().c_str());
        if (sheet_ == nullptr) {
            throw std::runtime_error("The workbook takes no sheet of the name " + table.Name() + ".");
        }
        worksheet_freeze_panes(sheet_, 1, 0);
        for (std::size_t i = 0; i < table.Fields().size(); ++i) {
            const auto column = static_cast<lxw_col_t>(i);
            const dao::FieldDef& field = table.Fields()[i];
            need(worksheet_set_column(sheet_, column, column, widthOf(field.Type), nullptr));
            need(worksheet_write_string(sheet_, 0, column, field.Name.c_str(), formats_.heading));
        }
        row_ = 1;
    }

    void addRow(dao::ShopReading::Row row) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            column_ = static_cast<lxw_col_t>(i);
            std::visit([this](const auto& value) { write(value); }, row[i].store());
        }
        ++row_;
    }

    int cutTexts() const { return cut_; }

    void finish() {
        lxw_workbook* const book = book_;
        book_ = nullptr;
        need(workbook_close(book));
    }

 private:
    static double widthOf(dao::FieldType type) {
        constexpr double kNumber = 12;
        constexpr double kText = 24;
        return type == dao::dbText || type == dao::dbMemo ? kText : kNumber;
    }
    void write(std::monostate) {}
    void write(bool value) { need(worksheet_write_boolean(sheet_, row_, column_, value ? 1 : 0, nullptr)); }
    void write(std::int32_t value) { number(value, nullptr); }
    // Its shortest decimal, not what a wider number makes of it.
    void write(float value) {
        const std::string text = plainText(value);
        double shown = 0;
        std::from_chars(text.data(), text.data() + text.size(), shown);
        number(shown, nullptr);
    }
    void write(double value) { number(value, nullptr); }
    void write(dao::Currency value) {
        if (value.scaled() > -kMostDigits && value.scaled() < kMostDigits) {
            number(value.toDouble(), formats_.amount);
        } else {
            write(plainText(value));
        }
    }
    void write(dao::Date value) {
        if (value.days < kFirstDay || value.days > kLastDay) {
            write(plainText(value));
        } else {
            number(value.days, value.days == std::floor(value.days) ? formats_.day : formats_.moment);
        }
    }
    void write(const std::string& value) {
        QString text = QString::fromStdString(value);
        if (text.isEmpty()) {
            return;
        }
        if (text.size() > kMostLetters) {
            text.truncate(kMostLetters);
            ++cut_;
        }
        need(worksheet_write_string(sheet_, row_, column_, text.toUtf8().constData(), nullptr));
    }
    void number(double value, lxw_format* shown) {
        if (!std::isfinite(value)) {
            write(plainText(value));
            return;
        }
        need(worksheet_write_number(sheet_, row_, column_, value, shown));
    }

    std::string path_, room_;
    lxw_workbook* book_ = nullptr;
    CellFormats formats_;  // of the book
    lxw_worksheet* sheet_ = nullptr;
    lxw_row_t row_ = 0;
    lxw_col_t column_ = 0;
    int cut_ = 0;
};

void writeSheet(Workbook& book, dao::ShopReading& rows, const dao::TableDef& table,
                const dao::RowWatch& watch) {
    dao::RowState state{table.Name(), 0, rows.rowsIn(table.Name())};
    if (state.all > kMostRows) {
        throw std::runtime_error("The table " + table.Name() + " has " + std::to_string(state.all) +
                                 " rows, and a sheet takes " + std::to_string(kMostRows) +
                                 ". Write it as CSV, into a folder.");
    }
    book.startSheet(table);
    rows.read(table.Name(), [&](dao::ShopReading::Row row) {
        book.addRow(row);
        if (++state.done % kRowsBetweenNews == 0 && watch) {
            watch(state);
        }
    });
}

}  // namespace

int writeWorkbook(StillShop& shop, const std::string& path, const dao::RowWatch& watch) {
    Unfinished unfinished(path);
    int cut = 0;
    {
        Workbook book(unfinished.path(), unfinished.room());
        for (const dao::TableDef& table : shop.rows().tables()) {
            writeSheet(book, shop.rows(), table, watch);
        }
        cut = book.cutTexts();
        book.finish();
    }
    QFile::setPermissions(QString::fromStdString(unfinished.path()), platform::kForUserAlone);
    unfinished.finish();
    return cut;
}

}  // namespace exchange
