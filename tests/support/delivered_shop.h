#pragma once

#include <memory>
#include <string>

namespace tests {

class ServerDatabase;

// A copy of a delivered database for one test: an encrypted file, or, where this run is about a server, a
// database of its own there and a signpost to it.
class DeliveredShop {
 public:
    DeliveredShop();
    DeliveredShop(const DeliveredShop&) = delete;
    DeliveredShop& operator=(const DeliveredShop&) = delete;
    ~DeliveredShop();

    // The database of that name ("Demo.mdb") to `path`, in the place of what this object delivered before.
    // Throws where the disk or the server refuses.
    void deliver(const std::string& name, const std::string& path);

 private:
    std::unique_ptr<ServerDatabase> database_;
};

}  // namespace tests
