#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <QTextStream>

#include "shell/help_file.h"

// Builds Tarvello.hlp from the pages in a folder and the pictures in others: build_help PAGES FILE
// [PICTURES...]. A page that a reader would stumble over (a link to nowhere, a topic told twice) stops the
// build, because nobody reads the help through before a delivery.

namespace {

QTextStream& complaints() {
    static QTextStream stream(stderr);
    return stream;
}

bool readAll(const QString& path, QByteArray& content) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        complaints() << path << ": " << file.errorString() << Qt::endl;
        return false;
    }
    content = file.readAll();
    return true;
}

bool addPages(const QDir& folder, HelpBook& book) {
    bool ok = true;
    for (const QString& name : folder.entryList({QStringLiteral("*.md")}, QDir::Files, QDir::Name)) {
        QByteArray source;
        HelpPage page;
        QString errorText;
        if (!readAll(folder.filePath(name), source)) {
            ok = false;
        } else if (!HelpBook::parsePage(name.chopped(3), QString::fromUtf8(source), page, errorText)) {
            complaints() << folder.filePath(name) << ": " << errorText << Qt::endl;
            ok = false;
        } else {
            book.add(page);
        }
    }
    return ok;
}

// Only those that a page shows.
bool addPictures(const QStringList& folders, HelpBook& book) {
    for (const QString& name : book.picturesShown()) {
        for (const QString& folder : folders) {
            const QString path = QDir(folder).filePath(name);
            QByteArray content;
            if (!QFile::exists(path)) {
                continue;
            }
            if (!readAll(path, content)) {
                return false;
            }
            book.addPicture(name, content);
        }
    }
    return true;
}

bool write(const QString& path, const QByteArray& content) {
    QSaveFile file(path);
    const bool ok = file.open(QIODevice::WriteOnly) && file.write(content) == content.size() && file.commit();
    if (!ok) {
        complaints() << path << ": " << file.errorString() << Qt::endl;
    }
    return ok;
}

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() < 3) {
        complaints() << "Usage: build_help PAGES FILE [PICTURES...]" << Qt::endl;
        return 2;
    }
    const QDir folder(arguments[1]);
    HelpBook book;
    if (!addPages(folder, book) || !addPictures(arguments.mid(3), book)) {
        return 1;
    }
    const QStringList faults = book.faults();
    for (const QString& fault : faults) {
        complaints() << fault << Qt::endl;
    }
    if (book.pages().isEmpty()) {
        complaints() << folder.path() << ": no pages" << Qt::endl;
    }
    return faults.isEmpty() && !book.pages().isEmpty() && write(arguments[2], book.toFile()) ? 0 : 1;
}
