#include "plain_report.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <cstdlib>

#include "plain_texts.h"

namespace {

bool isBlank(std::string_view text) {
    return std::all_of(text.begin(), text.end(),
                       [](char c) { return std::isspace(static_cast<unsigned char>(c)) != 0; });
}

std::string_view orElse(std::string_view text, std::string_view standIn) {
    return isBlank(text) ? standIn : text;
}

bool isDate(double days) {
    return std::floor(days) > 2;  // 1 January 1900: up to there no date is meant
}

}  // namespace

// --- A page.

void PlainPage::clear() {
    text_.clear();
    column_ = 1;
}

void PlainPage::tab(std::size_t column) {
    if (column < column_) {
        endLine();
    }
    text_.append(column - column_, ' ');
    column_ = column;
}

void PlainPage::append(std::string_view piece) {
    text_ += piece;
    column_ += static_cast<std::size_t>(std::count_if(
        piece.begin(), piece.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; }));
}

void PlainPage::print(std::string_view text) {
    for (std::size_t end = text.find_first_of("\r\n"); end != std::string_view::npos;
         end = text.find_first_of("\r\n")) {
        append(text.substr(0, end));
        endLine();
        text.remove_prefix(text.substr(end, 2) == "\r\n" ? end + 2 : end + 1);
    }
    append(text);
}

void PlainPage::endLine() {
    text_ += '\n';
    column_ = 1;
}

void PlainPage::rule(std::size_t column, std::size_t length) {
    tab(column);
    text_.append(length, '-');
    endLine();
}

void PlainPage::line(std::size_t column, std::string_view text) {
    tab(column);
    print(text);
    endLine();
}

// --- The pieces of one table.

void PlainPart::clear() {
    page_.clear();
    pieces_.clear();
}

void PlainPart::begin(int owner, int number, double started) {
    const std::size_t from = page_.text().size();
    pieces_.push_back({owner, number, started, from, from, from, from});
}

void PlainPart::name(std::string_view text) {
    pieces_.back().nameFrom = page_.text().size();
    page_.print(text);
    pieces_.back().nameTo = page_.text().size();
}

bool PlainPart::before(const Piece& a, const Piece& b) const {
    if (a.started != b.started) {
        return a.started < b.started;
    }
    const int names = compareNames(cut(a.nameFrom, a.nameTo), cut(b.nameFrom, b.nameTo));
    return names != 0 ? names < 0 : a.number < b.number;
}

// How many pieces stand before those of each owner.
void PlainPart::countOwners() {
    int last = 0;
    for (const Piece& piece : pieces_) {
        last = std::max(last, piece.owner);
    }
    starts_.assign(static_cast<std::size_t>(last) + 2, 0);
    for (const Piece& piece : pieces_) {
        ++starts_[static_cast<std::size_t>(piece.owner) + 1];
    }
    for (std::size_t owner = 1; owner < starts_.size(); ++owner) {
        starts_[owner] += starts_[owner - 1];
    }
}

void PlainPart::order() {
    countOwners();
    std::vector<std::size_t> next = starts_;
    ordered_.resize(pieces_.size());
    for (const Piece& piece : pieces_) {
        ordered_[next[static_cast<std::size_t>(piece.owner)]++] = piece;
    }
    for (std::size_t owner = 0; owner + 1 < starts_.size(); ++owner) {
        std::sort(ordered_.begin() + static_cast<std::ptrdiff_t>(starts_[owner]),
                  ordered_.begin() + static_cast<std::ptrdiff_t>(starts_[owner + 1]),
                  [this](const Piece& a, const Piece& b) { return before(a, b); });
    }
}

std::span<const PlainPart::Piece> PlainPart::of(int owner) const {
    const auto at = static_cast<std::size_t>(owner);
    if (at + 1 >= starts_.size()) {
        return {};
    }
    return std::span(ordered_).subspan(starts_[at], starts_[at + 1] - starts_[at]);
}

// --- The report's lines.

struct PlainReport::Line {
    enum class Kind { Plain, Date, OrNotAvailable };
    const char* label;
    Kind kind = Kind::OrNotAvailable;
};

struct PlainReport::Tables {
    static constexpr Line card[] = {{"PID card number: ", Line::Kind::Plain},
                                    {"Date of issue: ", Line::Kind::Date},
                                    {"Place of issue: "},
                                    {"Valid until: ", Line::Kind::Date}};
    static constexpr Line address[] = {{"Firm's name: "},
                                       {"Street address: ", Line::Kind::Plain},
                                       {"City/town: ", Line::Kind::Plain},
                                       {"ZIP (area) code: ", Line::Kind::Plain},
                                       {"State: "},
                                       {"Country: ", Line::Kind::Plain}};
    static constexpr Line contact[] = {{"Phone number: "},   {"Cellular phone: "}, {"Fax number: "},
                                       {"E-mail address: "}, {"Web site: "},       {"ICQ number: "}};
    static constexpr Line memory[] = {
        {"Processor: "}, {"Mother board: "}, {"Cache memory: "}, {"RAM memory: "}};
    static constexpr Line storage[] = {
        {"Hard disc drive: "}, {"Floppy disc drive: "}, {"CD/DVD drive: "}, {"CD writer: "}};
    static constexpr Line peripherals[] = {{"Video card: "},   {"Sound card: "}, {"Modem: "},
                                           {"Power supply: "}, {"Monitor: "},    {"Printer: "},
                                           {"Scanner: "},      {"Network: "},    {"Internet equip.: "}};
    static constexpr Line system[] = {{"Operating system: "}};
};

namespace {

constexpr const char* kClientFields =
    "CustID, Surname, GivenName, NickName, BirthDate, BirthPlace, FirmAddress, Comments, PIDNo, IssueDate, "
    "IssuePlace, ValidUntil, FirmName, Street, City, ZIP, State, Country, Phone, Cellular, FAX, EMail, Web, "
    "ICQ";
constexpr int kFirstOfCard = 8, kFirstOfAddress = 12, kFirstOfContact = 18;
constexpr const char* kComputerFields =
    "CustID, MachineID, MachineName, Comments, Processor, MotherBoard, CacheMem, RAMMem, HD, Floppy, CD, "
    "CDWriter, VideoCard, SoundCard, Modem, PowerSupply, Monitor, Printer, Scanner, Network, "
    "InternetEquipment, OS";
constexpr int kFirstOfMemory = 4, kFirstOfStorage = 8, kFirstOfPeripherals = 12, kFirstOfSystem = 21;
constexpr const char* kServiceFields =
    "MachineID, ID, ServiceStarted, ServiceToBeFinished, ServiceFinished, Price, Discount, GST, Paid, "
    "ServiceTypes, Comments";

std::string scanOf(const char* fields, const char* table) {
    return std::string("SELECT each_row(") + fields + ") FROM " + table + " NOT INDEXED";
}

constexpr std::size_t kComputerColumn = 5, kComputerValues = 25, kClientValues = 20, kServiceColumn = 10;

std::string serviceHeading() {
    PlainPage page;
    page.line(kServiceColumn, "Service(s):");
    page.rule(kServiceColumn, 115);
    struct Header {
        std::size_t column;
        const char* text;
    };
    for (const Header& header :
         {Header{10, "Started"}, Header{27, "Due date"}, Header{44, "Finished"}, Header{61, "Price"},
          Header{78, "Discount"}, Header{93, "GST"}, Header{100, "Paid"}, Header{115, "Total"}}) {
        page.tab(header.column);
        page.print(header.text);
    }
    page.endLine();
    page.rule(kServiceColumn, 115);
    return page.text();
}

std::string noServices() {
    PlainPage page;
    page.line(kServiceColumn, "Service(s): No services at this time.");
    page.endLine();
    return page.text();
}

std::string noComputers() {
    PlainPage page;
    page.line(kComputerColumn, "Computer name: There are no computers at the moment");
    page.rule(kComputerColumn, 50);
    page.endLine();
    return page.text();
}

void put(std::FILE* file, std::string_view text) {
    if (std::fwrite(text.data(), 1, text.size(), file) != text.size()) {
        std::abort();
    }
}

}  // namespace

PlainReport::PlainReport(PlainShop& shop)
    : shop_(shop),
      kinds_(shop, "SELECT Service FROM ServiceTypes ORDER BY dao_row"),
      allClients_(shop, scanOf(kClientFields, "Customers")),
      allComputers_(shop, scanOf(kComputerFields, "Computers")),
      allServices_(shop, scanOf(kServiceFields, "Services")) {}

void PlainReport::write(const std::string& path) {
    readKinds();
    for (PlainPart* part : {&clients_, &computers_, &services_}) {
        part->clear();
    }
    shop_.scan(allClients_, [this](const Row& row) { addClient(row); });
    shop_.scan(allComputers_, [this](const Row& row) { addComputer(row); });
    shop_.scan(allServices_, [this](const Row& row) { addService(row); });
    for (PlainPart* part : {&clients_, &computers_, &services_}) {
        part->order();
    }
    std::FILE* const file = std::fopen(path.c_str(), "wb");
    if (file == nullptr) {
        std::abort();
    }
    std::setvbuf(file, nullptr, _IOFBF, 1 << 18);
    for (const PlainPart::Piece& client : clients_.of(0)) {
        put(file, clients_.textOf(client));
        writeComputers(file, client.number);
    }
    std::fclose(file);
}

void PlainReport::writeComputers(std::FILE* file, int client) const {
    static const std::string kHeading = serviceHeading(), kNoServices = noServices(), kNone = noComputers();
    const auto computers = computers_.of(client);
    for (const PlainPart::Piece& computer : computers) {
        put(file, computers_.textOf(computer));
        const auto services = services_.of(computer.number);
        put(file, services.empty() ? kNoServices : kHeading);
        for (const PlainPart::Piece& service : services) {
            put(file, services_.textOf(service));
        }
    }
    if (computers.empty()) {
        put(file, kNone);
    }
}

void PlainReport::readKinds() {
    kindNames_.assign(1, std::string());
    while (kinds_.next()) {
        kindNames_.emplace_back(kinds_.row().text(0));
    }
}

void PlainReport::printLines(PlainPage& page, const Row& row, std::span<const Line> lines, int column,
                             std::size_t labels, std::size_t values) {
    for (const Line& line : lines) {
        page.tab(labels);
        page.print(line.label);
        page.tab(values);
        if (line.kind == Line::Kind::Plain) {
            page.print(row.text(column));
        } else if (line.kind == Line::Kind::OrNotAvailable) {
            page.print(orElse(row.text(column), "N/A"));
        } else if (isDate(row.number(column))) {
            printDate(page, row.number(column));
        } else {
            page.print("N/A");
        }
        page.endLine();
        ++column;
    }
}

void PlainReport::printDate(PlainPage& page, double days) {
    scratch_.clear();
    appendDate(scratch_, days);
    page.print(scratch_);
}

void PlainReport::printAmount(PlainPage& page, std::size_t column, float amount) {
    const std::int64_t cents = centsOf(decimalOf(amount));
    scratch_ = cents < 0 ? "($" : "$";
    appendAmount(scratch_, std::abs(cents));
    if (cents < 0) {
        scratch_ += ')';
    }
    page.tab(column);
    page.print(scratch_);
}

// --- A client.

void PlainReport::printHeadLine(const Row& client) {
    PlainPage& page = clients_.page();
    clients_.name(client.text(1));
    page.print(", ");
    page.print(client.text(2));
    if (const std::string_view nick = client.text(3); !nick.empty()) {
        page.print(" - ");
        page.print(nick);
    }
    const bool born = isDate(client.number(4));
    if (born) {
        page.print(", born on ");
        printDate(page, client.number(4));
    }
    if (const std::string_view place = client.text(5); !place.empty()) {
        page.print(born ? " in " : ", born in ");
        page.print(place);
    }
    page.endLine();
}

void PlainReport::addClient(const Row& client) {
    PlainPage& page = clients_.page();
    clients_.begin(0, static_cast<int>(client.integer(0)));
    printHeadLine(client);
    page.rule(1, 60);
    page.endLine();
    if (!client.text(kFirstOfCard).empty()) {
        printLines(page, client, Tables::card, kFirstOfCard, 1, kClientValues);
    }
    page.endLine();
    printLines(page, client, Tables::address, kFirstOfAddress, 1, kClientValues);
    if (client.integer(6) != 0) {
        page.line(kClientValues, "(this is the firm's address)");
    }
    page.endLine();
    printLines(page, client, Tables::contact, kFirstOfContact, 1, kClientValues);
    page.endLine();
    page.print("Comments: ");
    page.print(orElse(client.text(7), "None"));
    page.endLine();
    page.endLine();
    clients_.end();
}

// --- A computer.

void PlainReport::addComputer(const Row& computer) {
    PlainPage& page = computers_.page();
    computers_.begin(static_cast<int>(computer.integer(0)), static_cast<int>(computer.integer(1)));
    page.tab(kComputerColumn);
    page.print("Computer name: ");
    computers_.name(computer.text(2));
    page.endLine();
    page.rule(kComputerColumn, 50);
    page.endLine();
    printLines(page, computer, Tables::memory, kFirstOfMemory, kComputerColumn, kComputerValues);
    page.endLine();
    printLines(page, computer, Tables::storage, kFirstOfStorage, kComputerColumn, kComputerValues);
    page.endLine();
    printLines(page, computer, Tables::peripherals, kFirstOfPeripherals, kComputerColumn, kComputerValues);
    page.endLine();
    printLines(page, computer, Tables::system, kFirstOfSystem, kComputerColumn, kComputerValues);
    page.endLine();
    page.tab(kComputerColumn);
    page.print("Comments: ");
    page.tab(kComputerValues);
    page.print(orElse(computer.text(3), "None"));
    page.endLine();
    page.endLine();
    computers_.end();
}

// --- A service.

void PlainReport::printKinds(PlainPage& page, std::string_view positions) {
    if (isBlank(positions)) {
        return page.print("N/A");
    }
    scratch_.clear();
    for (const char *at = positions.data(), *const end = at + positions.size(); at < end; ++at) {
        std::size_t kind = 0;
        at = std::from_chars(at, end, kind).ptr;
        if (kind < 1 || kind >= kindNames_.size()) {
            continue;
        }
        if (!scratch_.empty()) {
            scratch_ += ", ";
        }
        scratch_ += kindNames_[kind];
    }
    page.print(scratch_);
}

void PlainReport::printFigures(PlainPage& page, const Row& service) {
    const float price = static_cast<float>(service.number(5) / 10000);
    const float discount = static_cast<float>(service.number(6));
    const float tax = static_cast<float>(service.number(7));
    const float paid = static_cast<float>(service.number(8) / 10000);
    printAmount(page, 61, price);
    printAmount(page, 78, discount);
    page.tab(93);
    scratch_.clear();
    appendSingle(scratch_, tax);
    page.print(scratch_ += '%');
    printAmount(page, 100, paid);
    printAmount(page, 115, (price - discount) * (1.0F + tax / 100.0F) - paid);
    page.endLine();
}

void PlainReport::addService(const Row& service) {
    PlainPage& page = services_.page();
    services_.begin(static_cast<int>(service.integer(0)), static_cast<int>(service.integer(1)),
                    service.number(2));
    constexpr std::size_t kDateColumns[] = {10, 27, 44};
    for (int date = 0; date < 3; ++date) {
        page.tab(kDateColumns[date]);
        if (date == 0 || isDate(service.number(2 + date))) {
            printDate(page, service.number(2 + date));
        }
    }
    printFigures(page, service);
    page.tab(kServiceColumn);
    page.print("Service(s): ");
    printKinds(page, service.text(9));
    page.endLine();
    page.tab(kServiceColumn);
    page.print("Comments: ");
    page.print(orElse(service.text(10), "None"));
    page.endLine();
    page.endLine();
    services_.end();
}
