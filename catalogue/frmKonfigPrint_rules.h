#pragma once

#include <QString>

// What goes on a price list, and what stands at its foot, apart from the window that asks for it.
namespace price_list {

// Indexes of the window's two sets of buttons; an index that no button has sets no condition.
struct Choice {
    int range = 0;  // 0 all, 1 of the group, 2 of the maker, 3 of both
    int stock = 0;  // 0 all, 1 in stock, 2 not in stock
    qint32 group = 0, maker = 0;
};
QString statement(const Choice& choice);

// Two or three lines of the firm's data, as kept in the options: where it is, how to reach it.
QString firmsFooter();

}  // namespace price_list
