#include "exchange/sheet.h"

#include <QFile>
#include <QString>
#include <QStringDecoder>
#include <algorithm>
#include <charconv>
#include <map>
#include <stdexcept>

#include <ixion/address.hpp>
#include <ixion/cell_access.hpp>
#include <ixion/model_context.hpp>
#include <ixion/model_iterator.hpp>
#include <orcus/orcus_ods.hpp>
#include <orcus/spreadsheet/document.hpp>
#include <orcus/spreadsheet/factory.hpp>

#include "exchange/csv.h"
#include "exchange/xlsx_sheet.h"
#include "platform/text/code_page.h"
#include "platform/text/utf8.h"

namespace exchange {
namespace {

[[noreturn]] void fail(const std::string& path, const std::string& why) {
    throw std::runtime_error("'" + path + "' cannot be read: " + why);
}

QByteArray bytesOf(const std::string& path) {
    QFile file(QString::fromStdString(path));
    if (!file.open(QIODevice::ReadOnly)) {
        fail(path, file.errorString().toStdString());
    }
    QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError) {
        fail(path, file.errorString().toStdString());
    }
    return bytes;
}

SheetCell textCell(const QString& text) {
    return {text.trimmed().toStdString(), std::nullopt};
}

SheetCell numberCell(double number) {
    char buffer[64];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, number);
    return {std::string(buffer, end.ptr), number};
}

bool holdsAnything(const SheetRow& row) {
    return std::any_of(row.cells.begin(), row.cells.end(),
                       [](const SheetCell& cell) { return !cell.text.empty(); });
}

// ----- text

std::string decoded(const QByteArray& bytes, const std::string& path) {
    if (bytes.startsWith("\xEF\xBB\xBF")) {
        return bytes.mid(3).toStdString();
    }
    if (bytes.startsWith("\xFF\xFE") || bytes.startsWith("\xFE\xFF")) {
        return QString(QStringDecoder(QStringDecoder::Utf16)(bytes)).toStdString();
    }
    std::string text = bytes.toStdString();
    if (alphabet::isSound(text)) {
        return text;
    }
    if (bytes.contains('\0')) {
        fail(path, "it is neither a table as text nor a workbook.");
    }
    return alphabet::fromCodePage(text);
}

// The one that parts the most fields of the first line.
char separatorOf(const std::string& text) {
    const std::string_view line = std::string_view(text).substr(0, text.find_first_of("\r\n"));
    char best = ';';
    std::ptrdiff_t most = 0;
    for (const char separator : {';', '\t', ','}) {
        bool quoted = false;
        const auto count = std::count_if(line.begin(), line.end(), [&](char c) {
            quoted ^= c == '"';
            return !quoted && c == separator;
        });
        if (count > most) {
            most = count;
            best = separator;
        }
    }
    return best;
}

std::vector<SheetRow> rowsOfText(const std::string& text, const std::string& path) {
    CsvReader reader(text, separatorOf(text), CsvReader::Manner::Lenient);
    std::vector<SheetRow> rows;
    try {
        for (std::vector<CsvField> record; reader.next(record);) {
            SheetRow row{reader.line(), {}};
            for (const CsvField& field : record) {
                row.cells.push_back(textCell(QString::fromStdString(field.text)));
            }
            rows.push_back(std::move(row));
        }
    } catch (const CsvError& error) {
        fail(path, "line " + std::to_string(error.line()) + ": " + error.what() + '.');
    }
    return rows;
}

// ----- workbooks

// What the program that made the sheet has computed.
SheetCell formulaCell(const ixion::model_context& model, const ixion::model_iterator::cell& cell) {
    const ixion::cell_access result = model.get_cell_access(ixion::abs_address_t(0, cell.row, cell.col));
    switch (result.get_value_type()) {
        case ixion::cell_value_t::numeric:
            return numberCell(result.get_numeric_value());
        case ixion::cell_value_t::string: {
            const std::string_view text = result.get_string_value();
            return textCell(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
        }
        default:
            return {};
    }
}

SheetCell cellOf(const ixion::model_context& model, const ixion::model_iterator::cell& cell) {
    switch (cell.type) {
        case ixion::celltype_t::numeric:
            return numberCell(std::get<double>(cell.value));
        case ixion::celltype_t::string: {
            const std::string* text = model.get_string(std::get<ixion::string_id_t>(cell.value));
            return text == nullptr ? SheetCell{} : textCell(QString::fromStdString(*text));
        }
        case ixion::celltype_t::boolean:
            return {std::get<bool>(cell.value) ? "true" : "false", std::nullopt};
        case ixion::celltype_t::formula:
            return formulaCell(model, cell);
        default:
            return {};
    }
}

std::vector<SheetRow> rowsOfModel(const ixion::model_context& model) {
    const ixion::abs_range_t range = model.get_data_range(0);
    std::vector<SheetRow> rows;
    if (!range.valid()) {
        return rows;
    }
    for (auto cells =
             model.get_model_iterator(0, ixion::rc_direction_t::horizontal, ixion::abs_rc_range_t(range));
         cells.has(); cells.next()) {
        const ixion::model_iterator::cell& cell = cells.get();
        if (rows.empty() || rows.back().line != cell.row + 1) {
            rows.push_back({cell.row + 1, {}});
        }
        if (cell.type != ixion::celltype_t::empty) {
            rows.back().cells.resize(static_cast<std::size_t>(cell.col) + 1);
            rows.back().cells.back() = cellOf(model, cell);
        }
    }
    return rows;
}

std::vector<SheetRow> rowsOfWorkbook(const QByteArray& bytes, const std::string& path) {
    const std::string_view stream(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    const auto* const blob = reinterpret_cast<const unsigned char*>(stream.data());
    try {
        if (isXlsx(stream)) {
            return xlsxRows(stream);
        }
        if (!orcus::orcus_ods::detect(blob, stream.size())) {
            fail(path, "it is no workbook of the kinds .xlsx and .ods.");
        }
        // As large as a sheet gets.
        orcus::spreadsheet::document document({1048576, 16384});
        orcus::spreadsheet::import_factory factory(document);
        orcus::orcus_ods(&factory).read_stream(stream);
        if (document.get_sheet_count() == 0) {
            fail(path, "the workbook has no sheet.");
        }
        document.recalc_formula_cells();
        return rowsOfModel(document.get_model_context());
    } catch (const std::exception& error) {
        const std::string why = error.what();
        if (why.starts_with('\'')) {
            throw;
        }
        fail(path, "the workbook is damaged (" + why + ").");
    }
}

}  // namespace

std::vector<SheetRow> readSheet(const std::string& path) {
    const QByteArray bytes = bytesOf(path);
    std::vector<SheetRow> rows =
        bytes.startsWith("PK") ? rowsOfWorkbook(bytes, path) : rowsOfText(decoded(bytes, path), path);
    std::erase_if(rows, [](const SheetRow& row) { return !holdsAnything(row); });
    return rows;
}

}  // namespace exchange
