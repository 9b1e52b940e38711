#include "records/made_services.h"

#include <algorithm>
#include <utility>

#include "records/value_bytes.h"

void MadeServices::beginFilling(const service_row::ScreenUnit& unit, int rows) {
    constexpr int kMostAtOnce = 4096;  // of a whole shop's a few are looked at
    before_ = std::exchange(now_, {});
    const QLocale locale;
    if (unit.dinars != unit_.dinars || unit.rate != unit_.rate || locale != locale_) {
        clear();
    }
    const int expected = std::min(rows, kMostAtOnce);
    now_.rows.reserve(static_cast<std::size_t>(expected));
    now_.places.reserve(expected);
    unit_ = unit;
    locale_ = locale;
}

const platform::ListItem* MadeServices::find(qint32 id, const Fields& fields) {
    asked_.clear();
    for (const ServiceField& field : serviceFields()) {
        value_bytes::append(asked_, fields[field.name]->Value());
    }
    if (const auto place = now_.places.constFind(id); place != now_.places.cend()) {
        const Made& made = now_.rows[*place];
        return now_.storedOf(made) == asked_ ? &made.row : nullptr;
    }
    const auto earlier = before_.places.constFind(id);
    if (earlier == before_.places.cend() || before_.storedOf(before_.rows[*earlier]) != asked_) {
        return nullptr;
    }
    return put(id, std::move(before_.rows[*earlier].row));
}

void MadeServices::keep(qint32 id, const platform::ListItem& row) {
    put(id, platform::ListItem(row));
}

const platform::ListItem* MadeServices::put(qint32 id, platform::ListItem&& row) {
    now_.places.insert(id, now_.rows.size());
    now_.rows.push_back({now_.stored.size(), asked_.size(), std::move(row)});
    now_.stored += asked_;
    return &now_.rows.back().row;
}

void MadeServices::clear() {
    now_ = {};
    before_ = {};
}
