#include "platform/dao/sqlite/store_pages.h"

#include "platform/dao/sqlite/file_paths.h"

namespace dao::driver {
namespace {

class OpenStore final : public PageSource {
 public:
    explicit OpenStore(SqliteStore& store) : store_(store) {}
    std::int64_t bytes() const override { return store_.fileSize(); }
    bool read(PageNumber number, std::string& raw) override {
        raw.resize(kPageSize);
        return store_.readFile(placeOf(number), raw) == kPageSize;
    }

 private:
    SqliteStore& store_;
};

}  // namespace

std::unique_ptr<PageSource> pagesOf(SqliteStore& store) {
    return std::make_unique<OpenStore>(store);
}

}  // namespace dao::driver
