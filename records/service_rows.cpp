#include "records/service_rows.h"

#include <algorithm>
#include <limits>

#include "common/window_helpers.h"
#include "platform/system/trap.h"

using service_row::Readings;

namespace {

// A value as `read` gives it; nothing where the file has none that can be read so.
template <typename Read>
auto readable(const dao::Field& field, Read&& read) -> std::optional<decltype(read(field.Value()))> {
    if (field.Value().isNull()) {
        return std::nullopt;
    }
    std::optional<decltype(read(field.Value()))> result;
    platform::Trap step;
    step([&] { result = read(field.Value()); });
    return result;
}

}  // namespace

ServiceRows::ServiceRows(const dao::Recordset& source, service_row::ScreenUnit unit)
    : rows_(source.Clone()),
      unit_(unit),
      columns_{rows_.Fields("ID"),
               rows_.Fields("ServiceStarted"),
               rows_.Fields("ServiceToBeFinished"),
               rows_.Fields("ServiceFinished"),
               rows_.Fields("Price"),
               rows_.Fields("Paid"),
               rows_.Fields("Discount"),
               rows_.Fields("GST"),
               rows_.Fields("ServiceTypes"),
               rows_.Fields("Comments")} {
    count_ = static_cast<int>(std::min<std::int64_t>(rows_.RecordCount(), std::numeric_limits<int>::max()));
}

Readings ServiceRows::readings() const {
    const auto date = [](const dao::Value& value) { return value.asDate(); };
    const auto single = [](const dao::Value& value) { return value.asSingle(); };
    const auto amount = [this](const dao::Value& value) { return unit_.toScreen(value.asCurrency()); };
    Readings own;
    own.toBeFinished = readable(columns_.toBeFinished, date);
    own.finished = readable(columns_.finished, date);
    own.price = readable(columns_.price, amount);
    own.paid = readable(columns_.paid, amount);
    own.discount = readable(columns_.discount, single);
    own.gst = readable(columns_.gst, single);
    return own;
}

Readings ServiceRows::completed(int index, Readings own) {
    if (own.complete()) {
        return own;
    }
    for (int above = index - 1; above >= 1 && !own.complete(); --above) {
        const auto known = completed_.constFind(above);
        if (known != completed_.cend()) {
            own.fillFrom(*known);
            break;
        }
        // A row that somebody has deleted in the meantime has no figures to hand down.
        platform::Trap step;
        step([&] {
            rows_.setAbsolutePosition(above - 1);
            own.fillFrom(readings());
        });
    }
    completed_.insert(index, own);
    return own;
}

std::optional<platform::ListItem> ServiceRows::read(int index) {
    std::optional<platform::ListItem> item;
    platform::Trap step;
    step([&] {
        rows_.setAbsolutePosition(index - 1);
        const qint32 id = columns_.id.Value().asLong();
        const auto started =
            readable(columns_.started, [](const dao::Value& value) { return value.asDate(); });
        const QString types = textOf(columns_.types);
        const QString comments = textOf(columns_.comments);
        item = itemOf({id, started, completed(index, readings()).figures(), types, comments});
    });
    return item;
}

platform::ListItem ServiceRows::make(int index) {
    if (std::optional<platform::ListItem> item = read(index)) {
        return *item;
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
