#pragma once

#include <memory>
#include <string>

#include "platform/dao/postgres/link.h"
#include "platform/dao/postgres/server_store.h"

namespace dao::postgres {

// An empty shop in a server's database, alone there. It counts as unfinished, and nobody else gets in, until
// it is finished; one that is given up, or left by a crash, is replaced by the next.
class NewShop {
 public:
    // errObjectExists where the database holds a whole shop, errFileInUse while somebody else makes one.
    explicit NewShop(const Address& address);
    ~NewShop();
    NewShop(const NewShop&) = delete;
    NewShop& operator=(const NewShop&) = delete;

    ServerStore& store() { return *store_; }
    void finish();
    // Leaves the database as empty as it was, where the server still answers.
    void giveUp() noexcept;

 private:
    std::shared_ptr<Link> link_;
    std::unique_ptr<ServerStore> store_;
};

}  // namespace dao::postgres
