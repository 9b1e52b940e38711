#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/dao/error.h"

namespace dao {

// The one way an operation of the engine fails: the number and the sentence go into the engine's list and are
// thrown. An empty sentence takes the engine's own for that number.
[[noreturn]] void fail(int number, const std::string& sentence = {});

// The engine's sentence for a number; empty where it has none of its own.
std::string_view sentenceFor(int number);

const std::vector<ErrorEntry>& lastErrors();

// Where a failure is met and dealt with inside the engine, the list that the callers read stays what it was.
class QuietErrors {
 public:
    QuietErrors();
    ~QuietErrors();
    QuietErrors(const QuietErrors&) = delete;
    QuietErrors& operator=(const QuietErrors&) = delete;

 private:
    std::vector<ErrorEntry> before_;
};

// On a thread that does a part of another one's work: its failures stay out of the list as long as this
// lives.
class ErrorsAside {
 public:
    ErrorsAside();
    ~ErrorsAside();
    ErrorsAside(const ErrorsAside&) = delete;
    ErrorsAside& operator=(const ErrorsAside&) = delete;

 private:
    std::vector<ErrorEntry> list_;
};

}  // namespace dao
