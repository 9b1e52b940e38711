#include "records/main_fields.h"

namespace {

using enum EntryKind;

enum ClientBlock { Identity, Firm, Contact, Card, ClientComments };
constexpr EntryBlock kClientBlocks[] = {
    {"Identity", 0, 0, 1, 1},      {"Firm and address", 0, 1, 1, 1}, {"Contact", 0, 2, 1, 1},
    {"Personal card", 1, 0, 1, 1}, {"&Comments", 1, 1, 1, 2},
};

// In the order in which Enter walks through them. Their letters with Alt leave out those of the menus, and no
// two share one where they need not: the second press goes on to the other of a pair.
constexpr EntryRow kClientRows[] = {
    {Line, 0, "Surname", "&Surname", Identity, 503, 119},
    {Line, 1, "GivenName", "&Given name", Identity, 504, 120},
    {Line, 2, "NickName", "Nic&kname", Identity, 505, 0},
    {Date, 0, "BirthDate", "&Birth date", Identity, 506, 0},
    {Line, 3, "BirthPlace", "&Birth place", Identity, 507, 0},
    {Line, 4, "PIDNo", "Card &number", Card, 508, 0},
    {Date, 1, "IssueDate", "&Issued on", Card, 509, 0},
    {Date, 2, "ValidUntil", "Valid &until", Card, 510, 0},
    {Line, 5, "IssuePlace", "&Issued in", Card, 511, 0},
    {Line, 6, "FirmName", "Fi&rm", Firm, 512, 0},
    {Check, 0, "FirmAddress", "&Firm's address", Firm, 513, 0},
    {Line, 7, "Street", "Street &and number", Firm, 514, 121},
    {Line, 8, "City", "&Town", Firm, 515, 122},
    {Line, 9, "State", "S&tate", Firm, 516, 0},
    {Line, 10, "ZIP", "P&ostal code", Firm, 517, 123},
    {Line, 11, "Country", "Countr&y", Firm, 518, 124},
    {Line, 12, "Phone", "P&hone", Contact, 519, 0},
    {Line, 13, "Cellular", "&Mobile phone", Contact, 520, 0},
    {Line, 14, "FAX", "Fa&x", Contact, 521, 0},
    {Line, 15, "EMail", "&E-mail", Contact, 522, 0},
    {Line, 16, "Web", "&Web", Contact, 523, 0},
    {Line, 17, "ICQ", "IC&Q", Contact, 524, 0},
    {Lines, 18, "Comments", "", ClientComments, 525, 0},
};

enum ComputerBlock { Machine, Processor, Storage, Peripherals, ComputerComments };
constexpr EntryBlock kComputerBlocks[] = {
    {"Computer", 0, 0, 1, 1},  {"Processor and memory", 1, 0, 1, 1},
    {"Storage", 2, 0, 1, 1},   {"Peripherals", 0, 1, 2, 1},
    {"&Comments", 2, 1, 1, 1},
};

constexpr EntryRow kComputerRows[] = {
    {Line, 19, "MachineName", "Comp&uter name", Machine, 602, 125},
    {Line, 35, "OS", "Operatin&g system", Machine, 618, 0},
    {Line, 20, "Processor", "Pr&ocessor", Processor, 603, 0},
    {Line, 21, "MotherBoard", "Mother&board", Processor, 604, 0},
    {Line, 22, "CacheMem", "Cac&he memory", Processor, 605, 0},
    {Line, 23, "RAMMem", "Memor&y (RAM)", Processor, 606, 0},
    {Line, 24, "HD", "Hard dis&k", Storage, 607, 0},
    {Line, 25, "Floppy", "&Floppy drive", Storage, 608, 0},
    {Line, 26, "CD", "CD/DVD driv&e", Storage, 609, 0},
    {Line, 27, "CDWriter", "CD &writer", Storage, 610, 0},
    {Line, 28, "VideoCard", "V&ideo card", Peripherals, 611, 0},
    {Line, 29, "SoundCard", "&Sound card", Peripherals, 612, 0},
    {Line, 30, "PowerSupply", "Power supp&ly", Peripherals, 613, 0},
    {Line, 31, "Modem", "&Modem", Peripherals, 614, 0},
    {Line, 39, "Network", "&Network", Peripherals, 620, 0},
    {Line, 40, "InternetEquipment", "Internet e&quipment", Peripherals, 621, 0},
    {Line, 32, "Monitor", "Moni&tor", Peripherals, 615, 0},
    {Line, 33, "Printer", "P&rinter", Peripherals, 616, 0},
    {Line, 34, "Scanner", "Sc&anner", Peripherals, 617, 0},
    {Lines, 36, "Comments", "", ComputerComments, 619, 0},
};

constexpr EntryPane kPanes[] = {
    {kClientBlocks, kClientRows, 501, 502, "C&lient"},
    {kComputerBlocks, kComputerRows, 601, 601, "&Computer"},
};

}  // namespace

const EntryPane& entryPane(int stageIndex) {
    return kPanes[stageIndex];
}
