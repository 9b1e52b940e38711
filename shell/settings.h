#pragma once

#include <QString>
#include <QStringList>
#include <span>

// Every setting of the program, in one table: section, key, kind, default. Nothing else in the code spells a
// key.
namespace settings {

enum class Kind { Text, Boolean, Integer, Number, Place, PlaceAndSize, List, SortState, Scrambled };

struct Setting {
    const char* section;
    const char* key;
    Kind kind;
    const char* defaultValue;  // as the store would hold it; DatabasePath and HelpFilePath: see text()
};

// The rows, by name. (The table itself stands in settings.cpp; `all` walks it.)
extern const Setting DatabasePath, HelpFilePath, ProperlyClosed, CeneDinarske, AskBeforeDelete,
    MakeProperCase, ShowTipsAtStartup, ShowTipsAtRandom, KursKupovni, MainPosition, ToolbarVisible,
    StatusbarVisible, LVWSorted, LVWSortField, LVWSortOrder, LVWColumnWidths, LVWColumnPositions,
    IncludeClients, IncludeComputers, IncludeServices, ShowOnlySelectedClient, ShowOnlySelectedComputer,
    ShowOnlySelectedService, PrintBirthDetails, PrintPIDCardDetails, PrintAddressDetails, PrintContactDetails,
    PrintClientComments, PrintMemoryDetails, PrintStorageDetails, PrintPheriperalDetails, PrintOSDetails,
    PrintComputerComments, AlwaysCreateBackupDB, ShowFilterStatistics, DefaultGST, DueDateDiff,
    DetailsPosition, ReportOptionsPosition, LegendPosition, OptionsPosition, KonfigInputWindowData;
std::span<const Setting> all();  // these and the other windows' sections

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

// Throws platform::RunError where the store cannot be read at all. The typed readings above never do: they
// give the defaults, so that a shop with a broken settings file can still open its records.
void requireReadable();

// A row of the table by section and key; throws std::out_of_range for one that is not there.
const Setting& find(const QString& section, const QString& key);

}  // namespace settings
