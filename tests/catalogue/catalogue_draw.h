#pragma once

#include <QCheckBox>

#include "catalogue/catalogue_commands.h"

// Somebody who draws products for the service: Enter or a drop, and then the quantity window.
class CatalogueDraw : public CatalogueCommands {
 protected:
    using CatalogueCommands::press;
    using CatalogueWindow::press;
    using Entry = std::function<void(frmInputBox&)>;

    // What is done in the quantity window each time that it is shown, one entry a showing.
    void atQuantity(const QList<Entry>& entries, const std::function<void()>& command) {
        QList<Entry> left = entries;
        bool busy = false;
        QTimer watch;
        QObject::connect(&watch, &QTimer::timeout, [&] {
            auto* input = qobject_cast<frmInputBox*>(QApplication::activeModalWidget());
            if (busy || input == nullptr) {
                return;
            }
            busy = true;
            EXPECT_TRUE(waitUntilActive(*input));
            if (left.isEmpty()) {
                ADD_FAILURE() << "the quantity was asked once more: " << boxes.lastText().toStdString();
            } else {
                left.takeFirst()(*input);
            }
            if (input->isVisible()) {
                input->reject();
            }
            busy = false;
        });
        watch.start(1);
        command();
        EXPECT_TRUE(left.isEmpty()) << left.size() << " showings did not come";
    }
    static Entry entering(const QString& quantity, const QString& serial = {}, bool append = false) {
        return [=](frmInputBox& input) {
            input.findChild<QLineEdit*>("Text1(0)")->setText(quantity);
            input.findChild<QLineEdit*>("Text1(1)")->setText(serial);
            input.findChild<QCheckBox*>("Check1(1)")->setChecked(append);
            QTest::mouseClick(input.findChild<QPushButton*>("Command1(0)"), Qt::LeftButton);
        };
    }
    // Before the quantity is confirmed a colleague does what he has to do.
    static Entry meanwhile(SecondProcess& other, const Entry& entry) {
        return [&other, entry](frmInputBox& input) {
            act(other);
            entry(input);
        };
    }
    static Entry cancelling() {
        return [](frmInputBox& input) {
            QTest::mouseClick(input.findChild<QPushButton*>("Command1(1)"), Qt::LeftButton);
        };
    }
    // Enter on a product of the list.
    void draw(int product, const QList<Entry>& entries) {
        ASSERT_TRUE(products().hasItem(keyOf(product)));
        products().select(keyOf(product));
        atQuantity(entries, [this] { press(&products(), Qt::Key_Return); });
    }
    // While a box with that text is up, and once only.
    void whenAsked(const QString& text, const std::function<void()>& deed) {
        boxes.onBox = [=, this, done = false](const platform::Box& box) mutable {
            if (!done && box.text == text) {
                done = true;
                deed();
            }
        };
    }
    dao::Value held(int product, const char* field) {
        return valueOf("InvoiceData", "OpremaID", product, field);
    }
    std::string serialOf(int product) { return held(product, "SN").asText(); }
    float quantityOf(int product) { return held(product, "Stanje").asSingle(); }
    int rowsOf(int product) { return drawn("OpremaID=" + std::to_string(product)); }

    void expectQuestion(int at, const QString& text, platform::BoxIcon icon,
                        platform::BoxButtons buttons = platform::BoxButtons::Ok) {
        ASSERT_GT(boxes.asked.size(), at) << text.toStdString();
        EXPECT_EQ(boxes.asked[at].text, text);
        EXPECT_EQ(boxes.asked[at].icon, icon);
        EXPECT_EQ(boxes.asked[at].buttons, buttons);
        EXPECT_EQ(boxes.asked[at].title, GetResString(1));
    }
    void expectNothingDrawn() {
        EXPECT_EQ(countRows("SELECT * FROM InvoiceData"), 0);
        EXPECT_EQ(stockOf(m17), 5.0F);
    }
};
