#include "platform/sql/sample_catalog.h"

#include <sstream>

#include "platform/sql/parser.h"

namespace {

sql::ColumnInfo columnFrom(const std::string& word) {
    static const std::map<char, sql::Type> kTypes = {
        {'k', sql::Type::Long}, {'l', sql::Type::Long},  {'s', sql::Type::Single}, {'c', sql::Type::Currency},
        {'d', sql::Type::Date}, {'y', sql::Type::YesNo}, {'t', sql::Type::Text},   {'m', sql::Type::Text}};
    sql::ColumnInfo column;
    column.name = word.substr(2);
    column.type = kTypes.at(word[0]);
    column.size = word[0] == 't' ? 255 : 0;
    column.counter = word[0] == 'k';
    return column;
}

}  // namespace

SampleCatalog::SampleCatalog() {
    addTable(
        "Customers",
        "k.CustID t.Surname t.GivenName t.NickName d.BirthDate t.BirthPlace t.PIDNo d.IssueDate d.ValidUntil "
        "t.IssuePlace t.FirmName y.FirmAddress t.Street t.City t.State t.ZIP t.Country t.Phone t.Cellular "
        "t.FAX "
        "t.EMail t.Web t.ICQ m.Comments");
    addTable(
        "Computers",
        "k.MachineID l.CustID t.MachineName t.Processor t.MotherBoard t.CacheMem t.RAMMem t.HD t.Floppy t.CD "
        "t.CDWriter t.VideoCard t.SoundCard t.PowerSupply t.Modem t.Monitor t.Printer t.Scanner t.OS "
        "m.Comments "
        "t.Network t.InternetEquipment");
    addTable(
        "Services",
        "k.ID l.MachineID d.ServiceStarted d.ServiceToBeFinished d.ServiceFinished t.ServiceTypes m.Comments "
        "c.Price s.Discount s.GST c.Paid");
    addTable("ServiceTypes", "t.Service");
    addTable("Oprema", "k.ID l.IDGrupe l.IDProizvodjaca t.Naziv t.Opis t.Napomena t.JM s.Stanje s.Cena");
    addTable("Grupe", "k.ID t.Grupa");
    addTable("Proizvodjaci", "k.ID t.Proizvodjac");
    addTable("JM", "k.AID t.Naziv");
    addTable("InvoiceData",
             "l.ServiceID l.OpremaID t.Grupa t.Proizvodjac t.Naziv t.Opis t.SN t.JM s.Stanje s.Cena");
    addTable("DocNumber", "l.PredracunBroj l.RacunBroj");
    setQuery("QDCustomers0", "SELECT * FROM Customers");
    setQuery("QDComputers0", "SELECT * FROM Computers");
    setQuery("QDServices0", "SELECT * FROM Services");
    setQuery(
        "OpremaGrupe",
        "SELECT Oprema.ID, Grupe.Grupa, Oprema.Naziv, Oprema.Opis, Oprema.Stanje, Oprema.Cena, "
        "Oprema.Napomena, "
        "Oprema.IDGrupe, Oprema.IDProizvodjaca FROM Grupe INNER JOIN Oprema ON Grupe.ID = Oprema.IDGrupe");
}

void SampleCatalog::addTable(const std::string& name, const std::string& columns) {
    sql::TableInfo table;
    table.name = name;
    std::istringstream words(columns);
    for (std::string word; words >> word;) {
        table.columns.push_back(columnFrom(word));
    }
    tables_[name] = std::move(table);
}

const sql::TableInfo* SampleCatalog::findTable(std::string_view name) const {
    for (const auto& [key, table] : tables_) {
        if (sql::sameName(key, name)) {
            return &table;
        }
    }
    return nullptr;
}

sql::StatementPtr SampleCatalog::findQuery(std::string_view name) const {
    for (const auto& [key, query] : queries_) {
        if (sql::sameName(key, name)) {
            return query;
        }
    }
    return nullptr;
}

void SampleCatalog::setQuery(const std::string& name, const std::string& text) {
    queries_[name] = sql::parse(text);
}
