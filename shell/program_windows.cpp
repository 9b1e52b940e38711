#include "shell/program_windows.h"

#include "catalogue/frmJM.h"
#include "common/window_help.h"
#include "shell/frmOptions.h"
#include "shell/frmSplash.h"
#include "shell/frmTip.h"

namespace {

void openUnits(QWidget* owner) {
    frmJM units(owner);
    units.Display();
    units.Unload();
}

class Windows : public ProgramWindows {
 public:
    bool editOptions(QWidget* owner, MainOptions& options) override {
        frmOptions window(owner);
        window.onUnits = [&window] { openUnits(&window); };
        MainOptions& edited = window;
        edited = options;
        window.Display();
        const bool taken = !window.Cancelled();
        if (taken) {
            options = edited;
        }
        window.Unload();
        return taken;
    }

    // The advice stands over a window that is there already, and takes itself away: the program's own loop
    // runs under it, so that the program can be ended meanwhile as at any other time.
    void showTip(QWidget* owner, const std::function<void()>& onLoadFailure) override {
        auto* tip = new frmTip(owner);
        tip->setAttribute(Qt::WA_DeleteOnClose);
        tip->onLoadFailure = onLoadFailure;
        tip->Display();
    }

    void showAbout(QWidget* owner) override {
        auto* about = new frmSplash(owner);
        about->OpenedAsAbout = true;
        about->setAttribute(Qt::WA_DeleteOnClose);
        explainByF1(about, AboutTopic);
        about->setCloseCallback([about] { about->close(); });
        about->setWindowModality(Qt::ApplicationModal);
        about->show();
    }
};

}  // namespace

ProgramWindows& programWindows() {
    static Windows windows;
    return windows;
}
