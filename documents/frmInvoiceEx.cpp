#include "documents/frmInvoiceEx.h"

#include <QAction>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QProgressBar>
#include <QStackedLayout>
#include <QToolBar>
#include <QVBoxLayout>

#include "common/help.h"
#include "common/list_columns.h"
#include "common/modMain.h"
#include "common/settings.h"
#include "common/window_places.h"
#include "documents/requisition_list.h"
#include "platform/system/trap.h"

namespace {

constexpr char kPanel[] = "tekst";

}  // namespace

frmInvoiceEx::frmInvoiceEx(QWidget* parent) : QDialog(parent), ParentForm(parent) {
    setObjectName(QStringLiteral("frmInvoiceEx"));
    setWindowTitle(QStringLiteral("Cenovna Lista Usluge"));
    setWindowFlags(windowFlags() | Qt::WindowMinMaxButtonsHint);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    buildToolbar();
    buildList();
    buildStatusBar();
    watchMouse();
}

frmInvoiceEx::~frmInvoiceEx() {
    Unload();
}

void frmInvoiceEx::buildToolbar() {
    bar_ = std::make_unique<RequisitionBar>(
        *this, commands(), [this](const RequisitionCommandRow& command) { (this->*command.action)(); });
    Toolbar1 = bar_->toolbar();
    layout()->addWidget(Toolbar1);
}

void frmInvoiceEx::buildList() {
    list_ = new RequisitionList(*this);
    Data1 = &list_->data();
    ListView1 = &list_->view();
    connect(ListView1, &platform::ListView::columnClicked, this, &frmInvoiceEx::columnClick);
    connect(ListView1, &platform::ListView::itemClicked, this, &frmInvoiceEx::itemClick);
    connect(list_, &RequisitionList::sorting, this,
            [this](const platform::SortTag& sort) { Data1Tag = platform::makeSortTag(sort); });
    connect(list_, &RequisitionList::counted, this,
            [this](const QString& text) { SetStatusText(text, true); });
    connect(list_, &RequisitionList::fillingFailed, this, [this](const QString& errorText) {
        box(QStringLiteral("Neocekivana greska prilikom popunjavanja liste trebovanih proizvoda:\n\n") +
                errorText,
            platform::BoxIcon::Exclamation);
    });
    static_cast<QVBoxLayout*>(layout())->addLayout(list_->layout(), 1);
}

void frmInvoiceEx::buildStatusBar() {
    StatusBar1 = new platform::StatusBar(this);
    StatusBar1->setObjectName(QStringLiteral("StatusBar1"));
    StatusBar1->setAccessibleName(windowTitle());
    StatusBar1->addPanel(QString::fromLatin1(kPanel), platform::StatusBar::AutoSize::Spring);
    list_->setStatusBar(*StatusBar1);
    ProgressBar1 = list_->progress();
    layout()->addWidget(StatusBar1);
}

// The status bar tells what is under the pointer, also where no button is held down.
void frmInvoiceEx::watchMouse() {
    QList<QWidget*> watched{this,
                            ListView1->viewport(),
                            ListView1->header()->viewport(),
                            ProgressBar1,
                            StatusBar1,
                            StatusBar1->panel(QString::fromLatin1(kPanel)),
                            list_->cover(),
                            Toolbar1};
    for (QAction* action : Toolbar1->actions()) {
        watched.append(Toolbar1->widgetForAction(action));
    }
    for (QWidget* widget : watched) {
        widget->setMouseTracking(true);
        widget->installEventFilter(this);
    }
    ListView1->installEventFilter(this);  // its keys
}

void frmInvoiceEx::setParentForm(QWidget* owner) {
    ParentForm = owner;
    if (owner != parentWidget()) {
        setParent(owner, windowFlags());
    }
}

void frmInvoiceEx::load() {
    if (loaded_) {
        return;
    }
    loaded_ = true;
    activated_ = false;
    moveToPlaceAndSize(this, settings::text(settings::requisition.WindowData));
    QString errorText;
    const bool isFirst = ListView1->columnCount() == 0;
    if (isFirst && !createListView(*ListView1, requisitionColumns(),
                                   settings::text(settings::requisition.LVWColumnWidths),
                                   settings::text(settings::requisition.LVWColumnPositions), errorText)) {
        box(errorText, platform::BoxIcon::Critical);
    }
    showUnit(*ListView1, requisitionColumns());
    Data1Tag = settings::text(settings::requisition.LVWColumnSort);
    if (Data1Tag.isEmpty()) {
        Data1Tag = QString::fromLatin1(settings::requisition.LVWColumnSort.defaultValue);
    }
    list_->setSort(GetSortTagData(Data1Tag));
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
    step([&] { settings::setText(settings::requisition.LVWColumnSort, Data1Tag); });
    if (!isMinimized()) {
        step([&] { settings::setText(settings::requisition.WindowData, placeAndSizeOf(this)); });
    }
    ParentForm = nullptr;
}

platform::SortTag frmInvoiceEx::GetSortTagData(const QString& tag) {
    platform::SortTag sort;
    platform::Trap step;
    step([&] { sort = platform::splitSortTag(tag); });
    if (!step.failed()) {
        return sort;
    }
    platform::showBox(
        {.text = QStringLiteral(
                     "Neocekivana greska prilikom odredjivanja svojstava sortiranja:\n\n%1\nLinija koda: %2")
                     .arg(step.line())
                     .arg(step.codeLine()),
         .title = QStringLiteral("frmInvoiceEx -> GetSortTagData(") + tag + QLatin1Char(')'),
         .icon = platform::BoxIcon::Exclamation,
         .help = showHelpContents},
        this);
    return {};
}

// The list
// -------------------------------------------------------------------------------------------------------------

void frmInvoiceEx::UpdateDATA(const QString& itemKey, bool resetSort) {
    list_->update(serviceId_, itemKey, resetSort);
    total_ = list_->total();
    UpdateToolbar();
}

void frmInvoiceEx::TrebovanjeRefresh(bool resetSort) {
    UpdateDATA({}, resetSort);
    if (ListView1->isVisible()) {
        ListView1->setFocus();
    }
}

void frmInvoiceEx::UpdateToolbar() {
    bar_->update({.hasProducts = list_->hasProducts(),
                  .hasSelection = ListView1->selectedIndex() > 0,
                  .isSorted = list_->sort().sorted});
}

// Only a click looks at which row it is: after a refresh the sum may be chosen, and the button stays lit.
void frmInvoiceEx::itemClick(const QString& key) {
    bar_->action(RequisitionCommand::Delete)->setEnabled(key != requisition::kTotal);
}

void frmInvoiceEx::columnClick(int column) {
    if (!list_->hasProducts()) {
        return;
    }
    if (column == columnNumber(RequisitionColumn::Amount)) {
        box(QStringLiteral("Ne mozete sortirati po medjutotalu."), platform::BoxIcon::Information);
        return;
    }
    list_->sortBy(column);
    UpdateDATA({}, false);
}

// The first activation
// -----------------------------------------------------------------------------------------------------

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

// Keys, mouse, status text
// -------------------------------------------------------------------------------------------------

void frmInvoiceEx::keyPressEvent(QKeyEvent* event) {
    if (!bar_->runKey(*event)) {
        QDialog::keyPressEvent(event);
    }
}

bool frmInvoiceEx::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress && watched == ListView1) {
        return bar_->runKey(*static_cast<QKeyEvent*>(event));
    }
    if (event->type() == QEvent::MouseMove) {
        auto* widget = static_cast<QWidget*>(watched);
        const auto* move = static_cast<QMouseEvent*>(event);
        if (widget == Toolbar1 || Toolbar1->isAncestorOf(widget)) {
            SetStatusText(bar_->tipAt(widget->mapTo(Toolbar1, move->position().toPoint())), false);
            // It ends here: the window behind would wipe the text out again.
            return move->buttons() == Qt::NoButton;
        }
        SetStatusText({}, false);
    }
    return QDialog::eventFilter(watched, event);
}

void frmInvoiceEx::SetStatusText(const QString& text, bool remember) {
    if (remember) {
        statusText_ = text;
    }
    const QString shown = text.isEmpty() ? statusText_ : text;
    const QString panel = QString::fromLatin1(kPanel);
    if (StatusBar1->panelText(panel) != shown) {
        StatusBar1->setPanelText(panel, shown);
    }
}

platform::BoxAnswer frmInvoiceEx::box(const QString& text, platform::BoxIcon icon,
                                      platform::BoxButtons buttons) {
    return platform::showBox({.text = text, .title = GetResString(1), .icon = icon, .buttons = buttons},
                             this);
}
