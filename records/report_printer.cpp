#include "records/report_printer.h"

#include <algorithm>
#include <cctype>
#include <span>
#include <string_view>

#include "records/report_fields.h"

using namespace report_fields;

namespace {

// Columns, counted from 1.
constexpr int kServiceColumn = 10;
constexpr std::size_t kClientRule = 60, kComputerRule = 50, kServiceRule = 115;

constexpr std::string_view kNotAvailable = "N/A", kNone = "None";

// What is printed behind a label, and what stands in for a value that is empty.
enum class Kind { Plain, OrNotAvailable, DateOrNotAvailable, OrNone };
struct Line {
    const char* label;
    int field;
    Kind kind = Kind::OrNotAvailable;
};

constexpr Line kCardLines[] = {
    {"PID card number: ", kPIDNo, Kind::Plain},
    {"Date of issue: ", kIssueDate, Kind::DateOrNotAvailable},
    {"Place of issue: ", kIssuePlace},
    {"Valid until: ", kValidUntil, Kind::DateOrNotAvailable},
};
constexpr Line kAddressLines[] = {
    {"Firm's name: ", kFirmName},
    {"Street address: ", kStreet, Kind::Plain},
    {"City/town: ", kCity, Kind::Plain},
    {"ZIP (area) code: ", kZIP, Kind::Plain},
    {"State: ", kState},
    {"Country: ", kCountry, Kind::Plain},
};
constexpr Line kContactLines[] = {
    {"Phone number: ", kPhone}, {"Cellular phone: ", kCellular},
    {"Fax number: ", kFAX},     {"E-mail address: ", kEMail},
    {"Web site: ", kWeb},       {"ICQ number: ", kICQ},
};
constexpr Line kMemoryLines[] = {
    {"Processor: ", kProcessor},
    {"Mother board: ", kMotherBoard},
    {"Cache memory: ", kCacheMem},
    {"RAM memory: ", kRAMMem},
};
constexpr Line kStorageLines[] = {
    {"Hard disc drive: ", kHD},
    {"Floppy disc drive: ", kFloppy},
    {"CD/DVD drive: ", kCD},
    {"CD writer: ", kCDWriter},
};
constexpr Line kPeripheralLines[] = {
    {"Video card: ", kVideoCard},     {"Sound card: ", kSoundCard}, {"Modem: ", kModem},
    {"Power supply: ", kPowerSupply}, {"Monitor: ", kMonitor},      {"Printer: ", kPrinter},
    {"Scanner: ", kScanner},          {"Network: ", kNetwork},      {"Internet equip.: ", kInternetEquipment},
};
constexpr Line kSystemLines[] = {{"Operating system: ", kOS}};
constexpr Line kCommentLines[] = {{"Comments: ", kComputerComments, Kind::OrNone}};

struct Group {
    bool ReportChoices::*choice;
    std::span<const Line> lines;
};
constexpr Group kComputerGroups[] = {
    {&ReportChoices::PrintMemoryDetails, kMemoryLines},
    {&ReportChoices::PrintStorageDetails, kStorageLines},
    {&ReportChoices::PrintPheriperalDetails, kPeripheralLines},
    {&ReportChoices::PrintOSDetails, kSystemLines},
    {&ReportChoices::PrintComputerComments, kCommentLines},
};

// The line of a service.
enum class CellKind { Date, OpenDate, Money, Percent, Total };
struct ServiceCell {
    int column;
    const char* header;
    CellKind kind;
    ServiceColumn field = ServiceColumn::Count;  // none of a total
};
constexpr ServiceCell kServiceCells[] = {
    {10, "Started", CellKind::Date, ServiceColumn::Started},
    {27, "Due date", CellKind::OpenDate, ServiceColumn::ToBeFinished},
    {44, "Finished", CellKind::OpenDate, ServiceColumn::Finished},
    {61, "Price", CellKind::Money, ServiceColumn::Price},
    {78, "Discount", CellKind::Money, ServiceColumn::Discount},
    {93, "GST", CellKind::Percent, ServiceColumn::Tax},
    {100, "Paid", CellKind::Money, ServiceColumn::Paid},
    {115, "Total", CellKind::Total},
};

bool isBlank(std::string_view text) {
    return std::all_of(text.begin(), text.end(),
                       [](char c) { return std::isspace(static_cast<unsigned char>(c)) != 0; });
}

std::string_view orElse(const std::string& text, std::string_view standIn) {
    return isBlank(text) ? standIn : std::string_view(text);
}

// Where the labels and the values of a record stand.
struct Columns {
    int labels;
    int values;
};
constexpr Columns kClientColumns{1, 20}, kComputerColumns{5, 25};

void put(ReportFile& file, int column, std::string_view text) {
    file.tab(column);
    file.print(text);
}

void putLine(ReportFile& file, int column, std::string_view text) {
    put(file, column, text);
    file.endLine();
}

void putRule(ReportFile& file, int column, std::size_t length) {
    file.tab(column);
    file.print(length, '-');
    file.endLine();
}

std::string_view valueOf(const ReportRows& row, const Line& line, ReportTexts& texts) {
    switch (line.kind) {
        case Kind::Plain:
            return row.text(line.field);
        case Kind::DateOrNotAvailable:
            return orElse(texts.printableDate(row.date(line.field)), kNotAvailable);
        case Kind::OrNone:
            return orElse(row.text(line.field), kNone);
        case Kind::OrNotAvailable:
            break;
    }
    return orElse(row.text(line.field), kNotAvailable);
}

// False where the file has no such field: its line is left out then.
bool putLines(ReportFile& file, const ReportRows& row, std::span<const Line> lines, Columns columns,
              ReportTexts& texts) {
    bool whole = true;
    for (const Line& line : lines) {
        if (!row.has(line.field)) {
            whole = false;
            continue;
        }
        put(file, columns.labels, line.label);
        putLine(file, columns.values, valueOf(row, line, texts));
    }
    return whole;
}

float figureOf(const ReportRows& service, ServiceColumn column) {
    return service.number(placeOf(column)).value_or(0.0F);
}

// The discount is taken off as an amount and printed as money, and no rate plays a part: the shop's books
// have been kept by this list, and its figures must go on as they began.
float totalOf(const ReportRows& service) {
    const float net = figureOf(service, ServiceColumn::Price) - figureOf(service, ServiceColumn::Discount);
    const float gross = net * (1.0F + figureOf(service, ServiceColumn::Tax) / 100.0F);
    return gross - figureOf(service, ServiceColumn::Paid);
}

std::string_view valueOf(const ReportRows& service, const ServiceCell& cell, ReportTexts& texts) {
    switch (cell.kind) {
        case CellKind::Date:
            return texts.shortDate(service.date(placeOf(cell.field)));
        case CellKind::OpenDate:
            return texts.printableDate(service.date(placeOf(cell.field)));
        case CellKind::Money:
            return texts.currency(figureOf(service, cell.field));
        case CellKind::Percent:
            return texts.percent(figureOf(service, cell.field));
        case CellKind::Total:
            break;
    }
    return texts.currency(totalOf(service));
}

}  // namespace

// --- A client.

std::string ReportPrinter::headLine(const ReportRows& client) {
    std::string line = client.text(kSurname) + ", " + client.text(kGivenName);
    if (const std::string& nick = client.text(kNickName); !nick.empty()) {
        line += " - " + nick;
    }
    if (!choices_.IncludeClients || !choices_.PrintBirthDetails) {
        return line;
    }
    const std::string& born = texts_.printableDate(client.date(kBirthDate));
    if (!born.empty()) {
        line += ", born on " + born;
    }
    if (const std::string& place = client.text(kBirthPlace); !place.empty()) {
        line += (born.empty() ? ", born in " : " in ") + place;
    }
    return line;
}

bool ReportPrinter::client(ReportFile& file, const ReportRows& client) {
    bool whole = true;
    putLine(file, 1, headLine(client));
    putRule(file, 1, kClientRule);
    if (!choices_.IncludeClients) {
        return true;
    }
    const auto lines = [&](std::span<const Line> group) {
        whole = putLines(file, client, group, kClientColumns, texts_) && whole;
    };
    if (choices_.PrintPIDCardDetails) {
        file.endLine();
        if (!client.text(kPIDNo).empty()) {
            lines(kCardLines);
        }
    }
    if (choices_.PrintAddressDetails) {
        file.endLine();
        lines(kAddressLines);
        if (client.flag(kFirmAddress)) {
            putLine(file, kClientColumns.values, "(this is the firm's address)");
        }
    }
    if (choices_.PrintContactDetails) {
        file.endLine();
        lines(kContactLines);
    }
    if (choices_.PrintClientComments) {
        file.endLine();
        file.print("Comments: ");
        file.print(orElse(client.text(kClientComments), kNone));
        file.endLine();
    }
    return whole;
}

// --- A computer.

bool ReportPrinter::computer(ReportFile& file, const ReportRows& computer) {
    bool whole = true;
    put(file, kComputerColumns.labels, "Computer name: ");
    file.print(computer.text(kMachineName));
    file.endLine();
    putRule(file, kComputerColumns.labels, kComputerRule);
    for (const Group& group : kComputerGroups) {
        if (!(choices_.*group.choice)) {
            continue;
        }
        file.endLine();
        whole = putLines(file, computer, group.lines, kComputerColumns, texts_) && whole;
    }
    return whole;
}

void ReportPrinter::noComputers(ReportFile& file) {
    putLine(file, kComputerColumns.labels, "Computer name: There are no computers at the moment");
    putRule(file, kComputerColumns.labels, kComputerRule);
    file.endLine();
}

// --- Services.

void ReportPrinter::services(ReportFile& file, const ReportPart& services) {
    if (services.count < 1) {
        putLine(file, kServiceColumn, "Service(s): No services at this time.");
        file.endLine();
        return;
    }
    putLine(file, kServiceColumn, "Service(s):");
    putRule(file, kServiceColumn, kServiceRule);
    for (const ServiceCell& cell : kServiceCells) {
        put(file, cell.column, cell.header);
    }
    file.endLine();
    putRule(file, kServiceColumn, kServiceRule);
    for (std::int64_t left = services.count; left > 0; --left, services.rows->next()) {
        service(file, *services.rows);
    }
}

void ReportPrinter::service(ReportFile& file, const ReportRows& service) {
    for (const ServiceCell& cell : kServiceCells) {
        put(file, cell.column, valueOf(service, cell, texts_));
    }
    file.endLine();

    const std::string& kinds = service.text(placeOf(ServiceColumn::Types));
    put(file, kServiceColumn, "Service(s): ");
    file.print(isBlank(kinds) ? kNotAvailable : std::string_view(texts_.kinds(kinds)));
    file.endLine();
    put(file, kServiceColumn, "Comments: ");
    file.print(orElse(service.text(placeOf(ServiceColumn::Comments)), kNone));
    file.endLine();
    file.endLine();
}
