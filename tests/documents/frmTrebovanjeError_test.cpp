#include "documents/frmTrebovanjeError.h"

#include <QScreen>
#include <QTest>
#include <QTimer>

#include "common/list_cells.h"
#include "documents/requisition_columns.h"
#include "platform/system/launch.h"
#include "support/fixture.h"
#include "support/sizes.h"

namespace {

class CriticalProducts : public DeliveredFixture {
 protected:
    void SetUp() override {
        DeliveredFixture::SetUp();
        CeneDinarske = false;
        platform::setShellExecuteHook([this](const QString& target) {
            launched.append(target);
            return answer;
        });
        window = std::make_unique<frmTrebovanjeError>();
    }
    void TearDown() override {
        window.reset();
        platform::setShellExecuteHook({});
        CeneDinarske = true;
        DeliveredFixture::TearDown();
    }
    void add(const QString& key, qint32 code, const QString& name = "Disk", float price = 1234.5F) {
        window->AddListItem(key, "Seagate", "Diskovi", name, "opis", price, 2.5F, code);
    }
    QString keys() {
        QStringList all;
        for (int i = 1; i <= window->ListView1->count(); ++i) {
            all.append(window->ListView1->item(i).Key + ":" + window->ListView1->item(i).SmallIcon);
        }
        return all.join(' ');
    }
    QString file() {
        QFile report(path("TError.txt"));
        EXPECT_TRUE(report.open(QIODevice::ReadOnly));
        return QString::fromUtf8(report.readAll());
    }
    static QString kept(const char* key) {
        return settings::text(settings::find("frmTrebovanjeError", QLatin1String(key)));
    }
    void show(const std::function<void()>& work) {
        QTimer::singleShot(0, window.get(), [&] {
            ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
            work();
            if (window->isVisible()) {
                window->reject();
            }
        });
        window->Display();
    }

    std::unique_ptr<frmTrebovanjeError> window;
    QStringList launched;
    int answer = 42;
};

const QString kHead =
    "Proizvodi koji nisu mogli da budu trebovani jer\n"
    "nisu pronadjeni u bazi podataka (najverovatnije\n"
    "zato sto su izbrisani od strane drugih korisnika):\n\n\n";

TEST_F(CriticalProducts, ExplainsTheMarksAndHasSixColumns) {
    EXPECT_EQ(window->windowTitle(), " Kriticni Proizvodi");
    EXPECT_EQ(
        window->Text1->text(),
        "Proizvodi u listi nisu pronadjeni u bazi podataka.\n"
        "Proizvodi oznaceni brojem 1 nisu pronadjeni u tabeli trebovanih stavki, najverovatnije zato sto "
        "ih je neko od korisnika odatle vec izbrisao.\n"
        "Proizvodi oznaceni brojem 2 nisu pronadjeni u tabeli proizvoda, najverovatnije zato sto ih je "
        "neko od korisnika odatle vec izbrisao.");
    QStringList headers;
    for (int i = 1; i <= window->ListView1->columns().count(); ++i) {
        headers.append(window->ListView1->columns().text(i));
    }
    EXPECT_EQ(headers.join('|'), "Proizvodjac|Grupa|Naziv|Opis|Cena [EUR]|Kolicina");
    EXPECT_TRUE(boxes.asked.isEmpty());
}

TEST_F(CriticalProducts, FiguresStandAtTheRightAndTheButtonsSayWhatTheyDo) {
    add("K1", 1);
    for (int column = 1; column <= 6; ++column) {
        const int wanted = column >= 5 ? Qt::AlignRight : Qt::AlignLeft;
        const QAbstractItemModel& model = *window->ListView1->model();
        EXPECT_TRUE(model.headerData(column - 1, Qt::Horizontal, Qt::TextAlignmentRole).toInt() & wanted);
        EXPECT_TRUE(model.index(0, column - 1).data(Qt::TextAlignmentRole).toInt() & wanted);
    }
    EXPECT_EQ(window->Command1[0]->objectName(), "Command1(0)");
    EXPECT_EQ(window->Command1[1]->objectName(), "Command1(1)");
    EXPECT_EQ(window->Command1[1]->text(), "&Stampaj...");
}

TEST_F(CriticalProducts, CodeOneGoesToTheEndWithTheMarkTwo) {
    add("K1", 1);
    add("K2", 1);
    EXPECT_EQ(keys(), "K1:dva K2:dva");
    const platform::ListItem& row = window->ListView1->item(1);
    EXPECT_EQ(row.Text, "Seagate");
    EXPECT_EQ(row.subItems.join('|'), "Diskovi|Disk|opis|1,234.50|2.5");
}

TEST_F(CriticalProducts, AnyOtherCodeGoesToTheTopWithTheMarkOne) {
    add("K1", 1);
    add("K2", 2);
    add("K3", 0);
    EXPECT_EQ(keys(), "K3:jedan K2:jedan K1:dva");
}

TEST_F(CriticalProducts, EachMarkIsAPictureOfItsOwn) {
    add("K1", 1);
    add("K2", 2);
    const auto picture = [&](int row) {
        const QVariant icon = window->ListView1->model()->index(row, 0).data(Qt::DecorationRole);
        return icon.value<QIcon>().pixmap(16).toImage();
    };
    EXPECT_FALSE(picture(0).isNull());
    EXPECT_FALSE(picture(1).isNull());
    EXPECT_NE(picture(0), picture(1));
}

TEST_F(CriticalProducts, ThePriceHeaderTellsTheUnit) {
    CeneDinarske = true;
    add("K1", 1);
    EXPECT_EQ(window->ListView1->columns().text(5), "Cena [DIN]");
}

TEST_F(CriticalProducts, AProductTwiceIsToldAndLosesNoRow) {
    add("K1", 1);
    add("K2", 1);
    add("K1", 2);
    EXPECT_EQ(keys(), "K1:dva K2:dva");
    ASSERT_EQ(boxes.asked.size(), 1);
    EXPECT_EQ(boxes.asked[0].icon, platform::BoxIcon::Exclamation);
    EXPECT_TRUE(boxes.lastText().startsWith("[35602] ")) << boxes.lastText().toStdString();
    EXPECT_TRUE(boxes.lastText().endsWith("\nOccured in procedure AddListItem of Form frmTrebovanjeError"));
}

TEST_F(CriticalProducts, TheFileNamesTheTableByTheMark) {
    add("K1", 1);
    add("K2", 2, "Ploca");
    QString errorText = "x";
    EXPECT_TRUE(window->PrintReport(errorText));
    EXPECT_EQ(errorText, "");
    EXPECT_EQ(file(), kHead +
                          "Seagate - Diskovi     (Nije pronadjen u tabeli trebovanja)\n"
                          "Ploca - opis\n"
                          "Cena [EUR]: 1,234.50  x  2.5 kom.\n\n"
                          "Seagate - Diskovi     (Nije pronadjen u tabeli proizvoda)\n"
                          "Disk - opis\n"
                          "Cena [EUR]: 1,234.50  x  2.5 kom.\n\n");
    EXPECT_EQ(launched, QStringList{path("TError.txt")});
}

TEST_F(CriticalProducts, ThePriceIsFormattedOnceMoreInTheFile) {
    QLocale::setDefault(QLocale("de_DE"));
    CeneDinarske = true;
    add("K1", 1);
    window->ListView1->changeItem(
        "K1", [](platform::ListItem& row) { setCell(row, RequisitionColumn::SerialNumber, "1234,5678"); });
    QString errorText;
    EXPECT_TRUE(window->PrintReport(errorText));
    EXPECT_TRUE(file().contains("\nCena [DIN]: 1.234,57  x  2,5 kom.\n\n")) << file().toStdString();
}

TEST_F(CriticalProducts, AnEmptyListPrintsNothing) {
    QString errorText;
    window->PrintReport(errorText);
    EXPECT_EQ(boxes.lastText(), "Nema podataka koji bi mogli da se stampaju.");
    EXPECT_EQ(boxes.asked[0].icon, platform::BoxIcon::Information);
    EXPECT_FALSE(QFile::exists(path("TError.txt")));
    EXPECT_TRUE(launched.isEmpty());
}

TEST_F(CriticalProducts, AFileThatCannotBeWrittenIsTold) {
    ASSERT_TRUE(QDir().mkpath(path("TError.txt")));
    add("K1", 1);
    show([&] { QTest::mouseClick(window->Command1[1], Qt::LeftButton); });
    ASSERT_EQ(boxes.asked.size(), 1);
    EXPECT_TRUE(boxes.lastText().startsWith("Neocekivana greska prilikom generisanja izvestaja:\n\n["))
        << boxes.lastText().toStdString();
    EXPECT_TRUE(boxes.lastText().endsWith("\nOccured in procedure PrintReport of Form frmTrebovanjeError"));
    EXPECT_EQ(boxes.asked[0].icon, platform::BoxIcon::Exclamation);
    EXPECT_TRUE(launched.isEmpty());
}

TEST_F(CriticalProducts, CtrlPPrintsFromTheListAndFromTheButtons) {
    add("K1", 1);
    show([&] {
        EXPECT_TRUE(window->ListView1->hasFocus());
        QTest::keyClick(window->ListView1, Qt::Key_P, Qt::ControlModifier);
        window->Command1[0]->setFocus();
        QTest::keyClick(window->Command1[0], Qt::Key_P, Qt::ControlModifier);
    });
    EXPECT_EQ(launched.size(), 2);
}

TEST_F(CriticalProducts, EnterOnAButtonPressesThatButtonAndElsewhereItCloses) {
    add("K1", 1);
    show([&] {
        window->Command1[1]->setFocus();
        QTest::keyClick(window->Command1[1], Qt::Key_Return);
        EXPECT_EQ(launched.size(), 1);
        QTest::keyClick(window->Command1[1], Qt::Key_Enter, Qt::KeypadModifier);
        EXPECT_EQ(launched.size(), 2);
        EXPECT_TRUE(window->isVisible());
        window->Command1[0]->setFocus();
        QTest::keyClick(window->Command1[0], Qt::Key_Return);
        EXPECT_FALSE(window->isVisible());
    });
    show([&] {
        window->ListView1->setFocus();
        QTest::keyClick(window->ListView1, Qt::Key_Return);
        EXPECT_FALSE(window->isVisible());
    });
    EXPECT_EQ(launched.size(), 2);
}

TEST_F(CriticalProducts, TheButtonEscapeAndTheCloseBoxHideIt) {
    show([&] {
        QTest::mouseClick(window->Command1[0], Qt::LeftButton);
        EXPECT_FALSE(window->isVisible());
    });
    show([&] {
        QTest::keyClick(window->ListView1, Qt::Key_Escape);
        EXPECT_FALSE(window->isVisible());
    });
    show([&] {
        window->close();
        EXPECT_FALSE(window->isVisible());
    });
}

TEST_F(CriticalProducts, TheFirstTimeItStandsAtItsUsualPlace) {
    EXPECT_EQ(kept("WindowData"), "800;800;12000;8000");
    EXPECT_EQ(window->pos(), QPoint(53, 53));
    EXPECT_EQ(window->size(), sizeOfTwips(12000, 8000));
    for (int column = 1; column <= 6; ++column) {
        EXPECT_EQ(window->ListView1->columns().width(column), 1440);
        EXPECT_EQ(window->ListView1->columns().position(column), column);
    }
}

TEST_F(CriticalProducts, MinimisedItKeepsItsColumnsAndNotItsPlace) {
    show([&] {
        window->ListView1->columns().setWidth(2, 3000);
        window->move(30, 40);
        window->setWindowState(Qt::WindowMinimized);
    });
    window->Unload();
    EXPECT_EQ(kept("WindowData"), "800;800;12000;8000");
    EXPECT_EQ(kept("LVWColumnWidths"), "1440;3000;1440;1440;1440;1440");
}

TEST_F(CriticalProducts, TextListAndButtonsFollowTheWindow) {
    show([&] {
        const auto grown = [&](const QSize& by) {
            const QSize list = window->ListView1->size();
            const QPoint button = window->Command1[0]->pos();
            const int text = window->Text1->width();
            window->resize(window->size() + by);
            QCoreApplication::processEvents();
            EXPECT_EQ(window->ListView1->width() - list.width(), by.width());
            EXPECT_EQ(window->Text1->width() - text, by.width());
            EXPECT_EQ(window->Command1[0]->pos() - button, QPoint(by.width(), by.height()));
            return window->ListView1->height() - list.height();
        };
        EXPECT_GT(grown({0, 120}), 100);
        EXPECT_LT(grown({0, -150}), -100);
        grown({-120, 0});
    });
}

// A dark line, and under it a light one that reaches a little further at both ends.
TEST_F(CriticalProducts, ARuleIsEngravedAboveTheButtons) {
    show([&] {
        auto* rule = window->findChild<QWidget*>("Line1");
        ASSERT_NE(rule, nullptr);
        EXPECT_GT(rule->y(), window->ListView1->geometry().bottom());
        EXPECT_LT(rule->geometry().bottom(), window->Command1[0]->y());
        const QImage image = rule->grab().toImage();
        const QRgb dark = rule->palette().color(QPalette::Dark).rgb();
        const QRgb light = rule->palette().color(QPalette::Light).rgb();
        const int middle = image.width() / 2, last = image.width() - 1;
        EXPECT_EQ(image.pixel(middle, 0), dark);
        EXPECT_EQ(image.pixel(middle, 1), light);
        EXPECT_NE(image.pixel(0, 0), dark);
        EXPECT_NE(image.pixel(last, 0), dark);
        EXPECT_EQ(image.pixel(0, 1), light);
        EXPECT_EQ(image.pixel(last, 1), light);
    });
}

TEST_F(CriticalProducts, ColumnsAndPlaceAreKeptAtUnload) {
    window->ListView1->columns().setWidth(2, 3000);
    window->ListView1->columns().setPositions({2, 1, 3, 4, 5, 6});
    window->resize(700, 500);
    window->move(30, 40);
    window->Unload();
    EXPECT_EQ(kept("LVWColumnWidths"), "1440;3000;1440;1440;1440;1440");
    EXPECT_EQ(kept("LVWColumnPositions"), "2;1;3;4;5;6");
    const double twips = 15 / platform::letterFactor();
    EXPECT_EQ(kept("WindowData"), QString("450;600;%1;%2").arg(qRound(700 * twips)).arg(qRound(500 * twips)));
    settings::setText(settings::find("frmTrebovanjeError", "WindowData"), "0;0;10500;7500");
    window.reset();
    EXPECT_EQ(kept("WindowData"), "0;0;10500;7500") << "kept once";
    window = std::make_unique<frmTrebovanjeError>();
    EXPECT_EQ(window->ListView1->columns().width(2), 3000);
    EXPECT_EQ(window->size(), sizeOfTwips(10500, 7500));
}

TEST_F(CriticalProducts, WidthsThatCannotBeUsedAreToldAndTheWindowWorks) {
    window->Unload();
    settings::setText(settings::find("frmTrebovanjeError", "LVWColumnWidths"),
                      "1440;1440;1440;1440;1440;1440;9");
    window = std::make_unique<frmTrebovanjeError>();
    ASSERT_EQ(boxes.asked.size(), 1);
    EXPECT_EQ(boxes.asked[0].icon, platform::BoxIcon::Critical);
    EXPECT_TRUE(
        boxes.lastText().startsWith("Neocekivana greska prilikom stvaranja ListView kontrole:\n\n[35600] "))
        << boxes.lastText().toStdString();
    EXPECT_TRUE(boxes.lastText().contains("\nLinija koda: "));
    add("K1", 1);
    EXPECT_EQ(window->ListView1->count(), 1);
}

}  // namespace
