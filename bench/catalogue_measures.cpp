// The catalogue and the requisition, on 50,000 products and a requisition of 5,000 rows.
#include <QLineEdit>
#include <QTest>
#include <QTimer>
#include <cmath>
#include <cstdlib>

#include "catalogue/frmKonfiguratorEx.h"
#include "common/modMain.h"
#include "documents/frmInvoiceEx.h"
#include "our_sides.h"
#include "our_window.h"
#include "plain_texts.h"
#include "platform/controls/boxes.h"
#include "platform/controls/list_box.h"
#include "platform/controls/list_view.h"
#include "shop.h"

namespace {

void addAmount(Cells& cells, double amount) {
    appendAmount(cells.text(), centsOf(amount));
    cells.end();
}

double rate() {
    return CeneDinarske ? KursKupovni : 1;
}

// --- The product list.

// The catalogue, filled as for the first group, of all manufacturers.
std::unique_ptr<frmKonfiguratorEx> openCatalogue() {
    auto window = std::make_unique<frmKonfiguratorEx>();
    QTimer::singleShot(0, window.get(), [made = window.get()] { made->hide(); });
    window->Display();
    window->PrikaziSveProizvodjace = true;
    platform::ListBox& groups = *window->List1[frmKonfiguratorEx::kGroups];
    if (!groups.setCurSel(groups.findString(QStringLiteral("Grupa 0")))) {
        std::abort();
    }
    return window;
}

class ProductsOurs : public Side {
 public:
    explicit ProductsOurs(Shop&) {}
    void run() override { window_->DataUpdate(frmKonfiguratorEx::kProducts, QString(), false); }
    Lines result() override { return rowsOf(*window_->ListView1); }

 private:
    std::unique_ptr<frmKonfiguratorEx> window_ = openCatalogue();
};

class ProductsPlain : public Side {
 public:
    explicit ProductsPlain(Shop& shop)
        : group_(shop.stock().firstGroup),
          makers_(shop.plain(), "SELECT each_row(ID, Proizvodjac) FROM Proizvodjaci"),
          products_(shop.plain(),
                    "SELECT ID, IDProizvodjaca, Naziv, Opis, Cena, Stanje, Napomena, JM FROM Oprema WHERE "
                    "IDGrupe=? ORDER BY IDProizvodjaca, ID"),
          shop_(shop.plain()) {}
    void run() override {
        names_.clear();
        shop_.scan(makers_, [this](const Row& row) {
            names_.resize(static_cast<std::size_t>(row.integer(0)) + 1);
            names_.back() = row.text(1);
        });
        cells_.clear();
        products_.bind(1, group_);
        while (products_.next()) {
            add(products_.row());
        }
    }
    Lines result() override { return cells_.lines(8); }

 private:
    void add(const Row& row) {
        const double stock = row.number(5);
        appendNumber(cells_.text() += 'K', row.integer(0));
        cells_.end();
        cells_.add(names_[static_cast<std::size_t>(row.integer(1))]);
        cells_.add(stock > 0 ? "stanjeok" : "stanjenula");
        cells_.add(row.text(2));
        cells_.add(row.text(3));
        addAmount(cells_, row.number(4) * rate());
        appendSingle(cells_.text(), static_cast<float>(stock));
        cells_.end();
        cells_.text() += row.text(6);
        cells_.text() += '|';
        cells_.add(row.text(7));
    }

    int group_;
    Statement makers_, products_;
    PlainShop& shop_;
    std::vector<std::string> names_;  // of manufacturers, by their numbers
    Cells cells_;
};

// --- One key in a search box over 5,000 manufacturers.

class TypeAhead : public Side {
 public:
    explicit TypeAhead(Shop&) {
        // The last one in the list: the search goes through all of them.
        const platform::ListBox& list = *window_->List1[frmKonfiguratorEx::kManufacturers];
        name_ = list.text(list.count() - 1);
    }
    void run() override {
        QLineEdit& box = *window_->Text1[frmKonfiguratorEx::kManufacturers];
        length_ = length_ < name_.size() ? length_ + 1 : 1;
        box.setText(name_.left(length_ - 1));
        QTest::keyClick(&box, name_.at(length_ - 1).toLatin1());
    }

 private:
    std::unique_ptr<frmKonfiguratorEx> window_ = openCatalogue();
    QString name_;
    qsizetype length_ = 0;
};

// --- Drawing one product.

class DrawPlain : public Side {
 public:
    explicit DrawPlain(Shop& shop)
        : shop_(shop.plain()),
          service_(shop.stock().service),
          product_(shop.stock()),
          takeOne_(shop.plain(), "UPDATE Oprema SET Stanje=Stanje-1 WHERE ID=?"),
          addOne_(shop.plain(),
                  "UPDATE InvoiceData SET Stanje=Stanje+1, SN='S', JM='Kom.' WHERE dao_row=(SELECT dao_row "
                  "FROM InvoiceData WHERE ServiceID=?1 AND OpremaID=?2 LIMIT 1)") {}
    void run() override {
        drawn_ = product_.next();
        takeOne_.bind(1, drawn_).run();
        addOne_.bind(1, service_).bind(2, drawn_).run();
    }
    Lines result() override {
        Statement row(shop_,
                      "SELECT (SELECT Stanje FROM Oprema WHERE ID=?2), Stanje, SN, JM FROM InvoiceData WHERE "
                      "ServiceID=?1 AND OpremaID=?2");
        row.bind(1, service_).bind(2, drawn_).next();
        return drawnRow(row.row().number(0), row.row().number(1), row.row().text(2), row.row().text(3));
    }

 private:
    PlainShop& shop_;
    int service_;
    NextProduct product_;
    int drawn_ = 0;
    Statement takeOne_, addOne_;
};

// --- The requisition.

class RequisitionOurs : public Side {
 public:
    explicit RequisitionOurs(Shop& shop) {
        const platform::BoxScript quiet;  // the first opening says that it has no widths yet
        window_.setServiceID(shop.stock().service);
        QTimer::singleShot(0, &window_, [this] { window_.hide(); });
        window_.Display();
    }
    void run() override { window_.UpdateDATA(QString(), true); }
    Lines result() override { return rowsOf(*window_.ListView1); }

 private:
    frmInvoiceEx window_;
};

// The row of the total is the first one, so its cell is made when all others are.
class RequisitionPlain : public Side {
 public:
    explicit RequisitionPlain(Shop& shop)
        : service_(shop.stock().service),
          rows_(
              shop.plain(),
              "SELECT OpremaID, Proizvodjac, Grupa, Naziv, Opis, SN, Cena, Stanje, JM FROM InvoiceData WHERE "
              "ServiceID=? ORDER BY dao_row") {}
    void run() override {
        cells_.clear();
        total_ = 0;
        rows_.bind(1, service_);
        while (rows_.next()) {
            add(rows_.row());
        }
        totalText_.clear();
        appendAmount(totalText_, centsOf(decimalOf(total_)));
    }
    Lines result() override {
        Lines lines{"total| |total||||| |TOTAL:|" + totalText_ + "|"};
        for (const std::string& line : cells_.lines(11)) {
            lines.push_back(line);
        }
        return lines;
    }

 private:
    void add(const Row& row) {
        const double price = row.number(6) * rate(), quantity = row.number(7);
        const std::int64_t amount = centsOf(price * quantity);
        appendNumber(cells_.text() += 'K', row.integer(0));
        cells_.end();
        cells_.add(row.text(1));
        cells_.add("stavka");
        for (int column = 2; column < 6; ++column) {
            cells_.add(row.text(column));
        }
        addAmount(cells_, price);
        appendSingle(cells_.text(), static_cast<float>(quantity));
        cells_.end();
        appendAmount(cells_.text(), amount);
        cells_.end();
        cells_.add(row.text(8));
        total_ += static_cast<float>(static_cast<double>(amount) / 100);
    }

    int service_;
    Statement rows_;
    Cells cells_;
    float total_ = 0;  // the shop adds its requisitions up in Singles
    std::string totalText_;
};

}  // namespace

std::vector<Measure> catalogueMeasures() {
    return {
        {"list the 5,000 products of a group", 3, side<ProductsOurs>(), side<ProductsPlain>(), 15},
        {"draw a product, both writes", 1.2, side<DrawOurs>(), side<DrawPlain>(), 15, 100},
        {"fill a requisition of 5,000 rows", 1.5, side<RequisitionOurs>(), side<RequisitionPlain>(), 15},
        {"one letter typed ahead in 5,000 manufacturers", 0, side<TypeAhead>(), {}, 9, 100},
    };
}
