#pragma once

#include <QHash>
#include <QIcon>
#include <QString>
#include <functional>

#include "records/splash_cover.h"

class QWidget;
namespace platform {
class Trap;
}

// The pieces that the main window's start builds one after the other; named so that the failure of each can
// be tried out.
enum class StartStep {
    ToolbarImages,
    TabImages,
    ColumnImages,
    Tabs,
    ServiceList,
    Menus,
    StatusBar,
    Toolbar,
};

// The start of the main window, under its picture.
class MainStart {
 public:
    using Piece = std::function<bool(QString& errorText)>;

    // `window` outlives it; what fails is told over it.
    explicit MainStart(QWidget& window) : window_(window) {}

    SplashCover splash;
    // For tests, called inside each step's trap: what it throws fails the step.
    std::function<void(StartStep)> onStartStep;

    void begin(StartStep step) const;
    // A piece that the window can do without. False where it failed, which has been told then.
    bool run(const Piece& piece);
    // The start ends here: says why, and takes the picture away.
    void giveUp(const QString& errorText);

 private:
    QWidget& window_;
};

using Pictures = QHash<QString, QIcon>;

// Throws platform::RunError 481 where there is no such picture.
void loadPicture(Pictures& pictures, const char* key);
// Whether the step succeeded. Where not, `errorText` is the numbered text and the line of the failure.
bool outcome(const platform::Trap& step, int messageId, QString& errorText);
