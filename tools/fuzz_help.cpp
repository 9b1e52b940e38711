// Feeds the help's file and its pages whatever the fuzzer thinks of.
#include <QByteArray>
#include <QCryptographicHash>
#include <QDataStream>
#include <QIODevice>
#include <QString>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "shell/help_file.h"

namespace {

void use(const HelpBook& book) {
    (void)book.faults();
    (void)book.picturesShown();
    (void)book.target(501);
    for (const HelpPage& page : book.pages()) {
        (void)page.headingAnchors();
        (void)page.plainMarkdown();
    }
}

// What makes a file of packed bytes: its mark, version, size and digest.
QByteArray framed(const QByteArray& packed) {
    QByteArray file("TARVHLP\x1a", 8);
    QDataStream head(&file, QIODevice::Append);
    head << quint32(1) << static_cast<quint32>(packed.size());
    return file + QCryptographicHash::hash(packed, QCryptographicHash::Sha256) + packed;
}

void readFile(const QByteArray& bytes) {
    HelpBook book;
    QString error;
    if (book.fromFile(bytes, error)) {
        use(book);
    } else if (error.isEmpty()) {
        std::abort();
    }
}

void readPage(const QByteArray& bytes) {
    HelpPage page;
    QString error;
    if (!HelpBook::parsePage(QStringLiteral("page"), QString::fromUtf8(bytes), page, error)) {
        if (error.isEmpty()) {
            std::abort();
        }
        return;
    }
    HelpBook book;
    book.add(page);
    use(book);
    HelpBook again;
    if (!again.fromFile(book.toFile(), error)) {
        std::abort();
    }
}

}  // namespace

// The toolkit tells of every file that does not unpack.
extern "C" int LLVMFuzzerInitialize(int*, char***) {
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    readFile(bytes);
    // The first four bytes say how much is to come out. Room for all that they could claim takes long to get.
    readFile(framed(QByteArray(2, '\0') + bytes));
    readFile(framed(qCompress(bytes)));
    readPage(bytes);
    return 0;
}
