#include "shell/frmSplash.h"

#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QScreen>
#include <QTimer>
#include <QVBoxLayout>
#include <QVersionNumber>
#include <utility>

#include "common/modMain.h"
#include "platform/controls/pictures.h"

namespace {

constexpr int kWidth = 480;
constexpr int kVersionLeft = 200 / 15;  // 200 twips
constexpr int kMargin = 10;

QLabel* labelOver(QWidget* window, int index, const QString& text, const QString& accessibleName) {
    auto* label = new QLabel(text, window);
    label->setObjectName(QStringLiteral("Label1(%1)").arg(index));
    label->setAccessibleName(accessibleName);
    QFont font = label->font();
    font.setPointSizeF(font.pointSizeF() * 1.3);
    label->setFont(font);
    label->setStyleSheet(QStringLiteral("color: #1F4E85; background: transparent; font-weight: bold;"));
    return label;
}

}  // namespace

frmSplash::frmSplash(QWidget* parent)
    : SplashWindow(parent, Qt::Dialog | Qt::FramelessWindowHint),
      image_(new QLabel(this)),
      timer_(new QTimer(this)) {
    setObjectName(QStringLiteral("frmSplash"));
    setWindowTitle(GetResString(1));
    setAccessibleName(GetResString(1));

    image_->setObjectName(QStringLiteral("Image1"));
    image_->setAccessibleName(GetResString(1));
    image_->setPixmap(platform::picture(QStringLiteral("301"), kWidth));
    image_->setMinimumWidth(kWidth);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    layout->addWidget(image_);

    const auto version = QVersionNumber::fromString(QStringLiteral(TARVELLO_VERSION));
    revision_ =
        labelOver(this, 0, QStringLiteral("R%1").arg(version.microVersion()), QStringLiteral("Revision"));
    version_ = labelOver(this, 1,
                         QStringLiteral("%1.%2.%3")
                             .arg(version.majorVersion())
                             .arg(version.minorVersion())
                             .arg(version.microVersion()),
                         QStringLiteral("Version"));

    timer_->setObjectName(QStringLiteral("Timer1"));
    connect(timer_, &QTimer::timeout, this, &frmSplash::takeAway);
}

void frmSplash::setCloseCallback(std::function<void()> callback) {
    closeCallback_ = std::move(callback);
}

void frmSplash::setTimerInterval(int milliseconds) {
    timer_->stop();
    timer_->setInterval(qMax(0, milliseconds));
    if (milliseconds > 0) {
        timer_->start();
    }
}

int frmSplash::timerInterval() const {
    return timer_->interval();
}

void frmSplash::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        closeByUser();
    }
}

void frmSplash::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape || event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        closeByUser();
        return;
    }
    QDialog::keyPressEvent(event);
}

void frmSplash::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    version_->adjustSize();
    revision_->adjustSize();
    version_->move(kVersionLeft, height() - version_->height() - kMargin);
    revision_->move(width() - revision_->width() - kVersionLeft, height() - revision_->height() - kMargin);
}

void frmSplash::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    const QRect around =
        parentWidget() != nullptr ? parentWidget()->window()->frameGeometry() : screen()->availableGeometry();
    move(around.center() - rect().center());
}

// While the program still starts there is nothing behind the picture to go to, so a click then does nothing.
void frmSplash::closeByUser() {
    if (timerInterval() >= 1 || OpenedAsAbout) {
        takeAway();
    }
}

void frmSplash::takeAway() {
    timer_->stop();
    if (closeCallback_) {
        // A copy: the callback may take the window away, and itself with it.
        const std::function<void()> callback = closeCallback_;
        callback();
    } else {
        close();
    }
}
