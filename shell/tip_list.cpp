#include "shell/tip_list.h"

#include <QFile>
#include <QTextStream>
#include <memory>
#include <random>

#include "common/modMain.h"
#include "platform/system/files.h"
#include "platform/system/trap.h"

namespace {

// Chance, seeded anew for each window.
std::function<double()> realChance() {
    auto engine = std::make_shared<std::mt19937>(std::random_device{}());
    return [engine] {
        constexpr double kRange = 4294967296.0;
        return static_cast<double>((*engine)()) / kRange;
    };
}

// Lines as they stand; the break behind the last one begins no further line.
QStringList readLines(const QString& path) {
    QFile file(platform::nativePath(path));
    if (!file.open(QIODevice::ReadOnly)) {
        throw platform::RunError(70, QStringLiteral("Permission denied"));
    }
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError) {
        throw platform::RunError(57, QStringLiteral("Device I/O error"));
    }
    QTextStream text(bytes);
    QStringList lines;
    while (!text.atEnd()) {
        lines.append(text.readLine());
    }
    return lines;
}

}  // namespace

TipList::TipList() : chance(realChance()) {}

bool TipList::load(const QString& file, QString& errorText) {
    errorText.clear();
    lines_.clear();
    current = 0;
    if (file.isEmpty() || !platform::fileExists(file)) {
        return false;
    }
    platform::Trap step;
    step([&] { lines_ = readLines(file); });
    if (step.failed()) {
        errorText = QStringLiteral("%1 in line: %2").arg(step.line()).arg(step.codeLine());
        return false;
    }
    next();
    return true;
}

int TipList::anyTip() const {
    return static_cast<int>(chance() * count() + 1);
}

void TipList::next() {
    if (ShowTipsAtRandom) {
        current = anyTip();
    } else if (++current > count()) {
        current = 1;
    }
}

void TipList::previous() {
    if (ShowTipsAtRandom) {
        current = anyTip();
    } else if (--current < 1) {
        current = count();
    }
}
