#pragma once

#include <QString>

// The database file as the program's day begins and ends: found, proved, repaired, reverted, backed up.
// The paths: the database in the setting DatabasePath; Tarvello.bkp and Tarvello.$$1 in the program folder.
// Each returns false on failure and leaves the reason in errorText; the caller shows it.

QString BuildDatabasePassword();
QString databasePath();  // the setting, or the program folder's file
QString connectText();   // ";pwd=" and the password
bool CheckDatabase(QString& errorText);
bool RepairAndCompactDatabase(QString& errorText, bool withPassword);
bool UseBackupDatabase(QString& errorText, bool silent);
bool BackupDatabase(QString& errorText);

namespace dao {
class Database;
}
// Gives this running copy its three stored queries (reset or created) and returns their number, QuerySuffix.
int CreateWorkQueries(dao::Database& database);
// Takes the three of that number away again. Throws dao::Error at the first that fails, after trying all.
void DropWorkQueries(dao::Database& database, int querySuffix);
