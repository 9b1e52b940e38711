#include "common/settings.h"

#include <QDir>
#include <algorithm>
#include <iterator>
#include <optional>
#include <stdexcept>

#include "common/scramble.h"
#include "platform/system/files.h"
#include "platform/system/settings_store.h"
#include "platform/system/trap.h"

namespace settings {

namespace {

#define LIST_GENERAL(section, key, kind, defaultValue) key,
#define LIST_OF_FIRM(section, key, kind, defaultValue) firm.key,
#define LIST_OF_CATALOGUE(section, key, kind, defaultValue) catalogue.key,
#define LIST_OF_REQUISITION(section, key, kind, defaultValue) requisition.key,
#define LIST_OF_SHORTAGE(section, key, kind, defaultValue) shortage.key,
#define LIST_OF_PRICE_LIST(section, key, kind, defaultValue) priceList.key,
#define LIST_OF_DOCUMENT(section, key, kind, defaultValue) document.key,
#define LIST_OF_UNITS(section, key, kind, defaultValue) units.key,
#define LIST_OF_DRAW_INPUT(section, key, kind, defaultValue) drawInput.key,
constexpr Setting kTable[] = {GENERAL_SETTINGS(LIST_GENERAL) FIRM_SETTINGS(LIST_OF_FIRM) CATALOGUE_SETTINGS(
    LIST_OF_CATALOGUE) REQUISITION_SETTINGS(LIST_OF_REQUISITION) SHORTAGE_SETTINGS(LIST_OF_SHORTAGE)
                                  PRICE_LIST_SETTINGS(LIST_OF_PRICE_LIST) DOCUMENT_SETTINGS(LIST_OF_DOCUMENT)
                                      UNITS_SETTINGS(LIST_OF_UNITS) DRAW_INPUT_SETTINGS(LIST_OF_DRAW_INPUT)};
#undef LIST_GENERAL
#undef LIST_OF_FIRM
#undef LIST_OF_CATALOGUE
#undef LIST_OF_REQUISITION
#undef LIST_OF_SHORTAGE
#undef LIST_OF_PRICE_LIST
#undef LIST_OF_DOCUMENT
#undef LIST_OF_UNITS
#undef LIST_OF_DRAW_INPUT

const QString kApplication = QStringLiteral("Tarvello");

bool is(const Setting& one, const Setting& other) {
    return qstrcmp(one.section, other.section) == 0 && qstrcmp(one.key, other.key) == 0;
}

// The two files that lie in the program's folder until somebody says otherwise.
QString defaultOf(const Setting& setting) {
    if (is(setting, DatabasePath)) {
        return platform::programFolder() + QDir::separator() + QStringLiteral("Tarvello.mdb");
    }
    if (is(setting, HelpFilePath)) {
        return platform::programFolder() + QDir::separator() + QStringLiteral("Tarvello.hlp");
    }
    return QString::fromUtf8(setting.defaultValue);
}

platform::SettingText stored(const Setting& setting, const QString& value) {
    return {QString::fromUtf8(setting.section), QString::fromUtf8(setting.key), value};
}

std::vector<platform::SettingText> stored(const std::vector<Entry>& entries) {
    std::vector<platform::SettingText> all;
    std::transform(entries.begin(), entries.end(), std::back_inserter(all),
                   [](const Entry& entry) { return stored(entry.setting, entry.text); });
    return all;
}

std::optional<bool> booleanOf(const QString& text) {
    const QString trimmed = text.trimmed();
    if (trimmed.compare(QLatin1String("True"), Qt::CaseInsensitive) == 0) {
        return true;
    }
    if (trimmed.compare(QLatin1String("False"), Qt::CaseInsensitive) == 0) {
        return false;
    }
    bool isNumber = false;
    const double number = trimmed.toDouble(&isNumber);
    return isNumber ? std::optional<bool>(number != 0) : std::nullopt;
}

}  // namespace

std::span<const Setting> all() {
    return kTable;
}

void requireReadable() {
    platform::GetSetting(kApplication, QString::fromUtf8(ProperlyClosed.section),
                         QString::fromUtf8(ProperlyClosed.key));
}

QString text(const Setting& setting) {
    return text(setting, defaultOf(setting));
}

QString text(const Setting& setting, const QString& defaultValue) {
    platform::Trap step;
    QString value;
    step([&] {
        value = platform::GetSetting(kApplication, QString::fromUtf8(setting.section),
                                     QString::fromUtf8(setting.key), defaultValue);
    });
    return step.failed() ? defaultValue : value;
}

bool boolean(const Setting& setting) {
    return booleanOf(text(setting)).value_or(booleanOf(defaultOf(setting)).value_or(false));
}

int integer(const Setting& setting) {
    bool isNumber = false;
    const int number = text(setting).trimmed().toInt(&isNumber);
    return isNumber ? number : defaultOf(setting).toInt();
}

QString scrambled(const Setting& setting) {
    return ScrambleOrder(ScrambleChars(text(setting)), true);
}

QString scrambled(const Setting& setting, const QString& defaultValue) {
    return ScrambleOrder(ScrambleChars(text(setting, ScrambleChars(ScrambleOrder(defaultValue, false)))),
                         true);
}

void setText(const Setting& setting, const QString& value) {
    platform::SaveSettings(kApplication, {stored(setting, value)});
}

void setBoolean(const Setting& setting, bool value) {
    setText(setting, textOf(value));
}

void setInteger(const Setting& setting, int value) {
    setText(setting, textOf(value));
}

void setScrambled(const Setting& setting, const QString& plain) {
    setText(setting, ScrambleChars(ScrambleOrder(plain, false)));
}

QString textOf(bool value) {
    return value ? QStringLiteral("True") : QStringLiteral("False");
}

QString textOf(int value) {
    return QString::number(value);
}

void setTexts(const std::vector<Entry>& entries) {
    platform::SaveSettings(kApplication, stored(entries));
}

std::size_t firstUnsaved(const std::vector<Entry>& entries) {
    return platform::firstUnsaved(kApplication, stored(entries));
}

const Setting& find(const QString& section, const QString& key) {
    for (const Setting& setting : kTable) {
        if (section == QLatin1String(setting.section) && key == QLatin1String(setting.key)) {
            return setting;
        }
    }
    throw std::out_of_range("No setting " + section.toStdString() + "/" + key.toStdString());
}

}  // namespace settings
