// The main window's selector and list: filling, sorting, refreshing.
#include "our_window.h"
#include "plain_shop.h"
#include "plain_stages.h"
#include "platform/dao/dao.h"
#include "records/frmMain.h"
#include "shop.h"

namespace {

// --- The client selector.

class ClientsOurs : public Side {
 public:
    explicit ClientsOurs(Shop&) { mainWindow().shop.filter.RefreshAll(); }
    void run() override { mainWindow().shop.reading.FillClientCombo(); }
    Lines result() override { return entriesOf(*mainWindow().controls.Combo1[0]); }
};

class ClientsPlain : public Side {
 public:
    explicit ClientsPlain(Shop& shop) : stages_(shop.plain()) {}
    void run() override { stages_.readClients(nullptr); }
    Lines result() override { return stages_.clients(); }

 private:
    PlainStages<PlainShop> stages_;
};

// --- The 1,000 services of the busiest computer, with every cell, also those that nobody sees.

int busiestComputer(Shop& shop) {
    return static_cast<int>(shop.plain().number(
        "SELECT MachineID FROM Services GROUP BY MachineID ORDER BY count(*) DESC LIMIT 1"));
}

void showServices(int computer) {
    platform::DataControl& source = *mainWindow().controls.Data1[2];
    source.selection =
        platform::Selection::statement(QStringLiteral("SELECT * FROM QDServices%1 WHERE MachineID=%2")
                                           .arg(mainWindow().shop.stages.QuerySuffix)
                                           .arg(computer));
    source.Refresh();
    mainWindow().services.list.fill({});
}

void lookAtServices() {
    const platform::ListView& list = *mainWindow().controls.ListView1;
    for (int row = 1; row <= list.count(); ++row) {
        list.item(row);
    }
}

class ListOurs : public Side {
 public:
    explicit ListOurs(Shop& shop) : computer_(busiestComputer(shop)) {
        mainWindow().shop.filter.RefreshAll();
    }
    ~ListOurs() override { mainWindow().shop.filter.RefreshAll(); }
    void run() override {
        // As if nobody had looked at this computer before.
        mainWindow().services.list.closeRows();
        dao::DBEngine::Idle(dao::dbRefreshCache);
        showServices(computer_);
        lookAtServices();
    }
    Lines result() override { return rowsOf(*mainWindow().controls.ListView1); }

 private:
    int computer_;
};

class ListPlain : public Side {
 public:
    explicit ListPlain(Shop& shop)
        : computer_(busiestComputer(shop)),
          rows_(shop.plain(), PlainServices<PlainShop>::kStatement + " ORDER BY ID") {}
    void run() override { services_.read(rows_, computer_, nullptr); }
    Lines result() override { return services_.result(); }

 private:
    int computer_;
    Statement rows_;
    PlainServices<PlainShop> services_;
};

// --- Sorting those services by a column, one direction after the other: what another workstation has changed
// shows.

class SortOurs : public Side {
 public:
    SortOurs(Shop& shop, int column) : column_(column) {
        mainWindow().shop.filter.RefreshAll();
        showServices(busiestComputer(shop));
    }
    ~SortOurs() override {
        mainWindow().services.sorting.UnsortServices();
        mainWindow().shop.filter.RefreshAll();
    }
    void run() override {
        mainWindow().services.sorting.ListView1_ColumnClick(column_);
        lookAtServices();
    }
    Lines result() override { return rowsOf(*mainWindow().controls.ListView1); }

 private:
    int column_;
};

constexpr const char* kFields[] = {
    "", "ServiceStarted", "ServiceToBeFinished", "ServiceFinished", "Price", "Discount", "GST", "Paid"};
constexpr int kUsualColumn = 1;  // a first click on it turns the order round

class SortPlain : public Side {
 public:
    SortPlain(Shop& shop, int column)
        : computer_(busiestComputer(shop)),
          upwards_(shop.plain(),
                   PlainServices<PlainShop>::kStatement + " ORDER BY " + kFields[column] + " ASC"),
          downwards_(shop.plain(),
                     PlainServices<PlainShop>::kStatement + " ORDER BY " + kFields[column] + " DESC"),
          down_(column == kUsualColumn) {}
    void run() override {
        services_.read(down_ ? downwards_ : upwards_, computer_, nullptr);
        down_ = !down_;
    }
    Lines result() override { return services_.result(); }

 private:
    int computer_;
    Statement upwards_, downwards_;
    PlainServices<PlainShop> services_;
    bool down_;
};

// --- Refresh: all three stages. The stored queries name the whole tables before and after, so that a plain
// program has nothing to write.

class RefreshOurs : public Side {
 public:
    explicit RefreshOurs(Shop&) { mainWindow().shop.filter.RefreshAll(); }
    void run() override { mainWindow().shop.filter.RefreshAll(); }
    Lines result() override { return stagesOf(mainWindow()); }
};

class RefreshPlain : public Side {
 public:
    explicit RefreshPlain(Shop& shop) : stages_(shop.plain()) {}
    void run() override {
        stages_.readClients(nullptr);
        stages_.readComputers(nullptr);
        stages_.readServices(nullptr);
    }
    Lines result() override { return stages_.result(); }

 private:
    PlainStages<PlainShop> stages_;
};

}  // namespace

std::vector<Measure> windowMeasures() {
    std::vector<Measure> measures{
        {"fill the client selector, 50,000 names", 3, side<ClientsOurs>(), side<ClientsPlain>(), 15},
        {"list 1,000 services, every cell", 1.5, side<ListOurs>(), side<ListPlain>(), 31},
        {"refresh everything", 1.5, side<RefreshOurs>(), side<RefreshPlain>(), 15},
    };
    for (int column = 1; column < static_cast<int>(std::size(kFields)); ++column) {
        measures.push_back({std::string("sort 1,000 services by ") + kFields[column] + ", every cell", 1.3,
                            side<SortOurs>(column), side<SortPlain>(column), 31});
    }
    return measures;
}
