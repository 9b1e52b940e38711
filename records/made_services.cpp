#include "records/made_services.h"

#include <utility>

void MadeServices::beginFilling(const service_row::ScreenUnit& unit) {
    before_ = std::exchange(now_, {});
    const QLocale locale;
    if (unit.dinars != unit_.dinars || unit.rate != unit_.rate || locale != locale_) {
        clear();
    }
    unit_ = unit;
    locale_ = locale;
}

const platform::ListItem* MadeServices::find(qint32 id, const Fields& fields) {
    auto made = now_.find(id);
    if (made == now_.end()) {
        Rows::node_type earlier = before_.extract(id);
        if (earlier.empty()) {
            return nullptr;
        }
        made = now_.insert(std::move(earlier)).position;
    }
    return isMadeOf(made->second, fields) ? &made->second.row : nullptr;
}

void MadeServices::keep(qint32 id, const Fields& fields, const platform::ListItem& row) {
    Made& made = now_[id];
    for (const ServiceField& field : serviceFields()) {
        made.stored[field.name] = fields[field.name]->Value();
    }
    made.row = row;
}

void MadeServices::clear() {
    now_.clear();
    before_.clear();
}

bool MadeServices::isMadeOf(const Made& made, const Fields& fields) {
    for (const ServiceField& field : serviceFields()) {
        if (made.stored[field.name] != fields[field.name]->Value()) {
            return false;
        }
    }
    return true;
}
