#include "catalogue/catalogue_pane.h"

#include <QScopeGuard>
#include <QWidget>

#include "catalogue/catalogue_status.h"
#include "catalogue/failure_texts.h"
#include "catalogue/sort_state.h"
#include "common/modMain.h"
#include "common/window_helpers.h"
#include "data/session.h"
#include "platform/controls/data_control.h"
#include "platform/system/trap.h"

using platform::SortTag;
using platform::Trap;

CataloguePane::CataloguePane(const Words& words, QWidget* window, CatalogueStatus& status)
    : words_(words), window_(window), status_(status), data_(new platform::DataControl(window)) {}

void CataloguePane::update(const QString& selectKey, bool reset) {
    data_->DatabaseName = databasePath();
    const QString password = BuildDatabasePassword();
    if (!data_->Connect.contains(password)) {
        data_->Connect += QStringLiteral(";Pwd=") + password;
    }
    SortTag order = readSortTag(sortTag, window_);
    const QString remembered = selection();
    if (reset) {
        order.order = QStringLiteral("ASC");
        order.field = QStringLiteral("Naziv");
    }
    showSort(order);
    data_->selection = platform::Selection::statement(statement(order));

    Trap step;
    step([&] { data_->Refresh(); });
    step(refreshCache);
    QString error = fillErrorOf(step);  // why there are no records, rather than that there are none
    const QString fillError = fill();
    if (error.isEmpty()) {
        error = fillError;
    }
    if (!error.isEmpty()) {
        box(window_, QLatin1String(words_.fillError) + QStringLiteral("\n\n") + error,
            platform::BoxIcon::Exclamation);
    }
    select(selectKey.isEmpty() ? remembered : selectKey);
    filled();
    emit changed();
}

SortTag CataloguePane::sort() const {
    Trap step;  // filling the list has told of it already
    SortTag order;
    step([&] { order = platform::splitSortTag(sortTag); });
    return order;
}

QString CataloguePane::fillErrorOf(const Trap& step) const {
    return step.failed() ? failureText(step, words_.filler) : QString();
}

// A row that somebody deletes meanwhile costs its own line only; that it failed is noted. A file that
// somebody holds is not asked again for each of thousands of rows.
void CataloguePane::fillRows(Trap& step, const std::function<void()>& takeRow) {
    dao::Recordset rows = data_->Recordset();
    bool goesOn = false;
    step([&] { goesOn = !(rows.BOF() && rows.EOF()); });
    if (!goesOn) {
        return;
    }
    qint64 count = 0;
    step([&] { rows.MoveLast(); });
    step([&] { rows.MoveFirst(); });
    step([&] { count = rows.RecordCount(); });
    status_.beginProgress(count);
    const auto end = qScopeGuard([this] { status_.endProgress(); });
    while (goesOn) {
        step(takeRow);
        status_.stepProgress();
        goesOn = false;
        step([&] {
            rows.MoveNext();
            goesOn = !rows.EOF() && step.number() != dao::errLocked;
        });
    }
    step([&] { rows.MoveFirst(); });
}

void CataloguePane::setCount(qint64 count) {
    const QString label = QLatin1String(words_.counted);
    countText_ = count > 0 ? GetResString(10510, {{QStringLiteral("|1"), label},
                                                  {QStringLiteral("|2"), QString::number(count)}})
                           : GetResString(10509, {{QStringLiteral("|1"), label}});
}

void CataloguePane::showCount() {
    status_.showText(countText_, true);
}

void CataloguePane::takeFocus() {
    if (list()->isVisible()) {
        list()->setFocus();
    }
}
