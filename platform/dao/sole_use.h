#pragma once

#include <string>

#include "platform/dao/presence.h"

namespace dao {

// While it lives no other process can open the database of that path, which need not be there yet. 3045 while
// one has it open, 3050 where its folder takes no lock file.
class SoleUse {
 public:
    explicit SoleUse(const std::string& path);

 private:
    ExclusiveUse use_;
};

}  // namespace dao
