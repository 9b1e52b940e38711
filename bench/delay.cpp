#include "delay.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <list>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

sockaddr_un addressIn(const std::string& folder) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    (folder + "/.s.PGSQL.5432").copy(address.sun_path, sizeof address.sun_path - 1);
    return address;
}

[[noreturn]] void die(const char* what) {
    std::perror(what);
    std::exit(1);
}

int listeningIn(const std::string& folder) {
    const int listener = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const sockaddr_un address = addressIn(folder);
    unlink(static_cast<const char*>(address.sun_path));
    if (bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
        listen(listener, 16) != 0) {
        die("the delay's own socket");
    }
    return listener;
}

int connectedTo(const std::string& folder) {
    const int made = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const sockaddr_un address = addressIn(folder);
    if (connect(made, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        die("the server behind the delay");
    }
    return made;
}

// One direction of a connection: what has come in, and when it is to come out.
class Way {
 public:
    Way(int from, int to) : from_(from), to_(to) {}

    int from() const { return from_; }
    // False: there is nothing more to come.
    bool takeIn(Clock::time_point due) {
        std::array<char, 65536> room;
        const ssize_t got = recv(from_, room.data(), room.size(), 0);
        if (got <= 0) {
            return false;
        }
        pieces_.push_back({due, std::string(room.data(), static_cast<std::size_t>(got))});
        return true;
    }
    bool letOut(Clock::time_point now) {
        for (; !pieces_.empty() && pieces_.front().due <= now; pieces_.pop_front()) {
            const std::string& bytes = pieces_.front().bytes;
            if (send(to_, bytes.data(), bytes.size(), MSG_NOSIGNAL) != static_cast<ssize_t>(bytes.size())) {
                return false;
            }
        }
        return true;
    }
    Clock::time_point nextDue() const {
        return pieces_.empty() ? Clock::time_point::max() : pieces_.front().due;
    }

 private:
    struct Piece {
        Clock::time_point due;
        std::string bytes;
    };
    int from_, to_;
    std::deque<Piece> pieces_;
};

struct Connection {
    int client, server;
    Way there{client, server}, back{server, client};
};

void waitFor(std::vector<pollfd>& watched, Clock::time_point due) {
    timespec left{};
    if (due != Clock::time_point::max()) {
        const auto wait = std::max(Clock::duration::zero(), due - Clock::now());
        const auto nanoseconds = std::chrono::nanoseconds(wait).count();
        left = {nanoseconds / 1'000'000'000, nanoseconds % 1'000'000'000};
    }
    ppoll(watched.data(), watched.size(), due == Clock::time_point::max() ? nullptr : &left, nullptr);
}

}  // namespace

void delayBetween(const std::string& here, const std::string& server, std::chrono::microseconds each) {
    const int listener = listeningIn(here);
    std::list<Connection> connections;
    while (true) {
        std::vector<pollfd> watched{{listener, POLLIN, 0}};
        Clock::time_point due = Clock::time_point::max();
        for (const Connection& connection : connections) {
            watched.push_back({connection.client, POLLIN, 0});
            watched.push_back({connection.server, POLLIN, 0});
            due = std::min({due, connection.there.nextDue(), connection.back.nextDue()});
        }
        waitFor(watched, due);
        const Clock::time_point now = Clock::now();
        std::size_t at = 1;
        for (auto each_ = connections.begin(); each_ != connections.end(); at += 2) {
            Connection& connection = *each_;
            const bool open = (watched[at].revents == 0 || connection.there.takeIn(now + each)) &&
                              (watched[at + 1].revents == 0 || connection.back.takeIn(now + each)) &&
                              connection.there.letOut(now) && connection.back.letOut(now);
            if (open) {
                ++each_;
                continue;
            }
            close(connection.client);
            close(connection.server);
            each_ = connections.erase(each_);
        }
        if (watched[0].revents != 0) {
            const int client = accept(listener, nullptr, nullptr);
            connections.push_back({client, connectedTo(server)});
        }
    }
}
