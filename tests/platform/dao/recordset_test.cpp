#include "platform/dao/dao_shop.h"

using namespace dao;
using daotest::errorOf;

namespace {

class RecordsetTest : public daotest::ShopTest {
 protected:
    // The number of the client that the search comes to; 0 where there is none.
    static int found(Recordset& set, const std::string& criterion) {
        set.FindFirst(criterion);
        return set.NoMatch() ? 0 : set["CustID"].asLong();
    }
};

TEST_F(RecordsetTest, AnEmptySetStandsAtBothEnds) {
    Recordset set = db.OpenRecordset("Customers");
    EXPECT_TRUE(set.BOF());
    EXPECT_TRUE(set.EOF());
    EXPECT_EQ(set.RecordCount(), 0);
    EXPECT_EQ(set.AbsolutePosition(), -1);
    EXPECT_EQ(errorOf([&] { set.MoveFirst(); }), errNoCurrentRecord);
    EXPECT_EQ(errorOf([&] { set.MoveLast(); }), errNoCurrentRecord);
    EXPECT_EQ(errorOf([&] { set.MoveNext(); }), errNoCurrentRecord);
    EXPECT_EQ(errorOf([&] { set.MovePrevious(); }), errNoCurrentRecord);
    EXPECT_EQ(errorOf([&] { set.Move(0); }), errNoCurrentRecord);
    EXPECT_EQ(errorOf([&] { set["Surname"]; }), errNoCurrentRecord);
    EXPECT_EQ(errorOf([&] { set.Bookmark(); }), errNoCurrentRecord);
    EXPECT_EQ(errorOf([&] { set.Edit(); }), errNoCurrentRecord);
    EXPECT_EQ(errorOf([&] { set.Delete(); }), errNoCurrentRecord);
    set.FindFirst("CustID=1");
    EXPECT_TRUE(set.NoMatch());
}

TEST_F(RecordsetTest, WalkingGoesFromEndToEnd) {
    fill(5);
    Recordset set = db.OpenRecordset("SELECT * FROM Customers");
    EXPECT_FALSE(set.BOF());
    EXPECT_FALSE(set.EOF());
    EXPECT_EQ(set["CustID"].asLong(), 1);
    EXPECT_EQ(numbers(set, "CustID"), (std::vector{1, 2, 3, 4, 5}));
    EXPECT_TRUE(set.EOF());
    EXPECT_EQ(errorOf([&] { set.MoveNext(); }), errNoCurrentRecord);
    set.MovePrevious();
    EXPECT_EQ(set["CustID"].asLong(), 5);
    set.MoveFirst();
    set.MovePrevious();
    EXPECT_TRUE(set.BOF());
    EXPECT_EQ(errorOf([&] { set.MovePrevious(); }), errNoCurrentRecord);
    set.MoveNext();
    EXPECT_EQ(set["CustID"].asLong(), 1);
    set.Move(3);
    EXPECT_EQ(set.AbsolutePosition(), 3);
    set.Move(-2);
    EXPECT_EQ(set["CustID"].asLong(), 2);
    set.Move(100);
    EXPECT_TRUE(set.EOF());
    set.Move(-100);
    EXPECT_TRUE(set.BOF());
}

TEST_F(RecordsetTest, FieldsKnowTheirNameTypeAndSize) {
    Recordset set = db.OpenRecordset("Customers");
    EXPECT_EQ(set.FieldCount(), 6);
    EXPECT_EQ(set.Fields("surname").Name(), "Surname");
    EXPECT_EQ(set.Fields("Surname").Type(), dao::Type::Text);
    EXPECT_EQ(set.Fields("Surname").Size(), 20);
    EXPECT_EQ(set.Fields(0).Type(), dao::Type::Long);
    EXPECT_EQ(errorOf([&] { set.Fields("Nobody"); }), errItemNotFound);
    EXPECT_EQ(errorOf([&] { set.Fields(6); }), errItemNotFound);
}

// Both stores keep the same texts, or a shop could not move from one to the other.
TEST_F(RecordsetTest, ATextThatIsNotSoundIsRefusedAndTheRecordStaysAsItWas) {
    fill(1);
    Recordset set = db.OpenRecordset("Customers");
    for (const std::string& text :
         {std::string("Peri\xE6"), std::string("Pera\0Peric", 10), std::string("\0", 1)}) {
        set.Edit();
        set.Fields("City") = Value("Niš");
        EXPECT_EQ(errorOf([&] { set.Fields("City") = Value(text); }), errTextNotSound);
        EXPECT_EQ(DBEngine::Errors().front().Description,
                  "The text can't be kept; it is not valid UTF-8, or it holds a zero character.");
        EXPECT_EQ(errorOf([&] { set.Fields("Comments") = Value(text); }), errTextNotSound);
        EXPECT_EQ(set.EditMode(), Recordset::EditModeKind::InProgress);
        EXPECT_EQ(set["City"].asText(), "Niš");
        set.Update();
        EXPECT_EQ(set["City"].asText(), "Niš");
        EXPECT_TRUE(set["Comments"].isNull());
        set.AddNew();
        EXPECT_EQ(errorOf([&] { set.Fields("City") = Value(text); }), errTextNotSound);
        EXPECT_TRUE(set["City"].isNull());
        set.CancelUpdate();
    }
}

TEST_F(RecordsetTest, EveryLetterIsKept) {
    fill(1);
    Recordset set = db.OpenRecordset("Customers");
    const std::string letters = "\x01\t\x7F\xC2\x80\xED\x9F\xBF\xEE\x80\x80\xEF\xBF\xBF\xF4\x8F\xBF\xBF";
    set.Edit();
    set.Fields("Comments") = Value(letters);
    set.Update();
    EXPECT_EQ(db.OpenRecordset("Customers")["Comments"].asText(), letters);
}

TEST_F(RecordsetTest, AddNewGivesTheNumberAtOnceAndKeepsTheCurrentRow) {
    fill(2);
    Recordset set = db.OpenRecordset("Customers");
    set.MoveLast();
    set.AddNew();
    EXPECT_EQ(set.EditMode(), Recordset::EditModeKind::Add);
    EXPECT_EQ(set["CustID"].asLong(), 3);
    EXPECT_TRUE(set["Surname"].isNull());
    EXPECT_FALSE(set["FirmAddress"].isNull());
    set.Fields("Surname") = Value("Novak");
    set.Update();
    EXPECT_EQ(set["CustID"].asLong(), 2);
    EXPECT_EQ(set.RecordCount(), 3);
    set.setBookmark(set.LastModified());
    EXPECT_EQ(set["CustID"].asLong(), 3);
    EXPECT_EQ(set["Surname"].asText(), "Novak");
    EXPECT_FALSE(set["FirmAddress"].asBool());
}

TEST_F(RecordsetTest, ARowAddedAtTheEndDoesNotBecomeCurrent) {
    fill(1);
    Recordset set = db.OpenRecordset("Customers");
    set.MoveNext();
    ASSERT_TRUE(set.EOF());
    set.AddNew();
    set.Update();
    EXPECT_TRUE(set.EOF());
    set.MovePrevious();
    EXPECT_EQ(set["CustID"].asLong(), 2);
}

TEST_F(RecordsetTest, ANumberIsNeverGivenTwice) {
    Recordset set = db.OpenRecordset("Customers");
    set.AddNew();
    EXPECT_EQ(set["CustID"].asLong(), 1);
    set.CancelUpdate();
    set.AddNew();
    EXPECT_EQ(set["CustID"].asLong(), 2);
    set.Update();
    set.MoveLast();
    set.Delete();
    set.AddNew();
    EXPECT_EQ(set["CustID"].asLong(), 3);
    set.CancelUpdate();

    DBEngine::BeginTrans();
    set.AddNew();
    EXPECT_EQ(set["CustID"].asLong(), 4);
    set.Update();
    DBEngine::Rollback();
    set.AddNew();
    EXPECT_EQ(set["CustID"].asLong(), 5);
    set.CancelUpdate();
}

TEST_F(RecordsetTest, NumbersSurviveTheProcess) {
    Recordset set = db.OpenRecordset("Customers");
    DBEngine::BeginTrans();
    set.AddNew();
    DBEngine::Rollback();
    db.Close();
    daotest::Child child([&](daotest::Child&) {
        Database other = daotest::openShop(path);
        Recordset rows = other.OpenRecordset("Customers");
        rows.AddNew();
        return rows["CustID"].asLong();
    });
    EXPECT_EQ(child.wait(), 2);
}

TEST_F(RecordsetTest, EditChangesOnlyWhatWasSet) {
    fill(1);
    Recordset set = db.OpenRecordset("Services");
    set.Edit();
    EXPECT_EQ(set.EditMode(), Recordset::EditModeKind::InProgress);
    set.Fields("Price") = Value(12.5);
    EXPECT_EQ(set["Price"].asCurrency(), Currency::fromScaled(125000));
    set.Update();
    EXPECT_EQ(set.EditMode(), Recordset::EditModeKind::None);
    EXPECT_EQ(set["Price"].asCurrency(), Currency::fromScaled(125000));
    EXPECT_EQ(set["MachineID"].asLong(), 1);
    EXPECT_EQ(set.LastModified(), set.Bookmark());
}

TEST_F(RecordsetTest, CancelUpdateAndMovingDropWhatIsPending) {
    fill(2);
    Recordset set = db.OpenRecordset("Customers");
    set.Edit();
    set.Fields("Surname") = Value("Zaboravljeni");
    set.CancelUpdate();
    EXPECT_EQ(set["Surname"].asText(), "Klijent 1");
    set.Edit();
    set.Fields("Surname") = Value("Zaboravljeni");
    set.Move(0);
    EXPECT_EQ(set["Surname"].asText(), "Klijent 1");
    EXPECT_EQ(errorOf([&] { set.Update(); }), errUpdateWithoutEdit);
    EXPECT_EQ(errorOf([&] { set.CancelUpdate(); }), errUpdateWithoutEdit);
    EXPECT_EQ(errorOf([&] { set.Fields("Surname") = Value("x"); }), errUpdateWithoutEdit);
    set.AddNew();
    set.MoveLast();
    EXPECT_EQ(set.RecordCount(), 2);
}

TEST_F(RecordsetTest, WrongValuesAreRefusedAndNothingChanges) {
    fill(1);
    Recordset set = db.OpenRecordset("Customers");
    set.Edit();
    EXPECT_EQ(errorOf([&] { set.Fields("Surname") = Value("123456789012345678901"); }), errFieldTooSmall);
    set.Fields("Surname") = Value("čćšđžčćšđžčćšđžčćšđž");  // twenty characters, forty bytes
    EXPECT_EQ(errorOf([&] { set.Fields("BirthDate") = Value("juče"); }), errTypeMismatch);
    EXPECT_EQ(errorOf([&] { set.Fields("CustID") = Value(7); }), errFieldNotUpdatable);
    set.Update();
    EXPECT_EQ(set["Surname"].asText(), "čćšđžčćšđžčćšđžčćšđž");
    EXPECT_TRUE(set["BirthDate"].isNull());
}

TEST_F(RecordsetTest, TextsThatLookLikeNumbersStayTexts) {
    Recordset set = db.OpenRecordset("Customers");
    set.AddNew();
    set.Fields("City") = Value("011");
    set.Fields("Comments") = Value("0064 123\r\n\t'\"");
    set.Update();
    set.MoveFirst();
    EXPECT_EQ(set["City"].asText(), "011");
    EXPECT_EQ(set["Comments"].asText(), "0064 123\r\n\t'\"");
    EXPECT_EQ(set["City"].type(), dao::Type::Text);
}

TEST_F(RecordsetTest, TypesComeFromTheTable) {
    Recordset set = db.OpenRecordset("Services");
    set.AddNew();
    set.Fields("ServiceStarted") = Value(Date{1.0});
    set.Fields("Price") = Value(Currency::fromScaled(123456));
    set.Fields("Discount") = Value(10);
    set.Update();
    set.MoveFirst();
    EXPECT_EQ(set["ServiceStarted"], Value(Date{1.0}));
    EXPECT_EQ(set["Price"], Value(Currency::fromScaled(123456)));
    EXPECT_EQ(set["Discount"], Value(10.0F));
    EXPECT_TRUE(set["Paid"].isNull());
    Recordset customers = db.OpenRecordset("Customers");
    customers.AddNew();
    customers.Fields("FirmAddress") = Value(true);
    customers.Update();
    customers.MoveFirst();
    EXPECT_EQ(customers["FirmAddress"], Value(true));
}

TEST_F(RecordsetTest, ATextIsTheOneOfTheValue) {
    fill(3);
    db.Execute("UPDATE Customers SET City = Null WHERE CustID=2");
    for (const RecordsetType type : {dbOpenDynaset, dbOpenSnapshot}) {
        // Both an integer and a date are texts to the store where a text is made of them.
        Recordset set = db.OpenRecordset("SELECT *, CustID & '' AS Told FROM Customers", type);
        for (; !set.EOF(); set.MoveNext()) {
            for (int index = 0; index < set.FieldCount(); ++index) {
                const std::string text(set.Fields(index).Text());
                EXPECT_EQ(text, set.Fields(index).Value().textRef()) << set.Fields(index).Name();
            }
        }
        EXPECT_EQ(errorOf([&] { set.Fields("City").Text(); }), errNoCurrentRecord);
        set.Close();
    }
}

TEST_F(RecordsetTest, ATextIsThatOfTheRowAsItStands) {
    fill(2);
    Recordset set = db.OpenRecordset("Customers");
    Field city = set.Fields("City");
    const Field surname = set.Fields("Surname");
    const std::string first(surname.Text());
    set.Edit();
    city = Value("Niš");
    EXPECT_EQ(city.Text(), "Niš");
    EXPECT_EQ(surname.Text(), first);
    set.Update();
    EXPECT_EQ(city.Text(), "Niš");
    db.Execute("UPDATE Customers SET City = 'Bor' WHERE CustID=1");
    set.MoveFirst();
    EXPECT_EQ(city.Text(), "Bor");
    set.MoveNext();
    EXPECT_EQ(surname.Text(), set["Surname"].asText());
    EXPECT_NE(surname.Text(), first);
    set.Delete();
    EXPECT_EQ(errorOf([&] { city.Text(); }), errRecordDeleted);
    set.Close();
    EXPECT_EQ(errorOf([&] { city.Text(); }), errObjectClosed);
}

TEST_F(RecordsetTest, AfterDeleteThereIsNoCurrentRowUntilAMove) {
    fill(3);
    Recordset set = db.OpenRecordset("Customers");
    set.MoveNext();
    set.Delete();
    EXPECT_EQ(errorOf([&] { set["CustID"]; }), errRecordDeleted);
    EXPECT_EQ(errorOf([&] { set.Delete(); }), errRecordDeleted);
    EXPECT_FALSE(set.EOF());
    EXPECT_EQ(set.RecordCount(), 2);
    set.MoveNext();
    EXPECT_EQ(set["CustID"].asLong(), 3);
    set.Delete();
    set.MoveNext();
    EXPECT_TRUE(set.EOF());
    set.MoveFirst();
    set.Delete();
    EXPECT_FALSE(set.EOF());
    set.MoveNext();
    EXPECT_TRUE(set.EOF());
    EXPECT_TRUE(set.BOF());
}

TEST_F(RecordsetTest, DeletingAClientTakesEverythingOfHis) {
    fill(3);
    Recordset set = db.OpenRecordset("Customers");
    set.FindFirst("CustID=2");
    set.Delete();
    EXPECT_EQ(numbers(db.OpenRecordset("Computers"), "MachineID"), (std::vector{1, 3}));
    EXPECT_EQ(numbers(db.OpenRecordset("Services"), "ID"), (std::vector{1, 3}));
}

TEST_F(RecordsetTest, ARowWithoutItsParentIsRefused) {
    fill(1);
    Recordset set = db.OpenRecordset("Computers");
    set.AddNew();
    set.Fields("CustID") = Value(77);
    EXPECT_EQ(errorOf([&] { set.Update(); }), errRelatedRecordRequired);
    EXPECT_EQ(set.EditMode(), Recordset::EditModeKind::Add);
    set.CancelUpdate();
    EXPECT_EQ(numbers(db.OpenRecordset("Computers"), "MachineID"), (std::vector{1}));
}

TEST_F(RecordsetTest, FindFirstThatFindsNothingLeavesTheRowWhereItWas) {
    fill(5);
    Recordset set = db.OpenRecordset("Customers");
    set.FindFirst("CustID=4");
    EXPECT_FALSE(set.NoMatch());
    EXPECT_EQ(set["Surname"].asText(), "Klijent 4");
    EXPECT_EQ(found(set, "CustID=44"), 0);
    EXPECT_EQ(set["CustID"].asLong(), 4);
    EXPECT_EQ(found(set, "Surname='KLIJENT 2'"), 2);
    EXPECT_EQ(found(set, "Surname=\"nobody\""), 0);
    EXPECT_EQ(set["CustID"].asLong(), 2);
}

TEST_F(RecordsetTest, FindFirstLooksFromTheTopInTheSetsOrder) {
    fill(5);
    Recordset set = db.OpenRecordset("SELECT * FROM Customers ORDER BY CustID DESC");
    EXPECT_EQ(found(set, "City='Beograd'"), 5);
    EXPECT_EQ(found(set, "CustID=3"), 3);
    EXPECT_EQ(set.AbsolutePosition(), 2);
    EXPECT_EQ(found(set, "CustID<3"), 2);
}

TEST_F(RecordsetTest, FindFirstLooksOnlyAmongTheSetsRows) {
    fill(5);
    Recordset set = db.OpenRecordset("SELECT * FROM Customers WHERE CustID<3");
    EXPECT_EQ(found(set, "CustID=4"), 0);
    EXPECT_EQ(found(set, "Surname='Klijent 4'"), 0);
}

// Rows that have come to meet the set's condition since it was opened stand before its own, more of them than
// are looked at together.
TEST_F(RecordsetTest, FindFirstPassesOverMatchesThatAreNotAmongTheSetsRows) {
    fill(200);
    db.Execute("UPDATE Customers SET City='Zemun' WHERE CustID=3 OR CustID>=180");
    Recordset set = db.OpenRecordset("SELECT * FROM Customers WHERE City='Zemun'");
    ASSERT_EQ(set.RecordCount(), 22);
    db.Execute("UPDATE Customers SET City='Zemun'");
    EXPECT_EQ(found(set, "Surname>='Klijent'"), 3);
    db.Execute("DELETE * FROM Customers WHERE CustID=3");
    EXPECT_EQ(found(set, "Surname>='Klijent'"), 180);
    EXPECT_EQ(set.AbsolutePosition(), 1);
    EXPECT_EQ(found(set, "CustID>180 AND CustID<200"), 181);
    EXPECT_EQ(found(set, "CustID>3 AND CustID<180"), 0);
    EXPECT_EQ(set["CustID"].asLong(), 181);
}

TEST_F(RecordsetTest, FindFirstPassesOverARowThatTheSetHasDeleted) {
    fill(5);
    Recordset set = db.OpenRecordset("Customers");
    EXPECT_EQ(found(set, "City='Beograd'"), 1);
    set.Delete();
    EXPECT_EQ(found(set, "City='Beograd'"), 2);
}

TEST_F(RecordsetTest, ACriterionThatIsNoneIsASyntaxError) {
    fill(1);
    Recordset set = db.OpenRecordset("Customers");
    for (const char* criterion : {"", "CustID", "17", "CustID=", "CustID=1 OR", "=1", "CustID=1;DELETE"}) {
        EXPECT_EQ(errorOf([&] { set.FindFirst(criterion); }), errSyntax) << criterion;
    }
    EXPECT_EQ(errorOf([&] { set.FindFirst("Nobody=1"); }), errTooFewParameters);
    EXPECT_EQ(set["CustID"].asLong(), 1);
}

TEST_F(RecordsetTest, SearchesInASnapshotSeeItsOwnRowsOnly) {
    fill(5);
    Recordset set = db.OpenRecordset("SELECT * FROM Customers ORDER BY CustID DESC", dbOpenSnapshot);
    db.Execute("UPDATE Customers SET Surname='Promenjen' WHERE CustID=3");
    db.Execute("DELETE * FROM Customers WHERE CustID=4");
    set.FindFirst("CustID=4");
    EXPECT_FALSE(set.NoMatch());
    EXPECT_EQ(set.AbsolutePosition(), 1);
    set.FindFirst("Surname='klijent 3'");
    EXPECT_FALSE(set.NoMatch());
    EXPECT_EQ(set["CustID"].asLong(), 3);
    set.FindFirst("Surname='Promenjen'");
    EXPECT_TRUE(set.NoMatch());
    set.FindFirst("CustID<3 AND City='Beograd'");
    EXPECT_EQ(set["CustID"].asLong(), 2);
    EXPECT_FALSE(set.Updatable());
    EXPECT_EQ(errorOf([&] { set.Edit(); }), errCannotUpdate);
    EXPECT_EQ(errorOf([&] { set.AddNew(); }), errCannotUpdate);
    EXPECT_EQ(errorOf([&] { set.Delete(); }), errCannotUpdate);
}

TEST_F(RecordsetTest, ADistinctSelectIsReadOnly) {
    fill(4);
    Recordset set = db.OpenRecordset("SELECT DISTINCT City FROM Customers");
    EXPECT_EQ(set.RecordCount(), 1);
    EXPECT_FALSE(set.Updatable());
    EXPECT_EQ(errorOf([&] { set.Edit(); }), errCannotUpdate);
    set.FindFirst("City='Beograd'");
    EXPECT_FALSE(set.NoMatch());
}

TEST_F(RecordsetTest, ATableComesInItsOwnOrder) {
    Recordset types = db.OpenRecordset("ServiceTypes");
    for (const char* name : {"Ostalo", "Instalacija", "Čišćenje"}) {
        types.AddNew();
        types.Fields("Service") = Value(name);
        types.Update();
    }
    Recordset table = db.OpenRecordset("servicetypes", dbOpenTable);
    EXPECT_EQ(table.Type(), dbOpenTable);
    table.MoveLast();
    EXPECT_EQ(table.RecordCount(), 3);
    EXPECT_EQ(table["Service"].asText(), "Čišćenje");
    table.MoveFirst();
    EXPECT_EQ(table["Service"].asText(), "Ostalo");
    table.Edit();
    table.Fields("Service") = Value("Razno");
    table.Update();
    EXPECT_EQ(table["Service"].asText(), "Razno");
    EXPECT_EQ(errorOf([&] { db.OpenRecordset("OpremaGrupe", dbOpenTable); }), errInvalidOperation);
    EXPECT_EQ(errorOf([&] { db.OpenRecordset("Nowhere", dbOpenTable); }), errUnknownObject);
}

// Where a number is missing, the others are counted in another way.
TEST_F(RecordsetTest, AWholeTableIsInOrderWhateverNumbersAreMissing) {
    fill(9);
    std::vector<int> there = {1, 2, 3, 4, 5, 6, 7, 8, 9};
    EXPECT_EQ(numbers(db.OpenRecordset("Services"), "ID"), there);
    for (const int gone : {9, 1, 5, 6, 3}) {
        db.Execute("UPDATE Services SET MachineID=9 WHERE ID=2");  // whose index has another order then
        db.Execute("DELETE * FROM Services WHERE ID=" + std::to_string(gone));
        std::erase(there, gone);
        Recordset rows = db.OpenRecordset("Services");
        EXPECT_EQ(numbers(rows, "ID"), there);
        rows.FindFirst("ID=" + std::to_string(gone));
        EXPECT_TRUE(rows.NoMatch());
        rows.FindFirst("ID=7");
        EXPECT_EQ(rows["ID"].asLong(), 7);
    }
    db.Execute("DELETE * FROM Services");
    EXPECT_EQ(numbers(db.OpenRecordset("Services"), "ID"), std::vector<int>());
}

TEST_F(RecordsetTest, ARowThatComesBackUnderTheSameContentIsAnotherRow) {
    fill(1);
    Recordset set = db.OpenRecordset("InvoiceData");
    const auto add = [&](Recordset& to, const char* name) {
        to.AddNew();
        to.Fields("ServiceID") = Value(1);
        to.Fields("Naziv") = Value(name);
        to.Update();
    };
    add(set, "Prvi");
    Recordset other = db.OpenRecordset("InvoiceData");
    set.MoveFirst();
    set.Delete();
    add(set, "Drugi");
    EXPECT_EQ(errorOf([&] { other["Naziv"]; }), errRecordDeleted);
}

TEST_F(RecordsetTest, ManyRowsAreReadInBlocksWithoutLosingAny) {
    fill(2000);
    Recordset set = db.OpenRecordset("Services");
    int expected = 0;
    for (set.MoveFirst(); !set.EOF(); set.MoveNext()) {
        ASSERT_EQ(set["ID"].asLong(), ++expected);
    }
    EXPECT_EQ(expected, 2000);
    for (set.MoveLast(); !set.BOF(); set.MovePrevious()) {
        ASSERT_EQ(set["Price"].asCurrency(), Currency::fromScaled(expected-- * 10000LL));
    }
    db.Execute("DELETE * FROM Services WHERE ID>100 AND ID<1900");
    Recordset sparse = db.OpenRecordset("SELECT * FROM Services ORDER BY Price DESC");
    EXPECT_EQ(sparse.RecordCount(), 201);
    expected = 2000;
    for (; !sparse.EOF(); sparse.MoveNext(), expected = expected == 1900 ? 100 : expected - 1) {
        ASSERT_EQ(sparse["ID"].asLong(), expected);
    }
}

TEST_F(RecordsetTest, RowsOfOthersBetweenTheSetsOwnAreSteppedOver) {
    fill(1500);
    db.Execute("UPDATE Services SET Discount=1 WHERE Price=1 OR ID BETWEEN 3 AND 700");
    Recordset set = db.OpenRecordset(
        "SELECT * FROM Services WHERE Discount IS NULL AND (ID<5 OR ID BETWEEN 350 AND 1400)");
    db.Execute("UPDATE Services SET Discount=2 WHERE ID=1000");
    std::vector<int> expected{2};
    for (int id = 701; id <= 1400; ++id) {
        expected.push_back(id);
    }
    EXPECT_EQ(numbers(set, "ID"), expected);
    // Every third row, so that each stretch of keys holds twice as many strangers.
    std::string text = "SELECT * FROM Services WHERE ";
    for (int id = 1; id < 1500; id += 3) {
        text += "ID=" + std::to_string(id) + " OR ";
    }
    Recordset thirds = db.OpenRecordset(text + "ID=1500");
    int id = 1;
    for (; thirds.AbsolutePosition() < 499; thirds.MoveNext(), id += 3) {
        ASSERT_EQ(thirds["ID"].asLong(), id);
    }
    EXPECT_EQ(thirds.RecordCount(), 501);
}

TEST_F(RecordsetTest, AFieldFirstLookedAtInTheMiddleOfALongWalkIsThere) {
    fill(1200);
    Recordset set = db.OpenRecordset("Services");
    for (int i = 1; i <= 900; ++i, set.MoveNext()) {
        ASSERT_EQ(set["ID"].asLong(), i);
    }
    EXPECT_EQ(set["Comments"].asText(), std::string(100, static_cast<char>('a' + 901 % 26)));
    EXPECT_EQ(set["ID"].asLong(), 901);
    for (int i = 901; i <= 1200; ++i, set.MoveNext()) {
        ASSERT_EQ(set["Comments"].asText().front(), 'a' + i % 26);
        ASSERT_EQ(set["Price"].asCurrency().scaled(), i * 10000LL);
    }
}

TEST_F(RecordsetTest, ALongWalkThroughAQueryReadsTheFieldsByTheQuerysNames) {
    fill(1200);
    db.CreateQueryDef(
        "Cene",
        "SELECT Price AS Cena, ID AS Broj, Price*2 AS Dvostruko, Comments FROM Services WHERE ID>100");
    Recordset set = db.OpenRecordset("SELECT * FROM Cene");
    for (int i = 101; i <= 1200; ++i, set.MoveNext()) {
        ASSERT_EQ(set["Broj"].asLong(), i);
        ASSERT_EQ(set["Cena"].asCurrency().scaled(), i * 10000LL);
        if (i > 800) {
            ASSERT_EQ(set["Dvostruko"].asDouble(), 2.0 * i);
        }
    }
    EXPECT_TRUE(set.EOF());
}

TEST_F(RecordsetTest, BeforeTheFirstRowThereIsNoneAlsoWhenARowWasReadEarlier) {
    fill(2);
    for (const RecordsetType type : {dbOpenDynaset, dbOpenSnapshot}) {
        Recordset set = db.OpenRecordset("SELECT * FROM Customers", type);
        EXPECT_EQ(set["CustID"].asLong(), 1);
        set.Requery();
        set.MovePrevious();
        EXPECT_EQ(errorOf([&] { set["CustID"]; }), errNoCurrentRecord);
    }
}

TEST_F(RecordsetTest, ARowDeletedMeanwhileIsNotTakenForOneThatTheSetLeavesOut) {
    fill(100);
    Recordset set = db.OpenRecordset("SELECT * FROM Services WHERE ID<>50");
    db.Execute("DELETE FROM Services WHERE ID=60");
    for (int number = 1; !set.EOF(); set.MoveNext(), ++number) {
        number += number == 50 ? 1 : 0;
        if (number == 60) {
            EXPECT_EQ(errorOf([&] { set["ID"]; }), errRecordDeleted);
        } else {
            EXPECT_EQ(set["ID"].asLong(), number);
            EXPECT_EQ(set["Price"].asLong(), number);
        }
    }
}

TEST_F(RecordsetTest, RequeryRunsTheStatementAgain) {
    fill(2);
    Recordset set = db.OpenRecordset("Customers");
    Recordset snapshot = db.OpenRecordset("Customers", dbOpenSnapshot);
    fill(1);
    EXPECT_EQ(set.RecordCount(), 2);
    set.Requery();
    snapshot.Requery();
    EXPECT_EQ(set.RecordCount(), 3);
    EXPECT_EQ(snapshot.RecordCount(), 3);
}

TEST_F(RecordsetTest, AClosedSetSaysSo) {
    fill(1);
    Recordset set = db.OpenRecordset("Customers");
    Recordset same = set;
    const Field field = set.Fields("Surname");
    set.Close();
    set.Close();
    EXPECT_EQ(errorOf([&] { same.MoveFirst(); }), errObjectClosed);
    EXPECT_EQ(errorOf([&] { field.Value(); }), errObjectClosed);
    EXPECT_EQ(errorOf([&] { Recordset().RecordCount(); }), errObjectClosed);
    Recordset open = db.OpenRecordset("Customers");
    db.Close();
    EXPECT_EQ(errorOf([&] { open["Surname"]; }), errObjectClosed);
    EXPECT_EQ(errorOf([&] { db.Execute("DELETE * FROM Customers"); }), errObjectClosed);
    EXPECT_FALSE(static_cast<bool>(db));
    db.Close();
}

TEST_F(RecordsetTest, ABookmarkOfARowThatIsGoneIsRefused) {
    fill(3);
    Recordset set = db.OpenRecordset("Customers");
    set.MoveNext();
    const Bookmark place = set.Bookmark();
    set.MoveFirst();
    db.Execute("DELETE * FROM Customers WHERE CustID=2");
    EXPECT_EQ(errorOf([&] { set.setBookmark(place); }), errRecordDeleted);
    EXPECT_EQ(set["CustID"].asLong(), 1);
    EXPECT_EQ(errorOf([&] { set.setBookmark({99}); }), errRecordDeleted);
    EXPECT_EQ(errorOf([&] { set.setBookmark({}); }), errRecordDeleted);
}

// Rows of a set that stands in another order than its keys are read by lists of keys.
TEST_F(RecordsetTest, AWalkInAnotherOrderMeetsEachRowAtItsPlace) {
    fill(100);
    Recordset set = db.OpenRecordset("SELECT * FROM Customers ORDER BY CustID DESC");
    db.Execute("DELETE * FROM Customers WHERE CustID=50 OR CustID=93");
    db.Execute("UPDATE Customers SET City='Zemun' WHERE CustID=20");
    for (int number = 100; number > 0; --number, set.MoveNext()) {
        if (number == 50 || number == 93) {
            EXPECT_EQ(errorOf([&] { set["CustID"]; }), errRecordDeleted) << number;
        } else {
            EXPECT_EQ(set["CustID"].asLong(), number);
            EXPECT_EQ(set["City"].asText(), number == 20 ? "Zemun" : "Beograd") << number;
        }
    }
    EXPECT_TRUE(set.EOF());
}

TEST_F(RecordsetTest, AWalkThroughAJoinMeetsEachPairAtItsPlace) {
    fill(100);
    Recordset set = db.OpenRecordset(
        "SELECT Customers.Surname, Computers.MachineID FROM Customers INNER JOIN Computers "
        "ON Customers.CustID = Computers.CustID ORDER BY Computers.MachineID DESC");
    db.Execute("DELETE * FROM Computers WHERE MachineID=50");
    for (int number = 100; number > 0; --number, set.MoveNext()) {
        if (number == 50) {
            EXPECT_EQ(errorOf([&] { set["MachineID"]; }), errRecordDeleted);
        } else {
            EXPECT_EQ(set["MachineID"].asLong(), number);
            EXPECT_EQ(set["Surname"].asText(), "Klijent " + std::to_string(number));
        }
    }
    EXPECT_TRUE(set.EOF());
}

TEST_F(RecordsetTest, ARowDeletedByAnotherIsMetOnlyWhenTouched) {
    fill(3);
    Recordset set = db.OpenRecordset("Customers");
    db.Execute("DELETE * FROM Customers WHERE CustID=2");
    EXPECT_EQ(set.RecordCount(), 3);
    set.MoveNext();
    EXPECT_EQ(errorOf([&] { set["CustID"]; }), errRecordDeleted);
    EXPECT_EQ(errorOf([&] { set.Edit(); }), errRecordDeleted);
    EXPECT_EQ(errorOf([&] { set.Delete(); }), errRecordDeleted);
    set.FindFirst("CustID=2");
    EXPECT_TRUE(set.NoMatch());
    set.MoveNext();
    EXPECT_EQ(set["CustID"].asLong(), 3);
}

}  // namespace
