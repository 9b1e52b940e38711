#include "platform/system/files.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>
#include <QTemporaryFile>
#ifdef Q_OS_LINUX
#include <fcntl.h>
#endif

#include "platform/system/trap.h"
#include "platform/system/watched_copy.h"

namespace platform {

namespace {

enum FileError { kNotFound = 53, kExists = 58, kDiskFull = 61, kDenied = 70, kAccess = 75 };

[[noreturn]] void fail(FileError number, const QString& path) {
    const char* sentence = "Path/File access error";
    switch (number) {
        case kNotFound:
            sentence = "File not found";
            break;
        case kExists:
            sentence = "File already exists";
            break;
        case kDiskFull:
            sentence = "Disk full";
            break;
        case kDenied:
            sentence = "Permission denied";
            break;
        case kAccess:
            break;
    }
    throw RunError(number, QString::fromLatin1(sentence) + QStringLiteral(": ") + path);
}

[[noreturn]] void fail(const QFileDevice& file) {
    switch (file.error()) {
        case QFileDevice::ResourceError:
            fail(kDiskFull, file.fileName());
        case QFileDevice::PermissionsError:
            fail(kDenied, file.fileName());
        default:
            fail(kAccess, file.fileName());
    }
}

void requireFile(const QString& path) {
    if (!fileExists(path)) {
        fail(QFileInfo(path).isDir() ? kAccess : kNotFound, path);
    }
}

// Whether a file can be made there. Asking the folder's rights is not enough: a read-only medium, a server's
// rules or a full disk say no as well.
bool takesFiles(const QString& folder) {
    QTemporaryFile probe(folder + QDir::separator() + QStringLiteral("TarvelloXXXXXX"));
    return probe.open();
}

void openForWriting(QSaveFile& writer) {
    const QString target = writer.fileName();
    const bool isNew = !QFileInfo::exists(target);
    if (writer.open(QIODevice::WriteOnly)) {
        if (isNew) {
            writer.setPermissions(kForUserAlone);
        }
        return;
    }
    if (QFileInfo(target).isDir() || !QFileInfo(QFileInfo(target).path()).isDir()) {
        fail(kAccess, target);
    }
    fail(writer.error() == QFileDevice::ResourceError ? kDiskFull : kDenied, target);
}

// A disk that fills up takes a part of the block first, and says why only when asked for the rest.
void writeAll(QSaveFile& writer, const QByteArray& block) {
    for (qint64 done = 0; done < block.size();) {
        const qint64 written = writer.write(block.constData() + done, block.size() - done);
        if (written <= 0) {
            fail(writer);
        }
        done += written;
    }
}

ProgramFolder chosenFolder;  // no path: not chosen yet

bool sameContent(const QString& one, const QString& other) {
    QFile first(one);
    QFile second(other);
    return first.open(QIODevice::ReadOnly) && second.open(QIODevice::ReadOnly) &&
           first.size() == second.size() && first.readAll() == second.readAll();
}

constexpr char kRecords[] = "Tarvello.mdb";

// What was delivered, into the user's own folder. True where the records were copied.
bool seed(const QString& from, const QString& to) {
    struct Delivered {
        const char* name;
        bool isKeptByTheUser;
    };
    bool recordsCopied = false;
    for (const Delivered& file :
         {Delivered{kRecords, true}, {"Tarvello.hlp", false}, {"tipoftheday.txt", true}}) {
        const QString name = QDir::separator() + QString::fromLatin1(file.name);
        const bool hasIt = fileExists(to + name);
        if (fileExists(from + name) &&
            !(hasIt && (file.isKeptByTheUser || sameContent(from + name, to + name)))) {
            // What cannot be copied is missed, and asked for, by the routine that needs it.
            Trap step;
            step([&] { copyFile(from + name, to + name); });
            recordsCopied |= file.name == kRecords && !step.failed();
        }
    }
    return recordsCopied;
}

// What is written goes on its way to the disk at once: kept back, all of a large file would be waited for at
// the end.
void sendOff(QSaveFile& writer) {
#ifdef Q_OS_LINUX
    writer.flush();
    sync_file_range(writer.handle(), 0, 0, SYNC_FILE_RANGE_WRITE);
#else
    Q_UNUSED(writer)
#endif
}

}  // namespace

QString nativePath(const QString& path) {
    return QString(path).replace(QLatin1Char('\\'), QDir::separator());
}

bool fileExists(const QString& path) {
    const QFileInfo file(nativePath(path));
    return file.exists() && !file.isDir();
}

void copyFile(const QString& from, const QString& to) {
    copyFile(from, to, {});
}

void copyFile(const QString& from, const QString& to, const FileWatch& watch) {
    const QString source = nativePath(from);
    const QString target = nativePath(to);
    requireFile(source);
    if (QFileInfo(target).exists() &&
        QFileInfo(source).canonicalFilePath() == QFileInfo(target).canonicalFilePath()) {
        return;
    }
    QFile reader(source);
    if (!reader.open(QIODevice::ReadOnly)) {
        fail(reader.error() == QFileDevice::OpenError ? kDenied : kAccess, source);
    }
    QSaveFile writer(target);
    openForWriting(writer);
    constexpr qint64 kBlock = 1 << 20;
    while (!reader.atEnd()) {
        const QByteArray block = reader.read(kBlock);
        if (block.isEmpty() && reader.error() != QFileDevice::NoError) {
            fail(kAccess, source);
        }
        writeAll(writer, block);
        sendOff(writer);
        if (watch) {
            watch(reader.pos(), reader.size());
        }
    }
    if (!writer.commit()) {
        fail(writer);
    }
}

void renameFile(const QString& from, const QString& to) {
    const QString source = nativePath(from);
    const QString target = nativePath(to);
    requireFile(source);
    if (QFileInfo::exists(target)) {
        fail(kExists, target);
    }
    QFile file(source);
    if (!file.rename(target)) {
        fail(QFileInfo(QFileInfo(target).path()).isDir() ? kDenied : kAccess, target);
    }
}

void deleteFile(const QString& path) {
    const QString native = nativePath(path);
    requireFile(native);
    if (!QFile::remove(native)) {
        fail(kDenied, native);
    }
}

void writeTextFile(const QString& path, const QString& text) {
    QSaveFile writer(nativePath(path));
    openForWriting(writer);
#ifdef Q_OS_WIN
    writeAll(writer, QString(text).replace(QLatin1Char('\n'), QLatin1String("\r\n")).toUtf8());
#else
    writeAll(writer, text.toUtf8());
#endif
    if (!writer.commit()) {
        fail(writer);
    }
}

void makeOwnFolder(const QString& path) {
    if (!QFileInfo::exists(path)) {
        QDir().mkpath(QFileInfo(path).path());
        QDir().mkdir(path, kForUserAlone | QFileDevice::ExeOwner);
    }
}

ProgramFolder chooseProgramFolder(const QString& executableFolder, const QString& ownFolder) {
    const bool perUser = fileExists(executableFolder + QDir::separator() + QStringLiteral("per-user"));
    if (!perUser && takesFiles(executableFolder)) {
        return {executableFolder};
    }
    makeOwnFolder(ownFolder);
    const bool copied = seed(executableFolder, ownFolder);
    return {ownFolder, copied && !perUser};
}

QString programFolder() {
    if (chosenFolder.path.isEmpty()) {
        const QString own = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
                            QStringLiteral("/Tarvello");
        chosenFolder = chooseProgramFolder(QDir::toNativeSeparators(QCoreApplication::applicationDirPath()),
                                           QDir::toNativeSeparators(own));
    }
    return chosenFolder.path;
}

bool recordsCopiedAside() {
    programFolder();
    return chosenFolder.recordsCopiedAside;
}

void setProgramFolder(const QString& folder, bool copiedAside) {
    chosenFolder = {folder, copiedAside};
}

}  // namespace platform
