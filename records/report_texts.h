#pragma once

#include <QList>
#include <QString>
#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>

// Dates, amounts and kinds of work as the text report prints them, by the user's locale, in UTF-8. A report
// over the whole shop asks for the same few ones again and again, so each is made once; a reference lives
// until the next call of the same function.
class ReportTexts {
 public:
    // Kinds of service at their positions from 1; [0] is not used.
    explicit ReportTexts(QList<QString> typeNames) : typeNames_(std::move(typeNames)) {}

    // Days since 30 December 1899; the time of day does not show. Empty where there is no date, and for one
    // that no calendar has.
    const std::string& shortDate(std::optional<double> days);
    // The same, and empty up to 1 January 1900 too: so a date left open is stored.
    const std::string& printableDate(std::optional<double> days);
    const std::string& currency(float amount);
    const std::string& percent(float percent);  // with its sign
    // "2|5": the names of the second and the fifth kind with ", " between; what has no name is left out.
    const std::string& kinds(const std::string& positions);

 private:
    QList<QString> typeNames_;
    std::unordered_map<std::int64_t, std::string> dates_;
    std::unordered_map<float, std::string> amounts_, percents_;
    std::unordered_map<std::string, std::string> kinds_;
};
