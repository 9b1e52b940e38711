#include "platform/dao/sqlite/texts.h"

namespace dao::driver {

std::vector<Value> textsOf(Statement& statement) {
    RowBlock block;
    block.reset({Type::Text});
    const std::size_t rows = statement.readRows(block);
    std::vector<Value> texts(rows);
    for (std::size_t row = 0; row < rows; ++row) {
        block.get(row, 0, texts[row]);
    }
    return texts;
}

}  // namespace dao::driver
