#pragma once

#include <QString>
#include <span>

#include "platform/controls/list_view.h"

// A column as the lists of the requisition have it.
struct ListColumn {
    const char* key;
    const char* text;
    platform::HeaderAlignment alignment;
};

// Adds the columns and gives them the widths and places that the settings keep. A figure that cannot be used
// leaves the others standing; the last failure is told in `errorText`, and the result is false.
bool createListView(platform::ListView& list, std::span<const ListColumn> columns, const QString& widths,
                    const QString& positions, QString& errorText);
