#include <gmock/gmock.h>

#include <QDir>
#include <QFile>

#include "exchange/command.h"
#include "support/second_process.h"

namespace {

using testing::ContainsRegex;
using testing::HasSubstr;

class CommandVerbs : public CommandFixture {
 protected:
    // Another workstation that has the shop open, with its three stored queries.
    std::function<void(const SecondProcess::Side&)> workstation() const {
        return [this](const SecondProcess::Side& side) {
            dao::Database database = open(path());
            CreateWorkQueries(database);
            side.ready();
            side.untilReleased();
        };
    }
    void hurt(qint64 from, qint64 length) const {
        QFile file(path());
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        ASSERT_TRUE(file.seek(from));
        ASSERT_EQ(file.write(QByteArray(length, '\x5a')), length);
    }
    static constexpr const char* kAll[] = {"copy", "check", "repair", "compact", "queries"};
};

TEST_F(CommandVerbs, WordsThatNobodyKnowsEndWithTwo) {
    EXPECT_EQ(run({}).status, 2);
    EXPECT_EQ(run({"polish", path()}).status, 2);
    EXPECT_EQ(run({"copy", path()}).status, 2);
    EXPECT_EQ(run({"queries", path(), "--brush"}).status, 2);
}

TEST_F(CommandVerbs, AShopThatIsNotThereEndsWithOneAndASentence) {
    for (const char* const verb : kAll) {
        const QStringList words = verb == std::string("copy") ? QStringList{verb, path(), at("New.mdb")}
                                                              : QStringList{verb, path()};
        const Answer answer = run(words);
        EXPECT_EQ(answer.status, 1) << verb;
        EXPECT_THAT(answer.errors, HasSubstr("Shop.mdb")) << verb;
        EXPECT_EQ(answer.out, "") << verb;
    }
    EXPECT_FALSE(QFile::exists(at("New.mdb")));
}

TEST_F(CommandVerbs, WhatIsNoShopIsRefusedByEach) {
    QFile text(path());
    ASSERT_TRUE(text.open(QIODevice::WriteOnly));
    text.write(QByteArray(8192, 'x'));
    text.close();
    for (const char* const verb : kAll) {
        const QStringList words = verb == std::string("copy") ? QStringList{verb, path(), at("New.mdb")}
                                                              : QStringList{verb, path()};
        EXPECT_EQ(run(words).status, 1) << verb;
    }
    EXPECT_FALSE(QFile::exists(at("New.mdb")));
}

TEST_F(CommandVerbs, QuietSaysNothingButDoesIt) {
    deliver();
    EXPECT_EQ(run({"--quiet", "copy", path(), at("One.mdb")}).out, "");
    EXPECT_EQ(run({"copy", path(), at("Two.mdb"), "-q"}).out, "");
    EXPECT_EQ(rowsOf(at("Two.mdb"), "Services"), rowsOf(path(), "Services"));
    EXPECT_TRUE(QFile::exists(at("One.mdb")));
}

// ----- copy

TEST_F(CommandVerbs, CopyIsMadeWhileAnotherWorks) {
    deliver();
    SecondProcess other(workstation());
    ASSERT_TRUE(other.waitReady());
    const Answer answer = run({"copy", path(), at("New.mdb")});
    EXPECT_EQ(answer.status, 0) << answer.errors;
    EXPECT_EQ(rowsOf(at("New.mdb"), "Customers"), 60);
}

TEST_F(CommandVerbs, CopyNeverTakesAPlaceThatIsTaken) {
    deliver();
    QFile there(at("New.mdb"));
    ASSERT_TRUE(there.open(QIODevice::WriteOnly));
    there.write("mine");
    there.close();
    const Answer answer = run({"copy", path(), at("New.mdb")});
    EXPECT_EQ(answer.status, 1);
    EXPECT_THAT(answer.errors, HasSubstr("is there already"));
    ASSERT_TRUE(there.open(QIODevice::ReadOnly));
    EXPECT_EQ(there.readAll(), "mine");
    QFile::link(at("Nowhere.mdb"), at("Link.mdb"));
    EXPECT_EQ(run({"copy", path(), at("Link.mdb")}).status, 1);
}

TEST_F(CommandVerbs, CopyOfADamagedFileIsNotMade) {
    deliver();
    hurt(30 * 4096, 4096);
    const Answer answer = run({"copy", path(), at("New.mdb")});
    EXPECT_EQ(answer.status, 1);
    EXPECT_FALSE(QFile::exists(at("New.mdb")));
}

// ----- check and repair

TEST_F(CommandVerbs, CheckCountsTheRowsOfASoundShop) {
    deliver();
    SecondProcess other(workstation());
    ASSERT_TRUE(other.waitReady());
    const Answer answer = run({"check", path()});
    EXPECT_EQ(answer.status, 0) << answer.errors;
    EXPECT_THAT(answer.out, ContainsRegex("Customers +60\n"));
    EXPECT_THAT(answer.out, ContainsRegex("Services +300\n"));
    EXPECT_THAT(answer.out, HasSubstr("Every record can be read."));
}

TEST_F(CommandVerbs, CheckFindsAHurtPageAndLeavesTheFileAsItIs) {
    deliver();
    hurt(30 * 4096, 4096);
    QFile file(path());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray before = file.readAll();
    const Answer answer = run({"check", path()});
    EXPECT_EQ(answer.status, 1);
    EXPECT_NE(answer.errors, "");
    ASSERT_TRUE(file.seek(0));
    EXPECT_EQ(file.readAll(), before);
}

TEST_F(CommandVerbs, RepairOfASoundFileChangesNothing) {
    deliver();
    const Answer answer = run({"repair", path()});
    EXPECT_EQ(answer.status, 0) << answer.errors;
    EXPECT_EQ(answer.out, "Every page is in order; nothing was changed.\n");
    EXPECT_FALSE(QFile::exists(at("Shop.damaged.mdb")));
}

TEST_F(CommandVerbs, RepairTellsWhatItKeptTableByTable) {
    deliver();
    hurt(30 * 4096, 4096);
    const Answer answer = run({"repair", path()});
    EXPECT_EQ(answer.status, 0) << answer.errors;
    EXPECT_THAT(answer.out, ContainsRegex("Table +Kept +Lost\n"));
    EXPECT_THAT(answer.out, ContainsRegex("Services +[0-9]+ +[0-9]+\n"));
    EXPECT_THAT(answer.out, HasSubstr("was damaged and is whole again"));
    EXPECT_TRUE(QFile::exists(at("Shop.damaged.mdb")));
    EXPECT_EQ(run({"check", path()}).status, 0);
}

TEST_F(CommandVerbs, RepairTakesTheFirstBytesFromABackup) {
    deliver();
    ASSERT_EQ(run({"copy", path(), at("Backup.mdb")}).status, 0);
    hurt(0, 16);
    EXPECT_EQ(run({"repair", path()}).status, 1);
    const Answer answer = run({"repair", path(), "--backup", at("Backup.mdb")});
    EXPECT_EQ(answer.status, 0) << answer.errors;
    EXPECT_EQ(rowsOf(path(), "Customers"), 60);
}

TEST_F(CommandVerbs, RepairAndCompactWantTheShopAlone) {
    deliver();
    SecondProcess other(workstation());
    ASSERT_TRUE(other.waitReady());
    EXPECT_EQ(run({"repair", path()}).status, 1);
    EXPECT_EQ(run({"compact", path()}).status, 1);
    EXPECT_FALSE(QFile::exists(path() + ".compact"));
}

// ----- compact

TEST_F(CommandVerbs, CompactGivesRoomBackAndKeepsTheRows) {
    deliver();
    {
        dao::Database database = open(path());
        database.Execute("DELETE * FROM Customers WHERE CustID > 10");
        database.Close();
    }
    const qint64 before = QFile(path()).size();
    const Answer answer = run({"compact", path()});
    EXPECT_EQ(answer.status, 0) << answer.errors;
    EXPECT_LT(QFile(path()).size(), before);
    EXPECT_THAT(answer.out, ContainsRegex("^Compacted: [0-9,]+ kB before, [0-9,]+ kB now.\n$"));
    EXPECT_EQ(rowsOf(path(), "Customers"), 10);
    EXPECT_FALSE(QFile::exists(path() + ".compact"));
}

// ----- queries

TEST_F(CommandVerbs, QueriesTellsWhoseEachIs) {
    deliver();
    {
        dao::Database database = open(path());
        database.CreateQueryDef("QDCustomers7", "SELECT * FROM Customers WHERE CustID=3");
        database.CreateQueryDef("QDCustomersOld", "SELECT * FROM Customers");
        database.CreateQueryDef("QDServices007", "SELECT * FROM Services");
        database.Close();
    }
    SecondProcess other(workstation());
    ASSERT_TRUE(other.waitReady());
    const Answer answer = run({"queries", path()});
    EXPECT_EQ(answer.status, 0) << answer.errors;
    EXPECT_THAT(answer.out,
                ContainsRegex("QDCustomers7 +left behind +SELECT \\* FROM Customers WHERE CustID=3\n"));
    EXPECT_THAT(answer.out, ContainsRegex("QDCustomers[0-6] +in use +SELECT"));
    EXPECT_THAT(answer.out, ContainsRegex("QDCustomersOld +the shop's +SELECT"));
    EXPECT_THAT(answer.out, ContainsRegex("QDServices007 +the shop's +SELECT"));
    EXPECT_THAT(answer.out, ContainsRegex("OpremaGrupe +the shop's +SELECT"));
}

TEST_F(CommandVerbs, SweepTakesWhatACrashedCopyLeftAndNothingElse) {
    deliver();
    SecondProcess crashing(workstation());
    ASSERT_TRUE(crashing.waitReady());
    SecondProcess other(workstation());
    ASSERT_TRUE(other.waitReady());
    crashing.kill();
    const Answer answer = run({"queries", path(), "--sweep"});
    EXPECT_EQ(answer.status, 0) << answer.errors;
    EXPECT_EQ(answer.out, "Removed QDComputers0.\nRemoved QDCustomers0.\nRemoved QDServices0.\n");
    const Answer left = run({"queries", path()});
    EXPECT_THAT(left.out, ContainsRegex("QDServices1 +in use"));
    EXPECT_THAT(left.out, HasSubstr("OpremaGrupe"));
    EXPECT_EQ(run({"queries", path(), "--sweep"}).out, "No stored query was left behind.\n");
}

// ----- on a server

TEST_F(CommandVerbs, ServersShopIsServedAlike) {
    deliverOnServer();
    const Answer checked = run({"check", path()});
    EXPECT_EQ(checked.status, 0) << checked.errors;
    EXPECT_THAT(checked.out, ContainsRegex("Services +300\n"));
    EXPECT_EQ(run({"repair", path()}).out,
              "Every row on the server can be read, and its indexes were made anew.\n");
    EXPECT_EQ(run({"compact", path()}).out, "The server has written its tables densely.\n");
    const Answer copied = run({"copy", path(), at("Home.mdb")});
    EXPECT_EQ(copied.status, 0) << copied.errors;
    EXPECT_EQ(rowsOf(at("Home.mdb"), "Services"), 300);
    EXPECT_EQ(run({"copy", path(), path()}).status, 1);
}

TEST_F(CommandVerbs, SweepOnAServerSparesRunningCopies) {
    deliverOnServer();
    {
        dao::Database database = open(path());
        database.CreateQueryDef("QDCustomers7", "SELECT * FROM Customers");
        database.Close();
    }
    SecondProcess other(workstation());
    ASSERT_TRUE(other.waitReady());
    const Answer answer = run({"queries", path(), "--sweep"});
    EXPECT_EQ(answer.status, 0) << answer.errors;
    EXPECT_EQ(answer.out, "Removed QDCustomers7.\n");
    EXPECT_THAT(run({"queries", path()}).out, ContainsRegex("QDServices[0-9] +in use"));
}

}  // namespace
