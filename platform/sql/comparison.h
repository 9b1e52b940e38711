#pragma once

#include <vector>

#include "platform/sql/dialect.h"

namespace sql::writing {

// One comparison, BETWEEN or IN: its operands are brought to one measure, so that what is alike in the engine
// is alike in the store.
class Comparison {
 public:
    // `operands`: the values of the expression's children, in their order. Throws SyntaxError where a text
    // stands beside something else.
    Comparison(const Dialect& dialect, const Expression& e, std::vector<Sql> operands);

    Sql write();  // once

 private:
    void needOneKind() const;
    void bringToOneMeasure();
    void writeBetween();
    void writeList();
    std::string operand(std::size_t place, bool collating, int least);

    const Dialect& dialect_;
    const Expression& e_;
    std::vector<Sql> operands_;
    bool ofTexts_ = false;
    Sql result_;
};

}  // namespace sql::writing
