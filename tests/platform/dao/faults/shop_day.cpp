#include "platform/dao/faults/shop_day.h"

#include <filesystem>
#include <new>

#include <unistd.h>

#include "platform/dao/failure.h"
#include "platform/dao/faults/faulty_disk.h"

using namespace dao;

namespace daotest {
namespace {

namespace fs = std::filesystem;

constexpr int kClients = 12;
constexpr int kRemoved = 3;
constexpr int kDrawnFrom = 5;
constexpr int kGivenBackTo = 6;
constexpr std::size_t kLongText = 9000;

// What failed is told, not that the store may have rolled back by itself.
void rollBack() {
    const QuietErrors quiet;
    try {
        DBEngine::Rollback();
    } catch (const Error&) {
        // it had
    }
}

// A step is written as a whole or not at all.
template <typename Body>
void together(Body&& body) {
    DBEngine::BeginTrans();
    try {
        body();
        DBEngine::CommitTrans();
    } catch (...) {
        rollBack();
        throw;
    }
}

void addClient(Database& db, const char* name) {
    Recordset set = db.OpenRecordset("Customers");
    set.AddNew();
    set.Fields("Surname") = Value(name);
    set.Fields("City") = Value("Beograd");
    set.Fields("Comments") = Value(std::string(kLongText, 'n'));
    set.Update();
}

Recordset rowOf(Database& db, const char* table, int number) {
    Recordset set = db.OpenRecordset(table);
    set.FindFirst((std::string(table) == "Customers" ? "CustID=" : "ID=") + std::to_string(number));
    return set;
}

void changeStock(Database& db, int product, float by) {
    Recordset set = rowOf(db, "Oprema", product);
    set.Edit();
    set.Fields("Stanje") = Value(set["Stanje"].asSingle() + by);
    set.Update();
}

void draw(Database& db, int product, float pieces) {
    changeStock(db, product, -pieces);
    Recordset drawn = db.OpenRecordset("InvoiceData");
    drawn.AddNew();
    drawn.Fields("ServiceID") = Value(product);
    drawn.Fields("OpremaID") = Value(product);
    drawn.Fields("Stanje") = Value(pieces);
    drawn.Update();
}

void giveBack(Database& db, int product) {
    Recordset drawn = db.OpenRecordset("SELECT * FROM InvoiceData WHERE OpremaID=" + std::to_string(product));
    const float pieces = drawn["Stanje"].asSingle();
    db.Execute("DELETE * FROM InvoiceData WHERE OpremaID=" + std::to_string(product));
    changeStock(db, product, pieces);
}

void setField(Database& db, int service, const char* field, const Value& value) {
    Recordset set = rowOf(db, "Services", service);
    set.Edit();
    set.Fields(field) = value;
    set.Update();
}

int countOf(Database& db, const std::string& source) {
    Recordset set = db.OpenRecordset(source);
    return static_cast<int>(set.RecordCount());
}

// What of a step is there: 1, or 0 where it was not taken.
void expectFact(ShopDay::Fact fact, int found, int step) {
    SCOPED_TRACE(ShopDay::nameOf(step));
    EXPECT_TRUE(found == 0 || found == 1) << found;
    EXPECT_TRUE(fact != ShopDay::Fact::Must || found == 1);
    EXPECT_TRUE(fact != ShopDay::Fact::MustNot || found == 0);
}

// 1 or 0 as the value says; -1 where it is neither.
template <typename V>
int eitherOf(const V& found, const V& after, const V& before) {
    return found == after ? 1 : found == before ? 0 : -1;
}

}  // namespace

const char* ShopDay::nameOf(int step) {
    constexpr std::array<const char*, kSteps> kNames{"open",      "add",    "edit",   "delete", "draw",
                                                     "give back", "number", "filter", "backup", "repair",
                                                     "compact",   "later",  "close"};
    return kNames[static_cast<std::size_t>(step)];
}

ShopDay::ShopDay(const std::string& folder)
    : path_(folder + "/Shop.mdb"), backup_(folder + "/Shop.bkp"), temporary_(folder + "/Shop.$$1") {}

void ShopDay::prepare() const {
    createShop(path_);
    Database db = openShop(path_);
    fillShop(db, kClients);
    db.Execute("UPDATE Services SET Discount=10");
    together([&] { draw(db, kGivenBackTo, 4); });
    db.Close();
    DBEngine::CopyDatabase(path_, backup_);
    crash();
}

// A change that breaks off on its way into the file: some of it is there, and the journal beside it tells
// what was.
void ShopDay::crash() const {
    const std::vector<char> whole = readFile(path_);
    const auto isHalfWritten = [&] {
        return readFile(path_) != whole && readFile(path_ + "-journal").at(0) != 0;
    };
    for (std::uint64_t n = 1; !isHalfWritten(); ++n) {
        fs::remove(path_ + "-journal");
        writeFile(path_, whole);
        Child child([&](Child&) {
            disk::watch(fs::path(path_).parent_path());
            Database here = openShop(path_);
            disk::failAt(disk::Fault::Dead, n);
            EXPECT_NE(errorOf([&] { here.Execute("UPDATE Services SET Discount=99"); }), 0);
            _exit(0);
            return 0;
        });
        child.wait();
    }
}

void ShopDay::exchange() const {
    const SoleUse sole(path_);
    DBEngine::DiscardDatabase(temporary_);
    DBEngine::CompactDatabase(path_, temporary_, kConnect);
    DBEngine::CopyDatabase(temporary_, path_);
    DBEngine::DiscardDatabase(temporary_);
}

void ShopDay::does(int step) {
    if (step != Backup && step != Repair && step != Compact && step != Close) {
        if (!db_) {
            db_ = openShop(path_);
        }
    } else if (step != Backup) {
        db_.Close();
    }
    switch (step) {
        case Add:
            return addClient(db_, "Nova");
        case Edit:
            return setField(db_, 1, "Price", Value(777));
        case Remove:
            return rowOf(db_, "Customers", kRemoved).Delete();
        case Draw:
            return together([&] { draw(db_, kDrawnFrom, 7); });
        case GiveBack:
            return together([&] { giveBack(db_, kGivenBackTo); });
        case Number:
            return setField(db_, 2, "Discount", Value(11));
        case Filter: {
            db_.CreateQueryDef("QNova", "SELECT * FROM Services WHERE Price>8");
            EXPECT_GE(countOf(db_, "QNova"), kClients - 8);
            return;
        }
        case Backup:
            return DBEngine::CopyDatabase(path_, backup_);
        case Repair:
            return DBEngine::RepairDatabase(path_, kConnect, backup_);
        case Compact:
            return exchange();
        case Later:
            return addClient(db_, "Kasna");
        default:
            return;
    }
}

void ShopDay::run(const Told& told) {
    for (int step = 0; step < kSteps; ++step) {
        int number = 0;
        try {
            number = errorOf([&] { does(step); });
        } catch (const std::bad_alloc&) {
            number = kOutOfMemory;
        }
        told(step, number);
    }
}

void ShopDay::checkFacts(Database& db, const Facts& facts) {
    const auto expect = [&](Step step, int found) { expectFact(facts[step], found, step); };
    expect(Add, countOf(db, "SELECT * FROM Customers WHERE Surname='Nova'"));
    expect(Later, countOf(db, "SELECT * FROM Customers WHERE Surname='Kasna'"));
    expect(Edit, eitherOf(rowOf(db, "Services", 1)["Price"].asSingle(), 777.0F, 1.0F));
    expect(Number, eitherOf(rowOf(db, "Services", 2)["Discount"].asSingle(), 11.0F, 10.0F));
    expect(Draw, eitherOf(rowOf(db, "Oprema", kDrawnFrom)["Stanje"].asSingle(), 93.0F, 100.0F));
    expect(GiveBack, eitherOf(rowOf(db, "Oprema", kGivenBackTo)["Stanje"].asSingle(), 100.0F, 96.0F));
    expect(Remove, 1 - countOf(db, "SELECT * FROM Customers WHERE CustID=" + std::to_string(kRemoved)));
    bool filter = false;
    for (int i = 0; i < db.QueryDefs().Count(); ++i) {
        filter |= db.QueryDefs()[i].Name() == "QNova";
    }
    expect(Filter, filter ? 1 : 0);
}

void ShopDay::checkSums(Database& db) {
    const int clients = countOf(db, "Customers");
    const int newOnes = countOf(db, "SELECT * FROM Customers WHERE Surname='Nova' OR Surname='Kasna'");
    for (const char* table : {"Computers", "Services"}) {
        EXPECT_EQ(countOf(db, table), clients - newOnes) << table;
    }
    EXPECT_GE(clients - newOnes, kClients - 1);
    float stock = 0;
    for (Recordset set = db.OpenRecordset("Oprema"); !set.EOF(); set.MoveNext()) {
        stock += set["Stanje"].asSingle();
    }
    for (Recordset set = db.OpenRecordset("InvoiceData"); !set.EOF(); set.MoveNext()) {
        stock += set["Stanje"].asSingle();
    }
    EXPECT_EQ(stock, kClients * 100.0F);
    EXPECT_EQ(countOf(db, "SELECT * FROM Services WHERE Discount>11"), 0);  // what the crash broke off
    for (Recordset set = db.OpenRecordset("Customers"); !set.EOF(); set.MoveNext()) {
        const bool isNew = set["CustID"].asLong() > kClients;
        const std::string name = set["Surname"].asText();
        EXPECT_EQ(set["City"].asText(), "Beograd");
        EXPECT_TRUE(isNew ? name == "Nova" || name == "Kasna"
                          : name == "Klijent " + std::to_string(set["CustID"].asLong()));
        EXPECT_EQ(set["Comments"].asText(), isNew ? std::string(kLongText, 'n') : "");
    }
    for (Recordset set = db.OpenRecordset("Services"); !set.EOF(); set.MoveNext()) {
        EXPECT_EQ(set["Comments"].asText(),
                  std::string(100, static_cast<char>('a' + set["ID"].asLong() % 26)));
    }
}

void ShopDay::check(const Facts& facts) const {
    {
        SCOPED_TRACE("the file");
        Database db;
        ASSERT_EQ(errorOf([&] { db = openShop(path_); }), 0);
        checkFacts(db, facts);
        checkSums(db);
        db.Execute("UPDATE Grupe SET Grupa='x'");  // work goes on
        db.Close();
        DBEngine::RepairDatabase(path_);
        EXPECT_FALSE(DBEngine::LastRepair().damaged);
    }
    SCOPED_TRACE("the backup");
    Database db;
    ASSERT_EQ(errorOf([&] { db = openShop(backup_); }), 0);
    checkSums(db);
    if (facts[Backup] == Fact::Must) {
        Facts then = facts;
        std::fill(then.begin() + Backup, then.end(), Fact::MustNot);
        checkFacts(db, then);
    }
    db.Close();
    DBEngine::RepairDatabase(backup_);
    EXPECT_FALSE(DBEngine::LastRepair().damaged);
}

}  // namespace daotest
