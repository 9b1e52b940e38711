#include "platform/dao/postgres/addresses.h"

#include <netdb.h>
#include <sys/socket.h>

#include <array>
#include <future>
#include <memory>
#include <thread>
#include <utility>

namespace dao::postgres {
namespace {

std::string numberOf(const addrinfo& found) {
    std::array<char, NI_MAXHOST> text{};
    const int code =
        getnameinfo(found.ai_addr, found.ai_addrlen, text.data(), text.size(), nullptr, 0, NI_NUMERICHOST);
    return code == 0 ? text.data() : "";
}

Addresses lookUp(const std::string& host) {
    addrinfo hints{};
    hints.ai_socktype = SOCK_STREAM;
    addrinfo* raw = nullptr;
    if (const int code = getaddrinfo(host.c_str(), nullptr, &hints, &raw); code != 0) {
        return {{}, "the name '" + host + "' is not known (" + gai_strerror(code) + ")"};
    }
    const std::unique_ptr<addrinfo, decltype(&freeaddrinfo)> first(raw, &freeaddrinfo);
    Addresses addresses;
    for (const addrinfo* each = first.get(); each != nullptr; each = each->ai_next) {
        if (std::string number = numberOf(*each); !number.empty()) {
            addresses.numbers.push_back(std::move(number));
        }
    }
    return addresses;
}

}  // namespace

Addresses addressesOf(const std::string& host, Clock::time_point until) {
    std::promise<Addresses> promise;
    std::future<Addresses> answer = promise.get_future();
    // On its own from here: nothing can call a look-up back, and nobody must wait for one.
    std::thread([host, given = std::move(promise)]() mutable { given.set_value(lookUp(host)); }).detach();
    if (answer.wait_until(until) != std::future_status::ready) {
        return {{}, "nobody could say in time where '" + host + "' is"};
    }
    return answer.get();
}

}  // namespace dao::postgres
