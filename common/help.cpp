#include "common/help.h"

#include <QCursor>
#include <QGuiApplication>

#include "common/modMain.h"
#include "common/settings.h"
#include "platform/controls/boxes.h"
#include "platform/system/files.h"
#include "platform/system/trap.h"

// Finding the help file and asking the viewer for a topic.

namespace {

HelpViewer installedViewer = nullptr;
QString settledHelpFile;

// The pointer goes to normal while somebody is asked, and back to what was in force.
class NormalPointer {
 public:
    NormalPointer() : inForce_(QGuiApplication::overrideCursor() != nullptr) {
        if (inForce_) {
            QGuiApplication::setOverrideCursor(Qt::ArrowCursor);
        }
    }
    ~NormalPointer() {
        if (inForce_) {
            QGuiApplication::restoreOverrideCursor();
        }
    }
    NormalPointer(const NormalPointer&) = delete;
    NormalPointer& operator=(const NormalPointer&) = delete;

 private:
    bool inForce_;
};

bool isHelpFileName(const QString& path) {
    return FileNameOf(path).compare(QLatin1String("Tarvello.hlp"), Qt::CaseInsensitive) == 0;
}

// Asks until a file of the right name is found. Empty where the user gave up.
QString findHelpFile(QString path) {
    QString prompt = GetResString(163);
    while (!platform::fileExists(path) || !isHelpFileName(path)) {
        if (platform::fileExists(path)) {
            prompt = GetResString(165);
        }
        const NormalPointer pointer;
        if (platform::showBox({.text = prompt,
                               .title = GetResString(1),
                               .icon = platform::BoxIcon::Exclamation,
                               .buttons = platform::BoxButtons::YesNo}) != platform::BoxAnswer::Yes) {
            return {};
        }
        const auto chosen =
            platform::openFileDialog({.title = GetResString(158),
                                      .filter = GetResString(1020) + QStringLiteral("|Svi Fajlovi (*.*)|*.*"),
                                      .folder = platform::programFolder()});
        if (!chosen) {
            return {};
        }
        path = chosen->trimmed();
        prompt = GetResString(164);
    }
    return path;
}

}  // namespace

bool CheckHelpFile() {
    const QString path = findHelpFile(settings::text(settings::HelpFilePath));
    if (path.isEmpty()) {
        return false;
    }
    settledHelpFile = path;
    // Help opens all the same where the settings cannot be written; the path is asked for again next time.
    platform::Trap saving;
    saving([&] { settings::setText(settings::HelpFilePath, path); });
    return true;
}

void setHelpViewer(HelpViewer viewer) {
    installedViewer = viewer;
}

bool WinHelp(const QString& file, HelpCommand command, int context) {
    return installedViewer != nullptr && installedViewer(file, command, context);
}

QString helpFile() {
    return settledHelpFile;
}

void showHelpContents() {
    if (CheckHelpFile()) {
        WinHelp(helpFile(), HELP_FINDER);
    }
}

void showHelp(int context) {
    if (CheckHelpFile()) {
        WinHelp(helpFile(), HELP_CONTEXT, context);
    }
}
