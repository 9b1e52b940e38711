#pragma once

#include <QAction>
#include <QApplication>
#include <QHeaderView>
#include <QLabel>
#include <QMouseEvent>
#include <QTest>
#include <QTimer>
#include <QToolBar>
#include <functional>
#include <memory>

#include "common/list_cells.h"
#include "documents/frmInvoiceEx.h"
#include "documents/requisition_columns.h"
#include "platform/system/launch.h"
#include "support/fixture.h"
#include "support/modal.h"
#include "support/second_process.h"

// What the requisition asks the main window for.
struct ServiceOnShow : ServiceView {
    QString client = QStringLiteral("Peric Pera"), computer = QStringLiteral("PC");
    QString started = QStringLiteral("3/3/2026"), description = QStringLiteral("ne radi");
    QString tabCaption(int tab) const override { return tab == 1 ? client : computer; }
    std::optional<qint32> serviceId() const override { return 1; }
    QString serviceStarted() const override { return started; }
    QString serviceDiscount() const override { return {}; }
    QString serviceTax() const override { return {}; }
    QString serviceDescription() const override { return description; }
    QString clientField(const QString&) const override { return {}; }
    bool isFirm() const override { return false; }
};

// The requisition of a service on the shop's first morning. Prices in euro unless a test turns dinars on.
class RequisitionWindow : public DeliveredFixture {
 protected:
    void SetUp() override {
        DeliveredFixture::SetUp();
        CeneDinarske = false;
        AskBeforeDelete = false;
        platform::setShellExecuteHook([this](const QString& target) {
            launched.append(target);
            return 42;
        });
        keep("LVWColumnWidths", "1440;1440;1440;1440;1440;1440;1440;1440");
        service = addService(addComputer(addClient()));
    }
    void TearDown() override {
        window_.reset();
        platform::setShellExecuteHook({});
        CeneDinarske = true;
        DeliveredFixture::TearDown();
    }

    static void keep(const char* key, const QString& value) {
        settings::setText(settings::find("frmInvoiceEx", QLatin1String(key)), value);
    }
    static QString kept(const char* key) {
        return settings::text(settings::find("frmInvoiceEx", QLatin1String(key)));
    }

    // A product of the catalogue. The number that the engine gave it.
    int addProduct(const QString& name, float stock) {
        return addRow("Oprema", "ID",
                      {{"Naziv", name.toStdString()},
                       {"Opis", ""},
                       {"Stanje", stock},
                       {"Cena", 1.0F},
                       {"IDGrupe", anyNumber("Grupe")},
                       {"IDProizvodjaca", anyNumber("Proizvodjaci")}});
    }
    int anyNumber(const std::string& table) {
        dao::Recordset rows = openDatabase().OpenRecordset(table);
        const int number = rows["ID"].asLong();
        rows.Close();
        return number;
    }
    // What the catalogue writes when a product is drawn. Price in euro.
    void draw(int product, const QString& manufacturer, const QString& name, float price, float quantity,
              const FieldValues& more = {}) {
        FieldValues row{{"ServiceID", service},
                        {"OpremaID", product},
                        {"Proizvodjac", manufacturer.toStdString()},
                        {"Grupa", "Diskovi"},
                        {"Naziv", name.toStdString()},
                        {"Opis", "opis"},
                        {"SN", "SN1"},
                        {"JM", "Kom."},
                        {"Cena", price},
                        {"Stanje", quantity}};
        row.insert(row.end(), more.begin(), more.end());
        addRow("InvoiceData", "", row);
    }
    float stockOf(int product) { return valueOf("Oprema", "ID", product, "Stanje").asSingle(); }
    int drawn() { return countRows("SELECT * FROM InvoiceData WHERE ServiceID=" + std::to_string(service)); }

    frmInvoiceEx& win() {
        if (!window_) {
            window_ = std::make_unique<frmInvoiceEx>();
            window_->setServiceID(service);
            window_->setServiceView(&view);
        }
        return *window_;
    }
    // Shows the window; `work` happens in it. It is closed afterwards.
    void show(const std::function<void()>& work) {
        QTimer::singleShot(0, &win(), [&] {
            ASSERT_TRUE(waitUntilActive(win()));
            QCoreApplication::processEvents();
            work();
            if (win().isVisible()) {
                win().reject();
            }
        });
        win().Display();
    }
    void unload() { window_.reset(); }
    bool exists() const { return window_ != nullptr; }

    platform::ListView& list() { return *win().ListView1; }
    QStringList keys() {
        QStringList all;
        for (int i = 1; i <= list().count(); ++i) {
            all.append(list().item(i).Key);
        }
        return all;
    }
    // The names of the products, in the order on screen.
    QString names() {
        QStringList all;
        for (int i = 1; i <= list().count(); ++i) {
            if (list().item(i).Key != "total") {
                all.append(cellOf(list().item(i), RequisitionColumn::Name));
            }
        }
        return all.join(',');
    }
    static QString key(int product) { return QStringLiteral("K%1").arg(product); }
    QString cell(const QString& rowKey, RequisitionColumn column) {
        return cellOf(list().item(rowKey), column);
    }
    QString total() { return cell("total", RequisitionColumn::Amount); }
    QString status() { return win().StatusBar1->panelText("tekst"); }
    QString selectedKey() {
        const platform::ListItem* row = list().selectedItem();
        return row ? row->Key : QString();
    }
    bool canUse(const char* button) { return win().toolbarButton(QLatin1String(button))->isEnabled(); }
    QString usable() {
        QStringList all;
        for (const char* button : {"konfig", "delete", "delall", "refresh", "print", "unsort", "help"}) {
            if (canUse(button)) {
                all.append(QLatin1String(button));
            }
        }
        return all.join(' ');
    }
    QWidget* face(const char* button) {
        return win().Toolbar1->widgetForAction(win().toolbarButton(QLatin1String(button)));
    }
    void tool(const char* button) { QTest::mouseClick(face(button), Qt::LeftButton); }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(&list(), key, modifiers);
    }
    void clickHeader(int column) {
        QHeaderView* header = list().header();
        const QPoint place(header->sectionViewportPosition(column - 1) + header->sectionSize(column - 1) / 2,
                           header->height() / 2);
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, place);
    }
    void clickRow(const QString& rowKey) {
        const QModelIndex row = list().model()->index(list().indexOf(rowKey) - 1, 0);
        QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, list().visualRect(row).center());
    }
    static void moveOver(QWidget* widget) {
        const QPointF place = QRectF(widget->rect()).center();
        QMouseEvent move(QEvent::MouseMove, place, widget->mapToGlobal(place), Qt::NoButton, Qt::NoButton,
                         Qt::NoModifier);
        QCoreApplication::sendEvent(widget, &move);
    }
    QString fileText(const QString& name) {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
        return QString::fromUtf8(file.readAll());
    }

    // Another workstation, which runs the statement when it is released. The fixture's own connection is
    // closed for it; nothing may be open in the window yet.
    std::unique_ptr<SecondProcess> otherWorkstation(const std::string& statement) {
        closeDatabases();
        const std::string file = databaseFile().toStdString(), connect = connectText().toStdString();
        return std::make_unique<SecondProcess>([=](const SecondProcess::Side& side) {
            side.untilReleased();
            dao::Database database = dao::DBEngine::OpenDatabase(file, false, false, connect);
            database.Execute(statement);
            database.Close();
            side.ready();
        });
    }
    static void doIts(SecondProcess& other) {
        other.release();
        ASSERT_TRUE(other.waitReady());
    }

    int service = 0;
    ServiceOnShow view;
    QStringList launched;

 private:
    std::unique_ptr<frmInvoiceEx> window_;
};
