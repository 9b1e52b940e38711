#include "platform/controls/status_bar.h"

#include <QDateTime>
#include <QFrame>
#include <QLabel>
#include <QLocale>
#include <QMouseEvent>
#include <QTimer>
#include <algorithm>

#include "platform/system/dates.h"

namespace platform {
namespace {

constexpr int kFixedWidth = 96;  // logical pixels

QString shownTime(const QDateTime& now) {
    return QLocale().toString(now.time(), QLocale::ShortFormat);
}

// From now to the next moment at which the clock shows another text, in milliseconds.
int untilNextChange(const QTime& now) {
    const bool seconds = QLocale().timeFormat(QLocale::ShortFormat).contains(QLatin1Char('s'));
    const int step = seconds ? 1000 : 60000;
    return step - now.msecsSinceStartOfDay() % step;
}

}  // namespace

StatusBar::StatusBar(QWidget* parent) : QStatusBar(parent) {}

void StatusBar::addPanel(const QString& key, AutoSize size, int position) {
    removePanel(key);
    auto* label = new QLabel(this);
    label->setObjectName(QStringLiteral("Panel(%1)").arg(key));
    label->setAccessibleName(key);
    label->setTextFormat(Qt::PlainText);
    label->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    label->setMargin(3);
    label->installEventFilter(this);
    if (size == AutoSize::Fixed) {
        label->setFixedWidth(kFixedWidth);
    } else if (size == AutoSize::Spring) {
        label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    }
    const int last = static_cast<int>(panels_.size());
    const int index = position < 1 ? last : std::min(position - 1, last);
    panels_.insert(index, {key, label, size});
    // Permanent panels: a menu's passing hint does not push them away.
    insertPermanentWidget(index, label, size == AutoSize::Spring ? 1 : 0);
    label->show();
}

void StatusBar::removePanel(const QString& key) {
    if (QLabel* label = panel(key)) {
        panels_.removeIf([&](const Panel& each) { return each.label == label; });
        removeWidget(label);
        delete label;
    }
}

bool StatusBar::hasPanel(const QString& key) const {
    return panel(key) != nullptr;
}

QString StatusBar::firstPanelKey() const {
    return panels_.isEmpty() ? QString() : panels_.constFirst().key;
}

QString StatusBar::panelText(const QString& key) const {
    const QLabel* label = panel(key);
    return label ? label->text() : QString();
}

void StatusBar::setPanelText(const QString& key, const QString& text) {
    if (QLabel* label = panel(key)) {
        label->setText(text);
        label->repaint();  // long work follows without a turn of the event loop
    }
}

void StatusBar::setPanelToolTip(const QString& key, const QString& tip) {
    if (QLabel* label = panel(key)) {
        label->setToolTip(tip);
    }
}

void StatusBar::setPanelAlignment(const QString& key, Qt::Alignment alignment) {
    if (QLabel* label = panel(key)) {
        label->setAlignment(alignment | Qt::AlignVCenter);
    }
}

QLabel* StatusBar::panel(const QString& key) const {
    for (const Panel& each : panels_) {
        if (each.key == key) {
            return each.label;
        }
    }
    return nullptr;
}

void StatusBar::coverPanel(const QString& key, QWidget* cover) {
    QLabel* under = panel(key);
    if (!under) {
        return;
    }
    cover->setParent(under);
    cover->setGeometry(under->contentsRect());
    cover->show();
    cover->raise();
}

void StatusBar::uncover(QWidget* cover, QWidget* home) {
    cover->hide();
    cover->setParent(home);
}

void StatusBar::addClock(const QString& key) {
    addPanel(key, AutoSize::Contents);
    setPanelAlignment(key, Qt::AlignHCenter);
    auto* timer = new QTimer(panel(key));  // goes with its panel
    timer->setObjectName(QStringLiteral("ClockTimer"));
    timer->setSingleShot(true);
    const auto tick = [this, key, timer] {
        const QDateTime now = QDateTime::currentDateTime();
        showClock(key, now);
        timer->start(untilNextChange(now.time()));
    };
    connect(timer, &QTimer::timeout, this, tick);
    tick();
}

void StatusBar::showClock(const QString& key, const QDateTime& now) {
    if (panelText(key) != shownTime(now)) {
        setPanelText(key, shownTime(now));
    }
    setPanelToolTip(key, formatLongDate(now.date()));
}

bool StatusBar::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize) {
        for (const Panel& each : panels_) {
            if (each.label == watched) {
                for (QWidget* cover : each.label->findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
                    cover->setGeometry(each.label->contentsRect());
                }
            }
        }
    }
    if (event->type() == QEvent::MouseButtonDblClick &&
        static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) {
        for (const Panel& each : panels_) {
            if (each.label == watched) {
                doubleClick_ = true;
                emit panelDoubleClicked(QString(each.key));
                break;
            }
        }
    }
    return QStatusBar::eventFilter(watched, event);
}

void StatusBar::mousePressEvent(QMouseEvent* event) {
    doubleClick_ = false;
    QStatusBar::mousePressEvent(event);
}

void StatusBar::mouseDoubleClickEvent(QMouseEvent* event) {
    QStatusBar::mouseDoubleClickEvent(event);  // which takes it for a press of its own
    doubleClick_ = true;
}

// Panels let their clicks through to the bar. The second half of a double click is no click of its own.
void StatusBar::mouseReleaseEvent(QMouseEvent* event) {
    const bool second = doubleClick_;
    doubleClick_ = false;
    if (event->button() == Qt::LeftButton && !second && rect().contains(event->position().toPoint())) {
        emit barClicked();
    }
    event->accept();
}

}  // namespace platform
