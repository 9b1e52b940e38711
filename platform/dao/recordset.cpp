#include "platform/dao/recordset.h"

#include "platform/dao/failure.h"
#include "platform/dao/recordset_impl.h"

namespace dao {
namespace {

RecordsetImpl& made(const std::shared_ptr<RecordsetImpl>& impl) {
    if (impl == nullptr) {
        fail(errObjectClosed);
    }
    return *impl;
}

RecordsetImpl& opened(const std::shared_ptr<RecordsetImpl>& impl) {
    RecordsetImpl& set = made(impl);
    set.checkOpen();
    return set;
}

}  // namespace

const std::string& Field::Name() const {
    return set_->column(index_).name;
}

dao::Type Field::Type() const {
    return set_->column(index_).type;
}

int Field::Size() const {
    return set_->column(index_).size;
}

const dao::Value& Field::Value() const {
    return set_->value(index_);
}
std::string_view Field::Text() const {
    return set_->text(index_);
}
void Field::setValue(dao::Value value) {
    set_->setValue(index_, std::move(value));
}

bool Recordset::BOF() const {
    return opened(impl_).cursor().BOF();
}
bool Recordset::EOF() const {
    return opened(impl_).cursor().EOF();
}
void Recordset::MoveFirst() {
    opened(impl_).leave().MoveFirst();
}
void Recordset::MoveLast() {
    opened(impl_).leave().MoveLast();
}
void Recordset::MoveNext() {
    opened(impl_).leave().MoveNext();
}
void Recordset::MovePrevious() {
    opened(impl_).leave().MovePrevious();
}
void Recordset::Move(std::int64_t rows) {
    opened(impl_).leave().Move(rows);
}
std::int64_t Recordset::RecordCount() const {
    return opened(impl_).cursor().RecordCount();
}
std::int64_t Recordset::AbsolutePosition() const {
    return opened(impl_).cursor().AbsolutePosition();
}
void Recordset::setAbsolutePosition(std::int64_t position) {
    opened(impl_).leave().setAbsolutePosition(position);
}
Recordset Recordset::Clone() const {
    return Recordset(opened(impl_).Clone());
}
void Recordset::FindFirst(std::string_view criterion) {
    opened(impl_).leave().FindFirst(criterion);
}
bool Recordset::NoMatch() const {
    return opened(impl_).cursor().NoMatch();
}
void Recordset::AddNew() {
    opened(impl_).editing(errCannotUpdate).AddNew();
}
void Recordset::Edit() {
    opened(impl_).editing(errCannotUpdate).Edit();
}
void Recordset::Update() {
    opened(impl_).editing(errUpdateWithoutEdit).Update();
}
void Recordset::CancelUpdate() {
    opened(impl_).editing(errUpdateWithoutEdit).CancelUpdate();
}
void Recordset::Delete() {
    opened(impl_).editing(errCannotUpdate).Delete();
}
Recordset::EditModeKind Recordset::EditMode() const {
    return opened(impl_).EditMode();
}
dao::Bookmark Recordset::Bookmark() const {
    return opened(impl_).cursor().Bookmark();
}
void Recordset::setBookmark(const dao::Bookmark& place) {
    opened(impl_).leave().setBookmark(place);
}
dao::Bookmark Recordset::LastModified() const {
    return opened(impl_).editing(errNoCurrentRecord).LastModified();
}
int Recordset::FieldCount() const {
    return opened(impl_).columns().count();
}

Field Recordset::Fields(std::string_view name) const {
    RecordsetImpl& set = opened(impl_);
    return Field(&set, set.columns().indexOf(name));
}

Field Recordset::Fields(int index) const {
    RecordsetImpl& set = opened(impl_);
    set.columns().check(index);
    return Field(&set, index);
}

const Value& Recordset::operator[](std::string_view name) const {
    RecordsetImpl& set = opened(impl_);
    return set.value(set.columns().indexOf(name));
}

bool Recordset::Updatable() const {
    return opened(impl_).Updatable();
}
RecordsetType Recordset::Type() const {
    return made(impl_).Type();
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
