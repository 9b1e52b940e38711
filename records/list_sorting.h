#pragma once

#include <QString>

#include "records/main_start.h"

class MainView;
class StageReading;
struct ListOrder;
namespace platform {
class ListView;
}

// The order of the services list: a clause in the statement that its rows come from, and an arrow in the
// header of the column.
class ListSorting {
 public:
    // All of these outlive it.
    ListSorting(const MainStart& start, platform::ListView& list, StageReading& reading, ListOrder& order,
                MainView& window);

    // False on failure, with the text to show in `errorText`.
    bool CreateColumnImages(QString& errorText);
    // The order that was in force when the program was last closed. What the settings hold goes into a
    // statement, and a word in it that is no column would send a sound database to repair: then it is the
    // usual order.
    void takeFromSettings();

    // Nothing on an empty list.
    void ListView1_ColumnClick(int column);  // from 1
    void UnsortServices();                   // back to the order of the database

 private:
    void takeColumn(int column);
    void showArrow(int column);
    void forget();

    const MainStart& start_;
    platform::ListView& list_;
    StageReading& reading_;
    ListOrder& order_;
    MainView& window_;
    Pictures pictures_;
};
