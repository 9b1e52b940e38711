#pragma once

#include <QList>
#include <QWidget>

#include "records/entry_keys.h"

class EntryFields;
class QGridLayout;
class QLineEdit;
class QToolButton;
class QVBoxLayout;
struct EntryBlock;
struct EntryPane;
struct EntryRow;
namespace platform {
class Selector;
}

// The pane of a stage whose records are typed: the selector with its search box, and the framed blocks of
// fields below, built from the stage's table of fields.
class RecordPane : public QWidget {
 public:
    // Fills its part of `fields`; these and `keys` outlive it. `stageIndex` has an entry pane.
    RecordPane(int stageIndex, EntryFields& fields, EntryKeys& keys, QWidget* parent);

    QLineEdit* typeAhead() const { return typeAhead_; }  // goes to the first entry that begins so
    platform::Selector* selector() const { return selector_; }

 private:
    void buildSelectorRow(QVBoxLayout* column);
    void buildBlocks(QVBoxLayout* column);
    QGridLayout* addBlock(const EntryBlock& block, QGridLayout* grid);
    void alignFields(const QList<QGridLayout*>& insides, const QList<int>& labelWidths);
    int addRow(const EntryRow& row, QGridLayout* inside);
    QWidget* makeField(const EntryRow& row);
    QWidget* makeText(const EntryRow& row);
    QToolButton* makeOpener(bool isWeb);
    void findTyped();

    const int stageIndex_;
    const EntryPane& table_;
    EntryFields& fields_;
    EntryKeys& keys_;
    QLineEdit* typeAhead_ = nullptr;
    platform::Selector* selector_ = nullptr;
};
