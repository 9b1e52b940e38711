#include "records/kept_rows.h"

#include <algorithm>
#include <numeric>

#include "platform/text/order.h"
#include "records/value_bytes.h"

namespace {

// As the store sorts: Null first, numbers, then texts.
struct SortKey {
    std::int32_t owner = 0;
    int kind = 0;
    double number = 0;
    std::string text;

    bool operator<(const SortKey& other) const {
        if (owner != other.owner) {
            return owner < other.owner;
        }
        if (kind != other.kind) {
            return kind < other.kind;
        }
        return number != other.number ? number < other.number : text < other.text;
    }
};

SortKey sortKeyOf(const ReportRows& row, int owner, int order) {
    SortKey key;
    key.owner = row.key(owner).value_or(-1);
    const dao::Value* value = order < 0 ? nullptr : row.value(order);
    if (value == nullptr) {
        return key;
    }
    if (value->type() == dao::Type::Text) {
        key.kind = 2;
        key.text = alphabet::orderKey(value->textRef());
    } else {
        key.kind = 1;
        key.number = value->asDouble();
    }
    return key;
}

}  // namespace

void KeptRows::keep(const ReportRows& row, std::size_t fields, std::string& bytes) {
    static const dao::Value kNothing;
    for (std::size_t field = 0; field < fields; ++field) {
        const dao::Value* value = row.value(static_cast<int>(field));
        value_bytes::append(bytes, value == nullptr ? kNothing : *value);
    }
}

KeptRows::KeptRows(std::string bytes, std::vector<bool> has, int owner, int order)
    : bytes_(std::move(bytes)), has_(std::move(has)), cells_(has_.size()), values_(has_.size()) {
    std::vector<SortKey> keys;
    std::vector<std::size_t> starts;
    for (std::size_t row = 0; row < bytes_.size();) {
        starts.push_back(row);
        row = findCells(row);
        keys.push_back(sortKeyOf(*this, owner, order));
    }
    std::vector<std::size_t> sorted(starts.size());
    std::iota(sorted.begin(), sorted.end(), 0);
    std::stable_sort(sorted.begin(), sorted.end(),
                     [&](std::size_t a, std::size_t b) { return keys[a] < keys[b]; });
    for (const std::size_t row : sorted) {
        places_.push_back(starts[row]);
    }
    goTo(0);
}

std::size_t KeptRows::findCells(std::size_t row) {
    for (std::size_t& cell : cells_) {
        cell = row;
        row += value_bytes::sizeAt(bytes_.data() + row);
    }
    return row;
}

void KeptRows::goTo(std::int64_t place) {
    at_ = place;
    if (place < count()) {
        findCells(places_[static_cast<std::size_t>(place)]);
    }
}

const dao::Value* KeptRows::value(int field) const {
    const auto index = static_cast<std::size_t>(field);
    dao::Value& value = values_[index];
    value_bytes::read(bytes_.data() + cells_[index], value);
    return value.isNull() ? nullptr : &value;
}
