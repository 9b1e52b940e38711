// The backup that every closing of the program makes: the pages are authenticated as they are copied, and the
// copy is read again and opened before it takes the old one's place. Beside it the plain copy of the same
// bytes.
#include <fcntl.h>
#include <unistd.h>

#include <QCryptographicHash>
#include <QFile>
#include <array>
#include <cstdlib>

#include "data/session.h"
#include "platform/system/files.h"
#include "shop.h"

namespace {

void expect(bool holds) {
    if (!holds) {
        std::abort();
    }
}

Lines digestOf(const QString& path) {
    QFile file(path);
    QCryptographicHash digest(QCryptographicHash::Sha256);
    expect(file.open(QIODevice::ReadOnly) && digest.addData(&file));
    return {digest.result().toHex().toStdString()};
}

QString backupFile() {
    return platform::programFolder() + QStringLiteral("/Tarvello.bkp");
}

class BackupOurs : public Side {
 public:
    explicit BackupOurs(Shop&) {}
    void run() override {
        QString errorText;
        expect(BackupDatabase(errorText));
    }
    Lines result() override { return digestOf(backupFile()); }
};

// On the disk before it takes the old copy's place, as a backup has to be.
class BackupPlain : public Side {
 public:
    explicit BackupPlain(Shop&) {}
    ~BackupPlain() override { QFile::remove(copy_); }
    void run() override {
        const QString fresh = copy_ + QStringLiteral(".new");
        copyBytes(QFile::encodeName(databasePath()).constData(), QFile::encodeName(fresh).constData());
        expect(rename(QFile::encodeName(fresh).constData(), QFile::encodeName(copy_).constData()) == 0);
    }
    Lines result() override { return digestOf(copy_); }

 private:
    static void copyBytes(const char* from, const char* to) {
        const int in = open(from, O_RDONLY | O_CLOEXEC);
        const int out = open(to, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
        static std::array<char, 1 << 20> buffer;
        for (ssize_t size = read(in, buffer.data(), buffer.size()); size != 0;
             size = read(in, buffer.data(), buffer.size())) {
            expect(size > 0 && write(out, buffer.data(), static_cast<std::size_t>(size)) == size);
        }
        expect(fsync(out) == 0 && close(out) == 0 && close(in) == 0);
    }

    const QString copy_ = platform::programFolder() + QStringLiteral("/plain.bkp");
};

}  // namespace

std::vector<Measure> backupMeasures() {
    return {{"the backup at closing", 0, side<BackupOurs>(), side<BackupPlain>(), 9}};
}
