#pragma once

#include <QComboBox>
#include <QList>
#include <QString>
#include <memory>

#include "platform/controls/name_list.h"

namespace platform {

// A drop-down list that keeps itself in alphabetical order, each entry carrying a number (item data). Texts
// need not be unique. Holds a million entries and stays quick. Indices count from 0; -1: nothing selected.
class Selector : public QComboBox {
    Q_OBJECT
 public:
    explicit Selector(QWidget* parent = nullptr);

    struct Entry {
        QString text;
        qint32 data = 0;
    };
    void clearEntries();
    // Many at once, in any order: sorted once. The selection goes to -1. No change signal.
    void setEntries(const QList<Entry>& entries);
    void setEntries(NameList sorted);
    // What it lists and what of that is selected, good until the next change but a setEntries; and that again
    // after it. No change signal.
    struct Kept {
        std::shared_ptr<NameList> names;
        int index;
    };
    Kept keep() const;
    void putBack(const Kept& kept);
    int addEntry(const QString& text,
                 qint32 number);  // its place in the order; the selection stays on its entry
    void removeEntry(int index);  // of the selected entry: the selection goes to -1
    // The text at a position, without regard to the order: the entry keeps its place and its data.
    void replaceText(int index, const QString& text);
    int entryCount() const;
    QString entryText(int index) const;  // empty out of range
    qint32 entryData(int index) const;   // -1 out of range
    // The first entry, from the top, that begins with the text, without regard to case; -1 where there is
    // none. An empty text finds entry 0.
    int findPrefix(const QString& text) const;
    // setCurrentIndex() from the base class selects and signals as a person's choice does
    // (currentIndexChanged). None of the changes above signals: an index that only moves up or down still
    // stands for the same entry.

 private:
    class Model;
    Model* model_;
};

}  // namespace platform
