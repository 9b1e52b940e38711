#pragma once

#include <QString>

// The per-user settings store: texts addressed by application, section and key. Nothing is ever deleted.
namespace platform {

// The default where the key is missing. Throws RunError where the store cannot be read.
QString GetSetting(const QString& application, const QString& section, const QString& key,
                   const QString& defaultValue = {});
// Throws RunError where the store cannot be written. Any text survives, control characters and the empty text
// too.
void SaveSetting(const QString& application, const QString& section, const QString& key,
                 const QString& value);

// Where the store's files lie; tests use a folder of their own. Empty: the desktop's usual place.
void setSettingsFolder(const QString& folder);
QString settingsFile(const QString& application);

}  // namespace platform
