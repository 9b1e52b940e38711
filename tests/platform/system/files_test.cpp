#include "platform/system/files.h"

#include <grp.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "platform/system/trap.h"

using namespace platform;

namespace {

class Files : public testing::Test {
 protected:
    QString path(const QString& name) const { return folder_.filePath(name); }
    QString make(const QString& name, const QByteArray& content) const {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        EXPECT_EQ(file.write(content), content.size());
        return path(name);
    }
    QByteArray content(const QString& name) const {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(cannot be read)");
    }
    QStringList names() const {
        return QDir(folder_.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }

    QTemporaryDir folder_;
};

template <typename Step>
int errorOf(Step&& step) {
    Trap trap;
    trap(std::forward<Step>(step));
    return trap.number();
}

// Runs in a child process, whose exit code tells the outcome, and which may give up its rights.
template <typename Body>
int inChild(Body&& body) {
    const pid_t child = fork();
    if (child == 0) {
        _exit(body());
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

// As the system counts them.
int rightsOf(const QString& path) {
    struct stat found {};
    return stat(QFile::encodeName(path).constData(), &found) == 0 ? static_cast<int>(found.st_mode & 07777)
                                                                  : -1;
}

constexpr int kCannotBeTriedHere = 99;

// For root nothing is denied; the child becomes nobody.
bool giveUpRights() {
    constexpr unsigned kNobody = 65534;
    return geteuid() != 0 || (setgroups(0, nullptr) == 0 && setegid(kNobody) == 0 && seteuid(kNobody) == 0);
}

}  // namespace

TEST_F(Files, BothSeparatorsCount) {
    ASSERT_TRUE(QDir(folder_.path()).mkdir("sub"));
    make("sub/file.txt", "x");
    EXPECT_TRUE(fileExists(folder_.path() + "\\sub\\file.txt"));
    EXPECT_TRUE(fileExists(folder_.path() + "/sub\\file.txt"));
    EXPECT_EQ(nativePath("a\\b/c"), QStringLiteral("a%1b/c").arg(QDir::separator()));
}

TEST_F(Files, HiddenAndReadOnlyFilesExistAndFoldersDoNot) {
    make(".hidden", "x");
    const QString readOnly = make("locked", "x");
    ASSERT_TRUE(QFile::setPermissions(readOnly, QFileDevice::ReadOwner));
    EXPECT_TRUE(fileExists(path(".hidden")));
    EXPECT_TRUE(fileExists(readOnly));
    EXPECT_FALSE(fileExists(folder_.path()));
    EXPECT_FALSE(fileExists(path("nobody")));
    EXPECT_FALSE(fileExists(""));
}

TEST_F(Files, ACopyTakesTheContentAndReplacesWhatIsThere) {
    const QByteArray large(3 * 1024 * 1024 + 17, 'x');
    make("a", large);
    make("b", "old");
    copyFile(path("a"), path("b"));
    EXPECT_EQ(content("b"), large);
    EXPECT_EQ(content("a"), large);
    EXPECT_EQ(names(), QStringList({"a", "b"}));
}

TEST_F(Files, AnEmptyFileCopiesAndOneOntoItselfStays) {
    make("a", "");
    copyFile(path("a"), path("b"));
    EXPECT_EQ(content("b"), "");
    make("c", "kept");
    copyFile(path("c"), path("c"));
    EXPECT_EQ(content("c"), "kept");
}

TEST_F(Files, WhatIsNotThereIsNotFound) {
    EXPECT_EQ(errorOf([&] { copyFile(path("no"), path("b")); }), 53);
    EXPECT_EQ(errorOf([&] { renameFile(path("no"), path("b")); }), 53);
    EXPECT_EQ(errorOf([&] { deleteFile(path("no")); }), 53);
    EXPECT_EQ(names(), QStringList());
}

TEST_F(Files, AFolderIsNoFile) {
    ASSERT_TRUE(QDir(folder_.path()).mkdir("sub"));
    make("a", "x");
    EXPECT_EQ(errorOf([&] { copyFile(path("sub"), path("b")); }), 75);
    EXPECT_EQ(errorOf([&] { copyFile(path("a"), path("sub")); }), 75);
    EXPECT_EQ(errorOf([&] { deleteFile(path("sub")); }), 75);
    EXPECT_EQ(errorOf([&] { copyFile(path("a"), path("nowhere/b")); }), 75);
    EXPECT_EQ(errorOf([&] { renameFile(path("a"), path("nowhere/b")); }), 75);
    EXPECT_EQ(content("a"), "x");
}

TEST_F(Files, RenamingNeverReplacesAFile) {
    make("a", "new");
    make("b", "old");
    EXPECT_EQ(errorOf([&] { renameFile(path("a"), path("b")); }), 58);
    EXPECT_EQ(content("b"), "old");
    EXPECT_EQ(content("a"), "new");
    renameFile(path("a"), path("c"));
    EXPECT_EQ(content("c"), "new");
    EXPECT_EQ(names(), QStringList({"b", "c"}));
}

TEST_F(Files, DeletingTakesReadOnlyFilesToo) {
    const QString file = make("a", "x");
    ASSERT_TRUE(QFile::setPermissions(file, QFileDevice::ReadOwner));
    deleteFile(file);
    EXPECT_EQ(names(), QStringList());
}

TEST_F(Files, ATextFileIsWrittenInUtf8AndReplacesWhatIsThere) {
    make("list.txt", "an older and much longer list");
    writeTextFile(path("list.txt"), QString::fromUtf8("Usluga\n\u0161est\n"));
    EXPECT_EQ(content("list.txt"), QByteArray("Usluga\n\u0161est\n"));
    EXPECT_EQ(names(), QStringList("list.txt"));
}

TEST_F(Files, ATextFileThatCannotBeWrittenLeavesTheOldOne) {
    EXPECT_EQ(errorOf([&] { writeTextFile(path("nowhere/list.txt"), "x"); }), 75);
    ASSERT_TRUE(QDir(folder_.path()).mkdir("list.txt"));
    EXPECT_EQ(errorOf([&] { writeTextFile(path("list.txt"), "x"); }), 75);
}

TEST_F(Files, AFolderWithoutRightsIsPermissionDenied) {
    make("a", "x");
    ASSERT_TRUE(QDir(folder_.path()).mkdir("closed"));
    make("closed/b", "old");
    ASSERT_TRUE(QFile::setPermissions(path("a"), QFileDevice::ReadOther | QFileDevice::ReadOwner));
    ASSERT_TRUE(QFile::setPermissions(path("closed"), QFileDevice::ReadOwner | QFileDevice::ExeOwner |
                                                          QFileDevice::ReadOther | QFileDevice::ExeOther));
    ASSERT_TRUE(QFile::setPermissions(folder_.path(), QFileDevice::ReadOwner | QFileDevice::ExeOwner |
                                                          QFileDevice::ReadOther | QFileDevice::ExeOther));
    const int result = inChild([&] {
        if (!giveUpRights()) {
            return kCannotBeTriedHere;
        }
        if (errorOf([&] { copyFile(path("a"), path("closed/c")); }) != 70) {
            return 1;
        }
        if (errorOf([&] { copyFile(path("a"), path("closed/b")); }) != 70) {
            return 2;
        }
        if (errorOf([&] { renameFile(path("closed/b"), path("closed/c")); }) != 70) {
            return 3;
        }
        return errorOf([&] { deleteFile(path("closed/b")); }) == 70 ? 0 : 4;
    });
    for (const QString& folder : {path("closed"), folder_.path()}) {
        QFile::setPermissions(folder,
                              QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    }
    if (result == kCannotBeTriedHere) {
        GTEST_SKIP() << "cannot give up the rights of root here";
    }
    EXPECT_EQ(result, 0);
    EXPECT_EQ(content("closed/b"), "old");
}

TEST_F(Files, AFullDiskLeavesTheOldFileAndNothingHalf) {
    make("large", QByteArray(512 * 1024, 'x'));
    ASSERT_TRUE(QDir(folder_.path()).mkdir("disk"));
    const int result = inChild([&] {
        const QByteArray disk = path("disk").toUtf8();
        const bool mounted = unshare(CLONE_NEWNS) == 0 &&
                             mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
                             mount("tmpfs", disk.constData(), "tmpfs", 0, "size=128k") == 0;
        if (!mounted) {
            return kCannotBeTriedHere;
        }
        make("disk/old", "old");
        const int error = errorOf([&] { copyFile(path("large"), path("disk/old")); });
        const QStringList left = QDir(path("disk")).entryList(QDir::Files | QDir::Hidden);
        if (error != 61) {
            return error;
        }
        return content("disk/old") == "old" && left == QStringList("old") ? 0 : 1;
    });
    if (result == kCannotBeTriedHere) {
        GTEST_SKIP() << "no small disk can be mounted here";
    }
    EXPECT_EQ(result, 0);
}

TEST_F(Files, TheProgramsFolderIsThatOfTheExecutableWhileItTakesFiles) {
    const QString own = path("own");
    const ProgramFolder chosen = chooseProgramFolder(folder_.path(), own);
    EXPECT_EQ(chosen.path, folder_.path());
    EXPECT_FALSE(chosen.recordsCopiedAside);
    EXPECT_FALSE(QDir(own).exists());
    EXPECT_EQ(names(), QStringList());
}

TEST_F(Files, AnInstalledProgramIsForEachUserEvenWhereItsFolderCanBeWritten) {
    ASSERT_TRUE(QDir(folder_.path()).mkdir("program"));
    for (const char* name :
         {"program/per-user", "program/Tarvello.mdb", "program/Tarvello.hlp", "program/tipoftheday.txt"}) {
        make(name, "delivered");
    }
    const QString own = path("own");
    const ProgramFolder first = chooseProgramFolder(path("program"), own);
    EXPECT_EQ(first.path, own);
    EXPECT_FALSE(first.recordsCopiedAside);
    for (const char* name : {"own/Tarvello.mdb", "own/Tarvello.hlp", "own/tipoftheday.txt"}) {
        EXPECT_EQ(content(name), "delivered");
        make(name, "changed");
    }
    EXPECT_FALSE(QFile::exists(path("own/per-user")));
    // A newer program brings a newer help; the records and the tips are the shop's own by now.
    EXPECT_EQ(chooseProgramFolder(path("program"), own).path, own);
    EXPECT_EQ(content("own/Tarvello.hlp"), "delivered");
    EXPECT_EQ(content("own/Tarvello.mdb"), "changed");
    EXPECT_EQ(content("own/tipoftheday.txt"), "changed");
}

TEST_F(Files, OtherwiseItIsTheUsersOwnSeededOnceFromTheDeliveredFiles) {
    ASSERT_TRUE(QDir(folder_.path()).mkdir("program"));
    ASSERT_TRUE(QDir(folder_.path()).mkdir("home"));
    make("program/Tarvello.mdb", "delivered records");
    make("program/Tarvello.hlp", "delivered help");
    make("program/tipoftheday.txt", "delivered tips");
    const auto open =
        QFileDevice::ReadOther | QFileDevice::ExeOther | QFileDevice::ReadOwner | QFileDevice::ExeOwner;
    ASSERT_TRUE(QFile::setPermissions(path("program"), open));
    ASSERT_TRUE(QFile::setPermissions(folder_.path(), open));
    ASSERT_TRUE(
        QFile::setPermissions(path("home"), open | QFileDevice::WriteOther | QFileDevice::WriteOwner));
    const QString own = path("home/Tarvello");
    const int result = inChild([&] {
        if (!giveUpRights()) {
            return kCannotBeTriedHere;
        }
        const ProgramFolder first = chooseProgramFolder(path("program"), own);
        if (first.path != own || !first.recordsCopiedAside ||
            content("home/Tarvello/Tarvello.mdb") != "delivered records" ||
            content("home/Tarvello/Tarvello.hlp") != "delivered help" ||
            content("home/Tarvello/tipoftheday.txt") != "delivered tips") {
            return 1;
        }
        // The next start finds the shop's records there, and leaves them alone.
        make("home/Tarvello/Tarvello.mdb", "the shop's records");
        if (chooseProgramFolder(path("program"), own).recordsCopiedAside) {
            return 3;
        }
        return content("home/Tarvello/Tarvello.mdb") == "the shop's records" ? 0 : 2;
    });
    for (const QString& folder : {folder_.path(), path("program")}) {
        QFile::setPermissions(folder,
                              QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    }
    if (result == kCannotBeTriedHere) {
        GTEST_SKIP() << "cannot give up the rights of root here";
    }
    EXPECT_EQ(result, 0);
}

TEST_F(Files, WhatTheProgramMakesIsForItsUserAlone) {
    const mode_t before = umask(0);
    writeTextFile(path("note"), "x");
    copyFile(make("from", "x"), path("copy"));
    EXPECT_EQ(chooseProgramFolder(path("nothing"), path("deep/own")).path, path("deep/own"));
    umask(before);
    EXPECT_EQ(rightsOf(path("note")), 0600);
    EXPECT_EQ(rightsOf(path("copy")), 0600);
    EXPECT_EQ(rightsOf(path("deep/own")), 0700);
}

TEST_F(Files, WhatSomebodyHasMadeOtherwiseStaysSo) {
    for (const char* name : {"note", "copy"}) {
        make(name, "old");
        QFile(path(name)).setPermissions(kForUserAlone | QFileDevice::ReadGroup);
    }
    writeTextFile(path("note"), "x");
    copyFile(make("from", "x"), path("copy"));
    EXPECT_EQ(rightsOf(path("note")), 0640);
    EXPECT_EQ(rightsOf(path("copy")), 0640);
    EXPECT_EQ(content("copy"), "x");
}
