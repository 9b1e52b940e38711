#include "platform/dao/postgres/server_place.h"

#include <map>

#include "platform/dao/failure.h"
#include "platform/dao/postgres/server_store.h"
#include "platform/dao/postgres/signpost.h"

namespace dao::postgres {
namespace {

class ServerPresence final : public Presence {
 public:
    explicit ServerPresence(std::shared_ptr<Link> link) : link_(std::move(link)) {
        link_->locks().enterShared();
    }
    ~ServerPresence() override { link_->locks().leaveShared(); }
    bool enterExclusive() override { return link_->locks().enterExclusive(); }
    void leaveExclusive() noexcept override { link_->locks().leaveExclusive(); }

 private:
    std::shared_ptr<Link> link_;
};

class ServerNumbers final : public Numbers {
 public:
    explicit ServerNumbers(std::shared_ptr<Link> link) : link_(std::move(link)) {}
    bool holdNumber(int number) override { return link_->locks().holdNumber(number); }
    void leaveNumber(int number) noexcept override { link_->locks().leaveNumber(number); }
    bool isLost(int number) const override { return link_->locks().isLost(number); }

 private:
    std::shared_ptr<Link> link_;
};

// The process's one object of its kind for a shop, as long as anybody has it.
template <typename Kind>
std::shared_ptr<Kind> only(const Address& address) {
    static auto* const kAll = new std::map<std::string, std::weak_ptr<Kind>>;
    std::weak_ptr<Kind>& known = (*kAll)[identityOf(address)];
    if (std::shared_ptr<Kind> found = known.lock()) {
        return found;
    }
    auto made = std::make_shared<Kind>(Link::to(address));
    known = made;
    return made;
}

}  // namespace

ServerPlace::ServerPlace(std::string path, Address address, std::string password)
    : path_(std::move(path)), address_(std::move(address)), password_(std::move(password)) {}

std::string ServerPlace::identity() const {
    return identityOf(address_);
}

PlacePtr ServerPlace::again() const {
    return std::make_shared<ServerPlace>(path_, readSignpost(path_), password_);
}

std::shared_ptr<Presence> ServerPlace::enter(bool) const {
    return only<ServerPresence>(address_);
}

std::shared_ptr<Numbers> ServerPlace::numbers() const {
    return only<ServerNumbers>(address_);
}

std::unique_ptr<driver::Store> ServerPlace::open() const {
    return std::make_unique<ServerStore>(Link::to(address_));
}

void ServerPlace::prove(driver::Store&) const {}

}  // namespace dao::postgres
