#include "platform/dao/failure.h"
#include "platform/dao/keyset.h"

// The part of a keyset that writes.
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

bool Keyset::Updatable() const {
    checkOpen();
    return !database_->isReadOnly();
}

OpenFile& Keyset::writableFile() const {
    checkOpen();
    return database_->writableFile();
}

void Keyset::setValue(int index, Value&& value) {
    checkIndex(index);
    if (editMode_ == EditModeKind::None) {
        fail(errUpdateWithoutEdit);
    }
    const sql::ResultColumn& to = column(index);
    if (to.source < 0 || (editMode_ == EditModeKind::Add && to.source != unique())) {
        fail(errFieldNotUpdatable);
    }
    if (isCounter_[static_cast<std::size_t>(index)] != 0) {
        fail(errFieldNotUpdatable);
    }
    pending_[static_cast<std::size_t>(index)].set(to, std::move(value));
}

void Keyset::dropPending() noexcept {
    if (editMode_ == EditModeKind::InProgress) {
        edited_.unlock();
    }
    editMode_ = EditModeKind::None;
}

void Keyset::AddNew() {
    OpenFile& to = writableFile();
    leave();
    if (unique() < 0) {
        fail(errCannotUpdate);
    }
    added_.begin(to);
    editMode_ = EditModeKind::Add;
}

void Keyset::Edit() {
    OpenFile& in = writableFile();
    leave();
    const std::size_t row = currentRow();
    edited_.lock(row);
    try {
        in.touch();  // the row as it is now that nobody else can change it
        rows_.fetchAlone(row);
        needRow();
        edited_.begin(row_.place());
    } catch (...) {
        edited_.unlock();
        throw;
    }
    editMode_ = EditModeKind::InProgress;
}

void Keyset::Update() {
    checkOpen();
    switch (editMode_) {
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

void Keyset::updateEdited() {
    edited_.write(writableFile());
    editMode_ = EditModeKind::None;
    const std::size_t row = edited_.row();
    rows_.noteWritten(row);
    if (keys_.stride() > 1) {
        followJoin(row);
    }
    lastModified_ = bookmarkOf(row);
}

// A product moved into another group still is the same product, but its row is now joined to another group's.
void Keyset::followJoin(std::size_t row) {
    if (rows_.fetchAlone(row) || unique() < 0) {
        return;
    }
    const std::vector<std::int64_t> keys = joinedAnew(keys_.key(row, unique()));
    if (!keys.empty()) {
        keys_.replace(row, keys);
        rows_.drop();
    }
}

void Keyset::updateAdded() {
    const std::int64_t key = added_.insert(writableFile());
    editMode_ = EditModeKind::None;
    std::vector<std::int64_t> keys = keys_.stride() > 1 ? joinedAnew(key) : std::vector{key};
    if (keys.empty()) {
        return;
    }
    keys_.append(keys);
    rowAppended();
    rows_.noteWritten(keys_.size() - 1);
    lastModified_ = std::move(keys);
}

std::vector<std::int64_t> Keyset::joinedAnew(std::int64_t key) const {
    std::vector<std::int64_t> keys;
    readKeys(select(), keys);
    const auto stride = static_cast<std::ptrdiff_t>(keys_.stride());
    for (auto row = keys.cbegin(); keys.cend() - row >= stride; row += stride) {
        if (row[unique()] == key) {
            return {row, row + stride};
        }
    }
    return {};
}

void Keyset::Delete() {
    OpenFile& in = writableFile();
    leave();
    const std::size_t row = currentRow();
    if (unique() < 0) {
        fail(errCannotUpdate);
    }
    const std::int64_t key = keys_.key(row, unique());
    if (key == driver::kNoRow) {
        fail(errCannotUpdate);
    }
    deleteRow(in, {view_.table(unique()), key});
    keys_.erase(row);
    rows_.drop();
    rows_.endWalk();
    leaveGap();
}

}  // namespace dao
