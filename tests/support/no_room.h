#pragma once

#include <sys/resource.h>

#include <csignal>

// As long as it lives no file of this process can grow, as on a full disk.
class NoRoom {
 public:
    NoRoom() {
        getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit none{0, before_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &none);
    }
    ~NoRoom() {
        setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, signal_);
    }
    NoRoom(const NoRoom&) = delete;
    NoRoom& operator=(const NoRoom&) = delete;

 private:
    rlimit before_{};
    void (*signal_)(int) = std::signal(SIGXFSZ, SIG_IGN);
};
