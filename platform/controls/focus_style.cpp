#include "platform/controls/focus_style.h"

#include <QAbstractItemView>
#include <QAbstractScrollArea>
#include <QPainter>
#include <QStyleOption>
#include <cmath>

#include "platform/controls/shades.h"

namespace platform {
namespace {

constexpr int kTabMargin = 4;  // logical pixels; between the edge of a tab and its ring

void drawRing(QPainter& painter, const QStyleOption& option, int margin = 0) {
    painter.save();
    painter.setPen(option.palette.color(QPalette::Active, QPalette::Highlight));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(option.rect.adjusted(margin, margin, -margin - 1, -margin - 1));
    painter.restore();
}

// What drops down from a field is in use as long as it is seen, whoever has the focus.
bool isWithoutFocus(const QWidget* widget) {
    const auto* view = qobject_cast<const QAbstractItemView*>(widget);
    return view != nullptr && !view->hasFocus() && view->window()->windowType() != Qt::Popup;
}

// An option of that kind, changed, where it is one; else `option` itself.
template <typename Kind, typename Change, typename Draw>
bool drawChanged(const QStyleOption* option, const Change& change, const Draw& draw) {
    const auto* known = qstyleoption_cast<const Kind*>(option);
    if (known == nullptr) {
        return false;
    }
    Kind changed(*known);
    change(changed);
    draw(&changed);
    return true;
}

void paleSelection(QStyleOption& option) {
    const QColor text = option.palette.color(QPalette::Active, QPalette::Text);
    const QColor grey = mixed(option.palette.color(QPalette::Active, QPalette::Base), text, 0.2);
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
        option.palette.setColor(group, QPalette::Highlight, grey);
        option.palette.setColor(group, QPalette::HighlightedText, text);
    }
}

bool isFractional(double scale) {
    return scale != std::floor(scale);
}

// The desktop's style shows some kinds of focus only after the Tab key.
void showFocus(QStyleOption& option) {
    if (option.state.testFlag(QStyle::State_HasFocus)) {
        option.state |= QStyle::State_KeyboardFocusChange;
    }
}

}  // namespace

void FocusStyle::polish(QPalette& palette) {
    QProxyStyle::polish(palette);
    if (isDark(palette)) {
        const QColor field = palette.color(QPalette::Active, QPalette::Base);
        palette.setColor(QPalette::PlaceholderText,
                         mixed(field, palette.color(QPalette::Active, QPalette::Text), 0.55));
    }
}

int FocusStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
    const int usual = QProxyStyle::pixelMetric(metric, option, widget);
    const bool isBox =
        metric == PM_DefaultFrameWidth && qobject_cast<const QAbstractScrollArea*>(widget) != nullptr;
    return isBox && isFractional(widget->devicePixelRatioF()) ? usual + 1 : usual;
}

void FocusStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                               const QWidget* widget) const {
    const auto draw = [&](const QStyleOption* what) {
        QProxyStyle::drawPrimitive(element, what, painter, widget);
    };
    const bool isRow = element == PE_PanelItemViewRow || element == PE_PanelItemViewItem;
    if (isRow && isWithoutFocus(widget) && drawChanged<QStyleOptionViewItem>(option, paleSelection, draw)) {
        return;
    }
    if (element == PE_FrameFocusRect && qobject_cast<const QAbstractItemView*>(widget) == nullptr) {
        return drawRing(*painter, *option);
    }
    if (element == PE_PanelButtonCommand && drawChanged<QStyleOptionButton>(option, showFocus, draw)) {
        return;
    }
    draw(option);
}

void FocusStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                             const QWidget* widget) const {
    const auto draw = [&](const QStyleOption* what) {
        QProxyStyle::drawControl(element, what, painter, widget);
    };
    if (element == CE_ItemViewItem && isWithoutFocus(widget) &&
        drawChanged<QStyleOptionViewItem>(option, paleSelection, draw)) {
        return;
    }
    draw(option);
    if (element == CE_TabBarTabLabel && option->state.testFlag(State_Selected) && widget != nullptr &&
        widget->hasFocus()) {
        drawRing(*painter, *option, kTabMargin);
    }
    if (element == CE_ShapedFrame && option->state.testFlag(State_HasFocus) &&
        qobject_cast<const QAbstractScrollArea*>(widget) != nullptr) {
        drawRing(*painter, *option);
    }
}

void FocusStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                    QPainter* painter, const QWidget* widget) const {
    const auto draw = [&](const QStyleOptionComplex* what) {
        QProxyStyle::drawComplexControl(control, what, painter, widget);
    };
    if (control != CC_ComboBox || !drawChanged<QStyleOptionComboBox>(option, showFocus, draw)) {
        draw(option);
    }
}

}  // namespace platform
