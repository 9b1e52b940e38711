#include "shell/old_shop.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QProgressDialog>
#include <chrono>
#include <mutex>
#include <utility>

#include "common/modMain.h"
#include "data/session.h"
#include "exchange/old_format.h"
#include "exchange/take_over.h"
#include "platform/controls/boxes.h"
#include "platform/controls/wait_pointer.h"
#include "platform/controls/work_aside.h"
#include "platform/dao/error.h"
#include "platform/system/files.h"

namespace {

using platform::BoxAnswer;
using platform::BoxButtons;
using platform::BoxIcon;

bool wantsIt(const QString& path, const QString& kept) {
    return platform::showBox(
               {QStringLiteral(
                    "%1 is a database of the old format, from the program that kept the shop's "
                    "records before.\n\nDo you wish to take it over? The records are carried into a "
                    "new database in its place, and the old file stays beside it as %2.")
                    .arg(path, QFileInfo(kept).fileName()),
                GetResString(1), BoxIcon::Question, BoxButtons::YesNo}) == BoxAnswer::Yes;
}

struct TakingStep {
    const char* doing = nullptr;  // nothing yet
    std::string table;
    std::int64_t done = 0;
    std::int64_t all = 0;
};

// A large shop takes a while, under the picture of the start: how far it is, and that it lives.
class TakingProgress {
 public:
    TakingProgress() : dialog_(QStringLiteral("Taking over the old database..."), QString(), 0, kSteps) {
        dialog_.setObjectName(QStringLiteral("TakingOver"));
        dialog_.setWindowTitle(GetResString(1));
        dialog_.setWindowModality(Qt::ApplicationModal);
        dialog_.setMinimumDuration(0);
        dialog_.setAutoReset(false);
        dialog_.setAutoClose(false);
        dialog_.setMinimumWidth(kWidth);
    }

    // On the thread of the work.
    void hear(TakingStep step) {
        const std::lock_guard<std::mutex> lock(mutex_);
        step_ = std::move(step);
    }

    // The windows turn only after the first word of the work: by then the process that reads the old file has
    // been started, and has inherited no lock that their turning holds.
    void turn() {
        const TakingStep step = lastStep();
        if (step.doing == nullptr) {
            return;
        }
        dialog_.setLabelText(QStringLiteral("Taking over the old database: %1 %2...")
                                 .arg(QLatin1String(step.doing), QString::fromStdString(step.table)));
        if (step.all > 0) {
            dialog_.setValue(static_cast<int>(kSteps * step.done / step.all));
        }
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    }

 private:
    static constexpr int kSteps = 1000;
    static constexpr int kWidth = 420;

    TakingStep lastStep() {
        const std::lock_guard<std::mutex> lock(mutex_);
        return step_;
    }

    QProgressDialog dialog_;
    std::mutex mutex_;
    TakingStep step_;
};

QString tableLine(const exchange::TakenTable& table) {
    QString line = QStringLiteral("%1: %2").arg(QString::fromStdString(table.name)).arg(table.carried);
    if (table.made > 0) {
        line += QStringLiteral(", and %1 made for rows that belonged to none").arg(table.made);
    }
    if (table.left > 0) {
        line += QStringLiteral("; left out: %1").arg(table.left);
    }
    return line;
}

void tellWhatWasTaken(const exchange::TakenOver& taken, const QString& kept) {
    QString text = QStringLiteral("The old database was taken over. Rows carried:\n");
    for (const exchange::TakenTable& table : taken.tables) {
        text += QLatin1Char('\n') + tableLine(table);
    }
    const QString list = QString::fromStdString(taken.list);
    text += taken.remarks == 0 && taken.notOurs == 0
                ? QStringLiteral("\n\nNothing was left out or changed; %1 says so, too.").arg(list)
                : QStringLiteral(
                      "\n\nChanged or left out: %1 rows or fields of rows; of no use here: %2 tables, "
                      "queries or fields. Each is listed in %3.")
                      .arg(taken.remarks)
                      .arg(taken.notOurs)
                      .arg(list);
    text += QStringLiteral(
                "\n\nThe old file stays as %1. The rate and the firm's data are not in it: they stand "
                "in the options.")
                .arg(kept);
    platform::showBox({text, GetResString(1), BoxIcon::Information, BoxButtons::Ok});
}

// On a thread of its own: no shop is open yet, and nobody else asks the engine. What lies between two words
// of the work, mending the rows of a large shop or the disk's last writing, is longer than the windows may
// wait.
exchange::TakenOver takeIt(const QString& path, const QString& kept) {
    constexpr std::chrono::milliseconds kBetweenTurns{50};
    const platform::WaitPointer waiting;
    TakingProgress progress;
    exchange::TakenOver taken;
    const auto work = [&] {
        taken = exchange::takeOverInPlace(
            path.toStdString(), kept.toStdString(),
            [&](const char* doing, const std::string& table, std::int64_t done, std::int64_t all) {
                progress.hear({doing, table, done, all});
            });
    };
    const auto turn = [&] {
        progress.turn();
        return true;
    };
    platform::workAside(work, turn, kBetweenTurns);
    return taken;
}

OldFile takeOldShop(const QString& path, QString& errorText) {
    const exchange::OldFormat format = exchange::oldFormatOf(path.toStdString());
    if (format != exchange::OldFormat::Version3 && format != exchange::OldFormat::Version4) {
        return OldFile::None;
    }
    const QFileInfo file(QFileInfo(path).canonicalFilePath());  // also where a link leads to it
    const QString kept =
        file.path() + QLatin1Char('/') + file.completeBaseName() + QStringLiteral(".old.mdb");
    if (!wantsIt(path, kept)) {
        errorText = GetResString(1013);
        return OldFile::Left;
    }
    try {
        tellWhatWasTaken(takeIt(path, kept), kept);
        return OldFile::TakenOver;
    } catch (const std::exception& failure) {
        errorText = QString::fromStdString(failure.what());
        return OldFile::Left;
    }
}

}  // namespace

void offerToTakeOldShops() {
    setOldFileTaker(takeOldShop);
}
