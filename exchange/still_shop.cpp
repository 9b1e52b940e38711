#include "exchange/still_shop.h"

#include <unistd.h>

#include <filesystem>
#include <stdexcept>
#include <system_error>

#include "data/session.h"
#include "exchange/unfinished.h"
#include "platform/dao/dao.h"

namespace exchange {
namespace {

// The engine looks at each page that it copies of a file that it knows the password of.
void letIn(const std::string& path, const std::string& connect) {
    dao::DBEngine::OpenDatabase(path, false, true, connect).Close();
}

std::unique_ptr<MakingFolder> roomForCopy() {
    try {
        const std::filesystem::path folder = std::filesystem::temp_directory_path();
        return std::make_unique<MakingFolder>(
            (folder / ("tarvello-data-" + std::to_string(getuid()))).string());
    } catch (const std::system_error& error) {
        throw std::runtime_error("There is no room for a copy of the shop: " + error.code().message());
    }
}

}  // namespace

StillShop::StillShop(const std::string& path) {
    const std::string connect = connectText().toStdString();
    std::string source = path;
    if (!dao::DBEngine::IsOnServer(path)) {
        letIn(path, connect);
        folder_ = roomForCopy();
        source = folder_->path() + "/Shop.mdb";
        dao::DBEngine::CopyDatabase(path, source);
    }
    rows_ = std::make_unique<dao::ShopReading>(source, connect);
}

StillShop::~StillShop() = default;

}  // namespace exchange
