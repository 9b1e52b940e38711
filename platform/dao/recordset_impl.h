#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/dao/current_row.h"
#include "platform/dao/database_impl.h"
#include "platform/dao/field_names.h"
#include "platform/dao/pending_field.h"
#include "platform/dao/recordset_kinds.h"
#include "platform/dao/row_position.h"
#include "platform/sql/types.h"
#include "platform/sql/writer.h"

namespace dao {

// What all record sets share: a place among rows, the fields of the row there, and what is pending for it.
class RecordsetImpl : public Dependent {
 public:
    RecordsetImpl(std::shared_ptr<DatabaseImpl> database, RecordsetType type);

    bool BOF() const;
    bool EOF() const;
    void MoveFirst();
    void MoveLast();
    void MoveNext();
    void MovePrevious();
    void Move(std::int64_t rows);
    std::int64_t RecordCount() const;
    std::int64_t AbsolutePosition() const;
    void setAbsolutePosition(std::int64_t position);
    std::shared_ptr<RecordsetImpl> Clone() const;

    void FindFirst(std::string_view criterion);
    bool NoMatch() const;

    virtual void AddNew();
    virtual void Edit();
    virtual void Update();
    void CancelUpdate();
    virtual void Delete();
    EditModeKind EditMode() const;

    dao::Bookmark Bookmark() const;
    void setBookmark(const dao::Bookmark& place);
    dao::Bookmark LastModified() const;

    int FieldCount() const;
    int fieldIndex(std::string_view name) const;  // 3265
    void checkIndex(int index) const;             // 3265
    const sql::ResultColumn& column(int index) const { return columns_[static_cast<std::size_t>(index)]; }
    const Value& value(int index);
    virtual void setValue(int index, Value&& value);

    virtual bool Updatable() const { return false; }
    RecordsetType Type() const { return type_; }
    void Requery();
    void Close() noexcept override;
    bool isClosed() const { return closed_; }

 protected:
    // Runs the statement; the columns go to setColumns.
    virtual void open() = 0;
    virtual void release() noexcept = 0;  // frees the rows; no other call follows
    virtual std::size_t count() const = 0;
    virtual std::shared_ptr<RecordsetImpl> copy() const = 0;  // the same rows, nothing fetched or pending
    // The row gets among those of row_, and lies there. 3167 if somebody has deleted it.
    virtual void fetch(std::size_t row) = 0;
    // The current row was fetched without this field; now all of it is wanted.
    virtual void fetchUnread() {}
    // Asks the next fetch to look into the file, although it has the row.
    virtual void distrust() {}
    // Whether the row is there without a look into the file.
    virtual bool surelyStands(std::size_t) const { return false; }
    virtual std::optional<std::size_t> findRow(std::string_view criterion) = 0;
    virtual dao::Bookmark bookmarkOf(std::size_t row) const = 0;
    virtual std::optional<std::size_t> rowOf(const dao::Bookmark& place) const = 0;
    virtual void dropPending() noexcept { editMode_ = EditModeKind::None; }

    void checkOpen() const;  // 3420
    void setColumns(std::vector<sql::ResultColumn> columns);
    void start();  // on the first row
    void leave();  // a move begins: what is pending is dropped
    bool hasRow() const { return position_.isOnRow(count()); }
    std::size_t currentRow() const;  // 3021, 3167
    void needRow();                  // fetches the current row
    void leaveGap();                 // the current row is no longer among the rows
    // count() has grown by one at the end; the current row stays what it was.
    void rowAppended() { position_.rowAppended(count()); }

    std::shared_ptr<DatabaseImpl> database_;
    RecordsetType type_;
    std::vector<sql::ResultColumn> columns_;
    CurrentRow row_;
    std::vector<PendingField> pending_;  // the row being edited or added
    EditModeKind editMode_ = EditModeKind::None;
    dao::Bookmark lastModified_;

 private:
    FieldNames names_;
    RowPosition position_;
    bool noMatch_ = false;
    bool closed_ = false;
};

}  // namespace dao
