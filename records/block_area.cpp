#include "records/block_area.h"

#include <QApplication>
#include <QEvent>

namespace {

constexpr int kLeastLines = 8, kLeastLetters = 60;

}  // namespace

BlockArea::BlockArea(QWidget* parent) : QScrollArea(parent) {
    setObjectName(QStringLiteral("Blocks"));
    setFrameShape(NoFrame);
    setFocusPolicy(Qt::NoFocus);  // the fields have it
    setWidgetResizable(true);
    setWidget(new QWidget(this));
    widget()->installEventFilter(this);
    // The toolkit scrolls to a field when Tab leads there from another one in here, and not from outside.
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* field) {
        if (field && widget()->isAncestorOf(field)) {
            ensureWidgetVisible(field);
        }
    });
}

QSize BlockArea::sizeHint() const {
    return widget()->sizeHint();
}

QSize BlockArea::minimumSizeHint() const {
    const QSize least(fontMetrics().averageCharWidth() * kLeastLetters, fontMetrics().height() * kLeastLines);
    return least.boundedTo(widget()->minimumSizeHint());
}

bool BlockArea::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::LayoutRequest && watched == widget()) {
        updateGeometry();
    }
    return QScrollArea::eventFilter(watched, event);
}
