#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "measure.h"
#include "measured_shop.h"
#include "plain_server.h"
#include "platform/dao/postgres/place.h"

// The generated shop twice on one server, each in a database of its own: one open through the engine, the
// other through the server's C library, with the same rows and indexes and its names in small letters.
class ServerShop final : public MeasuredShop {
 public:
    // `file` is the shop to be carried there, which is done once for a server; `signpost` is made.
    ServerShop(const std::filesystem::path& file, const dao::postgres::Address& server,
               const std::filesystem::path& signpost);
    ~ServerShop() override;

    dao::Database& ours() override { return *ours_; }
    const Stock& stock() const override { return stock_; }
    PlainServer& plain() { return *plain_; }
    // How often we have asked the server for something and waited for it, so far.
    std::int64_t roundTrips();
    // Looks whether both databases hold the same rows. Ends the program where not.
    void checkSameRows();

 private:
    std::string place(const char* database) const;

    dao::postgres::Address server_;
    std::optional<PlainServer> plain_;
    Stock stock_;
    std::optional<dao::Database> ours_;
};

std::vector<MeasureOn<ServerShop>> serverMeasures(bool isFar);
std::vector<MeasureOn<ServerShop>> serverFilterMeasures();
