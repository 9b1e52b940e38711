#include "proxy.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <cstring>
#include <stdexcept>
#include <utility>

namespace {

void require(bool done) {
    if (!done) {
        throw std::runtime_error(std::string("no proxy: ") + std::strerror(errno));
    }
}

int connectedTo(const dao::postgres::Address& place) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const std::string path = place.host + "/.s.PGSQL." + (place.port.empty() ? "5432" : place.port);
    path.copy(address.sun_path, sizeof(address.sun_path) - 1);
    const int socketNumber = socket(AF_UNIX, SOCK_STREAM, 0);
    if (connect(socketNumber, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        close(socketNumber);
        return -1;
    }
    return socketNumber;
}

// Listens on a port that the system chooses.
int listeningAt(int& port) {
    const int listener = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    require(bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0);
    require(listen(listener, 8) == 0);
    socklen_t size = sizeof address;
    require(getsockname(listener, reinterpret_cast<sockaddr*>(&address), &size) == 0);
    port = ntohs(address.sin_port);
    return listener;
}

}  // namespace

Proxy::Proxy(dao::postgres::Address server) : server_(std::move(server)) {
    listener_ = listeningAt(port_);
    worker_ = std::thread([this] { work(); });
}

Proxy::~Proxy() {
    over_ = true;
    worker_.join();
    for (const Pair& pair : pairs_) {
        close(pair.client);
        close(pair.server);
    }
    close(listener_);
}

dao::postgres::Address Proxy::place() const {
    dao::postgres::Address place = server_;
    place.host = "127.0.0.1";
    place.port = std::to_string(port_);
    return place;
}

std::string Proxy::freePort() {
    int port = 0;
    close(listeningAt(port));
    return std::to_string(port);
}

void Proxy::replace(std::string from, std::string to) {
    from_ = std::move(from);
    to_ = std::move(to);
}

void Proxy::hangUpAtAnswer(std::string text) {
    const std::lock_guard<std::mutex> guard(choosing_);
    lastAnswer_ = std::move(text);
}

void Proxy::hangUpAtQuestion(std::string text) {
    const std::lock_guard<std::mutex> guard(choosing_);
    lastQuestion_ = std::move(text);
}

bool Proxy::isToHangUp(const std::string& said, bool isServer) {
    const std::lock_guard<std::mutex> guard(choosing_);
    std::string& text = isServer ? lastAnswer_ : lastQuestion_;
    if (text.empty() || said.find(text) == std::string::npos) {
        return false;
    }
    text.clear();
    return true;
}

void Proxy::work() {
    while (!over_) {
        std::vector<pollfd> watched{{listener_, POLLIN, 0}};
        for (const Pair& pair : pairs_) {
            watched.push_back({pair.client, POLLIN, 0});
            watched.push_back({pair.server, POLLIN, 0});
        }
        if (dead_ || poll(watched.data(), watched.size(), 20) <= 0) {
            if (dead_) {
                usleep(20'000);
            }
            continue;
        }
        for (std::size_t at = pairs_.size(); at-- > 0;) {
            const Pair pair = pairs_[at];
            const bool broken =
                (watched[1 + 2 * at].revents != 0 && !forward(pair.client, pair.server, false)) ||
                (watched[2 + 2 * at].revents != 0 && !forward(pair.server, pair.client, true));
            if (broken) {
                close(pair.client);
                close(pair.server);
                pairs_.erase(pairs_.begin() + static_cast<std::ptrdiff_t>(at));
            }
        }
        if (watched[0].revents != 0) {
            accept();
        }
    }
}

void Proxy::accept() {
    const int client = ::accept(listener_, nullptr, nullptr);
    if (client < 0) {
        return;
    }
    const int server = connectedTo(server_);
    if (server < 0) {
        close(client);
        return;
    }
    pairs_.push_back({client, server});
}

bool Proxy::forward(int from, int to, bool isServer) {
    std::array<char, 16384> room{};
    const ssize_t got = recv(from, room.data(), room.size(), 0);
    if (got <= 0) {
        return false;
    }
    std::string said(room.data(), static_cast<std::size_t>(got));
    if (isToHangUp(said, isServer)) {
        return false;
    }
    if (isServer && !from_.empty()) {
        if (const std::size_t at = said.find(from_); at != std::string::npos) {
            said.replace(at, from_.size(), to_);
        }
    }
    return send(to, said.data(), said.size(), MSG_NOSIGNAL) == got;
}
