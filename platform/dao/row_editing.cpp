#include "platform/dao/row_editing.h"

#include "platform/dao/failure.h"
#include "platform/dao/keyset_keys.h"

namespace dao {
namespace {

// A row that somebody is just editing is not taken away under his hands: deleting it waits as an Edit of it
// would.
void deleteRow(OpenFile& in, const RowName& row) {
    const EditedRows rows{row};
    in.transaction().lockForEdit(rows);
    try {
        in.transaction().write(
            [&] {
                if (!in.store().rows().deleteRow(row.table, row.key)) {
                    fail(errRecordDeleted);
                }
            },
            &rows);
    } catch (...) {
        in.transaction().unlockEdit(rows);
        throw;
    }
}

}  // namespace

void RowEditing::setValue(std::size_t column, Value&& value) {
    if (!isPending()) {
        fail(errUpdateWithoutEdit);
    }
    const sql::ResultColumn& to = set_.view.columns[column];
    if (to.source < 0 || (mode_ == EditModeKind::Add && to.source != set_.view.unique())) {
        fail(errFieldNotUpdatable);
    }
    if (set_.view.isCounter[column] != 0) {
        fail(errFieldNotUpdatable);
    }
    pending_[column].set(to, std::move(value));
}

void RowEditing::drop() noexcept {
    if (mode_ == EditModeKind::InProgress) {
        edited_.unlock();
    }
    mode_ = EditModeKind::None;
}

void RowEditing::CancelUpdate() {
    if (!isPending()) {
        fail(errUpdateWithoutEdit);
    }
    drop();
}

dao::Bookmark RowEditing::LastModified() const {
    if (lastModified_.empty()) {
        fail(errNoCurrentRecord);
    }
    return lastModified_;
}

void RowEditing::AddNew() {
    OpenFile& to = writableFile();
    drop();
    if (set_.view.unique() < 0) {
        fail(errCannotUpdate);
    }
    pending_.resize(set_.view.columns.size());
    added_.begin(to);
    mode_ = EditModeKind::Add;
}

void RowEditing::Edit() {
    OpenFile& in = writableFile();
    drop();
    const std::size_t row = row_.number();
    pending_.resize(set_.view.columns.size());
    edited_.lock(row);
    try {
        in.touch();  // the row as it is now that nobody else can change it
        set_.rows.fetchAlone(row);
        edited_.begin(row_.fetch());
    } catch (...) {
        edited_.unlock();
        throw;
    }
    mode_ = EditModeKind::InProgress;
}

void RowEditing::Update() {
    switch (mode_) {
        case EditModeKind::None:
            fail(errUpdateWithoutEdit);
        case EditModeKind::InProgress:
            updateEdited();
            break;
        case EditModeKind::Add:
            updateAdded();
            break;
    }
}

void RowEditing::updateEdited() {
    edited_.write(writableFile());
    mode_ = EditModeKind::None;
    const std::size_t row = edited_.row();
    set_.rows.noteWritten(row);
    if (set_.keys.stride() > 1) {
        followJoin(row);
    }
    lastModified_ = set_.keys.at(row);
}

// A product moved into another group still is the same product, but its row is now joined to another group's.
void RowEditing::followJoin(std::size_t row) {
    const int unique = set_.view.unique();
    if (set_.rows.fetchAlone(row) || unique < 0) {
        return;
    }
    const std::vector<std::int64_t> keys = joinedKeys(set_.view, set_.keys.key(row, unique));
    if (!keys.empty()) {
        set_.keys.replace(row, keys);
        set_.rows.drop();
    }
}

void RowEditing::updateAdded() {
    const std::int64_t key = added_.insert(writableFile());
    mode_ = EditModeKind::None;
    std::vector<std::int64_t> keys = set_.keys.stride() > 1 ? joinedKeys(set_.view, key) : std::vector{key};
    if (keys.empty()) {
        return;
    }
    set_.keys.append(keys);
    row_.position().rowAppended(set_.keys.size());  // the current row stays what it was
    set_.rows.noteWritten(set_.keys.size() - 1);
    lastModified_ = std::move(keys);
}

void RowEditing::Delete() {
    OpenFile& in = writableFile();
    drop();
    const std::size_t row = row_.number();
    const int unique = set_.view.unique();
    if (unique < 0) {
        fail(errCannotUpdate);
    }
    const std::int64_t key = set_.keys.key(row, unique);
    if (key == driver::kNoRow) {
        fail(errCannotUpdate);
    }
    deleteRow(in, {set_.view.table(unique), key});
    set_.keys.erase(row);
    set_.rows.drop();
    set_.rows.endWalk();
    row_.position().leaveGap();
    row_.forget();
}

}  // namespace dao
