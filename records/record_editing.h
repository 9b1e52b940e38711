#pragma once

#include <QString>

class EntryFields;
class MainView;
class Stage;
class Stages;
namespace platform {
class Trap;
}

// Clients and computers are edited in place: adding a record, saving it when it is left, giving it up, and
// choosing another one. `stageIndex` is that of a stage with a selector, unless told
// otherwise.
class RecordEditing {
 public:
    // All of these outlive it.
    RecordEditing(Stages& stages, const EntryFields& fields, MainView& window);

    bool AddNewMode = false;  // the stage on show has a new record

    void AddNewRecord();          // on the stage on show
    bool beginAdd(Stage& stage);  // false with the reason shown; all stands as it stood then
    // `ok` is false where the person has to stay: something is missing that is to be mended, or a new record
    // could not be written and goes on being added. A failed edit holds nobody back.
    void SaveRecord(int stage, bool& ok);  // from 1; that of services has nothing to save
    // The same for the stage on show where something is typed that has not marked the stage.
    bool saveWhatIsTyped();
    void choose(int stageIndex);  // the entry that the selector stands on now
    void tellMissing(const QString& entry);

 private:
    // What makes a person leave a record: a command or a tab, or another entry of the selector, which stands
    // there already.
    enum class Leaving { ByCommand, ByChoice };

    void leave(Stage& stage, Leaving how, bool& ok);
    void write(Stage& stage, Leaving how, bool& ok);
    void giveUp(Stage& stage, Leaving how);
    void dropEdit(Stage& stage);
    bool wantsToFix(const QString& errors);
    bool writeNew(Stage& stage);
    bool writeRow(Stage& stage, qint32& number, platform::Trap& step);
    void addAgain(Stage& stage, platform::Trap& step);
    void takeNewEntry(Stage& stage, qint32 number);
    void writeEdit(Stage& stage, int entry);
    void showFailure(int messageId, const Stage& stage, const QString& line);
    void stayOnRecord(Stage& stage);

    Stages& stages_;
    const EntryFields& fields_;
    MainView& window_;
};
