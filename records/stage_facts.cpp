#include "records/stage_facts.h"

#include <QCheckBox>
#include <algorithm>

#include "platform/dao/recordset.h"
#include "records/entry_fields.h"
#include "records/main_fields.h"

namespace {

QString personName(const QString& surname, const QString& givenName, const QString& nickName) {
    const QString name = surname + QStringLiteral(", ") + givenName;
    return nickName.isEmpty() ? name : name + QStringLiteral(" - ") + nickName;
}

QString clientOfFields(const EntryFields& fields) {
    QString firm = fields.text(kFirmName).trimmed();
    if (fields.firm->isChecked() && !firm.isEmpty()) {
        return firm;
    }
    return personName(fields.text(kSurname), fields.text(kGivenName), fields.text(kNickName));
}

// A letter that is plainly none of the many blanks there are makes an end of it for nearly every firm.
bool isBlank(std::string_view text) {
    const auto isPlain = [](char letter) { return letter > ' ' && letter < '\x7F'; };
    return std::none_of(text.begin(), text.end(), isPlain) &&
           QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())).trimmed().isEmpty();
}

NameWriter clientsOfRows(const dao::Recordset& rows) {
    return [isFirm = rows.Fields("FirmAddress"), firm = rows.Fields("FirmName"),
            surname = rows.Fields("Surname"), givenName = rows.Fields("GivenName"),
            nickName = rows.Fields("NickName")](std::string& name) {
        const dao::Value& firmAddress = isFirm.Value();
        if (!firmAddress.isNull() && firmAddress.asBool() && !isBlank(firm.Text())) {
            name += firm.Text();
        } else {
            name.append(surname.Text()).append(", ");
            name.append(givenName.Text());
            if (const std::string_view nick = nickName.Text(); !nick.empty()) {
                name.append(" - ").append(nick);
            }
        }
    };
}

QString computerOfFields(const EntryFields& fields) {
    return fields.text(kMachineName);
}

NameWriter computersOfRows(const dao::Recordset& rows) {
    return [machine = rows.Fields("MachineName")](std::string& name) { name += machine.Text(); };
}

}  // namespace

// Few columns for the entries: a shop of fifty thousand clients must not read their comments to show their
// names.
const StageFacts& stageFacts(int stageIndex) {
    static const StageFacts all[kStageCount] = {
        {"Customers", "QDCustomers", "CustID", "CustID, Surname, GivenName, NickName, FirmName, FirmAddress",
         101, &entryPane(kClients), clientOfFields, clientsOfRows},
        {"Computers", "QDComputers", "MachineID", "MachineID, MachineName", 102, &entryPane(kComputers),
         computerOfFields, computersOfRows},
        {"Services", "QDServices", "ID", nullptr, 103, nullptr, nullptr, nullptr},
    };
    return all[stageIndex];
}
