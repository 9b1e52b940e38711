#pragma once

#include <vector>

#include "platform/dao/added_row.h"
#include "platform/dao/edited_row.h"
#include "platform/dao/fetched_row.h"
#include "platform/dao/recordset_kinds.h"

namespace dao {

// What a keyset consists of for those who change its rows.
struct KeysetParts {
    const KeysetView& view;
    KeyList& keys;
    KeyedBlock& rows;
};

// The changes to the rows of a keyset, under the names that everybody knows them by; see Recordset for what
// each of them fails with.
class RowEditing {
 public:
    RowEditing(const KeysetParts& set, FetchedRow& row) : set_(set), row_(row) {}
    RowEditing(const RowEditing&) = delete;
    RowEditing& operator=(const RowEditing&) = delete;

    void AddNew();
    void Edit();
    void Update();
    void CancelUpdate();
    void Delete();
    EditModeKind EditMode() const { return mode_; }
    void drop() noexcept;  // what is pending, if anything is
    dao::Bookmark LastModified() const;

    // Of the row being edited or added.
    bool isPending() const { return mode_ != EditModeKind::None; }
    const Value& value(std::size_t column) const { return pending_[column].value; }
    void setValue(std::size_t column, Value&& value);

 private:
    OpenFile& writableFile() const { return set_.view.database->writableFile(); }
    void updateEdited();
    void updateAdded();
    void followJoin(std::size_t row);

    KeysetParts set_;
    FetchedRow& row_;
    EditModeKind mode_ = EditModeKind::None;
    std::vector<PendingField> pending_;
    EditedRow edited_{set_.view, set_.rows, pending_};
    AddedRow added_{set_.view, pending_};
    dao::Bookmark lastModified_;
};

}  // namespace dao
