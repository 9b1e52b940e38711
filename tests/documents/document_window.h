#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMap>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <functional>
#include <memory>

#include "documents/ActiveReport2.h"
#include "documents/frmPrintInvoiceEx.h"
#include "platform/controls/date_field.h"
#include "platform/controls/link_label.h"
#include "support/fixture.h"

// What the main window would have selected.
struct SelectedService : ServiceView {
    QString tabCaption(int) const override { return {}; }
    std::optional<qint32> serviceId() const override { return service; }
    QString serviceStarted() const override { return {}; }
    QString serviceDiscount() const override { return discount; }
    QString serviceTax() const override { return tax; }
    QString serviceDescription() const override { return {}; }
    QString clientField(const QString& field) const override { return client.value(field); }
    bool isFirm() const override { return firm; }

    std::optional<qint32> service;
    QString discount = "0", tax = "18";
    bool firm = false;
    QMap<QString, QString> client{
        {"Surname", "Peric"}, {"GivenName", "Pera"}, {"FirmName", "Racunar d.o.o."}, {"Street", "Lipova 1"},
        {"City", "Beograd"},  {"ZIP", "11000"},      {"PIDNo", "100200300"}};
};

// The document window for one service of a fresh shop. What would be shown in the preview is laid out and
// kept.
struct DocumentWindow : DeliveredFixture {
    void SetUp() override {
        DeliveredFixture::SetUp();
        service = addService(addComputer(addClient()));
        view.service = service;
        closeDatabases();
        KursKupovni = 117.5F;
        CeneDinarske = true;
    }
    void TearDown() override {
        window_.reset();
        DeliveredFixture::TearDown();
    }

    frmPrintInvoiceEx& window() {
        if (!window_) {
            window_ = std::make_unique<frmPrintInvoiceEx>(view);
            window_->onShow = [this](ActiveReport2& report) {
                documents.push_back(report.run().value());
                titles += report.title;
                footers += report.Sections("PageFooter").Controls("txtFooter").Text;
            };
        }
        return *window_;
    }
    // Shows the window; `work` happens in it.
    void open(int type, const std::function<void()>& work) {
        window().OpenType = type;
        QTimer::singleShot(0, &window(), [&] {
            ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
            work();
            window().reject();
        });
        window().Display();
    }
    void proForma(const std::function<void()>& work) { open(frmPrintInvoiceEx::ProForma, work); }
    void invoice(const std::function<void()>& work) { open(frmPrintInvoiceEx::Invoice, work); }
    void closeWindow() { window_.reset(); }

    template <typename Control>
    Control* control(const QString& name) {
        auto* found = window().findChild<Control*>(name);
        EXPECT_NE(found, nullptr) << name.toStdString();
        return found;
    }
    QLineEdit* text1(int i) { return control<QLineEdit>(QString("Text1(%1)").arg(i)); }
    QLineEdit* text2(int i) { return control<QLineEdit>(QString("Text2(%1)").arg(i)); }
    QCheckBox* check(int i) { return control<QCheckBox>(QString("Check1(%1)").arg(i)); }
    QComboBox* combo(int i) { return control<QComboBox>(QString("Combo1(%1)").arg(i)); }
    // With the keys, from the first entry down.
    void choose(int box, int index) {
        combo(box)->setFocus();
        QTest::keyClick(combo(box), Qt::Key_Home);
        for (int i = 0; i < index; ++i) {
            QTest::keyClick(combo(box), Qt::Key_Down);
        }
        EXPECT_EQ(combo(box)->currentIndex(), index);
    }
    QPushButton* command(int i) { return control<QPushButton>(QString("Command1(%1)").arg(i)); }
    QTabWidget* tabs() { return control<QTabWidget>("TabStrip1"); }
    void turnTo(int tab) {
        QTabBar* bar = tabs()->tabBar();
        QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(tab).center());
        EXPECT_EQ(tabs()->currentIndex(), tab);
    }
    QString sample() { return control<QLabel>("Label3(1)")->text(); }
    QColor labelColor(int i) {
        return control<QLabel>(QString("Label1(%1)").arg(i))->palette().color(QPalette::WindowText);
    }
    bool warned() { return tabs()->widget(1)->property("image") == "warning"; }
    void print() { QTest::mouseClick(command(0), Qt::LeftButton); }
    void defaults() { QTest::mouseClick(control<platform::LinkLabel>("Label2"), Qt::LeftButton); }
    static QString year() { return QString::number(QDate::currentDate().year()); }

    static const settings::Setting& own(const char* key) { return settings::find("frmPrintInvoiceEx", key); }
    static const settings::Setting& firm(const char* key) { return settings::find("Settings", key); }
    QString documentText() { return documents.empty() ? QString() : documents.back().textOfPage(1); }

    void draw(const std::string& name, float quantity, float price, const std::string& serial = {}) {
        addRow("InvoiceData", "",
               {{"ServiceID", service},
                {"OpremaID", ++product_},
                {"Grupa", "Memorija"},
                {"Proizvodjac", "Kingston"},
                {"Naziv", name},
                {"SN", serial},
                {"JM", "Kom."},
                {"Stanje", quantity},
                {"Cena", price}});
        closeDatabases();
    }

    SelectedService view;
    int service = 0;
    std::vector<report::Document> documents;
    QStringList titles, footers;

 private:
    std::unique_ptr<frmPrintInvoiceEx> window_;
    int product_ = 0;
};
