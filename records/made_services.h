#pragma once

#include <QHash>
#include <QLocale>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/controls/list_item.h"
#include "platform/dao/recordset.h"
#include "records/service_values.h"

// The rows of the services list that have been made, each beside the values of the file that it was made of.
// Who sorts the services of a computer turns rows round that mostly are as they were a moment ago: a row is
// still read each time, and its cells are written anew only where the file has other values by now.
class MadeServices {
 public:
    using Fields = PerServiceColumn<std::optional<dao::Field>>;  // of the current record

    // The list is about to be filled, with so many rows. What the filling before this one did not look at is
    // forgotten, and everything where cells are written in another way now.
    void beginFilling(const service_row::ScreenUnit& unit, int rows);
    // The row of that service; nullptr where there is none made of the values that the fields have. Throws
    // what reading them throws.
    const platform::ListItem* find(qint32 id, const Fields& fields);
    // A row that was made of nothing but the values that the last find() has asked for.
    void keep(qint32 id, const platform::ListItem& row);
    void clear();

 private:
    struct Made {
        std::size_t from = 0;  // of the values, where they lie in those of all rows of its filling
        std::size_t size = 0;
        platform::ListItem row;
    };
    struct Filling {
        std::vector<Made> rows;
        QHash<qint32, std::size_t> places;  // of a service's row among them
        std::string stored;
        std::string_view storedOf(const Made& made) const {
            return std::string_view(stored).substr(made.from, made.size);
        }
    };
    const platform::ListItem* put(qint32 id, platform::ListItem&& row);

    Filling now_, before_;  // looked at in this filling; only in the one before
    std::string asked_;
    service_row::ScreenUnit unit_;
    QLocale locale_;
};
