#include "data/session.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <array>
#include <functional>
#include <optional>
#include <utility>

#include "common/modMain.h"
#include "common/scramble.h"
#include "common/settings.h"
#include "data/backup_note.h"
#include "data/schema.h"
#include "platform/controls/boxes.h"
#include "platform/controls/long_wait.h"
#include "platform/dao/breaking_off.h"
#include "platform/dao/copy_watch.h"
#include "platform/dao/dao.h"
#include "platform/dao/moving.h"
#include "platform/system/dates.h"
#include "platform/system/files.h"
#include "platform/system/trap.h"
#include "platform/system/watched_copy.h"

namespace {

using platform::BoxAnswer;
using platform::BoxButtons;
using platform::BoxIcon;
using platform::LongWait;
using platform::Trap;

constexpr char kDatabaseName[] = "Tarvello.mdb";

// The backup stays with the workstation, also when the database lies on another machine.
QString inProgramFolder(const char* name) {
    return platform::nativePath(platform::programFolder() + QLatin1Char('\\') + QLatin1String(name));
}
QString backupPath() {
    return inProgramFolder("Tarvello.bkp");
}
QString temporaryPath() {
    return inProgramFolder("Tarvello.$$1");
}

QString lines(const QString& first, const QString& second) {
    return first + QLatin1Char('\n') + second;
}

bool askYesNo(const QString& text) {
    return platform::showBox({text, GetResString(1), BoxIcon::Exclamation, BoxButtons::YesNo}) ==
           BoxAnswer::Yes;
}

void notice(const QString& text) {
    platform::showBox({text, GetResString(1), BoxIcon::Exclamation, BoxButtons::Ok});
}

bool fail(QString& errorText, const QString& reason) {
    errorText = reason;
    return false;
}

// ----- CheckDatabase

enum class Found { File, Backup, Nothing };

std::optional<QString> askForDatabase() {
    const auto chosen = platform::openFileDialog(
        {GetResString(110),
         QStringLiteral("Microsoft Access Baze Podataka (*.mdb)|*.mdb|Svi Fajlovi (*.*)|*.*"),
         platform::nativePath(platform::programFolder())});
    return chosen ? std::optional<QString>(chosen->trimmed()) : std::nullopt;
}

Found takeBackupInstead(QString& errorText) {
    if (!askYesNo(GetResString(1012))) {
        errorText = GetResString(1013);
        return Found::Nothing;
    }
    QString reason;
    if (!UseBackupDatabase(reason, true)) {
        errorText = GetResString(1014) + QStringLiteral("\n\n") + reason;
        return Found::Nothing;
    }
    return Found::Backup;
}

Found locateDatabase(QString& path, QString& errorText) {
    for (;;) {
        if (platform::fileExists(path)) {
            if (FileNameOf(path).compare(QLatin1String(kDatabaseName), Qt::CaseInsensitive) == 0) {
                return Found::File;
            }
            notice(GetResString(112));
        }
        const auto chosen = askForDatabase();
        if (!chosen) {
            return takeBackupInstead(errorText);
        }
        path = platform::nativePath(*chosen);
    }
}

dao::Database tryOpening(Trap& step, const QString& path) {
    dao::Database database;
    step([&] {
        database = dao::DBEngine::Workspaces(0).OpenDatabase(path.toStdString(), false, false,
                                                             connectText().toStdString());
    });
    return database;
}

// A file of an earlier version is brought up to date before anybody works with it. Where that fails it stays
// as it was, and there is nothing about it to repair.
bool bringUpToDate(dao::Database& database, QString& errorText) {
    Trap raising;
    raising([&] { data::raiseForm(database); });
    raising([&] { database.Close(); });
    return raising.failed() ? fail(errorText, lines(GetResString(1017), raising.line())) : true;
}

// The day and hour at which a file was last written, as people read it.
QString momentOf(const QString& path) {
    const QDateTime written = QFileInfo(path).lastModified();
    return platform::formatShortDate(written.date()) + QLatin1Char(' ') +
           written.time().toString(QStringLiteral("HH:mm"));
}

QString keptSignpost(const QString& path) {
    return platform::nativePath(QFileInfo(path).dir().filePath(QStringLiteral("Tarvello.server.mdb")));
}

// A server that does not answer is nothing to be repaired from here. Whoever works on with the backup works
// alone, and is told so before it comes to that; the signpost is kept for the way back.
bool workAlone(const QString& path, QString& errorText) {
    if (!askYesNo(GetResString(1012))) {
        return fail(errorText, GetResString(1013));
    }
    if (!platform::fileExists(backupPath())) {
        return fail(errorText, lines(GetResString(1014) + QLatin1Char('\n'),
                                     GetResString(1035, {{QStringLiteral("%1"), backupPath()}})));
    }
    const QString kept = keptSignpost(path);
    notice(QStringLiteral(
               "From now on this workstation works alone, with its backup of %1. The server gets nothing "
               "of what is written here. The way back to the server is kept as %2.")
               .arg(momentOf(backupPath()), kept));
    Trap keeping;
    keeping([&] { dao::DBEngine::RenameDatabase(path.toStdString(), kept.toStdString()); });
    if (keeping.failed()) {
        return fail(errorText, lines(GetResString(1014) + QLatin1Char('\n'), keeping.line()));
    }
    QString reason;
    if (!UseBackupDatabase(reason, true)) {
        Trap restoring;
        restoring([&] { dao::DBEngine::RenameDatabase(kept.toStdString(), path.toStdString()); });
        return fail(errorText, GetResString(1014) + QStringLiteral("\n\n") + reason);
    }
    return true;
}

OldFileTaker& oldFileTaker() {
    static OldFileTaker taker;
    return taker;
}

// Whatever keeps the file from opening counts as damage here: a repair tells the cases apart soon enough.
bool proveDatabase(const QString& path, QString& errorText) {
    for (bool repaired = false;; repaired = true) {
        Trap opening;
        dao::Database database = tryOpening(opening, path);
        if (!opening.failed()) {
            return bringUpToDate(database, errorText);
        }
        if (opening.number() == dao::errNewerForm) {
            return fail(errorText, newerDatabaseText());
        }
        switch (oldFileTaker() ? oldFileTaker()(path, errorText) : OldFile::None) {
            case OldFile::None:
                break;
            case OldFile::TakenOver:
                return proveDatabase(path, errorText);
            case OldFile::Left:
                return false;
        }
        if (repaired) {
            return fail(errorText, lines(GetResString(1017), GetDAOErrors()));
        }
        if (dao::DBEngine::IsOnServer(path.toStdString())) {
            notice(opening.line());
            if (!workAlone(path, errorText)) {
                return false;
            }
            continue;
        }
        notice(GetResString(1016));
        QString reason;
        if (RepairAndCompactDatabase(reason, true)) {
            return true;
        }
        if (reason.isEmpty()) {
            return fail(errorText, GetResString(1013));
        }
        if (!askYesNo(GetResString(1015, {{QStringLiteral("%1"), reason}}))) {
            return fail(errorText, GetResString(1013));
        }
        if (!UseBackupDatabase(reason, true)) {
            return fail(errorText, GetResString(1014) + QStringLiteral("\n\n") + reason);
        }
    }
}

// ----- repairing

const QString kRepairing = QStringLiteral("Repairing & Compacting database... Please wait...");

// `mended`: the file was damaged, and a sound one stands in its place. Nobody can leave then what is still to
// be done.
void repairAndCompact(const std::string& from, const std::string& to, const std::string& connect,
                      bool& mended) {
    dao::DBEngine::RepairDatabase(from, connect, backupPath().toStdString());
    mended = dao::DBEngine::LastRepair().damaged;
    std::optional<dao::Unleavable> whole;
    if (mended) {
        whole.emplace();
    }
    dao::DBEngine::CompactDatabase(from, to, connect);
}

// Giving back the space of a large file takes a while, too.
void discardAside(const QString& file) {
    LongWait::finish([&] { dao::DBEngine::DiscardDatabase(file.toStdString()); });
}

// ----- on a server

// The server keeps its shop in its place throughout: there is no file to exchange.
bool renewOnServer(const QString& path, QString& errorText) {
    const std::string shop = path.toStdString();
    const std::string connect = connectText().toStdString();
    const LongWait wait(kRepairing);
    Trap engine;
    engine([&] { LongWait::run([&] { dao::DBEngine::RepairDatabase(shop, connect); }); });
    if (!engine.failed()) {
        engine([&] { LongWait::run([&] { dao::DBEngine::CompactDatabase(shop, {}, connect); }); });
    }
    if (engine.failed() && wait.isLeft()) {
        return fail(errorText, {});
    }
    return engine.failed() ? fail(errorText, lines(GetResString(1027), GetDAOErrors())) : true;
}

bool setServerBack(const QString& path, const QString& backup, QString& errorText) {
    if (!askYesNo(QStringLiteral("Do you wish to set the whole server back, for every workstation, to this "
                                 "workstation's backup of %1?")
                      .arg(momentOf(backup)))) {
        return false;
    }
    Trap reverting;
    reverting([&] { dao::DBEngine::CopyDatabase(backup.toStdString(), path.toStdString()); });
    return reverting.failed() ? fail(errorText, lines(GetResString(1037), reverting.line())) : true;
}

// Whatever it was that failed.
const QString kNoBackup = QStringLiteral(
    "Database is opened in multiuser environment and at least one user is on line thus it is impossible to "
    "create backup database.");

// A large shop is read from end to end for its backup: that is not done over and over for nothing.
bool backUpServer(const QString& path, const BackupWatch& watch, QString& errorText) {
    const data::BackupNote note(backupPath());
    Trap copying;
    std::string copied;
    copying([&] {
        dao::ShopView shop(path.toStdString());
        if (shop.state() == note.state()) {
            return;
        }
        shop.copyTo(backupPath().toStdString(), [&](const dao::RowState& state) {
            if (watch) {
                watch(state.done + (state.comparing ? state.all : 0), 2 * state.all);
            }
        });
        copied = shop.state();
    });
    if (copying.failed()) {
        return fail(errorText, kNoBackup);
    }
    if (!copied.empty()) {
        Trap noting;  // without the note the next backup is merely made for nothing
        noting([&] { note.keep(copied); });
    }
    return true;
}

// The former backup is saved first and the copy is read again: of all these bytes each has its part.
class BackupTelling {
 public:
    BackupTelling(const BackupWatch& watch, bool saves) : watch_(watch), before_(saves ? 1 : 0) {}

    void saved(std::int64_t done, std::int64_t all) const { tell(done, all, 0); }
    void copied(std::int64_t done, std::int64_t all) const { tell(2 * done, all, before_); }

 private:
    static constexpr std::int64_t kPart = 1'000'000;

    void tell(std::int64_t done, std::int64_t all, std::int64_t parts) const {
        if (watch_ && all > 0) {
            watch_(parts * kPart + done * kPart / all, (before_ + 2) * kPart);
        }
    }

    const BackupWatch& watch_;
    std::int64_t before_;
};

// ----- the work queries

constexpr std::array<const char*, 3> kWorkTables{"Customers", "Computers", "Services"};

std::string workQueryName(std::size_t which, int suffix) {
    return kWorkQueries[which] + std::to_string(suffix);
}

// Between our look and our writing another workstation may close and take its queries away: what counts is
// what is there when we write.
void resetOrCreate(dao::Database& database, const std::string& name, const std::string& text) {
    Trap resetting;
    resetting([&] { database.QueryDefs()[name].setSQL(text); });
    if (resetting.number() == dao::errItemNotFound) {
        database.CreateQueryDef(name, text);
    } else if (resetting.failed()) {
        throw dao::Error(resetting.number(), resetting.description().toStdString());
    }
}

void forEachWorkQuery(const std::function<void(std::size_t)>& body) {
    std::optional<dao::Error> first;
    for (std::size_t i = 0; i < kWorkQueries.size(); ++i) {
        try {
            body(i);
        } catch (const dao::Error& e) {
            first = first ? first : e;
        }
    }
    if (first) {
        throw *first;
    }
}

// A program that runs is one copy, whatever it does with the file meanwhile.
dao::HeldNumber& ownNumber() {
    static dao::HeldNumber number;
    return number;
}

}  // namespace

QString BuildDatabasePassword() {
    constexpr std::array<int, 12> kTable{142, 199, 177, 143, 201, 130, 167, 191, 131, 160, 147, 192};
    QString text;
    for (std::size_t i = 1; i <= kTable.size(); ++i) {
        text += QChar(static_cast<char16_t>(256 - static_cast<int>(i) - kTable[i - 1]));
    }
    return ScrambleOrder(text, true);
}

QString databasePath() {
    return platform::nativePath(settings::text(settings::DatabasePath));
}

QString connectText() {
    return QStringLiteral(";pwd=") + BuildDatabasePassword();
}

QString newerDatabaseText() {
    return QStringLiteral(
        "The database was written by a newer version of Tarvello. Please install that version on this "
        "workstation, too.");
}

void setOldFileTaker(OldFileTaker taker) {
    oldFileTaker() = std::move(taker);
}

bool CheckDatabase(QString& errorText) {
    dao::DBEngine::setKnownForm(data::kShopForm);
    dao::DBEngine::setNotesFile(inProgramFolder("Tarvello.notes").toStdString());
    errorText.clear();
    QString path = databasePath();
    switch (locateDatabase(path, errorText)) {
        case Found::Nothing:
            return false;
        case Found::Backup:
            path = databasePath();
            break;
        case Found::File: {
            // Settings that cannot be written are reported when the program saves its own; today's work goes
            // on.
            Trap saving;
            saving([&] { settings::setText(settings::DatabasePath, path); });
            break;
        }
    }
    return proveDatabase(path, errorText);
}

bool RepairAndCompactDatabase(QString& errorText, bool withPassword) {
    errorText.clear();
    const QString path = databasePath();
    const QString temporary = temporaryPath();
    if (!platform::fileExists(path)) {
        return fail(errorText, GetResString(1025, {{QStringLiteral("%1"), path}}));
    }
    if (dao::DBEngine::IsOnServer(path.toStdString())) {
        return renewOnServer(path, errorText);
    }
    dao::DBEngine::DiscardDatabase(temporary.toStdString());

    const std::string from = path.toStdString();
    const std::string connect = withPassword ? connectText().toStdString() : std::string();
    const LongWait wait(kRepairing);
    // Nobody may come in between the copy and the exchange: what he wrote would be gone.
    std::optional<dao::SoleUse> sole;
    bool mended = false;
    Trap engine;
    engine([&] {
        LongWait::run([&] {
            sole.emplace(path.toStdString());
            repairAndCompact(from, temporary.toStdString(), connect, mended);
        });
    });
    if (wait.isLeft() && !mended) {
        discardAside(temporary);
        return fail(errorText, {});
    }
    if (engine.failed()) {
        return fail(errorText, lines(GetResString(1027), GetDAOErrors()));
    }

    // The fresh file takes the old one's name when it lies beside it, whole: a server that goes away or fills
    // up in the middle leaves the shop with the file it had.
    Trap files;
    files([&] { LongWait::finish([&] { dao::DBEngine::CopyDatabase(temporary.toStdString(), from); }); });
    discardAside(temporary);
    if (files.failed()) {
        return fail(errorText, lines(GetResString(1026), files.line()));
    }
    return true;
}

bool UseBackupDatabase(QString& errorText, bool silent) {
    errorText.clear();
    const QString path = databasePath();
    const QString backup = backupPath();
    const QString temporary = temporaryPath();
    if (!platform::fileExists(backup)) {
        return fail(errorText, GetResString(1035, {{QStringLiteral("%1"), backup}}));
    }
    if (dao::DBEngine::IsOnServer(path.toStdString())) {
        return setServerBack(path, backup, errorText);
    }
    if (!silent && !askYesNo(GetResString(1036))) {
        return false;
    }
    dao::DBEngine::DiscardDatabase(temporary.toStdString());
    Trap saving;  // the database may well be unreadable, or not there at all
    saving([&] { dao::DBEngine::CopyDatabase(path.toStdString(), temporary.toStdString()); });

    // Until the backup's copy lies whole beside the database and takes its name, the database stays where it
    // is. Where a link leads to it the file behind the link is replaced, or every other workstation would go
    // on with another file than this one.
    Trap reverting;
    reverting([&] {
        const dao::SoleUse sole(path.toStdString());
        dao::DBEngine::CopyDatabase(backup.toStdString(), path.toStdString());
    });
    dao::DBEngine::DiscardDatabase(temporary.toStdString());
    if (reverting.failed()) {
        return fail(errorText, lines(GetResString(1037), reverting.line()));
    }
    return true;
}

bool BackupDatabase(QString& errorText, const BackupWatch& watch) {
    errorText.clear();
    const QString path = databasePath();
    const QString backup = backupPath();
    const QString temporary = temporaryPath();
    if (!platform::fileExists(path)) {
        return fail(errorText, GetResString(1001, {{QStringLiteral("%1"), path}}));
    }
    if (dao::DBEngine::IsOnServer(path.toStdString())) {
        return backUpServer(path, watch, errorText);
    }
    dao::DBEngine::DiscardDatabase(temporary.toStdString());
    const bool saved = platform::fileExists(backup);
    const BackupTelling telling(watch, saved);
    if (saved) {
        Trap saving;
        saving([&] {
            platform::copyFile(backup, temporary,
                               [&](std::int64_t done, std::int64_t all) { telling.saved(done, all); });
        });
        if (saving.failed()) {
            return fail(errorText, lines(GetResString(1002), saving.line()));
        }
    }
    // The copy takes the old backup's place in one step when it is whole. Deleting the old one first would
    // leave a shop without any backup if the power went just then.
    Trap copying;
    copying([&] {
        dao::copyDatabase(path.toStdString(), backup.toStdString(),
                          [&](std::int64_t done, std::int64_t all) { telling.copied(done, all); });
    });
    if (copying.failed()) {
        if (saved) {
            Trap restoring;
            restoring([&] { platform::copyFile(temporary, backup); });
        }
        return fail(errorText, kNoBackup);
    }
    dao::DBEngine::DiscardDatabase(temporary.toStdString());
    return true;
}

int CreateWorkQueries(dao::Database& database) {
    dao::HeldNumber& held = ownNumber();
    if (held.isLost()) {
        // Not counted: nobody can look at the queries before there is a number.
        held = dao::HeldNumber(database, held.value() + 1);
    } else if (!held.isOn(database)) {
        // A third of the queries, to the nearest whole, is the number behind those of the others. It may be
        // taken all the same: by a copy that came before one that has gone since.
        held = dao::HeldNumber(database, (database.QueryDefs().Count() + 1) / 3);
    }
    forEachWorkQuery([&](std::size_t i) {
        resetOrCreate(database, workQueryName(i, held.value()),
                      std::string("SELECT * FROM ") + kWorkTables[i]);
    });
    return held.value();
}

bool WorkNumberLost() {
    return ownNumber().isLost();
}

void DropWorkQueries(dao::Database& database, int querySuffix) {
    // Whoever gets the number next must find his queries left alone: it is let go when ours are gone.
    const dao::HeldNumber letGo =
        querySuffix == ownNumber().value() ? std::move(ownNumber()) : dao::HeldNumber();
    forEachWorkQuery([&](std::size_t i) { database.QueryDefs().Delete(workQueryName(i, querySuffix)); });
}
