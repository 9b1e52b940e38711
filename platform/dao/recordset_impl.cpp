#include "platform/dao/recordset_impl.h"

#include "platform/dao/failure.h"

namespace dao {

RecordsetImpl::RecordsetImpl(std::shared_ptr<DatabaseImpl> database, RecordsetType type,
                             std::unique_ptr<RowSource> rows)
    : database_(std::move(database)), type_(type), rows_(std::move(rows)) {}

void RecordsetImpl::checkOpen() const {
    if (closed_) {
        fail(errObjectClosed);
    }
}

RowCursor& RecordsetImpl::leave() {
    if (isPending()) {
        editing_->drop();
    }
    return cursor_;
}

RowEditing& RecordsetImpl::editing(int otherwise) const {
    if (editing_ == nullptr) {
        fail(otherwise);
    }
    return *editing_;
}

const sql::ResultColumn& RecordsetImpl::column(int index) const {
    checkOpen();
    return columns().at(index);
}

const Value& RecordsetImpl::value(int index) {
    if (closed_ || !columns().has(index)) {
        column(index);
    }
    const auto at = static_cast<std::size_t>(index);
    return isPending() ? editing_->value(at) : row_.value(at);
}

void RecordsetImpl::setValue(int index, Value&& value) {
    column(index);
    editing(errUpdateWithoutEdit).setValue(static_cast<std::size_t>(index), std::move(value));
}

std::shared_ptr<RecordsetImpl> RecordsetImpl::Clone() const {
    auto made = std::make_shared<RecordsetImpl>(database_, type_, rows_->copy());
    database_->keep(made);
    return made;
}

void RecordsetImpl::Requery() {
    leave();
    rows_->open();
    cursor_.start();
}

void RecordsetImpl::Close() noexcept {
    if (closed_) {
        return;
    }
    leave();
    rows_->release();
    closed_ = true;
    database_.reset();
}

}  // namespace dao
