#include "documents/filling_cover.h"

#include <QCoreApplication>
#include <QLabel>
#include <QProgressBar>
#include <QStackedLayout>

#include "platform/controls/list_view.h"
#include "platform/controls/status_bar.h"

namespace {

constexpr qint64 kProgressEvery = 30;  // milliseconds

}  // namespace

FillingCover::FillingCover(platform::ListView& view, platform::StatusBar& bar)
    : view_(view),
      bar_(bar),
      label_(new QLabel(QStringLiteral("Popunjavanje podacima je u toku... Molim sacekajte..."),
                        view.parentWidget())),
      stack_(new QStackedLayout),
      progress_(new QProgressBar(bar.window())) {
    label_->setObjectName(QStringLiteral("Label1"));
    label_->setAccessibleName(label_->text());
    label_->setAlignment(Qt::AlignCenter);
    label_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    // In one place, so that the list is as high while it is filled as it is afterwards.
    stack_->addWidget(&view_);
    stack_->addWidget(label_);
    progress_->setObjectName(QStringLiteral("ProgressBar1"));
    progress_->setAccessibleName(label_->text());
    progress_->setTextVisible(false);
    progress_->hide();
}

void FillingCover::begin(qint64 rows) {
    progress_->setRange(0, static_cast<int>(rows));
    hadFocus_ = view_.hasFocus();
    bar_.coverPanel(bar_.firstPanelKey(), progress_);
    progress_->setValue(0);
    stack_->setCurrentWidget(label_);
    label_->repaint();
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    sinceShown_.start();
}

void FillingCover::tell(int done) {
    if (sinceShown_.elapsed() >= kProgressEvery) {
        progress_->setValue(done);
        sinceShown_.restart();
    }
}

void FillingCover::end() {
    stack_->setCurrentWidget(&view_);
    bar_.uncover(progress_, bar_.window());
    if (hadFocus_) {
        view_.setFocus();
    }
}
