#pragma once

#include <QString>
#include <QStringList>
#include <cstddef>
#include <span>
#include <vector>

#include "common/settings_rows.h"

// Every setting of the program, in one table: section, key, kind, default (common/settings_rows.h). Nothing
// else in the code spells a key.
namespace settings {

enum class Kind { Text, Boolean, Integer, Number, Place, PlaceAndSize, List, SortState, Scrambled };

struct Setting {
    const char* section;
    const char* key;
    Kind kind;
    const char* defaultValue;  // as the store would hold it; DatabasePath and HelpFilePath: see text()
};

#define SETTING_MEMBER(section, key, kind, defaultValue) \
    Setting key{#section, #key, Kind::kind, defaultValue};

// The rows, by name: those of the whole program here, those of each window in a structure of its own.
#define SETTING_CONSTANT(section, key, kind, defaultValue) \
    inline constexpr Setting key{#section, #key, Kind::kind, defaultValue};
GENERAL_SETTINGS(SETTING_CONSTANT)
#undef SETTING_CONSTANT

struct FirmSettings {
    FIRM_SETTINGS(SETTING_MEMBER)
};
inline constexpr FirmSettings firm;  // the firm's data, which the documents print

struct CatalogueSettings {
    CATALOGUE_SETTINGS(SETTING_MEMBER)
};
inline constexpr CatalogueSettings catalogue;  // the catalogue

struct RequisitionSettings {
    REQUISITION_SETTINGS(SETTING_MEMBER)
};
inline constexpr RequisitionSettings requisition;  // the requisition of a service

struct ShortageSettings {
    SHORTAGE_SETTINGS(SETTING_MEMBER)
};
inline constexpr ShortageSettings shortage;  // the critical products

struct PriceListSettings {
    PRICE_LIST_SETTINGS(SETTING_MEMBER)
};
inline constexpr PriceListSettings priceList;  // the price list's choices

struct DocumentSettings {
    DOCUMENT_SETTINGS(SETTING_MEMBER)
};
inline constexpr DocumentSettings document;  // the invoice and the quotation

struct UnitsSettings {
    UNITS_SETTINGS(SETTING_MEMBER)
};
inline constexpr UnitsSettings units;  // the units of measure

struct DrawInputSettings {
    DRAW_INPUT_SETTINGS(SETTING_MEMBER)
};
inline constexpr DrawInputSettings drawInput;  // quantity and serial number of a draw

#undef SETTING_MEMBER

std::span<const Setting> all();

// Typed reading and writing. A missing or unreadable key gives the default; a boolean reads "1", "0", "True",
// "False" (any case; another number than 0 is true). Writing throws platform::RunError.
QString text(const Setting& setting);
// The same with a default of the caller's own for a missing key; a stored empty text stays empty.
QString text(const Setting& setting, const QString& defaultValue);
bool boolean(const Setting& setting);
int integer(const Setting& setting);
QString scrambled(const Setting& setting);                               // in plain form
QString scrambled(const Setting& setting, const QString& defaultValue);  // both in plain form
void setText(const Setting& setting, const QString& value);
void setBoolean(const Setting& setting, bool value);  // "True" or "False"
void setInteger(const Setting& setting, int value);
void setScrambled(const Setting& setting, const QString& plain);

// A setting and the text that it is to hold.
struct Entry {
    const Setting& setting;
    QString text;
};
QString textOf(bool value);  // "True" or "False"
QString textOf(int value);
// All in one write of the file. Throws platform::RunError; then the file is as it was.
void setTexts(const std::vector<Entry>& entries);
// The first that is not stored yet; their number where all are. Throws platform::RunError where the store
// cannot be read.
std::size_t firstUnsaved(const std::vector<Entry>& entries);

// Throws platform::RunError where the store cannot be read at all. The typed readings above never do: they
// give the defaults, so that a shop with a broken settings file can still open its records.
void requireReadable();

// A row of the table by section and key, for those who look from outside (a list of what is stored, tests);
// throws std::out_of_range for one that is not there.
const Setting& find(const QString& section, const QString& key);

}  // namespace settings
