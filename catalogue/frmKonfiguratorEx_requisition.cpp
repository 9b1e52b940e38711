// Drawing a product from stock for the parent's service, and dragging it there.

#include <QApplication>
#include <QDrag>
#include <QDragEnterEvent>
#include <QMimeData>
#include <QTimer>
#include <optional>
#include <utility>

#include "catalogue/frmKonfiguratorEx.h"
#include "catalogue/row_search.h"
#include "catalogue/stock_draw.h"
#include "documents/frmInputBox.h"
#include "platform/controls/pictures.h"
#include "platform/system/numbers.h"
#include "platform/system/trap.h"
#include "shell/modMain.h"

using platform::BoxAnswer;
using platform::BoxButtons;
using platform::BoxIcon;
using platform::Trap;

struct frmKonfiguratorEx::Draw {
    platform::ListItem item;  // as the list shows it
    QString key;
    qint32 id = 0;
    float listed = 0;  // pieces, as the list said when the person chose
    float quantity = 0;
    QString serialNumber;
    bool append = false;
};

stock_draw::Addition frmKonfiguratorEx::additionOf(const Draw& draw) {
    const qsizetype unit = draw.item.Tag.lastIndexOf(QLatin1Char('|')) + 1;
    return {draw.quantity, draw.serialNumber, draw.append, draw.item.Tag.mid(unit)};
}

namespace {

constexpr int kPriceColumn = 3, kStockColumn = 4;
constexpr int kDragIconSize = 32;

void refreshCache() {
    dao::DBEngine::Idle(dao::dbRefreshCache);
}

float listedStock(const platform::ListItem& item) {
    return platform::readSingle(item.SubItems(kStockColumn)).value_or(0.0F);
}

// Euro; none where the list shows no number. The list shows dinars where the shop wants them; the requisition
// never keeps them.
std::optional<float> priceInEuro(const platform::ListItem& item) {
    const std::optional<double> shown = platform::readNumber(item.SubItems(kPriceColumn));
    if (!shown || (CeneDinarske && KursKupovni == 0))
        return std::nullopt;
    return static_cast<float>(CeneDinarske ? *shown / static_cast<double>(KursKupovni) : *shown);
}

}  // namespace

void frmKonfiguratorEx::TrebovanjeExecute() {
    const platform::ListItem* selected = ListView1->selectedItem();
    if (!selected || !ParentForm)
        return;
    Draw draw;
    draw.item = *selected;
    draw.key = selected->Key;
    draw.id = draw.key.mid(1).toInt();
    draw.listed = listedStock(*selected);
    if (draw.listed == 0) {
        box(QStringLiteral("Proizvoda nema na stanju. Ne mozete da ga trebujete."), BoxIcon::Information);
        return;
    }
    Trap step;
    StockCheck check = StockCheck::AskAgain;
    while (check == StockCheck::AskAgain) {
        if (!askQuantity(draw))
            return;
        check = checkStock(draw, step);
    }
    if (check == StockCheck::Stop)
        return;
    if (check == StockCheck::Failed)
        tellDrawFailed(step);
    else if (!drawProduct(draw, step))
        return;
    ParentForm->TrebovanjeRefresh(false);
    DataUpdate(kProducts, draw.key, false);
}

// The stock goes down first: goods that are counted twice are worse than a line that is missing. False: the
// product is drawn already, and that shall do.
bool frmKonfiguratorEx::drawProduct(const Draw& draw, Trap& step) {
    const bool rowExists = ParentForm->requisitionList().hasItem(draw.key);
    if (rowExists && box(QStringLiteral("Proizvod je vec trebovan. Zelite li da nova kolicina bude dodata na "
                                        "postojecu?"),
                         BoxIcon::Question, BoxButtons::YesNo) != BoxAnswer::Yes)
        return false;
    step([&] { stock_draw::takeFromStock(Data1[kProducts]->Recordset(), draw.quantity); });
    if (step.failed())
        tellDrawFailed(step);
    else if (!(rowExists && addToRow(draw)))
        addNewRow(draw);
    return true;
}

void frmKonfiguratorEx::tellDrawFailed(const Trap& step) {
    box(QStringLiteral("Doslo je do neocekivane greske prilikom upisivanja trebovane kolicine proizvoda u "
                       "bazu podataka.\n\nGreska je data kao:\n%1 (frmKonfiguratorEx->TrebovanjeExecute())")
            .arg(step.line()),
        BoxIcon::Exclamation);
}

bool frmKonfiguratorEx::askQuantity(Draw& draw) {
    frmInputBox input(this);
    input.Display();
    if (input.Cancelled())
        return false;
    draw.quantity = input.Kolicina;
    draw.serialNumber = input.SeriskiBroj;
    draw.append = input.AppendSerialNumber();
    input.Unload();
    return true;
}

// The quantity was typed against the number in the list; here it meets what the file holds by now. Where the
// search for the product failed, nobody knows on which product's record the set stands.
frmKonfiguratorEx::StockCheck frmKonfiguratorEx::checkStock(Draw& draw, Trap& step) {
    using row_search::Outcome;
    dao::Recordset rows = Data1[kProducts]->Recordset();
    refreshCache();
    const Outcome outcome = row_search::find(rows, QStringLiteral("ID=%1").arg(draw.id), step);
    if (outcome == Outcome::Failed)
        return StockCheck::Failed;
    if (outcome == Outcome::Nothing) {
        box(QStringLiteral(
                "Proizvod koji ste pokusali da trebujete nije pronadjen u bazi podataka. Verovatno "
                "ga je neko od korisnika obrisao u medjuvremenu."),
            BoxIcon::Exclamation);
        DataUpdate(kProducts, QString(), false);
        return StockCheck::Stop;
    }
    float real = draw.listed;
    step([&] { real = rows["Stanje"].asSingle(); });
    if (real != draw.listed) {
        box(QStringLiteral("Doslo je do promene stanja proizvoda koji trebujete.\nRaspoloziva kolicina vise "
                           "nije: %1 vec iznosi: %2.\n\nLista proizvoda ce biti automatski azurirana.")
                .arg(platform::textOfSingle(draw.listed), platform::textOfSingle(real)),
            BoxIcon::Exclamation);
        DataUpdate(kProducts, draw.key, false);
        if (ListView1->hasItem(draw.key))
            draw.item = ListView1->item(draw.key);
    }
    if (draw.quantity <= real)
        return StockCheck::Goes;
    const BoxAnswer answer =
        box(QStringLiteral("Trebujete vise nego sto proizvoda ima ma stanju. Trenutno stanje proizvoda je: "
                           "%1.\n\nHocete li da trebujete upravo ovu kolicinu?")
                .arg(platform::textOfSingle(real)),
            BoxIcon::Exclamation, BoxButtons::YesNoCancel);
    if (answer == BoxAnswer::No)
        return StockCheck::AskAgain;
    draw.quantity = real;
    return answer == BoxAnswer::Yes ? StockCheck::Goes : StockCheck::Stop;
}

bool frmKonfiguratorEx::addToRow(const Draw& draw) {
    dao::Recordset rows = ParentForm->requisitionData().Recordset();
    Trap step;  // what fails here is told by the list: it shows what is in the file
    refreshCache();
    if (row_search::find(rows, QStringLiteral("OpremaID=%1").arg(draw.id), step) !=
        row_search::Outcome::Found) {
        box(QStringLiteral(
                "Neko je u medjuvremnu obrisao stavku iz liste trebovanja, ona ce ponovo biti dodata "
                "u listu."),
            BoxIcon::Information);
        return false;
    }
    stock_draw::addToRow(rows, additionOf(draw));
    return true;
}

void frmKonfiguratorEx::addNewRow(const Draw& draw) {
    stock_draw::addRow(ParentForm->requisitionData().Recordset(), {.serviceId = ParentForm->ServiceID(),
                                                                   .productId = draw.id,
                                                                   .manufacturer = draw.item.Text,
                                                                   .group = List1[kGroups]->selectedText(),
                                                                   .name = draw.item.SubItems(1),
                                                                   .description = draw.item.SubItems(2),
                                                                   .drawn = additionOf(draw),
                                                                   .price = priceInEuro(draw.item)});
}

// Dragging --------------------------------------------------------------------------------------------------

// With the button down the pointer draws a product, it does not sweep over the rows.
bool frmKonfiguratorEx::dragMouse(const QMouseEvent& event) {
    const QPoint at = event.position().toPoint();
    if (event.type() == QEvent::MouseButtonPress) {
        pressed_ = event.button() == Qt::LeftButton;
        pressedAt_ = at;
        return false;
    }
    if (!event.buttons().testFlag(Qt::LeftButton))
        return false;
    const bool far = (at - pressedAt_).manhattanLength() >= QApplication::startDragDistance();
    const platform::ListItem* item = ListView1->selectedItem();
    if (pressed_ && far && item && listedStock(*item) != 0) {
        pressed_ = false;
        beginDrag();
    }
    return true;
}

void frmKonfiguratorEx::beginDrag() {
    auto* product = new QMimeData;
    product->setData(QLatin1String(kProductDragFormat), ListView1->selectedItem()->Key.toUtf8());
    QRect row = ListView1->visualRect(ListView1->currentIndex());
    row.setLeft(0);
    row.setRight(ListView1->viewport()->width());
    drag_ = new QDrag(ListView1);
    drag_->setMimeData(product);
    drag_->setPixmap(ListView1->viewport()->grab(row));
    drag_->setHotSpot(QPoint(-8, -8));
    drag_->exec(Qt::CopyAction);
    drag_ = nullptr;
    setDragIcon(QString());
    if (std::exchange(drawPending_, false))
        drawSoon();
}

void frmKonfiguratorEx::setDragIcon(const QString& key) {
    dragIcon_ = key;
    if (!drag_)
        return;
    QPixmap picture;
    if (!key.isEmpty())
        picture =
            platform::icon(key == QLatin1String("drag") ? QStringLiteral("Drag") : QStringLiteral("NoDrop"))
                .pixmap(kDragIconSize);
    for (const Qt::DropAction action : {Qt::CopyAction, Qt::MoveAction, Qt::IgnoreAction})
        drag_->setDragCursor(picture, action);
}

void frmKonfiguratorEx::dragEnterEvent(QDragEnterEvent* event) {
    dragMoveEvent(event);
}

// The catalogue itself takes no product; only its list, where the way back lies, shows no refusal.
void frmKonfiguratorEx::dragMoveEvent(QDragMoveEvent* event) {
    if (!event->mimeData()->hasFormat(QLatin1String(kProductDragFormat)))
        return;
    const QPoint at = ListView1->mapFrom(this, event->position().toPoint());
    setDragIcon(ListView1->rect().contains(at) ? QStringLiteral("drag") : QStringLiteral("nodrop"));
    event->setDropAction(Qt::IgnoreAction);
    event->accept();
}

void frmKonfiguratorEx::dragLeaveEvent(QDragLeaveEvent*) {
    setDragIcon(QString());
}

void frmKonfiguratorEx::dropEvent(QDropEvent* event) {
    setDragIcon(QString());
    event->setDropAction(Qt::IgnoreAction);
    event->accept();
}

void frmKonfiguratorEx::parentDragOver(State state, bool overList) {
    setDragIcon(state == State::Leave ? QString()
                : overList            ? QStringLiteral("drag")
                                      : QStringLiteral("nodrop"));
}

// The drag's own loop still runs here; boxes can open only when it has ended.
void frmKonfiguratorEx::parentDrop() {
    if (drag_)
        drawPending_ = true;
    else
        drawSoon();
}

void frmKonfiguratorEx::drawSoon() {
    QTimer::singleShot(0, this, [this] {
        if (!isVisible())
            return;
        activateWindow();
        TrebovanjeExecute();
    });
}
