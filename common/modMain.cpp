#include "common/modMain.h"

#include <QGuiApplication>
#include <QHash>
#include <QScreen>
#include <QStringList>
#include <QWidget>
#include <QWindow>
#include <cmath>
#include <optional>

#include "common/settings.h"
#include "common/string_table.h"
#include "platform/controls/boxes.h"
#include "platform/dao/dbengine.h"
#include "platform/system/files.h"
#include "platform/system/launch.h"
#include "platform/system/locale_facts.h"
#include "platform/system/numbers.h"
#include "platform/system/trap.h"

float KursKupovni = 80;
bool CeneDinarske = true;
bool AskBeforeDelete = true;
bool MakeProperCase = true;
bool ShowTipsAtStartup = true;
bool ShowTipsAtRandom = false;

QString LoadResString(int id) {
    return StringTable::ofProgram().text(id);
}

QString GetResString(int id, const QList<std::pair<QString, QString>>& pairs) {
    QString text = LoadResString(id);
    for (const auto& [placeholder, value] : pairs) {
        if (placeholder.isEmpty()) {
            continue;
        }
        qsizetype at = text.indexOf(placeholder);
        while (at >= 0) {
            text.replace(at, placeholder.size(), value);
            // A path or an error text that happens to hold "%1" would be put into itself for ever, and the
            // shop would have to kill the program. Such a value goes in once and stays as it is.
            at = value.contains(placeholder) ? -1 : text.indexOf(placeholder);
        }
    }
    return text;
}

QString GetDAOErrors() {
    QStringList lines;
    for (const dao::ErrorEntry& entry : dao::DBEngine::Errors()) {
        lines += QStringLiteral("[%1] ").arg(entry.Number) + QString::fromStdString(entry.Description);
    }
    return lines.join(QLatin1Char('\n'));
}

QString GetLocaleValue(int field) {
    constexpr int kDecimalSeparator = 14;
    constexpr int kThousandsSeparator = 15;
    if (field == kThousandsSeparator) {
        return platform::localeFacts().group;
    }
    return field == kDecimalSeparator ? platform::decimalSeparator() : QString();
}

namespace {

// Blanks only: a line break that somebody typed into a comment is part of the text.
QString withoutOuterBlanks(const QString& text) {
    qsizetype from = 0;
    qsizetype to = text.size();
    while (from < to && text[from] == QLatin1Char(' ')) {
        ++from;
    }
    while (to > from && text[to - 1] == QLatin1Char(' ')) {
        --to;
    }
    return text.mid(from, to - from);
}

QString withCapital(const QString& text) {
    const qsizetype first = !text.isEmpty() && text[0].isHighSurrogate() ? 2 : 1;
    return text.left(first).toUpper() + text.mid(first);
}

QString capitalsBehind(const QString& separator, const QString& text) {
    QStringList pieces = text.split(separator);
    for (QString& piece : pieces) {
        piece = withCapital(withoutOuterBlanks(piece));
    }
    return pieces.join(separator);
}

QString wordsWithCapitals(const QString& text) {
    QStringList pieces;
    for (const QString& piece : text.split(QLatin1Char(' '))) {
        const QString word = withCapital(withoutOuterBlanks(piece));
        if (!word.isEmpty()) {
            pieces += word;
        }
    }
    return pieces.join(QLatin1Char(' '));
}

QString sentencesWithCapitals(const QString& text) {
    QString result = text;
    for (const char* separator : {". ", "! ", "? "}) {
        result = withoutOuterBlanks(capitalsBehind(QString::fromLatin1(separator), result));
    }
    return result;
}

// The text with its separator, whatever it was, turned into that of this machine.
QString withLocaleSeparator(const QString& text) {
    for (const QChar c : text) {
        if (c < QLatin1Char('0') || c > QLatin1Char('9')) {
            return QString(text).replace(c, platform::decimalSeparator());
        }
    }
    return text;
}

}  // namespace

QString ConvertCase(const QString& text, int mode) {
    switch (mode) {
        case 0:
            return text.toUpper();
        case 1:
            return text.toLower();
        case 2:
            return withCapital(text);
        case 3:
            return wordsWithCapitals(text);
        case 4:
            return sentencesWithCapitals(text);
        default:
            return {};
    }
}

float LocaleSingle(const QString& text) {
    return platform::readSingle(withLocaleSeparator(text.trimmed())).value_or(0.0F);
}

float ReadKursKupovni() {
    const QString normalised = withLocaleSeparator(settings::text(settings::KursKupovni));
    // A settings file that cannot be written must not cost the shop its rate; saving the settings at the end
    // of the day reports the same trouble with its message.
    platform::Trap writing;
    writing([&] { settings::setText(settings::KursKupovni, normalised); });
    if (normalised.isEmpty()) {
        return 0;
    }
    if (const std::optional<float> rate = platform::readSingle(normalised)) {
        return *rate;
    }
    if (platform::isNumeric(normalised)) {
        throw platform::RunError(6, QStringLiteral("Overflow"));
    }
    throw platform::RunError(13, QStringLiteral("Type mismatch"));
}

QString FileNameOf(const QString& path) {
    const QString native = platform::nativePath(path);
    return native.mid(native.lastIndexOf(platform::nativePath(QStringLiteral("\\"))) + 1);
}

void TryKillFile(const QString& path) {
    platform::Trap step;
    step([&] { platform::deleteFile(path); });
}

bool LaunchAssociated(QWidget* owner, const QString& target) {
    static const QHash<int, int> kMessages = {{0, 132},  {2, 134},  {3, 135},  {5, 136},  {8, 144},
                                              {11, 133}, {26, 146}, {27, 137}, {28, 140}, {29, 139},
                                              {30, 138}, {31, 143}, {32, 141}};
    constexpr int kUnexpected = 147;
    constexpr int kLastFailure = 32;
    const int result = platform::shellExecute(target);
    if (result > kLastFailure) {
        return true;
    }
    platform::showBox({.text = GetResString(kMessages.value(result, kUnexpected)),
                       .title = GetResString(1),
                       .icon = platform::BoxIcon::Critical},
                      owner);
    return false;
}

void SetTopMost(QWidget* window, bool flag) {
    // Not setWindowFlags: that hides the window and takes its place and its focus away, while the splash
    // window is only to come forward.
    window->overrideWindowFlags(window->windowFlags().setFlag(Qt::WindowStaysOnTopHint, flag));
    if (QWindow* native = window->windowHandle()) {
        native->setFlag(Qt::WindowStaysOnTopHint, flag);
    }
}
