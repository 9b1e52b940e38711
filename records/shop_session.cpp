#include "records/shop_session.h"

#include <atomic>
#include <chrono>

#include "common/modMain.h"
#include "common/settings.h"
#include "common/window_helpers.h"
#include "data/session.h"
#include "platform/controls/work_aside.h"
#include "platform/system/trap.h"
#include "records/main_view.h"
#include "records/record_editing.h"
#include "records/shop_filter.h"
#include "records/stage_reading.h"
#include "records/stages.h"

using platform::BoxAnswer;
using platform::BoxButtons;
using platform::BoxIcon;
using platform::Trap;

namespace {

const QString kCompactingRefused = QStringLiteral(
    "Database is opened in multiuser environment and at least one user is on line thus it is impossible to "
    "compact database. Application will try to restart the database.");

constexpr int kBackupTurn = 20;  // milliseconds
constexpr std::chrono::milliseconds kBetweenLooks{5};

// The shop is closed meanwhile, and nobody else asks the engine. A step of a large backup takes longer than
// the windows may wait: its last pages coming to rest on the disk, the space of the former one given back.
bool backUpAside(QString& errorText, WorkProgress& progress) {
    std::atomic<std::int64_t> copied{0}, all{0};
    bool made = false;
    const auto work = [&] {
        made = BackupDatabase(errorText, [&](std::int64_t done, std::int64_t total) {
            copied = done;
            all = total;
        });
    };
    const auto tell = [&] {
        if (all > 0) {
            progress.tell(copied, all);
        }
        return true;
    };
    platform::workAside(work, tell, kBetweenLooks);
    tell();
    return made;
}

}  // namespace

ShopSession::ShopSession(Stages& stages, StageReading& reading, RecordEditing& editing, ShopFilter& filter,
                         const SessionChoices& choices, MainView& window)
    : stages_(stages),
      reading_(reading),
      editing_(editing),
      filter_(filter),
      choices_(choices),
      window_(window) {}

// --- Opening.

// The services are read in the order of the file: the list sorts when it is shown, and no word in the
// settings can make a sound file look broken.
void ShopSession::openStages(Trap& step) {
    QString path;
    step([&] { path = databasePath(); });
    for (const Stage& stage : stages_) {
        stage.data().DatabaseName = path;
        step([&] { stage.data().Connect = connectText(); });
        stage.data().selection = {};
    }
    step([&] { stages_[kClients].data().Refresh(); });
    step([&] { stages_.QuerySuffix = CreateWorkQueries(stages_.database()); });
    for (const Stage& stage : stages_) {
        stage.data().selection = stages_.all(stage.index());
        step([] { refreshCache(); });
        step([&] { stage.data().Refresh(); });
    }
}

void ShopSession::OpenDataControls(QString& errorText, bool& ok) {
    bool repaired = false;
    for (;;) {
        Trap step;
        stages_.LoadingList = true;
        openStages(step);
        stages_.LoadingList = false;
        if (!step.failed()) {
            window_.LoadServiceTypes();
            step([] { settings::setBoolean(settings::ProperlyClosed, false); });
            ok = true;
            return;
        }
        ok = false;
        const bool newer = step.number() == dao::errNewerForm;
        closeStages(step);
        if (newer) {
            errorText = newerDatabaseText();
            return;
        }
        if (repaired) {
            errorText = GetResString(1048);
            return;
        }
        window_.box(GetResString(1049), BoxIcon::Exclamation);
        if (!recover(errorText, repaired)) {
            return;
        }
    }
}

// Repairs the file or puts the backup in its place. True where it is worth another try.
bool ShopSession::recover(QString& errorText, bool& repaired) {
    QString reason;
    if (RepairAndCompactDatabase(reason, true)) {
        repaired = true;
        return true;
    }
    if (reason.isEmpty()) {
        errorText = GetResString(1013);
        return false;
    }
    const QString question = GetResString(1015, {{QStringLiteral("%1"), reason}});
    if (window_.box(question, BoxIcon::Exclamation, BoxButtons::YesNo) != BoxAnswer::Yes) {
        errorText = GetResString(1013);
        return false;
    }
    reason.clear();
    if (UseBackupDatabase(reason, true)) {
        return true;
    }
    errorText = GetResString(1014) + QLatin1Char('\n') + reason;
    return false;
}

// --- Closing.

void ShopSession::closeStages(Trap& step) {
    step([&] { window_.CloseServiceRows(); });
    stages_.LoadingList = true;
    for (const Stage& stage : stages_) {
        step([&] { stage.data().Close(); });
    }
    stages_.LoadingList = false;
}

void ShopSession::CloseDatabases(bool& ok) {
    ok = true;
    window_.CloseServiceRows();
    Trap step;
    step([] { refreshCache(); });
    if (stages_.database()) {
        step([&] { DropWorkQueries(stages_.database(), stages_.QuerySuffix); });
    }
    step([] { refreshCache(); });
    step.clear();
    // What was never open is not backed up: it may be what made the start fail.
    for (const Stage& stage : stages_) {
        ok = ok && stage.data().isOpen();
    }
    closeStages(step);
    ok = ok && !step.failed();
    if (ok) {
        finish();
    }
}

void ShopSession::finish() {
    Trap step;
    if (!choices_.AlwaysCreateBackupDB) {
        step([] { settings::setBoolean(settings::ProperlyClosed, true); });
        return;
    }
    QString errorText;
    bool done = false;
    const std::unique_ptr<WorkProgress> progress =
        window_.progress(QStringLiteral("Backup"), kBackupTurn, BackupPatience);
    step([&] { done = backUpAside(errorText, *progress); });
    if (done) {
        return;
    }
    window_.box(QStringLiteral("Application has failed to create backup database:\n\n") +
                    (step.failed() ? step.line() : errorText),
                BoxIcon::Exclamation);
}

// --- Closing and opening again.

void ShopSession::CompactOpenDatabase(QString& errorText, bool& ok) {
    reopen(true, errorText, ok);
}

void ShopSession::RestartDatabase(QString& errorText, bool& ok) {
    reopen(false, errorText, ok);
}

bool ShopSession::restartOrTell(bool compact) {
    QString errorText;
    bool ok = false;
    if (compact) {
        CompactOpenDatabase(errorText, ok);
        if (ok || errorText.isEmpty()) {
            return true;
        }
        window_.box(kCompactingRefused, BoxIcon::Exclamation);
        errorText.clear();
    }
    RestartDatabase(errorText, ok);
    if (ok || errorText.isEmpty()) {
        return true;
    }
    window_.box(
        QStringLiteral("Restarting database has failed.\n\n%1\n\nAplication will terminate.").arg(errorText),
        BoxIcon::Critical);
    return false;
}

// Another copy's queries go by the number that was ours, and it must not find them changed: what is still to
// be saved here is saved under a new one.
bool ShopSession::takeNewNumber() {
    Trap taking;
    taking([&] { stages_.QuerySuffix = CreateWorkQueries(stages_.database()); });
    if (taking.failed()) {
        window_.box(taking.line(), BoxIcon::Exclamation);
        return false;
    }
    for (const Stage& stage : stages_) {
        if (!stage.data().selection.isEmpty()) {
            stage.data().selection.source = stages_.query(stage.index());
        }
    }
    return true;
}

void ShopSession::reopen(bool compacting, QString& errorText, bool& ok) {
    errorText.clear();
    if (WorkNumberLost() && !takeNewNumber()) {
        ok = false;
        return;
    }
    editing_.SaveRecord(stages_.CurrentStage, ok);
    if (!ok) {
        return;
    }
    const QString failure =
        compacting
            ? QStringLiteral("Unexpected error(s) occured while repairing and compacting the database:")
            : GetResString(1047);
    Trap step;
    closeStages(step);
    step.clear();
    window_.setWaiting(true);
    QString reason;
    if (compacting) {
        window_.SetStatusText(QStringLiteral("Repairing & Compacting database... Please wait..."));
        ok = RepairAndCompactDatabase(reason, true) || reason.isEmpty();  // left: the file is as it was
    }
    if (ok) {
        window_.SetStatusText(GetResString(1046));
        OpenDataControls(reason, ok);
    }
    if (ok) {
        showReopened(step);
        ok = !step.failed();
        if (!ok) {
            errorText = failure + QLatin1Char(compacting ? ' ' : '\n') + step.line();
        }
    } else {
        errorText = failure + QLatin1Char('\n') + reason;
    }
    window_.setWaiting(false);
    window_.SetStatusText({});
}

void ShopSession::showReopened(Trap& step) {
    reading_.reopen(step);
    if (stages_.CurrentStage != 1) {
        step([&] { window_.showFirstStage(); });
    }
    step([&] { window_.UpdateServiceButtons(); });
    step([&] { window_.UpdateToolbarState(); });
    step([&] { filter_.forget(); });
}
