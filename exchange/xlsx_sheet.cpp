#include "exchange/xlsx_sheet.h"

#include <QHash>
#include <QStringList>
#include <QXmlStreamReader>
#include <algorithm>
#include <charconv>
#include <functional>
#include <stdexcept>

#include <orcus/zip_archive.hpp>
#include <orcus/zip_archive_stream.hpp>

namespace exchange {
namespace {

constexpr int kMostColumns = 16384;

// The parts of the workbook, by their paths within it.
class Parts {
 public:
    explicit Parts(std::string_view bytes)
        : stream_(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size()), archive_(&stream_) {
        archive_.load();
        for (std::size_t i = 0; i < archive_.get_file_entry_count(); ++i) {
            names_.push_back(std::string(archive_.get_file_entry_name(i)));
        }
    }
    bool has(const std::string& name) const {
        return std::find(names_.begin(), names_.end(), name) != names_.end();
    }
    QByteArray read(const std::string& name) const {
        if (!has(name)) {
            throw std::runtime_error("it has no part " + name);
        }
        std::vector<unsigned char> part;
        if (!archive_.read_file_entry(name, part)) {
            throw std::runtime_error("its part " + name + " cannot be unpacked");
        }
        while (!part.empty() && part.back() == 0) {
            part.pop_back();  // the archive puts an end behind what it unpacks
        }
        return {reinterpret_cast<const char*>(part.data()), static_cast<qsizetype>(part.size())};
    }

 private:
    orcus::zip_archive_stream_blob stream_;
    orcus::zip_archive archive_;
    std::vector<std::string> names_;
};

void forEachElement(const QByteArray& part, const std::function<void(QXmlStreamReader&)>& take) {
    QXmlStreamReader xml(part);
    while (!xml.atEnd()) {
        if (xml.readNext() == QXmlStreamReader::StartElement) {
            take(xml);
        }
    }
    if (xml.hasError()) {
        throw std::runtime_error(xml.errorString().toStdString());
    }
}

// Of an element "si" or "is": its pieces together, without what tells how the text is spoken.
QString textIn(QXmlStreamReader& xml) {
    QString text;
    while (xml.readNextStartElement()) {
        if (xml.name() == QLatin1String("t")) {
            text += xml.readElementText();
        } else if (xml.name() == QLatin1String("r")) {
            text += textIn(xml);
        } else {
            xml.skipCurrentElement();
        }
    }
    return text;
}

std::string firstSheet(const Parts& parts) {
    QString id;
    forEachElement(parts.read("xl/workbook.xml"), [&](QXmlStreamReader& xml) {
        if (xml.name() == QLatin1String("sheet") && id.isEmpty()) {
            for (const QXmlStreamAttribute& attribute : xml.attributes()) {
                if (attribute.name() == QLatin1String("id")) {
                    id = attribute.value().toString();
                }
            }
        }
    });
    QString target;
    forEachElement(parts.read("xl/_rels/workbook.xml.rels"), [&](QXmlStreamReader& xml) {
        if (xml.attributes().value(QLatin1String("Id")) == id && target.isEmpty()) {
            target = xml.attributes().value(QLatin1String("Target")).toString();
        }
    });
    // From the workbook's folder, or from the root of the archive.
    return (target.startsWith(QLatin1Char('/')) ? target.mid(1) : QStringLiteral("xl/") + target)
        .toStdString();
}

QStringList sharedTexts(const Parts& parts) {
    constexpr char kPart[] = "xl/sharedStrings.xml";
    QStringList texts;
    if (parts.has(kPart)) {
        forEachElement(parts.read(kPart), [&](QXmlStreamReader& xml) {
            if (xml.name() == QLatin1String("si")) {
                texts.push_back(textIn(xml));
            }
        });
    }
    return texts;
}

// Of "AB12" the column, from 0; -1 where it does not say.
int columnIn(QStringView place) {
    int column = 0;
    for (const QChar c : place) {
        if (c < QLatin1Char('A') || c > QLatin1Char('Z') || column > kMostColumns) {
            break;
        }
        column = column * 26 + (c.unicode() - 'A' + 1);
    }
    return column - 1;
}

class RowReader {
 public:
    explicit RowReader(QStringList texts) : texts_(std::move(texts)) {}

    void take(QXmlStreamReader& xml) {
        if (xml.name() == QLatin1String("row")) {
            const int line = xml.attributes().value(QLatin1String("r")).toInt();
            line_ = line > 0 ? line : line_ + 1;
            next_ = 0;
        } else if (xml.name() == QLatin1String("c")) {
            takeCell(xml);
        }
    }

    std::vector<SheetRow> rows;

 private:
    void takeCell(QXmlStreamReader& xml) {
        const int told = columnIn(xml.attributes().value(QLatin1String("r")));
        const int column = told >= 0 ? told : next_;
        if (column >= kMostColumns) {
            throw std::runtime_error("a cell stands in no column");
        }
        next_ = column + 1;
        const QString type = xml.attributes().value(QLatin1String("t")).toString();
        SheetCell cell;
        while (xml.readNextStartElement()) {
            if (xml.name() == QLatin1String("v")) {
                cell = cellOf(type, xml.readElementText());
            } else if (xml.name() == QLatin1String("is")) {
                cell.text = textIn(xml).trimmed().toStdString();
            } else {
                xml.skipCurrentElement();
            }
        }
        put(static_cast<std::size_t>(column), std::move(cell));
    }

    SheetCell cellOf(const QString& type, const QString& value) const {
        if (type == QLatin1String("s")) {
            bool isNumber = false;
            const int place = value.toInt(&isNumber);
            if (!isNumber || place < 0 || place >= texts_.size()) {
                throw std::runtime_error("a text is missing");
            }
            return {texts_[place].trimmed().toStdString(), std::nullopt};
        }
        if (type == QLatin1String("str") || type == QLatin1String("b") || type == QLatin1String("e")) {
            return {value.trimmed().toStdString(), std::nullopt};
        }
        bool isNumber = false;
        const double number = value.toDouble(&isNumber);
        char buffer[64];
        const auto end = std::to_chars(buffer, buffer + sizeof buffer, number);
        return isNumber ? SheetCell{std::string(buffer, end.ptr), number}
                        : SheetCell{value.trimmed().toStdString(), std::nullopt};
    }

    void put(std::size_t column, SheetCell cell) {
        if (rows.empty() || rows.back().line != line_) {
            rows.push_back({line_, {}});
        }
        std::vector<SheetCell>& cells = rows.back().cells;
        cells.resize(std::max(cells.size(), column + 1));
        cells[column] = std::move(cell);
    }

    QStringList texts_;
    int line_ = 0;
    int next_ = 0;
};

}  // namespace

bool isXlsx(std::string_view bytes) {
    try {
        return Parts(bytes).has("xl/workbook.xml");
    } catch (const std::exception&) {
        return false;  // whatever else it is
    }
}

std::vector<SheetRow> xlsxRows(std::string_view bytes) {
    const Parts parts(bytes);
    RowReader reader(sharedTexts(parts));
    forEachElement(parts.read(firstSheet(parts)), [&](QXmlStreamReader& xml) { reader.take(xml); });
    return std::move(reader.rows);
}

}  // namespace exchange
