#include "documents/requisition_list.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QProgressBar>
#include <QScopeGuard>
#include <QStackedLayout>

#include "common/modMain.h"
#include "common/scramble.h"
#include "common/window_helpers.h"
#include "data/session.h"
#include "platform/controls/pictures.h"
#include "platform/controls/status_bar.h"
#include "platform/controls/wait_pointer.h"
#include "platform/system/numbers.h"
#include "platform/system/trap.h"

using requisition::kTotal;

namespace {

constexpr qint64 kProgressEvery = 30;  // milliseconds

}  // namespace

RequisitionList::RequisitionList(QWidget& window)
    : QObject(&window),
      data_(new platform::DataControl(&window)),
      view_(new platform::ListView(&window)),
      cover_(new QLabel(QStringLiteral("Popunjavanje podacima je u toku... Molim sacekajte..."), &window)),
      stack_(new QStackedLayout),
      columnIcons_{{QStringLiteral("ASC"), platform::icon(QStringLiteral("SortUp"))},
                   {QStringLiteral("DESC"), platform::icon(QStringLiteral("SortDown"))},
                   {QStringLiteral("dummy"), platform::icon(QStringLiteral("Dummy"))}} {
    data_->setObjectName(QStringLiteral("Data1"));
    view_->setObjectName(QStringLiteral("ListView1"));
    view_->setAccessibleName(window.windowTitle());
    view_->setSmallIcons({{QStringLiteral("stavka"), platform::icon(QStringLiteral("Item"))},
                          {kTotal, platform::icon(QStringLiteral("Total"))}});
    // A product dropped on the list is dropped on the window.
    view_->setAcceptDrops(false);
    view_->viewport()->setAcceptDrops(false);
    cover_->setObjectName(QStringLiteral("Label1"));
    cover_->setAccessibleName(cover_->text());
    cover_->setAlignment(Qt::AlignCenter);
    cover_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    // In one place, so that the list is as high while it is filled as it is afterwards.
    stack_->addWidget(view_);
    stack_->addWidget(cover_);
}

void RequisitionList::setStatusBar(platform::StatusBar& bar) {
    statusBar_ = &bar;
    progress_ = new QProgressBar(bar.window());
    progress_->setObjectName(QStringLiteral("ProgressBar1"));
    progress_->setAccessibleName(cover_->text());
    progress_->setTextVisible(false);
    progress_->hide();
}

// The query
// ----------------------------------------------------------------------------------------------------------

void RequisitionList::update(qint32 serviceId, const QString& itemKey, bool resetSort) {
    platform::Trap step;
    connectData(step);
    const platform::ListItem* selected = view_->selectedItem();
    const QString rememberedKey = selected ? selected->Key : QString();
    if (resetSort) {
        sort_ = {false, fieldOf(RequisitionColumn::Name), QStringLiteral("ASC")};
        step([&] { switchColumnIcons(false); });
    }
    emit sorting(sort_);
    showSort(step);
    data_->setRecordSource(query(serviceId));
    step([&] { data_->Refresh(); });
    QString errorText;
    if (!fill(step, errorText) && !errorText.isEmpty()) {
        emit fillingFailed(errorText);
    }
    reselect(itemKey, rememberedKey);
}

QString RequisitionList::query(qint32 serviceId) const {
    const QString rows = QStringLiteral("SELECT * FROM InvoiceData WHERE ServiceID=%1").arg(serviceId);
    return sort_.sorted ? rows + QStringLiteral(" ORDER BY ") + sort_.field + QLatin1Char(' ') + sort_.order
                        : rows;
}

void RequisitionList::showSort(platform::Trap& step) {
    if (!sort_.sorted) {
        return;
    }
    step([&] { switchColumnIcons(true); });
    if (const int column = view_->columnOf(sort_.field)) {
        step([&] { view_->setColumnIcon(column, sort_.order); });
    }
}

void RequisitionList::sortBy(int column) {
    switchColumnIcons(true);
    const QString key = view_->columnKey(column);
    if (key != sort_.field) {
        const int old = view_->columnOf(sort_.field);
        if (sort_.sorted && old > 0) {
            view_->setColumnIcon(old, QStringLiteral("dummy"));
        }
        sort_.field = key;
        sort_.order = QStringLiteral("ASC");
    } else {
        sort_.order = sort_.order == QLatin1String("ASC") ? QStringLiteral("DESC") : QStringLiteral("ASC");
    }
    view_->setColumnIcon(column, sort_.order);
    sort_.sorted = true;
}

float RequisitionList::total() const {
    return view_->hasItem(kTotal) ? numberOf(RequisitionCells(view_->item(kTotal)).amount()) : 0;
}

void RequisitionList::connectData(platform::Trap& step) {
    step([&] { data_->DatabaseName = databasePath(); });
    step([&] {
        const QString password = BuildDatabasePassword();
        if (!data_->Connect.contains(password)) {
            data_->Connect = ScrambleOrder(data_->Connect, true) + QStringLiteral(";Pwd=") + password;
        }
    });
}

void RequisitionList::switchColumnIcons(bool on) {
    view_->setColumnImages(on ? columnIcons_ : QHash<QString, QIcon>());
}

void RequisitionList::reselect(const QString& itemKey, const QString& rememberedKey) {
    if (!itemKey.isEmpty()) {
        if (view_->hasItem(itemKey)) {
            view_->select(itemKey);
        }
    } else if (!rememberedKey.isEmpty()) {
        if (view_->hasItem(rememberedKey)) {
            view_->select(rememberedKey);
        }
    } else if (view_->count() > 0) {
        view_->select(1);
    }
}

bool RequisitionList::hasProducts() const {
    return view_->count() > 1 || (view_->count() == 1 && !view_->hasItem(kTotal));
}

// Filling
// ----------------------------------------------------------------------------------------------------------

// `step` may hold the failure of the query already: then there are no rows to be read, and that is the reason
// people are told.
bool RequisitionList::fill(platform::Trap& step, QString& errorText) {
    step([&] { view_->clearItems(); });
    step([&] { view_->addItem(requisition::totalRow()); });
    if (!data_->isOpen()) {
        emit counted({});  // the count of an earlier filling would be believed
    } else if (data_->Recordset().EOF() && data_->Recordset().BOF()) {
        emit counted(QStringLiteral("Nema dobavljaca u bazi podataka"));
    } else {
        fillRows(step);
    }
    if (!step.failed()) {
        return true;
    }
    errorText =
        QStringLiteral("%1 ; Code line no.: %2\nOccured in procedure FillListView of Form frmInvoiceEx")
            .arg(step.line())
            .arg(step.codeLine());
    return false;
}

void RequisitionList::fillRows(platform::Trap& step) {
    dao::Recordset& rows = data_->Recordset();
    qint64 count = 0;
    step([&] { rows.MoveLast(); });
    step([&] { rows.MoveFirst(); });
    step([&] { count = rows.RecordCount(); });
    progress_->setRange(0, static_cast<int>(count));
    float total = 0;
    {
        const platform::WaitPointer wait;
        setFilling(true);
        const auto end = qScopeGuard([this] { setFilling(false); });
        step([&] {
            const requisition::SourceFields fields(rows);
            QElapsedTimer sinceShown;
            sinceShown.start();
            for (int done = 1; !rows.EOF(); ++done) {
                step([&] { total += addRow(fields, step); });
                if (sinceShown.elapsed() >= kProgressEvery) {
                    progress_->setValue(done);
                    sinceShown.restart();
                }
                rows.MoveNext();  // where that fails there is no way to the rows behind
            }
        });
    }
    emit counted(QStringLiteral("%1 proizvod(a) trebovano.").arg(count));
    step([&] {
        const QString sum = platform::formatGrouped(total);
        view_->changeItem(kTotal,
                          [&](platform::ListItem& row) { setCell(row, RequisitionColumn::Amount, sum); });
    });
}

// What the row adds to the total: the customer adds up the amounts that he sees. Throws for a row that
// somebody has deleted meanwhile; nothing of it is shown then.
float RequisitionList::addRow(const requisition::SourceFields& fields, platform::Trap& step) {
    platform::ListItem row = fields.row(step);
    const float amount = numberOf(RequisitionCells(row).amount());
    step([&] { view_->addItem(std::move(row)); });
    return amount;
}

// Out of sight while it is filled: thousands of rows would be drawn one by one.
void RequisitionList::setFilling(bool on) {
    if (on) {
        hadFocus_ = view_->hasFocus();
        showProgress(true);
        stack_->setCurrentWidget(cover_);
        cover_->repaint();
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        return;
    }
    stack_->setCurrentWidget(view_);
    showProgress(false);
    if (hadFocus_) {
        view_->setFocus();
    }
}

void RequisitionList::showProgress(bool on) {
    if (on) {
        statusBar_->coverPanel(statusBar_->firstPanelKey(), progress_);
        progress_->setValue(0);
    } else {
        statusBar_->uncover(progress_, statusBar_->window());
    }
}
