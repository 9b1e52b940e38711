// A connection that breaks off at the worst of moments, under a store that writes.
#include <gtest/gtest.h>

#include <functional>
#include <optional>

#include "failures.h"
#include "platform/dao/postgres/server_store.h"
#include "platform/dao/postgres/shop_making.h"
#include "proxy.h"
#include "support/server_cluster.h"

using dao::Value;
using dao::driver::FieldValue;
using dao::postgres::Connection;
using dao::postgres::Link;
using dao::postgres::NewShop;
using dao::postgres::Parameters;
using dao::postgres::ServerStore;
using dao::postgres::Written;

namespace {

constexpr const char* kGone = "it can only be rolled back";

class CommitLoss : public ::testing::Test {
 protected:
    void SetUp() override {
        NewShop made(database_.place());
        dao::TableDef table("Grupe");
        table.Append({"ID", dao::dbLong, 0, true});
        table.Append({"Grupa", dao::dbText, 50});
        made.store().definitions().createTable(table);
        made.finish();
    }

    static void insert(ServerStore& store, const char* name) {
        const Value value(name);
        const FieldValue field{"Grupa", &value};
        store.rows().insertRow("Grupe", {&field, 1});
    }
    std::string names() {
        return std::string(
            Connection(database_.place())
                .run("SELECT coalesce(string_agg(\"Grupa\", ' ' ORDER BY \"ID\"), '') FROM shop.\"Grupe\"")
                .text(0, 0));
    }
    void endAllConnections() {
        Connection(database_.place())
            .run(
                "SELECT pg_terminate_backend(pid, 5000) FROM pg_stat_activity"
                " WHERE datname = current_database() AND pid <> pg_backend_pid()");
    }

    tests::ServerDatabase database_;
    Proxy proxy_{database_.place()};
};

TEST_F(CommitLoss, ACommitWhoseAnswerWasLostIsKnownToHaveComeAbout) {
    ServerStore store(Link::to(proxy_.place()));
    for (const char* name : {"Monitori", "Kablovi"}) {
        store.transaction().beginWrite();
        insert(store, name);
        proxy_.hangUpAtAnswer("COMMIT");
        store.transaction().commit();
        EXPECT_FALSE(store.transaction().isOpen());
    }
    EXPECT_EQ(names(), "Monitori Kablovi");
}

TEST_F(CommitLoss, ACommitThatNeverArrivedIsSaidToHaveWrittenNothing) {
    ServerStore store(Link::to(proxy_.place()));
    for (int time = 0; time < 2; ++time) {
        store.transaction().beginWrite();
        insert(store, "Monitori");
        proxy_.hangUpAtQuestion("COMMIT");
        const Failure failure = failureOf([&] { store.transaction().commit(); });
        EXPECT_EQ(failure.number, dao::errDiskIo);
        EXPECT_TRUE(failure.says("nothing of it was written")) << failure.sentence;
        store.transaction().rollback();
        EXPECT_EQ(names(), time == 0 ? "" : "Stampaci");
        store.transaction().beginWrite();
        insert(store, "Stampaci");
        store.transaction().commit();
    }
    EXPECT_EQ(names(), "Stampaci Stampaci");
}

TEST_F(CommitLoss, AStoredQueryWhoseCommitWasLostIsKnownToHaveComeAbout) {
    ServerStore store(Link::to(proxy_.place()));
    for (const char* text : {"SELECT * FROM Grupe", "SELECT * FROM Grupe WHERE ID > 1"}) {
        store.transaction().beginWrite();
        store.storedQueries().writeQuery("Moje", text);
        proxy_.hangUpAtAnswer("COMMIT");
        store.transaction().commit();
        EXPECT_EQ(store.storedQueries().queryText("Moje"), text);
    }
    store.transaction().beginWrite();
    store.storedQueries().dropQuery("Moje");
    proxy_.hangUpAtQuestion("COMMIT");
    const Failure failure = failureOf([&] { store.transaction().commit(); });
    EXPECT_TRUE(failure.says("nothing of it was written")) << failure.sentence;
    store.transaction().rollback();
    EXPECT_TRUE(store.storedQueries().queryText("Moje"));
}

// Every copy of the program writes its own at each start and with each filter.
TEST_F(CommitLoss, StoredQueriesDoNotMakeTheOthersReadTheirRowsAnew) {
    ServerStore store(Link::to(proxy_.place()));
    ServerStore other(Link::to(database_.place()));
    const auto write = [&](const std::function<void()>& body) {
        store.transaction().beginWrite();
        body();
        store.transaction().commit();
        return other.rows().dataVersion();
    };
    const std::int64_t before = write([&] { insert(store, "Monitori"); });
    EXPECT_EQ(write([&] { store.storedQueries().writeQuery("Moje", "SELECT * FROM Grupe"); }), before);
    EXPECT_EQ(write([&] { store.storedQueries().dropQuery("Moje"); }), before);
    EXPECT_NE(write([&] {
                  insert(store, "Kablovi");
                  store.storedQueries().writeQuery("Moje", "SELECT * FROM Grupe");
              }),
              before);
}

// A change of one row is compared, written and committed by one statement.
class ChangeLoss : public CommitLoss {
 protected:
    void SetUp() override {
        CommitLoss::SetUp();
        store_.emplace(Link::to(proxy_.place()));
        store_->transaction().beginWrite();
        insert(*store_, "Monitori");
        store_->transaction().commit();
    }
    bool change(const char* from, const char* to) {
        const Value was(from);
        const Value is(to);
        return store_->rows().changeRow({"Grupe", 1, {{"Grupa", &was}}, {{"Grupa", &is}}});
    }

    std::optional<ServerStore> store_;
};

TEST_F(ChangeLoss, OfItsAnswerIsKnownToHaveComeAbout) {
    proxy_.hangUpAtAnswer("INSERT 0 1");
    EXPECT_TRUE(change("Monitori", "Kablovi"));
    EXPECT_EQ(names(), "Kablovi");
    EXPECT_TRUE(change("Kablovi", "Kutije"));
    EXPECT_EQ(names(), "Kutije");
}

TEST_F(ChangeLoss, BeforeItArrivedIsSaidToHaveWrittenNothing) {
    for (int time = 0; time < 2; ++time) {
        proxy_.hangUpAtQuestion("WITH changed");
        const Failure failure = failureOf([&] { change("Monitori", "Kablovi"); });
        EXPECT_EQ(failure.number, dao::errDiskIo);
        EXPECT_TRUE(failure.says("nothing of it was written")) << failure.sentence;
        EXPECT_EQ(names(), "Monitori");
    }
}

TEST_F(ChangeLoss, WhileIdleIsNotNoticed) {
    endAllConnections();
    EXPECT_TRUE(change("Monitori", "Kablovi"));
    EXPECT_EQ(names(), "Kablovi");
}

TEST_F(ChangeLoss, NothingIsWrittenOverWhatSomebodyElseWrote) {
    const auto version = [&] {
        return Connection(database_.place()).run("SELECT sum(version)::int8 FROM dao.writers").integer(0, 0);
    };
    const std::int64_t before = version();
    EXPECT_FALSE(change("Stampaci", "Kablovi"));
    EXPECT_EQ(names(), "Monitori");
    EXPECT_EQ(version(), before);
    EXPECT_TRUE(change("Monitori", "Kablovi"));
    EXPECT_EQ(version(), before + 1);
}

// Another workstation took this one's number long after its last writing.
TEST_F(CommitLoss, WhatCannotBeToldIsNotClaimed) {
    ServerStore store(Link::to(proxy_.place()));
    store.transaction().beginWrite();
    insert(store, "Monitori");
    Link& link = *Link::to(proxy_.place());
    link.writer().foreseeRaise(link.connection());
    const int number = link.writer().number(link.connection());
    store.transaction().rollback();
    Connection(database_.place())
        .run(
            "INSERT INTO dao.writers (number, version, changed, commits, mark, written)"
            " VALUES ($1, 5, now(), 5, 1, now())",
            Parameters().integer4(number));
    EXPECT_EQ(link.writer().wasCommitted(link.connection()), std::nullopt);
}

TEST_F(CommitLoss, AConnectionThatWasLostWhileIdleIsMadeAnewWithoutAWord) {
    ServerStore store(Link::to(database_.place()));
    EXPECT_EQ(store.counters().highestNumber("Grupe"), 0);
    endAllConnections();
    EXPECT_EQ(store.counters().highestNumber("Grupe"), 0);
    endAllConnections();
    store.transaction().beginWrite();
    insert(store, "Monitori");
    store.transaction().commit();
    endAllConnections();
    store.rowLocks()->lockRow("Grupe", 1);
    EXPECT_EQ(store.counters().highestNumber("Grupe"), 1);
    EXPECT_EQ(names(), "Monitori");
}

TEST_F(CommitLoss, WhatIsLeftOfALostTransactionIsNotWrittenAlone) {
    ServerStore store(Link::to(database_.place()));
    store.transaction().beginWrite();
    insert(store, "Monitori");
    endAllConnections();
    EXPECT_TRUE(failureOf([&] { insert(store, "Kablovi"); }).lost);
    EXPECT_FALSE(store.transaction().isOpen());
    const Failure failure = failureOf([&] { insert(store, "Kablovi"); });
    EXPECT_EQ(failure.number, dao::errDiskIo);
    EXPECT_TRUE(failure.says(kGone)) << failure.sentence;
    EXPECT_EQ(failureOf([&] { store.transaction().commit(); }).number, dao::errDiskIo);
    store.transaction().rollback();
    EXPECT_EQ(names(), "");
    store.transaction().beginWrite();
    insert(store, "Stampaci");
    store.transaction().commit();
    EXPECT_EQ(names(), "Stampaci");
}

}  // namespace
