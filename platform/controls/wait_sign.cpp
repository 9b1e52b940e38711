#include "platform/controls/wait_sign.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QProgressBar>
#include <QVBoxLayout>
#include <chrono>

namespace platform {
namespace {

constexpr int kWidth = 420;
constexpr std::chrono::milliseconds kTurn{250};

}  // namespace

WaitSign::WaitSign(QWidget* parent, const QString& doing, const QElapsedTimer& since)
    : QDialog(parent),
      seconds_(new QLabel(this)),
      buttons_(new QDialogButtonBox(QDialogButtonBox::Cancel, this)),
      since_(since) {
    setObjectName(QStringLiteral("WaitSign"));
    setWindowTitle(parent != nullptr ? parent->window()->windowTitle() : QStringLiteral("Tarvello"));
    setWindowModality(Qt::ApplicationModal);
    setMinimumWidth(kWidth);
    auto* bar = new QProgressBar(this);
    bar->setRange(0, 0);
    bar->setTextVisible(false);
    bar->setAccessibleName(doing);
    auto* column = new QVBoxLayout(this);
    column->addWidget(new QLabel(doing, this));
    column->addWidget(bar);
    column->addWidget(seconds_);
    column->addWidget(buttons_);
    connect(buttons_, &QDialogButtonBox::rejected, this, &WaitSign::reject);
    connect(&turns_, &QTimer::timeout, this, &WaitSign::tellSeconds);
    tellSeconds();
    turns_.start(kTurn);
}

void WaitSign::tellSeconds() {
    seconds_->setText(QStringLiteral("%1 s").arg(since_.elapsed() / 1000));
}

void WaitSign::setLeavable(bool leavable) {
    leavable_ = leavable;
    buttons_->setEnabled(leavable_ && !left_);
}

void WaitSign::reject() {
    if (!leavable_ || left_) {
        return;
    }
    left_ = true;
    buttons_->setEnabled(false);
    emit left();
}

}  // namespace platform
