#pragma once

#include "platform/dao/driver.h"

namespace dao {

// Reads see one state of the file from the first to the last of the block, and lock and unlock it once.
class ReadScope {
 public:
    explicit ReadScope(driver::Store& store) : store_(store), ours_(!store.inTransaction()) {
        if (ours_) {
            store_.beginRead();
        }
    }
    ~ReadScope() {
        if (ours_) {
            store_.rollback();
        }
    }
    ReadScope(const ReadScope&) = delete;
    ReadScope& operator=(const ReadScope&) = delete;

 private:
    driver::Store& store_;
    bool ours_;
};

}  // namespace dao
