#include "records/frmLegend.h"

#include <QGridLayout>

#include "common/modMain.h"
#include "common/settings.h"
#include "common/window_help.h"
#include "common/window_places.h"
#include "platform/controls/boxes.h"
#include "platform/controls/dressing.h"
#include "platform/controls/pictures.h"
#include "platform/system/trap.h"

using platform::Trap;

namespace {

constexpr int kPictureSize = 32;      // logical pixels
constexpr int kPictureMissing = 481;  // "Invalid picture"

struct Row {
    const char* picture;
    const char* text;
};
constexpr Row kLegend[] = {
    {"FinishedPayed", "This service IS BOTH, finished and paid."},
    {"NotFinishedNotPayed", "This service is NOT finished and NOT paid yet."},
    {"NotFinishedPayed", "This service is NOT finished but it IS paid."},
    {"FinishedNotPayed", "This service IS finished but NOT paid yet."},
};

}  // namespace

frmLegend::frmLegend(QWidget* parent)
    : QDialog(parent), pictures([](const QString& name) { return platform::icon(name); }) {
    setObjectName(QStringLiteral("frmLegend"));
    build();
    explainByF1(this, LegendTopic);
}

frmLegend::~frmLegend() {
    Unload();
}

void frmLegend::build() {
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(18, 16, 18, 14);
    grid->setHorizontalSpacing(14);
    grid->setVerticalSpacing(10);
    grid->setColumnStretch(1, 1);
    for (int i = 0; i < kRows; ++i) {
        const auto at = static_cast<size_t>(i);
        Image1[at] = new QLabel(this);
        Image1[at]->setObjectName(QStringLiteral("Image1(%1)").arg(i));
        Image1[at]->setFixedSize(kPictureSize, kPictureSize);
        Label1[at] = new QLabel(this);
        Label1[at]->setObjectName(QStringLiteral("Label1(%1)").arg(i));
        grid->addWidget(Image1[at], i, 0);
        grid->addWidget(Label1[at], i, 1, Qt::AlignVCenter);
    }
    Command1 = new QPushButton(QStringLiteral("OK"), this);
    Command1->setObjectName(QStringLiteral("Command1"));
    Command1->setAccessibleName(Command1->text());
    Command1->setDefault(true);
    grid->setRowMinimumHeight(kRows, 4);
    grid->addWidget(Command1, kRows + 1, 0, 1, 2, Qt::AlignRight);
    connect(Command1, &QPushButton::clicked, this, &QDialog::accept);
}

void frmLegend::setUp() {
    setWindowTitle(QStringLiteral("Legend"));
    for (size_t i = 0; i < Image1.size(); ++i) {
        const QString name = QString::fromLatin1(kLegend[i].picture);
        const QIcon icon = pictures(name);
        if (icon.isNull()) {
            throw platform::RunError(kPictureMissing, QStringLiteral("Invalid picture: ") + name);
        }
        QLabel* shown = Image1[i];
        platform::keepDressed(*shown, [this, shown, icon] {
            shown->setPixmap(icon.pixmap(QSize(kPictureSize, kPictureSize), devicePixelRatioF()));
        });
        Image1[i]->setAccessibleName(name);
        Label1[i]->setText(QString::fromLatin1(kLegend[i].text));
        Label1[i]->setAccessibleName(Label1[i]->text());
    }
}

void frmLegend::load() {
    if (loaded_) {
        return;
    }
    adjustSize();
    loaded_ = true;
    Trap step;  // without a place the window stays where it is
    step([&] { moveToPlace(this, settings::text(settings::LegendPosition)); });
}

void frmLegend::Display() {
    Trap step;
    step([&] { setUp(); });
    if (step.failed()) {
        platform::showBox(
            {.text = QStringLiteral("An unexpected error has occured while loading Legend window.\n") +
                     step.line(),
             .title = GetResString(1),
             .icon = platform::BoxIcon::Critical},
            parentWidget());
        return;
    }
    load();
    Command1->setFocus();
    exec();
}

void frmLegend::Unload() {
    if (!loaded_) {
        return;
    }
    loaded_ = false;
    if (isMinimized()) {
        return;
    }
    Trap step;  // a place that cannot be kept is no reason to keep the window
    step([&] { settings::setText(settings::LegendPosition, placeOf(this)); });
}
