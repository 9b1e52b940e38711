#include "records/service_values.h"

#include <QDate>
#include <optional>

#include "common/modMain.h"
#include "common/window_helpers.h"
#include "platform/system/dates.h"
#include "platform/system/numbers.h"
#include "platform/system/trap.h"

namespace {

void convert(ServiceKind kind, const dao::Value& stored, const service_row::ScreenUnit& unit,
             dao::Value& shown) {
    switch (kind) {
        case ServiceKind::Date:
        case ServiceKind::OpenDate:
            shown.store() = stored.asDate();
            break;
        case ServiceKind::Amount:
            shown.store() = unit.toScreen(stored.asCurrency());
            break;
        case ServiceKind::Number:
            shown.store() = stored.asSingle();
            break;
        case ServiceKind::Text:
        case ServiceKind::Types:
            shown.store() = stored.textRef();
            break;
    }
}

dao::Value nothingOf(ServiceKind kind) {
    switch (kind) {
        case ServiceKind::Date:
        case ServiceKind::OpenDate:
            return dao::Date{};
        case ServiceKind::Amount:
            return dao::Currency{};
        case ServiceKind::Number:
            return 0.0F;
        case ServiceKind::Text:
        case ServiceKind::Types:
            break;
    }
    return std::string();
}

TakenText takeDate(const ServiceField& field, const QString& typed) {
    const QString text = typed.trimmed();
    if (const auto date = platform::readDate(text)) {
        return {platform::textOfDate(*date), {}};
    }
    if (text.isEmpty() && field.kind == ServiceKind::OpenDate) {
        return {};
    }
    return {{},
            GetResString(field.demand.message,
                         {{QStringLiteral("%1"), platform::formatShortDate(QDate::currentDate())}})};
}

TakenText takeNumber(const ServiceField& field, const QString& typed) {
    if (typed.trimmed().isEmpty()) {
        return {untypedText(field.kind), {}};
    }
    const std::optional<float> number = platform::readSingle(typed);
    if (!number) {
        return {{}, GetResString(field.demand.message)};
    }
    if (field.demand.limit > 0 && *number >= field.demand.limit) {
        return {{}, GetResString(field.demand.limitMessage)};
    }
    return {platform::textOfSingle(*number), {}};
}

}  // namespace

void showValue(ServiceKind kind, const dao::Value& stored, const service_row::ScreenUnit& unit,
               dao::Value& shown) {
    platform::Trap step;
    if (!stored.isNull()) {
        step([&] { convert(kind, stored, unit, shown); });
    }
    if (stored.isNull() || step.failed()) {
        shown = {};
    }
}

void takeFromRowAbove(ServiceValues& own, const ServiceValues& above) {
    for (const ServiceField& field : serviceFields()) {
        if (field.fromRowAbove && own[field.name].isNull()) {
            own[field.name] = above[field.name];
        }
    }
}

bool isComplete(const ServiceValues& values) {
    for (const ServiceField& field : serviceFields()) {
        if (field.fromRowAbove && values[field.name].isNull()) {
            return false;
        }
    }
    return true;
}

void countMissingAsNothing(ServiceValues& values) {
    for (const ServiceField& field : serviceFields()) {
        if (field.fromRowAbove && values[field.name].isNull()) {
            values[field.name] = nothingOf(field.kind);
        }
    }
}

QString cellOfValue(ServiceKind kind, const dao::Value& value) {
    if (value.isNull()) {
        return {};
    }
    switch (kind) {
        case ServiceKind::Date:
            return platform::textOfDate(value.asDate());
        case ServiceKind::OpenDate:
            return service_row::isFinished(value.asDate()) ? platform::textOfDate(value.asDate()) : QString();
        case ServiceKind::Amount:
            return platform::formatGrouped(value.asCurrency());
        case ServiceKind::Number:
            return platform::textOfSingle(value.asSingle());
        case ServiceKind::Text:
        case ServiceKind::Types:
            break;
    }
    return textOf(value);
}

QString cellOfText(ServiceKind kind, const QString& text) {
    switch (kind) {
        case ServiceKind::Amount:
            return platform::formatGrouped(numberOf(text));
        case ServiceKind::Number:
            return platform::textOfSingle(numberOf(text));
        default:
            return text;
    }
}

dao::Value storedValue(ServiceKind kind, const QString& text, const service_row::ScreenUnit& unit) {
    switch (kind) {
        case ServiceKind::Date:
        case ServiceKind::OpenDate:
            return service_row::typedDate(text);
        case ServiceKind::Amount:
            return unit.toStored(numberOf(text));
        case ServiceKind::Number:
            return numberOf(text);
        case ServiceKind::Text:
        case ServiceKind::Types:
            break;
    }
    return text.toStdString();
}

QString untypedText(ServiceKind kind) {
    switch (kind) {
        case ServiceKind::Amount:
        case ServiceKind::Number:
            return QStringLiteral("0");
        case ServiceKind::Types:
            return service_row::kAnyType;
        default:
            return {};
    }
}

TakenText takeTyped(const ServiceField& field, const QString& typed) {
    switch (field.kind) {
        case ServiceKind::Date:
        case ServiceKind::OpenDate:
            return takeDate(field, typed);
        case ServiceKind::Amount:
        case ServiceKind::Number:
            return takeNumber(field, typed);
        case ServiceKind::Text:
        case ServiceKind::Types:
            break;
    }
    return {typed, {}};
}
