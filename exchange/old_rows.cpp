#include "exchange/old_rows.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fstream>

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "exchange/old_format.h"
#include "exchange/old_pages.h"
#include "platform/dao/breaking_off.h"
#include "platform/dao/names.h"

namespace exchange {
namespace {

using message::Cell;

[[noreturn]] void failDamaged(const std::string& path, const std::string& why) {
    throw OldFileError("The old database '" + path + "' is damaged: " + why +
                       ". Nothing was taken over; have it repaired by the program that it comes from first.");
}

[[noreturn]] void failEncoded(const std::string& path) {
    throw OldFileError("The old database '" + path +
                       "' is encoded in a way that cannot be read, or damaged throughout. Nothing was taken "
                       "over; have it decoded by the program that it comes from first.");
}

constexpr const char* kBreaksOff = "reading it breaks off";

// ----- the process that reads

// A damaged file may ask for any amount of memory.
void boundMemory(std::uint64_t fileSize) {
#ifndef __SANITIZE_ADDRESS__
    std::ifstream facts("/proc/self/statm");
    std::uint64_t pages = 0;
    if (facts >> pages) {
        const std::uint64_t now = pages * static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE));
        const rlim_t bound = now + (std::uint64_t{512} << 20) + 8 * fileSize;
        const rlimit limit{bound, bound};
        setrlimit(RLIMIT_AS, &limit);
    }
#else
    static_cast<void>(fileSize);
#endif
}

void silence(int stream) {
    const int nowhere = open("/dev/null", O_RDWR);
    if (nowhere >= 0) {
        dup2(nowhere, stream);
    }
}

[[noreturn]] void readAndTell(const std::string& path, const std::vector<std::string>& tables, int out,
                              std::uint64_t fileSize) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    for (const int signal : {SIGSEGV, SIGABRT, SIGBUS, SIGFPE, SIGILL, SIGPIPE}) {
        std::signal(signal, SIG_DFL);
    }
    // Who is asked to end is the one that listens: it ends this process, too.
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        std::signal(signal, SIG_IGN);
    }
    const rlimit none{0, 0};
    setrlimit(RLIMIT_CORE, &none);
    boundMemory(fileSize);
    silence(STDERR_FILENO);
    silence(STDOUT_FILENO);
    for (const char* wish : {"MDBOPTS", "MDBICONV", "MDB_JET3_CHARSET", "MDB_JET4_CHARSET"}) {
        unsetenv(wish);  // what a person has set for the library's own commands is not meant for us
    }
    std::FILE* pipe = fdopen(out, "wb");
    tellOldShop(path, tables, pipe);
    std::fflush(pipe);
    _exit(0);
}

class ReadingProcess {
 public:
    ReadingProcess(const std::string& path, const std::vector<std::string>& tables, std::uint64_t fileSize) {
        std::array<int, 2> ends{};
        if (pipe2(ends.data(), O_CLOEXEC) != 0) {
            throw OldFileError(std::string("The old database cannot be read: ") + std::strerror(errno));
        }
        process_ = fork();
        if (process_ == 0) {
            readAndTell(path, tables, ends[1], fileSize);
        }
        const int failure = errno;
        close(ends[1]);
        in_ = ends[0];
        if (process_ < 0) {
            close(in_);
            throw OldFileError(std::string("The old database cannot be read: ") + std::strerror(failure));
        }
    }
    ~ReadingProcess() {
        close(in_);
        kill(process_, SIGKILL);
        while (waitpid(process_, nullptr, 0) < 0 && errno == EINTR) {
        }
    }
    ReadingProcess(const ReadingProcess&) = delete;
    ReadingProcess& operator=(const ReadingProcess&) = delete;
    int in() const { return in_; }

 private:
    int in_ = -1;
    pid_t process_ = -1;
};

// ----- what it tells

class Broken : public std::exception {};

class MessageReader {
 public:
    explicit MessageReader(std::string_view bytes) : bytes_(bytes) {}
    template <typename Number>
    Number number() {
        Number value{};
        std::memcpy(&value, take(sizeof value).data(), sizeof value);
        return value;
    }
    std::string_view text() { return take(number<std::uint32_t>()); }
    std::string_view take(std::size_t size) {
        if (size > bytes_.size()) {
            throw Broken();
        }
        const std::string_view taken = bytes_.substr(0, size);
        bytes_.remove_prefix(size);
        return taken;
    }

 private:
    std::string_view bytes_;
};

class Listener {
 public:
    Listener(const std::string& path, const ReadingWatch& watch) : path_(path), watch_(watch) {}

    bool isDone() const { return done_; }
    OldShop take() { return std::move(shop_); }

    void hear(char kind, std::string_view bytes) {
        MessageReader reader(bytes);
        switch (kind) {
            case message::kTable:
                hearTable(reader);
                break;
            case message::kOther:
                shop_.others.emplace_back(reader.text());
                break;
            case message::kBegin:
                ++at_;
                now();
                break;
            case message::kRow:
                hearRow(reader);
                break;
            case message::kBadRow:
                hearBadRow(reader);
                break;
            case message::kEnd:
                done_ = true;
                break;
            case message::kDamaged:
                failDamaged(path_, std::string(reader.text()));
            case message::kEncoded:
                failEncoded(path_);
            default:
                throw Broken();
        }
    }

    void tell() {
        if (watch_) {
            watch_(at_ < 0 ? std::string() : now().name, rows_, std::max(all_, rows_));
        }
    }

 private:
    OldTable& now() {
        if (at_ < 0 || static_cast<std::size_t>(at_) >= shop_.tables.size()) {
            throw Broken();
        }
        return shop_.tables[static_cast<std::size_t>(at_)];
    }

    void hearTable(MessageReader& reader) {
        OldTable table;
        table.name = reader.text();
        table.toldRows = reader.number<std::int64_t>();
        all_ += table.toldRows;
        for (auto left = reader.number<std::uint32_t>(); left > 0; --left) {
            OldColumn column;
            column.name = reader.text();
            column.type = static_cast<dao::Type>(reader.number<std::int32_t>());
            table.columns.push_back(std::move(column));
        }
        table.rows.reset(dao::typesOf(table.columns));
        shop_.tables.push_back(std::move(table));
    }

    void hearRow(MessageReader& reader) {
        OldTable& table = now();
        table.rows.startRow();
        for (std::size_t column = 0; column < table.columns.size(); ++column) {
            hearCell(reader, table, column);
        }
        table.rows.endRow();
        ++rows_;
    }

    static void hearCell(MessageReader& reader, OldTable& table, std::size_t column) {
        switch (const auto kind = static_cast<Cell>(reader.number<char>()); kind) {
            case Cell::Null:
                table.rows.addNull();
                break;
            case Cell::Integer:
                table.rows.addInteger(reader.number<std::int64_t>());
                break;
            case Cell::Real:
                table.rows.addReal(reader.number<double>());
                break;
            case Cell::Text:
            case Cell::UnsoundText:
                table.rows.addText(reader.text());
                if (kind == Cell::UnsoundText) {
                    table.unsoundTexts.emplace(table.rows.rows(), column);
                }
                break;
            case Cell::Unread:
                table.rows.addUnread();
                break;
            default:
                throw Broken();
        }
    }

    void hearBadRow(MessageReader& reader) {
        OldTable& table = now();
        table.badRows.emplace(table.rows.rows(), reader.text());
        table.rows.startRow();
        for (std::size_t column = 0; column < table.columns.size(); ++column) {
            table.rows.addUnread();
        }
        table.rows.endRow();
        ++rows_;
    }

    std::string path_;
    const ReadingWatch& watch_;
    OldShop shop_;
    std::int64_t at_ = -1;
    std::int64_t rows_ = 0;
    std::int64_t all_ = 0;
    bool done_ = false;
};

// Cuts what comes out of the pipe into messages.
class Messages {
 public:
    // False where the other end is closed.
    bool fill(int in) {
        constexpr std::size_t kAtOnce = 1U << 16;
        buffer_.erase(0, at_);
        at_ = 0;
        const std::size_t before = buffer_.size();
        buffer_.resize(before + kAtOnce);
        const ssize_t got = read(in, buffer_.data() + before, kAtOnce);
        buffer_.resize(before + static_cast<std::size_t>(std::max<ssize_t>(got, 0)));
        return got > 0 || (got < 0 && errno == EINTR);
    }
    void giveTo(Listener& listener) {
        std::uint32_t size = 0;
        while (buffer_.size() - at_ >= sizeof size) {
            std::memcpy(&size, buffer_.data() + at_, sizeof size);
            if (size == 0 || size > message::kLongest) {
                throw Broken();
            }
            if (buffer_.size() - at_ - sizeof size < size) {
                return;
            }
            const std::string_view bytes(buffer_.data() + at_ + sizeof size, size);
            at_ += sizeof size + size;
            listener.hear(bytes[0], bytes.substr(1));
        }
    }

 private:
    std::string buffer_;
    std::size_t at_ = 0;
};

void listen(int in, Listener& listener, int patience) {
    using Clock = std::chrono::steady_clock;
    constexpr int kSlice = 100;  // milliseconds
    Messages messages;
    Clock::time_point heard = Clock::now();
    while (!listener.isDone()) {
        dao::needGoingOn();
        pollfd pipe{in, POLLIN, 0};
        const int ready = poll(&pipe, 1, kSlice);
        if (ready > 0) {
            if (!messages.fill(in)) {
                throw Broken();
            }
            messages.giveTo(listener);
            heard = Clock::now();
        } else if (Clock::now() - heard > std::chrono::seconds(patience)) {
            throw Broken();
        }
        listener.tell();
    }
}

void needWholePages(const std::string& path, const struct stat& file) {
    const off_t page = oldFormatOf(path) == OldFormat::Version3 ? 2048 : 4096;
    if (file.st_size % page != 0) {
        failDamaged(path, "it ends amid a page");
    }
}

bool sameState(const struct stat& one, const struct stat& other) {
    return one.st_ino == other.st_ino && one.st_size == other.st_size &&
           one.st_mtim.tv_sec == other.st_mtim.tv_sec && one.st_mtim.tv_nsec == other.st_mtim.tv_nsec;
}

}  // namespace

int OldTable::indexOf(std::string_view column) const {
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (dao::sameName(columns[i].name, column)) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

const OldTable* OldShop::table(std::string_view name) const {
    for (const OldTable& table : tables) {
        if (dao::sameName(table.name, name)) {
            return &table;
        }
    }
    return nullptr;
}

OldShop readOldShop(const std::string& path, const std::vector<std::string>& tables,
                    const ReadingWatch& watch, int patience) {
    struct stat before {};
    stat(path.c_str(), &before);
    needWholePages(path, before);
    Listener listener(path, watch);
    try {
        const ReadingProcess process(path, tables, static_cast<std::uint64_t>(before.st_size));
        listen(process.in(), listener, patience);
    } catch (const Broken&) {
        failDamaged(path, kBreaksOff);
    }
    struct stat after {};
    if (stat(path.c_str(), &after) != 0 || !sameState(before, after)) {
        throw OldFileError("'" + path + "' was changed by another program meanwhile. Close it there first.");
    }
    return listener.take();
}

}  // namespace exchange
