#include "shell/Main.h"

#include "common/help.h"
#include "common/modMain.h"
#include "common/settings.h"
#include "data/session.h"
#include "platform/controls/boxes.h"
#include "platform/system/files.h"
#include "platform/system/trap.h"
#include "records/frmDetails.h"
#include "records/frmMain.h"
#include "shell/frmSplash.h"
#include "shell/old_shop.h"
#include "shell/program_windows.h"

namespace {

// Started from a folder that cannot be written, a read-only share or medium, the program works with a copy.
// Who does not know it would look in vain at the counter for what was written at the desk. Said once: the
// next start finds the copy.
void tellOfPrivateCopy() {
    const QString copy = platform::programFolder() + QStringLiteral("/Tarvello.mdb");
    if (platform::recordsCopiedAside() && databasePath() == platform::nativePath(copy)) {
        platform::showBox({QStringLiteral("The program's folder cannot be written. From now on you work with "
                                          "a copy of the records of your own, %1. The records in the "
                                          "program's folder stay as they are.")
                               .arg(copy),
                           GetResString(1), platform::BoxIcon::Information});
    }
}

}  // namespace

std::unique_ptr<frmMain> Main(const std::function<void(frmMain&)>& prepare) {
    CheckHelpFile();  // without its help file the program runs on
    // A rate that somebody has spoilt by hand must not keep the shop closed: it is told, and the usual rate
    // holds.
    platform::Trap rate;
    rate([] { KursKupovni = ReadKursKupovni(); });
    if (rate.failed()) {
        platform::showBox({GetResString(1041) + QLatin1Char('\n') + rate.line(), GetResString(1),
                           platform::BoxIcon::Exclamation});
    }
    CeneDinarske = settings::boolean(settings::CeneDinarske);
    AskBeforeDelete = settings::boolean(settings::AskBeforeDelete);
    MakeProperCase = settings::boolean(settings::MakeProperCase);
    ShowTipsAtStartup = settings::boolean(settings::ShowTipsAtStartup);
    ShowTipsAtRandom = settings::boolean(settings::ShowTipsAtRandom);
    tellOfPrivateCopy();

    auto splash = std::make_unique<frmSplash>();
    splash->show();
    splash->repaint();

    offerToTakeOldShops();
    QString errorText;
    if (!CheckDatabase(errorText)) {
        platform::showBox(
            {QStringLiteral("Error(s) encountered while accessing the client's database.\n") + errorText,
             GetResString(1), platform::BoxIcon::Critical},
            splash.get());
        return nullptr;
    }
    auto window = std::make_unique<frmMain>(programWindows());
    window->start.splash.setSplash(std::move(splash));
    if (prepare) {
        prepare(*window);
    }
    if (!window->Display()) {
        return nullptr;
    }
    return window;
}
