#include "platform/dao/recordset_impl.h"

#include <algorithm>
#include <cstring>

#include "platform/dao/failure.h"
#include "platform/dao/names.h"

namespace dao {

RecordsetImpl::RecordsetImpl(std::shared_ptr<DatabaseImpl> database, RecordsetType type)
    : database_(std::move(database)), type_(type) {}

void RecordsetImpl::checkOpen() const {
    if (closed_) {
        fail(errObjectClosed);
    }
}

namespace {

template <typename Word>
bool sameWord(const char* a, const char* b) {
    Word x = 0;
    Word y = 0;
    std::memcpy(&x, a, sizeof x);
    std::memcpy(&y, b, sizeof y);
    return x == y;
}

// Two names of one length, mostly the very same letters: as many of them at a time as the machine takes. The
// last word overlaps the one before.
bool sameLetters(std::string_view a, std::string_view b) {
    const std::size_t size = a.size();
    if (size >= 8) {
        for (std::size_t at = 0; at + 8 < size; at += 8) {
            if (!sameWord<std::uint64_t>(a.data() + at, b.data() + at)) {
                return false;
            }
        }
        return sameWord<std::uint64_t>(a.data() + size - 8, b.data() + size - 8);
    }
    if (size >= 4) {
        return sameWord<std::uint32_t>(a.data(), b.data()) &&
               sameWord<std::uint32_t>(a.data() + size - 4, b.data() + size - 4);
    }
    return size == 0 || (a[0] == b[0] && a[size / 2] == b[size / 2] && a[size - 1] == b[size - 1]);
}

}  // namespace

std::size_t RecordsetImpl::slotOf(std::string_view name) {
    if (name.empty()) {
        return 0;
    }
    // Small and capital letters differ in one bit; a name's middle tells more than its beginning.
    const auto letter = [](char c) { return static_cast<std::size_t>(c & 0x1F); };
    return (name.size() + letter(name.front()) * 5 + letter(name[name.size() / 2]) * 11 +
            letter(name.back()) * 37) %
           kNameSlots;
}

void RecordsetImpl::setColumns(std::vector<sql::ResultColumn> columns) {
    columns_ = std::move(columns);
    cells_.assign(columns_.size(), Cell{});
    asked_.assign(columns_.size(), 0);
    pending_.assign(columns_.size(), PendingField{});
    slots_.fill(-1);
    // The first of two fields of one name is the one that is meant by it. Half of the places stay free.
    for (std::size_t i = 0; i < std::min(columns_.size(), kNameSlots / 2); ++i) {
        std::size_t slot = slotOf(columns_[i].name);
        while (slots_[slot] >= 0) {
            slot = (slot + 1) % kNameSlots;
        }
        slots_[slot] = static_cast<std::int16_t>(i);
    }
}

void RecordsetImpl::start() {
    gap_ = false;
    noMatch_ = false;
    fetched_ = -1;
    place(0);
}

void RecordsetImpl::leave() {
    checkOpen();
    if (editMode_ != EditModeKind::None) {
        dropPending();
    }
}

void RecordsetImpl::place(std::int64_t position) {
    gap_ = false;
    position_ = position;
}

std::size_t RecordsetImpl::currentRow() const {
    checkOpen();
    if (gap_) {
        fail(errRecordDeleted);
    }
    if (!hasRow()) {
        fail(errNoCurrentRecord);
    }
    return static_cast<std::size_t>(position_);
}

void RecordsetImpl::needRow() {
    const std::size_t row = currentRow();
    if (fetched_ == position_ && *generation_ == seenGeneration_) {
        return;
    }
    fetched_ = -1;
    forgetCells();
    fetch(row);
    fetched_ = position_;
    seenGeneration_ = *generation_;
}

void RecordsetImpl::leaveGap() {
    gap_ = true;
    fetched_ = -1;
}

void RecordsetImpl::rowAppended() {
    if (!gap_ && position_ == static_cast<std::int64_t>(count()) - 1) {
        ++position_;
    }
}

bool RecordsetImpl::BOF() const {
    checkOpen();
    return !gap_ && (position_ < 0 || count() == 0);
}

bool RecordsetImpl::EOF() const {
    checkOpen();
    return !gap_ && (position_ >= static_cast<std::int64_t>(count()));
}

void RecordsetImpl::MoveFirst() {
    leave();
    if (count() == 0) {
        fail(errNoCurrentRecord);
    }
    distrust();
    place(0);
}

void RecordsetImpl::MoveLast() {
    leave();
    if (count() == 0) {
        fail(errNoCurrentRecord);
    }
    distrust();
    place(static_cast<std::int64_t>(count()) - 1);
}

void RecordsetImpl::MoveNext() {
    leave();
    if (EOF()) {
        fail(errNoCurrentRecord);
    }
    place(gap_ ? position_ : position_ + 1);
}

void RecordsetImpl::MovePrevious() {
    leave();
    if (BOF()) {
        fail(errNoCurrentRecord);
    }
    place(position_ - 1);
}

void RecordsetImpl::Move(std::int64_t rows) {
    leave();
    const auto size = static_cast<std::int64_t>(count());
    if ((rows > 0 && EOF()) || (rows < 0 && BOF()) || (rows == 0 && !gap_ && !hasRow())) {
        fail(errNoCurrentRecord);
    }
    distrust();
    if (rows == 0) {
        fetched_ = -1;
        return;
    }
    const std::int64_t from = gap_ && rows > 0 ? position_ - 1 : position_;
    if (rows > 0) {
        place(rows >= size - from ? size : from + rows);
    } else {
        place(rows <= -1 - from ? -1 : from + rows);
    }
}

std::int64_t RecordsetImpl::RecordCount() const {
    checkOpen();
    return static_cast<std::int64_t>(count());
}

std::int64_t RecordsetImpl::AbsolutePosition() const {
    checkOpen();
    return hasRow() ? position_ : -1;
}

void RecordsetImpl::setAbsolutePosition(std::int64_t position) {
    leave();
    if (position < 0 || position >= static_cast<std::int64_t>(count())) {
        fail(errNoCurrentRecord);
    }
    if (position != position_ + 1) {  // the next row is a step of a walk, as with MoveNext
        distrust();
    }
    place(position);
}

std::shared_ptr<RecordsetImpl> RecordsetImpl::Clone() const {
    checkOpen();
    std::shared_ptr<RecordsetImpl> made = copy();
    made->start();
    database_->keep(made);
    return made;
}

void RecordsetImpl::FindFirst(std::string_view criterion) {
    leave();
    const std::optional<std::size_t> row = findRow(criterion);
    noMatch_ = !row.has_value();
    if (!row) {
        return;
    }
    place(static_cast<std::int64_t>(*row));
    fetched_ = -1;
}

bool RecordsetImpl::NoMatch() const {
    checkOpen();
    return noMatch_;
}

void RecordsetImpl::AddNew() {
    checkOpen();
    fail(errCannotUpdate);
}

void RecordsetImpl::Edit() {
    checkOpen();
    fail(errCannotUpdate);
}

void RecordsetImpl::Update() {
    checkOpen();
    fail(errUpdateWithoutEdit);
}

void RecordsetImpl::Delete() {
    checkOpen();
    fail(errCannotUpdate);
}

void RecordsetImpl::CancelUpdate() {
    checkOpen();
    if (editMode_ == EditModeKind::None) {
        fail(errUpdateWithoutEdit);
    }
    dropPending();
}

EditModeKind RecordsetImpl::EditMode() const {
    checkOpen();
    return editMode_;
}

dao::Bookmark RecordsetImpl::Bookmark() const {
    return bookmarkOf(currentRow());
}

void RecordsetImpl::setBookmark(const dao::Bookmark& bookmark) {
    leave();
    const std::optional<std::size_t> row = rowOf(bookmark);
    if (!row) {
        fail(errRecordDeleted);
    }
    distrust();
    fetched_ = -1;
    fetch(*row);
    fetched_ = -1;
    place(static_cast<std::int64_t>(*row));
}

dao::Bookmark RecordsetImpl::LastModified() const {
    checkOpen();
    if (lastModified_.empty()) {
        fail(errNoCurrentRecord);
    }
    return lastModified_;
}

int RecordsetImpl::FieldCount() const {
    checkOpen();
    return static_cast<int>(columns_.size());
}

int RecordsetImpl::fieldIndex(std::string_view name) const {
    checkOpen();
    const auto isColumn = [&](std::size_t column) {
        const std::string& known = columns_[column].name;
        return known.size() == name.size() && (sameLetters(known, name) || sameName(known, name));
    };
    for (std::size_t slot = slotOf(name); slots_[slot] >= 0; slot = (slot + 1) % kNameSlots) {
        if (isColumn(static_cast<std::size_t>(slots_[slot]))) {
            return slots_[slot];
        }
    }
    for (std::size_t i = kNameSlots / 2; i < columns_.size(); ++i) {
        if (isColumn(i)) {
            return static_cast<int>(i);
        }
    }
    fail(errItemNotFound);
}

void RecordsetImpl::checkIndex(int index) const {
    checkOpen();
    if (index < 0 || index >= static_cast<int>(columns_.size())) {
        fail(errItemNotFound);
    }
}

const Value& RecordsetImpl::value(int index) {
    if (closed_ || static_cast<std::size_t>(index) >= columns_.size()) {
        checkIndex(index);
    }
    if (editMode_ != EditModeKind::None) {
        return pending_[static_cast<std::size_t>(index)].value;
    }
    // A list of a thousand services asks here ten thousand times: no more than this for a row that is there.
    if (fetched_ != position_ || *generation_ != seenGeneration_ || gap_) {
        needRow();
    }
    const auto at = static_cast<std::size_t>(index);
    Cell& cell = cells_[at];
    if (cell.stamp != cellStamp_) {
        asked_[at] = 1;
        if (block_.isUnread(current_, at)) {
            forgetCells();
            fetchUnread();
        }
        block_.get(current_, at, cell.value);
        cell.stamp = cellStamp_;
    }
    return cell.value;
}

void RecordsetImpl::setValue(int index, Value&&) {
    checkIndex(index);
    fail(errUpdateWithoutEdit);
}

void RecordsetImpl::Requery() {
    leave();
    open();
    start();
}

void RecordsetImpl::Close() noexcept {
    if (closed_) {
        return;
    }
    if (editMode_ != EditModeKind::None) {
        dropPending();
    }
    release();
    generation_ = &kNeverOld;
    closed_ = true;
    database_.reset();
}

}  // namespace dao
