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

#include "documents/list_setup.h"
#include "platform/controls/pictures.h"
#include "platform/system/trap.h"
#include "shell/list_columns.h"
#include "shell/modMain.h"
#include "shell/settings.h"

namespace {

using platform::HeaderAlignment;

// The keys are the fields' names: the file does the sorting.
constexpr ListColumn kColumns[] = {
    {"Proizvodjac", "Proizvodjac", HeaderAlignment::Left},
    {"Grupa", "Grupa", HeaderAlignment::Left},
    {"Naziv", "Naziv", HeaderAlignment::Left},
    {"Opis", "Opis", HeaderAlignment::Left},
    {"SN", "Serijski broj", HeaderAlignment::Left},
    {"Cena", "Cena [EUR]", HeaderAlignment::Right},
    {"Stanje", "Trebovano", HeaderAlignment::Right},
    {"Medjutotal", "Medjutotal", HeaderAlignment::Right},
};
constexpr int kPriceColumn = 6;
constexpr char kPanel[] = "tekst";

const settings::Setting& own(const char* key) {
    return settings::find(QStringLiteral("frmInvoiceEx"), QString::fromLatin1(key));
}

}  // namespace

frmInvoiceEx::frmInvoiceEx(QWidget* parent) : QDialog(parent), ParentForm(parent) {
    setObjectName(QStringLiteral("frmInvoiceEx"));
    setWindowTitle(QStringLiteral("Cenovna Lista Usluge"));
    setWindowFlags(windowFlags() | Qt::WindowMinMaxButtonsHint);
    Data1 = new platform::DataControl(this);
    Data1->setObjectName(QStringLiteral("Data1"));
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
    struct Button {
        const char* key;
        const char* caption;
        const char* picture;
        const char* description;
        void (frmInvoiceEx::*action)();
    };
    static constexpr Button kGap{"", "", "", "", nullptr};
    static constexpr Button kButtons[] = {
        {"konfig", "Konfigurator", "Catalogue",
         "Otvara prozor Konfiguratora (pregled i trebovanje opreme) - F12.", &frmInvoiceEx::openCatalogue},
        kGap,
        {"delete", "Izbrisi", "Delete", "Brise trenutno izabranu stavku u listi - Del.",
         &frmInvoiceEx::TrebovanjeDelete},
        {"delall", "Izbrisi Sve", "DeleteAll", "Brise sve stavke iz liste - Shift+Del",
         &frmInvoiceEx::TrebovanjeDeleteAll},
        kGap,
        {"refresh", "Azuriraj", "Refresh", "Popunjava listu najsvezijim podacima iza baze podataka - F5.",
         &frmInvoiceEx::refresh},
        kGap,
        {"print", "Stampaj", "Print", "Stampa profakturu/fakturu - Ctrl+P.", &frmInvoiceEx::print},
        kGap,
        {"unsort", "Ponisti Sortiranje", "Unsort", "Ponistava sortiranje liste (ukoliko ga je bilo) - F8.",
         &frmInvoiceEx::unsort},
        kGap,
        {"help", "Pomoc", "Help", "Prikazuje pomoc vezanu za koriscenje ove forme - F1.",
         &frmInvoiceEx::help},
    };
    Toolbar1 = new QToolBar(this);
    Toolbar1->setObjectName(QStringLiteral("Toolbar1"));
    Toolbar1->setAccessibleName(windowTitle());
    Toolbar1->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    for (const Button& button : kButtons) {
        if (!button.action) {
            Toolbar1->addSeparator();
            continue;
        }
        QAction* action = Toolbar1->addAction(platform::icon(QString::fromLatin1(button.picture)),
                                              QString::fromLatin1(button.caption));
        action->setObjectName(QString::fromLatin1(button.key));
        action->setToolTip(QString::fromLatin1(button.description));
        QWidget* face = Toolbar1->widgetForAction(action);
        face->setObjectName(QString::fromLatin1(button.key));
        face->setAccessibleName(QString::fromLatin1(button.caption));
        buttons_.insert(action->objectName(), action);
        connect(action, &QAction::triggered, this, [this, run = button.action] { (this->*run)(); });
    }
    layout()->addWidget(Toolbar1);
}

void frmInvoiceEx::buildList() {
    ListView1 = new platform::ListView(this);
    ListView1->setObjectName(QStringLiteral("ListView1"));
    ListView1->setAccessibleName(windowTitle());
    ListView1->setSmallIcons({{QStringLiteral("stavka"), platform::icon(QStringLiteral("Item"))},
                              {QStringLiteral("total"), platform::icon(QStringLiteral("Total"))}});
    columnIcons_ = {{QStringLiteral("ASC"), platform::icon(QStringLiteral("SortUp"))},
                    {QStringLiteral("DESC"), platform::icon(QStringLiteral("SortDown"))},
                    {QStringLiteral("dummy"), platform::icon(QStringLiteral("Dummy"))}};
    // A product dropped on the list is dropped on the window.
    ListView1->setAcceptDrops(false);
    ListView1->viewport()->setAcceptDrops(false);
    connect(ListView1, &platform::ListView::columnClicked, this, &frmInvoiceEx::columnClick);
    connect(ListView1, &platform::ListView::itemClicked, this, &frmInvoiceEx::itemClick);

    filling_ = new QLabel(QStringLiteral("Popunjavanje podacima je u toku... Molim sacekajte..."), this);
    filling_->setObjectName(QStringLiteral("Label1"));
    filling_->setAccessibleName(filling_->text());
    filling_->setAlignment(Qt::AlignCenter);
    filling_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    // In one place, so that the list is as high while it is filled as it is afterwards.
    stack_ = new QStackedLayout;
    stack_->addWidget(ListView1);
    stack_->addWidget(filling_);
    static_cast<QVBoxLayout*>(layout())->addLayout(stack_, 1);
}

void frmInvoiceEx::buildStatusBar() {
    StatusBar1 = new platform::StatusBar(this);
    StatusBar1->setObjectName(QStringLiteral("StatusBar1"));
    StatusBar1->setAccessibleName(windowTitle());
    StatusBar1->addPanel(QString::fromLatin1(kPanel), platform::StatusBar::AutoSize::Spring);
    ProgressBar1 = new QProgressBar(this);
    ProgressBar1->setObjectName(QStringLiteral("ProgressBar1"));
    ProgressBar1->setAccessibleName(filling_->text());
    ProgressBar1->setTextVisible(false);
    ProgressBar1->hide();
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
                            filling_,
                            Toolbar1};
    for (QAction* action : Toolbar1->actions())
        watched.append(Toolbar1->widgetForAction(action));
    for (QWidget* widget : watched) {
        widget->setMouseTracking(true);
        widget->installEventFilter(this);
    }
    ListView1->installEventFilter(this);  // its keys
}

void frmInvoiceEx::setParentForm(QWidget* owner) {
    ParentForm = owner;
    if (owner != parentWidget())
        setParent(owner, windowFlags());
}

void frmInvoiceEx::load() {
    if (loaded_)
        return;
    loaded_ = true;
    activated_ = false;
    moveToPlaceAndSize(this, settings::text(own("WindowData")));
    QString errorText;
    const bool isFirst = ListView1->columnCount() == 0;
    if (isFirst && !createListView(*ListView1, kColumns, settings::text(own("LVWColumnWidths")),
                                   settings::text(own("LVWColumnPositions")), errorText))
        box(errorText, platform::BoxIcon::Critical);
    ListView1->setColumnText(kPriceColumn,
                             CeneDinarske ? QStringLiteral("Cena [DIN]") : QStringLiteral("Cena [EUR]"));
    Data1Tag = settings::text(own("LVWColumnSort"));
    if (Data1Tag.isEmpty())
        Data1Tag = QString::fromLatin1(own("LVWColumnSort").defaultValue);
    sort_ = GetSortTagData(Data1Tag);
}

void frmInvoiceEx::Display() {
    load();
    ListView1->setFocus();
    exec();
    // Whoever shuts the window before it was ever filled must not find a job without a price.
    activate();
}

void frmInvoiceEx::Unload() {
    if (!loaded_)
        return;
    loaded_ = false;
    platform::Trap step;  // columns that cannot be kept must not cost the service its price
    step([&] { settings::setText(own("LVWColumnWidths"), columnWidths(*ListView1)); });
    step([&] { settings::setText(own("LVWColumnPositions"), columnPositions(*ListView1)); });
    step([&] { settings::setText(own("LVWColumnSort"), Data1Tag); });
    if (!isMinimized())
        step([&] { settings::setText(own("WindowData"), placeAndSizeOf(this)); });
    ParentForm = nullptr;
}

platform::SortTag frmInvoiceEx::GetSortTagData(const QString& tag) {
    platform::SortTag sort;
    platform::Trap step;
    step([&] { sort = platform::splitSortTag(tag); });
    if (!step.failed())
        return sort;
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

// The first activation
// -----------------------------------------------------------------------------------------------------

void frmInvoiceEx::activate() {
    if (activated_ || !loaded_)
        return;
    activated_ = true;
    repaint();
    UpdateDATA({}, false);
}

bool frmInvoiceEx::event(QEvent* event) {
    const bool handled = QDialog::event(event);
    if (event->type() == QEvent::WindowActivate && isVisible())
        activate();
    return handled;
}

// A desktop that gives the focus to nobody still shows a filled list.
void frmInvoiceEx::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    QMetaObject::invokeMethod(this, &frmInvoiceEx::activate, Qt::QueuedConnection);
}

// Keys, mouse, status text
// -------------------------------------------------------------------------------------------------

bool frmInvoiceEx::runKey(const QKeyEvent& key) {
    struct Row {
        int key;
        Qt::KeyboardModifier modifier;
        void (frmInvoiceEx::*action)();
    };
    static constexpr Row kKeys[] = {
        {Qt::Key_Delete, Qt::NoModifier, &frmInvoiceEx::TrebovanjeDelete},
        {Qt::Key_Delete, Qt::ShiftModifier, &frmInvoiceEx::TrebovanjeDeleteAll},
        {Qt::Key_F5, Qt::NoModifier, &frmInvoiceEx::refresh},
        {Qt::Key_F8, Qt::NoModifier, &frmInvoiceEx::unsort},
        {Qt::Key_F12, Qt::NoModifier, &frmInvoiceEx::openCatalogue},
        {Qt::Key_P, Qt::ControlModifier, &frmInvoiceEx::print},
        {Qt::Key_Escape, Qt::NoModifier, &frmInvoiceEx::reject},
    };
    const Qt::KeyboardModifiers modifiers = key.modifiers() & ~Qt::KeypadModifier;
    for (const Row& row : kKeys) {
        if (key.key() == row.key && modifiers == row.modifier) {
            (this->*row.action)();
            return true;
        }
    }
    return false;
}

void frmInvoiceEx::keyPressEvent(QKeyEvent* event) {
    if (!runKey(*event))
        QDialog::keyPressEvent(event);
}

bool frmInvoiceEx::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress && watched == ListView1)
        return runKey(*static_cast<QKeyEvent*>(event));
    if (event->type() == QEvent::MouseMove) {
        auto* widget = static_cast<QWidget*>(watched);
        const auto* move = static_cast<QMouseEvent*>(event);
        if (widget == Toolbar1 || Toolbar1->isAncestorOf(widget)) {
            hoverToolbar(widget->mapTo(Toolbar1, move->position().toPoint()));
            // It ends here: the window behind would wipe the text out again.
            return move->buttons() == Qt::NoButton;
        }
        SetStatusText({}, false);
    }
    return QDialog::eventFilter(watched, event);
}

void frmInvoiceEx::hoverToolbar(const QPoint& place) {
    const QAction* action = Toolbar1->actionAt(place);
    const bool tells = action && action->isEnabled() && !action->isSeparator();
    SetStatusText(tells ? action->toolTip() : QString(), false);
}

void frmInvoiceEx::SetStatusText(const QString& text, bool remember) {
    if (remember)
        statusText_ = text;
    const QString shown = text.isEmpty() ? statusText_ : text;
    const QString panel = QString::fromLatin1(kPanel);
    if (StatusBar1->panelText(panel) != shown)
        StatusBar1->setPanelText(panel, shown);
}

platform::BoxAnswer frmInvoiceEx::box(const QString& text, platform::BoxIcon icon,
                                      platform::BoxButtons buttons) {
    return platform::showBox({.text = text, .title = GetResString(1), .icon = icon, .buttons = buttons},
                             this);
}
