#include "catalogue/catalogue_status.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <algorithm>

#include "catalogue/catalogue_switch.h"
#include "common/modMain.h"
#include "common/window_helpers.h"
#include "platform/controls/dressing.h"
#include "platform/controls/pictures.h"
#include "platform/controls/status_bar.h"

namespace {

constexpr CatalogueSwitch::Facts kSwitches[] = {{10502, 10504, 10506, "stanjenula", "MarkOne"},
                                                {10503, 10505, 10507, "allmft", "MarkTwo"}};
constexpr int kMargin = 4, kIconSize = 16;  // logical pixels
constexpr int kParts = 250;                 // that the eye can tell of the progress bar
constexpr int kPaintPause = 30;             // ms between two pictures of the progress bar
constexpr int kCaption = 5;                 // its number among the pictures

QString captionPanel() {
    return QStringLiteral("progress");
}

}  // namespace

CatalogueStatus::CatalogueStatus(QWidget* window) : window_(window), bar_(new platform::StatusBar(window)) {
    bar_->setObjectName(QStringLiteral("StatusBar1"));
    aboveZero_ = addSwitch(0);
    allManufacturers_ = addSwitch(1);
    bar_->addPanel(captionPanel(), platform::StatusBar::AutoSize::Fixed);
    bar_->addPanel(QStringLiteral("tekst"), platform::StatusBar::AutoSize::Spring);
    buildCaption();
    buildProgress();
}

CatalogueSwitch* CatalogueStatus::addSwitch(int index) {
    const CatalogueSwitch::Facts& facts = kSwitches[index];
    const QString key = QLatin1String(facts.panel);
    bar_->addPanel(key, platform::StatusBar::AutoSize::Contents);
    bar_->setPanelText(key, QLatin1Char(' ') + GetResString(facts.label) + QLatin1Char(' '));
    bar_->setPanelAlignment(key, Qt::AlignHCenter);
    auto* cover = new CatalogueSwitch(index, facts, bar_);
    bar_->panel(key)->setMinimumWidth(cover->sizeHint().width() + 2 * kMargin);
    cover->setAutoFillBackground(true);
    bar_->coverPanel(key, cover);
    return cover;
}

void CatalogueStatus::buildCaption() {
    caption_ = new QWidget(bar_);
    caption_->setObjectName(arrayName("Picture1", kCaption));
    captionIcon_ = new QLabel(caption_);
    captionText_ = new QLabel(caption_);
    captionText_->setTextFormat(Qt::PlainText);
    auto* row = new QHBoxLayout(caption_);
    row->setContentsMargins(kMargin, 0, 0, 0);
    row->setSpacing(0);
    row->addWidget(captionIcon_);
    row->addWidget(captionText_, 1);
    bar_->panel(captionPanel())
        ->setFixedWidth(window_->fontMetrics().horizontalAdvance(QStringLiteral("   PROIZVODJACI   ")) +
                        kIconSize + 4 * kMargin);
    bar_->coverPanel(captionPanel(), caption_);
}

void CatalogueStatus::buildProgress() {
    progress_ = new QProgressBar(window_);
    progress_->setObjectName(QStringLiteral("ProgressBar1"));
    progress_->setAccessibleName(QStringLiteral("Popunjavanje"));
    progress_->setTextVisible(false);
    progress_->setMinimum(0);
    progress_->hide();
}

void CatalogueStatus::showText(const QString& text, bool sticky) {
    if (sticky) {
        standingText_ = text;
    }
    const QString& shown = text.isEmpty() ? standingText_ : text;
    const QString panel = QStringLiteral("tekst");
    if (bar_->panelText(panel) != shown) {
        bar_->setPanelText(panel, shown);
    }
}

void CatalogueStatus::showCaption(const QString& caption, const QString& iconKey) {
    const QString shown = QStringLiteral("   ") + caption;
    if (captionText_->text() == shown && caption_->property("icon") == iconKey) {
        return;
    }
    captionText_->setText(shown);
    caption_->setProperty("icon", iconKey);
    caption_->setAccessibleName(caption.trimmed());
    const QString drawing =
        iconKey == QLatin1String("type") ? QStringLiteral("Type") : QStringLiteral("Zoom");
    platform::keepDressed(*captionIcon_, [this, drawing] {
        captionIcon_->setPixmap(platform::icon(drawing).pixmap(kIconSize));
    });
}

void CatalogueStatus::beginProgress(qint64 count) {
    caption_->hide();
    progress_->setMaximum(static_cast<int>(count));
    progress_->setValue(0);
    done_ = 0;
    bar_->coverPanel(captionPanel(), progress_);
    progress_->setUpdatesEnabled(false);
    painted_.start();
    showText(GetResString(10508), false);
}

// Moving and drawing the bar for each of thousands of records would take longer than reading them.
void CatalogueStatus::stepProgress() {
    if (++done_ % std::max(1, progress_->maximum() / kParts) == 0) {
        progress_->setValue(done_);
    }
    if (painted_.elapsed() < kPaintPause) {
        return;
    }
    painted_.start();
    progress_->setUpdatesEnabled(true);
    progress_->repaint();
    progress_->setUpdatesEnabled(false);
}

void CatalogueStatus::endProgress() {
    showText(QString(), false);
    progress_->setUpdatesEnabled(true);
    progress_->setValue(0);
    bar_->uncover(progress_, window_);
    caption_->show();
}
