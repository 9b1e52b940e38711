#include "records/main_start.h"

#include "common/modMain.h"
#include "common/window_helpers.h"
#include "platform/controls/pictures.h"
#include "platform/system/trap.h"

namespace {
constexpr int kPictureMissing = 481;  // "Invalid picture"
}

void MainStart::begin(StartStep step) const {
    if (onStartStep) {
        onStartStep(step);
    }
}

bool MainStart::run(const Piece& piece) {
    QString errorText;
    if (piece(errorText)) {
        return true;
    }
    box(&window_, errorText, platform::BoxIcon::Critical);
    splash.repaint();
    return false;
}

void MainStart::giveUp(const QString& errorText) {
    box(&window_, errorText, platform::BoxIcon::Critical);
    splash.DistroySplashForm();
}

void loadPicture(Pictures& pictures, const char* key) {
    const QString name = QLatin1String(key);
    const QIcon icon = platform::icon(name);
    if (icon.isNull()) {
        throw platform::RunError(kPictureMissing, QStringLiteral("Invalid picture: ") + name);
    }
    pictures.insert(name, icon);
}

bool outcome(const platform::Trap& step, int messageId, QString& errorText) {
    if (step.failed()) {
        errorText = GetResString(messageId) + QLatin1Char('\n') + step.line();
    }
    return !step.failed();
}
