#include "platform/dao/postgres/connection.h"
#include "platform/dao/breaking_off.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <atomic>
#include <chrono>
#include <cmath>
#include <future>
#include <limits>
#include <stdexcept>
#include <thread>

#include "failures.h"
#include "platform/dao/dbengine.h"
#include "platform/dao/limits.h"
#include "support/server_cluster.h"

using namespace std::chrono_literals;
using dao::postgres::Address;
using dao::postgres::Connection;
using dao::postgres::Parameters;
using dao::postgres::Patience;
using dao::postgres::Result;
using dao::postgres::TransactionState;
using dao::postgres::Type;

namespace {

class Connected : public ::testing::Test {
 protected:
    void TearDown() override { dao::driver::setLockTimeout(10'000); }

    std::int64_t number(const std::string& text) { return connection_.run(text).integer(0, 0); }
    std::string word(const std::string& text) { return std::string(connection_.run(text).text(0, 0)); }

    tests::ServerDatabase database_;
    Connection connection_{database_.place()};
};

using Values = Connected;
using Transactions = Connected;
using Statements = Connected;
using Refusals = Connected;
using Bounds = Connected;

double secondsOf(const std::function<void()>& work) {
    const auto begun = dao::postgres::Clock::now();
    work();
    return std::chrono::duration<double>(dao::postgres::Clock::now() - begun).count();
}

}  // namespace

TEST_F(Values, NumbersGoThereAndComeBack) {
    const Result back = connection_.run("SELECT $1, $2, $3, $4, $5, $6",
                                        Parameters()
                                            .integer8(std::numeric_limits<std::int64_t>::min())
                                            .integer4(-2'000'000'000)
                                            .integer2(-32'000)
                                            .real8(0.1)
                                            .real4(0.1F)
                                            .boolean(true));
    ASSERT_EQ(back.rows(), 1);
    ASSERT_EQ(back.columns(), 6);
    EXPECT_EQ(back.integer(0, 0), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(back.integer(0, 1), -2'000'000'000);
    EXPECT_EQ(back.integer(0, 2), -32'000);
    EXPECT_EQ(back.real(0, 3), 0.1);
    EXPECT_EQ(back.real(0, 4), static_cast<double>(0.1F));
    EXPECT_TRUE(back.boolean(0, 5));
    EXPECT_EQ(back.type(0), static_cast<unsigned>(Type::kInteger8));
    EXPECT_EQ(back.type(2), static_cast<unsigned>(Type::kInteger2));
    EXPECT_EQ(back.type(4), static_cast<unsigned>(Type::kReal4));
}

// What the server has understood, not only what it gives back.
TEST_F(Values, TheServerReadsThemAsTheyAreMeant) {
    EXPECT_EQ(connection_.run("SELECT ($1 - 1)::text", Parameters().integer4(8)).text(0, 0), "7");
    EXPECT_EQ(connection_.run("SELECT $1::text", Parameters().real8(-2.5)).text(0, 0), "-2.5");
    EXPECT_EQ(connection_.run("SELECT $1::text", Parameters().boolean(false)).text(0, 0), "false");
    EXPECT_EQ(connection_.run("SELECT length($1)::int8", Parameters().text("Čačak")).integer(0, 0), 5);
}

TEST_F(Values, TextsAndBytesGoThereAndComeBack) {
    const std::string text = "Šljiva'; DROP TABLE clients; -- \\ \"\n";
    const std::string bytes("\0\x01\xFF\\", 4);
    const Result back = connection_.run("SELECT $1, $2, $3", Parameters().text(text).bytes(bytes).text(""));
    EXPECT_EQ(back.text(0, 0), text);
    EXPECT_EQ(std::string(back.bytes(0, 1).begin(), back.bytes(0, 1).end()), bytes);
    EXPECT_EQ(back.text(0, 2), "");
    EXPECT_FALSE(back.isNull(0, 2));
}

TEST_F(Values, NullOfEachTypeIsNull) {
    for (const Type type : {Type::kBoolean, Type::kBytes, Type::kInteger8, Type::kInteger2, Type::kInteger4,
                            Type::kText, Type::kReal4, Type::kReal8, Type::kTexts, Type::kIntegers8}) {
        const Result back = connection_.run("SELECT $1, $2", Parameters().null(type).integer8(3));
        EXPECT_TRUE(back.isNull(0, 0)) << static_cast<unsigned>(type);
        EXPECT_EQ(back.type(0), static_cast<unsigned>(type));
        EXPECT_EQ(back.integer(0, 1), 3);
    }
}

TEST_F(Values, ArraysGoThereAndComeBack) {
    const std::vector<std::int64_t> numbers{5, -1, std::numeric_limits<std::int64_t>::max()};
    EXPECT_EQ(connection_.run("SELECT $1", Parameters().integers8(numbers)).integers(0, 0), numbers);
    EXPECT_EQ(connection_.run("SELECT ($1)[1]", Parameters().integers8(numbers)).integer(0, 0), 5);
    EXPECT_TRUE(connection_.run("SELECT $1", Parameters().integers8({})).integers(0, 0).empty());
    const std::vector<std::string> words{"a,b", "", "{\"Ž\"}"};
    EXPECT_EQ(connection_.run("SELECT array_to_string($1, '|')", Parameters().texts(words)).text(0, 0),
              "a,b||{\"Ž\"}");
    EXPECT_EQ(connection_.run("SELECT cardinality($1)", Parameters().texts({})).integer(0, 0), 0);
}

TEST_F(Values, KeysComeAsOneArray) {
    connection_.execute("CREATE DOMAIN number AS int4");
    const Result answer = connection_.run(
        "SELECT ARRAY[7, NULL, -2]::int4[], ARRAY[9007199254740993]::int8[], ARRAY(SELECT 5::number),"
        " ARRAY[]::int4[], ARRAY['abcd'], ARRAY[[1],[2]], ARRAY[1]::int2[], 1");
    std::vector<std::int64_t> keys{1};
    for (int column = 0; column < 4; ++column) {
        answer.appendKeys(0, column, 99, keys);
    }
    EXPECT_EQ(keys, (std::vector<std::int64_t>{1, 7, 99, -2, 9007199254740993, 5}));
    for (int column = 4; column < 8; ++column) {
        EXPECT_EQ(failureOf([&] { answer.appendKeys(0, column, 0, keys); }).number, dao::errTypeMismatch)
            << column;
    }
    EXPECT_EQ(failureOf([&] { answer.appendKeys(1, 0, 0, keys); }).number, dao::errInvalidUseOfNull);
    EXPECT_EQ(keys.size(), 6U);
}

TEST_F(Values, AReaderRefusesWhatItIsNotFor) {
    const Result row = connection_.run("SELECT 'a'::text, 1::int4, NULL::int4, 1.5::numeric");
    EXPECT_EQ(failureOf([&] { row.integer(0, 0); }).number, dao::errTypeMismatch);
    EXPECT_EQ(failureOf([&] { row.text(0, 1); }).number, dao::errTypeMismatch);
    EXPECT_EQ(failureOf([&] { row.real(0, 1); }).number, dao::errTypeMismatch);
    EXPECT_EQ(failureOf([&] { row.real(0, 3); }).number, dao::errTypeMismatch);
    EXPECT_EQ(failureOf([&] { row.boolean(0, 1); }).number, dao::errTypeMismatch);
    EXPECT_EQ(failureOf([&] { row.bytes(0, 0); }).number, dao::errTypeMismatch);
    EXPECT_EQ(failureOf([&] { row.integers(0, 1); }).number, dao::errTypeMismatch);
    EXPECT_EQ(failureOf([&] { row.integer(0, 2); }).number, dao::errInvalidUseOfNull);
    EXPECT_EQ(failureOf([&] { row.integer(1, 1); }).number, dao::errInvalidUseOfNull);
    const Result holes = connection_.run("SELECT ARRAY[1, NULL]::int8[], ARRAY[[1],[2]]::int8[]");
    EXPECT_EQ(failureOf([&] { holes.integers(0, 0); }).number, dao::errInvalidUseOfNull);
    EXPECT_EQ(failureOf([&] { holes.integers(0, 1); }).number, dao::errTypeMismatch);
}

TEST_F(Values, WrittenRowsAreCounted) {
    connection_.execute("CREATE TABLE t(a int)");
    EXPECT_EQ(connection_.run("INSERT INTO t SELECT generate_series(1, 7)").affected(), 7);
    EXPECT_EQ(connection_.run("UPDATE t SET a = 0 WHERE a > 5").affected(), 2);
    EXPECT_EQ(connection_.run("DELETE FROM t WHERE a = 99").affected(), 0);
    EXPECT_EQ(connection_.run("SELECT a FROM t").affected(), 7);
}

TEST_F(Transactions, TheirStateIsKnown) {
    EXPECT_EQ(connection_.transactionState(), TransactionState::kNone);
    connection_.execute("BEGIN");
    EXPECT_EQ(connection_.transactionState(), TransactionState::kOpen);
    EXPECT_THROW(connection_.run("SELECT 1 / 0"), dao::Error);
    EXPECT_EQ(connection_.transactionState(), TransactionState::kFailed);
    EXPECT_THROW(connection_.run("SELECT 1"), dao::Error);
    connection_.execute("ROLLBACK");
    EXPECT_EQ(connection_.transactionState(), TransactionState::kNone);
    EXPECT_EQ(number("SELECT 1::int8"), 1);
}

TEST_F(Transactions, AScriptStandsOrFallsAsAWhole) {
    EXPECT_THROW(connection_.execute("CREATE TABLE t(a int); SELECT 1 / 0"), dao::Error);
    EXPECT_TRUE(connection_.run("SELECT to_regclass('t')::text").isNull(0, 0));
    connection_.execute("CREATE TABLE t(a int); INSERT INTO t VALUES (4)");
    EXPECT_EQ(number("SELECT a FROM t"), 4);
}

TEST_F(Statements, AskedAgainTakesOneRoundTrip) {
    const std::int64_t before = connection_.roundTrips();
    connection_.run("SELECT $1", Parameters().integer8(1));
    EXPECT_EQ(connection_.roundTrips(), before + 1);  // prepared and run in one
    EXPECT_EQ(connection_.run("SELECT $1", Parameters().integer8(2)).integer(0, 0), 2);
    EXPECT_EQ(connection_.roundTrips(), before + 2);
}

TEST_F(Statements, TheSameTextWithAnotherTypeIsAnotherStatement) {
    EXPECT_EQ(connection_.run("SELECT $1", Parameters().integer8(1)).integer(0, 0), 1);
    EXPECT_EQ(connection_.run("SELECT $1", Parameters().text("one")).text(0, 0), "one");
    EXPECT_EQ(connection_.run("SELECT $1", Parameters().integer8(2)).integer(0, 0), 2);
}

TEST_F(Statements, ThoseUsedLastStayPrepared) {
    const std::string prepared = "SELECT count(*) FROM pg_prepared_statements";
    for (int i = 0; i < 150; ++i) {
        EXPECT_EQ(number("SELECT " + std::to_string(i) + "::int8"), i);
        connection_.run("SELECT 'often'");
    }
    EXPECT_LE(number(prepared), 65);
    EXPECT_GE(number(prepared), 60);
    const std::int64_t before = connection_.roundTrips();
    connection_.run("SELECT 'often'");
    connection_.run("SELECT 149::int8");
    EXPECT_EQ(connection_.roundTrips(), before + 2);
    EXPECT_EQ(number("SELECT 0::int8"), 0);  // long gone
}

TEST_F(Statements, AFailedTransactionCanBeRolledBackWhenManyStatementsHaveLeft) {
    for (int i = 0; i < 64; ++i) {
        number("SELECT " + std::to_string(i) + "::int8");
    }
    connection_.execute("BEGIN");
    number("SELECT 64::int8");
    EXPECT_THROW(connection_.run("SELECT 1 / 0"), dao::Error);
    connection_.run("ROLLBACK");
    EXPECT_EQ(number("SELECT 65::int8"), 65);
    EXPECT_EQ(connection_.transactionState(), TransactionState::kNone);
}

// Another workstation may give a table a new field at any time.
TEST_F(Statements, ATableChangedByAnotherIsReadAnew) {
    connection_.execute("CREATE TABLE t(a int8); INSERT INTO t VALUES (1)");
    EXPECT_EQ(connection_.run("SELECT * FROM t").columns(), 1);
    Connection(database_.place()).execute("ALTER TABLE t ADD COLUMN b int8");
    EXPECT_EQ(connection_.run("SELECT * FROM t").columns(), 2);
    Connection(database_.place()).execute("ALTER TABLE t ADD COLUMN c int8");
    connection_.execute("BEGIN");
    EXPECT_THROW(connection_.run("SELECT * FROM t"), dao::Error);
    connection_.execute("ROLLBACK");
    EXPECT_EQ(connection_.run("SELECT * FROM t").columns(), 3);
}

TEST_F(Refusals, HaveTheEnginesNumbers) {
    const std::vector<std::pair<std::string, int>> told{
        {"22003", dao::errOverflow},         {"25006", dao::errReadOnly},
        {"28P01", dao::errInvalidPassword},  {"28000", dao::errInvalidPassword},
        {"3D000", dao::errFileNotFound},     {"40001", dao::errDataChanged},
        {"40P01", dao::errLocked},           {"42501", dao::errMissingRight},
        {"53100", dao::errNotEnoughSpace},   {"55P03", dao::errLocked},
        {"57014", dao::errInvalidOperation}, {"XX000", dao::errInvalidOperation},
    };
    for (const auto& [state, expected] : told) {
        const Failure failure = failureOf([&, &code = state] {
            connection_.execute("DO $$ BEGIN RAISE EXCEPTION 'a hitch' USING ERRCODE = '" + code +
                                "'; END $$");
        });
        EXPECT_EQ(failure.number, expected) << state;
        EXPECT_FALSE(failure.lost) << state;
    }
    EXPECT_FALSE(connection_.lost());
}

TEST_F(Refusals, WithoutANumberComeInTheServersWords) {
    const Failure failure = failureOf([&] { connection_.run("SELECT nonsense"); });
    EXPECT_EQ(failure.number, dao::errInvalidOperation);
    EXPECT_EQ(failure.sentence, "Invalid operation: column \"nonsense\" does not exist.");
    ASSERT_EQ(dao::DBEngine::Errors().size(), 1U);
    EXPECT_EQ(dao::DBEngine::Errors()[0].Description, failure.sentence);
}

TEST_F(Refusals, OfKeysAndRelations) {
    connection_.execute(
        "CREATE TABLE clients(id int PRIMARY KEY);"
        "CREATE TABLE computers(id int, client int REFERENCES clients);"
        "INSERT INTO clients VALUES (1), (2); INSERT INTO computers VALUES (1, 1)");
    const auto numberOf = [&](const std::string& text) {
        return failureOf([&] { connection_.run(text); }).number;
    };
    EXPECT_EQ(numberOf("INSERT INTO clients VALUES (1)"), dao::errDuplicateKey);
    EXPECT_EQ(numberOf("INSERT INTO computers VALUES (2, 7)"), dao::errRelatedRecordRequired);
    EXPECT_EQ(numberOf("UPDATE computers SET client = 7"), dao::errRelatedRecordRequired);
    EXPECT_EQ(numberOf("DELETE FROM clients WHERE id = 1"), dao::errRelatedRecordExists);
    EXPECT_EQ(numberOf("UPDATE clients SET id = 9 WHERE id = 1"), dao::errRelatedRecordExists);
}

TEST_F(Refusals, NameTheMissingRight) {
    const std::string role = database_.place().dbname + " \"guest\"";
    connection_.execute("CREATE TABLE clients(id int); CREATE ROLE \"" + database_.place().dbname +
                        " \"\"guest\"\"\"");
    {
        Connection guest(database_.place(), {role});
        EXPECT_EQ(guest.run("SELECT current_user").text(0, 0), role);
        const Failure failure = failureOf([&] { guest.run("SELECT * FROM clients"); });
        EXPECT_EQ(failure.number, dao::errMissingRight);
        EXPECT_EQ(failure.sentence,
                  "You have no permission for this on the server: permission denied for table clients.");
    }
    connection_.execute("DROP ROLE \"" + database_.place().dbname + " \"\"guest\"\"\"");
}

TEST_F(Refusals, OfAQuestionThatCannotBeAsked) {
    Parameters many;
    for (int i = 0; i < 70'000; ++i) {
        many.integer2(1);
    }
    EXPECT_EQ(failureOf([&] { connection_.run("SELECT 1", many); }).number, dao::errInvalidOperation);
    EXPECT_EQ(
        failureOf([&] { connection_.run("SELECT $1", Parameters().text(std::string("a\0b", 3))); }).number,
        dao::errInvalidOperation);
    EXPECT_EQ(number("SELECT 1::int8"), 1);
}

TEST_F(Bounds, ALockIsNotWaitedForLongerThanTheEngineDoes) {
    dao::driver::setLockTimeout(300);
    Connection other(database_.place());
    other.run("SELECT pg_advisory_lock(7)");
    Failure failure;
    const double seconds =
        secondsOf([&] { failure = failureOf([&] { connection_.run("SELECT pg_advisory_lock(7)"); }); });
    EXPECT_EQ(failure.number, dao::errLocked);
    EXPECT_GE(seconds, 0.29);
    EXPECT_LT(seconds, 8.0);
    other.run("SELECT pg_advisory_unlock(7)");
    connection_.run("SELECT pg_advisory_lock(7)");
}

TEST_F(Bounds, ALockIsBoundedInLongWorkToo) {
    dao::driver::setLockTimeout(200);
    Connection other(database_.place());
    other.run("SELECT pg_advisory_lock(7)");
    const auto end = dao::postgres::Clock::now() + 10s;
    const Patience patience = Patience::whileTrue([&] { return dao::postgres::Clock::now() < end; });
    EXPECT_EQ(failureOf([&] { connection_.run("SELECT pg_advisory_lock(7)", {}, patience); }).number,
              dao::errLocked);
}

TEST_F(Bounds, AStatementThatTakesTooLongIsStopped) {
    Failure failure;
    const double seconds = secondsOf(
        [&] { failure = failureOf([&] { connection_.run("SELECT pg_sleep(60)", {}, Patience(300ms)); }); });
    EXPECT_EQ(failure.number, dao::errLocked);
    EXPECT_GE(seconds, 0.29);
    EXPECT_LT(seconds, 30.0);
    // The next one is not hit by what was meant for this.
    for (int i = 0; i < 20; ++i) {
        EXPECT_EQ(number("SELECT 5::int8 FROM pg_sleep(0.01)"), 5);
    }
}

// The server's word counts, also where it was being stopped.
TEST_F(Bounds, WhatElseWentWrongWhileStoppingIsTold) {
    const Failure failure = failureOf([&] {
        connection_.execute(
            "DO $$ BEGIN PERFORM pg_sleep(60);"
            " EXCEPTION WHEN query_canceled THEN RAISE EXCEPTION 'full' USING ERRCODE = '53100'; END $$",
            Patience(300ms));
    });
    EXPECT_EQ(failure.number, dao::errNotEnoughSpace);
}

TEST_F(Bounds, LongWorkGoesOnUntilItIsGivenUp) {
    int asked = 0;
    const Patience patience = Patience::whileTrue([&] { return ++asked < 5; });
    Failure failure;
    const double seconds = secondsOf(
        [&] { failure = failureOf([&] { connection_.run("SELECT pg_sleep(60)", {}, patience); }); });
    EXPECT_EQ(failure.number, dao::errCancelled);
    EXPECT_EQ(asked, 5);
    EXPECT_GE(seconds, 0.35);
    EXPECT_LT(seconds, 30.0);
    EXPECT_EQ(number("SELECT 1::int8"), 1);
}

// A server that has too much to do to hear of it, say. To everybody else it is one that gives no answer. It
// is left while it sleeps: before, it would hear. The server signals a cancelling to the process and to its
// group: it may come twice.
TEST_F(Bounds, WhoeverLeavesHasLeftThoughTheServerGoesOn) {
    const std::string deaf =
        "DO $$ BEGIN"
        " BEGIN PERFORM pg_sleep(60); EXCEPTION WHEN query_canceled THEN PERFORM pg_sleep(60); END;"
        " EXCEPTION WHEN query_canceled THEN PERFORM pg_sleep(60); END $$";
    dao::driver::setLockTimeout(60'000);
    Connection watch(database_.place());
    const auto sleeps = [&](int pid) {
        return watch
            .run("SELECT wait_event IS NOT DISTINCT FROM 'PgSleep' FROM pg_stat_activity WHERE pid = $1",
                 Parameters().integer4(pid))
            .boolean(0, 0);
    };
    {
        std::atomic<bool> left{false};
        const dao::Leavable work(left);
        const auto leaving = std::async(std::launch::async, [&, pid = connection_.backendPid()] {
            for (int look = 0; look < 3'000 && !sleeps(pid); ++look) {
                std::this_thread::sleep_for(10ms);
            }
            left = true;
        });
        EXPECT_EQ(failureOf([&] { connection_.execute(deaf, Patience()); }).number, dao::errCancelled);
    }
    Connection other(database_.place());
    const Patience untilItSleeps =
        Patience::whileTrue([&, pid = other.backendPid()] { return !sleeps(pid); });
    EXPECT_EQ(failureOf([&] { other.execute(deaf, untilItSleeps); }).number, dao::errDiskIo);
}

TEST_F(Bounds, LongWorkOutlivesTheLockTimeout) {
    dao::driver::setLockTimeout(100);
    const Patience patience = Patience::whileTrue([] { return true; });
    EXPECT_EQ(connection_.run("SELECT 3::int8 FROM pg_sleep(1)", {}, patience).integer(0, 0), 3);
}

TEST_F(Bounds, WhatTheAskingThrowsComesOutWhenTheServerHasStopped) {
    const Patience patience = Patience::whileTrue([]() -> bool { throw std::domain_error("enough"); });
    EXPECT_THROW(connection_.run("SELECT pg_sleep(60)", {}, patience), std::domain_error);
    EXPECT_EQ(number("SELECT 1::int8"), 1);
}

TEST_F(Bounds, TheServersOwnBoundOnStatementsDoesNotCount) {
    Address place = database_.place();
    connection_.execute("ALTER DATABASE " + place.dbname + " SET statement_timeout = 50");
    Connection other(place);
    EXPECT_EQ(other.run("SELECT 1::int8 FROM pg_sleep(0.3)").integer(0, 0), 1);
}

TEST_F(Connected, SaysWhoItIs) {
    EXPECT_EQ(word("SHOW application_name"), "Tarvello");
    EXPECT_EQ(number("SELECT pg_backend_pid()"), connection_.backendPid());
    EXPECT_GE(connection_.serverVersion(), 150000);
    EXPECT_FALSE(connection_.lost());
}
