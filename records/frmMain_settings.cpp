// What the main window remembers from one day to the next.

#include <QStringList>

#include "common/list_columns.h"
#include "common/modMain.h"
#include "common/settings.h"
#include "common/window_places.h"
#include "platform/system/trap.h"
#include "records/frmMain.h"

using platform::BoxIcon;
using platform::Trap;

namespace {

struct Flag {
    const settings::Setting& setting;
    bool frmMain::*property;
};

std::initializer_list<Flag> flags() {
    static const std::initializer_list<Flag> all = {
        {settings::ToolbarVisible, &frmMain::ToolbarVisible},
        {settings::StatusbarVisible, &frmMain::StatusbarVisible},
        {settings::LVWSorted, &frmMain::LVWSorted},
        {settings::IncludeClients, &frmMain::IncludeClients},
        {settings::IncludeComputers, &frmMain::IncludeComputers},
        {settings::IncludeServices, &frmMain::IncludeServices},
        {settings::ShowOnlySelectedClient, &frmMain::ShowOnlySelectedClient},
        {settings::ShowOnlySelectedComputer, &frmMain::ShowOnlySelectedComputer},
        {settings::ShowOnlySelectedService, &frmMain::ShowOnlySelectedService},
        {settings::PrintBirthDetails, &frmMain::PrintBirthDetails},
        {settings::PrintPIDCardDetails, &frmMain::PrintPIDCardDetails},
        {settings::PrintAddressDetails, &frmMain::PrintAddressDetails},
        {settings::PrintContactDetails, &frmMain::PrintContactDetails},
        {settings::PrintClientComments, &frmMain::PrintClientComments},
        {settings::PrintMemoryDetails, &frmMain::PrintMemoryDetails},
        {settings::PrintStorageDetails, &frmMain::PrintStorageDetails},
        {settings::PrintPheriperalDetails, &frmMain::PrintPheriperalDetails},
        {settings::PrintOSDetails, &frmMain::PrintOSDetails},
        {settings::PrintComputerComments, &frmMain::PrintComputerComments},
        {settings::AlwaysCreateBackupDB, &frmMain::AlwaysCreateBackupDB},
        {settings::ShowFilterStatistics, &frmMain::ShowMsgBoxFilterResults},
    };
    return all;
}

struct Number {
    const settings::Setting& setting;
    int frmMain::*property;
};

std::initializer_list<Number> numbers() {
    static const std::initializer_list<Number> all = {
        {settings::DefaultGST, &frmMain::DefaultGST},
        {settings::DueDateDiff, &frmMain::DueDateDiff},
    };
    return all;
}

struct Word {
    const settings::Setting& setting;
    QString frmMain::*property;
};

std::initializer_list<Word> words() {
    static const std::initializer_list<Word> all = {
        {settings::LVWSortField, &frmMain::LVWSortField},
        {settings::LVWSortOrder, &frmMain::LVWSortOrder},
    };
    return all;
}

}  // namespace

void frmMain::LoadSettings() {
    Trap step;
    step(
        [] { settings::requireReadable(); });  // the typed readings below give the default instead of failing
    step([&] { moveToPlace(this, settings::text(settings::MainPosition)); });
    for (const Flag& flag : flags()) {
        step([&] { this->*flag.property = settings::boolean(flag.setting); });
    }
    for (const Number& number : numbers()) {
        step([&] { this->*number.property = settings::integer(number.setting); });
    }
    for (const Word& word : words()) {
        step([&] { this->*word.property = settings::text(word.setting); });
    }
    if (step.failed()) {
        box(GetResString(1041) + QLatin1Char('\n') + step.line(), BoxIcon::Exclamation);
    }
}

void frmMain::SaveSettings() {
    Trap step;
    int line = 0;        // which of the settings is being written
    int failedLine = 0;  // the first that could not be
    const auto write = [&](auto&& deed) {
        ++line;
        step(deed);
        if (step.failed() && failedLine == 0) {
            failedLine = line;
        }
    };
    if (!isMinimized()) {
        write([&] { settings::setText(settings::MainPosition, placeOf(this)); });
    }
    for (const Flag& flag : flags()) {
        write([&] { settings::setBoolean(flag.setting, this->*flag.property); });
    }
    for (const Number& number : numbers()) {
        write([&] { settings::setInteger(number.setting, this->*number.property); });
    }
    for (const Word& word : words()) {
        write([&] { settings::setText(word.setting, this->*word.property); });
    }
    if (ListView1->columnCount() > 0) {
        write([&] { settings::setText(settings::LVWColumnWidths, columnWidths(*ListView1)); });
        write([&] { settings::setText(settings::LVWColumnPositions, columnPositions(*ListView1)); });
    }
    if (step.failed()) {
        box(GetResString(1040) + QLatin1Char('\n') + step.line() +
                QStringLiteral(" in line %1").arg(failedLine),
            BoxIcon::Exclamation);
    }
}
