#include "platform/controls/selection.h"

namespace platform {
namespace {

bool sameText(const QString& one, const QString& other) {
    return one.compare(other, Qt::CaseInsensitive) == 0;
}

}  // namespace

Selection Selection::all(const QString& source, Words words) {
    return {QStringLiteral("*"), source, QString(), QString(), words};
}

Selection Selection::statement(const QString& text) {
    return {QString(), text, QString(), QString(), Words::Capitals};
}

Selection Selection::matching(const QString& condition) const {
    Selection narrowed = *this;
    narrowed.where = condition;
    return narrowed;
}

// A statement that came in whole may end in blanks; the order stands one blank behind it.
Selection Selection::orderedBy(const QString& fieldAndDirection) const {
    Selection ordered = *this;
    while (ordered.source.endsWith(QLatin1Char(' '))) {
        ordered.source.chop(1);
    }
    ordered.order = fieldAndDirection;
    return ordered;
}

QString Selection::text() const {
    const bool capitals = words == Words::Capitals;
    QString text = source;
    if (!source.isEmpty() && !columns.isEmpty()) {
        text = QLatin1String(capitals ? "SELECT " : "Select ") + columns + QLatin1String(" FROM ") + source;
    }
    if (!where.isEmpty()) {
        text += QLatin1String(capitals ? " WHERE " : " Where ") + where;
    }
    if (!order.isEmpty()) {
        text += QLatin1String(" ORDER BY ") + order;
    }
    return text;
}

bool sameRows(const Selection& one, const Selection& other) {
    return sameText(one.columns, other.columns) && sameText(one.source, other.source) &&
           sameText(one.where, other.where) && sameText(one.order, other.order);
}

}  // namespace platform
