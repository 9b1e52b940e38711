#pragma once

#include <cstdint>
#include <deque>

namespace dao::postgres {

// The pipelines that were sent and whose answers have not come in yet, in their order: those whose answers
// are taken one by one go by a number, and of the others nobody wants any.
class ToldQuestions {
 public:
    static constexpr std::int64_t kUnwanted = 0;

    bool isEmpty() const { return asked_.empty(); }
    bool has(std::int64_t question) const;
    bool isFirst(std::int64_t question) const;  // whose answers come in next; never an unwanted one

    void addUnwanted() { asked_.push_back(kUnwanted); }
    std::int64_t wantLast();  // the number of the one that was added last
    void drop(std::int64_t question);
    void dropAll();
    void endFirst() { asked_.pop_front(); }
    void forgetLast() { asked_.pop_back(); }  // its end is waited for otherwise

 private:
    std::deque<std::int64_t> asked_;
    std::int64_t begun_ = kUnwanted;  // the last number
};

}  // namespace dao::postgres
