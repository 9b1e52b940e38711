#include "exchange/price_list.h"

#include <QString>
#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "common/catalogue_rules.h"
#include "platform/system/numbers.h"
#include "platform/text/utf8.h"

namespace exchange {
namespace {

constexpr qsizetype kTextLimit = 255;
constexpr qsizetype kUnitLimit = 25;  // what the window of the units lets people type

// What makes a line a bad one.
struct Fault {
    PriceField field;
    std::string why;
};

std::string quoted(const std::string& text) {
    return '"' + text + '"';
}

class LineReader {
 public:
    LineReader(const std::vector<SheetRow>& rows, const PriceColumns& columns,
               const PriceListChoices& choices)
        : columns_(columns),
          rate_(choices.rate),
          money_(choices.money.value_or(columns.money().value_or(Money::Euro))),
          mark_(choices.decimal) {
        if (money_ == Money::Dinars && !(rate_ > 0)) {
            throw std::runtime_error("The prices are in dinars, and there is no rate: say --rate DINARS.");
        }
        if (mark_ == DecimalMark::Unknown) {
            mark_ = markOfAll(rows);
        } else {
            isTold_ = true;
        }
    }

    // Throws Fault.
    PriceLine read(const SheetRow& row) const {
        PriceLine line;
        line.line = row.line;
        line.group = keptName(row, PriceField::Group);
        line.manufacturer = keptName(row, PriceField::Manufacturer);
        line.name = needed(row, PriceField::Name, kTextLimit);
        line.description = text(row, PriceField::Description, kTextLimit);
        line.unit = text(row, PriceField::Unit, kUnitLimit);
        line.note = text(row, PriceField::Note, kTextLimit);
        line.price = price(row);
        line.stock = stock(row);
        return line;
    }

 private:
    // One line of text, as the windows' fields hold it.
    std::string text(const SheetRow& row, PriceField field, qsizetype limit) const {
        const QString found = QString::fromStdString(columns_.cell(row, field).text).simplified();
        if (found.toUcs4().size() > limit) {
            throw Fault{field, "is longer than " + std::to_string(limit) + " characters"};
        }
        std::string utf8 = found.toStdString();
        if (!alphabet::isSound(utf8)) {
            throw Fault{field, "is no text"};
        }
        return utf8;
    }

    std::string needed(const SheetRow& row, PriceField field, qsizetype limit) const {
        std::string found = text(row, field, limit);
        if (found.empty()) {
            throw Fault{field, "is empty"};
        }
        return found;
    }

    std::string keptName(const SheetRow& row, PriceField field) const {
        const QString kept = NameAsKept(QString::fromStdString(needed(row, field, kTextLimit)));
        if (kept.toUcs4().size() > kTextLimit) {
            throw Fault{field, "is longer than 255 characters in capitals"};
        }
        return kept.toStdString();
    }

    float price(const SheetRow& row) const {
        const SheetCell& cell = columns_.cell(row, PriceField::Price);
        if (cell.text.empty()) {
            throw Fault{PriceField::Price, "is empty"};
        }
        const double found = number(cell, PriceField::Price);
        return money_ == Money::Euro ? single(found, PriceField::Price) : EuroOfDinars(found, rate_);
    }

    std::optional<float> stock(const SheetRow& row) const {
        const SheetCell& cell = columns_.cell(row, PriceField::Stock);
        return cell.text.empty()
                   ? std::nullopt
                   : std::optional<float>(single(number(cell, PriceField::Stock), PriceField::Stock));
    }

    // The nearest Single of the decimal that was typed.
    static float single(double number, PriceField field) {
        const auto found = static_cast<float>(number);
        if (!std::isfinite(found)) {
            throw Fault{field, "is too large"};
        }
        return found;
    }

    double number(const SheetCell& cell, PriceField field) const {
        const double found = cell.number ? *cell.number : typed(cell.text, field);
        if (found < 0) {
            throw Fault{field, quoted(cell.text) + " is below zero"};
        }
        return found;
    }

    double typed(const std::string& text, PriceField field) const {
        const std::optional<TypedNumber> number = typedNumber(text);
        if (!number) {
            throw Fault{field, quoted(text) + " is no number"};
        }
        if (number->money && (field != PriceField::Price || *number->money != money_)) {
            throw Fault{field, quoted(text) + " is in another currency than " +
                                   (money_ == Money::Euro ? "euro" : "dinars")};
        }
        const std::optional<double> found = numberUnder(markOf(number->digits, text, field), number->digits);
        if (!found) {
            throw Fault{field, quoted(text) + " is no number"};
        }
        return *found;
    }

    // What was told goes for every number; what the others tell, only for one that may be read in two ways.
    DecimalMark markOf(const std::string& digits, const std::string& text, PriceField field) const {
        const DecimalMark own = isTold_ ? mark_ : markIn(digits);
        if (own != DecimalMark::Unknown) {
            return own;
        }
        if (mark_ == DecimalMark::Unknown && digits.find_first_of(",.") != std::string::npos) {
            throw Fault{field, quoted(text) + " may be read in two ways; say --decimal comma or point"};
        }
        return mark_ == DecimalMark::Unknown ? DecimalMark::Point : mark_;
    }

    // Unknown where they differ, or none of them tells.
    DecimalMark markOfAll(const std::vector<SheetRow>& rows) const {
        bool comma = false;
        bool point = false;
        for (std::size_t i = columns_.firstRow(); i < rows.size(); ++i) {
            for (const PriceField field : {PriceField::Price, PriceField::Stock}) {
                const SheetCell& cell = columns_.cell(rows[i], field);
                const auto number = cell.number ? std::nullopt : typedNumber(cell.text);
                const DecimalMark mark = number ? markIn(number->digits) : DecimalMark::Unknown;
                comma |= mark == DecimalMark::Comma;
                point |= mark == DecimalMark::Point;
            }
        }
        if (comma == point) {
            return DecimalMark::Unknown;
        }
        return comma ? DecimalMark::Comma : DecimalMark::Point;
    }

    const PriceColumns& columns_;
    float rate_;
    Money money_;
    DecimalMark mark_;
    bool isTold_ = false;
};

}  // namespace

PriceList readPriceList(const std::vector<SheetRow>& rows, const PriceColumns& columns,
                        const PriceListChoices& choices) {
    const LineReader reader(rows, columns, choices);
    PriceList list;
    for (std::size_t i = columns.firstRow(); i < rows.size(); ++i) {
        try {
            list.lines.push_back(reader.read(rows[i]));
        } catch (const Fault& fault) {
            list.bad.push_back({rows[i].line, columns.heading(fault.field), fault.why});
        }
    }
    return list;
}

}  // namespace exchange
