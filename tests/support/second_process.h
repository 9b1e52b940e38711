#pragma once

#include <sys/wait.h>
#include <unistd.h>
#include <csignal>
#include <functional>
#include <stdexcept>
#include <string>

// Another workstation: a real process, forked off while this one has no database open. Its body says ready()
// when it has done what the test waits for, and may then stand still in untilReleased(). It dies with this
// object at the latest.
class SecondProcess {
 public:
    // What the body sees.
    class Side {
     public:
        Side(int toParent, int fromParent) : toParent_(toParent), fromParent_(fromParent) {}
        void ready() const { say('r'); }
        void say(char word) const {
            if (write(toParent_, &word, 1) != 1) {
                _exit(3);
            }
        }
        // A line, without its end; whole or not at all, whenever this process is killed.
        void tell(std::string line) const {
            line += '\n';
            if (write(toParent_, line.data(), line.size()) != static_cast<ssize_t>(line.size())) {
                _exit(3);
            }
        }
        // Returns when the test calls release() or is gone.
        void untilReleased() const {
            char word = 0;
            while (read(fromParent_, &word, 1) < 0) {
            }
        }

     private:
        int toParent_;
        int fromParent_;
    };

    explicit SecondProcess(const std::function<void(const Side&)>& body) {
        int up[2];
        int down[2];
        if (pipe(up) != 0 || pipe(down) != 0) {
            throw std::runtime_error("no pipe");
        }
        child_ = fork();
        if (child_ < 0) {
            throw std::runtime_error("no second process");
        }
        if (child_ == 0) {
            close(up[0]);
            close(down[1]);
            run(body, Side(up[1], down[0]));
        }
        close(up[1]);
        close(down[0]);
        fromChild_ = up[0];
        toChild_ = down[1];
    }
    SecondProcess(const SecondProcess&) = delete;
    SecondProcess& operator=(const SecondProcess&) = delete;
    ~SecondProcess() {
        kill();
        close(fromChild_);
        close(toChild_);
    }

    // The next word of the body; 0 where it has ended without one.
    char next() const {
        char word = 0;
        while (read(fromChild_, &word, 1) < 0) {
        }
        return word;
    }
    // The next line that it told, also after its end; empty: there is none.
    std::string hear() const {
        std::string line;
        for (char word = next(); word != 0 && word != '\n'; word = next()) {
            line += word;
        }
        return line;
    }
    bool waitReady() const { return next() == 'r'; }
    void release() const {
        const char word = 'g';
        [[maybe_unused]] const auto written = write(toChild_, &word, 1);
    }
    // Waits for the end; 0 where the body returned without throwing.
    int wait() {
        int status = -1;
        if (child_ > 0) {
            waitpid(child_, &status, 0);
            child_ = -1;
        }
        return status;
    }
    void kill() {
        if (child_ > 0) {
            ::kill(child_, SIGKILL);
            wait();
        }
    }

 private:
    [[noreturn]] static void run(const std::function<void(const Side&)>& body, const Side& side) {
        try {
            body(side);
            _exit(0);
        } catch (...) {
            _exit(2);
        }
    }

    pid_t child_ = -1;
    int fromChild_ = -1;
    int toChild_ = -1;
};
