#pragma once

#include <QList>
#include <QObject>
#include <QPointer>
#include <QString>
#include <utility>

#include "platform/controls/selection.h"
#include "platform/dao/database.h"
#include "platform/dao/recordset.h"

class QWidget;

namespace platform {

// A record set with one current row, and the entry fields bound to it: moving shows the row in the fields.
// Bound widgets: QLineEdit, QPlainTextEdit (text), QCheckBox (Yes/No), DateField (date, Null allowed).
// Nothing typed is ever written by a move: only UpdateRecord writes. A Null shows as empty; an empty text is
// written as the empty text over a value that was not Null, and leaves a Null as it is. A date left empty is
// written as the date value 1.0, never as Null; both show as empty. A line takes no more characters than its
// field holds.
class DataControl : public QObject {
    Q_OBJECT
 public:
    explicit DataControl(QObject* parent = nullptr);

    QString DatabaseName;  // path
    QString Connect;       // ";Pwd=" and the password
    // What is shown; takes effect at Refresh.
    void select(Selection selection) { selection_ = std::move(selection); }
    const Selection& selection() const { return selection_; }
    // The same as a statement.
    QString RecordSource() const { return selection_.text(); }
    void setRecordSource(const QString& statement) { select(Selection::statement(statement)); }

    // Opens the file if it is not open (or DatabaseName changed), runs the selection as a dynaset and shows
    // its first row. Throws dao::Error and then has no record set. With an empty selection only the file is
    // opened.
    void Refresh();
    dao::Database& Database() { return database_; }
    // The record set itself, for reading. Move it through the forwards below, so that the fields follow.
    dao::Recordset& Recordset() { return recordset_; }
    bool isOpen() const { return static_cast<bool>(recordset_); }
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

    // A field of the file shown in a widget. The widget's text changes mark it as changed: bind before
    // connecting a handler that asks DataChanged.
    void bind(QWidget* widget, const QString& field);
    // The widget has been changed since its row was shown or written.
    bool DataChanged(const QWidget* widget) const;
    void setDataChanged(const QWidget* widget, bool changed);

 signals:
    void repositioned();  // another row (or none) is shown

 private:
    struct Binding {
        QPointer<QWidget> widget;
        QString field;
        bool changed = false;
    };
    void showRow();
    void showEmpty();
    void put(const QList<dao::Value>& values);
    void limitLengths();
    void writeFields(bool adding);
    void markChanged(const QWidget* widget);
    bool isAdding() const;
    template <typename Step>
    void moveBy(Step step);
    dao::Database database_;
    dao::Recordset recordset_;
    Selection selection_;
    QString openName_;
    QList<Binding> bindings_;
    bool showing_ = false;
};

}  // namespace platform
