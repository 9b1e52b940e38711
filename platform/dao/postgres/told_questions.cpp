#include "platform/dao/postgres/told_questions.h"

#include <algorithm>

namespace dao::postgres {

bool ToldQuestions::has(std::int64_t question) const {
    return std::find(asked_.begin(), asked_.end(), question) != asked_.end();
}

bool ToldQuestions::isFirst(std::int64_t question) const {
    return question != kUnwanted && !asked_.empty() && asked_.front() == question;
}

std::int64_t ToldQuestions::wantLast() {
    return asked_.back() = ++begun_;
}

void ToldQuestions::drop(std::int64_t question) {
    std::replace(asked_.begin(), asked_.end(), question, kUnwanted);
}

void ToldQuestions::dropAll() {
    std::fill(asked_.begin(), asked_.end(), kUnwanted);
}

}  // namespace dao::postgres
