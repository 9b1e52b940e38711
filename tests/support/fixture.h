#pragma once

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QLocale>
#include <QTemporaryDir>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "common/modMain.h"
#include "common/settings.h"
#include "data/session.h"
#include "platform/controls/boxes.h"
#include "platform/dao/dao.h"
#include "platform/system/files.h"
#include "platform/system/settings_store.h"
#include "support/delivered_shop.h"
#include "support/places.h"

// Texts as people read them, where a test tells what it found.
inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

// What a test may want different about a record; everything else keeps a plain default.
using FieldValues = std::vector<std::pair<std::string, dao::Value>>;

// The date value of a date left empty (31 December 1899).
inline constexpr dao::Date kEmptyDate{1.0};

// A shop's first morning: fresh settings, a fresh copy of the delivered database in a program folder of its
// own (or on the server, and a signpost there), the program's variables as Main leaves them without any
// setting, en_US, and every box answered by `boxes`.
class DeliveredFixture : public ::testing::Test {
 protected:
    void SetUp() override {
        ASSERT_TRUE(folder_.isValid());
        boxes.answers.clear();
        platform::setProgramFolder(folder_.path());
        platform::setSettingsFolder(folder_.path() + "/settings");
        QDir().mkpath(folder_.path() + "/settings");
        oldLocale_ = QLocale();
        QLocale::setDefault(QLocale("en_US"));
        KursKupovni = 80.0F;
        CeneDinarske = true;
        AskBeforeDelete = true;
        MakeProperCase = true;
        ShowTipsAtStartup = true;
        ShowTipsAtRandom = false;
        shop_.deliver("Tarvello.mdb", databaseFile().toStdString());
        deliverHelp();
    }

    void TearDown() override {
        for (const platform::Box& box : boxes.asked) {
            EXPECT_FALSE(box.title.isEmpty()) << "a box says whose it is: " << box.text.toStdString();
        }
        closeDatabases();
        QLocale::setDefault(oldLocale_);
        // Whoever runs next without this fixture must not write into a folder that is about to vanish.
        static QTemporaryDir nobodysFolder;
        platform::setProgramFolder(nobodysFolder.path());
        platform::setSettingsFolder(nobodysFolder.path());
    }

    static QString deliveredFile(const QString& name) {
        return QLatin1String(tests::kDeliveredFolder) + QStringLiteral("/") + name;
    }

    // A path in the program folder.
    QString path(const QString& name) const { return folder_.path() + "/" + name; }
    // The database that the session's routines and the windows will use.
    QString databaseFile() const { return path("Tarvello.mdb"); }

    // The demonstration year in the place of the empty shop. Before anything is opened.
    void useDemo() { shop_.deliver("Demo.mdb", databaseFile().toStdString()); }

    // A connection that the fixture keeps and closes; the same one each time.
    dao::Database& openDatabase() {
        if (!database_) {
            database_ = dao::DBEngine::OpenDatabase(databaseFile().toStdString(), false, false,
                                                    connectText().toStdString());
        }
        return database_;
    }
    void closeDatabases() { database_.Close(); }

    // CustID. `fields` may name any field of Customers, also those set here.
    int addClient(const QString& surname = "Peric", const QString& givenName = "Pera",
                  const FieldValues& fields = {}) {
        FieldValues row{{"Surname", surname.toStdString()},
                        {"GivenName", givenName.toStdString()},
                        {"Street", "Lipova 1"},
                        {"City", "Beograd"},
                        {"ZIP", "11000"},
                        {"Country", "Srbija"},
                        {"BirthDate", kEmptyDate},
                        {"IssueDate", kEmptyDate},
                        {"ValidUntil", kEmptyDate}};
        row.insert(row.end(), fields.begin(), fields.end());
        return addRow("Customers", "CustID", row);
    }
    // MachineID.
    int addComputer(int clientId, const QString& name = "PC", const FieldValues& fields = {}) {
        FieldValues row{{"CustID", clientId}, {"MachineName", name.toStdString()}};
        row.insert(row.end(), fields.begin(), fields.end());
        return addRow("Computers", "MachineID", row);
    }
    // ID. Without `fields`: begun on 3 March 2026, not finished, no due date, 100 euro, nothing paid.
    int addService(int machineId, const FieldValues& fields = {}) {
        FieldValues row{{"MachineID", machineId},
                        {"ServiceStarted", dao::Date{46084.0}},
                        {"ServiceToBeFinished", kEmptyDate},
                        {"ServiceFinished", kEmptyDate},
                        {"ServiceTypes", "1"},
                        {"Comments", ""},
                        {"Price", dao::Currency::fromScaled(1000000)},
                        {"Discount", 0.0F},
                        {"GST", 0.0F},
                        {"Paid", dao::Currency()}};
        row.insert(row.end(), fields.begin(), fields.end());
        return addRow("Services", "ID", row);
    }
    // Any table; the number that the engine gave to `key`, or 0 where `key` is empty. A later value of a
    // field replaces an earlier one.
    int addRow(const std::string& table, const std::string& key, const FieldValues& fields) {
        dao::Recordset rows = openDatabase().OpenRecordset(table);
        rows.AddNew();
        for (const auto& [name, value] : fields) {
            rows.Fields(name) = value;
        }
        const int number = key.empty() ? 0 : rows.Fields(key).Value().asLong();
        rows.Update();
        rows.Close();
        return number;
    }
    // Rows of a table, query or SELECT.
    int countRows(const std::string& source) {
        dao::Recordset rows = openDatabase().OpenRecordset(source, dao::dbOpenSnapshot);
        const auto count = static_cast<int>(rows.RecordCount());
        rows.Close();
        return count;
    }
    // One field of the row whose key has that number, read afresh; Null where there is no such row.
    dao::Value valueOf(const std::string& table, const std::string& key, int number,
                       const std::string& field) {
        dao::Recordset rows = openDatabase().OpenRecordset(
            "SELECT * FROM " + table + " WHERE " + key + "=" + std::to_string(number), dao::dbOpenSnapshot);
        dao::Value value = rows.EOF() ? dao::Value() : rows[field];
        rows.Close();
        return value;
    }

    platform::BoxScript boxes;

 private:
    void deliverHelp() {
        const QString help = deliveredFile("Tarvello.hlp");
        if (!QFile::exists(help)) {
            return;
        }
        ASSERT_TRUE(QFile::copy(help, path("Tarvello.hlp")));
        QFile::setPermissions(path("Tarvello.hlp"), QFile::ReadOwner | QFile::WriteOwner);
    }

    tests::DeliveredShop shop_;
    QTemporaryDir folder_;
    QLocale oldLocale_;
    dao::Database database_;
};
