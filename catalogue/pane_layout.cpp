#include "catalogue/pane_layout.h"

#include <QLabel>
#include <QVBoxLayout>

#include "common/window_helpers.h"

namespace {

constexpr int kMargin = 4;  // logical pixels

}  // namespace

QVBoxLayout* paneLayout(QWidget* surface, int pane, const char* title, QWidget* buddy) {
    auto* label = new QLabel(QLatin1String(title), surface);
    label->setObjectName(arrayName("Label2", pane));
    label->setBuddy(buddy);
    auto* column = new QVBoxLayout(surface);
    column->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    column->setSpacing(kMargin);
    column->addWidget(label);
    return column;
}
