#include "common/string_table.h"

#include <QFile>

// A resource inside a static library is dropped by the linker unless somebody asks for it by name, and this
// can only be asked outside of any namespace.
static void keepStringsLinked() {
    Q_INIT_RESOURCE(strings);
}

namespace {

QString unescaped(const QString& text) {
    QString plain = text;
    plain.replace(QLatin1String("\\r\\n"), QLatin1String("\r\n"));
    plain.replace(QLatin1String("\\n"), QLatin1String("\n"));
    return plain;
}

}  // namespace

StringTable StringTable::parse(const QByteArray& file) {
    StringTable table;
    int lineNumber = 0;
    for (const QByteArray& line : file.split('\n')) {
        ++lineNumber;
        if (line.isEmpty()) {
            continue;
        }
        const qsizetype tab = line.indexOf('\t');
        bool isNumber = false;
        const int id = line.left(tab < 0 ? 0 : tab).toInt(&isNumber);
        if (!isNumber || table.texts_.contains(id)) {
            table.damage_ += QStringLiteral("Line %1: %2\n").arg(lineNumber).arg(QString::fromUtf8(line));
            continue;
        }
        table.texts_.insert(id, unescaped(QString::fromUtf8(line.mid(tab + 1))));
    }
    table.damage_.chop(1);
    return table;
}

const StringTable& StringTable::ofProgram() {
    static const StringTable table = [] {
        keepStringsLinked();
        QFile file(QStringLiteral(":/strings.tsv"));
        return file.open(QIODevice::ReadOnly) ? parse(file.readAll()) : StringTable();
    }();
    return table;
}
