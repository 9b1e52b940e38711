#pragma once

#include <memory>

#include "platform/dao/database_impl.h"
#include "platform/dao/row_cursor.h"
#include "platform/dao/row_editing.h"

namespace dao {

// A record set: rows, the one that it stands on, the moves from one to another, and the changes where there
// can be any.
class RecordsetImpl final : public Dependent {
 public:
    // It stands on the first of the rows.
    RecordsetImpl(std::shared_ptr<DatabaseImpl> database, RecordsetType type,
                  std::unique_ptr<RowSource> rows);
    ~RecordsetImpl() override { Close(); }  // an Edit left behind must not keep the office waiting

    RecordsetType Type() const { return type_; }
    void checkOpen() const;  // 3420
    void Close() noexcept override;

    const Columns& columns() const { return rows_->columns(); }
    const sql::ResultColumn& column(int index) const;  // 3420, 3265
    const Value& value(int index);
    void setValue(int index, Value&& value);

    const RowCursor& cursor() const { return cursor_; }
    RowCursor& leave();  // for a move: what is pending is dropped
    // Fails with that error where nobody can change the rows.
    RowEditing& editing(int otherwise) const;
    EditModeKind EditMode() const { return isPending() ? editing_->EditMode() : EditModeKind::None; }
    bool Updatable() const { return editing_ != nullptr && !database_->isReadOnly(); }

    std::shared_ptr<RecordsetImpl> Clone() const;
    void Requery();

 private:
    bool isPending() const { return editing_ != nullptr && editing_->isPending(); }

    std::shared_ptr<DatabaseImpl> database_;
    RecordsetType type_;
    std::unique_ptr<RowSource> rows_;
    FetchedRow row_{*rows_};
    RowCursor cursor_{*rows_, row_};
    std::unique_ptr<RowEditing> editing_{rows_->editing(row_)};  // nullptr: nobody can
    bool closed_ = false;
};

}  // namespace dao
