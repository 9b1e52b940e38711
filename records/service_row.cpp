#include "records/service_row.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <string>
#include <system_error>

#include "platform/system/dates.h"
#include "platform/system/numbers.h"

namespace service_row {

namespace {

const QString kMark = QStringLiteral("##");
constexpr std::string_view kPlainMark = "##";

// Whether it is plain letters throughout, eight of them at a time.
bool isPlain(std::string_view utf8) {
    constexpr std::uint64_t kHighBits = 0x8080808080808080U;
    std::uint64_t letters = 0;
    for (; utf8.size() >= sizeof letters; utf8.remove_prefix(sizeof letters)) {
        std::memcpy(&letters, utf8.data(), sizeof letters);
        if ((letters & kHighBits) != 0) {
            return false;
        }
    }
    return std::all_of(utf8.begin(), utf8.end(), [](char c) { return (c & 0x80) == 0; });
}

QString fromStored(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

dao::Currency times(dao::Currency amount, double factor) {
    return dao::Currency::fromDouble(amount.toDouble() * factor);
}

}  // namespace

dao::Currency ScreenUnit::toScreen(dao::Currency stored) const {
    return dinars ? times(stored, decimalOf(rate)) : stored;
}

dao::Currency ScreenUnit::toStored(float shown) const {
    return currencyOf(dinars ? shown / rate : shown);
}

double decimalOf(float value) {
    constexpr float kExact = 1 << 24;  // up to here every whole number is a Single
    if (!std::isfinite(value) || (std::fabs(value) < kExact && value == std::trunc(value))) {
        return value;
    }
    char text[64];
    const auto written = std::to_chars(text, text + sizeof text, value);
    double number = value;
    std::from_chars(text, written.ptr, number);
    return number;
}

dao::Currency currencyOf(float value) {
    return dao::Currency::fromDouble(decimalOf(value));
}

dao::Currency remainder(const Figures& figures) {
    const dao::Currency discount = times(figures.price, decimalOf(figures.discount) / 100);
    const dao::Currency net = figures.price - discount;
    const dao::Currency gross = times(net, 1 + decimalOf(figures.gst) / 100);
    const dao::Currency rest = platform::throughCurrencyFormat(gross - figures.paid);
    return rest < kTolerance ? dao::Currency() : rest;
}

float editorRemainder(float price, float discount, float gst, float paid) {
    return (price - discount / 100.0F * price) * (gst / 100.0F + 1.0F) - paid;
}

dao::Currency settledRemainder(float rawRemainder) {
    const dao::Currency rest = platform::throughCurrencyFormat(rawRemainder);
    return rest < kTolerance ? dao::Currency() : rest;
}

bool isFinished(dao::Date finished) {
    return std::floor(finished.days) >= kFirstRealDate.days;
}

dao::Date typedDate(const QString& text) {
    return platform::readDate(text).value_or(kEmptyDate);
}

bool isPaid(dao::Currency remainder, bool hasPrice) {
    return remainder <= dao::Currency() && hasPrice;
}

QString stateKey(bool finished, bool paid) {
    if (finished) {
        return paid ? QStringLiteral("FinishedPayed") : QStringLiteral("FinishedNotPayed");
    }
    return paid ? QStringLiteral("NotFinishedPayed") : QStringLiteral("NotFinishedNotPayed");
}

QString repricedState(const QString& presentState, dao::Currency remainder, float total) {
    if (!isPaid(remainder, total > 0)) {
        const bool open = presentState == stateKey(false, false) || presentState == stateKey(false, true);
        return stateKey(!open, false);
    }
    const bool done = presentState == stateKey(true, true) || presentState == stateKey(true, false);
    return stateKey(done, true);
}

QString keyOf(qint32 id) {
    char text[16] = "K";
    const auto written = std::to_chars(text + 1, text + sizeof text, id);
    return QString::fromLatin1(text, written.ptr - text);
}

qint32 idOfKey(const QString& key) {
    return key.mid(1).toInt();
}

QString tagOf(const QString& types, const QString& comments) {
    QString tag;
    tag.reserve(types.size() + kMark.size() + comments.size());
    tag += types;
    tag += kMark;
    tag += comments;
    return tag;
}

// Most texts are plain letters, which become a QString in one step.
QString storedTag(std::string_view types, std::string_view comments) {
    if (!isPlain(types) || !isPlain(comments)) {
        return tagOf(fromStored(types), fromStored(comments));
    }
    static thread_local std::string tag;
    tag.assign(types).append(kPlainMark).append(comments);
    return QString::fromLatin1(tag.data(), static_cast<qsizetype>(tag.size()));
}

QString typesOfTag(const QString& tag) {
    return tag.left(tag.indexOf(kMark));
}

QString commentsOfTag(const QString& tag) {
    const auto mark = tag.indexOf(kMark);
    return mark < 0 ? QString() : tag.mid(mark + kMark.size());
}

QString typeNames(const QString& types, const QStringList& names) {
    QStringList found;
    for (const QString& position : types.split(QLatin1Char('|'))) {
        bool isNumber = false;
        const int index = position.trimmed().toInt(&isNumber);
        if (isNumber && index >= 1 && index < names.size()) {
            found.append(names.at(index));
        }
    }
    return found.join(QLatin1Char('\n'));
}

}  // namespace service_row
