#include "platform/system/launch.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QStringList>
#include <QUrl>
#include <utility>

#include "platform/system/files.h"

namespace platform {

namespace {

enum Result { kFileNotFound = 2, kPathNotFound = 3, kDenied = 5, kNoProgram = 31, kStarted = 33 };

std::function<int(const QString&)> shellExecuteHook;
std::function<bool()> dateTimePanelHook;

// "http:", "mailto:"; a single letter before the colon is a drive.
bool isAddress(const QString& target) {
    static const QRegularExpression kScheme(QStringLiteral("^[A-Za-z][A-Za-z0-9+.-]+:"));
    return kScheme.match(target).hasMatch();
}

int open(const QUrl& url) {
    return url.isValid() && QDesktopServices::openUrl(url) ? kStarted : kNoProgram;
}

int openFile(const QString& path) {
    const QFileInfo file(path);
    if (path.isEmpty() || (!file.exists() && QFileInfo(file.path()).isDir())) {
        return kFileNotFound;
    }
    if (!file.exists()) {
        return kPathNotFound;
    }
    return file.isReadable() ? open(QUrl::fromLocalFile(file.absoluteFilePath())) : kDenied;
}

}  // namespace

int shellExecute(const QString& target) {
    if (shellExecuteHook) {
        return shellExecuteHook(target);
    }
    return isAddress(target) ? open(QUrl(target, QUrl::TolerantMode)) : openFile(nativePath(target));
}

bool openDateTimePanel() {
    if (dateTimePanelHook) {
        return dateTimePanelHook();
    }
    // Each desktop has its own; the first that is installed is the one in use, or at least one that works.
    static const QList<QStringList> kPanels = {{"gnome-control-center", "datetime"},
                                               {"systemsettings", "kcm_clock"},
                                               {"kcmshell6", "kcm_clock"},
                                               {"kcmshell5", "kcm_clock"},
                                               {"cinnamon-settings", "calendar"},
                                               {"mate-time-admin"},
                                               {"lxqt-admin-time"},
                                               {"time-admin"}};
    for (const QStringList& panel : kPanels) {
        const QString program = QStandardPaths::findExecutable(panel.first());
        if (!program.isEmpty() && QProcess::startDetached(program, panel.mid(1))) {
            return true;
        }
    }
    return false;
}

void setShellExecuteHook(std::function<int(const QString&)> hook) {
    shellExecuteHook = std::move(hook);
}

void setDateTimePanelHook(std::function<bool()> hook) {
    dateTimePanelHook = std::move(hook);
}

}  // namespace platform
