#include "documents/requisition_list.h"

#include <QScopeGuard>
#include <memory>

#include "common/modMain.h"
#include "common/scramble.h"
#include "common/window_helpers.h"
#include "data/session.h"
#include "documents/requisition_rows.h"
#include "platform/controls/pictures.h"
#include "platform/controls/wait_pointer.h"
#include "platform/system/trap.h"

using requisition::kTotal;

namespace {

// The total above all products.
void showRows(platform::ListView& view, const std::shared_ptr<const requisition::DrawnRows>& products,
              float total) {
    view.setLazyItems(
        products->count() + 1,
        [products, total](int index) {
            return index == 1 ? requisition::totalRow(total) : products->row(index - 1);
        },
        [products](const QString& key) {
            const int index = products->find(key);
            return key == kTotal ? 1 : index == 0 ? 0 : index + 1;
        });
}

}  // namespace

RequisitionList::RequisitionList(QWidget& window, platform::StatusBar& bar)
    : QObject(&window),
      data_(new platform::DataControl(&window)),
      view_(new platform::ListView(&window)),
      cover_(*view_, bar),
      order_(*view_) {
    data_->setObjectName(QStringLiteral("Data1"));
    view_->setObjectName(QStringLiteral("ListView1"));
    view_->setAccessibleName(window.windowTitle());
    view_->columns().setMenuTitle(QLatin1String(kSerbianColumnMenu));
    view_->setSmallIcons({{QStringLiteral("stavka"), platform::icon(QStringLiteral("Item"))},
                          {kTotal, platform::icon(QStringLiteral("Total"))}});
    // A product dropped on the list is dropped on the window.
    view_->setAcceptDrops(false);
    view_->viewport()->setAcceptDrops(false);
    connect(view_, &platform::ListView::columnClicked, this, &RequisitionList::columnClick);
}

// The query
// ----------------------------------------------------------------------------------------------------------

void RequisitionList::update(const QString& itemKey, bool resetSort) {
    platform::Trap step;
    connectData(step);
    const platform::ListItem* selected = view_->selectedItem();
    const QString rememberedKey = selected ? selected->Key : QString();
    if (resetSort) {
        order_.reset(step);
    }
    order_.keepTag();
    order_.show(step);
    data_->selection = platform::Selection::statement(
        QStringLiteral("SELECT * FROM InvoiceData WHERE ServiceID=%1").arg(serviceId) + order_.clause());
    step([&] { data_->Refresh(); });
    fill(step);
    reselect(itemKey, rememberedKey);
    emit updated();
}

void RequisitionList::refresh(bool resetSort) {
    update({}, resetSort);
    if (view_->isVisible()) {
        view_->setFocus();
    }
}

void RequisitionList::columnClick(int column) {
    if (!hasProducts()) {
        return;
    }
    if (column == columnNumber(RequisitionColumn::Amount)) {
        box(view_->window(), QStringLiteral("Ne mozete sortirati po medjutotalu."),
            platform::BoxIcon::Information);
        return;
    }
    order_.sortBy(column);
    update({}, false);
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
void RequisitionList::fill(platform::Trap& step) {
    step([&] { view_->clearItems(); });
    step([&] { view_->addItem(requisition::totalRow(0)); });
    if (!data_->isOpen()) {
        emit counted({});  // the count of an earlier filling would be believed
    } else if (data_->Recordset().EOF() && data_->Recordset().BOF()) {
        emit counted(QStringLiteral("Nema dobavljaca u bazi podataka"));
    } else {
        fillRows(step);
    }
    if (step.failed()) {
        box(view_->window(),
            QStringLiteral("Neocekivana greska prilikom popunjavanja liste trebovanih proizvoda:\n\n%1 ; "
                           "Code line no.: %2\nOccured in procedure FillListView of Form frmInvoiceEx")
                .arg(step.line())
                .arg(step.codeLine()),
            platform::BoxIcon::Exclamation);
    }
}

void RequisitionList::fillRows(platform::Trap& step) {
    dao::Recordset& rows = data_->Recordset();
    qint64 count = 0;
    step([&] { rows.MoveLast(); });
    step([&] { rows.MoveFirst(); });
    step([&] { count = rows.RecordCount(); });
    const auto products = std::make_shared<requisition::DrawnRows>(count);
    float total = 0;
    {
        const platform::WaitPointer wait;
        cover_.begin(count);
        const auto end = qScopeGuard([this] { cover_.end(); });
        total = readRows(*products, step);
    }
    emit counted(QStringLiteral("%1 proizvod(a) trebovano.").arg(count));
    step([&] { showRows(*view_, products, total); });
}

float RequisitionList::readRows(requisition::DrawnRows& products, platform::Trap& step) {
    dao::Recordset& rows = data_->Recordset();
    float total = 0;
    step([&] {
        const requisition::SourceFields fields(rows);
        for (int done = 1; !rows.EOF(); ++done) {
            step([&] { total += products.take(fields, step); });
            cover_.tell(done);
            rows.MoveNext();  // where that fails there is no way to the rows behind
        }
    });
    return total;
}
