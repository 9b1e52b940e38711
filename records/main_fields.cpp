#include "records/main_fields.h"

namespace {

using enum EntryKind;

enum ClientBlock { Identity, Firm, Contact, Card, ClientComments };
constexpr EntryBlock kClientBlocks[] = {
    {"Identity", 0, 0, 1, 1},      {"Firm and address", 0, 1, 1, 1}, {"Contact", 0, 2, 1, 1},
    {"Personal card", 1, 0, 1, 1}, {"Comments", 1, 1, 1, 2},
};

// In the order in which Enter walks through them.
constexpr EntryRow kClientRows[] = {
    {Line, 0, "Surname", "Surname", Identity, 503, true},
    {Line, 1, "GivenName", "Given name", Identity, 504, true},
    {Line, 2, "NickName", "Nickname", Identity, 505, false},
    {Date, 0, "BirthDate", "Birth date", Identity, 506, false},
    {Line, 3, "BirthPlace", "Birth place", Identity, 507, false},
    {Line, 4, "PIDNo", "Card number", Card, 508, false},
    {Date, 1, "IssueDate", "Issued on", Card, 509, false},
    {Date, 2, "ValidUntil", "Valid until", Card, 510, false},
    {Line, 5, "IssuePlace", "Issued in", Card, 511, false},
    {Line, 6, "FirmName", "Firm", Firm, 512, false},
    {Check, 0, "FirmAddress", "Firm's address", Firm, 513, false},
    {Line, 7, "Street", "Street and number", Firm, 514, true},
    {Line, 8, "City", "Town", Firm, 515, true},
    {Line, 9, "State", "State", Firm, 516, false},
    {Line, 10, "ZIP", "Postal code", Firm, 517, true},
    {Line, 11, "Country", "Country", Firm, 518, true},
    {Line, 12, "Phone", "Phone", Contact, 519, false},
    {Line, 13, "Cellular", "Mobile phone", Contact, 520, false},
    {Line, 14, "FAX", "Fax", Contact, 521, false},
    {Line, 15, "EMail", "E-mail", Contact, 522, false},
    {Line, 16, "Web", "Web", Contact, 523, false},
    {Line, 17, "ICQ", "ICQ", Contact, 524, false},
    {Lines, 18, "Comments", "", ClientComments, 525, false},
};

enum ComputerBlock { Machine, Processor, Storage, Peripherals, ComputerComments };
constexpr EntryBlock kComputerBlocks[] = {
    {"Computer", 0, 0, 1, 1}, {"Processor and memory", 1, 0, 1, 1},
    {"Storage", 2, 0, 1, 1},  {"Peripherals", 0, 1, 2, 1},
    {"Comments", 2, 1, 1, 1},
};

constexpr EntryRow kComputerRows[] = {
    {Line, 19, "MachineName", "Computer name", Machine, 602, true},
    {Line, 35, "OS", "Operating system", Machine, 618, false},
    {Line, 20, "Processor", "Processor", Processor, 603, false},
    {Line, 21, "MotherBoard", "Motherboard", Processor, 604, false},
    {Line, 22, "CacheMem", "Cache memory", Processor, 605, false},
    {Line, 23, "RAMMem", "Memory (RAM)", Processor, 606, false},
    {Line, 24, "HD", "Hard disk", Storage, 607, false},
    {Line, 25, "Floppy", "Floppy drive", Storage, 608, false},
    {Line, 26, "CD", "CD/DVD drive", Storage, 609, false},
    {Line, 27, "CDWriter", "CD writer", Storage, 610, false},
    {Line, 28, "VideoCard", "Video card", Peripherals, 611, false},
    {Line, 29, "SoundCard", "Sound card", Peripherals, 612, false},
    {Line, 30, "PowerSupply", "Power supply", Peripherals, 613, false},
    {Line, 31, "Modem", "Modem", Peripherals, 614, false},
    {Line, 39, "Network", "Network", Peripherals, 620, false},
    {Line, 40, "InternetEquipment", "Internet equipment", Peripherals, 621, false},
    {Line, 32, "Monitor", "Monitor", Peripherals, 615, false},
    {Line, 33, "Printer", "Printer", Peripherals, 616, false},
    {Line, 34, "Scanner", "Scanner", Peripherals, 617, false},
    {Lines, 36, "Comments", "", ComputerComments, 619, false},
};

constexpr EntryPane kPanes[] = {
    {kClientBlocks, kClientRows, 501, 502, "Client"},
    {kComputerBlocks, kComputerRows, 601, 601, "Computer"},
};

}  // namespace

const EntryPane& entryPane(int stageIndex) {
    return kPanes[stageIndex];
}

int stageOfField(int index) {
    if (index < kMachineName)
        return 1;
    return index == kDescription || index == kServiceKinds ? 3 : 2;
}
