// Feeds the settings' file whatever the fuzzer thinks of, and keeps it as a value: what was saved is read
// again.
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "platform/system/settings_store.h"
#include "platform/system/trap.h"

namespace {

const char* const kApplication = "Tarvello";

void writeFile(const QByteArray& content) {
    QFile file(platform::settingsFile(kApplication));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size()) {
        std::abort();
    }
}

// A file of another kind is told so; nothing else may come of it.
void readFile(const QByteArray& content) {
    writeFile(content);
    try {
        (void)platform::GetSetting(kApplication, "Settings", "Probe", "missing");
        (void)platform::GetSetting(kApplication, "a", "b");
    } catch (const platform::RunError&) {
        // told
    }
}

void keepValue(const QString& value) {
    writeFile({});
    platform::SaveSetting(kApplication, "Settings", "Probe", value);
    if (platform::GetSetting(kApplication, "Settings", "Probe", "missing") != value) {
        std::abort();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const QTemporaryDir folder(QDir(QStringLiteral("/dev/shm")).exists()
                                          ? QStringLiteral("/dev/shm/tarvello-fuzzXXXXXX")
                                          : QString());
    platform::setSettingsFolder(folder.path());
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    readFile(bytes);
    keepValue(QString::fromUtf8(bytes));
    return 0;
}
