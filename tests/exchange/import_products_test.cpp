#include <gmock/gmock.h>

#include <QDir>
#include <QFile>

#include "common/settings.h"
#include "exchange/command.h"

namespace {

using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;

class SuppliersList : public CommandFixture {
 protected:
    struct Product {
        std::string group, manufacturer, name, description, note, unit;
        float price = 0, stock = 0;
    };

    void SetUp() override {
        CommandFixture::SetUp();
        deliver("Tarvello.mdb");
        before_ = rowsOf(path(), "Oprema");
    }

    QString list(const QByteArray& text) const {
        QFile file(at("list.csv"));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        return file.fileName();
    }
    Answer import(const QByteArray& text, const QStringList& more = {}) const {
        return run(QStringList{"import-products", path(), list(text)} + more);
    }
    QString workbook(const char* name, const QStringList& rows) const {
        QProcess writer;
        writer.start(
            "/usr/bin/python3",
            QStringList{QString::fromUtf8(tests::kSourceFolder) + "/exchange/write_list.py", at(name)} +
                rows);
        EXPECT_TRUE(writer.waitForFinished(60000));
        EXPECT_EQ(writer.exitCode(), 0) << writer.readAllStandardError().toStdString();
        return at(name);
    }

    Product product(const std::string& name) const {
        dao::Database database = open(path());
        dao::Recordset rows = database.OpenRecordset(
            "SELECT Grupe.Grupa, Proizvodjaci.Proizvodjac, Oprema.* FROM (Oprema INNER JOIN Grupe ON "
            "Oprema.IDGrupe = "
            "Grupe.ID) INNER JOIN Proizvodjaci ON Oprema.IDProizvodjaca = Proizvodjaci.ID WHERE "
            "Oprema.Naziv='" +
            name + "'");
        Product found;
        if (!rows.EOF()) {
            found = {rows["Grupa"].asText(),  rows["Proizvodjac"].asText(), rows["Naziv"].asText(),
                     rows["Opis"].asText(),   rows["Napomena"].asText(),    rows["JM"].asText(),
                     rows["Cena"].asSingle(), rows["Stanje"].asSingle()};
        }
        database.Close();
        return found;
    }
    void expectNothingWritten() const { EXPECT_EQ(rowsOf(path(), "Oprema"), before_); }
    // The first product of the delivered shop, as a supplier would have it.
    Product known() const {
        dao::Database database = open(path());
        dao::Recordset rows = database.OpenRecordset("SELECT Naziv FROM Oprema WHERE ID=1");
        const std::string name = rows["Naziv"].asText();
        database.Close();
        return product(name);
    }

    std::int64_t before_ = 0;
};

constexpr const char* kHeading = "Grupa;Proizvođač;Naziv;Opis;Cena;Stanje;JM;Napomena\n";

TEST_F(SuppliersList, NewProductsComeWithTheirGroupManufacturerAndUnit) {
    const Answer answer = import(QByteArray(kHeading) +
                                 "Mrežna oprema;Tenda;Svič 8 portova;gigabit;1.234,50;7;Par;do praznika\n");
    ASSERT_EQ(answer.status, 0) << answer.errors;
    EXPECT_THAT(answer.out,
                HasSubstr("1 new group: MREŽNA OPREMA.\n1 new manufacturer: TENDA.\n1 new unit: Par.\n"
                          "1 product added, 0 products changed, 0 products as before, 0 bad lines.\n"));
    const Product made = product("Svič 8 portova");
    EXPECT_EQ(made.group, "MREŽNA OPREMA");
    EXPECT_EQ(made.manufacturer, "TENDA");
    EXPECT_EQ(made.description, "gigabit");
    EXPECT_EQ(made.note, "do praznika");
    EXPECT_EQ(made.unit, "Par");
    EXPECT_EQ(made.price, 1234.5F);
    EXPECT_EQ(made.stock, 0);  // what the supplier has is not in our store
    EXPECT_EQ(rowsOf(path(), "SELECT * FROM JM WHERE Naziv='Par'"), 1);
}

TEST_F(SuppliersList, StockComesOnlyWhereItIsAskedFor) {
    const Product one = known();
    const QByteArray text =
        QByteArray(kHeading) +
        QByteArray::fromStdString(one.group + ';' + one.manufacturer + ';' + one.name +
                                  ";novi opis;12,34;99,5;kg;nota\nNOVO;NOVO;Novo;;1;3;;\n");
    ASSERT_EQ(import(text).status, 0);
    Product now = product(one.name);
    EXPECT_EQ(now.price, 12.34F);
    EXPECT_EQ(now.description, "novi opis");
    EXPECT_EQ(now.stock, one.stock);
    EXPECT_EQ(now.unit, one.unit);
    EXPECT_EQ(now.note, one.note);
    EXPECT_EQ(product("Novo").unit, "Kom.");
    const Answer again = import(text, {"--stock"});
    ASSERT_EQ(again.status, 0) << again.errors;
    EXPECT_EQ(product(one.name).stock, 99.5F);
    EXPECT_EQ(product("Novo").stock, 3);
    EXPECT_EQ(rowsOf(path(), "Oprema"), before_ + 1);
}

TEST_F(SuppliersList, ANameThatStandsElsewhereIsABadLine) {
    const Product one = known();
    const Answer answer = import(QByteArray(kHeading) + "NOVO;NOVO;Novo;;1;;;\nDRUGA;" +
                                 QByteArray::fromStdString(one.manufacturer + ';' + one.name) + ";;1;;;\n");
    EXPECT_EQ(answer.status, 1);
    EXPECT_THAT(answer.errors,
                HasSubstr("line 3, column Naziv: \"" + one.name + "\" is the name of another product"));
    EXPECT_THAT(answer.errors, HasSubstr("1 bad line; nothing was written."));
    expectNothingWritten();
    EXPECT_EQ(rowsOf(path(), "SELECT * FROM Grupe WHERE Grupa='DRUGA' OR Grupa='NOVO'"), 0);
}

TEST_F(SuppliersList, EachBadLineIsToldAndTheGoodOnesMayBeTaken) {
    const QByteArray text = QByteArray(kHeading) +
                            "A;B;Prvi;;na upit;;;\n"
                            ";B;Drugi;;1;;;\n"
                            "A;B;;;1;;;\n"
                            "A;B;Treci;;;;;\n"
                            "A;B;Cetvrti;;-1;;;\n"
                            "A;B;Peti;;5 RSD;;;\n"
                            "A;B;Sesti;;1;malo;;\n"
                            "A;B;Sedmi;;1;;predugacka jedinica za merenje;\n"
                            "A;B;Dobar;;1,5;;;\n"
                            "A;B;dobar;;2,5;;;\n"
                            "A;B;" +
                            QByteArray(256, 'x') + ";;1;;;\n";
    const Answer answer = import(text);
    EXPECT_EQ(answer.status, 1);
    for (const char* const told :
         {"line 2, column Cena: \"na upit\" is no number.", "line 3, column Grupa: is empty.",
          "line 4, column Naziv: is empty.", "line 5, column Cena: is empty.",
          "line 6, column Cena: \"-1\" is below zero.",
          "line 7, column Cena: \"5 RSD\" is in another currency than euro.",
          "line 8, column Stanje: \"malo\" is no number.", "line 9, column JM: is longer than 25 characters.",
          "line 11, column Naziv: \"dobar\" stands in line 10, too.",
          "line 12, column Naziv: is longer than 255 characters.", "10 bad lines; nothing was written."}) {
        EXPECT_THAT(answer.errors, HasSubstr(told));
    }
    expectNothingWritten();
    const Answer skipping = import(text, {"--skip-bad"});
    EXPECT_EQ(skipping.status, 0) << skipping.errors;
    EXPECT_THAT(skipping.errors, HasSubstr("line 2, column Cena"));
    EXPECT_EQ(rowsOf(path(), "Oprema"), before_ + 1);
    EXPECT_EQ(product("Dobar").price, 1.5F);
}

TEST_F(SuppliersList, TryShowsATableAndChangesNothing) {
    const Product one = known();
    const Answer answer = import(
        QByteArray(kHeading) + QByteArray::fromStdString(one.group + ';' + one.manufacturer + ';' + one.name +
                                                         ";;77,5;;;\nNOVO;NOVO;Novo;;1;;;\n"),
        {"--try"});
    EXPECT_EQ(answer.status, 0) << answer.errors;
    EXPECT_THAT(answer.out, ContainsRegex("Line +What +Group +Manufacturer +Name +Price"));
    EXPECT_THAT(answer.out, ContainsRegex("2 +changed .* -> 77\\.5"));
    EXPECT_THAT(answer.out, ContainsRegex("3 +new +NOVO +NOVO +Novo +1"));
    EXPECT_THAT(answer.out, HasSubstr("1 product would be added, 1 product would be changed"));
    expectNothingWritten();
    EXPECT_EQ(product(one.name).price, one.price);
    EXPECT_EQ(rowsOf(path(), "SELECT * FROM Grupe WHERE Grupa='NOVO'"), 0);
}

TEST_F(SuppliersList, RequisitionsTakeOverADescriptionAsAfterAChangeByHand) {
    deliver("Demo.mdb");
    std::string name, description;
    {
        dao::Database database = open(path());
        dao::Recordset rows = database.OpenRecordset(
            "SELECT Oprema.Naziv, Oprema.Opis FROM Oprema INNER JOIN InvoiceData ON Oprema.ID = "
            "InvoiceData.OpremaID "
            "WHERE InvoiceData.Opis=Oprema.Opis AND Oprema.Opis<>''");
        ASSERT_FALSE(rows.EOF());
        name = rows.Fields(0).Value().asText();
        database.Close();
    }
    const Product one = product(name);
    const Answer answer =
        import(QByteArray(kHeading) + QByteArray::fromStdString(one.group + ';' + one.manufacturer + ';' +
                                                                name + ";drugi opis;1;;;\n"));
    ASSERT_EQ(answer.status, 0) << answer.errors;
    EXPECT_THAT(answer.out, ContainsRegex("requisitioned rows? took over a description"));
    EXPECT_GE(rowsOf(path(), "SELECT * FROM InvoiceData WHERE Opis='drugi opis'"), 1);
}

// ----- numbers and currency

TEST_F(SuppliersList, DinarsComeAtTheShopsRate) {
    platform::setSettingsFolder(at("Tarvello"));
    settings::setText(settings::KursKupovni, "117.2");
    ASSERT_EQ(import("group,brand,name,price (RSD)\nA,B,Prvi,1172\n").status, 0);
    EXPECT_EQ(product("Prvi").price, 10);
    ASSERT_EQ(import("group,brand,name,price\nA,B,Drugi,100\n", {"--currency", "din", "--rate", "80"}).status,
              0);
    EXPECT_EQ(product("Drugi").price, 1.25F);
    ASSERT_EQ(import("group,brand,name,price\nA,B,Treci,100\n").status, 0);
    EXPECT_EQ(product("Treci").price, 100);
}

TEST_F(SuppliersList, ANumberThatMayBeReadInTwoWaysIsNotGuessed) {
    const char* const text = "group;brand;name;price\nA;B;Prvi;1.234\n";
    const Answer answer = import(text);
    EXPECT_EQ(answer.status, 1);
    EXPECT_THAT(answer.errors, HasSubstr("\"1.234\" may be read in two ways; say --decimal comma or point."));
    expectNothingWritten();
    ASSERT_EQ(import(text, {"--decimal", "comma"}).status, 0);
    EXPECT_EQ(product("Prvi").price, 1234);
    ASSERT_EQ(import("group;brand;name;price\nA;B;Drugi;1.234\nA;B;Treci;9,99\n").status, 0);
    EXPECT_EQ(product("Drugi").price, 1234);
}

TEST_F(SuppliersList, CapitalsAreUpToTheShop) {
    platform::setSettingsFolder(at("Tarvello"));
    settings::setText(settings::MakeProperCase, "False");
    ASSERT_EQ(import("group;brand;name;price\nMreža;Tenda;Prvi;1\n").status, 0);
    EXPECT_EQ(product("Prvi").group, "Mreža");
}

// ----- columns

TEST_F(SuppliersList, ColumnsMayBeToldByHeadingOrNumber) {
    const char* const text = "šifra;a;b;c;VP cena;MP cena\nx;Grupa 1;Firma;Prvi;1,5;2,5\n";
    EXPECT_THAT(import(text).errors,
                HasSubstr("The price may be in the column \"VP cena\" or in \"MP cena\""));
    EXPECT_THAT(import(text, {"--map", "price=VP cena"}).errors, HasSubstr("there is no column for name"));
    const Answer answer =
        import(text, {"--map", "price=MP cena,grupa=2", "--map", "proizvođač=b", "--map", "name=C"});
    ASSERT_EQ(answer.status, 0) << answer.errors;
    EXPECT_EQ(product("Prvi").price, 2.5F);
    EXPECT_EQ(product("Prvi").group, "GRUPA 1");
    EXPECT_EQ(import(text, {"--map", "colour=2"}).status, 1);
    EXPECT_EQ(import(text, {"--map", "price"}).status, 1);
}

TEST_F(SuppliersList, TheHeadingMayStandBelowAnAddress) {
    ASSERT_EQ(
        import(
            "Veletrgovina d.o.o.\n\nCenovnik 11/2026\nKategorija;Brend;Artikal;Cena EUR\nA;B;Prvi 19\";3,5\n")
            .status,
        0);
    EXPECT_EQ(product("Prvi 19\"").price, 3.5F);
}

TEST_F(SuppliersList, TextsOfOldProgramsAreRead) {
    // Windows-1250: Proizvo\xF0a\xE8 is Proizvođač.
    ASSERT_EQ(import("Grupa\tProizvo\xF0"
                     "a\xE8\tNaziv\tCena\nA\tB\t\x8Araf\t1\n")
                  .status,
              0);
    EXPECT_EQ(product("Šraf").price, 1);
    ASSERT_EQ(import("\xEF\xBB\xBF"
                     "Grupa,Proizvodjac,Naziv,Cena\nA,B,Žica,\"1,5\"\n")
                  .status,
              0);
    EXPECT_EQ(product("Žica").price, 1.5F);
}

TEST_F(SuppliersList, WorkbooksAreReadLikeText) {
    const QStringList rows{"Grupa|Proizvođač|Naziv|Cena", "A|B|Prvi & drugi|#12.25", "",
                           "A|B|Treći|1.234,50"};
    // Some programs keep the texts within the cells, some in a table of their own, in pieces.
    for (const char* const name : {"list.xlsx", "shared.xlsx", "list.ods"}) {
        deliver("Tarvello.mdb");
        const Answer answer = run({"import-products", path(), workbook(name, rows)});
        ASSERT_EQ(answer.status, 0) << name << answer.errors;
        EXPECT_EQ(product("Prvi & drugi").price, 12.25F) << name;
        EXPECT_EQ(product("Treći").price, 1234.5F) << name;
    }
    for (const char* const name : {"bad.xlsx", "bad.ods"}) {
        const Answer bad =
            run({"import-products", path(), workbook(name, {rows[0], "", "A|B|Novo|na upit"})});
        EXPECT_THAT(bad.errors, HasSubstr("line 3, column Cena: \"na upit\" is no number.")) << name;
    }
}

TEST_F(SuppliersList, WhatIsNoListIsRefused) {
    EXPECT_THAT(import("").errors, HasSubstr("No heading was found"));
    EXPECT_THAT(import(QByteArray("\x80\0\xff", 3)).errors,
                HasSubstr("neither a table as text nor a workbook"));
    EXPECT_EQ(import("PK\x03\x04 not really").status, 1);
    EXPECT_THAT(import("Grupa;Naziv\n\"a;b\n").errors,
                HasSubstr("line 2: a quote is opened and never closed"));
    EXPECT_EQ(run({"import-products", path(), at("nowhere.csv")}).status, 1);
    EXPECT_EQ(run({"import-products", path(), at("list.csv"), "--currency", "usd"}).status, 2);
    expectNothingWritten();
}

TEST_F(SuppliersList, AServersShopTakesAListToo) {
    deliverOnServer("Tarvello.mdb");
    const Answer answer = import(QByteArray(kHeading) + "NOVO;NOVO;Novo;;1,5;;;\n");
    ASSERT_EQ(answer.status, 0) << answer.errors;
    EXPECT_EQ(product("Novo").price, 1.5F);
    EXPECT_EQ(import(QByteArray(kHeading) + "NOVO;NOVO;Drugi;;1;;;\nX;Y;;;1;;;\n").status, 1);
    EXPECT_EQ(rowsOf(path(), "Oprema"), before_ + 1);
}

}  // namespace
