#include "catalogue/row_search.h"

#include <utility>

namespace row_search {

Outcome find(dao::Recordset rows, const QString& criterion, platform::Trap& step,
             std::source_location where) {
    Outcome outcome = Outcome::Failed;
    step(
        [&] {
            rows.FindFirst(criterion.toStdString());
            outcome = rows.NoMatch() ? Outcome::Nothing : Outcome::Found;
        },
        where);
    return outcome;
}

bool hasName(dao::Recordset rows, const QString& field, const QString& name, QChar quote) {
    platform::Trap search;  // of no concern to whoever writes the name afterwards
    return find(std::move(rows), field + QLatin1Char('=') + quote + name + quote, search) == Outcome::Found;
}

}  // namespace row_search
