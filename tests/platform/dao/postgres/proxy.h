#pragma once

#include <atomic>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "platform/dao/postgres/place.h"

// A stretch of network between a test and its server: a port of this computer, forwarded to a socket. It can
// go dead without closing anything, as a pulled cable does, and it can put other words into the server's
// mouth.
class Proxy {
 public:
    explicit Proxy(dao::postgres::Address server);
    Proxy(const Proxy&) = delete;
    Proxy& operator=(const Proxy&) = delete;
    ~Proxy();

    // The server, as it is reached through here.
    dao::postgres::Address place() const;
    void goDead() { dead_ = true; }
    // Hangs up, once, instead of passing on what has this text in it: what the server says, or what it is
    // told.
    void hangUpAtAnswer(std::string text);
    void hangUpAtQuestion(std::string text);
    // A port that nobody has at this moment.
    static std::string freePort();
    // In what the server says from now on; both are of one length.
    void replace(std::string from, std::string to);

 private:
    struct Pair {
        int client;
        int server;
    };

    void work();
    void accept();
    bool forward(int from, int to, bool isServer);
    bool isToHangUp(const std::string& said, bool isServer);

    dao::postgres::Address server_;
    int listener_ = -1;
    int port_ = 0;
    std::vector<Pair> pairs_;
    std::string from_;
    std::string to_;
    std::mutex choosing_;
    std::string lastAnswer_;
    std::string lastQuestion_;
    std::atomic<bool> dead_ = false;
    std::atomic<bool> over_ = false;
    std::thread worker_;
};
