#include <gmock/gmock.h>

#include <QDir>
#include <QFile>
#include <csignal>
#include <functional>

#include "exchange/command.h"
#include "platform/dao/postgres/connection.h"

namespace {

using testing::HasSubstr;

// The command is asked to end, or killed, amid the making of something large.
class BreakingOff : public CommandFixture {
 protected:
    void SetUp() override {
        CommandFixture::SetUp();
        for (const char* const name : {"made", "temp"}) {
            ASSERT_TRUE(QDir(folder_.path()).mkdir(name));
        }
        QProcess writer;
        writer.start("/usr/bin/python3",
                     {QString::fromUtf8(tests::kSourceFolder) + "/exchange/write_old_shop.py", "4",
                      at("Old.mdb"), "--services", "20000"});
        ASSERT_TRUE(writer.waitForFinished(120000));
        ASSERT_EQ(writer.exitCode(), 0);
        before_ = qgetenv("TMPDIR");
        qputenv("TMPDIR", at("temp").toLocal8Bit());
    }
    void TearDown() override {
        if (before_.isNull()) {
            qunsetenv("TMPDIR");
        } else {
            qputenv("TMPDIR", before_);
        }
        CommandFixture::TearDown();
    }
    QStringList namesIn(const char* folder) const {
        return QDir(at(folder))
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }
    // Sends the signal as soon as the command has begun: unless told otherwise, as soon as something new
    // stands in the folder for what is made.
    using Begun = std::function<bool()>;
    Begun somethingNewIn(const char* folder) const {
        return [this, folder, before = namesIn(folder)] { return namesIn(folder) != before; };
    }
    Answer breakOff(const QStringList& words, int signal) const {
        return breakOff(words, signal, somethingNewIn("made"));
    }
    Answer breakOff(const QStringList& words, int signal, const Begun& begun) const {
        QProcess command;
        prepare(command);
        // Whoever runs the tests in the background has switched some of them off.
        command.setChildProcessModifier([] {
            for (const int each : {SIGINT, SIGTERM, SIGHUP}) {
                std::signal(each, SIG_DFL);
            }
        });
        command.start(program(), words);
        EXPECT_TRUE(command.waitForStarted());
        while (!begun() && command.state() != QProcess::NotRunning) {
            command.waitForFinished(1);
        }
        if (const auto process = static_cast<pid_t>(command.processId()); process > 0) {
            ::kill(process, signal);
            EXPECT_TRUE(command.waitForFinished(120000));
        }
        return answerOf(command);
    }
    static void expectBrokenOff(const Answer& answer) {
        EXPECT_EQ(answer.status, 1) << answer.out;
        EXPECT_THAT(answer.errors, HasSubstr("Operation canceled by user."));
    }
    void expectNothingLeft(const QStringList& words, const char* folder = "made") const {
        const QStringList before = namesIn("made");
        for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
            expectBrokenOff(breakOff(words, signal, somethingNewIn(folder)));
            EXPECT_EQ(namesIn("made"), before);
            EXPECT_EQ(namesIn("temp"), QStringList());
        }
    }
    // A large shop where the tests look for what is new.
    QString largeShop() const {
        const QString shop = at("made/Shop.mdb");
        EXPECT_EQ(run({"take-over", at("Old.mdb"), shop}).status, 0);
        QFile::remove(at("made/take-over.txt"));
        return shop;
    }
    static QByteArray bytesOf(const QString& path) {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }
    bool isMaking() const { return !QDir(at("made")).entryList({"*.part*"}).isEmpty(); }
    // What the killed one has left is gone after the next run.
    void expectSweptByTheNextRun(const QStringList& words, const QStringList& made) const {
        EXPECT_EQ(breakOff(words, SIGKILL).status, -1);
        EXPECT_NE(namesIn("made"), QStringList()) << "it had begun";
        const Answer answer = run(words);
        EXPECT_EQ(answer.status, 0) << answer.errors;
        EXPECT_EQ(namesIn("made"), made);
        EXPECT_EQ(namesIn("temp"), QStringList());
    }
    // However the verb is broken off, the shop is what it was before, and the verb can still be done.
    using Break = std::function<void(const QStringList& words)>;
    void expectShopAsItWas(const char* verb, const QString& shop, const Break& breakIt) const {
        const QStringList words{verb, shop};
        const QByteArray before = bytesOf(shop);
        breakIt(words);
        EXPECT_EQ(namesIn("made"), QStringList("Shop.mdb"));
        EXPECT_EQ(bytesOf(shop), before);
        EXPECT_EQ(run(words).status, 0);
    }
    void breakOffAmidMaking(const QStringList& words) const {
        expectBrokenOff(breakOff(words, SIGINT, [this] { return isMaking(); }));
    }

 private:
    QByteArray before_;
};

TEST_F(BreakingOff, TakeOverLeavesNothing) {
    const QStringList words{"take-over", at("Old.mdb"), at("made/New.mdb")};
    expectNothingLeft(words);
    expectSweptByTheNextRun(words, {"New.mdb", "take-over.txt"});
}

TEST_F(BreakingOff, ExportAndImportLeaveNothing) {
    ASSERT_EQ(run({"take-over", at("Old.mdb"), path()}).status, 0);
    const QStringList out{"export", path(), at("made/out")};
    expectNothingLeft(out);
    expectNothingLeft({"export", path(), at("made/out.xlsx")});
    expectSweptByTheNextRun(out, {"out"});
    ASSERT_TRUE(QDir(folder_.path()).rename("made/out", "out"));
    const QStringList in{"import", at("made/New.mdb"), at("out")};
    expectNothingLeft(in);
    expectSweptByTheNextRun(in, {"New.mdb"});
}

TEST_F(BreakingOff, CheckLeavesNothing) {
    expectShopAsItWas("check", largeShop(),
                      [this](const QStringList& words) { expectNothingLeft(words, "temp"); });
}

TEST_F(BreakingOff, CompactLeavesTheFileAsItWas) {
    expectShopAsItWas("compact", largeShop(), [this](const QStringList& words) {
        expectNothingLeft(words);
        breakOffAmidMaking(words);
    });
}

TEST_F(BreakingOff, RepairLeavesASoundFileAsItWas) {
    expectShopAsItWas("repair", largeShop(), [this](const QStringList& words) { expectNothingLeft(words); });
}

TEST_F(BreakingOff, RepairLeavesADamagedFileAsItWas) {
    constexpr qint64 kPage = 4096;
    const QString shop = largeShop();
    {
        QFile file(shop);
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        ASSERT_TRUE(file.seek(file.size() / kPage / 2 * kPage));
        ASSERT_EQ(file.write(QByteArray(kPage, 'x')), kPage);
    }
    expectShopAsItWas("repair", shop, [this](const QStringList& words) { breakOffAmidMaking(words); });
    EXPECT_EQ(namesIn("made"), QStringList({"Shop.damaged.mdb", "Shop.mdb"}));
}

// The server works for the command there, and waits for a table that somebody holds.
TEST_F(BreakingOff, CompactAndRepairStopTheServer) {
    deliverOnServer();
    dao::postgres::Connection colleague(database().place());
    colleague.execute("BEGIN; LOCK TABLE shop.\"Customers\" IN ROW EXCLUSIVE MODE");
    dao::postgres::Connection keeper(database().place());
    const auto waits = [&] {
        return keeper
                   .run(
                       "SELECT count(*) FROM pg_stat_activity"
                       " WHERE datname = current_database() AND wait_event_type = 'Lock'")
                   .integer(0, 0) > 0;
    };
    for (const char* const verb : {"compact", "repair"}) {
        expectBrokenOff(breakOff({verb, path()}, SIGINT, waits));
        EXPECT_FALSE(waits()) << verb;
    }
    colleague.execute("ROLLBACK");
    EXPECT_EQ(run({"repair", path()}).status, 0);
}

}  // namespace
