#include "records/stages.h"

#include "records/main_view.h"

using platform::Selection;

namespace {

QString numbered(const Stage& stage) {
    return QStringLiteral("%1=%2").arg(QLatin1String(stage.facts().key)).arg(stage.chosen());
}

}  // namespace

Stages::Stages(const EntryFields& fields, const ListOrder& order, MainView& window, QObject* parent)
    : stages_{Stage(kClients, fields, window, parent), Stage(kComputers, fields, window, parent),
              Stage(kServices, fields, window, parent)},
      order_(order),
      window_(window) {}

// --- Selections.

QString Stages::query(int index) const {
    return QLatin1String(stageFacts(index).query) + QString::number(QuerySuffix);
}

Selection Stages::all(int index, Selection::Words words) const {
    return Selection::all(query(index), words);
}

// An entry that is not there has the number -1, and that of no record.
Selection Stages::belonging(int index, Selection::Words words) const {
    return all(index, words).matching(numbered((*this)[index - 1]));
}

Selection Stages::computersOfClient() const {
    return belonging(kComputers);
}

Selection Stages::servicesOfComputer() const {
    return inOrder(belonging(kServices));
}

Selection Stages::inOrder(const Selection& services) const {
    return services.orderedBy(order_.inForce());
}

void Stages::fieldTyped(int index, const QWidget* field) {
    if (LoadingList) {
        return;
    }
    (*this)[index].dirty = (*this)[index].data().fields().isChanged(field);
    window_.UpdateToolbarState();
}
