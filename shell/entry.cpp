#include <QApplication>
#include <QIcon>

#include "platform/controls/focus_style.h"
#include "platform/controls/pictures.h"
#include "records/frmMain.h"
#include "shell/Main.h"
#include "shell/frmHelp.h"
#include "shell/program_end.h"

// The database was found and the window stands: then the program runs until the window is closed, whatever
// else may still be open, the splash picture included, or until the system asks the program to end.
int main(int argc, char** argv) {
    QApplication application(argc, argv);
    // No display name: the desktop would hang it behind the title of every window.
    QApplication::setApplicationName(QStringLiteral("Tarvello"));
    QApplication::setStyle(new platform::FocusStyle);
    QApplication::setWindowIcon(platform::icon(QStringLiteral("Tarvello")));
    QApplication::setQuitOnLastWindowClosed(false);
    installHelpViewer();
    ProgramEnd end;
    const std::unique_ptr<frmMain> window = Main();
    if (!window) {
        return end.isAsked() ? 0 : 1;
    }
    end.setWindow(window.get());
    QObject::connect(window.get(), &frmMain::unloaded, &application, &QCoreApplication::quit,
                     Qt::QueuedConnection);
    return QApplication::exec();
}
