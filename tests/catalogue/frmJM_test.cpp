#include "catalogue/frmJM.h"

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <functional>
#include <memory>
#include <utility>

#include "platform/controls/data_control.h"
#include "platform/controls/list_box.h"
#include "support/by_hand.h"
#include "support/fixture.h"
#include "support/second_process.h"
#include "support/shop_hold.h"

namespace {

const QStringList kDelivered = {"Kom.", "m", "Pak.", "Set", "Lic.", "Sat", "kg"};
const QStringList kAscending = {"kg", "Kom.", "Lic.", "m", "Pak.", "Sat", "Set"};
const QString kDuplicate = "Naziv vec postoji u bazi podataka. Pokusajte sa novim nazivom.";

using platform::BoxAnswer;

class Units : public DeliveredFixture {
 protected:
    void TearDown() override {
        dao::DBEngine::setLockTimeout(10000);
        window_.reset();
        DeliveredFixture::TearDown();
    }
    frmJM& win() {
        if (!window_) {
            window_ = std::make_unique<frmJM>();
        }
        return *window_;
    }
    void unload() { window_.reset(); }

    void show(const std::function<void()>& work) {
        openDatabase();
        showAsItIs(work);
    }
    void showAsItIs(const std::function<void()>& work) {
        QTimer::singleShot(0, &win(), [&] {
            ASSERT_TRUE(QTest::qWaitForWindowActive(&win()));
            work();
            click(5);
        });
        win().Display();
    }
    template <typename Control>
    Control* control(const QString& name) {
        auto* found = win().findChild<Control*>(name);
        EXPECT_NE(found, nullptr) << name.toStdString();
        return found;
    }
    platform::ListBox* list() { return control<platform::ListBox>("List1"); }
    QLineEdit* entry() { return control<QLineEdit>("Text1"); }
    QPushButton* button(int index) { return control<QPushButton>(QStringLiteral("Command1(%1)").arg(index)); }
    void click(int index) { QTest::mouseClick(button(index), Qt::LeftButton); }
    void select(int row) {
        list()->setTopIndex(0);
        QTest::mouseClick(list()->viewport(), Qt::LeftButton, {},
                          list()->visualRect(list()->model()->index(row, 0)).center());
    }
    QStringList rows() {
        QStringList all;
        for (int i = 0; i < list()->count(); ++i) {
            all.append(list()->text(i));
        }
        return all;
    }
    QString enabled() {
        QString digits;
        for (int i = 0; i < 6; ++i) {
            digits += button(i)->isEnabled() ? '1' : '0';
        }
        return digits;
    }
    void add(const QString& name) {
        entry()->setText(name);
        click(0);
    }
    void change(int row, const QString& name) {
        select(row);
        boxes.inputs.append(name);
        click(1);
    }
    // Brings the list's menu up and, with a key, chooses from it. Gives the keys of the enabled lines.
    QStringList menu(const QString& key = {}) {
        by_hand::rightClick(list(), QPoint(5, list()->viewport()->height() - 5));  // below the rows
        auto* shown = win().findChild<QMenu*>("mnu_list");
        QStringList keys;
        if (shown == nullptr || !shown->isVisible()) {
            ADD_FAILURE() << "no menu";
            return keys;
        }
        QAction* chosen = nullptr;
        for (QAction* action : shown->actions()) {
            if (action->isEnabled() && !action->isSeparator()) {
                keys.append(action->objectName());
            }
            if (!key.isEmpty() && action->objectName() == key) {
                chosen = action;
            }
        }
        if (chosen != nullptr) {
            by_hand::clickItem(shown, chosen);
        } else {
            by_hand::closeMenus();
        }
        return keys;
    }
    QStringList units() {
        QStringList all;
        dao::Recordset table = openDatabase().OpenRecordset("SELECT * FROM JM", dao::dbOpenSnapshot);
        for (; !table.EOF(); table.MoveNext()) {
            all.append(QString::fromStdString(table["Naziv"].asText()));
        }
        table.Close();
        return all;
    }
    // A colleague who, when told, does something to the file. Made before this process opens it.
    std::unique_ptr<SecondProcess> colleague(const std::string& statement) {
        return std::make_unique<SecondProcess>([this, statement](const SecondProcess::Side& side) {
            side.untilReleased();
            dao::Database file = dao::DBEngine::OpenDatabase(databaseFile().toStdString(), false, false,
                                                             connectText().toStdString());
            file.Execute(statement);
            file.Close();
            side.ready();
        });
    }
    // One who begins to write and does not end.
    std::unique_ptr<SecondProcess> slowColleague() {
        return std::make_unique<SecondProcess>([this](const SecondProcess::Side& side) {
            side.untilReleased();
            const tests::ShopHold hold(databaseFile().toStdString(), tests::ShopHold::Against::Writers);
            side.ready();
            side.untilReleased();
        });
    }
    static void act(SecondProcess& other) {
        other.release();
        ASSERT_TRUE(other.waitReady());
    }
    // Told in an exclamation box under this text and an empty line, with the engine's number.
    void expectEngineBox(const QString& text, int number) {
        ASSERT_FALSE(boxes.asked.isEmpty());
        EXPECT_TRUE(boxes.lastText().startsWith(text + QStringLiteral("\n\n[%1] ").arg(number)))
            << boxes.lastText().toStdString();
        EXPECT_EQ(boxes.asked.last().icon, platform::BoxIcon::Exclamation);
    }

 private:
    std::unique_ptr<frmJM> window_;
};

TEST_F(Units, ShowsTheTableInItsOrder) {
    show([&] {
        EXPECT_EQ(win().windowTitle(), "Jedinica mere");
        EXPECT_EQ(rows(), kDelivered);
        EXPECT_EQ(list()->itemData(0), valueOf("JM", "AID", list()->itemData(0), "AID").asLong());
        EXPECT_EQ(list()->curSel(), -1);
        EXPECT_EQ(enabled(), "000111");
        EXPECT_EQ(button(0)->text(), "Dodaj");
        EXPECT_EQ(button(1)->text(), "&Promeni...");
        EXPECT_EQ(button(2)->text(), "&Izbrisi");
        EXPECT_EQ(button(3)->text(), "Izbrisi &Sve");
        EXPECT_EQ(button(4)->text(), "&Azuriraj");
    });
    EXPECT_FALSE(win().isVisible());
    EXPECT_TRUE(boxes.asked.isEmpty());
}

// Nobody in this process knows the file's password.
class FileOfUnits : public Units {};

TEST_F(FileOfUnits, ListThatCannotBeReadIsTold) {
    showAsItIs([&] { EXPECT_EQ(enabled(), "000011"); });
    ASSERT_EQ(boxes.asked.size(), 1);
    EXPECT_TRUE(boxes.lastText().startsWith(
        "Neocekivana greska prilikom popunjavanja liste jedinica mera:\n\n[3031] "))
        << boxes.lastText().toStdString();
    EXPECT_TRUE(boxes.lastText().contains("\nLinija koda: "));
    EXPECT_TRUE(boxes.lastText().endsWith("; frmJM -> FillListBox()"));
    EXPECT_EQ(boxes.asked.last().icon, platform::BoxIcon::Exclamation);
    EXPECT_EQ(boxes.asked.last().title, GetResString(1));
}

TEST_F(Units, ButtonsFollowTheSelectionAndTheEntry) {
    show([&] {
        select(2);
        EXPECT_EQ(enabled(), "011111");
        entry()->setText("  ");
        EXPECT_EQ(enabled(), "011111");
        entry()->setText("x");
        EXPECT_EQ(enabled(), "111111");
    });
}

TEST_F(Units, EntryStopsAt25Characters) {
    show([&] {
        QTest::keyClicks(entry(), QString(26, QLatin1Char('a')));
        EXPECT_EQ(entry()->text(), QString(25, QLatin1Char('a')));
    });
}

TEST_F(Units, NewUnitGoesToTheEndAndIsSelected) {
    show([&] {
        win().Sort(frmJM::Ascending, false);
        add("  Cas ");
        EXPECT_EQ(rows(), kAscending + QStringList{"Cas"}) << "sorted only at the next refresh";
        EXPECT_EQ(list()->selectedText(), "Cas");
        EXPECT_EQ(valueOf("JM", "AID", list()->selectedData(), "Naziv").asText(), "Cas");
        EXPECT_EQ(entry()->text(), "");
        EXPECT_EQ(enabled(), "011111");
        click(4);
        EXPECT_EQ(rows(), (QStringList{"Cas"} + kAscending));
        EXPECT_EQ(list()->selectedText(), "Cas");
    });
    EXPECT_EQ(units(), kDelivered + QStringList{"Cas"});
    EXPECT_TRUE(boxes.asked.isEmpty());
}

TEST_F(Units, UnitThatIsThereIsNotAddedAgain) {
    show([&] {
        add("KOM.");
        EXPECT_EQ(boxes.lastText(), kDuplicate);
        EXPECT_EQ(boxes.asked.last().icon, platform::BoxIcon::Exclamation);
        EXPECT_EQ(entry()->text(), "");
    });
    EXPECT_EQ(units(), kDelivered);
}

// A double quote breaks the search for the name, and what cannot be searched for has not been found.
TEST_F(Units, NameWithADoubleQuoteIsAdded) {
    show([&] {
        add("3\" cev");
        add("m");
        EXPECT_EQ(boxes.lastText(), kDuplicate);
        add("2\" cev");
        add("Tona");
        EXPECT_EQ(boxes.asked.size(), 1);
    });
    EXPECT_EQ(units(), (kDelivered + QStringList{"3\" cev", "2\" cev", "Tona"}));
}

TEST_F(Units, UnitTakesANameWithADoubleQuote) {
    show([&] {
        change(1, "1\" cev");
        EXPECT_EQ(list()->selectedText(), "1\" cev");
        EXPECT_EQ(boxes.asked.size(), 1) << "only the new name: " << boxes.lastText().toStdString();
    });
    EXPECT_EQ(units().at(1), "1\" cev");
}

TEST_F(Units, NameWithASingleQuoteIsAdded) {
    show([&] { add("O'Cas"); });
    EXPECT_EQ(units().last(), "O'Cas");
    EXPECT_TRUE(boxes.asked.isEmpty());
}

TEST_F(Units, LockedFileIsToldOnEveryCommand) {
    const auto other = slowColleague();
    show([&] {
        act(*other);
        dao::DBEngine::setLockTimeout(100);
        add("Cas");
        expectEngineBox("Neocekivana greska prilikom dodavanja jedinice mere u bazu podataka:", 3260);
        EXPECT_EQ(rows(), kDelivered);
        change(1, "metar");
        expectEngineBox("Neocekivana greska prilikom promene jedinice mere u bazi podataka:", 3260);
        EXPECT_EQ(rows(), kDelivered);
        select(1);
        boxes.answers = {platform::BoxAnswer::Yes};
        click(2);
        expectEngineBox("Neocekivana greska prilikom brisanja jedinice mere u bazi podataka:", 3260);
        EXPECT_EQ(rows(), kDelivered);
        boxes.answers = {platform::BoxAnswer::Yes};
        click(3);
        expectEngineBox("Neocekivana greska prilikom brisanja svih jedinica mera iz baze podataka:", 3260);
        EXPECT_EQ(rows(), kDelivered);
        other->release();
        EXPECT_EQ(other->wait(), 0);
        dao::DBEngine::setLockTimeout(10000);
        add("Cas");
        EXPECT_EQ(list()->selectedText(), "Cas") << "nothing of the failed ones stands in the way";
    });
    EXPECT_EQ(units(), kDelivered + QStringList{"Cas"});
}

TEST_F(Units, RenamedUnitStaysWhereItIs) {
    show([&] {
        boxes.inputs = {QString(" metar ")};
        select(1);
        click(1);
        EXPECT_EQ(boxes.lastText(), "Promenite naziv jedinice mere:");
        EXPECT_EQ(boxes.asked.last().title, "Jedinica mere");
        EXPECT_EQ(list()->text(1), "metar");
        EXPECT_EQ(list()->curSel(), 1);
        EXPECT_EQ(valueOf("JM", "AID", list()->itemData(1), "Naziv").asText(), "metar");
    });
    EXPECT_EQ(boxes.asked.size(), 1);
}

TEST_F(Units, EmptyOrCancelledNameChangesNothing) {
    show([&] {
        select(1);
        boxes.inputs = {QString("  "), std::nullopt};
        click(1);
        click(1);
        EXPECT_EQ(boxes.asked.size(), 2);
    });
    EXPECT_EQ(units(), kDelivered);
}

TEST_F(Units, OwnNameIsRefusedAsADuplicate) {
    show([&] {
        change(1, "m");
        EXPECT_EQ(boxes.lastText(), kDuplicate);
        change(1, "Set");
        EXPECT_EQ(boxes.lastText(), kDuplicate);
    });
    EXPECT_EQ(units(), kDelivered);
}

TEST_F(Units, ChangeHasNoLimitOf25Characters) {
    const QString name(26, QLatin1Char('a'));
    show([&] { change(1, name); });
    EXPECT_EQ(units().at(1), name);
}

TEST_F(Units, NameTooLongForTheTableIsTold) {
    show([&] {
        change(1, QString(101, QLatin1Char('a')));
        expectEngineBox("Neocekivana greska prilikom promene jedinice mere u bazi podataka:", 3163);
        EXPECT_EQ(list()->text(1), "m");
        change(1, "metar");
        EXPECT_EQ(list()->text(1), "metar");
    });
    EXPECT_EQ(units().at(1), "metar");
}

TEST_F(Units, UnitDeletedByAnotherIsNotChanged) {
    const auto other = colleague("DELETE * FROM JM WHERE Naziv='m'");
    show([&] {
        act(*other);
        change(1, "metar");
        EXPECT_EQ(
            boxes.lastText(),
            "Jedinica mere koju pokusavate da promenite nije pronadjena u bazi podataka. Moguce je da je "
            "neko od korisnika vec obrisao. Azurirajte podatke i pokusajte ponovo.");
        EXPECT_EQ(boxes.asked.last().icon, platform::BoxIcon::Exclamation);
    });
    EXPECT_FALSE(units().contains("metar"));
}

TEST_F(Units, DeletingAsksFirst) {
    show([&] {
        select(1);
        boxes.answers = {platform::BoxAnswer::No};
        click(2);
        EXPECT_EQ(boxes.lastText(),
                  "Upravo se spremate da izbrisete jedinicu mere iz baze podataka. Nastavljate li?");
        EXPECT_EQ(boxes.asked.last().icon, platform::BoxIcon::Exclamation);
        EXPECT_EQ(boxes.asked.last().buttons, platform::BoxButtons::YesNo);
        EXPECT_EQ(rows(), kDelivered);
        boxes.answers = {platform::BoxAnswer::Yes};
        click(2);
        EXPECT_EQ(rows(), (QStringList{"Kom.", "Pak.", "Set", "Lic.", "Sat", "kg"}));
        EXPECT_EQ(list()->curSel(), 0);
    });
    EXPECT_FALSE(units().contains("m"));
    EXPECT_EQ(units().size(), 6);
}

TEST_F(Units, NobodyIsAskedWhereTheQuestionIsOff) {
    AskBeforeDelete = false;
    show([&] {
        select(6);
        click(2);
        EXPECT_EQ(rows().size(), 6);
        click(3);
        EXPECT_EQ(rows().size(), 0);
    });
    EXPECT_TRUE(boxes.asked.isEmpty());
    EXPECT_TRUE(units().isEmpty());
}

TEST_F(Units, LastUnitGoesToo) {
    openDatabase().Execute("DELETE * FROM JM WHERE Naziv<>'m'");
    AskBeforeDelete = false;
    show([&] {
        select(0);
        click(2);
        EXPECT_EQ(rows(), QStringList());
        EXPECT_EQ(enabled(), "000011");
    });
    EXPECT_TRUE(boxes.asked.isEmpty());
}

TEST_F(Units, UnitDeletedByAnotherIsNotFound) {
    const auto other = colleague("DELETE * FROM JM WHERE Naziv='m'");
    show([&] {
        act(*other);
        select(1);
        boxes.answers = {platform::BoxAnswer::Yes};
        click(2);
        EXPECT_EQ(
            boxes.lastText(),
            "Jedinica mere koju pokusavate da izbrisete nije pronadjena u bazi podataka. Moguce je da je "
            "neko od korisnika vec obrisao. Azurirajte podatke i pokusajte ponovo.");
        EXPECT_EQ(rows(), kDelivered) << "until the next refresh";
    });
}

TEST_F(Units, DeletingAllAsksFirst) {
    show([&] {
        boxes.answers = {platform::BoxAnswer::No, platform::BoxAnswer::Yes};
        click(3);
        EXPECT_EQ(boxes.lastText(),
                  "Upravo se spremate da izbrisete sve jedinice mere iz baze podataka. Nastavljate li?");
        EXPECT_EQ(rows(), kDelivered);
        click(3);
        EXPECT_EQ(rows(), QStringList());
        EXPECT_EQ(enabled(), "000011");
    });
    EXPECT_TRUE(units().isEmpty());
}

TEST_F(Units, ProductsKeepTheirUnit) {
    dao::Recordset all =
        openDatabase().OpenRecordset("SELECT * FROM Oprema WHERE JM='Kom.'", dao::dbOpenSnapshot);
    const auto before = all.RecordCount();
    all.Close();
    ASSERT_GT(before, 0);
    AskBeforeDelete = false;
    show([&] {
        change(0, "Komad");
        click(3);
    });
    EXPECT_EQ(countRows("SELECT * FROM Oprema WHERE JM='Kom.'"), before);
}

TEST_F(Units, SortsByNameBothWaysAndBack) {
    show([&] {
        select(3);  // "Set" stays selected through all of it
        win().Sort(frmJM::Ascending, false);
        EXPECT_EQ(rows(), kAscending);
        EXPECT_EQ(list()->selectedText(), "Set");
        EXPECT_EQ(list()->toolTip(), "Lista jedinica mera je sortirana po rastucim nazivima.");
        EXPECT_TRUE(list()->hasFocus());

        win().Sort(frmJM::Ascending, false);
        EXPECT_EQ(boxes.lastText(), "Jedinice mere su vec sortirane po rastucim nazivima.");
        EXPECT_EQ(boxes.asked.last().icon, platform::BoxIcon::Information);

        win().Sort(frmJM::Descending, false);
        EXPECT_EQ(rows(), QStringList(kAscending.rbegin(), kAscending.rend()));
        EXPECT_EQ(list()->toolTip(), "Lista jedinica mera je sortirana po opadajucim nazivima.");
        EXPECT_EQ(win().SortedHow, "DESC");

        win().Sort(frmJM::Descending, false);
        EXPECT_EQ(boxes.lastText(), "Jedinice mere su vec sortirane po opadajucim nazivima.");
        EXPECT_EQ(boxes.asked.last().icon, platform::BoxIcon::Information);
        boxes.asked.clear();
        win().Sort(frmJM::Descending, true);
        EXPECT_TRUE(boxes.asked.isEmpty());

        win().Sort(frmJM::Unsorted, false);
        EXPECT_EQ(rows(), kDelivered);
        EXPECT_EQ(list()->toolTip(), "");
        EXPECT_FALSE(win().Sorted);
        EXPECT_EQ(win().SortedHow, "ASC");
    });
}

TEST_F(Units, RefreshAndUnsortByKeyWorkInTheListOnly) {
    show([&] {
        win().Sort(frmJM::Ascending, false);
        openDatabase().Execute("INSERT INTO JM (Naziv) VALUES ('Cas')");
        QTest::keyClick(entry(), Qt::Key_F5);
        EXPECT_EQ(rows(), kAscending);
        list()->setFocus();
        QTest::keyClick(list(), Qt::Key_F5);
        EXPECT_EQ(rows(), QStringList{"Cas"} + kAscending);
        QTest::keyClick(list(), Qt::Key_F8);
        EXPECT_EQ(rows(), kDelivered + QStringList{"Cas"});
        select(1);
        for (const auto key : {Qt::Key_F2, Qt::Key_Delete}) {
            QTest::keyClick(list(), key);
        }
        QTest::keyClick(list(), Qt::Key_Delete, Qt::ShiftModifier);
        EXPECT_EQ(rows().size(), 8) << "these stand in the menu as labels only";
    });
    EXPECT_TRUE(boxes.asked.isEmpty());
}

TEST_F(Units, MenuOffersWhatCanBeDone) {
    show([&] {
        EXPECT_EQ(menu(), (QStringList{"delall", "asc", "desc", "refresh"}));
        select(0);
        EXPECT_EQ(menu(), (QStringList{"edit", "delete", "delall", "asc", "desc", "refresh"}));
        win().Sort(frmJM::Ascending, false);
        EXPECT_EQ(menu(), (QStringList{"edit", "delete", "delall", "desc", "unsort", "refresh"}));
        win().Sort(frmJM::Descending, false);
        EXPECT_EQ(menu(), (QStringList{"edit", "delete", "delall", "asc", "unsort", "refresh"}));
        AskBeforeDelete = false;
        click(3);
        EXPECT_EQ(menu(), (QStringList{"asc", "unsort", "refresh"}));
    });
}

TEST_F(Units, MenuRunsTheCommands) {
    AskBeforeDelete = false;
    show([&] {
        select(1);
        boxes.inputs = {QString("metar")};
        menu("edit");
        EXPECT_EQ(list()->text(1), "metar");
        menu("asc");
        EXPECT_EQ(rows().first(), "kg");
        menu("desc");
        EXPECT_EQ(rows().first(), "Set");
        menu("unsort");
        EXPECT_EQ(rows().first(), "Kom.");
        openDatabase().Execute("INSERT INTO JM (Naziv) VALUES ('Cas')");
        menu("refresh");
        EXPECT_EQ(rows().last(), "Cas");
        select(7);
        menu("delete");
        EXPECT_EQ(rows().last(), "kg");
        menu("delall");
        EXPECT_EQ(rows().size(), 0);
    });
    EXPECT_EQ(boxes.asked.size(), 1) << "only the new name is asked for";
}

TEST_F(Units, MenuReadsAsTheShopKnowsIt) {
    show([&] {
        menu();
        QStringList captions;
        for (const QAction* action : win().findChild<QMenu*>("mnu_list")->actions()) {
            captions.append(action->isSeparator() ? QStringLiteral("-") : action->text());
        }
        EXPECT_EQ(captions, (QStringList{"Promeni...\tF2", "-", "Izbrisi\tDel", "Izbrisi Sve\tShift+Del", "-",
                                         "Sortiraj Rastuce", "Sortiraj Opadajuce", "-",
                                         "Ponisti Sortiranje\tF8", "-", "Azuriraj Listu\tF5"}));
    });
}

TEST_F(Units, OrderAndPlaceAreKept) {
    show([&] {
        win().Sort(frmJM::Descending, false);
        win().move(40, 60);
    });
    unload();
    EXPECT_EQ(settings::text(settings::find("frmJM", "WindowData")), "600;900");
    EXPECT_EQ(settings::text(settings::find("frmJM", "SortedHow")), "DESC");
    show([&] {
        EXPECT_EQ(rows(), QStringList(kAscending.rbegin(), kAscending.rend()));
        EXPECT_EQ(win().pos(), QPoint(40, 60));
        EXPECT_EQ(list()->toolTip(), "Lista jedinica mera je sortirana po opadajucim nazivima.");
        win().Sort(frmJM::Ascending, false);
    });
    unload();
    show([&] {
        EXPECT_EQ(rows(), kAscending);
        win().Sort(frmJM::Unsorted, false);
    });
    unload();
    show([&] { EXPECT_EQ(rows(), kDelivered); });
    EXPECT_TRUE(boxes.asked.isEmpty());
}

TEST_F(Units, OpensTheFirstTimeAtItsUsualPlace) {
    show([&] {
        EXPECT_EQ(win().pos(), QPoint(500 / 15, 500 / 15));
        EXPECT_FALSE(win().Sorted);
        EXPECT_EQ(win().SortedHow, "ASC");
    });
}

TEST_F(Units, AnyOtherOrderThanAscendingIsDescending) {
    settings::setText(settings::find("frmJM", "Sorted"), "1");
    settings::setText(settings::find("frmJM", "SortedHow"), "down");
    show([&] { EXPECT_EQ(rows(), QStringList(kAscending.rbegin(), kAscending.rend())); });
}

TEST_F(Units, EveryWayOutHides) {
    openDatabase();
    for (const auto& way : {std::function<void()>([&] { QTest::keyClick(entry(), Qt::Key_Escape); }),
                            std::function<void()>([&] { win().close(); })}) {
        QTimer::singleShot(0, &win(), [&] {
            ASSERT_TRUE(QTest::qWaitForWindowActive(&win()));
            way();
        });
        win().Display();
        EXPECT_FALSE(win().isVisible());
    }
    EXPECT_EQ(rows(), kDelivered);
}

TEST_F(Units, EnterInTheEntryGoesOnToTheButton) {
    show([&] {
        entry()->setFocus();
        QTest::keyClicks(entry(), "Cas");
        QTest::keyClick(entry(), Qt::Key_Return);
        EXPECT_TRUE(button(0)->hasFocus());
        QTest::keyClick(button(0), Qt::Key_Return);
        EXPECT_EQ(rows().last(), "Cas");
    });
}

TEST_F(Units, EnterPressesTheButtonWithTheFocus) {
    show([&] {
        entry()->setText("Cas");
        boxes.answers = {BoxAnswer::No};
        button(3)->setFocus();
        QTest::keyClick(button(3), Qt::Key_Return);
        ASSERT_EQ(boxes.asked.size(), 1);
        EXPECT_TRUE(boxes.lastText().contains("sve jedinice mere")) << boxes.lastText().toStdString();
        openDatabase().Execute("INSERT INTO JM (Naziv) VALUES ('Tona')");
        button(4)->setFocus();
        QTest::keyClick(button(4), Qt::Key_Enter, Qt::KeypadModifier);
        EXPECT_EQ(rows().last(), "Tona");
        button(5)->setFocus();
        QTest::keyClick(button(5), Qt::Key_Return);
        EXPECT_FALSE(win().isVisible());
    });
    EXPECT_FALSE(units().contains("Cas")) << "the buttons beside it stay where they are";
}

TEST_F(Units, AfterARefreshTheListHasTheFocus) {
    show([&] {
        EXPECT_TRUE(entry()->hasFocus()) << "whoever opens the window can type";
        click(4);
        EXPECT_TRUE(list()->hasFocus());
    });
}

TEST_F(Units, TabGoesFromTheEntryOverItsButtonToTheListAndItsButtons) {
    show([&] {
        select(1);
        entry()->setFocus();
        QTest::keyClicks(entry(), "Cas");
        for (const char* const next : {"Command1(0)", "List1", "Command1(1)", "Command1(2)", "Command1(3)",
                                       "Command1(4)", "Command1(5)", "Text1"}) {
            QTest::keyClick(win().focusWidget(), Qt::Key_Tab);
            EXPECT_EQ(win().focusWidget()->objectName(), next);
        }
    });
}

TEST_F(Units, EnterInTheListPressesNothing) {
    show([&] {
        QTest::keyClicks(entry(), "Cas");
        select(2);
        QTest::keyClick(list(), Qt::Key_Return);
        EXPECT_EQ(entry()->text(), "Cas");
        EXPECT_EQ(rows(), kDelivered);
        EXPECT_TRUE(boxes.asked.isEmpty());
    });
}

// Long lists --------------------------------------------------------------------------------------------

TEST_F(Units, TheSelectedUnitOfALongListStandsAtItsTopAfterARefresh) {
    for (int i = 100; i < 300; ++i) {
        openDatabase().Execute("INSERT INTO JM (Naziv) VALUES ('u" + std::to_string(i) + "')");
    }
    show([&] {
        list()->setCurSel(100);
        list()->scrollToTop();
        list()->setFocus();
        QTest::keyClick(list(), Qt::Key_F5);
        EXPECT_EQ(list()->curSel(), 100);
        EXPECT_EQ(list()->indexAt(QPoint(3, 3)).row(), 100);
    });
}

TEST_F(Units, AUnitThatVanishesWhileTheListIsFilledIsPassedOver) {
    const auto other = colleague("DELETE * FROM JM WHERE Naziv='m'");
    show([&] {
        list()->setFocus();
        bool done = false;
        const auto once = QObject::connect(win().findChild<platform::DataControl*>(),
                                           &platform::DataControl::repositioned, [&] {
                                               if (!std::exchange(done, true)) {
                                                   act(*other);
                                               }
                                           });
        QTest::keyClick(list(), Qt::Key_F5);
        QObject::disconnect(once);
        EXPECT_EQ(rows(), (QStringList{"Kom.", "Pak.", "Set", "Lic.", "Sat", "kg"}));
        ASSERT_EQ(boxes.asked.size(), 1);
        expectEngineBox("Neocekivana greska prilikom popunjavanja liste jedinica mera:", 3167);
    });
}

}  // namespace
