#include <CLI/CLI.hpp>
#include <filesystem>
#include <memory>

#include "data/session.h"
#include "platform/dao/dao.h"
#include "tools/verbs/table_lines.h"
#include "tools/verbs/verbs.h"

namespace {

// The dense copy lies beside the file until it has taken its place.
class DenseCopy {
 public:
    explicit DenseCopy(const std::string& database) : path_(database + ".compact") { discard(); }
    DenseCopy(const DenseCopy&) = delete;
    DenseCopy& operator=(const DenseCopy&) = delete;
    ~DenseCopy() { discard(); }
    const std::string& path() const { return path_; }

 private:
    void discard() noexcept { dao::DBEngine::DiscardDatabase(path_); }
    std::string path_;
};

std::string sizeOf(const std::string& path) {
    return grouped(static_cast<long long>(std::filesystem::file_size(path) / 1024)) + " kB";
}

void compactFile(const std::string& path, const std::string& connect, Talk& talk) {
    dao::DBEngine::OpenDatabase(path, false, false, connect).Close();
    const std::string before = sizeOf(path);
    // Nobody may come in between the copy and the exchange: what he wrote would be gone.
    const dao::SoleUse sole(path);
    const DenseCopy dense(path);
    dao::DBEngine::CompactDatabase(path, dense.path(), connect);
    dao::DBEngine::CopyDatabase(dense.path(), path);
    talk.say("Compacted: " + before + " before, " + sizeOf(path) + " now.");
}

void compact(const std::string& path, Talk& talk) {
    const std::string connect = connectText().toStdString();
    if (dao::DBEngine::IsOnServer(path)) {
        dao::DBEngine::CompactDatabase(path, {}, connect);
        talk.say("The server has written its tables densely.");
    } else {
        compactFile(path, connect, talk);
    }
}

}  // namespace

void addCompact(CLI::App& app, Talk& talk) {
    const auto path = std::make_shared<std::string>();
    CLI::App* verb =
        app.add_subcommand("compact", "Writes a shop densely, without the room that deleted records left.");
    verb->add_option("DATABASE", *path, "The shop's file, or the signpost that leads to its server.")
        ->required();
    verb->footer(
        "Nobody else may have the shop open. The dense file takes the old one's place when it is whole; it "
        "needs "
        "as much room beside it until then.");
    verb->callback([path, &talk] { compact(*path, talk); });
}
