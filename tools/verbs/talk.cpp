#include "tools/verbs/talk.h"

#include <unistd.h>

#include <cstdio>
#include <iostream>

Talk::Talk() : watched_(isatty(STDERR_FILENO) != 0) {}

Talk::~Talk() {
    settle();
}

void Talk::progress(const std::string& what, const std::string& name, std::int64_t done, std::int64_t all) {
    if (quiet || !watched_ || all == 0) {
        return;
    }
    std::fprintf(stderr, "\r%-9s %3d %%  %-20s", what.c_str(), static_cast<int>(100 * done / all),
                 name.c_str());
    written_ = true;
}

void Talk::say(const std::string& line) {
    settle();
    if (!quiet) {
        std::cout << line << '\n';
    }
}

void Talk::settle() {
    if (written_) {
        std::fputs("\r                                        \r", stderr);
        written_ = false;
    }
}
