#pragma once

#include "records/list_sorting.h"
#include "records/main_list_owner.h"
#include "records/main_window_view.h"
#include "records/service_commands.h"
#include "records/service_list.h"

class StageSwitch;
struct ShopRecords;

// The stage of services: the list in its pane, what is done with its services, its order, and what
// requisition and documents see of it.
class ListedServices {
 public:
    // All of these outlive it. Boxes and windows stand over `window`.
    ListedServices(QWidget& window, platform::ListView& pane, const MainStart& start, ShopRecords& shop,
                   MainChoices& choices, const StageSwitch& tabs, MainView& surface);

    // The columns, and what keys and clicks do on the rows. False on failure, with the text to show in
    // `errorText`.
    bool InitServiceListView(QString& errorText);

 private:
    void connectRows();

    platform::ListView& pane_;
    const MainStart& start_;
    ShopRecords& shop_;
    MainListOwner owner_;

 public:
    const MainWindowView view;
    ServiceList list;
    ServiceCommands commands;
    ListSorting sorting;
};
