#include "platform/dao/dao_shop.h"

using namespace dao;
using daotest::errorOf;

namespace {

class DatabaseTest : public daotest::ShopTest {
 protected:
    std::int64_t count(const std::string& source) { return db.OpenRecordset(source).RecordCount(); }
};

TEST_F(DatabaseTest, ATableThatOthersReferToGoesWithWhatBelongsToIt) {
    fill(2);
    ASSERT_EQ(db.OpenRecordset("Oprema").RecordCount(), 2);
    db.TableDefs().Delete("Grupe");
    EXPECT_EQ(errorOf([&] { db.OpenRecordset("Grupe"); }), errUnknownObject);
    EXPECT_EQ(numbers(db.OpenRecordset("Oprema"), "ID"), std::vector<int>());
    EXPECT_EQ(db.OpenRecordset("Services").RecordCount(), 2);
}

TEST_F(DatabaseTest, ExecuteTellsHowManyRowsItChanged) {
    fill(5);
    db.Execute("UPDATE Customers SET City='Niš' WHERE CustID>2");
    EXPECT_EQ(db.RecordsAffected(), 3);
    db.Execute("DELETE * FROM Customers WHERE CustID=1", dbFailOnError);
    EXPECT_EQ(db.RecordsAffected(), 1);
    EXPECT_EQ(count("Services"), 4);
    db.Execute("DELETE * FROM Customers WHERE CustID=1");
    EXPECT_EQ(db.RecordsAffected(), 0);
    db.Execute("INSERT INTO Grupe (Grupa) VALUES ('Tastature')");
    EXPECT_EQ(db.RecordsAffected(), 1);
}

TEST_F(DatabaseTest, AFailingStatementChangesNothing) {
    fill(5);
    const std::string city = db.OpenRecordset("Customers")["City"].asText();
    for (const std::string& text : {std::string("Ni\xB9"), std::string("a\0b", 3)}) {
        EXPECT_EQ(errorOf([&] { db.Execute("UPDATE Customers SET City='" + text + "'"); }), errTextNotSound);
    }
    EXPECT_EQ(db.OpenRecordset("Customers")["City"].asText(), city);
    EXPECT_EQ(errorOf([&] { db.Execute("UPDATE Computers SET CustID=CustID+1"); }), errRelatedRecordRequired);
    EXPECT_EQ(numbers(db.OpenRecordset("SELECT * FROM Computers ORDER BY MachineID"), "CustID"),
              (std::vector{1, 2, 3, 4, 5}));
    EXPECT_EQ(errorOf([&] { db.Execute("UPDATE Customers SET Nobody=1"); }), errTooFewParameters);
    EXPECT_EQ(errorOf([&] { db.Execute("DELETE * FROM Nowhere"); }), errUnknownObject);
    EXPECT_EQ(errorOf([&] { db.Execute("DROP TABLE Customers"); }), errSyntax);
    EXPECT_EQ(errorOf([&] { db.Execute("UPDATE Customers SET"); }), errSyntax);
    EXPECT_EQ(errorOf([&] { db.Execute("SELECT * FROM Customers"); }), errInvalidOperation);
    EXPECT_EQ(errorOf([&] { db.Execute(""); }), errSyntax);
    EXPECT_EQ(count("Customers"), 5);
}

TEST_F(DatabaseTest, ASyntaxErrorTellsWhere) {
    try {
        db.OpenRecordset("SELECT * FROM Customers WHERE CustID==1");
        FAIL();
    } catch (const Error& error) {
        EXPECT_EQ(error.Number(), errSyntax);
        EXPECT_NE(error.Description().find("character 38"), std::string::npos) << error.Description();
    }
}

TEST_F(DatabaseTest, AnUnknownNameIsNamed) {
    EXPECT_EQ(errorOf([&] { db.OpenRecordset("Nowhere"); }), errUnknownObject);
    EXPECT_EQ(errorOf([&] { db.OpenRecordset("SELECT * FROM Nowhere"); }), errUnknownObject);
    EXPECT_EQ(errorOf([&] { db.OpenRecordset("SELECT Nobody FROM Customers"); }), errTooFewParameters);
    EXPECT_NE(DBEngine::Errors().front().Description.find("Nobody"), std::string::npos);
    EXPECT_NE(DBEngine::Errors().front().Description.find("Too few parameters. Expected 1."),
              std::string::npos);
    EXPECT_EQ(errorOf([&] { db.OpenRecordset(""); }), errSyntax);
    EXPECT_EQ(errorOf([&] { db.OpenRecordset("DELETE * FROM Customers"); }), errInvalidOperation);
    EXPECT_EQ(count("[customers]"), 0);
}

TEST_F(DatabaseTest, StoredQueriesAreKeptInOrderOfName) {
    db.CreateQueryDef("qdb", "SELECT * FROM Customers");
    db.CreateQueryDef("QDA", "SELECT * FROM Computers");
    ASSERT_EQ(db.QueryDefs().Count(), 3);
    EXPECT_EQ(db.QueryDefs()[0].Name(), "OpremaGrupe");
    EXPECT_EQ(db.QueryDefs()[1].Name(), "QDA");
    EXPECT_EQ(db.QueryDefs()[2].Name(), "qdb");
    EXPECT_EQ(db.QueryDefs()["QDB"].SQL(), "SELECT * FROM Customers");
    EXPECT_EQ(errorOf([&] { db.QueryDefs()[3]; }), errItemNotFound);
    EXPECT_EQ(errorOf([&] { db.QueryDefs()[-1]; }), errItemNotFound);
    EXPECT_EQ(errorOf([&] { db.QueryDefs()["Nowhere"]; }), errItemNotFound);
    QueryDef query = db.QueryDefs()["qdb"];
    db.QueryDefs().Delete("QDB");
    EXPECT_EQ(errorOf([&] { query.SQL(); }), errItemNotFound);
    EXPECT_EQ(errorOf([&] { query.setSQL("SELECT * FROM Customers"); }), errItemNotFound);
    EXPECT_EQ(errorOf([&] { db.QueryDefs().Delete("qdb"); }), errItemNotFound);
    EXPECT_EQ(db.QueryDefs().Count(), 2);
}

TEST_F(DatabaseTest, AStoredQueryThatDoesNotParseKeepsItsOldText) {
    QueryDef query = db.CreateQueryDef("Q", "SELECT * FROM Customers;");
    EXPECT_EQ(errorOf([&] { query.setSQL("SELECT * FORM Customers"); }), errSyntax);
    EXPECT_EQ(query.SQL(), "SELECT * FROM Customers;");
    EXPECT_EQ(errorOf([&] { db.CreateQueryDef("Q", "SELECT * FROM Computers"); }), errObjectExists);
    EXPECT_EQ(errorOf([&] { db.CreateQueryDef("Customers", "SELECT * FROM Computers"); }), errObjectExists);
    EXPECT_EQ(errorOf([&] { db.CreateQueryDef("Q2", "SELECT"); }), errSyntax);
    EXPECT_EQ(errorOf([&] { db.CreateQueryDef("", "SELECT * FROM Customers"); }), errInvalidOperation);
    EXPECT_EQ(db.QueryDefs().Count(), 2);
}

TEST_F(DatabaseTest, NamesInAStoredQueryAreLookedUpWhenItRuns) {
    db.CreateQueryDef("Q", "SELECT * FROM DocNumber");
    EXPECT_EQ(errorOf([&] { db.OpenRecordset("Q"); }), errUnknownObject);
    TableDef table = db.CreateTableDef("DocNumber");
    table.Append(table.CreateField("RacunBroj", dbLong));
    db.TableDefs().Append(table);
    EXPECT_EQ(count("Q"), 0);
    db.TableDefs().Delete("docnumber");
    EXPECT_EQ(errorOf([&] { db.OpenRecordset("Q"); }), errUnknownObject);
}

TEST_F(DatabaseTest, QueriesStandOnQueries) {
    fill(6);
    db.CreateQueryDef("Odd", "SELECT * FROM Customers WHERE CustID<6");
    db.CreateQueryDef("Top", "SELECT * FROM Odd WHERE CustID>2");
    Recordset set = db.OpenRecordset("Top");
    EXPECT_EQ(numbers(set, "CustID"), (std::vector{3, 4, 5}));
    EXPECT_TRUE(set.Updatable());
    set.MoveFirst();
    set.Edit();
    set.Fields("City") = Value("Subotica");
    set.Update();
    db.QueryDefs()["Odd"].setSQL("SELECT * FROM Customers WHERE CustID<4");
    EXPECT_EQ(numbers(db.OpenRecordset("Top"), "CustID"), (std::vector{3}));
    EXPECT_EQ(db.OpenRecordset("Top")["City"].asText(), "Subotica");
    db.CreateQueryDef("Loop", "SELECT * FROM Loop2");
    db.CreateQueryDef("Loop2", "SELECT * FROM Loop");
    EXPECT_NE(errorOf([&] { db.OpenRecordset("Loop"); }), 0);
}

TEST_F(DatabaseTest, AHundredThousandOrTermsWork) {
    fill(300);
    std::string text = "SELECT * FROM Services WHERE ";
    for (int i = 0; i < 100000; ++i) {
        text += "ID=" + std::to_string(i * 3 + 3) + " OR ";
    }
    text.resize(text.size() - 4);
    QueryDef query = db.CreateQueryDef("QDServices0", text + ';');
    EXPECT_EQ(query.SQL(), text + ';');
    Recordset set = db.OpenRecordset("SELECT * FROM QDServices0");
    EXPECT_EQ(set.RecordCount(), 100);
    set.MoveLast();
    EXPECT_EQ(set["ID"].asLong(), 300);
    set.FindFirst("ID=150");
    EXPECT_FALSE(set.NoMatch());
    set.FindFirst("ID=151");
    EXPECT_TRUE(set.NoMatch());
    Recordset narrowed = db.OpenRecordset("Select * FROM QDServices0 Where MachineID=30 ORDER BY Price DESC");
    EXPECT_EQ(numbers(narrowed, "ID"), (std::vector{30}));
    query.setSQL("SELECT * FROM Services");
    EXPECT_EQ(count("QDServices0"), 300);
}

TEST_F(DatabaseTest, TablesCanBeMadeAndDropped) {
    const int before = db.TableDefs().Count();
    TableDef table = db.CreateTableDef("DocNumber");
    EXPECT_EQ(errorOf([&] { db.TableDefs().Append(table); }), errInvalidOperation);
    table.Append(table.CreateField("PredracunBroj", dbLong));
    table.Append(table.CreateField("RacunBroj", dbLong));
    db.TableDefs().Append(table);
    EXPECT_EQ(errorOf([&] { db.TableDefs().Append(table); }), errObjectExists);
    ASSERT_EQ(db.TableDefs().Count(), before + 1);
    EXPECT_EQ(db.TableDefs()["docnumber"].Fields().size(), 2U);
    EXPECT_EQ(db.TableDefs()["DocNumber"].Fields()[1].Name, "RacunBroj");
    bool found = false;
    for (int i = 0; i < db.TableDefs().Count(); ++i) {
        found = found || db.TableDefs()[i].Name() == "DocNumber";
        EXPECT_NE(db.TableDefs()[i].Name().substr(0, 4), "dao_");
        EXPECT_NE(db.TableDefs()[i].Name().substr(0, 7), "sqlite_");
    }
    EXPECT_TRUE(found);
    Recordset set = db.OpenRecordset("DocNumber");
    set.AddNew();
    set.Fields("PredracunBroj") = Value(0);
    set.Fields("RacunBroj") = Value(0);
    set.Update();
    set.setBookmark(set.LastModified());
    EXPECT_EQ(set["RacunBroj"].asLong(), 0);
    set.Close();
    db.TableDefs().Delete("DocNumber");
    EXPECT_EQ(errorOf([&] { db.TableDefs()["DocNumber"]; }), errItemNotFound);
    EXPECT_EQ(errorOf([&] { db.TableDefs().Delete("DocNumber"); }), errItemNotFound);
    EXPECT_EQ(errorOf([&] { db.TableDefs()[before]; }), errItemNotFound);
}

TEST_F(DatabaseTest, BadTableDefinitionsAreRefused) {
    TableDef twice("Twice");
    twice.Append({"A", dbLong});
    twice.Append({"a", dbText});
    EXPECT_EQ(errorOf([&] { db.TableDefs().Append(twice); }), errDuplicateField);
    TableDef reserved("dao_queries");
    reserved.Append({"A", dbLong});
    EXPECT_EQ(errorOf([&] { db.TableDefs().Append(reserved); }), errInvalidOperation);
    TableDef query("OpremaGrupe");
    query.Append({"A", dbLong});
    EXPECT_EQ(errorOf([&] { db.TableDefs().Append(query); }), errObjectExists);
    TableDef counter("TextCounter");
    counter.Append({"A", dbText, 10, true});
    EXPECT_EQ(errorOf([&] { db.TableDefs().Append(counter); }), errInvalidOperation);
    EXPECT_EQ(count("OpremaGrupe"), 0);
}

TEST_F(DatabaseTest, TheFilesTablesTellTheirFields) {
    const TableDef table = db.TableDefs()["Services"];
    ASSERT_EQ(table.Fields().size(), 7U);
    EXPECT_TRUE(table.Fields()[0].counter);
    EXPECT_EQ(table.Fields()[0].Type, dbLong);
    EXPECT_EQ(table.Fields()[2].Type, dbDate);
    EXPECT_EQ(table.Fields()[3].Type, dbMemo);
    EXPECT_EQ(table.Fields()[4].Type, dbCurrency);
    EXPECT_EQ(table.Fields()[5].Type, dbSingle);
    const TableDef customers = db.TableDefs()["Customers"];
    EXPECT_EQ(customers.Fields()[1].Size, 20);
    EXPECT_EQ(customers.Fields()[3].Type, dbBoolean);
}

TEST_F(DatabaseTest, RelationsAreKeptByTheFile) {
    const std::vector<Relation> relations = db.Relations();
    ASSERT_EQ(relations.size(), 4U);
    for (const Relation& relation : relations) {
        EXPECT_TRUE(relation.cascadeDelete);
    }
    fill(1);
    EXPECT_EQ(errorOf([&] { db.CreateRelation({"Oprema", "ID", "InvoiceData", "OpremaID", false}); }), 0);
    EXPECT_EQ(db.Relations().size(), 5U);
    EXPECT_EQ(errorOf([&] {
                  db.CreateRelation({"Grupe", "ID", "Customers", "CustID", false});
              }),
              errInvalidOperation);
    EXPECT_EQ(errorOf([&] {
                  db.CreateRelation({"Nowhere", "ID", "InvoiceData", "OpremaID", false});
              }),
              errItemNotFound);
    EXPECT_EQ(errorOf([&] {
                  db.CreateRelation({"Oprema", "Nobody", "InvoiceData", "OpremaID", false});
              }),
              errItemNotFound);
    db.Execute("INSERT INTO InvoiceData (ServiceID, OpremaID, Naziv) VALUES (1, 1, 'Miš')");
    EXPECT_EQ(errorOf([&] { db.Execute("DELETE * FROM Oprema WHERE ID=1"); }), errRelatedRecordExists);
    EXPECT_EQ(count("Oprema"), 1);
    db.Execute("DELETE * FROM Services WHERE ID=1");
    EXPECT_EQ(count("InvoiceData"), 0);
}

TEST_F(DatabaseTest, ARequisitionedRowKeepsItsTextAfterItsProductIsGone) {
    fill(2);
    db.Execute("INSERT INTO InvoiceData (ServiceID, OpremaID, Naziv, Stanje) VALUES (1, 2, 'Proizvod 2', 3)");
    db.Execute("DELETE * FROM Grupe WHERE ID=1");  // product 2 goes with its group
    EXPECT_EQ(numbers(db.OpenRecordset("Oprema"), "ID"), (std::vector{1}));
    EXPECT_EQ(db.OpenRecordset("InvoiceData")["Naziv"].asText(), "Proizvod 2");
}

TEST_F(DatabaseTest, AUniqueIndexRefusesASecond) {
    fill(2);
    db.CreateIndex("Grupe", "Grupa", true);
    Recordset set = db.OpenRecordset("Grupe");
    set.AddNew();
    set.Fields("Grupa") = Value("MONITORI");
    EXPECT_EQ(errorOf([&] { set.Update(); }), errDuplicateKey);
    set.Fields("Grupa") = Value("Tastature");
    set.Update();
    EXPECT_EQ(set.RecordCount(), 3);
    EXPECT_EQ(errorOf([&] { db.CreateIndex("Customers", "City", true); }), errDuplicateKey);
    EXPECT_EQ(errorOf([&] { db.CreateIndex("Customers", "Nobody"); }), errItemNotFound);
}

TEST_F(DatabaseTest, TransactionsGroupSeveralWrites) {
    fill(3);
    Recordset set = db.OpenRecordset("Customers");
    DBEngine::BeginTrans();
    set.Edit();
    set.Fields("City") = Value("Niš");
    set.Update();
    db.Execute("DELETE * FROM Customers WHERE CustID=3");
    EXPECT_EQ(count("Customers"), 2);
    DBEngine::Rollback();
    EXPECT_EQ(count("Customers"), 3);
    EXPECT_EQ(set["City"].asText(), "Beograd");
    DBEngine::BeginTrans();
    db.Execute("UPDATE Customers SET City='Niš'");
    DBEngine::BeginTrans();
    db.Execute("DELETE * FROM Customers");
    DBEngine::Rollback();
    EXPECT_EQ(count("Customers"), 3);
    DBEngine::CommitTrans();
    EXPECT_EQ(set["City"].asText(), "Niš");
    EXPECT_EQ(errorOf([] { DBEngine::CommitTrans(); }), errTransactionWithoutBegin);
    EXPECT_EQ(errorOf([] { DBEngine::Rollback(); }), errTransactionWithoutBegin);
}

TEST_F(DatabaseTest, AFailureInATransactionLeavesItsOtherWrites) {
    fill(3);
    DBEngine::BeginTrans();
    db.Execute("UPDATE Customers SET City='Niš' WHERE CustID=1");
    EXPECT_EQ(errorOf([&] { db.Execute("UPDATE Computers SET CustID=99"); }), errRelatedRecordRequired);
    DBEngine::CommitTrans();
    EXPECT_EQ(db.OpenRecordset("Customers")["City"].asText(), "Niš");
    EXPECT_EQ(db.OpenRecordset("Computers")["CustID"].asLong(), 1);
}

TEST_F(DatabaseTest, AnEditMayBeginBeforeATransactionAndEndAfterIt) {
    fill(2);
    Recordset set = db.OpenRecordset("Customers");
    set.Edit();
    set.Fields("City") = Value("Vršac");
    DBEngine::BeginTrans();
    db.Execute("UPDATE Customers SET Surname='Drugi' WHERE CustID=2");
    DBEngine::CommitTrans();
    set.Update();
    EXPECT_EQ(set["City"].asText(), "Vršac");
    set.Edit();
    set.Fields("City") = Value("Kikinda");
    DBEngine::BeginTrans();
    db.Execute("UPDATE Customers SET City='Bor' WHERE CustID=1");
    DBEngine::CommitTrans();
    EXPECT_EQ(errorOf([&] { set.Update(); }), errDataChanged);
    set.CancelUpdate();
    EXPECT_EQ(set["City"].asText(), "Bor");
}

TEST_F(DatabaseTest, AFileClosedInATransactionIsWrittenAtItsEnd) {
    fill(2);
    Database second = daotest::openShop(path);
    DBEngine::BeginTrans();
    second.Execute("UPDATE Customers SET City='Zemun'");
    second.Close();
    db.Close();
    DBEngine::CommitTrans();
    db = daotest::openShop(path);
    EXPECT_EQ(db.OpenRecordset("Customers")["City"].asText(), "Zemun");
}

TEST_F(DatabaseTest, AFileOpenedInATransactionTakesPart) {
    fill(2);
    db.Close();
    DBEngine::BeginTrans();
    db = daotest::openShop(path);
    db.Execute("DELETE * FROM Customers");
    DBEngine::Rollback();
    EXPECT_EQ(count("Customers"), 2);
}

TEST_F(DatabaseTest, TextComparesWithoutRegardToCaseAndSortsByTheAlphabet) {
    Recordset set = db.OpenRecordset("Customers");
    for (const char* name : {"Žarko", "Zoran", "ćosić", "Čolić", "Cvetić", "đurić", "Dodić", "Ema", "šarić",
                             "Sava", "Łukasz", "Mika", "Ødegaard", "Lazar"}) {
        set.AddNew();
        set.Fields("Surname") = Value(name);
        set.Update();
    }
    Recordset sorted = db.OpenRecordset("SELECT Surname FROM Customers ORDER BY Surname");
    std::string order;
    for (; !sorted.EOF(); sorted.MoveNext()) {
        order += sorted["Surname"].asText() + ' ';
    }
    EXPECT_EQ(order, "Cvetić Čolić ćosić Dodić đurić Ema Lazar Łukasz Mika Ødegaard Sava šarić Zoran Žarko ");
    set.FindFirst("Surname='ŠARIĆ'");
    EXPECT_FALSE(set.NoMatch());
    set.FindFirst("Surname='SARIC'");
    EXPECT_TRUE(set.NoMatch());
}

TEST_F(DatabaseTest, DateDifferencesCountTheBordersCrossed) {
    fill(1);
    const auto difference = [&](const std::string& interval, const std::string& from, const std::string& to) {
        return db
            .OpenRecordset(
                "SELECT DateDiff('" + interval + "', #" + from + "#, #" + to + "#) AS D FROM Customers",
                dbOpenSnapshot)["D"]
            .asLong();
    };
    EXPECT_EQ(difference("d", "1/31/2005", "2/1/2005"), 1);
    EXPECT_EQ(difference("d", "2/1/2005", "1/31/2005"), -1);
    EXPECT_EQ(difference("yyyy", "12/31/2004", "1/1/2005"), 1);
    EXPECT_EQ(difference("m", "1/31/2005", "2/1/2005"), 1);
    EXPECT_EQ(difference("ww", "11/19/2005", "11/20/2005"), 1);  // Saturday, Sunday
    EXPECT_EQ(difference("ww", "11/20/2005", "11/26/2005"), 0);
    EXPECT_EQ(difference("w", "11/19/2005", "11/26/2005"), 1);
    EXPECT_EQ(difference("h", "1/1/2005", "1/2/2005"), 24);
    EXPECT_EQ(difference("q", "3/31/2005", "4/1/2005"), 1);
    EXPECT_NE(errorOf([&] { difference("nothing", "1/1/2005", "1/2/2005"); }), 0);
}

TEST_F(DatabaseTest, AJoinCanBeChangedOnBothSides) {
    fill(4);
    Recordset set = db.OpenRecordset("SELECT * FROM OpremaGrupe ORDER BY ID");
    ASSERT_EQ(set.RecordCount(), 4);
    EXPECT_TRUE(set.Updatable());
    set.FindFirst("ID=3");
    ASSERT_FALSE(set.NoMatch());
    EXPECT_EQ(set["Grupa"].asText(), "Štampači");
    set.Edit();
    set.Fields("Stanje") = Value(set["Stanje"].asSingle() - 1);
    set.Update();
    EXPECT_EQ(set["Stanje"].asSingle(), 99);
    EXPECT_EQ(set.LastModified(), set.Bookmark());
    set.Edit();
    set.Fields("Grupa") = Value("Pisači");
    set.Update();
    set.FindFirst("ID=1");
    EXPECT_EQ(set["Grupa"].asText(), "Pisači");
    set.Edit();
    set.Fields("IDGrupe") = Value(1);
    set.Update();
    EXPECT_EQ(set["ID"].asLong(), 1);
    EXPECT_EQ(set["Grupa"].asText(), "Monitori");
    set.Delete();
    EXPECT_EQ(count("Oprema"), 3);
    EXPECT_EQ(count("Grupe"), 2);
    set.AddNew();
    EXPECT_EQ(set["ID"].asLong(), 5);
    set.Fields("Naziv") = Value("Novi");
    set.Fields("IDGrupe") = Value(2);
    EXPECT_EQ(errorOf([&] { set.Fields("Grupa") = Value("x"); }), errFieldNotUpdatable);
    set.Update();
    set.setBookmark(set.LastModified());
    EXPECT_EQ(set["Naziv"].asText(), "Novi");
    EXPECT_EQ(set["Grupa"].asText(), "Pisači");
    EXPECT_EQ(set.RecordCount(), 4);
}

TEST_F(DatabaseTest, AnOuterSideWithoutARowIsNull) {
    fill(2);
    db.Execute("INSERT INTO Oprema (Naziv) VALUES ('Bez grupe')");
    Recordset set = db.OpenRecordset(
        "SELECT Oprema.ID, Grupe.Grupa, Oprema.Naziv FROM Oprema LEFT JOIN Grupe ON Oprema.IDGrupe = "
        "Grupe.ID ORDER BY "
        "Oprema.ID");
    set.MoveLast();
    EXPECT_TRUE(set["Grupa"].isNull());
    set.Edit();
    set.Fields("Naziv") = Value("Bez ikakve grupe");
    set.Update();
    EXPECT_EQ(set["Naziv"].asText(), "Bez ikakve grupe");
    set.Edit();
    set.Fields("Grupa") = Value("Nema je");
    EXPECT_EQ(errorOf([&] { set.Update(); }), errFieldNotUpdatable);
    set.CancelUpdate();
    set.Delete();
    EXPECT_EQ(count("Oprema"), 2);
}

TEST_F(DatabaseTest, AComputedFieldCannotBeWritten) {
    fill(1);
    Recordset set = db.OpenRecordset("SELECT ID, Price, Price*2 AS Twice FROM Services");
    EXPECT_EQ(set["Twice"].asDouble(), 2.0);
    set.Edit();
    EXPECT_EQ(errorOf([&] { set.Fields("Twice") = Value(3); }), errFieldNotUpdatable);
    set.CancelUpdate();
}

TEST_F(DatabaseTest, AFailedStatementAffectsNoRows) {
    fill(3);
    db.Execute("UPDATE Customers SET City='Niš'");
    ASSERT_EQ(db.RecordsAffected(), 3);
    EXPECT_EQ(errorOf([&] { db.Execute("UPDATE Customers SET Nowhere=1"); }), errTooFewParameters);
    EXPECT_EQ(db.RecordsAffected(), 0);
}

// Another workstation would give the number again, to somebody else, while it stands on a paper here.
TEST_F(DatabaseTest, ANumberOfAnInnerTransactionIsNotGivenAgainAfterItsRollback) {
    fill(3);
    DBEngine::BeginTrans();
    DBEngine::BeginTrans();
    Recordset set = db.OpenRecordset("Customers");
    set.AddNew();
    ASSERT_EQ(set["CustID"].asLong(), 4);
    set.Update();
    DBEngine::Rollback();
    DBEngine::CommitTrans();
    set.Close();
    db.Close();
    db = daotest::openShop(path);
    set = db.OpenRecordset("Customers");
    EXPECT_EQ(set.RecordCount(), 3);
    set.AddNew();
    EXPECT_EQ(set["CustID"].asLong(), 5);
    set.CancelUpdate();
}

}  // namespace
