#pragma once

#include <memory>
#include <string>

#include "platform/dao/shop_reading.h"

namespace exchange {

class MakingFolder;

// A shop as it is at one moment, for a reading that takes its time while others go on working. Of a file a
// copy is made for that, enciphered like the file, in the system's folder for temporary files; it is gone
// with this object. Damage is told, never read past: 3049.
class StillShop {
 public:
    // `path`: the shop's file or its signpost. Throws dao::Error as an opening does.
    explicit StillShop(const std::string& path);
    ~StillShop();
    StillShop(const StillShop&) = delete;
    StillShop& operator=(const StillShop&) = delete;

    dao::ShopReading& rows() { return *rows_; }

 private:
    std::unique_ptr<MakingFolder> folder_;
    std::unique_ptr<dao::ShopReading> rows_;
};

}  // namespace exchange
