#include "data/backup_note.h"

#include <QCryptographicHash>
#include <QFile>
#include <QStringList>

#include "platform/system/files.h"

namespace data {
namespace {

const QString kHead = QStringLiteral("Tarvello backup 1");

// All of the file: times and sizes tell nothing of a disk that has forgotten a page. Empty where it cannot be
// read.
QString digestOf(const QString& path) {
    QFile file(path);
    QCryptographicHash digest(QCryptographicHash::Sha256);
    if (!file.open(QIODevice::ReadOnly) || !digest.addData(&file)) {
        return {};
    }
    return QString::fromLatin1(digest.result().toHex());
}

}  // namespace

std::string BackupNote::state() const {
    QFile file(path());
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        return {};
    }
    const QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
    if (lines.size() < 3 || lines[0] != kHead || lines[2].isEmpty() || lines[2] != digestOf(backup_)) {
        return {};
    }
    return lines[1].toStdString();
}

void BackupNote::keep(const std::string& state) const {
    platform::writeTextFile(
        path(), QStringList{kHead, QString::fromStdString(state), digestOf(backup_)}.join(QLatin1Char('\n')));
}

}  // namespace data
