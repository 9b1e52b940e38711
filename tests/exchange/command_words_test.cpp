#include <gmock/gmock.h>

#include <QFile>
#include <QRegularExpression>

#include "exchange/command.h"

namespace {

// What the command understands must be found by whoever looks for it.
class CommandWords : public CommandFixture {
 protected:
    QString help(const QStringList& words) const {
        const Answer answer = run(words + QStringList{"--help"});
        EXPECT_EQ(answer.status, 0);
        return QString::fromStdString(answer.out);
    }
    QStringList verbs() const {
        QStringList found;
        const QString all = help({});
        const QRegularExpression line("^  ([a-z][a-z-]*) ", QRegularExpression::MultilineOption);
        const qsizetype begin = all.indexOf("Subcommands:");
        EXPECT_GE(begin, 0) << all.toStdString();
        for (const auto& match : line.globalMatch(all.mid(begin))) {
            found.push_back(match.captured(1));
        }
        return found;
    }
    QStringList optionsOf(const QString& verb) const {
        QStringList found;
        static const QRegularExpression option("--[a-z][a-z-]*");
        for (const auto& match : option.globalMatch(help({verb}).section("Options:", 1))) {
            found.push_back(match.captured(0));
        }
        return found;
    }
    static QString textOf(const char* file) {
        QFile text(QString::fromUtf8(tests::kSourceFolder) + "/../" + file);
        EXPECT_TRUE(text.open(QIODevice::ReadOnly)) << file;
        return QString::fromUtf8(text.readAll());
    }
};

TEST_F(CommandWords, EachVerbAndOptionStandsInTheManualPage) {
    const QString page = textOf("docs/tarvello-data.1").replace("\\-", "-");
    ASSERT_GE(verbs().size(), 9);
    for (const QString& verb : verbs()) {
        EXPECT_TRUE(page.contains("\n.SS " + verb + ' ')) << verb.toStdString();
        for (const QString& option : optionsOf(verb)) {
            EXPECT_TRUE(page.contains(option)) << option.toStdString();
        }
    }
}

// Asks bash itself what it offers behind these words.
TEST_F(CommandWords, EachVerbAndOptionIsOfferedByTheTabKey) {
    const auto offered = [](const QString& line) {
        QProcess bash;
        bash.start(
            "bash",
            {"-c",
             "source \"$1\"; read -ra COMP_WORDS <<<\"$2\"; COMP_WORDS+=(\"$3\"); "
             "COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _tarvello_data; printf '%s\\n' \"${COMPREPLY[@]}\"",
             "bash", QString::fromUtf8(tests::kSourceFolder) + "/../resources/package/tarvello-data.bash",
             line, line == "tarvello-data" ? "" : "--"});
        EXPECT_TRUE(bash.waitForFinished(30000));
        return QString::fromUtf8(bash.readAllStandardOutput()).split('\n');
    };
    const QStringList first = offered("tarvello-data");
    for (const QString& verb : verbs()) {
        EXPECT_TRUE(first.contains(verb)) << verb.toStdString();
        const QStringList options = offered("tarvello-data " + verb);
        for (const QString& option : optionsOf(verb)) {
            EXPECT_TRUE(options.contains(option)) << verb.toStdString() << option.toStdString();
        }
    }
}

}  // namespace
