#include "exchange/still_shop.h"

#include <QTemporaryDir>
#include <stdexcept>

#include "data/session.h"
#include "platform/dao/dao.h"

namespace exchange {
namespace {

// The engine looks at each page that it copies of a file that it knows the password of.
void letIn(const std::string& path, const std::string& connect) {
    dao::DBEngine::OpenDatabase(path, false, true, connect).Close();
}

}  // namespace

StillShop::StillShop(const std::string& path) {
    const std::string connect = connectText().toStdString();
    std::string source = path;
    if (!dao::DBEngine::IsOnServer(path)) {
        letIn(path, connect);
        folder_ = std::make_unique<QTemporaryDir>();
        if (!folder_->isValid()) {
            throw std::runtime_error("There is no room for a copy of the shop: " +
                                     folder_->errorString().toStdString());
        }
        source = folder_->filePath(QStringLiteral("Shop.mdb")).toStdString();
        dao::DBEngine::CopyDatabase(path, source);
    }
    rows_ = std::make_unique<dao::ShopReading>(source, connect);
}

StillShop::~StillShop() = default;

}  // namespace exchange
