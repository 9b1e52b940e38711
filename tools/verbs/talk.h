#pragma once

#include <cstdint>
#include <string>

// What the command says while it works. Progress goes to the standard error output and only where somebody
// watches; what was done goes to the standard output. --quiet silences both, never an error.
class Talk {
 public:
    Talk();
    ~Talk();
    Talk(const Talk&) = delete;
    Talk& operator=(const Talk&) = delete;

    // One line that is written over and over, for somebody who watches; a log has no use for it. `all` may be
    // 0 while nobody knows yet how much there is to do: nothing is written then.
    void progress(const std::string& what, const std::string& name, std::int64_t done, std::int64_t all);
    void say(const std::string& line);
    // Takes the line of progress away.
    void settle();

    bool quiet = false;

 private:
    bool watched_;
    bool written_ = false;
};
