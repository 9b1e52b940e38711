#include "records/report_rows.h"

#include "platform/system/trap.h"

using platform::Trap;

OpenedRows::OpenedRows(dao::Recordset rows, Names names) : rows_(std::move(rows)) {
    fields_.resize(names.size());
    for (std::size_t i = 0; i < names.size(); ++i) {
        Trap step;  // a file from before that field came in
        step([&] { fields_[i].emplace(rows_.Fields(names[i])); });
    }
}

OpenedRows::~OpenedRows() {
    rows_.Close();
}

const dao::Value* OpenedRows::value(int field) const {
    const std::optional<dao::Field>& known = fields_[static_cast<std::size_t>(field)];
    const dao::Value* read = nullptr;
    Trap step;
    if (known) {
        step([&] { read = &known->Value(); });
    }
    return read == nullptr || read->isNull() ? nullptr : read;
}

bool OpenedRows::find(const std::string& criterion) {
    rows_.FindFirst(criterion);
    return !rows_.NoMatch();
}

bool walkThrough(OpenedRows& rows, const std::function<void()>& atRow, const std::function<bool()>& turn) {
    constexpr int kBetweenTurns = 64;
    for (int done = 1; !rows.isAtEnd(); rows.next(), ++done) {
        atRow();
        if (done % kBetweenTurns == 0 && !turn()) {
            return false;
        }
    }
    return true;
}

const std::string& ReportRows::text(int field) const {
    static const std::string none;
    const dao::Value* read = value(field);
    return read == nullptr ? none : read->textRef();
}

std::optional<double> ReportRows::date(int field) const {
    const dao::Value* read = value(field);
    if (read == nullptr) {
        return std::nullopt;
    }
    std::optional<double> days;
    Trap step;
    step([&] { days = read->asDate().days; });
    return days;
}

std::optional<float> ReportRows::number(int field) const {
    const dao::Value* read = value(field);
    if (read == nullptr) {
        return std::nullopt;
    }
    std::optional<float> number;
    Trap step;
    step([&] { number = read->asSingle(); });
    return number;
}

std::optional<std::int32_t> ReportRows::key(int field) const {
    const dao::Value* read = value(field);
    if (read == nullptr) {
        return std::nullopt;
    }
    std::optional<std::int32_t> key;
    Trap step;
    step([&] { key = read->asLong(); });
    return key;
}

bool ReportRows::flag(int field) const {
    const dao::Value* read = value(field);
    std::optional<bool> set;
    Trap step;
    if (read != nullptr) {
        step([&] { set = read->asBool(); });
    }
    return set.value_or(false);
}

void ReportBatch::take(std::shared_ptr<ReportRows> rows, int ownerField,
                       const std::vector<std::int32_t>& owners) {
    clear();
    ranges_.reserve(owners.size());
    for (const std::int32_t owner : owners) {
        ranges_[owner];
    }
    const std::int64_t count = rows->count();
    for (std::int64_t place = 0; place < count; rows->next(), ++place) {
        Range& range = ranges_[rows->key(ownerField).value_or(-1)];
        if (range.count++ == 0) {
            range.first = place;
        }
    }
    rows_ = std::move(rows);
}

void ReportBatch::clear() {
    rows_.reset();
    ranges_.clear();
}

std::optional<ReportPart> ReportBatch::part(std::int32_t owner) const {
    const auto known = ranges_.find(owner);
    if (rows_ == nullptr || known == ranges_.end()) {
        return std::nullopt;
    }
    const Range& range = known->second;
    if (range.count > 0) {
        rows_->goTo(range.first);
    }
    return ReportPart{rows_, range.count};
}

std::vector<std::int32_t> ReportBatch::keys(int field) const {
    std::vector<std::int32_t> keys;
    const std::int64_t count = rows_ == nullptr ? 0 : rows_->count();
    keys.reserve(static_cast<std::size_t>(count));
    for (std::int64_t place = 0; place < count; ++place) {
        rows_->goTo(place);
        if (const std::optional<std::int32_t> key = rows_->key(field)) {
            keys.push_back(*key);
        }
    }
    return keys;
}
