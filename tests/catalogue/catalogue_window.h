#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QTest>
#include <QTextEdit>
#include <QTimer>
#include <QVBoxLayout>
#include <functional>
#include <memory>

#include "catalogue/catalogue_parent.h"
#include "catalogue/frmInputBox.h"
#include "catalogue/frmKonfiguratorEx.h"
#include "catalogue/product_columns.h"
#include "common/list_cells.h"
#include "data/session.h"
#include "platform/controls/boxes.h"
#include "platform/controls/data_control.h"
#include "platform/controls/list_box.h"
#include "platform/controls/list_view.h"
#include "platform/controls/popup_menu.h"
#include "platform/controls/splitter.h"
#include "platform/controls/status_bar.h"
#include "support/fixture.h"
#include "support/modal.h"

// The requisition window as far as the catalogue knows it: real records of one service, a list of them, a
// surface that products are dropped on.
class RequisitionStandIn : public QDialog, public CatalogueParent {
 public:
    RequisitionStandIn() {
        setObjectName(QStringLiteral("RequisitionStandIn"));
        setAcceptDrops(true);
        resize(600, 400);
        list_ = new platform::ListView(this);
        list_->columns().add(QStringLiteral("Naziv"), QStringLiteral("Naziv"),
                             platform::HeaderAlignment::Left);
        entry_ = new QLineEdit(this);
        auto* column = new QVBoxLayout(this);
        column->setContentsMargins(20, 20, 20, 20);
        column->addWidget(list_);
        column->addWidget(entry_);
    }

    QWidget* asWindow() override { return this; }
    qint32 ServiceID() const override { return serviceId; }
    platform::DataControl& requisitionData() override { return data_; }
    platform::ListView& requisitionList() override { return *list_; }
    void UpdateDATA(const QString& itemKey, bool) override {
        ++updates;
        lastUpdateKey = itemKey;
        fill();
    }
    void TrebovanjeRefresh(bool resetSort) override {
        ++refreshes;
        lastRefreshReset = resetSort;
        fill();
    }
    void setDragEvents(ParentDragEvents* events) override { dragEvents = events; }

    // The rows of the service as the file has them now.
    void fill() {
        data_.DatabaseName = databasePath();
        data_.Connect = connectText();
        data_.selection = platform::Selection::statement(
            QStringLiteral("SELECT * FROM InvoiceData WHERE ServiceID=%1").arg(serviceId));
        data_.Refresh();
        list_->clearItems();
        dao::Recordset rows = data_.Recordset();
        for (; !rows.EOF(); rows.MoveNext()) {
            platform::ListItem item;
            item.Key = QStringLiteral("K%1").arg(rows["OpremaID"].asLong());
            item.Text = QString::fromStdString(rows["Naziv"].asText());
            if (!list_->hasItem(item.Key)) {
                list_->addItem(item);
            }
        }
        if (rows.RecordCount() > 0) {
            rows.MoveFirst();
        }
    }

    QLineEdit* entry() const { return entry_; }

    qint32 serviceId = 0;
    int updates = 0, refreshes = 0;
    bool lastRefreshReset = true;
    QString lastUpdateKey;
    ParentDragEvents* dragEvents = nullptr;

 protected:
    void dragEnterEvent(QDragEnterEvent* event) override { over(event, ParentDragEvents::State::Enter); }
    void dragMoveEvent(QDragMoveEvent* event) override { over(event, ParentDragEvents::State::Over); }
    void dragLeaveEvent(QDragLeaveEvent*) override {
        if (dragEvents) {
            dragEvents->parentDragOver(ParentDragEvents::State::Leave, false);
        }
    }
    void dropEvent(QDropEvent* event) override {
        event->acceptProposedAction();
        if (dragEvents) {
            dragEvents->parentDrop();
        }
    }

 private:
    void over(QDragMoveEvent* event, ParentDragEvents::State state) {
        if (!dragEvents || !event->mimeData()->hasFormat(QLatin1String(kProductDragFormat))) {
            return;
        }
        event->acceptProposedAction();
        const QRect inside = list_->geometry().adjusted(1, 1, -1, -1);
        dragEvents->parentDragOver(state, inside.contains(event->position().toPoint()));
    }

    platform::DataControl data_;
    platform::ListView* list_ = nullptr;
    QLineEdit* entry_ = nullptr;
};

// A shop with a small catalogue of its own, one service, and the catalogue window over its requisition.
//
//   groups         Monitori, Procesori, Prazna
//   manufacturers  Adler, Bergen, Celta
//   products       Monitori:  17 inca (Adler, 100 euro, 5 pieces, "Kom."), 19 inca (Adler, 200.50, 0),
//                             21 inca (Bergen, 300, 2)
//                  Procesori: Brzi (Adler, 150, 3, with a note), Spori (Celta, 50, -1)
//
// The delivered catalogue is taken out first.
class CatalogueWindow : public DeliveredFixture {
 protected:
    void SetUp() override {
        DeliveredFixture::SetUp();
        KursKupovni = 80.0F;
        CeneDinarske = false;
    }
    void TearDown() override {
        window_.reset();
        parent_.reset();
        DeliveredFixture::TearDown();
    }

    // Call it first where the test has a second process: only after the fork.
    void fillShop() {
        for (const char* table : {"Oprema", "Grupe", "Proizvodjaci"}) {
            openDatabase().Execute(std::string("DELETE * FROM ") + table);
        }
        monitors = addGroup("Monitori");
        processors = addGroup("Procesori");
        empty = addGroup("Prazna");
        adler = addManufacturer("Adler");
        bergen = addManufacturer("Bergen");
        celta = addManufacturer("Celta");
        m17 = addProduct(monitors, adler, "17 inca", 100.0F, 5.0F);
        m19 = addProduct(monitors, adler, "19 inca", 200.5F, 0.0F);
        m21 = addProduct(monitors, bergen, "21 inca", 300.0F, 2.0F);
        fast = addProduct(processors, adler, "Brzi", 150.0F, 3.0F, "uz ventilator");
        slow = addProduct(processors, celta, "Spori", 50.0F, -1.0F);
        service = addService(addComputer(addClient()));
    }
    int addGroup(const std::string& name) { return addRow("Grupe", "ID", {{"Grupa", name}}); }
    int addManufacturer(const std::string& name) {
        return addRow("Proizvodjaci", "ID", {{"Proizvodjac", name}});
    }
    int addProduct(int group, int manufacturer, const std::string& name, float price, float stock,
                   const std::string& note = {}) {
        return addRow("Oprema", "ID",
                      {{"IDGrupe", group},
                       {"IDProizvodjaca", manufacturer},
                       {"Naziv", name},
                       {"Opis", "opis " + name},
                       {"Napomena", note},
                       {"JM", "Kom."},
                       {"Stanje", stock},
                       {"Cena", price}});
    }

    RequisitionStandIn& parent() {
        if (!parent_) {
            parent_ = std::make_unique<RequisitionStandIn>();
            parent_->serviceId = service;
            parent_->show();
            parent_->fill();
        }
        return *parent_;
    }
    frmKonfiguratorEx& window() {
        if (!window_) {
            window_ = std::make_unique<frmKonfiguratorEx>(&parent());
            window_->setParentForm(&parent());
        }
        return *window_;
    }

    // Shows the catalogue; `work` happens in it, and then it is closed.
    void show(const std::function<void()>& work) {
        bool done = false;
        QTimer::singleShot(0, &window(), [&] {
            EXPECT_TRUE(waitUntilActive(window()));
            work();
            done = true;
            if (window().isVisible()) {
                window().reject();
            }
        });
        window().Display();
        EXPECT_TRUE(done);
    }
    // The window's end, as its caller makes it.
    void unload() { window_.reset(); }

    platform::ListBox& groups() { return *window().List1[frmKonfiguratorEx::kGroups]; }
    platform::ListBox& manufacturers() { return *window().List1[frmKonfiguratorEx::kManufacturers]; }
    platform::ListView& products() { return *window().ListView1; }
    QLineEdit* search(int pane) { return window().Text1[static_cast<size_t>(pane)]; }
    QString detail() { return window().Text1_2->toPlainText(); }
    QString statusText() { return window().StatusBar1->panelText(QStringLiteral("tekst")); }
    template <typename Control = QWidget>
    Control* control(const char* name) {
        auto* found = window().findChild<Control*>(QLatin1String(name));
        EXPECT_NE(found, nullptr) << name;
        return found;
    }

    static void clickRow(platform::ListBox& list, int row, Qt::MouseButton button = Qt::LeftButton) {
        list.setTopIndex(row);
        QTest::mouseClick(list.viewport(), button, {}, list.visualRect(list.model()->index(row, 0)).center());
    }
    void clickRow(platform::ListBox& list, const QString& text) {
        const int row = list.findString(text);
        ASSERT_GE(row, 0) << text.toStdString();
        clickRow(list, row);
    }
    QPoint productAt(int row) {
        return products().visualRect(products().model()->index(row - 1, 0)).center();
    }
    void clickProduct(int row) {
        QTest::mouseClick(products().viewport(), Qt::LeftButton, {}, productAt(row));
    }
    static QString keyOf(int product) { return QStringLiteral("K%1").arg(product); }
    // Names of the listed products, in the list's order.
    QString productNames() {
        QStringList names;
        for (int row = 1; row <= products().count(); ++row) {
            names.append(cellOf(products().item(row), ProductColumn::Name));
        }
        return names.join(QLatin1Char(','));
    }
    static QString texts(const platform::ListBox& list) {
        QStringList all;
        for (int row = 0; row < list.count(); ++row) {
            all.append(list.text(row));
        }
        return all.join(QLatin1Char(','));
    }
    void press(QWidget* widget, Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        widget->setFocus();
        QTest::keyClick(widget, key, modifiers);
    }
    // Of those that come and go, the ones that are on.
    QString toolbarOn() {
        QStringList on;
        for (const char* key : {"new", "edit", "delete", "delall", "print", "refresh", "unsort", "help"}) {
            const QAction* button = window().toolbarButton(QLatin1String(key));
            if (button && button->isEnabled()) {
                on.append(QLatin1String(key));
            }
        }
        return on.join(QLatin1Char(','));
    }
    float stockOf(int product) { return valueOf("Oprema", "ID", product, "Stanje").asSingle(); }

    int monitors = 0, processors = 0, empty = 0;
    int adler = 0, bergen = 0, celta = 0;
    int m17 = 0, m19 = 0, m21 = 0, fast = 0, slow = 0;
    int service = 0;

 private:
    std::unique_ptr<RequisitionStandIn> parent_;
    std::unique_ptr<frmKonfiguratorEx> window_;
};
