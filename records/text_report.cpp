#include "records/text_report.h"

#include <QFileInfo>
#include <algorithm>
#include <array>
#include <cctype>
#include <chrono>
#include <future>
#include <iterator>
#include <span>
#include <string_view>

#include "common/window_helpers.h"
#include "platform/system/trap.h"
#include "records/client_order.h"
#include "records/service_fields.h"

using platform::Trap;

namespace {

// Columns, counted from 1.
constexpr int kServiceColumn = 10;
constexpr std::size_t kClientRule = 60, kComputerRule = 50, kServiceRule = 115;

constexpr std::string_view kNotAvailable = "N/A", kNone = "None";

enum ClientField {
    kCustID,
    kSurname,
    kGivenName,
    kNickName,
    kBirthDate,
    kBirthPlace,
    kPIDNo,
    kIssueDate,
    kIssuePlace,
    kValidUntil,
    kFirmName,
    kFirmAddress,
    kStreet,
    kCity,
    kZIP,
    kState,
    kCountry,
    kPhone,
    kCellular,
    kFAX,
    kEMail,
    kWeb,
    kICQ,
    kClientComments
};
constexpr const char* kClientFields[] = {
    "CustID",     "Surname",    "GivenName", "NickName",    "BirthDate", "BirthPlace", "PIDNo", "IssueDate",
    "IssuePlace", "ValidUntil", "FirmName",  "FirmAddress", "Street",    "City",       "ZIP",   "State",
    "Country",    "Phone",      "Cellular",  "FAX",         "EMail",     "Web",        "ICQ",   "Comments"};
static_assert(std::size(kClientFields) == kClientComments + 1);

enum ComputerField {
    kOwner,
    kMachineID,
    kMachineName,
    kProcessor,
    kMotherBoard,
    kCacheMem,
    kRAMMem,
    kHD,
    kFloppy,
    kCD,
    kCDWriter,
    kVideoCard,
    kSoundCard,
    kModem,
    kPowerSupply,
    kMonitor,
    kPrinter,
    kScanner,
    kNetwork,
    kInternetEquipment,
    kOS,
    kComputerComments
};
constexpr const char* kComputerFields[] = {
    "CustID",      "MachineID", "MachineName", "Processor", "MotherBoard", "CacheMem",          "RAMMem",
    "HD",          "Floppy",    "CD",          "CDWriter",  "VideoCard",   "SoundCard",         "Modem",
    "PowerSupply", "Monitor",   "Printer",     "Scanner",   "Network",     "InternetEquipment", "OS",
    "Comments"};
static_assert(std::size(kComputerFields) == kComputerComments + 1);

// A service's fields stand at their names' places, behind them the computer that it was done on.
constexpr int place(ServiceColumn column) {
    return static_cast<int>(column);
}
constexpr int kMachine = place(ServiceColumn::Count);
constexpr auto kServiceFields = [] {
    std::array<const char*, service_fields::kCount + 1> names{};
    for (const ServiceField& field : serviceFields()) {
        names[static_cast<std::size_t>(field.name)] = field.list.field;
    }
    names.back() = "MachineID";
    return names;
}();

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
    return service.number(place(column)).value_or(0.0F);
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
            return texts.shortDate(service.date(place(cell.field)));
        case CellKind::OpenDate:
            return texts.printableDate(service.date(place(cell.field)));
        case CellKind::Money:
            return texts.currency(figureOf(service, cell.field));
        case CellKind::Percent:
            return texts.percent(figureOf(service, cell.field));
        case CellKind::Total:
            break;
    }
    return texts.currency(totalOf(service));
}

std::string listOf(const std::vector<std::int32_t>& numbers) {
    std::string list;
    for (const std::int32_t number : numbers) {
        if (!list.empty()) {
            list += ',';
        }
        list += std::to_string(number);
    }
    return list;
}

std::shared_ptr<OpenedRows> openRows(dao::Database& database, const std::string& statement,
                                     ReportRows::Names names) {
    return std::make_shared<OpenedRows>(database.OpenRecordset(statement, dao::dbOpenSnapshot), names);
}

// The clients' numbers that the statement gives.
std::vector<std::int32_t> numbersOf(dao::Database& database, const std::string& statement) {
    const std::shared_ptr<OpenedRows> rows =
        openRows(database, statement, ReportRows::Names(kClientFields).first<kCustID + 1>());
    std::vector<std::int32_t> numbers;
    numbers.reserve(static_cast<std::size_t>(rows->count()));
    for (; !rows->isAtEnd(); rows->next()) {
        numbers.push_back(rows->key(kCustID).value_or(-1));
    }
    return numbers;
}

void addTo(ClientOrder& order, const OpenedRows& client) {
    if (const std::optional<std::int32_t> number = client.key(kCustID)) {  // nothing of a deleted one
        const dao::Value* name = client.value(kSurname);
        order.add(*number, name == nullptr ? nullptr : &name->textRef());
    }
}

// Work that may take longer than the windows may wait, and asks nothing of the database. False where `turn`
// says so. Throws what the work throws.
bool doAside(const std::function<void()>& work, const std::function<bool()>& turn) {
    std::future<void> done = std::async(std::launch::async, work);
    bool goesOn = true;
    while (goesOn && done.wait_for(std::chrono::milliseconds(5)) != std::future_status::ready) {
        goesOn = turn();
    }
    done.get();
    return goesOn;
}

// All rows of the statement, or the one that meets the criterion; none where none does. Throws as
// OpenRecordset does.
ReportPart openPart(dao::Database& database, const std::string& statement, ReportRows::Names names,
                    const std::string& criterion) {
    const std::shared_ptr<OpenedRows> rows = openRows(database, statement, names);
    ReportPart part{rows, rows->count()};
    if (part.count > 0 && !criterion.empty()) {
        part.count = rows->find(criterion) ? 1 : 0;
    }
    return part;
}

// Of what is selected, where only that is wanted; empty: all of them.
std::string criterionOf(bool wanted, const char* key, std::int32_t selected) {
    return wanted ? std::string(key) + "=" + std::to_string(selected) : std::string();
}

}  // namespace

TextReport::TextReport(dao::Database database, int querySuffix, const ReportChoices& choices,
                       Selection selection, QList<QString> typeNames)
    : database_(std::move(database)),
      suffix_(std::to_string(querySuffix)),
      choices_(choices),
      selection_(selection),
      texts_(std::move(typeNames)) {}

TextReport::Result TextReport::write(const std::string& clientSource, const QString& path,
                                     const Proceed& proceed) {
    clientSource_ = clientSource;
    std::vector<std::int32_t> ids;
    std::optional<Result> ended = Result::NotRead;
    Trap step;
    step([&] { ended = findClients(ids, proceed); });
    if (ended) {
        return *ended;
    }
    step(refreshCache);
    ReportFile file;
    const Turn turn = [&, total = static_cast<std::int64_t>(ids.size())] {
        return !proceed || proceed(0, total);
    };
    bool goesOn = true;
    step([&] {
        goesOn = letTurn(
            ids.size(), [&] { file.open(path); }, turn);
    });
    Result result = goesOn ? Result::Failed : Result::BrokenOff;
    if (goesOn) {
        step([&] { result = writeAll(file, path, ids, proceed, turn); });
    }
    if (result == Result::BrokenOff) {
        file.remove();
        return result;
    }
    step([&] { file.close(); });
    return step.failed() ? Result::Failed : result;
}

// What takes long where the report is large, and asks nothing of the database: half a million names are put
// in order, the space of a file is given back.
bool TextReport::letTurn(std::size_t clients, const std::function<void()>& work, const Turn& turn) const {
    if (clients >= shelf.fromClients) {
        return doAside(work, turn);
    }
    work();
    return true;
}

TextReport::Result TextReport::writeAll(ReportFile& file, const QString& path,
                                        const std::vector<std::int32_t>& ids, const Proceed& proceed,
                                        const Turn& turn) {
    if (!fillShelf(QFileInfo(path).path(), ids, turn)) {
        return Result::BrokenOff;
    }
    const Result result = writeClients(file, ids, proceed);
    return result == Result::BrokenOff || letTurn(
                                              ids.size(), [&] { shelf_.reset(); }, turn)
               ? result
               : Result::BrokenOff;
}

std::optional<TextReport::Result> TextReport::findClients(std::vector<std::int32_t>& ids,
                                                          const Proceed& proceed) {
    return choices_.ShowOnlySelectedClient ? findSelected(ids) : findAll(ids, proceed);
}

// Who is in the report is of one moment: only the numbers and the names are read for it. A large shop's
// clients with all that is known of them would fill the memory of a workstation.
std::optional<TextReport::Result> TextReport::findAll(std::vector<std::int32_t>& ids,
                                                      const Proceed& proceed) {
    ClientOrder order;
    OpenedRows rows(database_.OpenRecordset(clientSource_, dao::dbOpenDynaset),
                    ReportRows::Names(kClientFields).first<kSurname + 1>());
    if (!rows.has(kCustID) || !rows.has(kSurname)) {
        return Result::NotRead;
    }
    const Turn turn = [&, total = rows.count()] { return !proceed || proceed(0, total); };
    const auto add = [&] { addTo(order, rows); };
    if (!walkThrough(rows, add, turn) || !letTurn(
                                             order.size(), [&] { order.sort(); }, turn)) {
        return Result::BrokenOff;
    }
    ids = order.numbers();
    return ids.empty() ? std::optional(Result::Empty) : std::nullopt;
}

std::optional<TextReport::Result> TextReport::findSelected(std::vector<std::int32_t>& ids) {
    ids = numbersOf(database_, "SELECT CustID FROM " + clientTable() +
                                   " WHERE CustID=" + std::to_string(selection_.client));
    if (!ids.empty()) {
        return std::nullopt;
    }
    dao::Recordset all = database_.OpenRecordset("SELECT CustID FROM " + clientTable());
    const bool isEmpty = all.EOF();
    all.Close();
    return isEmpty ? Result::Empty : Result::ClientMissing;
}

// What a statement reads them from.
std::string TextReport::clientTable() const {
    return "(" + clientSource_ + ") AS Clients";
}

// False where `turn` says so. What cannot be put aside is read block by block, as in a small shop.
bool TextReport::fillShelf(const QString& folder, const std::vector<std::int32_t>& ids, const Turn& turn) {
    shelf_.reset();
    if (choices_.ShowOnlySelectedClient || readAhead == 0 || ids.size() < shelf.fromClients) {
        return true;
    }
    const ReportShelf::Table tables[] = {
        {clientSource_, kClientFields, kCustID, -1, -1},
        {"SELECT * FROM QDComputers" + suffix_, kComputerFields, kOwner, kMachineID, kMachineName},
        {"SELECT * FROM QDServices" + suffix_, kServiceFields, kMachine, -1, place(ServiceColumn::Started)}};
    bool goesOn = true;
    Trap step;
    step([&] {
        shelf_ = std::make_unique<ReportShelf>(shelf, ids, folder);
        goesOn = shelf_->fill(
            database_, std::span(tables).first(choices_.IncludeComputers ? std::size(tables) : 1), turn);
    });
    if (step.failed()) {
        shelf_.reset();
    }
    return goesOn;
}

TextReport::Result TextReport::writeClients(ReportFile& file, const std::vector<std::int32_t>& ids,
                                            const Proceed& proceed) {
    const bool all = !choices_.ShowOnlySelectedClient;
    const std::size_t block = shelf_ ? shelf.group : std::max<std::size_t>(readAhead, 1);
    bool whole = false;  // the last client's part
    for (std::size_t done = 0; done < ids.size(); ++done) {
        if (done % block == 0) {
            const auto first = ids.begin() + static_cast<std::ptrdiff_t>(done);
            const std::vector<std::int32_t> next(
                first, first + static_cast<std::ptrdiff_t>(std::min(block, ids.size() - done)));
            shelf_ ? takeClients(done / block, next) : readClients(next);
        }
        // Whom somebody has deleted meanwhile has no place in the report any more.
        if (const std::optional<ReportPart> client = clients_.part(ids[done]); client && client->count > 0) {
            whole = writeClientWhole(file, *client->rows, all);
        }
        if (all && proceed &&
            !proceed(static_cast<std::int64_t>(done) + 1, static_cast<std::int64_t>(ids.size()))) {
            return Result::BrokenOff;
        }
    }
    return whole ? Result::Written : Result::Failed;
}

bool TextReport::writeClientWhole(ReportFile& file, const ReportRows& client, bool all) {
    const bool clientWritten = WriteClient(file, client);
    file.endLine();
    const bool computersWritten = WriteComputers(file, client.key(kCustID).value_or(-1), all);
    return clientWritten && computersWritten;
}

// Throws as OpenRecordset does where the clients themselves cannot be read.
void TextReport::readClients(const std::vector<std::int32_t>& ids) {
    clients_.take(
        openRows(database_, "SELECT * FROM " + clientTable() + " WHERE CustID IN (" + listOf(ids) + ")",
                 kClientFields),
        kCustID, ids);
    if (readAhead > 0 && choices_.IncludeComputers && !choices_.ShowOnlySelectedClient) {
        readFor(ids);
    }
}

void TextReport::takeClients(std::size_t group, const std::vector<std::int32_t>& ids) {
    clients_.take(shelf_->take(group, ReportShelf::kClients), kCustID, ids);
    if (choices_.IncludeComputers) {
        computers_.take(shelf_->take(group, ReportShelf::kComputers), kOwner, ids);
        services_.take(shelf_->take(group, ReportShelf::kServices), kMachine, computers_.keys(kMachineID));
    }
}

// A shop of fifty thousand clients would otherwise ask the file a hundred thousand times. What cannot be read
// so is asked for one by one.
void TextReport::readFor(const std::vector<std::int32_t>& owners) {
    computers_.clear();
    services_.clear();
    Trap step;
    step([&] {
        computers_.take(openRows(database_,
                                 "SELECT * FROM QDComputers" + suffix_ + " WHERE CustID IN (" +
                                     listOf(owners) + ") ORDER BY CustID, MachineName ASC",
                                 kComputerFields),
                        kOwner, owners);
        const std::vector<std::int32_t> machines = computers_.keys(kMachineID);
        if (machines.empty()) {
            return;
        }
        services_.take(openRows(database_,
                                "SELECT * FROM QDServices" + suffix_ + " WHERE MachineID IN (" +
                                    listOf(machines) + ") ORDER BY MachineID, ServiceStarted ASC",
                                kServiceFields),
                       kMachine, machines);
    });
}

// --- A client.

std::string TextReport::headLine(const ReportRows& client) {
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

bool TextReport::WriteClient(ReportFile& file, const ReportRows& client) {
    Trap step;
    bool whole = true;
    step([&] {
        putLine(file, 1, headLine(client));
        putRule(file, 1, kClientRule);
        if (!choices_.IncludeClients) {
            return;
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
    });
    return whole && !step.failed() && file.isGood();
}

// --- Computers.

bool TextReport::WriteComputers(ReportFile& file, std::int32_t custId, bool all) {
    if (!choices_.IncludeComputers) {
        return false;
    }
    Trap step;
    bool whole = true;
    step([&] {
        const std::optional<ReportPart> read = all ? computers_.part(custId) : std::nullopt;
        const ReportPart computers =
            read ? *read
                 : openPart(database_,
                            "SELECT * FROM QDComputers" + suffix_ +
                                " WHERE CustID=" + std::to_string(custId) + " ORDER BY MachineName ASC;",
                            kComputerFields,
                            criterionOf(choices_.ShowOnlySelectedComputer && !all, "MachineID",
                                        selection_.computer));
        for (std::int64_t left = computers.count; left > 0; --left, computers.rows->next()) {
            whole = WriteComputer(file, *computers.rows) && whole;
            file.endLine();
            whole = WriteServices(file, computers.rows->key(kMachineID).value_or(-1), all) && whole;
        }
        if (computers.count > 0) {
            return;
        }
        putLine(file, kComputerColumns.labels, "Computer name: There are no computers at the moment");
        putRule(file, kComputerColumns.labels, kComputerRule);
        file.endLine();
    });
    return whole && !step.failed() && file.isGood();
}

bool TextReport::WriteComputer(ReportFile& file, const ReportRows& computer) {
    Trap step;
    bool whole = true;
    step([&] {
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
    });
    return whole && !step.failed() && file.isGood();
}

// --- Services.

bool TextReport::WriteServices(ReportFile& file, std::int32_t machineId, bool all) {
    Trap step;
    step([&] {
        const std::optional<ReportPart> read = all ? services_.part(machineId) : std::nullopt;
        const ReportPart services =
            read ? *read
                 : openPart(database_,
                            "SELECT * FROM QDServices" + suffix_ + " WHERE MachineID=" +
                                std::to_string(machineId) + " ORDER BY ServiceStarted ASC",
                            kServiceFields,
                            criterionOf(choices_.ShowOnlySelectedService && !all, "ID", selection_.service));
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
            writeService(file, *services.rows);
        }
    });
    return !step.failed() && file.isGood();
}

void TextReport::writeService(ReportFile& file, const ReportRows& service) {
    for (const ServiceCell& cell : kServiceCells) {
        put(file, cell.column, valueOf(service, cell, texts_));
    }
    file.endLine();

    const std::string& kinds = service.text(place(ServiceColumn::Types));
    put(file, kServiceColumn, "Service(s): ");
    file.print(isBlank(kinds) ? kNotAvailable : std::string_view(texts_.kinds(kinds)));
    file.endLine();
    put(file, kServiceColumn, "Comments: ");
    file.print(orElse(service.text(place(ServiceColumn::Comments)), kNone));
    file.endLine();
    file.endLine();
}
