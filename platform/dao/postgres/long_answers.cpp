#include "platform/dao/postgres/long_answers.h"

#include "platform/dao/driver.h"

namespace dao::postgres {

void LongAnswers::note(const std::string& text, int rows) {
    constexpr std::size_t kMost = 16;
    if (rows <= static_cast<int>(driver::kRowsAtOnce)) {
        return;
    }
    if (texts_.size() == kMost) {
        texts_.clear();
    }
    texts_.insert(text);
}

}  // namespace dao::postgres
