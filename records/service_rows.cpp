#include "records/service_rows.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "platform/system/locale_facts.h"
#include "platform/system/trap.h"

ServiceRows::ServiceRows(const dao::Recordset& source, service_row::ScreenUnit unit,
                         std::shared_ptr<MadeServices> made)
    : rows_(source.Clone()), unit_(unit), id_(rows_.Fields("ID")), made_(std::move(made)) {
    for (const ServiceField& field : serviceFields()) {
        fields_[field.name].emplace(rows_.Fields(field.list.field));
    }
    count_ = static_cast<int>(std::min<std::int64_t>(rows_.RecordCount(), std::numeric_limits<int>::max()));
    made_->beginFilling(unit_, count_);
}

void ServiceRows::readField(const ServiceField& field, ServiceValues& values) const {
    if (const std::optional<dao::Field>& stored = fields_[field.name]) {
        showValue(field.kind, stored->Value(), unit_, values[field.name]);
    }
}

void ServiceRows::readInto(ServiceValues& values) const {
    for (const ServiceField& field : serviceFields()) {
        readField(field, values);
    }
}

void ServiceRows::readGoingOn(ServiceValues& values) const {
    for (const ServiceField& field : serviceFields()) {
        if (field.fromRowAbove) {
            readField(field, values);
        }
    }
}

void ServiceRows::completeFromAbove(int index, ServiceValues& own) {
    ServiceValues found;
    takeFromRowAbove(found, own);
    for (int above = index - 1; above >= 1 && !isComplete(found); --above) {
        const auto known = completed_.constFind(above);
        if (known != completed_.cend()) {
            takeFromRowAbove(found, *known);
            break;
        }
        // A row that somebody has deleted in the meantime has no figures to hand down.
        platform::Trap step;
        step([&] {
            ServiceValues values;
            rows_.setAbsolutePosition(above - 1);
            readGoingOn(values);
            takeFromRowAbove(found, values);
        });
    }
    completed_.insert(index, found);
    takeFromRowAbove(own, found);
}

// What was taken from the row above is another value once another row stands there.
platform::ListItem ServiceRows::makeCurrent(int index, qint32 id) {
    const platform::HeldLocale locale;
    current_.id = id;
    readInto(current_.values);
    if (!isComplete(current_.values)) {
        completeFromAbove(index, current_.values);
        return itemOf(current_);
    }
    platform::ListItem row = itemOf(current_);
    made_->keep(id, row);
    return row;
}

std::optional<platform::ListItem> ServiceRows::read(int index) {
    std::optional<platform::ListItem> item;
    platform::Trap step;
    step([&] {
        rows_.setAbsolutePosition(index - 1);
        const qint32 id = id_.Value().asLong();
        const platform::ListItem* known = made_->find(id, fields_);
        item = known != nullptr ? *known : makeCurrent(index, id);
    });
    return item;
}

platform::ListItem ServiceRows::make(int index) {
    if (std::optional<platform::ListItem> item = read(index)) {
        return std::move(*item);
    }
    platform::ListItem gone;
    gone.Key = service_row::keyOf(-index);
    return gone;
}

int ServiceRows::find(const QString& key) {
    int index = 0;
    platform::Trap step;
    step([&] {
        rows_.FindFirst("ID=" + std::to_string(service_row::idOfKey(key)));
        if (!rows_.NoMatch()) {
            index = static_cast<int>(rows_.AbsolutePosition()) + 1;
        }
    });
    return index;
}
