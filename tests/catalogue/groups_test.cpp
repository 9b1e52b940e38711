// Groups and manufacturers in the catalogue window: added, renamed, deleted.
#include "catalogue/catalogue_commands.h"

namespace {

using platform::BoxAnswer;
using platform::BoxButtons;
using platform::BoxIcon;

const QString kDuplicate = "Naziv vec postoji u bazi podataka. Pokusajte sa novim nazivom.";
const QString kProperCase = "\nKorekcija unosa teksta je ukljucena (a->A).";
const QString kAgain =
    " Moguce je da je neko od korisnika vec obrisao. Azurirajte podatke i pokusajte ponovo.";
const QString kAgainHim =
    " Moguce je da ga je neko od korisnika vec obrisao. Azurirajte podatke i pokusajte ponovo.";

constexpr int kGroups = frmKonfiguratorEx::kGroups;
constexpr int kManufacturers = frmKonfiguratorEx::kManufacturers;

class Groups : public CatalogueCommands {
 protected:
    platform::ListBox& list(int pane) { return pane == kGroups ? groups() : manufacturers(); }
    void focus(int pane) { list(pane).setFocus(); }
    void select(int pane, const QString& text) {
        clickRow(list(pane), text);
        focus(pane);
    }
    // With a sorted list, which a person gets from the list's menu.
    void sort(int pane, int mode) {
        focus(pane);
        window().SortList(mode, false);
    }
    std::string nameIn(const std::string& table, const std::string& field, int number) {
        const dao::Value name = valueOf(table, "ID", number, field);
        return name.isNull() ? std::string() : name.asText();
    }
    std::string groupName(int number) { return nameIn("Grupe", "Grupa", number); }
    std::string manufacturerName(int number) { return nameIn("Proizvodjaci", "Proizvodjac", number); }
    QStringList texts() {
        QStringList all;
        for (const platform::Box& box : boxes.asked) {
            all.append(box.text);
        }
        return all;
    }
};

// Adding ----------------------------------------------------------------------------------------------------

TEST_F(Groups, NewGroupGoesToTheEndAndIsSelected) {
    fillShop();
    show([&] {
        focus(kGroups);
        boxes.inputs = {QString("  stampaci ")};
        boxes.answers = {BoxAnswer::No};
        window().AddNewGrpMft();
        EXPECT_EQ(texts(), (QStringList{"Upisite naziv nove grupe proizvoda:" + kProperCase,
                                        "Nastavljate sa dodavanjem grupa proizvoda u bazu podataka?"}));
        EXPECT_EQ(boxes.asked[0].title, "Grupe proizvoda");
        EXPECT_EQ(boxes.asked[1].icon, BoxIcon::Question);
        EXPECT_EQ(boxes.asked[1].buttons, BoxButtons::YesNo);
        EXPECT_EQ(CatalogueWindow::texts(groups()), "Monitori,Procesori,Prazna,STAMPACI");
        EXPECT_EQ(groups().selectedText(), "STAMPACI");
        EXPECT_EQ(groupName(groups().selectedData()), "STAMPACI");
        EXPECT_EQ(search(kGroups)->text(), "STAMPACI");
        EXPECT_EQ(products().count(), 0);
        EXPECT_EQ(window().focusWidget(), &groups());
        EXPECT_EQ(statusText(), "Broj Grupa proizvoda u bazi podataka: 4");
    });
}

TEST_F(Groups, NewManufacturerKeepsItsLettersWithoutTheCorrection) {
    fillShop();
    MakeProperCase = false;
    show([&] {
        focus(kManufacturers);
        boxes.inputs = {QString("delta")};
        boxes.answers = {BoxAnswer::No};
        window().AddNewGrpMft();
        EXPECT_EQ(texts(), (QStringList{"Upisite naziv novog proizvodjaca:",
                                        "Nastavljate sa dodavanjem proizvodjaca u bazu podataka?"}));
        EXPECT_EQ(boxes.asked[0].title, "Proizvodjaci");
        EXPECT_EQ(CatalogueWindow::texts(manufacturers()), "Adler,Bergen,Celta,delta");
        EXPECT_EQ(manufacturerName(manufacturers().selectedData()), "delta");
    });
}

TEST_F(Groups, SearchBoxStandsForItsList) {
    fillShop();
    show([&] {
        search(kManufacturers)->setFocus();
        boxes.inputs = {QString("DELTA")};
        boxes.answers = {BoxAnswer::No};
        window().AddNewGrpMft();
        EXPECT_EQ(manufacturers().selectedText(), "DELTA");
    });
}

TEST_F(Groups, ProductListHasNothingToAddHere) {
    fillShop();
    show([&] {
        products().setFocus();
        window().AddNewGrpMft();
        window().EditGrpMft();
        window().DeleteGrpMft();
        window().DeleteAllGrpMft();
    });
    EXPECT_TRUE(boxes.asked.isEmpty());
    EXPECT_EQ(countRows("Grupe"), 3);
}

TEST_F(Groups, NameThatIsThereEndsAddingAtOnce) {
    fillShop();
    show([&] {
        focus(kManufacturers);
        boxes.inputs = {QString("adler"), QString("DELTA")};
        window().AddNewGrpMft();
        expectBox(kDuplicate);
    });
    EXPECT_EQ(boxes.asked.size(), 2) << "no second prompt";
    EXPECT_EQ(countRows("Proizvodjaci"), 3);
}

TEST_F(Groups, ThreeNamesAreSortedOnceAtTheEnd) {
    fillShop();
    show([&] {
        sort(kManufacturers, 1);
        QStringList during;
        boxes.onBox = [&](const platform::Box& box) {
            if (box.icon == BoxIcon::Question) {
                during.append(CatalogueWindow::texts(manufacturers()));
            }
        };
        boxes.inputs = {QString("ZETA"), QString("ABA"), QString("CERN")};
        boxes.answers = {BoxAnswer::Yes, BoxAnswer::Yes, BoxAnswer::No};
        window().AddNewGrpMft();
        boxes.onBox = nullptr;
        EXPECT_EQ(during, (QStringList{"Adler,Bergen,Celta,ZETA", "Adler,Bergen,Celta,ZETA,ABA",
                                       "Adler,Bergen,Celta,ZETA,ABA,CERN"}));
        EXPECT_EQ(CatalogueWindow::texts(manufacturers()), "ABA,Adler,Bergen,Celta,CERN,ZETA");
        EXPECT_EQ(manufacturers().selectedText(), "CERN");
    });
    EXPECT_EQ(boxes.asked.size(), 6);
}

TEST_F(Groups, EmptyAnswerStopsBeforeTheListIsSorted) {
    fillShop();
    for (const std::optional<QString>& nothing : {std::optional<QString>("  "), std::optional<QString>()}) {
        show([&] {
            sort(kManufacturers, 1);
            boxes.inputs = {QString(nothing ? "ABA" : "AAA"), nothing};
            boxes.answers = {BoxAnswer::Yes};
            window().AddNewGrpMft();
            EXPECT_TRUE(CatalogueWindow::texts(manufacturers()).endsWith(nothing ? ",ABA" : ",AAA"));
        });
        unload();
    }
    EXPECT_EQ(countRows("Proizvodjaci"), 5);
}

// A double quote breaks the search for the name, and what cannot be searched for has not been found.
TEST_F(Groups, NameWithADoubleQuoteIsAdded) {
    fillShop();
    show([&] {
        focus(kGroups);
        boxes.inputs = {QString("19\""), QString("NOVA"), QString("20\" I VISE")};
        boxes.answers = {BoxAnswer::Yes, BoxAnswer::Yes, BoxAnswer::No};
        window().AddNewGrpMft();
        EXPECT_EQ(CatalogueWindow::texts(groups()), "Monitori,Procesori,Prazna,19\",NOVA,20\" I VISE");
        EXPECT_FALSE(texts().filter("greska").size()) << boxes.lastText().toStdString();

        focus(kManufacturers);
        boxes.inputs = {QString("Adler")};
        window().AddNewGrpMft();
        expectBox(kDuplicate);
        boxes.inputs = {QString("CELTA \"X\"")};
        boxes.answers = {BoxAnswer::No};
        window().AddNewGrpMft();
        EXPECT_EQ(CatalogueWindow::texts(manufacturers()), "Adler,Bergen,Celta,CELTA \"X\"");
    });
    EXPECT_EQ(countRows("Grupe"), 6);
}

TEST_F(Groups, NameTooLongForTheTableIsTold) {
    fillShop();
    const QString tooLong(256, QLatin1Char('a'));
    show([&] {
        focus(kManufacturers);
        boxes.inputs = {tooLong};
        window().AddNewGrpMft();
        expectError(boxes.asked.last(),
                    "Neocekivana greska prilikom dodavanja novog proizvodjaca u bazu podataka (ADDNEW deo):",
                    3163, occured("DoGroupAddNew"));
        select(kManufacturers, "Adler");
        boxes.inputs = {tooLong};
        window().EditGrpMft();
        expectError(boxes.asked.last(),
                    "Neocekivana greska prilikom promene naziva proizvodjaca u bazi podataka (EDIT deo):",
                    3163, occured("EditGrpMft"));
        EXPECT_EQ(manufacturers().selectedText(), "Adler");
        boxes.inputs = {QString("ADRIA")};
        window().EditGrpMft();
        EXPECT_EQ(manufacturers().selectedText(), "ADRIA") << "the failed ones stand in nobody's way";
    });
    EXPECT_EQ(countRows("Proizvodjaci"), 3);
    EXPECT_EQ(parent().updates, 1);
}

// Renaming --------------------------------------------------------------------------------------------------

TEST_F(Groups, RenamedGroupIsCarriedIntoRequisitions) {
    fillShop();
    draw(m17, "17 inca", "opis", "Monitori", "Adler");
    draw(m19, "19 inca", "opis", "Monitori", "Adler");
    draw(fast, "Brzi", "opis", "Procesori", "Adler");
    show([&] {
        select(kGroups, "Monitori");
        boxes.inputs = {QString(" ekrani ")};
        window().EditGrpMft();
        EXPECT_EQ(texts(), (QStringList{"Promenite naziv grupe proizvoda:" + kProperCase,
                                        "Tabela trebovanja je azurirana. Broj promenjenih stavki je: 2."}));
        EXPECT_EQ(boxes.asked[0].title, "Grupe proizvoda");
        EXPECT_EQ(boxes.asked[1].icon, BoxIcon::Information);
        EXPECT_EQ(CatalogueWindow::texts(groups()), "EKRANI,Procesori,Prazna");
        EXPECT_EQ(groups().selectedText(), "EKRANI");
        EXPECT_EQ(search(kGroups)->text(), "EKRANI");
        EXPECT_EQ(window().focusWidget(), &groups());
        EXPECT_EQ(parent().updates, 1);
        EXPECT_EQ(parent().lastUpdateKey, "");
    });
    EXPECT_EQ(groupName(monitors), "EKRANI");
    EXPECT_EQ(drawn("Grupa='EKRANI'"), 2);
    EXPECT_EQ(drawn("Grupa='Procesori'"), 1);
}

TEST_F(Groups, RenamedManufacturerShowsInTheProductListToo) {
    fillShop();
    MakeProperCase = false;
    draw(m17, "17 inca", "opis", "Monitori", "Adler");
    draw(m21, "21 inca", "opis", "Monitori", "Bergen");
    withMonitors([&] {
        focus(kManufacturers);
        boxes.inputs = {QString("Adria")};
        window().EditGrpMft();
        EXPECT_EQ(boxes.asked[0].text, "Promenite naziv proizvodjaca:");
        EXPECT_EQ(boxes.asked[0].title, "Proizvodjaci");
        expectBox("Tabela trebovanja je azurirana. Broj promenjenih stavki je: 1.", BoxIcon::Information);
        EXPECT_EQ(manufacturers().selectedText(), "Adria");
        ASSERT_EQ(products().count(), 2);
        EXPECT_EQ(products().item(1).Text, "Adria");
        EXPECT_EQ(search(kManufacturers)->text(), "Adria");
    });
    EXPECT_EQ(drawn("Proizvodjac='Adria' AND Grupa='Monitori'"), 1);
    EXPECT_EQ(drawn("Proizvodjac='Bergen'"), 1);
}

TEST_F(Groups, NobodyIsToldWhereNoRequisitionChanged) {
    fillShop();
    show([&] {
        select(kGroups, "Prazna");
        boxes.inputs = {QString("NOVA")};
        window().EditGrpMft();
    });
    EXPECT_EQ(boxes.asked.size(), 1);
    EXPECT_EQ(parent().updates, 1);
}

TEST_F(Groups, EmptyOrCancelledNameRenamesNothing) {
    fillShop();
    show([&] {
        select(kGroups, "Prazna");
        boxes.inputs = {QString(" "), std::nullopt};
        window().EditGrpMft();
        window().EditGrpMft();
    });
    EXPECT_EQ(groupName(empty), "Prazna");
    EXPECT_EQ(parent().updates, 0);
}

TEST_F(Groups, NothingSelectedNothingRenamedOrDeleted) {
    fillShop();
    show([&] {
        focus(kGroups);
        groups().setCurSel(-1);
        window().EditGrpMft();
        window().DeleteGrpMft();
    });
    EXPECT_TRUE(boxes.asked.isEmpty());
    EXPECT_EQ(countRows("Grupe"), 3);
}

TEST_F(Groups, RenamingToAnExistingNameIsAccepted) {
    fillShop();
    show([&] {
        select(kGroups, "Prazna");
        boxes.inputs = {QString("MONITORI")};
        window().EditGrpMft();
    });
    EXPECT_EQ(boxes.asked.size(), 1);
    EXPECT_EQ(countRows("SELECT * FROM Grupe WHERE Grupa='Monitori'"), 2);
}

TEST_F(Groups, RenamedRowOfASortedListGoesToItsPlace) {
    fillShop();
    show([&] {
        sort(kGroups, 2);
        select(kGroups, "Monitori");
        boxes.inputs = {QString("ZVUCNICI")};
        window().EditGrpMft();
        EXPECT_EQ(CatalogueWindow::texts(groups()), "ZVUCNICI,Procesori,Prazna");
        EXPECT_EQ(groups().selectedText(), "ZVUCNICI");
    });
}

TEST_F(Groups, RowDeletedByAnotherIsNotRenamed) {
    const auto other = colleague("DELETE * FROM Grupe WHERE Grupa='Prazna'");
    const auto another = colleague("DELETE * FROM Proizvodjaci WHERE Proizvodjac='Celta'");
    fillShop();
    draw(m17, "17 inca", "opis", "Prazna", "Celta");
    show([&] {
        select(kGroups, "Prazna");
        act(*other);
        boxes.inputs = {QString("NOVA")};
        window().EditGrpMft();
        expectBox("Grupa proizvoda ciji naziv pokusavate da promenite nije pronadjena u bazi podataka." +
                  kAgain);
        EXPECT_EQ(groups().selectedText(), "Prazna") << "until the next refresh";

        select(kManufacturers, "Celta");
        act(*another);
        boxes.inputs = {QString("NOVA")};
        window().EditGrpMft();
        expectBox("Proizvodjac ciji naziv pokusavate da promenite nije pronadjen u bazi podataka." +
                  kAgainHim);
    });
    EXPECT_EQ(drawn("Grupa='Prazna' AND Proizvodjac='Celta'"), 1) << "nothing is carried over";
    EXPECT_EQ(parent().updates, 0);
}

TEST_F(Groups, SingleQuoteKeepsTheOldNameInRequisitions) {
    fillShop();
    draw(m17, "17 inca", "opis", "Monitori", "Adler");
    show([&] {
        select(kGroups, "Monitori");
        boxes.inputs = {QString("O'MONITORI")};
        window().EditGrpMft();
        ASSERT_EQ(boxes.asked.size(), 3);
        expectError(
            boxes.asked[1],
            "Neocekivana greska prilikom promene naziva grupe u bazi podataka u tabeli trebovanih stavki. "
            "Greska je data kao:",
            3075, " ; Code line no.: ");
        EXPECT_TRUE(boxes.asked[1].text.endsWith(occured("EditGrpMft")));
        expectError(boxes.asked[2], "Neocekivana greska prilikom promene naziva grupe u bazi podataka:", 3075,
                    " ; Code line no.: ");
        EXPECT_EQ(groups().selectedText(), "O'MONITORI");
    });
    EXPECT_EQ(groupName(monitors), "O'MONITORI");
    EXPECT_EQ(drawn("Grupa='Monitori'"), 1);
    EXPECT_EQ(parent().updates, 0);
}

TEST_F(Groups, SingleQuoteOfAManufacturerIsToldInItsOwnWords) {
    fillShop();
    draw(m17, "17 inca", "opis", "Monitori", "Adler");
    show([&] {
        select(kManufacturers, "Adler");
        boxes.inputs = {QString("O'ADLER")};
        window().EditGrpMft();
        ASSERT_EQ(boxes.asked.size(), 3);
        expectError(boxes.asked[1],
                    "Neocekivana greska prilikom promene naziva proizvodjaca u bazi podataka u tabeli "
                    "trebovanih stavki. Greska je data kao:",
                    3075, occured("EditGrpMft"));
        expectError(boxes.asked[2],
                    "Neocekivana greska prilikom promene naziva proizvodjaca u bazi podataka:", 3075,
                    " ; Code line no.: ");
        EXPECT_TRUE(boxes.asked[2].text.endsWith(occured("EditGrpMft")));
    });
    EXPECT_EQ(manufacturerName(adler), "O'ADLER");
    EXPECT_EQ(drawn("Proizvodjac='Adler'"), 1);
    EXPECT_EQ(parent().updates, 0);
}

// Deleting --------------------------------------------------------------------------------------------------

TEST_F(Groups, DeletingAGroupAsksAndTakesItsProducts) {
    fillShop();
    show([&] {
        select(kGroups, "Monitori");
        boxes.answers = {BoxAnswer::No};
        window().DeleteGrpMft();
        expectBox(
            "Upravo se spremate da izbrisete grupu proizvoda iz baze podataka.\nBrisanjem grupe proizvoda "
            "brisete i "
            "sve proizvode koji toj grupi pripadaju. Ponistenje brisanja nije moguce.\n\nNastavljate li sa "
            "brisanjem?");
        EXPECT_EQ(boxes.asked.last().buttons, BoxButtons::YesNo);
        EXPECT_EQ(countRows("Grupe"), 3);
        boxes.answers = {BoxAnswer::Yes};
        window().DeleteGrpMft();
        EXPECT_EQ(CatalogueWindow::texts(groups()), "Procesori,Prazna");
        EXPECT_EQ(groups().selectedText(), "Procesori") << "the same position";
        EXPECT_EQ(productNames(), "Brzi") << "the products follow";
        EXPECT_EQ(statusText(), "Broj Grupa proizvoda u bazi podataka: 2");
    });
    EXPECT_EQ(countRows("Oprema"), 2);
    EXPECT_EQ(boxes.asked.size(), 2);
}

TEST_F(Groups, DeletingAManufacturerAsksAndTakesItsProducts) {
    fillShop();
    withMonitors([&] {
        focus(kManufacturers);
        boxes.answers = {BoxAnswer::Yes};
        window().DeleteGrpMft();
        expectBox(
            "Upravo se spremate da izbrisete proizvodjaca iz baze podataka.\nBrisanjem proizvodjaca brisete "
            "i sve "
            "proizvode koji tom proizvodjacu pripadaju. Ponistenje brisanja nije moguce.\n\nNastavljate li "
            "sa "
            "brisanjem?");
        EXPECT_EQ(manufacturers().selectedText(), "Bergen");
        EXPECT_EQ(productNames(), "21 inca");
        EXPECT_EQ(statusText(), "Broj Proizvodjaca proizvoda u bazi podataka: 2");
    });
    EXPECT_EQ(countRows("Oprema"), 2);
}

TEST_F(Groups, ProductsOfADeletedManufacturerGoWhereAllAreShown) {
    AskBeforeDelete = false;
    fillShop();
    withMonitors([&] {
        window().PrikaziSveProizvodjace = true;
        window().DataUpdate(frmKonfiguratorEx::kProducts, QString(), false);
        EXPECT_EQ(products().count(), 3);
        focus(kManufacturers);
        window().DeleteGrpMft();
        EXPECT_EQ(productNames(), "21 inca");
        EXPECT_EQ(statusText(), "Broj Proizvodjaca proizvoda u bazi podataka: 2");
    });
}

TEST_F(Groups, SelectionFallsBackToTheFirstRow) {
    AskBeforeDelete = false;
    fillShop();
    show([&] {
        select(kGroups, "Prazna");
        window().DeleteGrpMft();
        EXPECT_EQ(groups().selectedText(), "Monitori");
        window().DeleteGrpMft();
        EXPECT_EQ(groups().selectedText(), "Procesori");
        window().DeleteGrpMft();
        EXPECT_EQ(groups().count(), 0);
        EXPECT_EQ(groups().curSel(), -1);
        EXPECT_EQ(statusText(), "U bazi podataka nema Grupa proizvoda");
        EXPECT_EQ(products().count(), 0);
        window().DeleteGrpMft();
        window().EditGrpMft();
        window().DeleteAllGrpMft();
    });
    EXPECT_TRUE(boxes.asked.isEmpty());
    EXPECT_EQ(countRows("Oprema"), 0);
}

TEST_F(Groups, OfTwoGroupsOfOneNameTheOtherOneShowsItsProducts) {
    AskBeforeDelete = false;
    fillShop();
    const int twin = addGroup("Prazna");
    addProduct(empty, adler, "u prvoj", 1.0F, 1.0F);
    addProduct(twin, adler, "u drugoj", 1.0F, 1.0F);
    const int other = addManufacturer("Celta");
    addProduct(twin, other, "od drugog", 1.0F, 1.0F);
    addProduct(twin, celta, "od prvog", 1.0F, 1.0F);
    show([&] {
        select(kManufacturers, "Adler");
        select(kGroups, "Prazna");
        ASSERT_EQ(productNames(), "u prvoj");
        QTest::keyClick(&groups(), Qt::Key_Delete);
        ASSERT_EQ(groups().selectedText(), "Prazna");
        EXPECT_EQ(productNames(), "u drugoj");
        EXPECT_EQ(detail(), "opis u drugoj");

        select(kManufacturers, "Celta");
        ASSERT_EQ(productNames(), "od prvog");
        QTest::keyClick(&manufacturers(), Qt::Key_Delete);
        ASSERT_EQ(manufacturers().selectedText(), "Celta");
        EXPECT_EQ(productNames(), "od drugog");
    });
}

TEST_F(Groups, RowDeletedByAnotherIsNotFound) {
    const auto other = colleague("DELETE * FROM Grupe WHERE Grupa='Prazna'");
    const auto another = colleague("DELETE * FROM Proizvodjaci WHERE Proizvodjac='Celta'");
    AskBeforeDelete = false;
    fillShop();
    show([&] {
        select(kGroups, "Prazna");
        act(*other);
        window().DeleteGrpMft();
        expectBox("Grupa proizvoda koju pokusavate da izbrisete nije pronadjena u bazi podataka." + kAgain);
        EXPECT_EQ(CatalogueWindow::texts(groups()), "Monitori,Procesori,Prazna") << "until the next refresh";

        select(kManufacturers, "Celta");
        act(*another);
        window().DeleteGrpMft();
        expectBox("Proizvodjac koga pokusavate da izbrisete nije pronadjen u bazi podataka." + kAgainHim);
        EXPECT_EQ(CatalogueWindow::texts(manufacturers()), "Adler,Bergen,Celta");
    });
    EXPECT_EQ(countRows("Grupe"), 2);
}

TEST_F(Groups, DeletingAllGroupsAsksAndTakesAllProducts) {
    fillShop();
    withMonitors([&] {
        focus(kGroups);
        boxes.answers = {BoxAnswer::No, BoxAnswer::Yes};
        window().DeleteAllGrpMft();
        expectBox(
            "Upravo se spremate da izbrisete sve grupe proizvoda iz baze podataka.\nBrisanjem grupa "
            "proizvoda "
            "brisete i sve proizvode. Ponistenje brisanja nije moguce.\n\nNastavljate li sa brisanjem?");
        EXPECT_EQ(boxes.asked.last().buttons, BoxButtons::YesNo);
        EXPECT_EQ(countRows("Grupe"), 3);
        window().DeleteAllGrpMft();
        EXPECT_EQ(groups().count(), 0);
        EXPECT_EQ(products().count(), 0);
        EXPECT_EQ(search(kGroups)->text(), "");
        EXPECT_EQ(statusText(), "U bazi podataka nema Grupa proizvoda");
        EXPECT_EQ(window().focusWidget(), &groups());
        EXPECT_EQ(toolbarOn(), "new,refresh,help");
    });
    EXPECT_EQ(countRows("Grupe"), 0);
    EXPECT_EQ(countRows("Oprema"), 0);
    EXPECT_EQ(countRows("Proizvodjaci"), 3);
}

TEST_F(Groups, DeletingAllManufacturersFromTheSearchBox) {
    fillShop();
    withMonitors([&] {
        search(kManufacturers)->setFocus();
        boxes.answers = {BoxAnswer::Yes};
        window().DeleteAllGrpMft();
        expectBox(
            "Upravo se spremate da izbrisete sve proizvodjace iz baze podataka.\nBrisanjem proizvodjaca "
            "brisete i "
            "sve proizvode. Ponistenje brisanja nije moguce.\n\nNastavljate li sa brisanjem?");
        EXPECT_EQ(manufacturers().count(), 0);
        EXPECT_EQ(search(kManufacturers)->text(), "");
        EXPECT_EQ(statusText(), "U bazi podataka nema Proizvodjaca proizvoda");
    });
    EXPECT_EQ(countRows("Proizvodjaci"), 0);
    EXPECT_EQ(countRows("Oprema"), 0);
}

TEST_F(Groups, NobodyIsAskedBeforeAllGoWhereTheQuestionIsOff) {
    AskBeforeDelete = false;
    fillShop();
    show([&] {
        focus(kGroups);
        window().DeleteAllGrpMft();
        EXPECT_EQ(groups().count(), 0);
    });
    EXPECT_TRUE(boxes.asked.isEmpty());
    EXPECT_EQ(countRows("Grupe"), 0);
}

TEST_F(Groups, LockedFileIsToldOnEveryCommand) {
    const auto other = slowColleague();
    AskBeforeDelete = false;
    fillShop();
    show([&] {
        act(*other);
        dao::DBEngine::setLockTimeout(100);
        const struct {
            int pane;
            const char* add;
            const char* change;
            const char* deleteAll;
        } cases[] = {
            {kGroups, "Neocekivana greska prilikom dodavanja nove grupe u bazu podataka",
             "Neocekivana greska prilikom promene naziva grupe u bazi podataka",
             "Neocekivana greska prilikom brisanja grupa proizvoda iz baze podataka"},
            {kManufacturers, "Neocekivana greska prilikom dodavanja novog proizvodjaca u bazu podataka",
             "Neocekivana greska prilikom promene naziva proizvodjaca u bazi podataka",
             "Neocekivana greska prilikom brisanja proizvodjaca iz baze podataka"}};
        for (const auto& one : cases) {
            const QString before = CatalogueWindow::texts(list(one.pane));
            clickRow(list(one.pane), 0);
            focus(one.pane);
            boxes.inputs = {QString("NOVI"), QString("NOVI")};
            window().AddNewGrpMft();
            expectError(boxes.asked.last(), QString(one.add) + " (ADDNEW deo):", 3260,
                        occured("DoGroupAddNew"));
            window().EditGrpMft();
            expectError(boxes.asked.last(), QString(one.change) + " (EDIT deo):", 3260,
                        occured("EditGrpMft"));
            window().DeleteGrpMft();
            expectError(boxes.asked.last(), QString(one.change) + " (DELETE deo):", 3260,
                        occured("DeleteGrpMft"));
            window().DeleteAllGrpMft();
            expectError(boxes.asked.last(), QString(one.deleteAll) + " (DELETE ALL deo):", 3260,
                        occured("DeleteAllGrpMft"));
            EXPECT_EQ(CatalogueWindow::texts(list(one.pane)), before);
        }
        EXPECT_EQ(boxes.asked.size(), 12) << "two prompts and four failures each";
    });
    EXPECT_EQ(countRows("Grupe"), 3);
    EXPECT_EQ(countRows("Proizvodjaci"), 3);
    EXPECT_EQ(countRows("Oprema"), 5);
}

}  // namespace
