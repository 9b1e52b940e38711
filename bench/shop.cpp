#include "shop.h"

#include <filesystem>

#include "data/session.h"
#include "pairs.h"
#include "platform/dao/dbengine.h"

namespace {

Stock fillAndCopy(const std::string& path, const std::string& copy) {
    const Stock stock = fillStock(PlainShop(path));
    std::filesystem::copy_file(path, copy);
    return stock;
}

}  // namespace

Shop::Shop(const std::string& ourPath, const std::string& plainPath)
    : ourPath_(ourPath),
      stock_(fillAndCopy(ourPath, plainPath)),
      plain_(plainPath),
      schema_(schemaOf(plain_)),
      ours_(dao::DBEngine::OpenDatabase(ourPath, false, false, connectText().toStdString())) {}

void Shop::checkNothingLeft() {
    ours_.Close();
    const PlainShop after(ourPath_);
    checkEqual("what is in our file, before and after", schema_, schemaOf(after));
    checkEqual("what is in the plain file, before and after", schema_, schemaOf(plain_));
    checkEqual("the rows of both files", ::rowsOf(after), ::rowsOf(plain_));
}
