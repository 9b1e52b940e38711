#pragma once

#include <QString>
#include <QStringList>
#include <functional>

// The tips of the shop's own text file, every line one of them, an empty line as well; and which of them is
// on show.
class TipList {
 public:
    TipList();

    // Reads the tips (UTF-8) and goes to the first, or to one by chance. False: with an empty `errorText` the
    // file is not there, else that says why it could not be read; there are no tips then.
    bool load(const QString& file, QString& errorText);
    // In a circle, or by chance where the person wants that (ShowTipsAtRandom).
    void next();
    void previous();

    int count() const { return static_cast<int>(lines_.size()); }
    QString text() const { return lines_.value(current - 1); }  // empty where there is none

    int current = 0;                 // counts from 1; 0: none yet
    std::function<double()> chance;  // in [0, 1)

 private:
    int anyTip() const;

    QStringList lines_;
};
