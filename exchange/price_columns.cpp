#include "exchange/price_columns.h"

#include <QRegularExpression>
#include <QString>
#include <QStringList>
#include <algorithm>
#include <stdexcept>

namespace exchange {
namespace {

constexpr std::size_t kUpperRows = 20;  // a list may begin with the supplier's address

struct Words {
    PriceField field;
    const char* name;
    QStringList words;  // the first letters of the alphabet alone, small
};

// In the order in which columns are given away: "unit price" is a price.
const std::vector<Words>& allWords() {
    static const std::vector<Words> all{
        {PriceField::Name, "name", {"naziv", "name", "artikal", "article", "product", "proizvod", "item"}},
        {PriceField::Group, "group", {"grupa", "group", "kategorija", "category"}},
        {PriceField::Manufacturer,
         "manufacturer",
         {"proizvodjac", "proizvodac", "manufacturer", "brand", "brend", "marka", "maker"}},
        {PriceField::Price, "price", {"cena", "cijena", "price"}},
        {PriceField::Stock,
         "stock",
         {"stanje", "lager", "stock", "qty", "kolicina", "quantity", "zaliha", "zalihe"}},
        {PriceField::Unit, "unit", {"jm", "jedinica", "unit"}},
        {PriceField::Description, "description", {"opis", "description"}},
        {PriceField::Note, "note", {"napomena", "note", "remark"}},
    };
    return all;
}

// "Proizvođač (šifra)" as "proizvodjac", "sifra".
QStringList wordsOf(const QString& heading) {
    QString plain;
    for (const QChar c : heading.toLower().normalized(QString::NormalizationForm_D)) {
        if (c == QChar(0x0111)) {
            plain += QStringLiteral("dj");
        } else if (c.category() != QChar::Mark_NonSpacing) {
            plain += c.isLetterOrNumber() || c == QChar(0x20AC) ? c : QLatin1Char(' ');
        }
    }
    return plain.split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

std::optional<PriceField> fieldCalled(const QString& word) {
    const QStringList words = wordsOf(word);
    for (const Words& one : allWords()) {
        if (words.size() == 1 && (words[0] == QLatin1String(one.name) || one.words.contains(words[0]))) {
            return one.field;
        }
    }
    return std::nullopt;
}

// ----- what was told

struct Told {
    PriceField field;
    QString column;
};

std::vector<Told> toldIn(const std::vector<std::string>& maps) {
    static const QRegularExpression kNext(QStringLiteral(",(?=\\s*[^,=]+=)"));
    std::vector<Told> told;
    for (const std::string& map : maps) {
        for (const QString& part : QString::fromStdString(map).split(kNext)) {
            const qsizetype sign = part.indexOf(QLatin1Char('='));
            const auto field = sign > 0 ? fieldCalled(part.left(sign)) : std::nullopt;
            if (!field || part.mid(sign + 1).trimmed().isEmpty()) {
                throw std::runtime_error("\"" + part.toStdString() +
                                         "\" is no FIELD=COLUMN; the fields are group, manufacturer, name, "
                                         "price, description, stock, "
                                         "unit and note.");
            }
            told.push_back({*field, part.mid(sign + 1).trimmed()});
        }
    }
    return told;
}

// ----- one row, looked at as the heading

class Heading {
 public:
    using Places = std::array<std::optional<std::size_t>, kPriceFields>;

    explicit Heading(const SheetRow& row) {
        for (const SheetCell& cell : row.cells) {
            texts_.push_back(QString::fromStdString(cell.text).simplified());
        }
    }

    // Nothing where a column is missing that must be there; that one is then `missing`.
    std::optional<Places> places(const std::vector<Told>& told, std::string& missing) {
        Places found;
        for (const Told& one : told) {
            const auto place = placeTold(one.column);
            if (!place) {
                missing = '"' + one.column.toStdString() + '"';
                return std::nullopt;
            }
            take(found, one.field, *place);
        }
        for (const bool whole : {true, false}) {
            for (const Words& words : allWords()) {
                guess(found, words, whole);
            }
        }
        for (const Words& words : allWords()) {
            if (words.field <= PriceField::Price && !found[static_cast<std::size_t>(words.field)]) {
                missing = words.name;
                return std::nullopt;
            }
        }
        return found;
    }

 private:
    std::optional<std::size_t> placeTold(const QString& column) const {
        for (qsizetype i = 0; i < texts_.size(); ++i) {
            if (texts_[i].compare(column, Qt::CaseInsensitive) == 0) {
                return static_cast<std::size_t>(i);
            }
        }
        bool isNumber = false;
        const int number = column.toInt(&isNumber);
        return isNumber && number >= 1 ? std::optional<std::size_t>(number - 1) : std::nullopt;
    }

    void guess(Places& found, const Words& words, bool whole) {
        if (found[static_cast<std::size_t>(words.field)]) {
            return;
        }
        std::vector<std::size_t> fitting;
        for (qsizetype i = 0; i < texts_.size(); ++i) {
            const auto place = static_cast<std::size_t>(i);
            if (std::find(taken_.begin(), taken_.end(), place) == taken_.end() &&
                fits(texts_[i], words, whole)) {
                fitting.push_back(place);
            }
        }
        if (fitting.size() > 1) {
            throw std::runtime_error(std::string("The ") + words.name + " may be in the column \"" +
                                     textAt(fitting[0]) + "\" or in \"" + textAt(fitting[1]) +
                                     "\": say --map " + words.name + "=COLUMN.");
        }
        if (!fitting.empty()) {
            take(found, words.field, fitting[0]);
        }
    }

    static bool fits(const QString& heading, const Words& words, bool whole) {
        QStringList parts = wordsOf(heading);
        if (whole) {
            // The currency is no part of the name: "Cena EUR".
            parts.removeIf([](const QString& part) {
                static const QStringList kMoney{"eur", "euro",   "rsd",
                                                "din", "dinara", QStringLiteral("\u20ac")};
                return kMoney.contains(part);
            });
            return parts.size() == 1 && words.words.contains(parts[0]);
        }
        return std::any_of(parts.begin(), parts.end(),
                           [&](const QString& part) { return words.words.contains(part); });
    }

    void take(Places& found, PriceField field, std::size_t place) {
        found[static_cast<std::size_t>(field)] = place;
        taken_.push_back(place);
    }
    std::string textAt(std::size_t place) const {
        return texts_[static_cast<qsizetype>(place)].toStdString();
    }

    QStringList texts_;
    std::vector<std::size_t> taken_;
};

std::optional<Money> moneyIn(const QString& heading) {
    for (const QString& word : wordsOf(heading)) {
        if (word == QLatin1String("eur") || word == QLatin1String("euro") || word == QChar(0x20AC)) {
            return Money::Euro;
        }
        if (word == QLatin1String("rsd") || word == QLatin1String("din") || word == QLatin1String("dinara") ||
            word == QLatin1String("dinarima")) {
            return Money::Dinars;
        }
    }
    return std::nullopt;
}

}  // namespace

const char* nameOf(PriceField field) {
    const auto& all = allWords();
    return std::find_if(all.begin(), all.end(), [&](const Words& words) { return words.field == field; })
        ->name;
}

PriceColumns::PriceColumns(const std::vector<SheetRow>& rows, const std::vector<std::string>& maps) {
    const std::vector<Told> told = toldIn(maps);
    std::string missing;
    std::string firstMissing = "name";
    for (std::size_t i = 0; i < std::min(rows.size(), kUpperRows); ++i) {
        if (const auto places = Heading(rows[i]).places(told, missing)) {
            places_ = *places;
            firstRow_ = i + 1;
            for (const SheetCell& cell : rows[i].cells) {
                headings_.push_back(QString::fromStdString(cell.text).simplified().toStdString());
            }
            money_ = moneyIn(QString::fromStdString(heading(PriceField::Price)));
            return;
        }
        if (i == 0) {
            firstMissing = missing;
        }
    }
    throw std::runtime_error("No heading was found: there is no column for " + firstMissing +
                             ". Say --map FIELD=COLUMN, by heading or number.");
}

const SheetCell& PriceColumns::cell(const SheetRow& row, PriceField field) const {
    static const SheetCell kNothing;
    const auto place = places_[index(field)];
    return place && *place < row.cells.size() ? row.cells[*place] : kNothing;
}

std::string PriceColumns::heading(PriceField field) const {
    const auto place = places_[index(field)];
    if (!place) {
        return nameOf(field);
    }
    const bool isNamed = *place < headings_.size() && !headings_[*place].empty();
    return isNamed ? headings_[*place] : std::to_string(*place + 1);
}

}  // namespace exchange
