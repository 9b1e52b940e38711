#include "shell/frmTip.h"

#include <QCheckBox>
#include <QDir>
#include <QEvent>
#include <QFile>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QTextStream>
#include <QVBoxLayout>
#include <memory>
#include <random>

#include "common/modMain.h"
#include "common/settings.h"
#include "platform/controls/boxes.h"
#include "platform/controls/pictures.h"
#include "platform/system/files.h"
#include "platform/system/trap.h"

using platform::Trap;

namespace {

constexpr int kSmallPicture = 36;  // Image1, beside the heading
constexpr int kLargePicture = 96;  // Picture1, beside the tip

void exclaim(int textId, const Trap& step, QWidget* owner) {
    platform::showBox({GetResString(textId, {{QStringLiteral("|1"), QString::number(step.number())},
                                             {QStringLiteral("|2"), step.description()},
                                             {QStringLiteral("|3"), QString::number(step.codeLine())}}),
                       GetResString(1), platform::BoxIcon::Exclamation},
                      owner);
}

QString withoutMnemonic(QString caption) {
    return caption.remove(QLatin1Char('&'));
}

// Chance, seeded anew for each window.
std::function<double()> realChance() {
    auto engine = std::make_shared<std::mt19937>(std::random_device{}());
    return [engine] {
        constexpr double kRange = 4294967296.0;
        return static_cast<double>((*engine)()) / kRange;
    };
}

// Lines as they stand; the break behind the last one begins no further line.
QStringList readLines(const QString& path) {
    QFile file(platform::nativePath(path));
    if (!file.open(QIODevice::ReadOnly)) {
        throw platform::RunError(70, QStringLiteral("Permission denied"));
    }
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError) {
        throw platform::RunError(57, QStringLiteral("Device I/O error"));
    }
    QTextStream text(bytes);
    QStringList lines;
    while (!text.atEnd()) {
        lines.append(text.readLine());
    }
    return lines;
}

}  // namespace

QString frmTip::fileName() {
    return QStringLiteral("tipoftheday.txt");
}

// Building --------------------------------------------------------------------------------------------------

frmTip::frmTip(QWidget* parent) : QDialog(parent), Rnd(realChance()) {
    setObjectName(QStringLiteral("frmTip"));
    build();
}

void frmTip::build() {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(14, 14, 14, 12);
    column->setSpacing(10);
    auto* page = new QHBoxLayout;
    page->setSpacing(14);
    auto* picture = new QLabel(this);
    picture->setObjectName(QStringLiteral("Picture1"));
    page->addWidget(picture, 0, Qt::AlignTop);
    auto* words = new QVBoxLayout;
    buildHeading(words);
    buildTip(words);
    page->addLayout(words, 1);
    column->addLayout(page, 1);
    buildButtons(column);
}

QLabel* frmTip::buildHeading(QBoxLayout* column) {
    auto* row = new QHBoxLayout;
    auto* image = new QLabel(this);
    image->setObjectName(QStringLiteral("Image1"));
    auto* heading = new QLabel(this);
    heading->setObjectName(QStringLiteral("Label1"));
    QFont font = heading->font();
    font.setBold(true);
    font.setPointSizeF(font.pointSizeF() * 1.3);
    heading->setFont(font);
    row->addWidget(image);
    row->addWidget(heading, 1);
    column->addLayout(row);
    return heading;
}

// Whoever writes a long tip must not make the window grow over the screen.
void frmTip::buildTip(QBoxLayout* column) {
    lblTipText = new QLabel(this);
    lblTipText->setObjectName(QStringLiteral("lblTipText"));
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
    button->setAccessibleName(withoutMnemonic(button->text()));
    return button;
}

QCheckBox* frmTip::makeCheck(const char* name, int captionId) {
    auto* check = new QCheckBox(GetResString(captionId), this);
    check->setObjectName(QLatin1String(name));
    check->setAccessibleName(withoutMnemonic(check->text()));
    return check;
}

void frmTip::buildButtons(QBoxLayout* column) {
    chkLoadTipsAtStartup = makeCheck("chkLoadTipsAtStartup", 10208);
    chkShowTipsAtRandom = makeCheck("chkShowTipsAtRandom", 10209);
    cmdPreviousTip = makeButton("cmdPreviousTip", 10207);
    cmdNextTip = makeButton("cmdNextTip", 10206);
    cmdOK = makeButton("cmdOK", 10205);
    cmdOK->setDefault(true);
    column->addWidget(chkLoadTipsAtStartup, 0, Qt::AlignLeft);
    column->addWidget(chkShowTipsAtRandom, 0, Qt::AlignLeft);
    auto* row = new QHBoxLayout;
    row->addStretch(1);
    for (QPushButton* button : {cmdPreviousTip, cmdNextTip, cmdOK}) {
        row->addWidget(button);
    }
    column->addLayout(row);
    connect(cmdOK, &QPushButton::clicked, this, &frmTip::close);
    connect(cmdNextTip, &QPushButton::clicked, this, &frmTip::nextTip);
    connect(cmdPreviousTip, &QPushButton::clicked, this, &frmTip::previousTip);
    // Only what a person clicks is stored: the switches must not be written by looking at them.
    connect(chkLoadTipsAtStartup, &QCheckBox::clicked, this, &frmTip::startupClicked);
    connect(chkShowTipsAtRandom, &QCheckBox::clicked, this, &frmTip::randomClicked);
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
    exclaim(10212, step, this);
    loadFailed_ = true;
    if (onLoadFailure) {
        onLoadFailure();
    }
}

void frmTip::fill() {
    chkLoadTipsAtStartup->setChecked(ShowTipsAtStartup);
    chkShowTipsAtRandom->setChecked(ShowTipsAtRandom);
    findChild<QLabel*>(QStringLiteral("Image1"))
        ->setPixmap(platform::icon(QStringLiteral("Help")).pixmap(kSmallPicture, kSmallPicture));
    findChild<QLabel*>(QStringLiteral("Picture1"))
        ->setPixmap(platform::picture(QStringLiteral("10201"), kLargePicture));
    setWindowTitle(GetResString(10203));
    setAccessibleName(windowTitle().trimmed());
    findChild<QLabel*>(QStringLiteral("Label1"))->setText(GetResString(10204));
    if (onFormLoad) {
        onFormLoad();
    }

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
    Ok = false;
    ErrorText.clear();
    tips_.clear();
    CurrentTip = 0;
    if (FileName.isEmpty() || !platform::fileExists(FileName)) {
        return;
    }
    Trap step;
    step([&] { tips_ = readLines(FileName); });
    if (step.failed()) {
        ErrorText = QStringLiteral("%1 in line: %2").arg(step.line()).arg(step.codeLine());
        return;
    }
    Ok = true;
    nextTip();
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

// The tips --------------------------------------------------------------------------------------------------

void frmTip::DisplayCurrentTip() {
    if (count() > 0) {
        lblTipText->setText(tips_.at(CurrentTip - 1));
    }
}

int frmTip::anyTip() const {
    return static_cast<int>(Rnd() * count() + 1);
}

void frmTip::nextTip() {
    if (ShowTipsAtRandom) {
        CurrentTip = anyTip();
    } else if (++CurrentTip > count()) {
        CurrentTip = 1;
    }
    DisplayCurrentTip();
}

void frmTip::previousTip() {
    if (ShowTipsAtRandom) {
        CurrentTip = anyTip();
    } else if (--CurrentTip < 1) {
        CurrentTip = count();
    }
    DisplayCurrentTip();
}

void frmTip::startupClicked() {
    Trap step;
    step([&] { settings::setBoolean(settings::ShowTipsAtStartup, chkLoadTipsAtStartup->isChecked()); });
    step([&] { ShowTipsAtStartup = chkLoadTipsAtStartup->isChecked(); });
    if (step.failed()) {
        exclaim(10210, step, this);
    }
}

void frmTip::randomClicked() {
    Trap step;
    step([&] { settings::setBoolean(settings::ShowTipsAtRandom, chkShowTipsAtRandom->isChecked()); });
    step([&] { ShowTipsAtRandom = chkShowTipsAtRandom->isChecked(); });
    if (step.failed()) {
        exclaim(10211, step, this);
    }
}
