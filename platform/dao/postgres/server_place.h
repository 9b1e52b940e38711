#pragma once

#include <memory>
#include <string>

#include "platform/dao/place.h"
#include "platform/dao/postgres/link.h"

namespace dao::postgres {

// A shop on a server, found by the signpost that stands where its file would.
class ServerPlace final : public dao::Place {
 public:
    // `path`: the signpost's, without links. `password`: that of the files which copies of this shop are kept
    // in.
    ServerPlace(std::string path, Address address, std::string password);

    const std::string& path() const override { return path_; }
    std::string identity() const override;
    PlacePtr again() const override;
    void needWritable() const override {}  // the server tells at the first change
    std::shared_ptr<Presence> enter(bool reading) const override;
    std::shared_ptr<Numbers> numbers() const override;
    std::unique_ptr<driver::Store> open() const override;
    void prove(driver::Store& store) const override;
    void tidy() const noexcept override {}

    const Address& address() const { return address_; }
    const std::string& password() const { return password_; }

 private:
    std::string path_;
    Address address_;
    std::string password_;
};

}  // namespace dao::postgres
