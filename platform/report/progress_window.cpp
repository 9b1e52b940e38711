#include "platform/report/progress_window.h"

#include <QCoreApplication>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace report {
namespace {

constexpr int kNoticeable = 300;  // milliseconds
constexpr int kBetween = 50;
constexpr int kSteps = 1000;

}  // namespace

ProgressWindow::ProgressWindow(QWidget* owner) : QDialog(owner), bar_(new QProgressBar(this)) {
    setObjectName(QStringLiteral("Progress"));
    setWindowTitle(QStringLiteral("Priprema dokumenta..."));
    setAccessibleName(windowTitle());
    setWindowModality(Qt::ApplicationModal);
    auto* label = new QLabel(windowTitle(), this);
    bar_->setObjectName(QStringLiteral("ProgressBar1"));
    bar_->setAccessibleName(QStringLiteral("Napredak"));
    bar_->setRange(0, kSteps);
    bar_->setMinimumWidth(320);
    auto* cancel = new QPushButton(QStringLiteral("&Otkazi"), this);
    cancel->setObjectName(QStringLiteral("Command1"));
    cancel->setAccessibleName(QStringLiteral("Otkazi"));
    cancel->setCursor(Qt::ArrowCursor);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    auto* rows = new QVBoxLayout(this);
    rows->addWidget(label);
    rows->addWidget(bar_);
    rows->addWidget(cancel, 0, Qt::AlignRight);
    running_.start();
    shown_.start();
}

bool ProgressWindow::show(qint64 done, qint64 all) {
    if (shown_.elapsed() < kBetween) {
        return !cancelled_;
    }
    shown_.restart();
    if (!isVisible()) {
        if (running_.elapsed() < kNoticeable) {
            // The windows go on being painted. What a person does waits: nothing holds it off them yet.
            QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
            return !cancelled_;
        }
        QDialog::show();
    }
    bar_->setValue(all > 0 ? static_cast<int>(std::min(done, all) * kSteps / all) : 0);
    QCoreApplication::processEvents();
    return !cancelled_;
}

}  // namespace report
