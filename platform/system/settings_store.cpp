#include "platform/system/settings_store.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QStringList>
#include <algorithm>

#include "platform/system/files.h"
#include "platform/system/trap.h"

namespace platform {

namespace {

QString chosenFolder;

bool isHex(QChar c) {
    return (c >= QLatin1Char('0') && c <= QLatin1Char('9')) ||
           (c >= QLatin1Char('A') && c <= QLatin1Char('F')) ||
           (c >= QLatin1Char('a') && c <= QLatin1Char('f'));
}

bool mustEscape(const QString& text, qsizetype at) {
    const QChar c = text[at];
    if (c.isSurrogate()) {
        const bool whole = (c.isHighSurrogate() && at + 1 < text.size() && text[at + 1].isLowSurrogate()) ||
                           (c.isLowSurrogate() && at > 0 && text[at - 1].isHighSurrogate());
        return !whole;
    }
    const bool atEdge = at == 0 || at + 1 == text.size();
    return c.unicode() < 0x20 || (c.unicode() >= 0x7F && c.unicode() <= 0xA0) || c == QLatin1Char('%') ||
           c.unicode() == 0x2028 || c.unicode() == 0x2029 || c.unicode() >= 0xFFFE || c == QChar(0xFEFF) ||
           (atEdge && c.isSpace());
}

// Ordinary values stand in the file as they are, so that whoever looks after the shop's machines can read
// them there. Only what a settings file would garble is written as "%" and two, or "%u" and four, hexadecimal
// digits.
QString escaped(const QString& text) {
    QString result;
    result.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (!mustEscape(text, i)) {
            result += text[i];
            continue;
        }
        const ushort code = text[i].unicode();
        result += code < 0x100 ? QStringLiteral("%%1").arg(code, 2, 16, QLatin1Char('0'))
                               : QStringLiteral("%u%1").arg(code, 4, 16, QLatin1Char('0'));
    }
    return result;
}

// The digits behind a "%" at this place: how many characters they take, 0 where there are none.
qsizetype escapeAt(const QString& text, qsizetype at, ushort& code) {
    const bool wide = at + 1 < text.size() && text[at + 1] == QLatin1Char('u');
    const qsizetype from = at + (wide ? 2 : 1);
    const qsizetype digits = wide ? 4 : 2;
    if (from + digits > text.size()) {
        return 0;
    }
    for (qsizetype i = from; i < from + digits; ++i) {
        if (!isHex(text[i])) {
            return 0;
        }
    }
    code = text.mid(from, digits).toUShort(nullptr, 16);
    return from + digits - at;
}

QString unescaped(const QString& text) {
    QString result;
    result.reserve(text.size());
    for (qsizetype i = 0; i < text.size();) {
        ushort code = 0;
        const qsizetype taken = text[i] == QLatin1Char('%') ? escapeAt(text, i, code) : 0;
        result += taken > 0 ? QChar(code) : text[i];
        i += taken > 0 ? taken : 1;
    }
    return result;
}

// A value typed into the file by hand, as in KursKupovni=76,5, is a list to the reader of such files. It is a
// text.
QString textOf(const QVariant& value) {
    return value.typeId() == QMetaType::QStringList ? value.toStringList().join(QLatin1Char(','))
                                                    : value.toString();
}

// A slash would open a section inside a section.
QString nameOf(const QString& section, const QString& key) {
    const auto flat = [](const QString& name) {
        return escaped(name)
            .replace(QLatin1Char('/'), QLatin1String("%2f"))
            .replace(QLatin1Char('\\'), QLatin1String("%5c"));
    };
    return flat(section) + QLatin1Char('/') + flat(key);
}

// Reads the file afresh, or writes what is waiting, keeping what another running copy has put there
// meanwhile.
void synchronise(QSettings& store) {
    store.sync();
    constexpr int kInvalidFileFormat = 321;
    constexpr int kPathFileAccess = 75;
    if (store.status() == QSettings::AccessError) {
        throw RunError(kPathFileAccess, QStringLiteral("Path/File access error: ") + store.fileName());
    }
    if (store.status() == QSettings::FormatError) {
        throw RunError(kInvalidFileFormat, QStringLiteral("Invalid file format: ") + store.fileName());
    }
}

// The store would make its file for everybody to read.
void makeFileOf(const QSettings& store) {
    QFile file(store.fileName());
    if (!file.exists()) {
        makeOwnFolder(QFileInfo(file).path());
        file.open(QIODevice::WriteOnly | QIODevice::NewOnly, kForUserAlone);
    }
}

bool holds(const QSettings& store, const SettingText& setting) {
    const QString name = nameOf(setting.section, setting.key);
    return store.contains(name) && textOf(store.value(name)) == escaped(setting.value);
}

auto firstChange(const QSettings& store, const std::vector<SettingText>& settings) {
    return std::find_if_not(settings.begin(), settings.end(),
                            [&](const SettingText& setting) { return holds(store, setting); });
}

}  // namespace

void setSettingsFolder(const QString& folder) {
    chosenFolder = folder;
}

QString settingsFile(const QString& application) {
    if (!chosenFolder.isEmpty()) {
        return chosenFolder + QDir::separator() + application + QStringLiteral(".ini");
    }
    return QSettings(QSettings::IniFormat, QSettings::UserScope, application, application).fileName();
}

QString GetSetting(const QString& application, const QString& section, const QString& key,
                   const QString& defaultValue) {
    QSettings store(settingsFile(application), QSettings::IniFormat);
    synchronise(store);
    const QVariant value = store.value(nameOf(section, key));
    return value.isValid() ? unescaped(textOf(value)) : defaultValue;
}

void SaveSetting(const QString& application, const QString& section, const QString& key,
                 const QString& value) {
    SaveSettings(application, {{section, key, value}});
}

// Closing the program saves every setting there is, and most are as they were: no need to write the file for
// those.
void SaveSettings(const QString& application, const std::vector<SettingText>& settings) {
    QSettings store(settingsFile(application), QSettings::IniFormat);
    synchronise(store);
    if (firstChange(store, settings) == settings.end()) {
        return;
    }
    makeFileOf(store);
    for (const SettingText& setting : settings) {
        if (!holds(store, setting)) {
            store.setValue(nameOf(setting.section, setting.key), escaped(setting.value));
        }
    }
    synchronise(store);
}

std::size_t firstUnsaved(const QString& application, const std::vector<SettingText>& settings) {
    QSettings store(settingsFile(application), QSettings::IniFormat);
    synchronise(store);
    return static_cast<std::size_t>(firstChange(store, settings) - settings.begin());
}

}  // namespace platform
