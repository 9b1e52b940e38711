#include "drawing.h"

#include <chrono>
#include <cstdio>
#include <thread>

#include "catalogue/stock_draw.h"
#include "data/session.h"
#include "platform/dao/dao.h"
#include "stock.h"

namespace {

using Clock = std::chrono::system_clock;

constexpr int kWorkstations = 8;

class Drawer {
 public:
    Drawer(dao::Database& shop, int workstation) : next_(workstation) {
        const int group = numberIn(shop, "SELECT ID FROM Grupe WHERE Grupa='Grupa 0'", "ID");
        products_ = shop.OpenRecordset("SELECT * FROM Oprema WHERE IDGrupe=" + std::to_string(group));
        first_ = products_["ID"].asLong();
        const int service = numberIn(shop, "SELECT ServiceID FROM InvoiceData", "ServiceID");
        requisition_ =
            shop.OpenRecordset("SELECT * FROM InvoiceData WHERE ServiceID=" + std::to_string(service));
    }
    void draw() {
        const std::string id = std::to_string(first_ + next_ % Stock::kDrawn);
        next_ += kWorkstations;
        products_.FindFirst("ID=" + id);
        takeFromStock();
        requisition_.FindFirst("OpremaID=" + id);
        stock_draw::addToRow(requisition_,
                             {.quantity = 1, .serialNumber = "S", .append = false, .unit = "Kom."});
    }

 private:
    static int numberIn(dao::Database& shop, const char* statement, const char* field) {
        return shop.OpenRecordset(statement)[field].asLong();
    }
    void takeFromStock() {
        for (bool taken = false; !taken;) {
            try {
                stock_draw::takeFromStock(products_, 1);
                taken = true;
            } catch (const dao::Error& error) {
                if (error.Number() != dao::errLocked) {
                    throw;
                }
            }
        }
    }

    int next_, first_ = 0;
    dao::Recordset products_, requisition_;
};

}  // namespace

int drawForSeconds(const std::string& shop, int seconds, int workstation) {
    dao::Database database = dao::DBEngine::OpenDatabase(shop, false, false, connectText().toStdString());
    Drawer drawer(database, workstation);
    const auto start = std::chrono::ceil<std::chrono::seconds>(Clock::now() + std::chrono::seconds(2));
    std::this_thread::sleep_until(start);
    int drawn = 0;
    for (; Clock::now() < start + std::chrono::seconds(seconds); ++drawn) {
        drawer.draw();
    }
    std::printf("%d\n", drawn);
    return 0;
}
