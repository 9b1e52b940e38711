#include "records/stage_facts.h"

#include <QCheckBox>

#include "common/window_helpers.h"
#include "platform/dao/recordset.h"
#include "records/entry_fields.h"
#include "records/main_fields.h"

namespace {

QString personName(const QString& surname, const QString& givenName, const QString& nickName) {
    const QString name = surname + QStringLiteral(", ") + givenName;
    return nickName.isEmpty() ? name : name + QStringLiteral(" - ") + nickName;
}

QString clientOfFields(const EntryFields& fields) {
    const QString firm = fields.text(kFirmName).trimmed();
    if (fields.firm->isChecked() && !firm.isEmpty()) {
        return firm;
    }
    return personName(fields.text(kSurname), fields.text(kGivenName), fields.text(kNickName));
}

QString clientOfRow(const dao::Recordset& row) {
    const dao::Value& firmAddress = row["FirmAddress"];
    if (!firmAddress.isNull() && firmAddress.asBool()) {
        const QString firm = textOf(row["FirmName"]);
        if (!firm.trimmed().isEmpty()) {
            return firm;
        }
    }
    return personName(textOf(row["Surname"]), textOf(row["GivenName"]), textOf(row["NickName"]));
}

QString computerOfFields(const EntryFields& fields) {
    return fields.text(kMachineName);
}

QString computerOfRow(const dao::Recordset& row) {
    return textOf(row["MachineName"]);
}

}  // namespace

// Few columns for the entries: a shop of fifty thousand clients must not read their comments to show their
// names.
const StageFacts& stageFacts(int stageIndex) {
    static const StageFacts all[kStageCount] = {
        {"Customers", "QDCustomers", "CustID", "CustID, Surname, GivenName, NickName, FirmName, FirmAddress",
         101, &entryPane(kClients), clientOfFields, clientOfRow},
        {"Computers", "QDComputers", "MachineID", "MachineID, MachineName", 102, &entryPane(kComputers),
         computerOfFields, computerOfRow},
        {"Services", "QDServices", "ID", nullptr, 103, nullptr, nullptr, nullptr},
    };
    return all[stageIndex];
}
