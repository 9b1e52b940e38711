#include "platform/dao/failure.h"
#include "platform/dao/keyset.h"
#include "platform/dao/names.h"
#include "platform/text/utf8.h"

// The part of a keyset that writes.
namespace dao {
namespace {

// A row that somebody is just editing is not taken away under his hands: deleting it waits as an Edit of it
// would.
void deleteRow(OpenFile& in, const RowName& row) {
    const EditedRows rows{row};
    in.lockForEdit(rows);
    try {
        in.write(
            [&] {
                if (!in.store().deleteRow(row.table, row.key)) {
                    fail(errRecordDeleted);
                }
            },
            &rows);
    } catch (...) {
        in.unlockEdit(rows);
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

Value Keyset::converted(const sql::ResultColumn& column, Value&& value) {
    if (value.isNull()) {
        return column.type == Type::YesNo ? Value(false) : Value();
    }
    if (value.type() != column.type) {
        value = value.as(column.type);
    }
    if (column.type == Type::Text) {
        const std::string& text = value.textRef();
        if (!alphabet::isSound(text)) {
            fail(errTextNotSound);
        }
        if (column.size > 0 && alphabet::lettersIn(text) > static_cast<std::size_t>(column.size)) {
            fail(errFieldTooSmall);
        }
    }
    return std::move(value);
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
    Cell& cell = pending_[static_cast<std::size_t>(index)];
    cell.value = converted(to, std::move(value));
    cell.changed = true;
}

void Keyset::dropPending() noexcept {
    if (editMode_ == EditModeKind::InProgress) {
        file().unlockEdit(editedRows_);
    }
    editMode_ = EditModeKind::None;
}

void Keyset::AddNew() {
    OpenFile& to = writableFile();
    leave();
    if (unique() < 0) {
        fail(errCannotUpdate);
    }
    const sql::ColumnInfo* counter = counterOf(unique());
    const std::string counterName = counter == nullptr ? std::string() : counter->name;
    addedNumber_ =
        counter == nullptr ? 0 : to.nextNumber(select().sources[static_cast<std::size_t>(unique())].table);
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        const sql::ResultColumn& each = columns_[i];
        pending_[i].changed = false;
        pending_[i].value = each.type == Type::YesNo && each.source == unique() ? Value(false) : Value();
        if (addedNumber_ != 0 && each.source == unique() && sameName(each.field, counterName)) {
            pending_[i].value = Value(static_cast<std::int32_t>(addedNumber_));
        }
    }
    editMode_ = EditModeKind::Add;
}

// Whoever changes a product must not keep others from the products of the same group: the row that stands in
// one row of the set at most is locked, and those joined to it only while something of them is written.
EditedRows Keyset::rowsOf(std::size_t row, bool written) const {
    EditedRows rows;
    for (int source = 0; source < keys_.stride(); ++source) {
        const std::int64_t key = keys_.key(row, source);
        const bool wanted = unique() < 0 || source == unique() || (written && isChanged(source));
        if (wanted && key != driver::kNoRow) {
            rows.push_back({select().sources[static_cast<std::size_t>(source)].table, key});
        }
    }
    return rows;
}

bool Keyset::isChanged(int source) const {
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        if (columns_[i].source == source && pending_[i].changed) {
            return true;
        }
    }
    return false;
}

void Keyset::Edit() {
    OpenFile& in = writableFile();
    leave();
    const std::size_t row = currentRow();
    EditedRows rows = rowsOf(row, false);
    in.lockForEdit(rows);
    try {
        in.touch();  // the row as it is now that nobody else can change it
        loadBlock(row, 1);
        needRow();
        original_.resize(columns_.size());
        for (std::size_t i = 0; i < columns_.size(); ++i) {
            block_.get(current_, i, original_[i]);  // of one row all fields are there
            pending_[i].value = original_[i];
            pending_[i].changed = false;
        }
    } catch (...) {
        in.unlockEdit(rows);
        throw;
    }
    editedRow_ = row;
    editedRows_ = std::move(rows);
    editEpoch_ = in.lockEpoch();
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
    OpenFile& to = writableFile();
    if (!changeAtOnce(to)) {
        to.write(
            [&] {
                if (to.mayHaveChanged(rowsOf(editedRow_, true), editEpoch_)) {
                    checkUnchanged();
                }
                writeChanged(editedRow_);
            },
            &editedRows_);
    }
    editMode_ = EditModeKind::None;
    if (keys_.stride() > 1) {
        followJoin(editedRow_);
    }
    lastModified_ = bookmarkOf(editedRow_);
}

// A row of one table that nobody has changed, which is what Edit and Update mostly find.
bool Keyset::changeAtOnce(OpenFile& to) {
    if (keys_.stride() != 1 || !to.store().isFar()) {
        return false;
    }
    driver::RowChange change{select().sources.front().table, keys_.key(editedRow_, 0), {}, changedFields(0)};
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        if (columns_[i].source == 0) {
            change.was.push_back({columns_[i].field, &original_[i]});
        }
    }
    return !change.fields.empty() && to.changeAtOnce(change, editedRows_);
}

std::vector<driver::FieldValue> Keyset::changedFields(int source) const {
    std::vector<driver::FieldValue> fields;
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        const Cell& cell = pending_[i];
        if (columns_[i].source == source && cell.changed && !(cell.value == original_[i])) {
            fields.push_back({columns_[i].field, &cell.value});
        }
    }
    return fields;
}

// The lock was let go between Edit and Update, by another write of this process or by an error: whoever wrote
// in that time must not be overwritten unseen.
void Keyset::checkUnchanged() {
    file().touch();
    dropBlock();
    fetch(editedRow_);
    Value now;
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        block_.get(current_, i, now);
        if (!(now == original_[i])) {
            fail(errDataChanged);
        }
    }
}

void Keyset::writeChanged(std::size_t row) {
    driver::Store& store = file().store();
    for (std::size_t source = 0; source < select().sources.size(); ++source) {
        const std::vector<driver::FieldValue> fields = changedFields(static_cast<int>(source));
        const std::int64_t key = keys_.key(row, static_cast<int>(source));
        if (fields.empty()) {
            continue;
        }
        if (key == driver::kNoRow) {
            fail(errFieldNotUpdatable);
        }
        if (!store.updateRow(select().sources[source].table, key, fields)) {
            fail(errRecordDeleted);
        }
    }
}

// A product moved into another group still is the same product, but its row is now joined to another group's.
void Keyset::followJoin(std::size_t row) {
    loadBlock(row, 1);
    if (blockRows_.front() != kMissing || unique() < 0) {
        return;
    }
    std::vector<std::int64_t> keys;
    readKeys(select(), keys);
    const auto stride = static_cast<std::size_t>(keys_.stride());
    const auto source = static_cast<std::size_t>(unique());
    const std::int64_t wanted = keys_.key(row, unique());
    for (std::size_t at = 0; at + stride <= keys.size(); at += stride) {
        if (keys[at + source] == wanted) {
            keys_.replace(row, {keys.data() + at, stride});
            dropBlock();
            return;
        }
    }
}

void Keyset::updateAdded() {
    OpenFile& to = writableFile();
    const std::string& table = select().sources[static_cast<std::size_t>(unique())].table;
    const sql::ColumnInfo* counter = counterOf(unique());
    const Value number(static_cast<std::int32_t>(addedNumber_));
    std::vector<driver::FieldValue> fields;
    if (counter != nullptr) {
        fields.push_back({counter->name, &number});
    }
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        const bool isCounter = counter != nullptr && sameName(counter->name, columns_[i].field);
        if (columns_[i].source == unique() && pending_[i].changed && !isCounter) {
            fields.push_back({columns_[i].field, &pending_[i].value});
        }
    }
    std::int64_t key = 0;
    to.write([&] { key = to.store().insertRow(table, fields); });
    editMode_ = EditModeKind::None;
    if (keys_.stride() > 1) {
        joinAdded(key);
        return;
    }
    keys_.append({&key, 1});
    rowAppended();
    lastModified_ = {key};
}

void Keyset::joinAdded(std::int64_t key) {
    std::vector<std::int64_t> keys;
    readKeys(select(), keys);
    const auto stride = static_cast<std::size_t>(keys_.stride());
    for (std::size_t at = 0; at + stride <= keys.size(); at += stride) {
        if (keys[at + static_cast<std::size_t>(unique())] != key) {
            continue;
        }
        keys_.append({keys.data() + at, stride});
        rowAppended();
        lastModified_ = {keys.begin() + static_cast<std::ptrdiff_t>(at),
                         keys.begin() + static_cast<std::ptrdiff_t>(at + stride)};
        return;
    }
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
    deleteRow(in, {select().sources[static_cast<std::size_t>(unique())].table, key});
    keys_.erase(row);
    dropBlock();
    lastFetched_ = kMissing;
    leaveGap();
}

}  // namespace dao
