#pragma once

#include <set>
#include <string>

namespace dao::postgres {

// The statements that gave so many rows the last time that the next answer is worth taking in pieces.
class LongAnswers {
 public:
    bool has(const std::string& text) const { return texts_.contains(text); }
    void note(const std::string& text, int rows);

 private:
    std::set<std::string> texts_;
};

}  // namespace dao::postgres
