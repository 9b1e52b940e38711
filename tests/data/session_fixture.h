#pragma once

#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#include <QDir>
#include <QFile>
#include <algorithm>
#include <functional>
#include <random>
#include <string>

#include "support/fixture.h"
#include "support/second_process.h"

// What the tests of the session do to a shop's files.
class SessionFixture : public DeliveredFixture {
 protected:
    struct Said {
        QString text;
        platform::BoxButtons buttons;
    };

    std::string file() const { return databaseFile().toStdString(); }
    static std::string connect() { return connectText().toStdString(); }
    static constexpr int kPage = 4096;

    void expectBox(int index, const QString& text, platform::BoxButtons buttons) {
        ASSERT_GT(boxes.asked.size(), index);
        const platform::Box& box = boxes.asked[index];
        EXPECT_EQ(box.text, text) << box.text.toStdString();
        EXPECT_EQ(box.title, "Tarvello");
        EXPECT_EQ(box.icon, platform::BoxIcon::Exclamation);
        EXPECT_EQ(box.buttons, buttons);
    }
    void expectBoxes(const QList<Said>& expected) {
        ASSERT_EQ(boxes.asked.size(), expected.size());
        for (int i = 0; i < static_cast<int>(expected.size()); ++i) {
            expectBox(i, expected[i].text, expected[i].buttons);
        }
    }

    static QByteArray bytesOf(const QString& name) {
        QFile text(name);
        EXPECT_TRUE(text.open(QIODevice::ReadOnly)) << name.toStdString();
        return text.readAll();
    }
    static void write(const QString& name, const QByteArray& bytes) {
        QFile text(name);
        ASSERT_TRUE(text.open(QIODevice::WriteOnly));
        text.write(bytes);
    }
    static void overwrite(const QString& name, qint64 at, const QByteArray& bytes) {
        QFile text(name);
        ASSERT_TRUE(text.open(QIODevice::ReadWrite));
        ASSERT_TRUE(text.seek(at));
        ASSERT_EQ(text.write(bytes), bytes.size());
    }
    static QByteArray rubbish(qsizetype size) {
        std::mt19937 random(5);
        QByteArray bytes(size, '\0');
        std::generate(bytes.begin(), bytes.end(), [&] { return static_cast<char>(random()); });
        return bytes;
    }

    void removeDatabase() { ASSERT_TRUE(QFile::remove(databaseFile())); }
    QString moveDatabaseTo(const QString& folder, const QString& name) {
        QDir().mkpath(path(folder));
        EXPECT_TRUE(QFile::rename(databaseFile(), path(folder) + "/" + name));
        return path(folder) + "/" + name;
    }

    bool opens() {
        try {
            dao::DBEngine::OpenDatabase(file(), false, false, connect()).Close();
            return true;
        } catch (const dao::Error&) {
            return false;
        }
    }

    // A backup of the present file in which that client stands; the file itself is without him again.
    void makeBackupWithClient(const QString& surname) {
        const int client = addClient(surname);
        closeDatabases();
        QString reason;
        ASSERT_TRUE(BackupDatabase(reason)) << reason.toStdString();
        openDatabase().Execute("DELETE * FROM Customers WHERE CustID=" + std::to_string(client));
        closeDatabases();
    }
    int clientsNamed(const std::string& surname) {
        const int count = countRows("SELECT * FROM Customers WHERE Surname='" + surname + "'");
        closeDatabases();
        return count;
    }
    void fillWithClients(int count, std::size_t commentLength = 300) {
        dao::DBEngine::BeginTrans();
        for (int i = 0; i < count; ++i) {
            addClient("Peric" + QString::number(i), "Pera", {{"Comments", std::string(commentLength, 'x')}});
        }
        dao::DBEngine::CommitTrans();
        closeDatabases();
    }

    // Overwrites one page, the first behind the head that the file cannot be opened without.
    void damageAPage() {
        const QByteArray whole = bytesOf(databaseFile());
        for (qint64 at = kPage; at < whole.size(); at += kPage) {
            overwrite(databaseFile(), at, rubbish(kPage));
            if (!opens()) {
                return;
            }
            write(databaseFile(), whole);
        }
        FAIL() << "the file opens whichever page is damaged";
    }

    void spoilFile(const QString& name, const std::string& how) {
        if (how == "no database") {
            write(name, "Dragi Pera,\nsaljem ti racun.\n");
        } else if (how == "empty") {
            write(name, {});
        } else if (how == "first page zeroed") {
            overwrite(name, 0, QByteArray(kPage, '\0'));
        } else if (how == "first page overwritten") {
            overwrite(name, 0, rubbish(kPage));
        } else if (how == "cut in the first page") {
            ASSERT_TRUE(QFile::resize(name, 1000));
        } else if (how == "another password") {
            QFile::remove(name);
            dao::DBEngine::CreateDatabase(name.toStdString(), ";pwd=SomethingElse").Close();
        } else {
            FAIL() << how;
        }
    }

    // Runs a routine in a process of its own, after `prepare`; its error text, or "done".
    QString elsewhere(const std::function<void()>& prepare, const std::function<bool(QString&)>& routine) {
        write(path("answer.txt"), {});
        chmod(path("answer.txt").toUtf8(), 0666);
        SecondProcess other([&](const SecondProcess::Side& side) {
            prepare();
            QString reason;
            const bool done = routine(reason);
            write(path("answer.txt"), done ? QByteArray("done") : reason.toUtf8());
            side.ready();
        });
        EXPECT_TRUE(other.waitReady());
        other.wait();
        return QString::fromUtf8(bytesOf(path("answer.txt")));
    }
    // The same as a user who owns nothing here.
    QString asAnotherUser(const std::function<bool(QString&)>& routine) {
        constexpr uid_t kNobody = 65534;
        shareFolder(path("."), 0777);
        return elsewhere([] { EXPECT_EQ(setuid(kNobody), 0); }, routine);
    }
    static void shareFolder(const QString& folder, mode_t mode) {
        ASSERT_EQ(chmod(folder.toUtf8(), mode), 0);
    }

    // From here on this process can write no file longer than that many bytes, as on a disk that is full.
    static void limitFiles(rlim_t bytes) {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{bytes, bytes};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
};
