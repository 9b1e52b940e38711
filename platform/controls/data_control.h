#pragma once

#include <QObject>
#include <QString>

#include "platform/controls/bound_fields.h"
#include "platform/controls/selection.h"
#include "platform/dao/database.h"
#include "platform/dao/recordset.h"

namespace platform {

// A record set with one current row, and the entry fields bound to it: moving shows the row in the fields.
// Nothing typed is ever written by a move: only UpdateRecord writes.
class DataControl : public QObject {
    Q_OBJECT
 public:
    explicit DataControl(QObject* parent = nullptr);

    QString DatabaseName;                                      // path
    QString Connect;                                           // ";Pwd=" and the password
    Selection selection;                                       // what is shown; takes effect at Refresh
    QString RecordSource() const { return selection.text(); }  // the same as a statement

    // Opens the file if it is not open (or DatabaseName changed), runs the selection as a dynaset and shows
    // its first row. Throws dao::Error and then has no record set. With an empty selection only the file is
    // opened. Within a LongWait it can be left.
    void Refresh();
    dao::Database& Database() { return database_; }
    // The record set itself, for reading. Move it through the forwards below, so that the fields follow.
    dao::Recordset& Recordset() { return recordset_; }
    bool isOpen() const { return static_cast<bool>(recordset_); }
    // What the last Refresh has read, for who may have to put it back: without it the next one would close
    // it.
    struct Reading {
        dao::Recordset rows;
        Selection selection;
    };
    Reading takeOut();  // the fields go on showing its row
    void putBack(Reading reading);
    void Close();  // record set and database; fields are emptied

    // The record set's operations, each followed by showing the row. All throw as the record set does.
    void MoveFirst();
    void MoveLast();
    void MoveNext();
    void Move(qint64 rows);
    void FindFirst(const QString& criterion);
    void setBookmark(const dao::Bookmark& place);
    void AddNew();        // the fields are emptied
    void CancelUpdate();  // drops a pending AddNew or Edit; the current row is shown again
    void Delete();        // the fields keep showing the row until the next move

    // Writes the bound fields to the row: of a pending AddNew, otherwise as Edit .. Update of the current
    // row. Fields nobody touched are not written on an edit. On failure the edit is dropped, the fields keep
    // what was typed, and the engine's error is thrown.
    void UpdateRecord();
    // Throws away what was typed and shows the row again.
    void UpdateControls();

    BoundFields& fields() { return fields_; }

 signals:
    void repositioned();  // another row (or none) is shown

 private:
    void read();

    dao::Database database_;
    dao::Recordset recordset_;
    BoundFields fields_;
};

}  // namespace platform
