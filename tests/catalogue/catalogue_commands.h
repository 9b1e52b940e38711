#pragma once

#include <QApplication>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QToolBar>
#include <functional>
#include <memory>

#include "catalogue/catalogue_window.h"
#include "catalogue/frmKonfigInput.h"
#include "support/modal.h"
#include "support/second_process.h"
#include "support/shop_hold.h"

// The catalogue's commands, with a person at the entry window of a product and a colleague at another
// workstation.
class CatalogueCommands : public CatalogueWindow {
 protected:
    using CatalogueWindow::press;
    using Step = std::function<void(frmKonfigInput&)>;

    void TearDown() override {
        dao::DBEngine::setLockTimeout(10000);
        CatalogueWindow::TearDown();
    }

    // What is done in the entry window each time that it is shown, one step a showing. More showings than
    // steps, or steps that nobody came for, are mistakes.
    void atInput(const QList<Step>& steps, const std::function<void()>& command) {
        QList<Step> left = steps;
        bool busy = false;
        QTimer watch;
        QObject::connect(&watch, &QTimer::timeout, [&] {
            auto* input = qobject_cast<frmKonfigInput*>(QApplication::activeModalWidget());
            if (busy || input == nullptr) {
                return;
            }
            busy = true;
            EXPECT_TRUE(waitUntilActive(*input));
            if (left.isEmpty()) {
                ADD_FAILURE() << "the entry window came once more: " << boxes.lastText().toStdString();
                input->reject();
            } else {
                left.takeFirst()(*input);
            }
            if (input->isVisible()) {
                ADD_FAILURE() << "the entry window is still open: " << boxes.lastText().toStdString();
                input->reject();
            }
            busy = false;
        });
        watch.start(1);
        command();
        EXPECT_TRUE(left.isEmpty()) << left.size() << " showings did not come";
    }

    static QString field(frmKonfigInput& input, int index) {
        return index == 4 ? input.findChild<QPlainTextEdit*>("Text1(4)")->toPlainText()
                          : line(input, index)->text();
    }
    static QLineEdit* line(frmKonfigInput& input, int index) {
        return input.findChild<QLineEdit*>(QStringLiteral("Text1(%1)").arg(index));
    }
    static void type(frmKonfigInput& input, int index, const QString& text) {
        line(input, index)->setFocus();
        line(input, index)->selectAll();
        QTest::keyClicks(line(input, index), text);
    }
    static void press(frmKonfigInput& input, int button) {
        QTest::mouseClick(input.findChild<QPushButton*>(QStringLiteral("Command1(%1)").arg(button)),
                          Qt::LeftButton);
    }
    // Types a name and presses a button: 0 store and go on, 1 store, 2 cancel.
    static Step named(const QString& name, int button) {
        return [name, button](frmKonfigInput& input) {
            type(input, 0, name);
            press(input, button);
        };
    }
    static Step pressing(int button) {
        return [button](frmKonfigInput& input) { press(input, button); };
    }

    // The catalogue, with the first group and the first manufacturer: 17 inca and 19 inca.
    void withMonitors(const std::function<void()>& work) {
        show([&] {
            clickRow(groups(), "Monitori");
            clickRow(manufacturers(), "Adler");
            work();
        });
    }

    std::string nameOf(int product) {
        const dao::Value name = valueOf("Oprema", "ID", product, "Naziv");
        return name.isNull() ? std::string() : name.asText();
    }
    void draw(int product, const std::string& name, const std::string& description,
              const std::string& group = "Monitori", const std::string& manufacturer = "Adler") {
        addRow("InvoiceData", "",
               {{"ServiceID", service},
                {"OpremaID", product},
                {"Grupa", group},
                {"Proizvodjac", manufacturer},
                {"Naziv", name},
                {"Opis", description},
                {"SN", "/"},
                {"JM", "Kom."},
                {"Stanje", 1.0F},
                {"Cena", 90.0F}});
    }
    int drawn(const std::string& condition) {
        return countRows("SELECT * FROM InvoiceData WHERE " + condition);
    }

    // A colleague who, when told, does something to the file. Made before this process opens it.
    std::unique_ptr<SecondProcess> colleague(const std::string& statement) {
        return std::make_unique<SecondProcess>([this, statement](const SecondProcess::Side& side) {
            side.untilReleased();
            dao::Database file = open();
            file.Execute(statement);
            file.Close();
            side.ready();
        });
    }
    // One who begins to write and does not end.
    std::unique_ptr<SecondProcess> slowColleague() { return holding(tests::ShopHold::Against::Writers); }
    // One who is just writing out what he has: until he is let go, nobody reads any of it. Released once to
    // begin and once to end.
    std::unique_ptr<SecondProcess> committingColleague() {
        return holding(tests::ShopHold::Against::Readers);
    }
    static void act(SecondProcess& other) {
        other.release();
        ASSERT_TRUE(other.waitReady());
    }

    // Does something in the middle of what the program is doing: when the first event of a type comes to a
    // control. A deed that gives false is done again with the next.
    struct AtEvent : QObject {
        AtEvent(QEvent::Type event, std::function<bool()> what) : type(event), deed(std::move(what)) {}
        bool eventFilter(QObject*, QEvent* event) override {
            if (event->type() == type && !done) {
                done = deed();
            }
            return false;
        }
        QEvent::Type type;
        std::function<bool()> deed;
        bool done = false;
    };

    // `deed` happens when the list that `command` fills has its records and has read none of them yet: the
    // caption gives its place to the progress bar then.
    void atFillStart(const std::function<void()>& deed, const std::function<void()>& command) {
        AtEvent watch(QEvent::Hide, [&] {
            deed();
            return true;
        });
        QWidget* caption = control("Picture1(5)");
        caption->installEventFilter(&watch);
        command();
        caption->removeEventFilter(&watch);
        EXPECT_TRUE(watch.done) << "no list was filled";
    }
    void clickToolbar(const char* key) {
        QTest::mouseClick(window().Toolbar1->widgetForAction(window().toolbarButton(QLatin1String(key))),
                          Qt::LeftButton);
    }

    // A box with this text, an empty line, the engine's number, and this behind it.
    static void expectError(const platform::Box& told, const QString& text, int number,
                            const QString& behind) {
        EXPECT_TRUE(told.text.startsWith(text + QStringLiteral("\n\n[%1] ").arg(number)))
            << told.text.toStdString();
        EXPECT_TRUE(told.text.contains(behind)) << told.text.toStdString();
        EXPECT_EQ(told.icon, platform::BoxIcon::Exclamation);
        EXPECT_EQ(told.title, GetResString(1));
    }
    static QString occured(const char* procedure) {
        return QStringLiteral("\nOccured in procedure %1 of Form frmKonfiguratorEx")
            .arg(QLatin1String(procedure));
    }
    void expectBox(const QString& text, platform::BoxIcon icon = platform::BoxIcon::Exclamation) {
        ASSERT_FALSE(boxes.asked.isEmpty());
        EXPECT_EQ(boxes.lastText(), text);
        EXPECT_EQ(boxes.asked.last().icon, icon);
        EXPECT_EQ(boxes.asked.last().title, GetResString(1));
    }

 private:
    std::unique_ptr<SecondProcess> holding(tests::ShopHold::Against against) {
        return std::make_unique<SecondProcess>([this, against](const SecondProcess::Side& side) {
            side.untilReleased();
            const tests::ShopHold hold(databaseFile().toStdString(), against);
            side.ready();
            side.untilReleased();
        });
    }
    dao::Database open() const {
        return dao::DBEngine::OpenDatabase(databaseFile().toStdString(), false, false,
                                           connectText().toStdString());
    }
};
