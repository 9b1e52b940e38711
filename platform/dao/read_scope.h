#pragma once

#include "platform/dao/driver.h"

namespace dao {

// Reads see one state of the file from the first to the last of the block, and lock and unlock it once.
class ReadScope {
 public:
    explicit ReadScope(driver::Store& store) : store_(store), ours_(!store.transaction().isOpen()) {
        if (ours_) {
            store_.transaction().beginRead();
        }
    }
    ~ReadScope() {
        if (ours_) {
            store_.transaction().rollback();
        }
    }
    ReadScope(const ReadScope&) = delete;
    ReadScope& operator=(const ReadScope&) = delete;

 private:
    driver::Store& store_;
    bool ours_;
};

}  // namespace dao
