#pragma once

#include <array>
#include <iterator>

#include "records/service_fields.h"

// The fields that the text report prints: each by its place among the names that are looked up.
namespace report_fields {

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
inline constexpr const char* kClientFields[] = {
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
inline constexpr const char* kComputerFields[] = {
    "CustID",      "MachineID", "MachineName", "Processor", "MotherBoard", "CacheMem",          "RAMMem",
    "HD",          "Floppy",    "CD",          "CDWriter",  "VideoCard",   "SoundCard",         "Modem",
    "PowerSupply", "Monitor",   "Printer",     "Scanner",   "Network",     "InternetEquipment", "OS",
    "Comments"};
static_assert(std::size(kComputerFields) == kComputerComments + 1);

// A service's fields stand at their names' places, behind them the computer that it was done on.
constexpr int placeOf(ServiceColumn column) {
    return static_cast<int>(column);
}
inline constexpr int kMachine = placeOf(ServiceColumn::Count);
inline constexpr auto kServiceFields = [] {
    std::array<const char*, service_fields::kCount + 1> names{};
    for (const ServiceField& field : serviceFields()) {
        names[static_cast<std::size_t>(field.name)] = field.list.field;
    }
    names.back() = "MachineID";
    return names;
}();

}  // namespace report_fields
