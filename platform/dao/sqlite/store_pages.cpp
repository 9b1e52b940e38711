#include "platform/dao/sqlite/store_pages.h"

#include "platform/dao/sqlite/file_bytes.h"
#include "platform/dao/sqlite/file_paths.h"

namespace dao::driver {
namespace {

class OpenStore final : public PageSource {
 public:
    explicit OpenStore(SqliteStore& store) : file_(store.connection().handle()) {}
    std::int64_t bytes() const override { return file_.size(); }
    bool read(PageNumber number, std::string& raw) override {
        raw.resize(kPageSize);
        return file_.read(placeOf(number), raw) == kPageSize;
    }

 private:
    FileBytes file_;
};

}  // namespace

std::unique_ptr<PageSource> pagesOf(SqliteStore& store) {
    return std::make_unique<OpenStore>(store);
}

}  // namespace dao::driver
