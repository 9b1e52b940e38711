#include "catalogue/catalogue_watch.h"

#include <QDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>

#include "catalogue/catalogue_parts.h"
#include "catalogue/catalogue_switch.h"
#include "catalogue/type_ahead.h"
#include "platform/controls/keys.h"
#include "platform/controls/list_view.h"

namespace {

// nullptr: no search box.
TypeAhead* searchAt(const CatalogueParts& parts, const QObject* widget) {
    for (const ListPane* list : {&parts.groups, &parts.manufacturers}) {
        if (widget != nullptr && widget == list->search().box()) {
            return &list->search();
        }
    }
    return nullptr;
}

}  // namespace

void CatalogueWatch::watch() {
    for (QWidget* each : window_->findChildren<QWidget*>()) {
        each->installEventFilter(this);
        each->setMouseTracking(true);
    }
    window_->setMouseTracking(true);
}

bool CatalogueWatch::eventFilter(QObject* watched, QEvent* event) {
    bool done = false;
    switch (event->type()) {
        case QEvent::KeyPress:
            done = keyPressed(watched, *static_cast<QKeyEvent*>(event));
            break;
        case QEvent::FocusIn:
            focusCame(watched);
            break;
        case QEvent::MouseMove:
            done = pointerMoved(watched, *static_cast<QMouseEvent*>(event));
            break;
        case QEvent::MouseButtonPress:
            if (isOverProducts(watched)) {
                parts_.drag.mouse(*static_cast<QMouseEvent*>(event));
            }
            break;
        case QEvent::MouseButtonRelease:
            done = released(watched, *static_cast<QMouseEvent*>(event));
            break;
        default:
            break;
    }
    return done || QObject::eventFilter(watched, event);
}

// Keys ------------------------------------------------------------------------------------------------------

bool CatalogueWatch::keyPressed(const QObject* watched, const QKeyEvent& key) {
    if (watched != window_->focusWidget()) {
        return false;  // the key has passed the focused control already
    }
    TypeAhead* search = searchAt(parts_, watched);
    return (search != nullptr && search->key(key)) || runKey(key);
}

bool CatalogueWatch::runKey(const QKeyEvent& key) {
    if (platform::isEnter(key)) {
        if (!key.isAutoRepeat()) {  // a key held down too long must not draw twice
            parts_.draw.execute();
        }
        return true;
    }
    if (key.key() == Qt::Key_Space) {
        return turnFocusedSwitch();
    }
    if (key.key() == Qt::Key_Escape) {
        window_->reject();
        return true;
    }
    if (key.key() == Qt::Key_F && key.modifiers() == Qt::ControlModifier) {
        goToSearch();
        return true;
    }
    return parts_.bars.runKey(key);
}

// The products have no search box of their own: who looks for one begins with its group.
void CatalogueWatch::goToSearch() {
    const bool fromManufacturers = window_->focusWidget() == parts_.manufacturers.list();
    QLineEdit* box = (fromManufacturers ? parts_.manufacturers : parts_.groups).search().box();
    if (searchAt(parts_, window_->focusWidget()) == nullptr) {
        box->setFocus(Qt::ShortcutFocusReason);
    }
    static_cast<QLineEdit*>(window_->focusWidget())->selectAll();
}

bool CatalogueWatch::turnFocusedSwitch() {
    for (CatalogueSwitch* each : parts_.status.switches()) {
        if (window_->focusWidget() == each->label()) {
            each->turn();
            return true;
        }
    }
    return false;
}

// Focus -----------------------------------------------------------------------------------------------------

void CatalogueWatch::focusCame(const QObject* widget) {
    for (int i = 0; i < CatalogueBars::kPanes; ++i) {
        CataloguePane& pane = parts_.pane(i);
        if (widget == pane.list()) {
            parts_.status.showCaption(QLatin1String(pane.words().caption), QStringLiteral("zoom"));
            pane.showCount();
        }
    }
    if (searchAt(parts_, widget) != nullptr) {
        parts_.status.showCaption(QStringLiteral(" Auto Fill..."), QStringLiteral("type"));
    }
    parts_.bars.update();
}

void CatalogueWatch::tellTyping() {
    if (searchAt(parts_, window_->focusWidget()) != nullptr) {
        parts_.status.showCaption(QStringLiteral("KUCAJTE..."), QStringLiteral("type"));
    }
}

// The pointer -----------------------------------------------------------------------------------------------

bool CatalogueWatch::isOverProducts(const QObject* watched) const {
    return watched == parts_.products.rows().viewport();
}

bool CatalogueWatch::pointerMoved(const QObject* watched, const QMouseEvent& mouse) {
    parts_.bars.pointerMoved(watched, mouse.globalPosition().toPoint());
    return isOverProducts(watched) && parts_.drag.mouse(mouse);
}

bool CatalogueWatch::released(const QObject* watched, const QMouseEvent& mouse) {
    for (CatalogueSwitch* each : parts_.status.switches()) {
        if (each->isHitBy(watched) && mouse.button() == Qt::LeftButton) {
            each->turn();
            return true;
        }
    }
    return false;
}
