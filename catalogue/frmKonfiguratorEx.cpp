// Building, loading, showing, unloading.

#include "catalogue/frmKonfiguratorEx.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QProgressBar>
#include <QTextEdit>
#include <QToolBar>
#include <QVBoxLayout>

#include "platform/controls/pictures.h"
#include "platform/controls/soft_modal.h"
#include "platform/system/trap.h"
#include "shell/list_columns.h"
#include "shell/modMain.h"
#include "shell/settings.h"

using platform::BoxIcon;
using platform::Trap;

namespace {

constexpr char kSection[] = "frmKonfiguratorEx";
constexpr int kLowerLimit = 30, kUpperLimit = 70;  // percent
constexpr int kMargin = 4, kIconSize = 16;         // logical pixels

struct PaneWords {
    const char* title;
    const char* accessible;
    const char* search;
};
constexpr PaneWords kWords[] = {{"&Grupe:", "Grupe", "Trazi grupu"},
                                {"P&roizvodjaci:", "Proizvodjaci", "Trazi proizvodjaca"},
                                {"&Proizvodi:", "Proizvodi", ""}};

struct SwitchTexts {
    int label, tipOff, tipOn;
    const char* panel;
};
constexpr SwitchTexts kSwitches[] = {{10502, 10504, 10506, "stanjenula"}, {10503, 10505, 10507, "allmft"}};

struct ProductColumn {
    const char* key;
    const char* header;  // nullptr: the price, whose header tells the currency
    platform::HeaderAlignment side;
};
using platform::HeaderAlignment;
constexpr ProductColumn kColumns[] = {{"Proizvodjac", "Proizvodjac", HeaderAlignment::Left},
                                      {"Naziv", "Naziv", HeaderAlignment::Left},
                                      {"Opis", "Opis", HeaderAlignment::Left},
                                      {"Cena1", nullptr, HeaderAlignment::Right},
                                      {"Stanje", "Stanje", HeaderAlignment::Right}};
constexpr const char* kSortSettings[] = {"GRPSort", "MFTSort", "PRDSort"};

const settings::Setting& setting(const char* key) {
    return settings::find(QLatin1String(kSection), QLatin1String(key));
}

QString arrayName(const char* array, int index) {
    return QStringLiteral("%1(%2)").arg(QLatin1String(array)).arg(index);
}

// Grey, but still to be read from a chair's distance.
QColor greyOf(const QPalette& palette) {
    const QColor text = palette.color(QPalette::WindowText), ground = palette.color(QPalette::Window);
    const auto mix = [](int a, int b) { return (a + b) / 2; };
    return QColor(mix(text.red(), ground.red()), mix(text.green(), ground.green()),
                  mix(text.blue(), ground.blue()));
}

QLabel* paneTitle(int pane, QWidget* buddy, QWidget* parent) {
    auto* title = new QLabel(QLatin1String(kWords[pane].title), parent);
    title->setObjectName(arrayName("Label2", pane));
    title->setBuddy(buddy);
    return title;
}

}  // namespace

frmKonfiguratorEx::frmKonfiguratorEx(QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                          Qt::WindowMinMaxButtonsHint | Qt::WindowCloseButtonHint),
      progressPainted_(std::make_unique<QElapsedTimer>()) {
    setObjectName(QLatin1String(kSection));
    setWindowTitle(GetResString(10501));
    setWindowIcon(platform::icon(QStringLiteral("Catalogue")));
    setAcceptDrops(true);
    for (platform::DataControl*& each : Data1)
        each = new platform::DataControl(this);

    buildToolbar();
    VSplitter = new platform::Splitter(Qt::Horizontal, this);
    VSplitter->setObjectName(QStringLiteral("VSplitter"));
    VSplitter->setPanes(buildListPane(kGroups), buildListPane(kManufacturers));
    HSplitter = new platform::Splitter(Qt::Vertical, this);
    HSplitter->setObjectName(QStringLiteral("HSplitter"));
    HSplitter->setPanes(VSplitter, buildProductPane());
    for (platform::Splitter* splitter : {VSplitter, HSplitter})
        splitter->setLimits(kLowerLimit, kUpperLimit);
    buildStatusBar();

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(Toolbar1);
    column->addWidget(HSplitter, 1);
    column->addWidget(StatusBar1);

    watchControls();
    cP = new platform::PopupMenu(this);
    connectControls();
}

frmKonfiguratorEx::~frmKonfiguratorEx() {
    Unload();
}

QWidget* frmKonfiguratorEx::buildListPane(int index) {
    auto* pane = new QWidget(this);
    pane->setObjectName(arrayName("Picture1", index));
    auto* search = new QLineEdit(pane);
    search->setObjectName(arrayName("Text1", index));
    search->setAccessibleName(QLatin1String(kWords[index].search));
    auto* list = new platform::ListBox(pane);
    list->setObjectName(arrayName("List1", index));
    list->setAccessibleName(QLatin1String(kWords[index].accessible));
    auto* column = new QVBoxLayout(pane);
    column->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    column->setSpacing(kMargin);
    column->addWidget(paneTitle(index, search, pane));
    column->addWidget(search);
    column->addWidget(list, 1);
    Text1[static_cast<size_t>(index)] = search;
    List1[static_cast<size_t>(index)] = list;
    return pane;
}

QWidget* frmKonfiguratorEx::buildProductPane() {
    auto* pane = new QWidget(this);
    pane->setObjectName(arrayName("Picture1", kProducts));
    ListView1 = new platform::ListView(pane);
    ListView1->setObjectName(QStringLiteral("ListView1"));
    ListView1->setAccessibleName(QLatin1String(kWords[kProducts].accessible));
    for (const ProductColumn& each : kColumns)
        ListView1->addColumn(QLatin1String(each.key), QLatin1String(each.header ? each.header : "Cena"),
                             each.side);
    ListView1->setSmallIcons({{QStringLiteral("stanjeok"), platform::icon(QStringLiteral("StockOk"))},
                              {QStringLiteral("stanjenula"), platform::icon(QStringLiteral("StockNone"))}});
    Text1_2 = new QTextEdit(pane);
    Text1_2->setObjectName(arrayName("Text1", kProducts));
    Text1_2->setAccessibleName(QStringLiteral("Napomena"));
    Text1_2->setReadOnly(true);
    Text1_2->setAcceptRichText(false);
    Text1_2->setTabChangesFocus(true);
    Text1_2->setFixedHeight(fontMetrics().lineSpacing() * 3 + 2 * kMargin + 4);
    auto* column = new QVBoxLayout(pane);
    column->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    column->setSpacing(kMargin);
    column->addWidget(paneTitle(kProducts, ListView1, pane));
    column->addWidget(ListView1, 1);
    column->addWidget(Text1_2);
    return pane;
}

// A switch stands over its panel: a picture and a label, either of which a click turns over.
QWidget* frmKonfiguratorEx::buildSwitch(int index) {
    auto* holder = new QWidget(StatusBar1);
    holder->setObjectName(arrayName("Picture1", 3 + index));
    auto* picture = new QLabel(holder);
    picture->setPixmap(
        platform::icon(index == 0 ? QStringLiteral("MarkOne") : QStringLiteral("MarkTwo")).pixmap(kIconSize));
    auto* label = new QLabel(GetResString(kSwitches[index].label), holder);
    label->setObjectName(arrayName("Label1", index));
    label->setAccessibleName(label->text());
    label->setFocusPolicy(Qt::TabFocus);
    auto* row = new QHBoxLayout(holder);
    row->setContentsMargins(kMargin, 0, kMargin, 0);
    row->setSpacing(kMargin);
    row->addWidget(picture);
    row->addWidget(label);
    Label1[static_cast<size_t>(index)] = label;
    switchPicture_[static_cast<size_t>(index)] = holder;
    return holder;
}

void frmKonfiguratorEx::buildStatusBar() {
    using platform::StatusBar;
    StatusBar1 = new StatusBar(this);
    StatusBar1->setObjectName(QStringLiteral("StatusBar1"));
    for (int i = 0; i < 2; ++i) {
        const QString key = QLatin1String(kSwitches[i].panel);
        StatusBar1->addPanel(key, StatusBar::AutoSize::Contents);
        StatusBar1->setPanelText(key, QLatin1Char(' ') + GetResString(kSwitches[i].label) + QLatin1Char(' '));
        StatusBar1->setPanelAlignment(key, Qt::AlignHCenter);
        QWidget* cover = buildSwitch(i);
        StatusBar1->panel(key)->setMinimumWidth(cover->sizeHint().width() + 2 * kMargin);
        cover->setAutoFillBackground(true);
        StatusBar1->coverPanel(key, cover);
    }
    StatusBar1->addPanel(QStringLiteral("progress"), StatusBar::AutoSize::Fixed);
    StatusBar1->addPanel(QStringLiteral("tekst"), StatusBar::AutoSize::Spring);

    Picture1_5 = new QWidget(StatusBar1);
    Picture1_5->setObjectName(arrayName("Picture1", 5));
    captionIcon_ = new QLabel(Picture1_5);
    captionText_ = new QLabel(Picture1_5);
    captionText_->setTextFormat(Qt::PlainText);
    auto* row = new QHBoxLayout(Picture1_5);
    row->setContentsMargins(kMargin, 0, 0, 0);
    row->setSpacing(0);
    row->addWidget(captionIcon_);
    row->addWidget(captionText_, 1);
    StatusBar1->panel(QStringLiteral("progress"))
        ->setFixedWidth(fontMetrics().horizontalAdvance(QStringLiteral("   PROIZVODJACI   ")) + kIconSize +
                        4 * kMargin);
    StatusBar1->coverPanel(QStringLiteral("progress"), Picture1_5);

    ProgressBar1 = new QProgressBar(this);
    ProgressBar1->setObjectName(QStringLiteral("ProgressBar1"));
    ProgressBar1->setAccessibleName(QStringLiteral("Popunjavanje"));
    ProgressBar1->setTextVisible(false);
    ProgressBar1->setMinimum(0);
    ProgressBar1->hide();
}

void frmKonfiguratorEx::connectControls() {
    for (int i = 0; i < kListPanes; ++i) {
        const auto pane = static_cast<size_t>(i);
        connect(Text1[pane], &QLineEdit::textChanged, this, [this, i] { searchTextChanged(i); });
        connect(List1[pane], &platform::ListBox::clicked, this, [this, i] { clickList(i); });
        connect(List1[pane], &platform::ListBox::doubleClicked, this, [this, i] {
            focusPane(i);
            EditGrpMft();
        });
        connect(List1[pane], &platform::ListBox::contextMenuAsked, this,
                [this, i](const QPoint& at) { openListMenu(i, at); });
    }
    connect(ListView1, &platform::ListView::itemClicked, this, [this] { clickProduct(); });
    connect(ListView1, &platform::ListView::itemActivated, this, [this] { EditProduct(); });
    connect(ListView1, &platform::ListView::columnClicked, this, &frmKonfiguratorEx::clickColumn);
    connect(ListView1, &platform::ListView::contextMenuAsked, this, &frmKonfiguratorEx::openProductMenu);
    connect(cP, &platform::PopupMenu::click, this, &frmKonfiguratorEx::cP_Click);
    connect(cP, &platform::PopupMenu::itemHighlight, this, &frmKonfiguratorEx::cP_ItemHighlight);

    const QList<QWidget*> order{Text1[0],  List1[0], Text1[1],  List1[1],
                                ListView1, Text1_2,  Label1[0], Label1[1]};
    for (qsizetype i = 1; i < order.size(); ++i)
        setTabOrder(order[i - 1], order[i]);
}

// Keys, focus and pointer concern the whole window, whichever control they reach first.
void frmKonfiguratorEx::watchControls() {
    for (QWidget* each : findChildren<QWidget*>()) {
        each->installEventFilter(this);
        each->setMouseTracking(true);
    }
    setMouseTracking(true);
}

void frmKonfiguratorEx::load() {
    loaded_ = true;
    moveToPlaceAndSize(this, settings::text(setting("WindowData")));
    PrikaziStanjaVecaOdNule = settings::boolean(setting("PrikaziStanjaVecaOdNule"));
    PrikaziSveProizvodjace = settings::boolean(setting("PrikaziSveProizvodjace"));
    for (int i = 0; i < 2; ++i)
        refreshSwitch(i);
    const QString menuError = CreateMenu();
    if (!menuError.isEmpty())
        box(QStringLiteral("Neocekivana greska prilikom stvaranja PopUp menija:\n\n") + menuError,
            BoxIcon::Critical);
    VSplitter->setPosition(settings::integer(setting("VerticalSplitPosition")));
    HSplitter->setPosition(settings::integer(setting("HorisontalSplitPosition")));
    for (size_t i = 0; i < SortTagOf.size(); ++i)
        SortTagOf[i] = settings::text(setting(kSortSettings[i]));
    loadProductList();
}

void frmKonfiguratorEx::loadProductList() {
    Trap step;
    step([&] {
        ListView1->setColumnText(4,
                                 CeneDinarske ? QStringLiteral("Cena [DIN]") : QStringLiteral("Cena [EUR]"));
    });
    placeColumns(*ListView1, settings::text(setting("LVWColumnWidths")),
                 settings::text(setting("LVWColumnPositions")), step);
    if (step.failed())
        box(QStringLiteral("Neocekivana greska prilikom stvaranja ListView kontrole:\n\n%1\nLinija koda: %2")
                .arg(step.line())
                .arg(step.codeLine()),
            BoxIcon::Exclamation);
}

void frmKonfiguratorEx::refreshSwitch(int index) {
    QLabel* label = Label1[static_cast<size_t>(index)];
    const bool on = switchState(index);
    QPalette colours = palette();
    if (!on)
        colours.setColor(QPalette::WindowText, greyOf(palette()));
    label->setPalette(colours);
    const QString tip = GetResString(on ? kSwitches[index].tipOn : kSwitches[index].tipOff);
    label->setToolTip(tip);
    switchPicture_[static_cast<size_t>(index)]->setToolTip(tip);
    if (index == kManufacturers) {
        // Slanted names: the choice among them restricts nothing.
        QFont font = List1[kManufacturers]->font();
        font.setItalic(on);
        List1[kManufacturers]->setFont(font);
    }
}

void frmKonfiguratorEx::toggleSwitch(int index) {
    switchState(index) = !switchState(index);
    refreshSwitch(index);
    DataUpdate(kProducts, QString(), false);
}

void frmKonfiguratorEx::Display() {
    if (!loaded_)
        load();
    QWidget* owner = ParentForm ? ParentForm->asWindow() : parentWidget();
    if (owner && parentWidget() != owner)
        setParent(owner, windowFlags());
    if (ParentForm)
        ParentForm->setDragEvents(this);
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
    if (isVisible())
        loop.exec();
    if (ParentForm)
        ParentForm->setDragEvents(nullptr);
}

void frmKonfiguratorEx::firstShowing() {
    for (int i = 0; i < kPanes; ++i)
        DataUpdate(i, QString(), false);
    focusPane(kGroups);
    for (int i = 0; i < kListPanes; ++i) {
        const auto pane = static_cast<size_t>(i);
        setSearchText(i, List1[pane]->selectedText());
        lastSelection_[pane] = List1[pane]->selectedText();
        const platform::SortTag sort = sortOf(i);
        if (sort.sorted)
            List1[pane]->setToolTip(sort.order == QLatin1String("ASC")
                                        ? QStringLiteral("Lista je sortirana po rastucim nazivima.")
                                        : QStringLiteral("Lista je sortirana po opdajucim nazivima."));
    }
}

void frmKonfiguratorEx::Unload() {
    if (!loaded_)
        return;
    loaded_ = false;
    Trap step;  // settings that cannot be kept must not hold the requisition up
    storeSettings(step);
    if (ParentForm)
        ParentForm->setDragEvents(nullptr);
    ParentForm = nullptr;
    delete cP;
    cP = nullptr;
    for (platform::DataControl* each : Data1)
        each->Close();
}

void frmKonfiguratorEx::storeSettings(Trap& step) {
    const auto keep = [&](const char* key, auto store, const auto& value) {
        step([&] { store(setting(key), value); });
    };
    keep("VerticalSplitPosition", settings::setInteger, VSplitter->position());
    keep("HorisontalSplitPosition", settings::setInteger, HSplitter->position());
    keep("PrikaziStanjaVecaOdNule", settings::setBoolean, PrikaziStanjaVecaOdNule);
    keep("PrikaziSveProizvodjace", settings::setBoolean, PrikaziSveProizvodjace);
    for (size_t i = 0; i < SortTagOf.size(); ++i)
        keep(kSortSettings[i], settings::setText, SortTagOf[i]);
    keep("LVWColumnWidths", settings::setText, columnWidths(*ListView1));
    keep("LVWColumnPositions", settings::setText, columnPositions(*ListView1));
    if (!isMinimized())
        keep("WindowData", settings::setText, placeAndSizeOf(this));
}

platform::BoxAnswer frmKonfiguratorEx::box(const QString& text, BoxIcon icon, platform::BoxButtons buttons,
                                           platform::BoxAnswer preselected) {
    return platform::showBox({text, GetResString(1), icon, buttons, preselected}, this);
}

void frmKonfiguratorEx::reject() {
    QDialog::reject();
}

// However it was closed, whoever waits in Display goes on.
void frmKonfiguratorEx::hideEvent(QHideEvent* event) {
    QDialog::hideEvent(event);
    if (waiting_ && !event->spontaneous())
        waiting_->quit();
}

// A repaint of the whole window, not of a corner of it, finds the person typing.
void frmKonfiguratorEx::paintEvent(QPaintEvent* event) {
    QDialog::paintEvent(event);
    if (event->rect().contains(rect()) && searchBoxOf(focusWidget()) >= 0)
        showCaption(QStringLiteral("KUCAJTE..."), QStringLiteral("type"));
}

bool frmKonfiguratorEx::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
        case QEvent::KeyPress: {
            if (watched != focusWidget())
                break;  // the key has passed the focused control already
            const auto& key = *static_cast<QKeyEvent*>(event);
            const int search = searchBoxOf(watched);
            if ((search >= 0 && searchKey(search, key)) || windowKey(key))
                return true;
            break;
        }
        case QEvent::FocusIn:
            focusCame(watched);
            break;
        case QEvent::MouseMove: {
            auto* mouse = static_cast<QMouseEvent*>(event);
            pointerMoved(watched, mouse->globalPosition().toPoint());
            if (watched == ListView1->viewport() && dragMouse(*mouse))
                return true;
            break;
        }
        case QEvent::MouseButtonPress:
            if (watched == ListView1->viewport())
                dragMouse(*static_cast<QMouseEvent*>(event));
            break;
        case QEvent::MouseButtonRelease:
            for (int i = 0; i < 2; ++i) {
                QWidget* holder = switchPicture_[static_cast<size_t>(i)];
                const bool hit = watched == holder || watched->parent() == holder;
                if (hit && static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) {
                    toggleSwitch(i);
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
    if (!focusWidget() && windowKey(*event))
        return;
    QDialog::keyPressEvent(event);
}
