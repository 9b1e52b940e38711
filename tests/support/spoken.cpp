#include "support/spoken.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTabBar>
#include <QTextEdit>
#include <QToolBar>
#include <algorithm>
#include <utility>

namespace {

// A part of another control, which speaks for it.
bool isInside(const QWidget& widget) {
    const QWidget* parent = widget.parentWidget();
    return qobject_cast<const QScrollBar*>(&widget) != nullptr ||
           qobject_cast<const QHeaderView*>(&widget) != nullptr ||
           qobject_cast<const QComboBox*>(parent) != nullptr ||
           qobject_cast<const QAbstractSpinBox*>(parent) != nullptr ||
           qobject_cast<const QTabBar*>(parent) != nullptr || widget.inherits("QToolBarExtension") ||
           widget.inherits("QAbstractScrollAreaScrollBarContainer") ||
           widget.objectName().startsWith(QLatin1String("qt_"));
}

bool isField(const QWidget& widget) {
    return qobject_cast<const QLineEdit*>(&widget) != nullptr ||
           qobject_cast<const QPlainTextEdit*>(&widget) != nullptr ||
           qobject_cast<const QTextEdit*>(&widget) != nullptr ||
           qobject_cast<const QComboBox*>(&widget) != nullptr ||
           qobject_cast<const QAbstractSpinBox*>(&widget) != nullptr ||
           qobject_cast<const QAbstractItemView*>(&widget) != nullptr;
}

bool isControl(const QWidget& widget) {
    return widget.focusPolicy() != Qt::NoFocus || isField(widget) ||
           qobject_cast<const QAbstractButton*>(&widget) != nullptr;
}

QList<const QWidget*> controlsOf(const QWidget& window) {
    QList<const QWidget*> controls;
    for (const QWidget* widget : window.findChildren<QWidget*>()) {
        if (widget->window() == &window && widget->isVisible() && isControl(*widget) && !isInside(*widget)) {
            controls.append(widget);
        }
    }
    return controls;
}

QAccessibleInterface* spoken(const QWidget& widget) {
    return QAccessible::queryAccessibleInterface(const_cast<QWidget*>(&widget));
}

std::string sayOf(const QWidget& widget) {
    return widget.objectName().toStdString() + " (" + widget.metaObject()->className() + ")";
}

QRect placeOf(const QWidget& widget) {
    return {widget.mapTo(widget.window(), QPoint()), widget.size()};
}

// The control that a screen reader finds the label of: a date and its tick are one field.
const QWidget& wholeOf(const QWidget& field) {
    const QWidget* parent = field.parentWidget();
    return parent != nullptr && parent->focusProxy() == &field ? *parent : field;
}

QList<const QWidget*> labelsOf(const QWidget& field) {
    QList<const QWidget*> labels;
    for (const auto& [other, relation] : spoken(field)->relations(QAccessible::Label)) {
        if (auto* label = qobject_cast<QLabel*>(other->object())) {
            labels.append(label);
        }
    }
    return labels;
}

// Of a list the toolkit tells the relation from the label's side alone.
bool isToldByLabel(const QLabel& label) {
    const auto relations = spoken(label)->relations(QAccessible::Labelled);
    return std::any_of(relations.begin(), relations.end(), [&](const auto& relation) {
        return relation.first->object() == label.buddy() &&
               qobject_cast<const QAbstractItemView*>(label.buddy()) != nullptr;
    });
}

bool isBetween(const QWidget& other, const QRect& label, const QRect& field) {
    const QRect place = placeOf(other);
    return place.left() >= label.right() && place.right() <= field.left() &&
           place.top() <= label.center().y() && place.bottom() >= label.center().y();
}

// Before the field's first line, with nothing between, or close over its beginning.
bool standsAt(const QWidget& label, const QWidget& field, const QList<const QWidget*>& controls) {
    const QRect words = placeOf(label), place = placeOf(field);
    const int line = label.fontMetrics().height();
    const bool before = words.right() <= place.left() && words.center().y() >= place.top() - line / 2 &&
                        words.center().y() <= place.top() + 2 * line;
    if (before) {
        return std::none_of(controls.begin(), controls.end(),
                            [&](const QWidget* other) { return isBetween(*other, words, place); });
    }
    return words.bottom() <= place.top() && place.top() - words.bottom() <= line &&
           std::abs(words.left() - place.left()) <= line;
}

bool mayLabel(const QLabel& label, const QWidget& window) {
    return label.window() == &window && label.isVisible() && !label.text().trimmed().isEmpty() &&
           label.focusPolicy() == Qt::NoFocus && label.pixmap().isNull() &&
           !label.wordWrap();  // prose, no caption
}

void expectTied(const QLabel& label, const QList<const QWidget*>& controls) {
    if (label.buddy() != nullptr) {
        EXPECT_TRUE(labelsOf(*label.buddy()).contains(&label) || isToldByLabel(label))
            << "\"" << label.text().toStdString() << "\" is not told of " << sayOf(*label.buddy());
        return;
    }
    for (const QWidget* field : controls) {
        if (isField(*field) && labelsOf(wholeOf(*field)).isEmpty()) {
            EXPECT_FALSE(standsAt(label, wholeOf(*field), controls))
                << "\"" << label.text().toStdString() << "\" stands at " << sayOf(*field)
                << " and does not belong to it";
        }
    }
}

}  // namespace

void expectSpoken(const QWidget& window) {
    EXPECT_FALSE(spoken(window)->text(QAccessible::Name).isEmpty()) << sayOf(window);
    const QList<const QWidget*> controls = controlsOf(window);
    for (const QWidget* control : controls) {
        EXPECT_FALSE(spoken(*control)->text(QAccessible::Name).trimmed().isEmpty())
            << sayOf(*control) << " in " << window.objectName().toStdString() << " has no name";
    }
    for (const QLabel* label : window.findChildren<QLabel*>()) {
        if (mayLabel(*label, window)) {
            expectTied(*label, controls);
        }
    }
}

namespace {

QList<const QWidget*> tabStops(const QWidget& window) {
    QList<const QWidget*> stops;
    const QWidget* widget = &window;
    do {
        if (widget != &window && widget->window() == &window && widget->isVisible() &&
            (widget->focusPolicy() & Qt::TabFocus) != 0 && widget->focusProxy() == nullptr) {
            stops.append(widget);
        }
        widget = widget->nextInFocusChain();
    } while (widget != &window);
    // A ring: it begins where the eye does.
    const auto first =
        std::min_element(stops.begin(), stops.end(), [](const QWidget* one, const QWidget* other) {
            const QPoint a = placeOf(*one).topLeft(), b = placeOf(*other).topLeft();
            return std::pair(a.y(), a.x()) < std::pair(b.y(), b.x());
        });
    std::rotate(stops.begin(), first, stops.end());
    return stops;
}

// How much of the smaller one lies beside the other.
bool shareHalf(int from, int to, int otherFrom, int otherTo) {
    const int both = std::min(to, otherTo) - std::max(from, otherFrom) + 1;
    return 2 * both >= std::min(to - from, otherTo - otherFrom) + 1;
}

bool isBack(const QRect& before, const QRect& behind) {
    const bool up = behind.bottom() <= before.top() &&
                    shareHalf(before.left(), before.right(), behind.left(), behind.right());
    const bool left = behind.right() <= before.left() &&
                      shareHalf(before.top(), before.bottom(), behind.top(), behind.bottom());
    return up || left;
}

}  // namespace

void expectTabFollowsTheEye(const QWidget& window) {
    const QList<const QWidget*> stops = tabStops(window);
    for (qsizetype i = 0; i < stops.size(); ++i) {
        for (qsizetype k = i + 1; k < stops.size(); ++k) {
            EXPECT_FALSE(isBack(placeOf(*stops.at(i)), placeOf(*stops.at(k))))
                << window.objectName().toStdString() << ": Tab comes to " << sayOf(*stops.at(i))
                << " before it comes to " << sayOf(*stops.at(k));
        }
    }
}
