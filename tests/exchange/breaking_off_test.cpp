#include <gmock/gmock.h>

#include <QDir>
#include <csignal>

#include "exchange/command.h"

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
    // Sends the signal as soon as something stands in the folder for what is made.
    Answer breakOff(const QStringList& words, int signal) const {
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
        while (namesIn("made").isEmpty() && command.state() != QProcess::NotRunning) {
            command.waitForFinished(1);
        }
        ::kill(static_cast<pid_t>(command.processId()), signal);
        EXPECT_TRUE(command.waitForFinished(120000));
        return answerOf(command);
    }
    void expectNothingLeft(const QStringList& words) const {
        for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
            const Answer answer = breakOff(words, signal);
            EXPECT_EQ(answer.status, 1) << answer.out;
            EXPECT_THAT(answer.errors, HasSubstr("Operation canceled by user."));
            EXPECT_EQ(namesIn("made"), QStringList());
            EXPECT_EQ(namesIn("temp"), QStringList());
        }
    }
    // What the killed one has left is gone after the next run.
    void expectSweptByTheNextRun(const QStringList& words, const QStringList& made) const {
        EXPECT_EQ(breakOff(words, SIGKILL).status, -1);
        EXPECT_NE(namesIn("made"), QStringList()) << "it had begun";
        const Answer answer = run(words);
        EXPECT_EQ(answer.status, 0) << answer.errors;
        EXPECT_EQ(namesIn("made"), made);
        EXPECT_EQ(namesIn("temp"), QStringList());
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

}  // namespace
