#include "platform/dao/edited_row.h"

#include "platform/dao/failure.h"

namespace dao {

void EditedRow::lock(std::size_t row) {
    row_ = row;
    locked_ = standsIn(false);
    set_.file().transaction().lockForEdit(locked_);
}

void EditedRow::unlock() noexcept {
    set_.file().transaction().unlockEdit(locked_);
}

void EditedRow::begin(std::size_t place) {
    original_.resize(fields_.size());
    for (std::size_t i = 0; i < fields_.size(); ++i) {
        rows_.rows().get(place, i, original_[i]);  // of one row all fields are there
        fields_[i].value = original_[i];
        fields_[i].changed = false;
    }
    epoch_ = set_.file().transaction().lockEpoch();
}

void EditedRow::write(OpenFile& to) {
    if (writeAtOnce(to)) {
        return;
    }
    to.transaction().write(
        [&] {
            if (to.transaction().mayHaveChanged(standsIn(true), epoch_)) {
                checkUnchanged();
            }
            writeFields(to.store());
        },
        &locked_);
}

// Whoever changes a product must not keep others from the products of the same group: the row that stands in
// one row of the set at most is locked, and those joined to it only while something of them is written.
EditedRows EditedRow::standsIn(bool written) const {
    EditedRows rows;
    for (int source = 0; source < set_.keys.stride(); ++source) {
        const std::int64_t key = set_.keys.key(row_, source);
        const bool wanted = set_.unique() < 0 || source == set_.unique() || (written && isChanged(source));
        if (wanted && key != driver::kNoRow) {
            rows.push_back({set_.table(source), key});
        }
    }
    return rows;
}

bool EditedRow::isChanged(int source) const {
    for (std::size_t i = 0; i < fields_.size(); ++i) {
        if (set_.columns[i].source == source && fields_[i].changed) {
            return true;
        }
    }
    return false;
}

std::vector<driver::FieldValue> EditedRow::changedFields(int source) const {
    std::vector<driver::FieldValue> changed;
    for (std::size_t i = 0; i < fields_.size(); ++i) {
        const PendingField& field = fields_[i];
        if (set_.columns[i].source == source && field.changed && !(field.value == original_[i])) {
            changed.push_back({set_.columns[i].field, &field.value});
        }
    }
    return changed;
}

// A row of one table that nobody has changed, which is what Edit and Update mostly find.
bool EditedRow::writeAtOnce(OpenFile& to) {
    if (set_.keys.stride() != 1 || !to.store().isFar()) {
        return false;
    }
    driver::RowChange change{set_.table(0), set_.keys.key(row_, 0), {}, changedFields(0)};
    for (std::size_t i = 0; i < original_.size(); ++i) {
        if (set_.columns[i].source == 0) {
            change.was.push_back({set_.columns[i].field, &original_[i]});
        }
    }
    return !change.fields.empty() && to.transaction().changeAtOnce(change, locked_);
}

// The lock was let go between Edit and Update, by another write of this process or by an error: whoever wrote
// in that time must not be overwritten unseen.
void EditedRow::checkUnchanged() {
    set_.file().touch();
    rows_.drop();
    const std::optional<std::size_t> place = rows_.fetch(row_);
    if (!place) {
        fail(errRecordDeleted);
    }
    Value now;
    for (std::size_t i = 0; i < original_.size(); ++i) {
        rows_.rows().get(*place, i, now);
        if (!(now == original_[i])) {
            fail(errDataChanged);
        }
    }
}

void EditedRow::writeFields(driver::Store& store) {
    for (int source = 0; source < set_.keys.stride(); ++source) {
        const std::vector<driver::FieldValue> changed = changedFields(source);
        const std::int64_t key = set_.keys.key(row_, source);
        if (changed.empty()) {
            continue;
        }
        if (key == driver::kNoRow) {
            fail(errFieldNotUpdatable);
        }
        if (!store.rows().updateRow(set_.table(source), key, changed)) {
            fail(errRecordDeleted);
        }
    }
}

}  // namespace dao
