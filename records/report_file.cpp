#include "records/report_file.h"

#include <algorithm>

#include "platform/system/files.h"
#include "platform/system/trap.h"

using platform::RunError;

namespace {

constexpr std::size_t kBlock = 1 << 18;
constexpr int kDiskFull = 61, kDenied = 70, kAccess = 75;

#ifdef Q_OS_WIN
constexpr std::string_view kLineEnd = "\r\n";
#else
constexpr std::string_view kLineEnd = "\n";
#endif

[[noreturn]] void fail(int number, const QString& path) {
    const char* sentence = number == kDiskFull ? "Disk full"
                           : number == kDenied ? "Permission denied"
                                               : "Path/File access error";
    throw RunError(number, QString::fromLatin1(sentence) + QStringLiteral(": ") + path);
}

// Characters, not bytes: what follows the first byte of a character begins with the bits 10.
int charactersOf(std::string_view text) {
    return static_cast<int>(std::count_if(
        text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; }));
}

}  // namespace

ReportFile::~ReportFile() {
    platform::Trap step;
    step([&] { close(); });
}

void ReportFile::open(const QString& path) {
    file_.setFileName(platform::nativePath(path));
    buffer_.clear();
    buffer_.reserve(kBlock + kBlock / 4);
    column_ = 1;
    broken_ = false;
    failure_ = 0;
    if (!file_.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered,
                    platform::kForUserAlone)) {
        fail(file_.error() == QFileDevice::PermissionsError ? kDenied : kAccess, file_.fileName());
    }
}

void ReportFile::close() {
    if (!file_.isOpen()) {
        return;
    }
    flush();
    file_.close();
    buffer_.clear();
    if (broken_) {
        fail(failure_, file_.fileName());
    }
}

void ReportFile::remove() {
    buffer_.clear();
    file_.remove();
}

void ReportFile::flush() {
    for (std::size_t done = 0; done < buffer_.size() && !broken_;) {
        const qint64 written = file_.write(buffer_.data() + done, static_cast<qint64>(buffer_.size() - done));
        if (written > 0) {
            done += static_cast<std::size_t>(written);
            continue;
        }
        broken_ = true;
        failure_ = file_.error() == QFileDevice::ResourceError ? kDiskFull : kAccess;
    }
    buffer_.clear();
}

void ReportFile::tab(int column) {
    if (column < column_) {
        endLine();
    }
    print(static_cast<std::size_t>(column - column_), ' ');
}

void ReportFile::print(std::size_t times, char character) {
    if (!isGood()) {
        return;
    }
    buffer_.append(times, character);
    column_ += static_cast<int>(times);
}

void ReportFile::print(std::string_view text) {
    if (!isGood()) {
        return;
    }
    // Twice for one sign: looked for together, each character of the report would be a search of its own.
    if (text.find('\n') == std::string_view::npos && text.find('\r') == std::string_view::npos) {
        printPiece(text);
    } else {
        printLines(text);
    }
}

void ReportFile::printPiece(std::string_view text) {
    buffer_.append(text);
    column_ += charactersOf(text);
}

void ReportFile::printLines(std::string_view text) {
    while (true) {
        const std::size_t end = text.find_first_of("\r\n");
        printPiece(text.substr(0, end));
        if (end == std::string_view::npos) {
            return;
        }
        endLine();
        const bool pair = text[end] == '\r' && end + 1 < text.size() && text[end + 1] == '\n';
        text.remove_prefix(end + (pair ? 2 : 1));
    }
}

void ReportFile::endLine() {
    if (!isGood()) {
        return;
    }
    buffer_.append(kLineEnd);
    column_ = 1;
    if (buffer_.size() >= kBlock) {
        flush();
    }
}
