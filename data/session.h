#pragma once

#include <QString>
#include <array>
#include <cstdint>
#include <functional>

// The database file as the program's day begins and ends: found, proved, repaired, reverted, backed up.
// The paths: the database in the setting DatabasePath; Tarvello.bkp and Tarvello.$$1 in the program folder.
// Where a signpost stands in the database's place the records are on a server: it is never repaired into
// another file or replaced by one, unless this workstation is to work on alone while the server does not
// answer. Each returns false on failure and leaves the reason in errorText; the caller shows it.

QString BuildDatabasePassword();
QString databasePath();  // the setting, or the program folder's file
QString connectText();   // ";pwd=" and the password
bool CheckDatabase(QString& errorText);
// A file in the shop's place that is of the old database format: None where it is not, TakenOver where the
// shop's own stands there now, Left where it stays and the start ends with errorText.
enum class OldFile { None, TakenOver, Left };
// Asked by CheckDatabase where the file does not open, before that counts as damage. The program sets it when
// it starts; without one a file of the old format is one that does not open.
using OldFileTaker = std::function<OldFile(const QString& path, QString& errorText)>;
void setOldFileTaker(OldFileTaker taker);
// What is said of a file whose opening fails with dao::errNewerForm: nothing about it is to be repaired.
QString newerDatabaseText();
// Takes its time, and can be left by the person who waits for it: false without a reason then, and the file
// is as it was. A damaged one that has been mended cannot be left any more.
bool RepairAndCompactDatabase(QString& errorText, bool withPassword);
bool UseBackupDatabase(QString& errorText, bool silent);
// Of what is copied and compared; told now and then while it goes on.
using BackupWatch = std::function<void(std::int64_t done, std::int64_t total)>;
// A file is copied every time. Of a shop on a server the backup that lies there stays where nothing but
// stored queries has changed since it was made.
bool BackupDatabase(QString& errorText, const BackupWatch& watch = {});

namespace dao {
class Database;
}
// The names of a running copy's three stored queries, before its number.
inline constexpr std::array<const char*, 3> kWorkQueries{"QDCustomers", "QDComputers", "QDServices"};
// Gives this running copy its three stored queries (reset or created) and returns their number, QuerySuffix:
// one that no other running copy has, and the same again when this copy reopens the file. Throws dao::Error:
// the first failure, after trying all three.
int CreateWorkQueries(dao::Database& database);
// Whether another copy has taken the number of this one, while the server was away. Nothing of the shop is
// read or written then until CreateWorkQueries has given it another.
bool WorkNumberLost();
// Takes the three of that number away again and lets others have it. Throws like CreateWorkQueries.
void DropWorkQueries(dao::Database& database, int querySuffix);
