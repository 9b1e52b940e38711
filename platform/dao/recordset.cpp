#include "platform/dao/recordset.h"

#include "platform/dao/failure.h"
#include "platform/dao/recordset_impl.h"

namespace dao {
namespace {

RecordsetImpl& opened(const std::shared_ptr<RecordsetImpl>& impl) {
    if (impl == nullptr) {
        fail(errObjectClosed);
    }
    return *impl;
}

}  // namespace

const std::string& Field::Name() const {
    set_->checkIndex(index_);
    return set_->column(index_).name;
}

dao::Type Field::Type() const {
    set_->checkIndex(index_);
    return set_->column(index_).type;
}

int Field::Size() const {
    set_->checkIndex(index_);
    return set_->column(index_).size;
}

const dao::Value& Field::Value() const {
    return set_->value(index_);
}
void Field::setValue(dao::Value value) {
    set_->setValue(index_, std::move(value));
}

bool Recordset::BOF() const {
    return opened(impl_).BOF();
}
bool Recordset::EOF() const {
    return opened(impl_).EOF();
}
void Recordset::MoveFirst() {
    opened(impl_).MoveFirst();
}
void Recordset::MoveLast() {
    opened(impl_).MoveLast();
}
void Recordset::MoveNext() {
    opened(impl_).MoveNext();
}
void Recordset::MovePrevious() {
    opened(impl_).MovePrevious();
}
void Recordset::Move(std::int64_t rows) {
    opened(impl_).Move(rows);
}
std::int64_t Recordset::RecordCount() const {
    return opened(impl_).RecordCount();
}
std::int64_t Recordset::AbsolutePosition() const {
    return opened(impl_).AbsolutePosition();
}
void Recordset::setAbsolutePosition(std::int64_t position) {
    opened(impl_).setAbsolutePosition(position);
}
Recordset Recordset::Clone() const {
    return Recordset(opened(impl_).Clone());
}
void Recordset::FindFirst(std::string_view criterion) {
    opened(impl_).FindFirst(criterion);
}
bool Recordset::NoMatch() const {
    return opened(impl_).NoMatch();
}
void Recordset::AddNew() {
    opened(impl_).AddNew();
}
void Recordset::Edit() {
    opened(impl_).Edit();
}
void Recordset::Update() {
    opened(impl_).Update();
}
void Recordset::CancelUpdate() {
    opened(impl_).CancelUpdate();
}
void Recordset::Delete() {
    opened(impl_).Delete();
}
Recordset::EditModeKind Recordset::EditMode() const {
    return opened(impl_).EditMode();
}
dao::Bookmark Recordset::Bookmark() const {
    return opened(impl_).Bookmark();
}
void Recordset::setBookmark(const dao::Bookmark& place) {
    opened(impl_).setBookmark(place);
}
dao::Bookmark Recordset::LastModified() const {
    return opened(impl_).LastModified();
}
int Recordset::FieldCount() const {
    return opened(impl_).FieldCount();
}

Field Recordset::Fields(std::string_view name) const {
    RecordsetImpl& set = opened(impl_);
    return Field(&set, set.fieldIndex(name));
}

Field Recordset::Fields(int index) const {
    RecordsetImpl& set = opened(impl_);
    set.checkIndex(index);
    return Field(&set, index);
}

const Value& Recordset::operator[](std::string_view name) const {
    RecordsetImpl& set = opened(impl_);
    return set.value(set.fieldIndex(name));
}

bool Recordset::Updatable() const {
    return opened(impl_).Updatable();
}
RecordsetType Recordset::Type() const {
    return opened(impl_).Type();
}
void Recordset::Requery() {
    opened(impl_).Requery();
}

void Recordset::Close() {
    if (impl_ != nullptr) {
        impl_->Close();
    }
}

}  // namespace dao
