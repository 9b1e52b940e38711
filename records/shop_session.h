#pragma once

#include <QString>

class MainView;
class RecordEditing;
class ShopFilter;
class StageReading;
class Stages;
namespace platform {
class Trap;
}

// What the owner of the shop chooses about closing it.
struct SessionChoices {
    bool AlwaysCreateBackupDB = true;
};

// The database under the open window: opening it with repair and backup at hand, closing, compacting,
// reopening.
class ShopSession {
 public:
    // All of these outlive it.
    ShopSession(Stages& stages, StageReading& reading, RecordEditing& editing, ShopFilter& filter,
                const SessionChoices& choices, MainView& window);

    int BackupPatience = 1000;  // milliseconds of a backup before it shows how far it is

    // `ok` is false with the reason in `errorText` where the shop cannot be opened, nor be mended.
    void OpenDataControls(QString& errorText, bool& ok);
    // With the backup that the owner wants. `ok` is false where not all of it had been open.
    void CloseDatabases(bool& ok);
    // Both save the record on show first; `ok` is false without a reason where that was refused. Where
    // another copy has taken the number of this one they take another one for it.
    void CompactOpenDatabase(QString& errorText, bool& ok);
    void RestartDatabase(QString& errorText, bool& ok);
    // Restarts, after compacting where that is wanted and possible, and tells what failed. False where the
    // program has to end.
    bool restartOrTell(bool compact);

 private:
    void openStages(platform::Trap& step);
    void closeStages(platform::Trap& step);
    bool recover(QString& errorText, bool& repaired);
    void finish();
    bool takeNewNumber();
    void reopen(bool compacting, QString& errorText, bool& ok);
    void showReopened(platform::Trap& step);

    Stages& stages_;
    StageReading& reading_;
    RecordEditing& editing_;
    ShopFilter& filter_;
    const SessionChoices& choices_;
    MainView& window_;
};
