#include "shell/settings.h"

#include <QDir>
#include <optional>
#include <stdexcept>

#include "platform/system/files.h"
#include "platform/system/settings_store.h"
#include "platform/system/trap.h"
#include "shell/modMain.h"

namespace settings {

namespace {

constexpr char kSettings[] = "Settings";

}  // namespace

// The rows of the section "Settings" that the code asks for by name: the name, which is the key as well, the
// kind and the default. Standing here once, they become both the variables of the header and the first part
// of the table.
#define NAMED_SETTINGS(ROW)                                          \
    ROW(DatabasePath, Text, "")                                      \
    ROW(HelpFilePath, Text, "")                                      \
    ROW(ProperlyClosed, Boolean, "")                                 \
    ROW(CeneDinarske, Boolean, "True")                               \
    ROW(AskBeforeDelete, Boolean, "True")                            \
    ROW(MakeProperCase, Boolean, "True")                             \
    ROW(ShowTipsAtStartup, Boolean, "1")                             \
    ROW(ShowTipsAtRandom, Boolean, "0")                              \
    ROW(KursKupovni, Number, "80")                                   \
    ROW(MainPosition, Place, "500;500")                              \
    ROW(ToolbarVisible, Boolean, "True")                             \
    ROW(StatusbarVisible, Boolean, "True")                           \
    ROW(LVWSorted, Boolean, "False")                                 \
    ROW(LVWSortField, Text, "ServiceStarted")                        \
    ROW(LVWSortOrder, Text, "ASC")                                   \
    ROW(LVWColumnWidths, List, "1440;1440;1440;1440;1440;1440;1440") \
    ROW(LVWColumnPositions, List, "1;2;3;4;5;6;7")                   \
    ROW(IncludeClients, Boolean, "True")                             \
    ROW(IncludeComputers, Boolean, "True")                           \
    ROW(IncludeServices, Boolean, "True")                            \
    ROW(ShowOnlySelectedClient, Boolean, "True")                     \
    ROW(ShowOnlySelectedComputer, Boolean, "True")                   \
    ROW(ShowOnlySelectedService, Boolean, "True")                    \
    ROW(PrintBirthDetails, Boolean, "True")                          \
    ROW(PrintPIDCardDetails, Boolean, "True")                        \
    ROW(PrintAddressDetails, Boolean, "True")                        \
    ROW(PrintContactDetails, Boolean, "True")                        \
    ROW(PrintClientComments, Boolean, "True")                        \
    ROW(PrintMemoryDetails, Boolean, "True")                         \
    ROW(PrintStorageDetails, Boolean, "True")                        \
    ROW(PrintPheriperalDetails, Boolean, "True")                     \
    ROW(PrintOSDetails, Boolean, "True")                             \
    ROW(PrintComputerComments, Boolean, "True")                      \
    ROW(AlwaysCreateBackupDB, Boolean, "True")                       \
    ROW(ShowFilterStatistics, Boolean, "True")                       \
    ROW(DefaultGST, Integer, "0")                                    \
    ROW(DueDateDiff, Integer, "5")                                   \
    ROW(DetailsPosition, Place, "500;500")                           \
    ROW(ReportOptionsPosition, Place, "500;500")                     \
    ROW(LegendPosition, Place, "1500;1500")                          \
    ROW(OptionsPosition, Place, "500;500")                           \
    ROW(KonfigInputWindowData, Place, "800;800")

#define DEFINE_SETTING(name, kind, defaultValue) \
    constexpr Setting name{kSettings, #name, Kind::kind, defaultValue};
NAMED_SETTINGS(DEFINE_SETTING)
#undef DEFINE_SETTING

namespace {

#define LIST_SETTING(name, kind, defaultValue) name,
constexpr Setting kTable[] = {
    NAMED_SETTINGS(LIST_SETTING)

        {kSettings, "frmSettAdresa", Kind::Scrambled, ""},
    {kSettings, "frmSettGrad", Kind::Scrambled, ""},
    {kSettings, "frmSettZip", Kind::Scrambled, ""},
    {kSettings, "frmSettTel", Kind::Scrambled, ""},
    {kSettings, "frmSettFax", Kind::Scrambled, ""},
    {kSettings, "frmSettEmail", Kind::Scrambled, ""},
    {kSettings, "frmSettWWW", Kind::Scrambled, ""},
    {kSettings, "frmSettMatBr", Kind::Scrambled, ""},
    {kSettings, "frmSettRegBr", Kind::Scrambled, ""},
    {kSettings, "frmSettSifDel", Kind::Scrambled, ""},
    {kSettings, "frmSettPIB", Kind::Scrambled, ""},
    {kSettings, "frmSettPDV", Kind::Scrambled, ""},
    {kSettings, "frmSettRnBr", Kind::Scrambled, ""},

    {"frmKonfiguratorEx", "WindowData", Kind::PlaceAndSize, "800;800;12000;8000"},
    {"frmKonfiguratorEx", "PrikaziStanjaVecaOdNule", Kind::Boolean, "False"},
    {"frmKonfiguratorEx", "PrikaziSveProizvodjace", Kind::Boolean, "False"},
    {"frmKonfiguratorEx", "VerticalSplitPosition", Kind::Integer, "50"},
    {"frmKonfiguratorEx", "HorisontalSplitPosition", Kind::Integer, "50"},
    {"frmKonfiguratorEx", "GRPSort", Kind::SortState, "0Grupa0"},
    {"frmKonfiguratorEx", "MFTSort", Kind::SortState, "0Proizvodjac0"},
    {"frmKonfiguratorEx", "PRDSort", Kind::SortState, "0Naziv0"},
    {"frmKonfiguratorEx", "LVWColumnWidths", Kind::List, "1440;1440;1440;1440;1440"},
    {"frmKonfiguratorEx", "LVWColumnPositions", Kind::List, "1;2;3;4;5"},

    {"frmInvoiceEx", "WindowData", Kind::PlaceAndSize, "800;800;12000;8000"},
    {"frmInvoiceEx", "LVWColumnSort", Kind::SortState, "0Proizvodjac0"},
    // The gap between the sixth and the seventh width has always been there: that column starts with no
    // width.
    {"frmInvoiceEx", "LVWColumnWidths", Kind::List, "1440;1440;1440;1440;1440;1440;;1440;1440"},
    {"frmInvoiceEx", "LVWColumnPositions", Kind::List, "1;2;3;4;5;6;7;8"},

    {"frmTrebovanjeError", "WindowData", Kind::PlaceAndSize, "800;800;12000;8000"},
    {"frmTrebovanjeError", "LVWColumnWidths", Kind::List, "1440;1440;1440;1440;1440;1440"},
    {"frmTrebovanjeError", "LVWColumnPositions", Kind::List, "1;2;3;4;5;6"},

    {"frmKonfigPrint", "WindowData", Kind::Place, "1800;1800"},
    {"frmKonfigPrint", "PageHeader", Kind::Text, ""},
    {"frmKonfigPrint", "PageFooter", Kind::Text, ""},
    {"frmKonfigPrint", "UseFirmsData", Kind::Integer, "1"},
    {"frmKonfigPrint", "TOCVisible", Kind::Integer, "1"},
    {"frmKonfigPrint", "OptionRangeIndex", Kind::Integer, "0"},
    {"frmKonfigPrint", "OptionStateIndex", Kind::Integer, "0"},
    {"frmKonfigPrint", "PriceRoundUp", Kind::Integer, "0"},

    {"frmPrintInvoiceEx", "WindowData", Kind::Place, "1800;1800"},
    {"frmPrintInvoiceEx", "TabIndex", Kind::Integer, "1"},
    {"frmPrintInvoiceEx", "PriceRoundUp", Kind::Integer, "2"},
    {"frmPrintInvoiceEx", "NumberDelimiter", Kind::Integer, "0"},
    {"frmPrintInvoiceEx", "NumberSuffix", Kind::Integer, "0"},
    {"frmPrintInvoiceEx", "Slovima", Kind::Integer, "0"},
    {"frmPrintInvoiceEx", "OstaliTrosak", Kind::Text, ""},
    {"frmPrintInvoiceEx", "ChkNacinPlacanja", Kind::Integer, "1"},
    {"frmPrintInvoiceEx", "ChkRokPlacanja", Kind::Integer, "1"},
    {"frmPrintInvoiceEx", "ChkRokIsporuke", Kind::Integer, "1"},
    {"frmPrintInvoiceEx", "ChkIsporuka", Kind::Integer, "1"},
    {"frmPrintInvoiceEx", "ChkNapomena", Kind::Integer, "1"},
    {"frmPrintInvoiceEx", "ChkPecatPotpis", Kind::Integer, "1"},
    {"frmPrintInvoiceEx", "ChkFooter", Kind::Integer, "1"},
    {"frmPrintInvoiceEx", "ChkFooterFromSett", Kind::Integer, "1"},
    {"frmPrintInvoiceEx", "txtNacinPlacanja1", Kind::Text, ""},
    {"frmPrintInvoiceEx", "txtNacinPlacanja2", Kind::Text, ""},
    {"frmPrintInvoiceEx", "txtRokPlacanja1", Kind::Text, ""},
    {"frmPrintInvoiceEx", "txtRokPlacanja2", Kind::Text, ""},
    {"frmPrintInvoiceEx", "txtRokIsporuke1", Kind::Text, ""},
    {"frmPrintInvoiceEx", "txtRokIsporuke2", Kind::Text, ""},
    {"frmPrintInvoiceEx", "txtIsporuka1", Kind::Text, ""},
    {"frmPrintInvoiceEx", "txtIsporuka2", Kind::Text, ""},
    {"frmPrintInvoiceEx", "txtNapomena1", Kind::Text, ""},
    {"frmPrintInvoiceEx", "txtNapomena2", Kind::Text, ""},
    {"frmPrintInvoiceEx", "txtPecatPotpis", Kind::Text, ""},
    {"frmPrintInvoiceEx", "txtFooter", Kind::Text, ""},
    {"frmPrintInvoiceEx", "frmSettMatBr", Kind::Scrambled, ""},
    {"frmPrintInvoiceEx", "frmSettRegBr", Kind::Scrambled, ""},
    {"frmPrintInvoiceEx", "frmSettSifDel", Kind::Scrambled, ""},
    {"frmPrintInvoiceEx", "frmSettPIB", Kind::Scrambled, ""},
    {"frmPrintInvoiceEx", "frmSettPDV", Kind::Scrambled, ""},
    {"frmPrintInvoiceEx", "frmSettRnBr", Kind::Scrambled, ""},
    {"frmPrintInvoiceEx", "frmSettKupacOstalo", Kind::Text, ""},

    {"frmJM", "WindowData", Kind::Place, "500;500"},
    {"frmJM", "Sorted", Kind::Integer, "0"},
    {"frmJM", "SortedHow", Kind::Text, "ASC"},

    {"frmInputBox", "WindowData", Kind::Place, "500;500"},
    {"frmInputBox", "MakeProperCase", Kind::Boolean, "1"},
    {"frmInputBox", "AppendSerialNumber", Kind::Boolean, "0"},
};
#undef LIST_SETTING

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
    platform::GetSetting(kApplication, QString::fromUtf8(kSettings), QString::fromUtf8(ProperlyClosed.key));
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
    platform::SaveSetting(kApplication, QString::fromUtf8(setting.section), QString::fromUtf8(setting.key),
                          value);
}

void setBoolean(const Setting& setting, bool value) {
    setText(setting, value ? QStringLiteral("True") : QStringLiteral("False"));
}

void setInteger(const Setting& setting, int value) {
    setText(setting, QString::number(value));
}

void setScrambled(const Setting& setting, const QString& plain) {
    setText(setting, ScrambleChars(ScrambleOrder(plain, false)));
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
