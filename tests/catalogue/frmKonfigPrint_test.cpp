#include "catalogue/frmKonfigPrint.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMap>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>
#include <QTest>

#include "catalogue/ActiveReport1.h"
#include "catalogue/catalogue_window.h"
#include "catalogue/frmKonfigPrint_rules.h"
#include "common/window_places.h"
#include "support/left_wait.h"
#include "support/modal.h"
#include "support/second_process.h"

using platform::BoxIcon;

namespace {

const QString kBase =
    "SELECT OpremaGrupe.ID, OpremaGrupe.Grupa, Proizvodjaci.Proizvodjac, OpremaGrupe.Naziv, "
    "OpremaGrupe.Opis, OpremaGrupe.Stanje, [OpremaGrupe.Cena]*1 AS Cena1, OpremaGrupe.Napomena, "
    "OpremaGrupe.IDGrupe, OpremaGrupe.IDProizvodjaca FROM Proizvodjaci RIGHT JOIN OpremaGrupe ON "
    "Proizvodjaci.ID = OpremaGrupe.IDProizvodjaca";
const QString kOrder = " ORDER BY OpremaGrupe.Grupa, Proizvodjaci.Proizvodjac";
const QString kHead = "Lipova 1, Smederevo 11300, Srbija i Crna Gora";
const QString kNothing = "Nema podataka koji zadovoljavaju postavljene uslove.";

// The window over the small catalogue of the shop. What would be shown in the preview is laid out and kept.
struct FrmKonfigPrintTest : CatalogueWindow {
    void SetUp() override {
        CatalogueWindow::SetUp();
        fillShop();
    }
    void TearDown() override {
        options_.reset();
        CatalogueWindow::TearDown();
    }

    frmKonfigPrint& options() {
        if (!options_) {
            options_ = std::make_unique<frmKonfigPrint>();
            options_->setIDGrupe(monitors);
            options_->setIDProizvodjaca(adler);
            options_->onShow = [this](ActiveReport1& report) {
                documents.push_back(report.run().value());
                footers += report.Sections("PageFooter").Controls("txtFooter").Text;
                headers += report.Sections("PageHeader").Controls("lblHeader").Caption;
            };
        }
        return *options_;
    }
    // Shows the window; `work` happens in it.
    void open(const std::function<void()>& work) {
        QTimer::singleShot(0, &options(), [&] {
            ASSERT_TRUE(QTest::qWaitForWindowActive(&options()));
            work();
            options().reject();
        });
        options().Display();
    }
    void closeOptions() { options_.reset(); }

    template <typename Control>
    Control* part(const QString& name) {
        auto* found = options().findChild<Control*>(name);
        EXPECT_NE(found, nullptr) << name.toStdString();
        return found;
    }
    QLineEdit* text(int i) { return part<QLineEdit>(QString("Text1(%1)").arg(i)); }
    QLabel* label(int i) { return part<QLabel>(QString("Label1(%1)").arg(i)); }
    QCheckBox* check(int i) { return part<QCheckBox>(QString("Check1(%1)").arg(i)); }
    QRadioButton* range(int i) { return part<QRadioButton>(QString("Option1(%1)").arg(i)); }
    QRadioButton* stock(int i) { return part<QRadioButton>(QString("Option2(%1)").arg(i)); }
    QComboBox* rounding() { return part<QComboBox>("Combo1"); }
    void print() { QTest::mouseClick(part<QPushButton>("Command1(0)"), Qt::LeftButton); }
    void click(QAbstractButton* button) {
        QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(8, button->height() / 2));
    }
    // The list for a choice, printed from the window.
    QString listOf(int rangeIndex, int stockIndex) {
        documents.clear();
        open([&] {
            click(range(rangeIndex));
            click(stock(stockIndex));
            print();
        });
        return documents.empty() ? QString() : textOf(documents.back());
    }
    static QString textOf(const report::Document& document) {
        QString all;
        for (int page = 1; page <= document.pageCount(); ++page) {
            all += document.textOfPage(page) + '\n';
        }
        return all;
    }
    // Names of the products on a list, in the order of the paper.
    QString namesOn(const QString& list) {
        QStringList found;
        static const QRegularExpression kName("\\b(17 inca|19 inca|21 inca|Brzi|Spori) opis");
        for (auto it = kName.globalMatch(list); it.hasNext();) {
            found += it.next().captured(1);
        }
        return found.join(',');
    }

    static const settings::Setting& own(const char* key) { return settings::find("frmKonfigPrint", key); }
    QString footer(const QMap<QString, QString>& data) {
        QMap<QString, QString> all{{"frmSettAdresa", "Lipova 1"},
                                   {"frmSettGrad", "Smederevo"},
                                   {"frmSettZip", "11300"},
                                   {"frmSettTel", ""},
                                   {"frmSettFax", ""},
                                   {"frmSettEmail", ""},
                                   {"frmSettWWW", ""}};
        all.insert(data);
        for (auto it = all.begin(); it != all.end(); ++it) {
            settings::setScrambled(settings::find("Settings", it.key()), it.value());
        }
        return price_list::firmsFooter();
    }

    std::vector<report::Document> documents;
    QStringList footers, headers;

 private:
    std::unique_ptr<frmKonfigPrint> options_;
};

QString statementOf(int range, int stock) {
    return price_list::statement({.range = range, .stock = stock, .group = 7, .maker = 9});
}

}  // namespace

// Statements ------------------------------------------------------------------------------------------------

TEST_F(FrmKonfigPrintTest, AListThatIsLeftIsNotShownAndNothingIsSaid) {
    const LeftWait left(1);
    QString errorText;
    EXPECT_TRUE(options().DoPrintDataReport(errorText));
    EXPECT_EQ(errorText, "");
    EXPECT_TRUE(documents.empty());
    EXPECT_TRUE(boxes.asked.isEmpty());
}

TEST_F(FrmKonfigPrintTest, EachRangeHasItsCondition) {
    EXPECT_EQ(statementOf(0, 0), kBase + kOrder);
    EXPECT_EQ(statementOf(1, 0), kBase + " WHERE OpremaGrupe.IDGrupe=7" + kOrder);
    EXPECT_EQ(statementOf(2, 0), kBase + " WHERE OpremaGrupe.IDProizvodjaca=9" + kOrder);
    EXPECT_EQ(statementOf(3, 0),
              kBase + " WHERE OpremaGrupe.IDProizvodjaca=9 AND OpremaGrupe.IDGrupe=7" + kOrder);
}

TEST_F(FrmKonfigPrintTest, StockIsTheFirstConditionWhereAllProductsAreWanted) {
    EXPECT_EQ(statementOf(0, 1), kBase + " WHERE OpremaGrupe.Stanje>0" + kOrder);
    EXPECT_EQ(statementOf(0, 2), kBase + " WHERE OpremaGrupe.Stanje=0" + kOrder);
}

TEST_F(FrmKonfigPrintTest, StockIsAFurtherConditionBehindARange) {
    EXPECT_EQ(statementOf(1, 1), kBase + " WHERE OpremaGrupe.IDGrupe=7 AND OpremaGrupe.Stanje>0" + kOrder);
    EXPECT_EQ(statementOf(1, 2), kBase + " WHERE OpremaGrupe.IDGrupe=7 AND OpremaGrupe.Stanje=0" + kOrder);
    EXPECT_EQ(statementOf(2, 1),
              kBase + " WHERE OpremaGrupe.IDProizvodjaca=9 AND OpremaGrupe.Stanje>0" + kOrder);
    EXPECT_EQ(statementOf(2, 2),
              kBase + " WHERE OpremaGrupe.IDProizvodjaca=9 AND OpremaGrupe.Stanje=0" + kOrder);
    EXPECT_EQ(statementOf(3, 1),
              kBase +
                  " WHERE OpremaGrupe.IDProizvodjaca=9 AND OpremaGrupe.IDGrupe=7 AND OpremaGrupe.Stanje>0" +
                  kOrder);
    EXPECT_EQ(statementOf(3, 2),
              kBase +
                  " WHERE OpremaGrupe.IDProizvodjaca=9 AND OpremaGrupe.IDGrupe=7 AND OpremaGrupe.Stanje=0" +
                  kOrder);
}

TEST_F(FrmKonfigPrintTest, PricesAreMultipliedByTheRateInDinars) {
    CeneDinarske = true;
    KursKupovni = 117.5F;
    EXPECT_TRUE(statementOf(0, 0).contains("[OpremaGrupe.Cena]*117.5 AS Cena1"));
    QLocale::setDefault(QLocale("sr_Latn_RS"));
    EXPECT_TRUE(statementOf(0, 0).contains("[OpremaGrupe.Cena]*117.5 AS Cena1"))
        << "whatever the user's separator is";
    CeneDinarske = false;
    EXPECT_TRUE(statementOf(0, 0).contains("[OpremaGrupe.Cena]*1 AS Cena1"));
}

TEST_F(FrmKonfigPrintTest, TheWindowsChoiceMakesTheStatement) {
    const QString group = QString("OpremaGrupe.IDGrupe=%1").arg(monitors);
    const QString maker = QString("OpremaGrupe.IDProizvodjaca=%1").arg(adler);
    const QString wanted[4][3] = {{"", " WHERE OpremaGrupe.Stanje>0", " WHERE OpremaGrupe.Stanje=0"},
                                  {" WHERE " + group, " WHERE " + group + " AND OpremaGrupe.Stanje>0",
                                   " WHERE " + group + " AND OpremaGrupe.Stanje=0"},
                                  {" WHERE " + maker, " WHERE " + maker + " AND OpremaGrupe.Stanje>0",
                                   " WHERE " + maker + " AND OpremaGrupe.Stanje=0"},
                                  {" WHERE " + maker + " AND " + group,
                                   " WHERE " + maker + " AND " + group + " AND OpremaGrupe.Stanje>0",
                                   " WHERE " + maker + " AND " + group + " AND OpremaGrupe.Stanje=0"}};
    open([&] {
        for (int i = 0; i < 4; ++i) {
            for (int j = 0; j < 3; ++j) {
                click(range(i));
                click(stock(j));
                EXPECT_EQ(options().PriceListQuery(), kBase + wanted[i][j] + kOrder) << i << j;
            }
        }
    });
}

// What comes on the paper -----------------------------------------------------------------------------------

TEST_F(FrmKonfigPrintTest, EachRangeListsItsProducts) {
    EXPECT_EQ(namesOn(listOf(0, 0)), "17 inca,19 inca,21 inca,Brzi,Spori");
    EXPECT_EQ(namesOn(listOf(1, 0)), "17 inca,19 inca,21 inca");
    EXPECT_EQ(namesOn(listOf(2, 0)), "17 inca,19 inca,Brzi");
    EXPECT_EQ(namesOn(listOf(3, 0)), "17 inca,19 inca");
}

TEST_F(FrmKonfigPrintTest, EachStockConditionListsItsProducts) {
    EXPECT_EQ(namesOn(listOf(0, 1)), "17 inca,21 inca,Brzi");
    EXPECT_EQ(namesOn(listOf(0, 2)), "19 inca") << "less than nothing is not nothing";
    EXPECT_EQ(namesOn(listOf(1, 1)), "17 inca,21 inca");
    EXPECT_EQ(namesOn(listOf(3, 2)), "19 inca");
    EXPECT_TRUE(boxes.asked.isEmpty()) << boxes.lastText().toStdString();
}

TEST_F(FrmKonfigPrintTest, AProductWithoutAMakerIsOnTheList) {
    addRow("Oprema", "ID",
           {{"IDGrupe", processors},
            {"Naziv", "Spori"},
            {"Opis", "opis"},
            {"JM", "Kom."},
            {"Stanje", 1.0F},
            {"Cena", 1.0F}});
    EXPECT_EQ(namesOn(listOf(0, 0)), "17 inca,19 inca,21 inca,Spori,Brzi,Spori");
}

TEST_F(FrmKonfigPrintTest, StockIsNotPrinted) {
    openDatabase().Execute("UPDATE Oprema SET Stanje=777");
    EXPECT_FALSE(listOf(0, 0).contains("777"));
}

TEST_F(FrmKonfigPrintTest, PricesInDinarsAreRoundedAsChosen) {
    CeneDinarske = true;
    KursKupovni = 117.53F;
    const char* const wanted[] = {"11,753\n", "11,753.0\n", "11,753.00\n"};
    for (int decimals = 0; decimals < 3; ++decimals) {
        open([&] {
            click(range(3));
            rounding()->setCurrentIndex(decimals);
            print();
        });
        EXPECT_TRUE(textOf(documents.back()).contains(QString("17 inca opis 17 inca ") + wanted[decimals]))
            << textOf(documents.back()).toStdString();
    }
}

TEST_F(FrmKonfigPrintTest, NothingToPrintIsToldAndNothingShown) {
    open([&] {
        options().setIDGrupe(empty);
        click(range(1));
        print();
        EXPECT_TRUE(options().isVisible());
    });
    EXPECT_TRUE(documents.empty());
    ASSERT_EQ(boxes.asked.size(), 1);
    EXPECT_EQ(boxes.lastText(), kNothing);
    EXPECT_EQ(boxes.asked[0].icon, BoxIcon::Information);
    EXPECT_EQ(boxes.asked[0].title, GetResString(1));
}

TEST_F(FrmKonfigPrintTest, TheContentsPaneIsThereWhereItIsWanted) {
    open([&] {
        print();
        click(check(1));
        print();
    });
    ASSERT_EQ(documents.size(), 2U);
    ASSERT_EQ(documents[0].contents.size(), 2U);
    EXPECT_EQ(documents[0].contents[0].text, "Monitori");
    EXPECT_EQ(documents[0].contents[1].text, "Procesori");
    EXPECT_TRUE(documents[1].contents.empty());
}

// Header and footer -----------------------------------------------------------------------------------------

TEST_F(FrmKonfigPrintTest, TheTypedTextsStandOnThePage) {
    open([&] {
        click(check(0));
        text(0)->setText("Cenovnik za mart");
        text(1)->setText("Cene su bez poreza");
        print();
    });
    EXPECT_EQ(headers.last(), "Cenovnik za mart");
    EXPECT_EQ(footers.last(), "Cene su bez poreza");
    const QString page = documents.back().textOfPage(1);
    EXPECT_TRUE(page.startsWith("Cenovnik za mart\n")) << page.toStdString();
    EXPECT_TRUE(page.contains("Cene su bez poreza 1 / 1")) << page.toStdString();
}

TEST_F(FrmKonfigPrintTest, EmptyTextsLeaveOnlyThePageNumber) {
    open([&] {
        click(check(0));
        print();
    });
    const QString page = documents.back().textOfPage(1);
    EXPECT_TRUE(page.startsWith("Monitori\n")) << page.toStdString();
    EXPECT_TRUE(page.trimmed().endsWith("\n1 / 1")) << page.toStdString();
}

TEST_F(FrmKonfigPrintTest, TheFirmsDataStandAtTheFootWhileTheBoxIsTicked) {
    const QString data = footer({{"frmSettTel", "026/1"}});
    open([&] {
        text(0)->setText("Cenovnik");
        print();
    });
    EXPECT_EQ(footers.last(), data);
    const QString page = documents.back().textOfPage(1);
    EXPECT_TRUE(page.contains(kHead + " 1 / 1\n026/1")) << page.toStdString();
}

TEST_F(FrmKonfigPrintTest, AFirmWithoutAnyNumberHasAFooterOfOneLine) {
    EXPECT_EQ(footer({}), kHead);
}

TEST_F(FrmKonfigPrintTest, EachNumberOfTheFirmComesOnItsLine) {
    EXPECT_EQ(footer({{"frmSettTel", "1"}}), kHead + "\n1");
    EXPECT_EQ(footer({{"frmSettFax", "2"}}), kHead + "\n2");
    EXPECT_EQ(footer({{"frmSettTel", "1"}, {"frmSettFax", "2"}}), kHead + "\n1  ···  2");
    EXPECT_EQ(footer({{"frmSettEmail", "a@b.rs"}}), kHead + "\na@b.rs");
    EXPECT_EQ(footer({{"frmSettWWW", "b.rs"}}), kHead + "\nb.rs");
    EXPECT_EQ(footer({{"frmSettEmail", "a@b.rs"}, {"frmSettWWW", "b.rs"}}), kHead + "\na@b.rs  ···  b.rs");
    EXPECT_EQ(footer({{"frmSettTel", "1"}, {"frmSettWWW", "b.rs"}}), kHead + "\n1\nb.rs");
    EXPECT_EQ(
        footer(
            {{"frmSettTel", "1"}, {"frmSettFax", "2"}, {"frmSettEmail", "a@b.rs"}, {"frmSettWWW", "b.rs"}}),
        kHead + "\n1  ···  2\na@b.rs  ···  b.rs");
}

TEST_F(FrmKonfigPrintTest, AddressTownAndPostalCodeStandOnTheFirstLine) {
    EXPECT_EQ(footer({{"frmSettAdresa", "Trg 2"}}), "Trg 2, Smederevo 11300, Srbija i Crna Gora");
    EXPECT_EQ(footer({{"frmSettGrad", "Nis"}}), "Lipova 1, Nis 11300, Srbija i Crna Gora");
    EXPECT_EQ(footer({{"frmSettZip", "18000"}}), "Lipova 1, Smederevo 18000, Srbija i Crna Gora");
}

// The window ------------------------------------------------------------------------------------------------

TEST_F(FrmKonfigPrintTest, OpensWithTheUsualChoice) {
    open([&] {
        EXPECT_EQ(options().windowTitle(), "Opcije Stampanja");
        EXPECT_EQ(text(0)->text(), "");
        EXPECT_EQ(text(1)->text(), "");
        EXPECT_TRUE(check(0)->isChecked());
        EXPECT_TRUE(check(1)->isChecked());
        EXPECT_TRUE(range(0)->isChecked());
        EXPECT_TRUE(stock(0)->isChecked());
        EXPECT_EQ(rounding()->currentText(), "Ceo broj");
        EXPECT_TRUE(options().isModal());
    });
}

TEST_F(FrmKonfigPrintTest, CaptionsAreTheShopsOwn) {
    EXPECT_EQ(label(0)->text(), "&Header:");
    EXPECT_EQ(label(1)->text(), "&Footer:");
    EXPECT_EQ(check(0)->text(), "K&oristi postojece podatke o firmi (adresa, telefoni i dr.)");
    EXPECT_EQ(check(1)->text(), "Vidljiv sadrzaj izvestaja (navigacioni deo sa leve strane)");
    EXPECT_EQ(part<QGroupBox>("Frame1(0)")->title(), "Sta&mpati Proizvode:");
    EXPECT_EQ(part<QGroupBox>("Frame1(1)")->title(), "&Dodatni Uslov:");
    EXPECT_EQ(range(0)->text(), "&Sve Proizvode");
    EXPECT_EQ(range(1)->text(), "Koji pripadaju samo izabranoj &Grupi");
    EXPECT_EQ(range(2)->text(), "Koji pripadaju samo izabranom &Proizvodjacu");
    EXPECT_EQ(range(3)->text(), "&Koji pripadaju samo izabranoj Grupi i samo izabranom Proizvodjacu");
    EXPECT_EQ(stock(0)->text(), "&Bez obzira na kolicinu proizvoda");
    EXPECT_EQ(stock(1)->text(), "Samo proizvode kojih &Ima na stanju (Kolicina > 0)");
    EXPECT_EQ(stock(2)->text(), "Samo proizvode kojih &Nema na stanju (Kolicina = 0)");
    EXPECT_EQ(part<QLabel>("Label2")->text(), "Broj de&cimala za zaokruzivanje cene:");
    EXPECT_EQ(rounding()->itemText(1), "Jedna decimala");
    EXPECT_EQ(rounding()->itemText(2), "Dve decimale");
    EXPECT_EQ(rounding()->itemData(2).toInt(), 2);
    EXPECT_EQ(part<QPushButton>("Command1(0)")->text(), "Stampaj...");
    EXPECT_EQ(part<QPushButton>("Command1(1)")->text(), "Otkazi");
}

TEST_F(FrmKonfigPrintTest, TheFootersEntryIsGreyWhileTheFirmsDataAreUsed) {
    open([&] {
        EXPECT_FALSE(text(1)->isEnabled());
        const QColor grey = label(1)->palette().color(
            label(1)->isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::WindowText);
        EXPECT_NE(grey, label(0)->palette().color(QPalette::Active, QPalette::WindowText));
        click(check(0));
        EXPECT_TRUE(text(1)->isEnabled());
        EXPECT_TRUE(label(1)->isEnabled());
        click(check(0));
        EXPECT_FALSE(text(1)->isEnabled());
        EXPECT_FALSE(label(1)->isEnabled());
        EXPECT_TRUE(text(0)->isEnabled());
    });
}

TEST_F(FrmKonfigPrintTest, PrintingKeepsTheChoice) {
    open([&] {
        click(check(0));
        click(check(1));
        text(0)->setText("Zaglavlje");
        text(1)->setText("Podnozje");
        click(range(3));
        click(stock(1));
        rounding()->setCurrentIndex(2);
        print();
    });
    EXPECT_EQ(settings::text(own("PageHeader")), "Zaglavlje");
    EXPECT_EQ(settings::text(own("PageFooter")), "Podnozje");
    EXPECT_EQ(settings::text(own("UseFirmsData")), "0");
    EXPECT_EQ(settings::text(own("TOCVisible")), "0");
    EXPECT_EQ(settings::text(own("OptionRangeIndex")), "3");
    EXPECT_EQ(settings::text(own("OptionStateIndex")), "1");
    EXPECT_EQ(settings::text(own("PriceRoundUp")), "2");
    closeOptions();
    open([&] {
        EXPECT_EQ(text(0)->text(), "Zaglavlje");
        EXPECT_EQ(text(1)->text(), "Podnozje");
        EXPECT_TRUE(text(1)->isEnabled());
        EXPECT_FALSE(check(0)->isChecked());
        EXPECT_FALSE(check(1)->isChecked());
        EXPECT_TRUE(range(3)->isChecked());
        EXPECT_TRUE(stock(1)->isChecked());
        EXPECT_EQ(rounding()->currentText(), "Dve decimale");
    });
}

TEST_F(FrmKonfigPrintTest, CancelKeepsNothingButThePlace) {
    open([&] {
        text(0)->setText("Zaglavlje");
        click(range(2));
        options().move(150, 120);
        QTest::mouseClick(part<QPushButton>("Command1(1)"), Qt::LeftButton);
        EXPECT_FALSE(options().isVisible());
    });
    const QString place = placeOf(&options());
    closeOptions();
    EXPECT_EQ(settings::text(own("PageHeader")), "");
    EXPECT_EQ(settings::text(own("OptionRangeIndex")), "0");
    EXPECT_EQ(settings::text(own("WindowData")), place);
    EXPECT_NE(place, "1800;1800");
    EXPECT_TRUE(documents.empty());
    open([&] { EXPECT_EQ(placeOf(&options()), place); });
}

TEST_F(FrmKonfigPrintTest, AMinimisedWindowKeepsItsOldPlace) {
    settings::setText(own("WindowData"), "2100;2400");
    open([&] {
        options().move(500, 300);
        options().setWindowState(Qt::WindowMinimized);
    });
    closeOptions();
    EXPECT_EQ(settings::text(own("WindowData")), "2100;2400");
}

TEST_F(FrmKonfigPrintTest, SettingsThatNameNoChoiceGiveTheFirstOne) {
    for (const char* key : {"OptionRangeIndex", "OptionStateIndex", "PriceRoundUp"}) {
        settings::setText(own(key), "9");
    }
    open([&] {
        EXPECT_TRUE(range(0)->isChecked());
        EXPECT_TRUE(stock(0)->isChecked());
        EXPECT_EQ(rounding()->currentIndex(), 0);
    });
}

TEST_F(FrmKonfigPrintTest, EnterInAnEntryGoesOnAndPrintsNothing) {
    open([&] {
        click(check(0));
        text(0)->setFocus();
        QTest::keyClick(text(0), Qt::Key_Return);
        EXPECT_TRUE(text(1)->hasFocus());
        QTest::keyClick(text(1), Qt::Key_Enter, Qt::KeypadModifier);
        EXPECT_TRUE(check(0)->hasFocus());
    });
    EXPECT_TRUE(documents.empty());
}

TEST_F(FrmKonfigPrintTest, EnterPressesTheButtonWithTheFocusOrElsePrint) {
    open([&] {
        range(0)->setFocus();
        QTest::keyClick(range(0), Qt::Key_Return);
        EXPECT_EQ(documents.size(), 1U);
        part<QPushButton>("Command1(0)")->setFocus();
        QTest::keyClick(options().focusWidget(), Qt::Key_Enter, Qt::KeypadModifier);
        EXPECT_EQ(documents.size(), 2U);
        part<QPushButton>("Command1(1)")->setFocus();
        QTest::keyClick(options().focusWidget(), Qt::Key_Return);
        EXPECT_FALSE(options().isVisible());
        EXPECT_EQ(documents.size(), 2U);
    });
}

TEST_F(FrmKonfigPrintTest, TabGoesThroughTheWindowFromTheTop) {
    open([&] {
        click(check(0));
        text(0)->setFocus();
        const QList<QWidget*> order{text(1),
                                    check(0),
                                    check(1),
                                    range(0),
                                    stock(0),
                                    rounding(),
                                    part<QPushButton>("Command1(0)"),
                                    part<QPushButton>("Command1(1)")};
        for (QWidget* next : order) {
            QTest::keyClick(options().focusWidget(), Qt::Key_Tab);
            EXPECT_EQ(options().focusWidget()->objectName(), next->objectName());
        }
    });
}

TEST_F(FrmKonfigPrintTest, MnemonicsChooseFromTheKeyboard) {
    open([&] {
        // A button goes down first, as under a finger.
        const auto isOn = [](QAbstractButton* button) { return [button] { return button->isChecked(); }; };
        QTest::keyClick(&options(), Qt::Key_K, Qt::AltModifier);
        EXPECT_TRUE(QTest::qWaitFor(isOn(range(3))));
        QTest::keyClick(&options(), Qt::Key_N, Qt::AltModifier);
        EXPECT_TRUE(QTest::qWaitFor(isOn(stock(2))));
        QTest::keyClick(&options(), Qt::Key_O, Qt::AltModifier);
        EXPECT_TRUE(QTest::qWaitFor([this] { return !check(0)->isChecked(); }));
        QTest::keyClick(&options(), Qt::Key_F, Qt::AltModifier);
        EXPECT_TRUE(text(1)->hasFocus());
        QTest::keyClick(&options(), Qt::Key_H, Qt::AltModifier);
        EXPECT_TRUE(text(0)->hasFocus());
        QTest::keyClick(&options(), Qt::Key_C, Qt::AltModifier);
        EXPECT_TRUE(rounding()->hasFocus());
    });
}

// Failures --------------------------------------------------------------------------------------------------

TEST_F(FrmKonfigPrintTest, AFailureIsToldWithTheOldNameOfTheWindow) {
    closeDatabases();
    settings::setText(settings::DatabasePath, path("Nema.mdb"));
    open([&] { print(); });
    EXPECT_TRUE(documents.empty());
    ASSERT_EQ(boxes.asked.size(), 1);
    static const QRegularExpression kText(
        R"(^\[3024\] .+ Prog\. linija: \d+; frmDobavljaciAll -> DoPrintDataReport procedure\.$)");
    EXPECT_TRUE(kText.match(boxes.lastText()).hasMatch()) << boxes.lastText().toStdString();
    EXPECT_EQ(boxes.asked[0].icon, BoxIcon::Exclamation);
    EXPECT_EQ(boxes.asked[0].title, GetResString(1));
}

TEST_F(FrmKonfigPrintTest, AFailureLeavesTheNextListUntouched) {
    open([&] {
        closeDatabases();
        settings::setText(settings::DatabasePath, path("Nema.mdb"));
        print();
        settings::setText(settings::DatabasePath, databaseFile());
        print();
    });
    EXPECT_EQ(boxes.asked.size(), 1);
    ASSERT_EQ(documents.size(), 1U);
    EXPECT_EQ(namesOn(textOf(documents[0])), "17 inca,19 inca,21 inca,Brzi,Spori");
}

TEST_F(FrmKonfigPrintTest, ADatabaseWithoutTheViewIsToldOf) {
    openDatabase().QueryDefs().Delete("OpremaGrupe");
    open([&] { print(); });
    ASSERT_EQ(boxes.asked.size(), 1);
    EXPECT_TRUE(boxes.lastText().startsWith("[3078] ")) << boxes.lastText().toStdString();
}

TEST_F(FrmKonfigPrintTest, SettingsThatCannotBeKeptAreToldAndTheListIsShown) {
    open([&] {
        QDir(path("settings")).removeRecursively();
        QFile blocked(path("settings"));
        ASSERT_TRUE(blocked.open(QIODevice::WriteOnly));
        blocked.close();
        print();
    });
    EXPECT_EQ(documents.size(), 1U);
    ASSERT_EQ(boxes.asked.size(), 1);
    EXPECT_EQ(boxes.asked[0].icon, BoxIcon::Critical);
    EXPECT_TRUE(boxes.lastText().startsWith('[')) << boxes.lastText().toStdString();
}

TEST_F(FrmKonfigPrintTest, TheFileIsFreeAgainAfterTheList) {
    closeDatabases();
    open([&] { print(); });
    ASSERT_EQ(documents.size(), 1U);
    SecondProcess other([this](const SecondProcess::Side& side) {
        dao::Database file = dao::DBEngine::OpenDatabase(databaseFile().toStdString(), true, false,
                                                         connectText().toStdString());
        file.Close();
        side.ready();
    });
    EXPECT_TRUE(other.waitReady());
}

// From the catalogue ----------------------------------------------------------------------------------------

TEST_F(FrmKonfigPrintTest, TheCatalogueHandsOverItsSelection) {
    show([&] {
        clickRow(groups(), "Procesori");
        clickRow(manufacturers(), "Celta");
        products().setFocus();
        inModal<frmKonfigPrint>(
            [&] { window().toolbarButton("print")->trigger(); },
            [&](frmKonfigPrint& opened) {
                opened.findChild<QRadioButton*>("Option1(3)")->setChecked(true);
                EXPECT_EQ(opened.PriceListQuery(), price_list::statement({3, 0, processors, celta}));
                QTest::keyClick(&opened, Qt::Key_Escape);
            });
        EXPECT_TRUE(window().isVisible());
    });
}

TEST_F(FrmKonfigPrintTest, ThePopupMenuOpensItToo) {
    show([&] {
        products().setFocus();
        inModal<frmKonfigPrint>(
            [&] {
                window().cP->restore("mnu_lvwpopup");
                window().cP_Click(window().cP->indexOf("lvprint"));
            },
            [&](frmKonfigPrint& opened) { opened.reject(); });
    });
}

TEST_F(FrmKonfigPrintTest, WithAGroupSelectedOnlyBothConditionsStillMakeAStatement) {
    show([&] {
        clickRow(groups(), "Monitori");
        manufacturers().setCurSel(-1);
        inModal<frmKonfigPrint>(
            [&] { window().PrintPriceList(); },
            [&](frmKonfigPrint& opened) {
                opened.findChild<QRadioButton*>("Option1(3)")->setChecked(true);
                EXPECT_EQ(opened.PriceListQuery(),
                          price_list::statement({3, 0, monitors, manufacturers().selectedData()}));
                QTest::mouseClick(opened.findChild<QPushButton*>("Command1(0)"), Qt::LeftButton);
                EXPECT_EQ(boxes.lastText(), kNothing);
                opened.reject();
            });
    });
}
