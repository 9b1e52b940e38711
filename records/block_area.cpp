#include "records/block_area.h"

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
