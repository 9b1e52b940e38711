#include "documents/frmInvoiceEx.h"

#include <QKeyEvent>
#include <QStackedLayout>
#include <QToolBar>
#include <QVBoxLayout>

#include "common/list_columns.h"
#include "common/settings.h"
#include "common/window_helpers.h"
#include "common/window_places.h"
#include "documents/requisition_parts.h"
#include "platform/system/trap.h"

namespace {

// Its parts are announced to a screen reader under the window's title.
QDialog& titled(QDialog& window) {
    window.setWindowTitle(QStringLiteral("Cenovna Lista Usluge"));
    return window;
}

}  // namespace

frmInvoiceEx::frmInvoiceEx(QWidget* parent) : QDialog(parent), RequisitionNames(titled(*this)) {
    setObjectName(QStringLiteral("frmInvoiceEx"));
    setWindowFlags(windowFlags() | Qt::WindowMinMaxButtonsHint);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(Toolbar1);
    column->addLayout(parts_->list.cover().layout(), 1);
    column->addWidget(StatusBar1);
    ListView1->installEventFilter(this);  // its keys
}

frmInvoiceEx::~frmInvoiceEx() {
    Unload();
}

void frmInvoiceEx::setParentForm(QWidget* owner) {
    if (owner != parentWidget()) {
        setParent(owner, windowFlags());
    }
}

// Opening and closing
// ----------------------------------------------------------------------------------------------------------

void frmInvoiceEx::load() {
    if (loaded_) {
        return;
    }
    loaded_ = true;
    activated_ = false;
    moveToPlaceAndSize(this, settings::text(settings::requisition.WindowData));
    QString errorText;
    const bool isFirst = ListView1->columns().count() == 0;
    if (isFirst && !createListView(*ListView1, requisitionColumns(),
                                   settings::text(settings::requisition.LVWColumnWidths),
                                   settings::text(settings::requisition.LVWColumnPositions), errorText)) {
        box(this, errorText, platform::BoxIcon::Critical);
    }
    showUnit(*ListView1, requisitionColumns());
    parts_->list.order().load();
}

void frmInvoiceEx::Display() {
    load();
    ListView1->setFocus();
    exec();
    // Whoever shuts the window before it was ever filled must not find a job without a price.
    activate();
}

void frmInvoiceEx::Unload() {
    if (!loaded_) {
        return;
    }
    loaded_ = false;
    platform::Trap step;  // columns that cannot be kept must not cost the service its price
    step([&] { settings::setText(settings::requisition.LVWColumnWidths, columnWidths(*ListView1)); });
    step([&] { settings::setText(settings::requisition.LVWColumnPositions, columnPositions(*ListView1)); });
    step([&] { parts_->list.order().save(); });
    if (!isMinimized()) {
        step([&] { settings::setText(settings::requisition.WindowData, placeAndSizeOf(this)); });
    }
}

// The first activation
// ----------------------------------------------------------------------------------------------------------

void frmInvoiceEx::activate() {
    if (activated_ || !loaded_) {
        return;
    }
    activated_ = true;
    repaint();
    UpdateDATA({}, false);
}

bool frmInvoiceEx::event(QEvent* event) {
    const bool handled = QDialog::event(event);
    if (event->type() == QEvent::WindowActivate && isVisible()) {
        activate();
    }
    return handled;
}

// A desktop that gives the focus to nobody still shows a filled list.
void frmInvoiceEx::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    QMetaObject::invokeMethod(this, &frmInvoiceEx::activate, Qt::QueuedConnection);
}

// Keys
// ----------------------------------------------------------------------------------------------------------

void frmInvoiceEx::keyPressEvent(QKeyEvent* event) {
    if (!parts_->bar.runKey(*event)) {
        QDialog::keyPressEvent(event);
    }
}

bool frmInvoiceEx::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress && watched == ListView1) {
        return parts_->bar.runKey(*static_cast<QKeyEvent*>(event));
    }
    return QDialog::eventFilter(watched, event);
}
