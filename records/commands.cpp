#include "records/commands.h"

const CommandRow* commandAt(std::span<const CommandRow> rows, Menu menu, int position) {
    for (const CommandRow& row : rows) {
        for (const MenuEntry& entry : {row.entry, row.popup}) {
            if (entry.menu == menu && entry.position == position) {
                return &row;
            }
        }
    }
    return nullptr;
}

const CommandRow* commandOf(std::span<const CommandRow> rows, Command name) {
    for (const CommandRow& row : rows) {
        if (row.name == name) {
            return &row;
        }
    }
    return nullptr;
}
