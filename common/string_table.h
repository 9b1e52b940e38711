#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>

// The program's numbered texts as they stand in resources/strings.tsv: one text a line, its number, a tab,
// the text. In the file "\n" is a line feed and "\r\n" a carriage return with a line feed.
class StringTable {
 public:
    // Reads the whole file. A line that has no number, no tab, or a number already taken is left out and
    // named in damage(); the rest is kept, because a shop with one garbled caption can still work.
    static StringTable parse(const QByteArray& file);

    QString text(int id) const { return texts_.value(id); }  // empty where there is none
    qsizetype count() const { return texts_.size(); }
    QList<int> ids() const { return texts_.keys(); }
    QString damage() const { return damage_; }  // one line a fault; empty where there is none

    static const StringTable& ofProgram();  // the one built into the program

 private:
    QHash<int, QString> texts_;
    QString damage_;
};
