#include "platform/dao/recordset_impl.h"

#include "platform/dao/failure.h"

namespace dao {

RecordsetImpl::RecordsetImpl(std::shared_ptr<DatabaseImpl> database, RecordsetType type)
    : database_(std::move(database)), type_(type) {}

void RecordsetImpl::checkOpen() const {
    if (closed_) {
        fail(errObjectClosed);
    }
}

void RecordsetImpl::setColumns(std::vector<sql::ResultColumn> columns) {
    columns_ = std::move(columns);
    row_.setColumns(columns_.size());
    pending_.assign(columns_.size(), PendingField{});
    names_.assign(columns_);
}

void RecordsetImpl::start() {
    noMatch_ = false;
    row_.forget();
    position_.place(0);
}

void RecordsetImpl::leave() {
    checkOpen();
    if (editMode_ != EditModeKind::None) {
        dropPending();
    }
}

std::size_t RecordsetImpl::currentRow() const {
    checkOpen();
    if (position_.isGap()) {
        fail(errRecordDeleted);
    }
    if (!hasRow()) {
        fail(errNoCurrentRecord);
    }
    return static_cast<std::size_t>(position_.at());
}

void RecordsetImpl::needRow() {
    const std::size_t row = currentRow();
    if (row_.isOf(position_.at())) {
        return;
    }
    row_.forget();
    row_.forgetCells();
    fetch(row);
    row_.come(position_.at());
}

void RecordsetImpl::leaveGap() {
    position_.leaveGap();
    row_.forget();
}

bool RecordsetImpl::BOF() const {
    checkOpen();
    return position_.isBefore(count());
}

bool RecordsetImpl::EOF() const {
    checkOpen();
    return position_.isBehind(count());
}

void RecordsetImpl::MoveFirst() {
    leave();
    if (count() == 0) {
        fail(errNoCurrentRecord);
    }
    distrust();
    position_.place(0);
}

void RecordsetImpl::MoveLast() {
    leave();
    if (count() == 0) {
        fail(errNoCurrentRecord);
    }
    distrust();
    position_.place(static_cast<std::int64_t>(count()) - 1);
}

void RecordsetImpl::MoveNext() {
    leave();
    if (EOF()) {
        fail(errNoCurrentRecord);
    }
    position_.next();
}

void RecordsetImpl::MovePrevious() {
    leave();
    if (BOF()) {
        fail(errNoCurrentRecord);
    }
    position_.previous();
}

void RecordsetImpl::Move(std::int64_t rows) {
    leave();
    if ((rows > 0 && EOF()) || (rows < 0 && BOF()) || (rows == 0 && !position_.isGap() && !hasRow())) {
        fail(errNoCurrentRecord);
    }
    distrust();
    if (rows == 0) {
        row_.forget();
        return;
    }
    position_.move(rows, count());
}

std::int64_t RecordsetImpl::RecordCount() const {
    checkOpen();
    return static_cast<std::int64_t>(count());
}

std::int64_t RecordsetImpl::AbsolutePosition() const {
    checkOpen();
    return hasRow() ? position_.at() : -1;
}

void RecordsetImpl::setAbsolutePosition(std::int64_t position) {
    leave();
    if (position < 0 || position >= static_cast<std::int64_t>(count())) {
        fail(errNoCurrentRecord);
    }
    if (position != position_.at() + 1) {  // the next row is a step of a walk, as with MoveNext
        distrust();
    }
    position_.place(position);
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
    position_.place(static_cast<std::int64_t>(*row));
    row_.forget();
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
    if (!surelyStands(*row)) {
        distrust();
        row_.forget();
        fetch(*row);
    }
    row_.forget();
    position_.place(static_cast<std::int64_t>(*row));
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
    const int index = names_.find(name, columns_);
    if (index < 0) {
        fail(errItemNotFound);
    }
    return index;
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
    if (!row_.isOf(position_.at()) || position_.isGap()) {
        needRow();
    }
    const auto at = static_cast<std::size_t>(index);
    if (const Value* known = row_.known(at)) {
        return *known;
    }
    row_.ask(at);
    if (row_.isUnread(at)) {
        row_.forgetCells();
        fetchUnread();
    }
    return row_.take(at);
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
    row_.ageNoMore();
    closed_ = true;
    database_.reset();
}

}  // namespace dao
