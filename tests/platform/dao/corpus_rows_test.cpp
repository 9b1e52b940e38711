// The statements of the shop's windows through the whole engine: parsed, written, run on an encrypted file,
// read back as dynaset and as snapshot, searched.
#include <gtest/gtest.h>

#include <charconv>
#include <fstream>
#include <string>
#include <vector>

#include "platform/dao/dao_shop.h"
#include "support/places.h"

namespace {

using daotest::errorOf;

std::string shortest(double number, int digits) {
    char buffer[64];
    const auto end =
        std::to_chars(buffer, buffer + sizeof buffer, number, std::chars_format::general, digits);
    const std::string text(buffer, end.ptr);
    return text == "-0" ? "0" : text;
}

std::string shown(const dao::Value& value) {
    // Digits that a sum of floating numbers can be trusted in; a Single holds fewer.
    constexpr int kSingle = 7;
    constexpr int kDouble = 12;
    constexpr int kDate = 16;
    switch (value.type()) {
        case dao::Type::Null:
            return "Null";
        case dao::Type::YesNo:
            return value.asBool() ? "True" : "False";
        case dao::Type::Long:
            return std::to_string(value.asLong());
        case dao::Type::Single:
            return shortest(static_cast<double>(value.asSingle()), kSingle);
        case dao::Type::Date:
            return "#" + shortest(value.asDate().days, kDate) + "#";
        case dao::Type::Text:
            return "'" + value.asText() + "'";
        default:
            return shortest(value.asDouble(), kDouble);
    }
}

std::string rowOf(const dao::Recordset& set) {
    std::string row = ">";
    for (int i = 0; i < set.FieldCount(); ++i) {
        row += (i == 0 ? " " : " | ") + shown(set.Fields(i).Value());
    }
    return row;
}

std::vector<std::string> rowsOf(dao::Recordset set) {
    std::vector<std::string> rows;
    for (; !set.EOF(); set.MoveNext()) {
        rows.push_back(rowOf(set));
    }
    return rows;
}

struct Entry {
    int line = 0;
    char kind = ' ';
    std::string text;
    std::vector<std::string> expected;
};

std::vector<Entry> readCorpus() {
    std::ifstream file(std::string(tests::kSourceFolder) + "/platform/dao/corpus_rows.txt");
    std::vector<Entry> entries;
    int number = 0;
    for (std::string line; std::getline(file, line);) {
        ++number;
        if (line.empty() || line[0] == '#') {
            continue;
        }
        const bool head =
            std::string("XQSWD").find(line[0]) != std::string::npos && (line.size() == 1 || line[1] == ' ');
        if (head) {
            entries.push_back({number, line[0], line.size() > 2 ? line.substr(2) : "", {}});
        } else if (!entries.empty()) {
            entries.back().expected.push_back(line);
        }
    }
    return entries;
}

class CorpusRows : public testing::Test {
 protected:
    void SetUp() override {
        using namespace dao;
        db = daotest::createEmptyShop(folder.file("Corpus.mdb"));
        const FieldDef id{"ID", dbLong, 0, true};
        table("Customers", {{"CustID", dbLong, 0, true},
                            {"Surname", dbText, 50},
                            {"GivenName", dbText, 50},
                            {"City", dbText, 50},
                            {"FirmAddress", dbBoolean}});
        table("Computers", {{"MachineID", dbLong, 0, true}, {"CustID", dbLong}, {"MachineName", dbText, 50}});
        table("Services", {id,
                           {"MachineID", dbLong},
                           {"ServiceStarted", dbDate},
                           {"ServiceToBeFinished", dbDate},
                           {"ServiceFinished", dbDate},
                           {"Price", dbCurrency},
                           {"Discount", dbSingle},
                           {"GST", dbSingle},
                           {"Paid", dbCurrency},
                           {"ServiceTypes", dbText, 255},
                           {"Comments", dbMemo}});
        table("Grupe", {id, {"Grupa", dbText, 50}});
        table("Proizvodjaci", {id, {"Proizvodjac", dbText, 50}});
        table("Oprema", {id,
                         {"IDGrupe", dbLong},
                         {"IDProizvodjaca", dbLong},
                         {"Naziv", dbText, 255},
                         {"Opis", dbText, 255},
                         {"Napomena", dbText, 255},
                         {"JM", dbText, 25},
                         {"Stanje", dbSingle},
                         {"Cena", dbSingle}});
        table("JM", {{"AID", dbLong, 0, true}, {"Naziv", dbText, 25}});
        table("InvoiceData", {{"ServiceID", dbLong},
                              {"OpremaID", dbLong},
                              {"Grupa", dbText, 50},
                              {"Proizvodjac", dbText, 50},
                              {"Naziv", dbText, 255},
                              {"Opis", dbText, 255},
                              {"SN", dbText, 255},
                              {"JM", dbText, 25},
                              {"Stanje", dbSingle},
                              {"Cena", dbSingle}});
        db.CreateRelation({"Customers", "CustID", "Computers", "CustID", true});
        db.CreateRelation({"Computers", "MachineID", "Services", "MachineID", true});
        db.CreateRelation({"Services", "ID", "InvoiceData", "ServiceID", true});
        db.CreateRelation({"Grupe", "ID", "Oprema", "IDGrupe", true});
        db.CreateRelation({"Proizvodjaci", "ID", "Oprema", "IDProizvodjaca", true});
    }
    void TearDown() override { db.Close(); }

    void table(const std::string& name, const std::vector<dao::FieldDef>& fields) {
        dao::TableDef definition = db.CreateTableDef(name);
        for (const dao::FieldDef& field : fields) {
            definition.Append(field);
        }
        db.TableDefs().Append(definition);
    }

    // What the line does, in the words of the file.
    std::vector<std::string> outcome(const Entry& entry, dao::RecordsetType type) {
        std::vector<std::string> lines;
        const int error = errorOf([&] {
            switch (entry.kind) {
                case 'X':
                    db.Execute(entry.text);
                    lines.push_back("= " + std::to_string(db.RecordsAffected()));
                    break;
                case 'Q':
                    storeQuery(entry.text);
                    break;
                case 'S':
                    selection = entry.text;
                    lines = rowsOf(db.OpenRecordset(entry.text, type));
                    break;
                default:
                    lines.push_back(placeOf(entry.text, type));
            }
        });
        return error == 0 ? lines : std::vector<std::string>{"E " + std::to_string(error)};
    }

    void storeQuery(const std::string& text) {
        const std::size_t sign = text.find('=');
        const std::string name = text.substr(0, sign);
        const bool known = errorOf([&] { (void)db.QueryDefs()[name].SQL(); }) == 0;
        if (known) {
            db.QueryDefs()[name].setSQL(text.substr(sign + 1));
        } else {
            db.CreateQueryDef(name, text.substr(sign + 1));
        }
    }

    std::string placeOf(const std::string& criterion, dao::RecordsetType type) {
        dao::Recordset set = db.OpenRecordset(selection, type);
        set.FindFirst(criterion);
        return set.NoMatch() ? "@ none" : "@ " + std::to_string(set.AbsolutePosition());
    }

    daotest::TempFolder folder;
    dao::Database db;
    std::string selection;
};

TEST_F(CorpusRows, EveryStatementGivesItsRows) {
    const std::vector<Entry> entries = readCorpus();
    ASSERT_GT(entries.size(), 100U);
    for (const Entry& entry : entries) {
        EXPECT_EQ(outcome(entry, dao::dbOpenDynaset), entry.expected)
            << "line " << entry.line << ": " << entry.text;
        if (entry.kind == 'S' || entry.kind == 'W') {
            EXPECT_EQ(outcome(entry, dao::dbOpenSnapshot), entry.expected)
                << "as a snapshot, line " << entry.line << ": " << entry.text;
        }
    }
}

// Which of the two texts stands for both is nobody's business, so the rows are only counted.
TEST_F(CorpusRows, TextsThatDifferInCaseAloneAreOneDistinctRow) {
    for (const char* city : {"Nis", "nis", "Beograd"}) {
        db.Execute(std::string("INSERT INTO Customers (City) VALUES ('") + city + "')");
    }
    for (const char* cities :
         {"SELECT DISTINCT City FROM Customers", "SELECT DISTINCT City & '' AS C FROM Customers",
          "SELECT City FROM Customers GROUP BY City"}) {
        EXPECT_EQ(rowsOf(db.OpenRecordset(cities, dao::dbOpenSnapshot)).size(), 2U) << cities;
    }
}

// What a quick filter with a hundred thousand hits leaves in a stored query, most of them deleted since.
TEST_F(CorpusRows, AHundredThousandNumbersNarrowAStoredQuery) {
    for (const char* name : {"Peric", "anic", "Babic"}) {
        db.Execute(std::string("INSERT INTO Customers (Surname) VALUES ('") + name + "')");
    }
    std::string text = "SELECT * FROM Customers WHERE CustID=100000";
    for (int i = 99999; i >= 2; --i) {
        text += " OR CustID=" + std::to_string(i);
    }
    db.CreateQueryDef("QDCustomers0", text + ";");
    const auto surnames = [&](const std::string& statement, dao::RecordsetType type) {
        std::string names;
        for (dao::Recordset set = db.OpenRecordset(statement, type); !set.EOF(); set.MoveNext()) {
            names += set["Surname"].asText() + " ";
        }
        return names;
    };
    for (const dao::RecordsetType type : {dao::dbOpenDynaset, dao::dbOpenSnapshot}) {
        EXPECT_EQ(surnames("SELECT * FROM QDCustomers0", type), "anic Babic ");
        EXPECT_EQ(surnames("SELECT * FROM QDCustomers0 ORDER BY Surname DESC", type), "Babic anic ");
        EXPECT_EQ(surnames("SELECT * FROM QDCustomers0 WHERE CustID=3", type), "Babic ");
        dao::Recordset set = db.OpenRecordset("SELECT * FROM QDCustomers0", type);
        set.FindFirst("Surname='BABIC'");
        EXPECT_FALSE(set.NoMatch());
        EXPECT_EQ(set["CustID"].asLong(), 3);
        set.FindFirst("Surname='Peric'");
        EXPECT_TRUE(set.NoMatch());
        set.FindFirst("CustID=1");
        EXPECT_TRUE(set.NoMatch());
    }
    db.Execute("DELETE * FROM QDCustomers0");
    EXPECT_EQ(surnames("SELECT * FROM Customers", dao::dbOpenDynaset), "Peric ");
}

}  // namespace
