#include "records/report_texts.h"

#include <cmath>

#include "platform/system/dates.h"
#include "platform/system/numbers.h"
#include "records/service_row.h"

namespace {

constexpr double kFirstOfJanuary1900 = 2.0;
constexpr double kNoCalendar = 10'000'000;  // days
constexpr std::size_t kRememberedTexts = 4096;

const std::string kEmpty;

// A shop has more amounts than are worth remembering for ever.
template <typename Key, typename Make>
const std::string& remembered(std::unordered_map<Key, std::string>& texts, const Key& key, Make&& make) {
    if (const auto known = texts.find(key); known != texts.end()) {
        return known->second;
    }
    if (texts.size() >= kRememberedTexts) {
        texts.clear();
    }
    return texts.emplace(key, make().toStdString()).first->second;
}

}  // namespace

const std::string& ReportTexts::shortDate(std::optional<double> days) {
    if (!days || !(std::abs(*days) < kNoCalendar)) {
        return kEmpty;
    }
    const dao::Date day{std::trunc(*days)};
    return remembered(dates_, static_cast<std::int64_t>(day.days),
                      [&] { return platform::formatShortDate(platform::toQDate(day)); });
}

const std::string& ReportTexts::printableDate(std::optional<double> days) {
    return days && std::floor(*days) > kFirstOfJanuary1900 ? shortDate(days) : kEmpty;
}

const std::string& ReportTexts::currency(float amount) {
    return remembered(amounts_, amount, [&] { return platform::formatCurrency(amount); });
}

const std::string& ReportTexts::percent(float percent) {
    return remembered(percents_, percent, [&] { return platform::textOfSingle(percent) + QLatin1Char('%'); });
}

const std::string& ReportTexts::kinds(const std::string& positions) {
    return remembered(kinds_, positions, [&] {
        return service_row::typeNames(QString::fromStdString(positions), typeNames_)
            .replace(QLatin1Char('\n'), QLatin1String(", "));
    });
}
