#pragma once

#include <QString>

namespace platform {

// What a data control shows: the rows of a source that meet a condition, in an order.
struct Selection {
    // How the statement spells its own words. The engine takes both; people who compare a statement with the
    // one they know from the shop's notes see the letters.
    enum class Words { Capitals, Initials };  // SELECT .. WHERE, Select .. Where

    QString columns;  // "*" or field names, comma between; empty: `source` is a statement by itself
    QString source;   // table or stored query; empty: nothing is selected
    QString where;    // empty: all rows
    QString order;    // field and direction; empty: the order of the source
    Words words = Words::Capitals;

    static Selection all(const QString& source, Words words = Words::Capitals);
    // A whole statement that somebody else has written.
    static Selection statement(const QString& text);
    Selection matching(const QString& condition) const;
    Selection orderedBy(const QString& fieldAndDirection) const;
    bool isEmpty() const { return source.isEmpty(); }
    QString text() const;
};

// Without regard to case, as the engine reads them.
bool sameRows(const Selection& one, const Selection& other);

}  // namespace platform
