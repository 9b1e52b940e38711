#pragma once

#include <memory>

#include "platform/dao/database_impl.h"
#include "platform/dao/failure.h"
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
    void checkOpen() const {  // 3420
        if (closed_) {
            fail(errObjectClosed);
        }
    }
    void Close() noexcept override;

    const Columns& columns() const { return rows_->columns(); }
    const sql::ResultColumn& column(int index) const;  // 3420, 3265
    const Value& value(int index) {
        const std::size_t at = checked(index);
        return isPending() ? editing_->value(at) : row_.value(at);
    }
    std::string_view text(int index) {  // see Field
        const std::size_t at = checked(index);
        return isPending() ? editing_->value(at).textRef() : row_.text(at);
    }
    void setValue(int index, Value&& value);

    const RowCursor& cursor() const { return cursor_; }
    // For a move: what is pending is dropped.
    RowCursor& leave() {
        if (isPending()) {
            editing_->drop();
        }
        return cursor_;
    }
    // Fails with that error where nobody can change the rows.
    RowEditing& editing(int otherwise) const;
    EditModeKind EditMode() const { return isPending() ? editing_->EditMode() : EditModeKind::None; }
    bool Updatable() const { return editing_ != nullptr && !database_->isReadOnly(); }

    std::shared_ptr<RecordsetImpl> Clone() const;
    void Requery();

 private:
    std::size_t checked(int index) const {  // 3420, 3265
        if (closed_ || !columns().has(index)) {
            column(index);
        }
        return static_cast<std::size_t>(index);
    }
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
