#include "catalogue/frmKonfiguratorEx.h"

#include <QDragEnterEvent>
#include <QEventLoop>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QTextEdit>
#include <QToolBar>
#include <QVBoxLayout>

#include "catalogue/catalogue_parts.h"
#include "catalogue/catalogue_switch.h"
#include "catalogue/frmKonfigPrint.h"
#include "catalogue/type_ahead.h"
#include "common/list_columns.h"
#include "common/modMain.h"
#include "common/settings.h"
#include "common/window_helpers.h"
#include "common/window_places.h"
#include "platform/controls/keys.h"
#include "platform/controls/pictures.h"
#include "platform/controls/soft_modal.h"
#include "platform/system/trap.h"

using platform::BoxIcon;
using platform::Trap;

namespace {

constexpr int kLowerLimit = 30, kUpperLimit = 70;  // percent
constexpr const settings::Setting* kSortSettings[] = {
    &settings::catalogue.GRPSort, &settings::catalogue.MFTSort, &settings::catalogue.PRDSort};

TypeAhead& searchOf(const CatalogueParts& parts, int pane) {
    return (pane == CatalogueNames::kGroups ? parts.groups : parts.manufacturers).search();
}

}  // namespace

// Building --------------------------------------------------------------------------------------------------

frmKonfiguratorEx::frmKonfiguratorEx(QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                          Qt::WindowMinMaxButtonsHint | Qt::WindowCloseButtonHint),
      CatalogueRoutines(this, *this) {
    setObjectName(QStringLiteral("frmKonfiguratorEx"));
    setWindowTitle(GetResString(10501));
    setWindowIcon(platform::icon(QStringLiteral("Catalogue")));
    setAcceptDrops(true);
    build();
    watchControls();
    parts_->bars.makePopup();
    setTabs();
}

frmKonfiguratorEx::~frmKonfiguratorEx() {
    Unload();
}

void frmKonfiguratorEx::build() {
    VSplitter = new platform::Splitter(Qt::Horizontal, this);
    VSplitter->setObjectName(QStringLiteral("VSplitter"));
    VSplitter->setPanes(parts_->groups.surface(), parts_->manufacturers.surface());
    HSplitter = new platform::Splitter(Qt::Vertical, this);
    HSplitter->setObjectName(QStringLiteral("HSplitter"));
    HSplitter->setPanes(VSplitter, parts_->products.surface());
    for (platform::Splitter* splitter : {VSplitter, HSplitter}) {
        splitter->setLimits(kLowerLimit, kUpperLimit);
    }
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(Toolbar1);
    column->addWidget(HSplitter, 1);
    column->addWidget(StatusBar1);
}

// Keys, focus and pointer concern the whole window, whichever control they reach first.
void frmKonfiguratorEx::watchControls() {
    for (QWidget* each : findChildren<QWidget*>()) {
        each->installEventFilter(this);
        each->setMouseTracking(true);
    }
    setMouseTracking(true);
}

void frmKonfiguratorEx::setTabs() {
    const QList<QWidget*> order{Text1[0],
                                List1[0],
                                Text1[1],
                                List1[1],
                                ListView1,
                                Text1_2,
                                switches()[0]->label(),
                                switches()[1]->label()};
    for (qsizetype i = 1; i < order.size(); ++i) {
        setTabOrder(order[i - 1], order[i]);
    }
}

// Opening and closing ---------------------------------------------------------------------------------------

void frmKonfiguratorEx::load() {
    loaded_ = true;
    moveToPlaceAndSize(this, settings::text(settings::catalogue.WindowData));
    PrikaziStanjaVecaOdNule = settings::boolean(settings::catalogue.PrikaziStanjaVecaOdNule);
    PrikaziSveProizvodjace = settings::boolean(settings::catalogue.PrikaziSveProizvodjace);
    for (CatalogueSwitch* each : switches()) {
        each->refresh();
    }
    const QString menuError = parts_->bars.createMenu();
    if (!menuError.isEmpty()) {
        box(this, QStringLiteral("Neocekivana greska prilikom stvaranja PopUp menija:\n\n") + menuError,
            BoxIcon::Critical);
    }
    VSplitter->setPosition(settings::integer(settings::catalogue.VerticalSplitPosition));
    HSplitter->setPosition(settings::integer(settings::catalogue.HorisontalSplitPosition));
    for (size_t i = 0; i < kPanes; ++i) {
        SortTagOf[i] = settings::text(*kSortSettings[i]);
    }
    loadProductList();
}

void frmKonfiguratorEx::loadProductList() {
    Trap step;
    step([&] { showUnit(*ListView1, productColumns()); });
    placeColumns(*ListView1, settings::text(settings::catalogue.LVWColumnWidths),
                 settings::text(settings::catalogue.LVWColumnPositions), step);
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
    storeSettings(step);
    if (ParentForm) {
        ParentForm->setDragEvents(nullptr);
    }
    ParentForm = nullptr;
    parts_->bars.dropPopup();
    for (platform::DataControl* each : Data1) {
        each->Close();
    }
}

void frmKonfiguratorEx::storeSettings(Trap& step) {
    const auto keep = [&](const settings::Setting& setting, auto store, const auto& value) {
        step([&] { store(setting, value); });
    };
    keep(settings::catalogue.VerticalSplitPosition, settings::setInteger, VSplitter->position());
    keep(settings::catalogue.HorisontalSplitPosition, settings::setInteger, HSplitter->position());
    keep(settings::catalogue.PrikaziStanjaVecaOdNule, settings::setBoolean, PrikaziStanjaVecaOdNule);
    keep(settings::catalogue.PrikaziSveProizvodjace, settings::setBoolean, PrikaziSveProizvodjace);
    for (size_t i = 0; i < kPanes; ++i) {
        keep(*kSortSettings[i], settings::setText, SortTagOf[i]);
    }
    keep(settings::catalogue.LVWColumnWidths, settings::setText, columnWidths(*ListView1));
    keep(settings::catalogue.LVWColumnPositions, settings::setText, columnPositions(*ListView1));
    if (!isMinimized()) {
        keep(settings::catalogue.WindowData, settings::setText, placeAndSizeOf(this));
    }
}

void frmKonfiguratorEx::reject() {
    QDialog::reject();
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
    if (event->rect().contains(rect()) && searchBoxOf(focusWidget()) >= 0) {
        parts_->status.showCaption(QStringLiteral("KUCAJTE..."), QStringLiteral("type"));
    }
}

// What happens over the window ------------------------------------------------------------------------------

bool frmKonfiguratorEx::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
        case QEvent::KeyPress: {
            if (watched != focusWidget()) {
                break;  // the key has passed the focused control already
            }
            const auto& key = *static_cast<QKeyEvent*>(event);
            const int search = searchBoxOf(watched);
            if ((search >= 0 && searchOf(*parts_, search).key(key)) || windowKey(key)) {
                return true;
            }
            break;
        }
        case QEvent::FocusIn:
            focusCame(watched);
            break;
        case QEvent::MouseMove: {
            auto* mouse = static_cast<QMouseEvent*>(event);
            parts_->bars.pointerMoved(watched, mouse->globalPosition().toPoint());
            if (watched == ListView1->viewport() && parts_->drag.mouse(*mouse)) {
                return true;
            }
            break;
        }
        case QEvent::MouseButtonPress:
            if (watched == ListView1->viewport()) {
                parts_->drag.mouse(*static_cast<QMouseEvent*>(event));
            }
            break;
        case QEvent::MouseButtonRelease:
            for (CatalogueSwitch* each : switches()) {
                if (each->isHitBy(watched) && static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) {
                    each->turn();
                    return true;
                }
            }
            break;
        default:
            break;
    }
    return QDialog::eventFilter(watched, event);
}

void frmKonfiguratorEx::keyPressEvent(QKeyEvent* event) {
    if (!focusWidget() && windowKey(*event)) {
        return;
    }
    QDialog::keyPressEvent(event);
}

bool frmKonfiguratorEx::windowKey(const QKeyEvent& key) {
    if (platform::isEnter(key)) {
        if (!key.isAutoRepeat()) {  // a key held down too long must not draw twice
            TrebovanjeExecute();
        }
        return true;
    }
    if (key.key() == Qt::Key_Space) {
        for (CatalogueSwitch* each : switches()) {
            if (focusWidget() == each->label()) {
                each->turn();
                return true;
            }
        }
        return false;
    }
    if (key.key() == Qt::Key_Escape) {
        reject();
        return true;
    }
    return parts_->bars.runKey(key);
}

int frmKonfiguratorEx::searchBoxOf(const QObject* widget) const {
    for (int i = 0; widget && i < kListPanes; ++i) {
        if (widget == Text1[static_cast<size_t>(i)]) {
            return i;
        }
    }
    return -1;
}

void frmKonfiguratorEx::focusCame(const QObject* widget) {
    for (int i = 0; i < kPanes; ++i) {
        if (widget == parts_->pane(i).list()) {
            parts_->status.showCaption(QLatin1String(parts_->pane(i).words().caption),
                                       QStringLiteral("zoom"));
            parts_->pane(i).showCount();
        }
    }
    if (searchBoxOf(widget) >= 0) {
        parts_->status.showCaption(QStringLiteral(" Auto Fill..."), QStringLiteral("type"));
    }
    ToolbarUpdate();
}

void frmKonfiguratorEx::dragEnterEvent(QDragEnterEvent* event) {
    dragMoveEvent(event);
}

void frmKonfiguratorEx::dragMoveEvent(QDragMoveEvent* event) {
    parts_->drag.over(event);
}

void frmKonfiguratorEx::dragLeaveEvent(QDragLeaveEvent*) {
    parts_->drag.leave();
}

void frmKonfiguratorEx::dropEvent(QDropEvent* event) {
    parts_->drag.drop(event);
}

std::array<CatalogueSwitch*, 2> frmKonfiguratorEx::switches() const {
    return {&parts_->status.aboveZero(), &parts_->status.allManufacturers()};
}

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
