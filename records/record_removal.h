#pragma once

class MainView;
class RecordEditing;
class Stage;
class Stages;

// Deleting a record of any stage, after a question. The stage moves on to the next one.
class RecordRemoval {
 public:
    // All of these outlive it.
    RecordRemoval(Stages& stages, const RecordEditing& editing, MainView& window);

    void DeleteRecord(int stageIndex);  // nothing while a record is being added, which is told

 private:
    bool mayDelete(const Stage& stage);
    void removeEntry(Stage& stage);
    void moveOn(Stage& stage);

    Stages& stages_;
    const RecordEditing& editing_;
    MainView& window_;
};
