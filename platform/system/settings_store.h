#pragma once

#include <QString>
#include <cstddef>
#include <vector>

// The per-user settings store: texts addressed by application, section and key. Nothing is ever deleted.
namespace platform {

// The default where the key is missing. Throws RunError where the store cannot be read.
QString GetSetting(const QString& application, const QString& section, const QString& key,
                   const QString& defaultValue = {});
// Throws RunError where the store cannot be written. Any text survives, control characters and the empty text
// too.
void SaveSetting(const QString& application, const QString& section, const QString& key,
                 const QString& value);

struct SettingText {
    QString section, key, value;
};
// The same of several, in one write of the file: the disk is waited for once. Where it fails the file is as
// it was.
void SaveSettings(const QString& application, const std::vector<SettingText>& settings);
// The first of them that the store does not hold as it stands there; their number where it holds them all.
// Throws RunError where the store cannot be read.
std::size_t firstUnsaved(const QString& application, const std::vector<SettingText>& settings);

// Where the store's files lie; tests use a folder of their own. Empty: the desktop's usual place.
void setSettingsFolder(const QString& folder);
QString settingsFile(const QString& application);

}  // namespace platform
