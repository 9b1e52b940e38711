#include "records/made_services.h"

#include <algorithm>
#include <type_traits>
#include <utility>

namespace {

// Of any two values that are not the same the bytes are not either.
void append(std::string& bytes, const dao::Value& value) {
    const auto raw = [&](const auto& number) {
        bytes.append(reinterpret_cast<const char*>(&number), sizeof number);
    };
    raw(value.store().index());
    std::visit(
        [&](const auto& content) {
            if constexpr (std::is_same_v<std::decay_t<decltype(content)>, std::string>) {
                raw(content.size());
                bytes += content;
            } else {
                raw(content);
            }
        },
        value.store());
}

}  // namespace

void MadeServices::beginFilling(const service_row::ScreenUnit& unit, int rows) {
    constexpr int kMostAtOnce = 4096;  // of a whole shop's a few are looked at
    before_ = std::exchange(now_, {});
    const QLocale locale;
    if (unit.dinars != unit_.dinars || unit.rate != unit_.rate || locale != locale_) {
        clear();
    }
    now_.reserve(static_cast<std::size_t>(std::min(rows, kMostAtOnce)));
    unit_ = unit;
    locale_ = locale;
}

const platform::ListItem* MadeServices::find(qint32 id, const Fields& fields) {
    asked_.clear();
    for (const ServiceField& field : serviceFields()) {
        append(asked_, fields[field.name]->Value());
    }
    auto made = now_.find(id);
    if (made == now_.end()) {
        Rows::node_type earlier = before_.extract(id);
        if (earlier.empty()) {
            return nullptr;
        }
        made = now_.insert(std::move(earlier)).position;
    }
    return made->second.stored == asked_ ? &made->second.row : nullptr;
}

void MadeServices::keep(qint32 id, const platform::ListItem& row) {
    Made& made = now_[id];
    made.stored = asked_;
    made.row = row;
}

void MadeServices::clear() {
    now_.clear();
    before_.clear();
}
