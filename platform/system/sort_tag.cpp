#include "platform/system/sort_tag.h"

#include "platform/system/trap.h"

namespace platform {

SortTag splitSortTag(const QString& tag) {
    if (tag.size() < 2) {
        throw RunError(5, QStringLiteral("Invalid procedure call or argument"));
    }
    if (!tag.front().isDigit()) {
        throw RunError(13, QStringLiteral("Type mismatch"));
    }
    SortTag sort;
    sort.sorted = tag.front() != QLatin1Char('0');
    sort.field = tag.mid(1, tag.size() - 2);
    sort.order = tag.back() == QLatin1Char('0') ? QStringLiteral("ASC") : QStringLiteral("DESC");
    return sort;
}

QString makeSortTag(const SortTag& sort) {
    return QStringLiteral("%1%2%3").arg(
        QString::number(sort.sorted ? 1 : 0), sort.field,
        sort.order == QLatin1String("ASC") ? QStringLiteral("0") : QStringLiteral("1"));
}

}  // namespace platform
