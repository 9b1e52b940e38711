#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <span>

#include "platform/controls/data_control.h"
#include "platform/controls/selector.h"
#include "records/stage_facts.h"

class EntryFields;
struct EntryRow;
class MainView;

// One stage of the main window: its record set, its selector, the fields of its pane, and what is known of
// the record on show. Four things stand for one position and move together: the current row, the selector's
// entry, `remembered`, the caption of the tab. The stage of services has neither selector nor entry rows.
class Stage {
 public:
    // `fields` and `window` outlive the stage; `parent` owns its record set.
    Stage(int index, const EntryFields& fields, MainView& window, QObject* parent);
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;

    bool dirty = false;  // a field has been changed since the last save or cancel
    int remembered = 0;  // the entry that the record set stands on; -1 while a record is being added

    int index() const { return index_; }
    const StageFacts& facts() const { return stageFacts(index_); }
    platform::DataControl& data() const { return *data_; }
    platform::Selector& selector() const { return *selector_; }
    void setSelector(platform::Selector* selector) { selector_ = selector; }
    const EntryFields& fields() const { return fields_; }
    std::span<const EntryRow> rows() const;  // of its pane
    bool isLocked() const { return locked_; }
    void setLocked(bool locked);  // nothing can be typed into a locked one

    QString nameOfFields() const { return facts().nameOfFields(fields_); }
    QString nameOfRecord() const { return facts().nameOfRow(data_->Recordset()); }
    void showCaption(const QString& text);  // of its tab
    void showUsualCaption();                // that of a stage where nothing is chosen
    // The messages of all required fields that are empty, and the first of these fields; -1: none.
    QString missing(int& focusField) const;

    qint32 key() const;     // of the current row; -1 where there is none
    qint32 chosen() const;  // the number of the selector's entry; -1 where there is none
    bool isChosen() const { return selector_->currentIndex() >= 0; }
    bool isEmpty() const { return selector_->entryCount() == 0; }
    int findEntry(const QString& name) const;  // of several of one name that of the current row
    void select(int entry);                    // without a signal, and remembered
    void showEntryOfRecord();                  // selector and tab go to the record on show
    void refreshEntry();  // to the text of the fields, where the entry is that of the record on show
    void findRecord(qint32 number);  // throws as DataControl::FindFirst

    bool isStale(const platform::Selection& selection) const;
    void refresh(const platform::Selection& selection);  // throws as DataControl::Refresh
    void fill();  // the selector, from the selection; its first record is shown. Locks an empty stage.

    bool hasNewRow() const;
    void dropPendingRow();

 private:
    QList<platform::Selector::Entry> readEntries() const;

    int index_;
    const EntryFields& fields_;
    MainView& window_;
    platform::DataControl* data_;
    platform::Selector* selector_ = nullptr;
    bool locked_ = false;
};
