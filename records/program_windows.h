#pragma once

#include <QDialog>
#include <functional>

// The program's own windows as the main window sees them: they stand a floor above it (shell/program_windows)
// and are put in when it is made.

// The picture that covers the start.
class SplashWindow : public QDialog {
 public:
    using QDialog::QDialog;
    // What takes the window away, on its timer or on a click. Without one the window just closes.
    virtual void setCloseCallback(std::function<void()> callback) = 0;
    // Milliseconds until the window goes by itself; 0 stops the timer.
    virtual void setTimerInterval(int milliseconds) = 0;
    virtual int timerInterval() const = 0;
};

// The four options that the main window keeps itself.
struct MainOptions {
    bool AlwaysCreateBackupDB = true;  // the database is copied when the program closes
    qint16 DueDateDiff = 0;            // days before the due date within which a service alerts
    bool ShowFilterStatistics = true;  // a quick filter tells its numbers in a box
    qint16 DefaultGST = 0;             // percent, of a new service; 0: none is proposed
};

class ProgramWindows {
 public:
    virtual ~ProgramWindows() = default;
    // Returns when the window is closed. False where it was not by OK: `options` is unchanged then. The
    // window stores all other options itself.
    virtual bool editOptions(QWidget* owner, MainOptions& options) = 0;
    // Comes back at once, the window takes itself away. `onLoadFailure`: where it could not be filled.
    virtual void showTip(QWidget* owner, const std::function<void()>& onLoadFailure) = 0;
    virtual void showAbout(QWidget* owner) = 0;  // comes back at once
};
