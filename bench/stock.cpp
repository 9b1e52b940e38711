#include "stock.h"

#include <string>

#include "plain_shop.h"

namespace {

// The numbers 0 to count-1 as the table "n".
std::string counting(int count) {
    return "WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i+1 FROM n WHERE i+1<" + std::to_string(count) +
           ") ";
}

}  // namespace

Stock fillStock(const PlainShop& shop) {
    Stock stock;
    const auto run = [&shop](const std::string& sql) { shop.run(sql); };
    const auto number = [&shop](const char* sql) { return static_cast<int>(shop.number(sql)); };
    stock.firstGroup = number("SELECT max(ID)+1 FROM Grupe");
    const int manufacturer = number("SELECT max(ID)+1 FROM Proizvodjaci");
    stock.firstProduct = number("SELECT max(ID)+1 FROM Oprema");
    stock.service = number("SELECT min(ID) FROM Services");
    const std::string group = std::to_string(stock.firstGroup);
    const std::string maker = std::to_string(manufacturer);
    const std::string product = std::to_string(stock.firstProduct);
    run("BEGIN");
    run(counting(Stock::kGroups) + "INSERT INTO Grupe(ID, Grupa) SELECT " + group + "+i, 'Grupa '||i FROM n");
    run(counting(Stock::kManufacturers) + "INSERT INTO Proizvodjaci(ID, Proizvodjac) SELECT " + maker +
        "+i, 'Proizvodjac '||(i*7919%" + std::to_string(Stock::kManufacturers) + ") FROM n");
    run(counting(Stock::kProducts) +
        "INSERT INTO Oprema(ID, IDGrupe, IDProizvodjaca, Naziv, Opis, Napomena, JM, Stanje, Cena) SELECT " +
        product + "+i, " + group + "+i/5000, " + maker +
        "+i%5000, 'Proizvod '||i, 'Opis proizvoda broj '||i, '', 'Kom.', 1000000, (i%997)+0.25 FROM n");
    run("DELETE FROM InvoiceData");
    run(counting(Stock::kDrawn) +
        "INSERT INTO InvoiceData(ServiceID, OpremaID, Grupa, Proizvodjac, Naziv, Opis, SN, JM, Stanje, Cena) "
        "SELECT " +
        std::to_string(stock.service) + ", " + product +
        "+i, 'Grupa 0', 'Proizvodjac '||i, 'Proizvod '||i, 'Opis proizvoda broj '||i, CASE WHEN i%3=0 THEN "
        "'SN-'||i END, 'Kom.', 1+i%4, (i%997)+0.25 FROM n");
    run("COMMIT");
    return stock;
}
