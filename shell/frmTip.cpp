#include "shell/frmTip.h"

#include <QDir>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>

#include "common/modMain.h"
#include "common/window_help.h"
#include "common/window_helpers.h"
#include "platform/controls/dressing.h"
#include "platform/controls/pictures.h"
#include "platform/system/files.h"
#include "platform/system/trap.h"
#include "shell/tip_failure.h"

using platform::Trap;

namespace {

constexpr int kSmallPicture = 36;  // Image1, beside the heading
constexpr int kLargePicture = 96;  // Picture1, beside the tip

QLabel* makeLabel(const char* name, QWidget* window) {
    auto* label = new QLabel(window);
    label->setObjectName(QLatin1String(name));
    return label;
}

void addHeading(QBoxLayout* column, QWidget* window) {
    auto* row = new QHBoxLayout;
    auto* image = makeLabel("Image1", window);
    auto* heading = makeLabel("Label1", window);
    QFont font = heading->font();
    font.setBold(true);
    font.setPointSizeF(font.pointSizeF() * 1.3);
    heading->setFont(font);
    row->addWidget(image);
    row->addWidget(heading, 1);
    column->addLayout(row);
}

}  // namespace

QString frmTip::fileName() {
    return QStringLiteral("tipoftheday.txt");
}

// Building --------------------------------------------------------------------------------------------------

frmTip::frmTip(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmTip"));
    build();
    explainByF1(this, TipTopic);
}

void frmTip::build() {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(14, 14, 14, 12);
    column->setSpacing(10);
    auto* page = new QHBoxLayout;
    page->setSpacing(14);
    page->addWidget(makeLabel("Picture1", this), 0, Qt::AlignTop);
    auto* words = new QVBoxLayout;
    addHeading(words, this);
    buildTip(words);
    page->addLayout(words, 1);
    column->addLayout(page, 1);
    switches_.addTo(column);
    buildButtons(column);
}

// Whoever writes a long tip must not make the window grow over the screen.
void frmTip::buildTip(QBoxLayout* column) {
    lblTipText = makeLabel("lblTipText", this);
    lblTipText->setTextFormat(Qt::PlainText);
    lblTipText->setWordWrap(true);
    lblTipText->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    lblTipText->setMargin(8);
    auto* area = new QScrollArea(this);
    area->setWidgetResizable(true);
    area->setFocusPolicy(Qt::NoFocus);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setWidget(lblTipText);
    area->setMinimumSize(fontMetrics().averageCharWidth() * 56, fontMetrics().height() * 8);
    for (QWidget* sheet : {area->viewport(), static_cast<QWidget*>(lblTipText)}) {
        sheet->setBackgroundRole(QPalette::Base);
    }
    column->addWidget(area, 1);
}

QPushButton* frmTip::makeButton(const char* name, int captionId) {
    auto* button = new QPushButton(GetResString(captionId), this);
    button->setObjectName(QLatin1String(name));
    button->setAccessibleName(spokenCaption(button->text()));
    return button;
}

void frmTip::buildButtons(QBoxLayout* column) {
    cmdPreviousTip = makeButton("cmdPreviousTip", 10207);
    cmdNextTip = makeButton("cmdNextTip", 10206);
    cmdOK = makeButton("cmdOK", 10205);
    cmdOK->setDefault(true);
    auto* row = new QHBoxLayout;
    row->addStretch(1);
    for (QPushButton* button : {cmdPreviousTip, cmdNextTip, cmdOK}) {
        row->addWidget(button);
    }
    column->addLayout(row);
    connect(cmdOK, &QPushButton::clicked, this, &frmTip::close);
    connect(cmdNextTip, &QPushButton::clicked, this, [this] {
        tips_.next();
        DisplayCurrentTip();
    });
    connect(cmdPreviousTip, &QPushButton::clicked, this, [this] {
        tips_.previous();
        DisplayCurrentTip();
    });
}

// Filling ---------------------------------------------------------------------------------------------------

void frmTip::Display() {
    load();
    setModal(true);
    show();
    cmdOK->setFocus();
}

void frmTip::load() {
    Trap step;
    step([&] { fill(); });
    if (!step.failed()) {
        return;
    }
    tellTipFailure(10212, step, this);
    loadFailed_ = true;
    if (onLoadFailure) {
        onLoadFailure();
    }
}

void frmTip::fill() {
    switches_.load();
    platform::keepDressed(*this, [this] { showPictures(); });
    setWindowTitle(GetResString(10203));
    setAccessibleName(windowTitle().trimmed());
    findChild<QLabel*>(QStringLiteral("Label1"))->setText(GetResString(10204));
    if (onFormLoad) {
        onFormLoad();
    }
    fillTips();
}

void frmTip::showPictures() {
    findChild<QLabel*>(QStringLiteral("Image1"))
        ->setPixmap(platform::icon(QStringLiteral("Help")).pixmap(kSmallPicture, kSmallPicture));
    findChild<QLabel*>(QStringLiteral("Picture1"))
        ->setPixmap(platform::picture(QStringLiteral("10201"), kLargePicture));
}

void frmTip::fillTips() {
    const QString file = fileName();
    QString errorText;
    bool ok = false;
    LoadTips(errorText, platform::programFolder() + QDir::separator() + file, ok);
    cmdNextTip->setEnabled(ok && count() > 1);
    cmdPreviousTip->setEnabled(ok && count() > 1);
    if (!ok) {
        lblTipText->setText(errorText.isEmpty() ? GetResString(10201, {{QStringLiteral("|1"), file}})
                                                : GetResString(10213, {{QStringLiteral("|1"), errorText}}));
    } else if (count() == 0) {
        lblTipText->setText(GetResString(10202, {{QStringLiteral("|1"), file}}));
    }
}

void frmTip::LoadTips(QString& ErrorText, const QString& FileName, bool& Ok) {
    Ok = tips_.load(FileName, ErrorText);
    if (Ok) {
        DisplayCurrentTip();
    }
}

void frmTip::DisplayCurrentTip() {
    if (count() > 0) {
        lblTipText->setText(tips_.text());
    }
}

// A first activation is what this window needs to go by itself: before, there is nothing to close.
bool frmTip::event(QEvent* event) {
    const bool isHandled = QDialog::event(event);
    if (event->type() == QEvent::WindowActivate && loadFailed_) {
        loadFailed_ = false;
        close();
    }
    return isHandled;
}
