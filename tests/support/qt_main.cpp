#include <gtest/gtest.h>

#include <QApplication>
#include <QLocale>
#include <QTemporaryDir>
#include <cstdint>
#include <filesystem>
#include <system_error>

#include "platform/controls/focus_style.h"
#include "platform/system/files.h"
#include "platform/system/settings_store.h"

namespace {

// What a test writes need not outlast the machine, and waiting for a disk is most of the time of many: it
// goes to memory where there is enough of it, and nobody has chosen another place.
void writeToMemory() {
    constexpr std::uintmax_t kEnough = std::uintmax_t{3} << 30;
    std::error_code none;
    const std::filesystem::space_info room = std::filesystem::space("/dev/shm", none);
    if (!none && room.available > kEnough && qEnvironmentVariableIsEmpty("TMPDIR")) {
        qputenv("TMPDIR", "/dev/shm");
    }
}

}  // namespace

// The test programs that need windows. Nobody sits in front of them, so the windows are drawn into memory;
// the settings and the program's folder are folders of this process alone, so that no test reads what a
// colleague (or the test before it) has left in his own.
int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    writeToMemory();
    testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    application.setQuitOnLastWindowClosed(false);
    QApplication::setStyle(new platform::FocusStyle);
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));

    QTemporaryDir settings;
    QTemporaryDir program;
    if (!settings.isValid() || !program.isValid()) {
        qCritical("No temporary folder for the tests.");
        return 2;
    }
    platform::setSettingsFolder(settings.path());
    platform::setProgramFolder(program.path());
    return RUN_ALL_TESTS();
}
