#include "catalogue/frmKonfiguratorEx.h"

#include <QEventLoop>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPaintEvent>
#include <QTextEdit>
#include <QToolBar>
#include <QVBoxLayout>

#include "catalogue/catalogue_parts.h"
#include "catalogue/catalogue_switch.h"
#include "catalogue/frmKonfigPrint.h"
#include "catalogue/type_ahead.h"
#include "common/modMain.h"
#include "common/settings.h"
#include "common/window_help.h"
#include "common/window_helpers.h"
#include "common/window_places.h"
#include "platform/controls/boxes.h"
#include "platform/controls/data_control.h"
#include "platform/controls/list_box.h"
#include "platform/controls/list_view.h"
#include "platform/controls/pictures.h"
#include "platform/controls/soft_modal.h"
#include "platform/controls/splitter.h"
#include "platform/controls/status_bar.h"
#include "platform/system/trap.h"

using platform::BoxIcon;
using platform::Trap;

// Building --------------------------------------------------------------------------------------------------

frmKonfiguratorEx::frmKonfiguratorEx(QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                          Qt::WindowMinMaxButtonsHint | Qt::WindowCloseButtonHint),
      CatalogueRoutines(this, *this),
      split_(this, *parts_),
      choices_(*parts_),
      watch_(this, *parts_) {
    setObjectName(QStringLiteral("frmKonfiguratorEx"));
    setWindowTitle(GetResString(10501));
    setWindowIcon(platform::icon(QStringLiteral("Catalogue")));
    setAcceptDrops(true);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(Toolbar1);
    column->addWidget(HSplitter, 1);
    column->addWidget(StatusBar1);
    watch_.watch();
    parts_->menus.makePopup();
    setTabs();
    explainByF1(this, CatalogueTopic);
}

frmKonfiguratorEx::~frmKonfiguratorEx() {
    Unload();
}

void frmKonfiguratorEx::setTabs() {
    const QList<QWidget*> order{Text1[0],
                                List1[0],
                                Text1[1],
                                List1[1],
                                ListView1,
                                Text1_2,
                                parts_->status.aboveZero().label(),
                                parts_->status.allManufacturers().label()};
    for (qsizetype i = 1; i < order.size(); ++i) {
        setTabOrder(order[i - 1], order[i]);
    }
}

// Opening and closing ---------------------------------------------------------------------------------------

void frmKonfiguratorEx::load() {
    loaded_ = true;
    moveToPlaceAndSize(this, settings::text(settings::catalogue.WindowData));
    choices_.loadSwitches();
    const QString menuError = parts_->menus.create();
    if (!menuError.isEmpty()) {
        box(this, QStringLiteral("Neocekivana greska prilikom stvaranja PopUp menija:\n\n") + menuError,
            BoxIcon::Critical);
    }
    split_.load();
    choices_.loadOrders();
    loadColumns();
}

void frmKonfiguratorEx::loadColumns() {
    Trap step;
    choices_.loadColumns(step);
    if (step.failed()) {
        box(this,
            QStringLiteral("Neocekivana greska prilikom stvaranja ListView kontrole:\n\n%1\nLinija koda: %2")
                .arg(step.line())
                .arg(step.codeLine()),
            BoxIcon::Exclamation);
    }
}

void frmKonfiguratorEx::Display() {
    if (!loaded_) {
        load();
    }
    QWidget* owner = ParentForm ? ParentForm->asWindow() : parentWidget();
    if (owner && parentWidget() != owner) {
        setParent(owner, windowFlags());
    }
    if (ParentForm) {
        ParentForm->setDragEvents(&parts_->drag);
    }
    const platform::SoftModal only(this);
    QEventLoop loop;
    waiting_ = &loop;
    show();
    if (!shown_) {
        shown_ = true;
        repaint();
        StatusBar1->repaint();
        firstShowing();
    }
    activateWindow();
    if (isVisible()) {
        loop.exec();
    }
    if (ParentForm) {
        ParentForm->setDragEvents(nullptr);
    }
}

void frmKonfiguratorEx::firstShowing() {
    for (int i = 0; i < kPanes; ++i) {
        DataUpdate(i, QString(), false);
    }
    parts_->groups.takeFocus();
    for (ListPane* list : {&parts_->groups, &parts_->manufacturers}) {
        list->search().setText(list->rows().selectedText());
        list->remember();
        list->order().tell();
    }
}

void frmKonfiguratorEx::Unload() {
    if (!loaded_) {
        return;
    }
    loaded_ = false;
    Trap step;  // settings that cannot be kept must not hold the requisition up
    split_.save(step);
    choices_.save(step);
    if (!isMinimized()) {
        step([&] { settings::setText(settings::catalogue.WindowData, placeAndSizeOf(this)); });
    }
    if (ParentForm) {
        ParentForm->setDragEvents(nullptr);
    }
    ParentForm = nullptr;
    parts_->menus.dropPopup();
    for (platform::DataControl* each : Data1) {
        each->Close();
    }
}

// However it was closed, whoever waits in Display goes on.
void frmKonfiguratorEx::hideEvent(QHideEvent* event) {
    QDialog::hideEvent(event);
    if (waiting_ && !event->spontaneous()) {
        waiting_->quit();
    }
}

// A repaint of the whole window, not of a corner of it, finds the person typing.
void frmKonfiguratorEx::paintEvent(QPaintEvent* event) {
    QDialog::paintEvent(event);
    if (event->rect().contains(rect())) {
        watch_.tellTyping();
    }
}

void frmKonfiguratorEx::keyPressEvent(QKeyEvent* event) {
    if (!focusWidget() && watch_.runKey(*event)) {
        return;
    }
    QDialog::keyPressEvent(event);
}

// Commands of the whole window ------------------------------------------------------------------------------

void frmKonfiguratorEx::PrintPriceList() {
    frmKonfigPrint options(this);
    options.setIDGrupe(List1[kGroups]->selectedData());
    options.setIDProizvodjaca(List1[kManufacturers]->selectedData());
    options.Display();
    options.Unload();
}

void frmKonfiguratorEx::showHelp() {
    box(this, QStringLiteral("Bice, bice..."), BoxIcon::Information);
}
