#include "data/schema.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <fstream>
#include <sstream>

#include "data/catalogue.h"
#include "support/fixture.h"

namespace {

using data::Schema;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;
using testing::UnorderedElementsAre;

Schema read(const std::string& text) {
    std::istringstream stream(text);
    return data::readSchema(stream, "schema");
}

struct Refused {
    int line = 0;
    std::string message;
};

Refused refusal(const std::string& text) {
    try {
        read(text);
    } catch (const data::TextError& e) {
        return {e.line(), e.what()};
    }
    return {};
}

TEST(SchemaText, TellsTablesRelationsAndQueries) {
    const Schema schema = read(
        "# a comment\n"
        "table One\n"
        "    ID counter\n"
        "    Name text 30\n"
        "    Note memo\n"
        "\n"
        "relation One.ID -> Many.OneID cascade\n"
        "relation One.ID -> Many.Other\n"
        "table Many\n"
        "    OneID long\n"
        "    Other long\n"
        "query Both\n"
        "    SELECT One.Name\n"
        "    FROM One\n");
    ASSERT_THAT(schema.tables, SizeIs(2));
    EXPECT_EQ(schema.tables[0].Name(), "One");
    ASSERT_THAT(schema.tables[0].Fields(), SizeIs(3));
    EXPECT_TRUE(schema.tables[0].Fields()[0].counter);
    EXPECT_EQ(schema.tables[0].Fields()[1].Type, dao::dbText);
    EXPECT_EQ(schema.tables[0].Fields()[1].Size, 30);
    EXPECT_EQ(schema.tables[0].Fields()[2].Type, dao::dbMemo);
    ASSERT_THAT(schema.relations, SizeIs(2));
    EXPECT_TRUE(schema.relations[0].cascadeDelete);
    EXPECT_EQ(schema.relations[0].foreignTable, "Many");
    EXPECT_FALSE(schema.relations[1].cascadeDelete);
    ASSERT_THAT(schema.queries, SizeIs(1));
    EXPECT_EQ(schema.queries[0].second, "SELECT One.Name FROM One");
}

TEST(SchemaText, RefusesABadLineByItsNumber) {
    const struct {
        const char* text;
        int line;
        const char* reason;
    } cases[] = {
        {"tabel One\n", 1, "expected"},
        {"table One\n    ID counter\ntable one\n    ID counter\n", 3, "twice"},
        {"table One\n    Name words 3\n", 2, "types"},
        {"table One\n    Name text\n", 2, "length"},
        {"table One\n    Name text 0\n", 2, "length"},
        {"table One\n    Name text 256\n", 2, "length"},
        {"table One\n    Name text 12x\n", 2, "length"},
        {"table One\n    Count long 4\n", 2, "nothing more"},
        {"table One\n    ID counter\n    id long\n", 3, "twice"},
        {"table One\n    A counter\n    B counter\n", 3, "counter already"},
        {"# nothing\n    ID counter\n", 2, "outside"},
        {"table One\n\nquery Q\n    SELECT 1\n", 1, "no fields"},
        {"query Q\n", 1, "no statement"},
        {"query Q\n    SELECT 1\nquery q\n    SELECT 2\n", 3, "twice"},
        {"table One\n    ID counter\nrelation One.ID -> Two.ID\n", 3, "no table Two"},
        {"table One\n    ID counter\nrelation One.ID -> One.Two\n", 3, "no field Two"},
        {"table One\n    ID counter\nrelation One -> One.ID\n", 3, "TABLE.FIELD"},
        {"table One\n    ID counter\nrelation One.ID -> One.ID restrict\n", 3, "cascade"},
    };
    for (const auto& c : cases) {
        const Refused refused = refusal(c.text);
        EXPECT_EQ(refused.line, c.line) << c.text;
        EXPECT_THAT(refused.message, HasSubstr(c.reason)) << c.text;
        EXPECT_THAT(refused.message, HasSubstr("schema:" + std::to_string(c.line) + ":"));
    }
}

class DeliveredDatabase : public DeliveredFixture {
 protected:
    // "Name type" of each field, in the table's order.
    std::vector<std::string> fieldsOf(const std::string& table) {
        std::vector<std::string> fields;
        dao::Recordset rows = openDatabase().OpenRecordset(table);
        for (int i = 0; i < rows.FieldCount(); ++i) {
            static const char* const kNames[] = {"null",   "yesno",    "long", "single",
                                                 "double", "currency", "date", "text"};
            fields.push_back(rows.Fields(i).Name() + " " + kNames[static_cast<int>(rows.Fields(i).Type())]);
        }
        rows.Close();
        return fields;
    }
    int exec(const std::string& statement) {
        openDatabase().Execute(statement);
        return static_cast<int>(openDatabase().RecordsAffected());
    }
    int addProduct(int group, int manufacturer) {
        return addRow(
            "Oprema", "ID",
            {{"IDGrupe", group}, {"IDProizvodjaca", manufacturer}, {"Naziv", "Probni"}, {"Stanje", 1.0F}});
    }
};

TEST_F(DeliveredDatabase, HoldsTheTablesAndNotDocNumber) {
    std::vector<std::string> names;
    const dao::TableDefsCollection tables = openDatabase().TableDefs();
    for (int i = 0; i < tables.Count(); ++i) {
        names.push_back(tables[i].Name());
    }
    EXPECT_THAT(names, UnorderedElementsAre("Customers", "Computers", "Services", "ServiceTypes", "Grupe",
                                            "Proizvodjaci", "JM", "Oprema", "InvoiceData"));
}

TEST_F(DeliveredDatabase, TakesDocNumberFromTheProgram) {
    dao::TableDef table = openDatabase().CreateTableDef("DocNumber");
    table.Append(table.CreateField("PredracunBroj", dao::dbLong));
    table.Append(table.CreateField("RacunBroj", dao::dbLong));
    openDatabase().TableDefs().Append(table);
    EXPECT_EQ(countRows("DocNumber"), 0);
    addRow("DocNumber", "", {{"PredracunBroj", 0}, {"RacunBroj", 0}});
    closeDatabases();
    EXPECT_EQ(countRows("DocNumber"), 1);
}

TEST_F(DeliveredDatabase, HasEveryFieldOfTheChain) {
    EXPECT_THAT(
        fieldsOf("Customers"),
        ElementsAre("CustID long", "Surname text", "GivenName text", "NickName text", "BirthDate date",
                    "BirthPlace text", "PIDNo text", "IssueDate date", "ValidUntil date", "IssuePlace text",
                    "FirmName text", "FirmAddress yesno", "Street text", "City text", "State text",
                    "ZIP text", "Country text", "Phone text", "Cellular text", "FAX text", "EMail text",
                    "Web text", "ICQ text", "Comments text"));
    EXPECT_THAT(fieldsOf("Computers"),
                ElementsAre("MachineID long", "CustID long", "MachineName text", "Processor text",
                            "MotherBoard text", "CacheMem text", "RAMMem text", "HD text", "Floppy text",
                            "CD text", "CDWriter text", "VideoCard text", "SoundCard text",
                            "PowerSupply text", "Modem text", "Monitor text", "Printer text", "Scanner text",
                            "OS text", "Comments text", "Network text", "InternetEquipment text"));
    EXPECT_THAT(fieldsOf("Services"),
                ElementsAre("ID long", "MachineID long", "ServiceStarted date", "ServiceToBeFinished date",
                            "ServiceFinished date", "ServiceTypes text", "Comments text", "Price currency",
                            "Discount single", "GST single", "Paid currency"));
    EXPECT_THAT(fieldsOf("ServiceTypes"), ElementsAre("Service text"));
}

TEST_F(DeliveredDatabase, HasEveryFieldOfTheCatalogue) {
    EXPECT_THAT(fieldsOf("Grupe"), ElementsAre("ID long", "Grupa text"));
    EXPECT_THAT(fieldsOf("Proizvodjaci"), ElementsAre("ID long", "Proizvodjac text"));
    EXPECT_THAT(fieldsOf("JM"), ElementsAre("AID long", "Naziv text"));
    EXPECT_THAT(fieldsOf("Oprema"),
                ElementsAre("ID long", "IDGrupe long", "IDProizvodjaca long", "Naziv text", "Opis text",
                            "Napomena text", "JM text", "Stanje single", "Cena single"));
    EXPECT_THAT(fieldsOf("InvoiceData"),
                ElementsAre("ServiceID long", "OpremaID long", "Grupa text", "Proizvodjac text", "Naziv text",
                            "Opis text", "SN text", "JM text", "Stanje single", "Cena single"));
}

TEST_F(DeliveredDatabase, HoldsTextsOfTheLengthsPeopleEnter) {
    dao::Recordset products = openDatabase().OpenRecordset("Oprema");
    for (const char* field : {"Naziv", "Opis", "Napomena"}) {
        EXPECT_EQ(products.Fields(field).Size(), 255) << field;
    }
    dao::Recordset units = openDatabase().OpenRecordset("JM");
    EXPECT_GT(units.Fields("Naziv").Size(), 25);  // the box for a change has no limit of its own
    dao::Recordset services = openDatabase().OpenRecordset("Services");
    EXPECT_EQ(services.Fields("Comments").Size(), 0);
}

TEST_F(DeliveredDatabase, HasFiveRelationsThatCascade) {
    std::vector<std::string> relations;
    for (const dao::Relation& r : openDatabase().Relations()) {
        EXPECT_TRUE(r.cascadeDelete) << r.table;
        relations.push_back(r.table + "." + r.field + ">" + r.foreignTable + "." + r.foreignField);
    }
    EXPECT_THAT(relations, UnorderedElementsAre(
                               "Customers.CustID>Computers.CustID", "Computers.MachineID>Services.MachineID",
                               "Services.ID>InvoiceData.ServiceID", "Grupe.ID>Oprema.IDGrupe",
                               "Proizvodjaci.ID>Oprema.IDProizvodjaca"));
}

TEST_F(DeliveredDatabase, DeletingAClientTakesComputersServicesAndRequisitionsWithHim) {
    const int client = addClient();
    const int other = addClient("Drugi");
    const int first = addComputer(client, "A");
    const int second = addComputer(client, "B");
    const int kept = addService(addComputer(other, "C"));
    addService(first);
    addService(first);
    const int last = addService(second);
    addRow("InvoiceData", "", {{"ServiceID", last}, {"OpremaID", 1}, {"Naziv", "X"}});
    addRow("InvoiceData", "", {{"ServiceID", kept}, {"OpremaID", 1}, {"Naziv", "Y"}});

    dao::Recordset clients = openDatabase().OpenRecordset("Customers");
    clients.FindFirst("CustID=" + std::to_string(client));
    ASSERT_FALSE(clients.NoMatch());
    clients.Delete();
    clients.Close();

    EXPECT_EQ(countRows("Customers"), 1);
    EXPECT_EQ(countRows("Computers"), 1);
    EXPECT_EQ(countRows("Services"), 1);
    EXPECT_EQ(countRows("InvoiceData"), 1);
}

TEST_F(DeliveredDatabase, DeletingAServiceTakesItsRequisition) {
    const int service = addService(addComputer(addClient()));
    addRow("InvoiceData", "", {{"ServiceID", service}, {"OpremaID", 1}, {"Naziv", "X"}});
    exec("DELETE * FROM Services WHERE ID=" + std::to_string(service));
    EXPECT_EQ(countRows("InvoiceData"), 0);
}

TEST_F(DeliveredDatabase, DeletingAGroupOrManufacturerTakesItsProducts) {
    const int group = addRow("Grupe", "ID", {{"Grupa", "Proba"}});
    const int manufacturer = addRow("Proizvodjaci", "ID", {{"Proizvodjac", "Proba"}});
    const int before = countRows("Oprema");
    addProduct(group, manufacturer);
    exec("DELETE * FROM Grupe WHERE ID=" + std::to_string(group));
    EXPECT_EQ(countRows("Oprema"), before);
    addProduct(1, manufacturer);
    exec("DELETE * FROM Proizvodjaci WHERE ID=" + std::to_string(manufacturer));
    EXPECT_EQ(countRows("Oprema"), before);
}

TEST_F(DeliveredDatabase, ARequisitionedRowKeepsItsTextAfterItsProductIsGone) {
    const int product = addProduct(1, 1);
    const int service = addService(addComputer(addClient()));
    addRow("InvoiceData", "", {{"ServiceID", service}, {"OpremaID", product}, {"Naziv", "Probni"}});
    exec("DELETE * FROM Oprema WHERE ID=" + std::to_string(product));
    EXPECT_EQ(valueOf("InvoiceData", "OpremaID", product, "Naziv").asText(), "Probni");
}

TEST_F(DeliveredDatabase, AComputerNeedsItsClient) {
    EXPECT_THROW(addComputer(4711), dao::Error);
    EXPECT_EQ(countRows("Computers"), 0);
}

TEST_F(DeliveredDatabase, AServiceFinishedOnTheEmptyDateIsNotFinished) {
    const int machine = addComputer(addClient());
    addService(machine);
    addService(machine, {{"ServiceFinished", dao::Date{2.0}}});
    EXPECT_EQ(countRows("SELECT * FROM Services WHERE ServiceFinished<#1/1/1900#"), 1);
    EXPECT_EQ(countRows("SELECT * FROM Services WHERE ServiceFinished>=#1/1/1900#"), 1);
}

TEST_F(DeliveredDatabase, OpremaGrupeGivesThePriceListItsFields) {
    EXPECT_EQ(openDatabase().QueryDefs().Count(), 1);
    dao::Recordset rows = openDatabase().OpenRecordset(
        "SELECT OpremaGrupe.ID, OpremaGrupe.Grupa, OpremaGrupe.Naziv, OpremaGrupe.Opis, OpremaGrupe.Stanje, "
        "OpremaGrupe.Cena, OpremaGrupe.Napomena, OpremaGrupe.IDGrupe, OpremaGrupe.IDProizvodjaca FROM "
        "OpremaGrupe "
        "WHERE OpremaGrupe.Stanje>0 ORDER BY OpremaGrupe.Grupa",
        dao::dbOpenSnapshot);
    EXPECT_EQ(rows.RecordCount(), countRows("SELECT * FROM Oprema WHERE Stanje>0"));
    for (; !rows.EOF(); rows.MoveNext()) {
        ASSERT_EQ(valueOf("Grupe", "ID", rows["IDGrupe"].asLong(), "Grupa").asText(), rows["Grupa"].asText());
    }
    EXPECT_EQ(countRows("OpremaGrupe"), countRows("Oprema"));
}

TEST_F(DeliveredDatabase, ComesWithoutAnybodysRecords) {
    for (const char* table : {"Customers", "Computers", "Services", "InvoiceData"}) {
        EXPECT_EQ(countRows(table), 0) << table;
    }
}

class FileOfDeliveredDatabase : public DeliveredDatabase {};

TEST_F(FileOfDeliveredDatabase, OpensOnlyWithThePassword) {
    const std::string file = databaseFile().toStdString();
    for (const char* connect : {"", ";pwd=", ";pwd=tarvello"}) {
        try {
            dao::DBEngine::OpenDatabase(file, false, false, connect);
            FAIL() << connect;
        } catch (const dao::Error& e) {
            EXPECT_EQ(e.Number(), dao::errInvalidPassword) << connect;
        }
    }
    EXPECT_NO_THROW(
        dao::DBEngine::OpenDatabase(file, false, false, ";PWD=" + BuildDatabasePassword().toStdString()));
}

}  // namespace
