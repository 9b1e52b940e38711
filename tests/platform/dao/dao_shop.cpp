#include "platform/dao/dao_shop.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>

#include <sys/wait.h>
#include <unistd.h>

#include "platform/dao/postgres/shop_making.h"
#include "platform/dao/postgres/signpost.h"
#include "support/server_cluster.h"

namespace daotest {
namespace {

namespace fs = std::filesystem;

constexpr const char* kStore = "TARVELLO_TEST_STORE";

dao::FieldDef counter(const std::string& name) {
    return {name, dao::dbLong, 0, true};
}

void append(dao::Database& db, const std::string& name, const std::vector<dao::FieldDef>& fields) {
    dao::TableDef table = db.CreateTableDef(name);
    for (const dao::FieldDef& field : fields) {
        table.Append(field);
    }
    db.TableDefs().Append(table);
}

// The databases of this run. They go when all tests have ended: a test is a process of its own under CTest,
// and a shop may be shared by several fixtures otherwise.
class ServerShops : public ::testing::Environment {
 public:
    dao::postgres::Address make() {
        databases_.push_back(std::make_unique<tests::ServerDatabase>());
        return databases_.back()->place();
    }
    void TearDown() override { databases_.clear(); }

 private:
    std::vector<std::unique_ptr<tests::ServerDatabase>> databases_;
};

}  // namespace

TempFolder::TempFolder() {
    const bool memory = fs::exists("/dev/shm") && access("/dev/shm", W_OK) == 0;
    std::string name = (memory ? fs::path("/dev/shm") : fs::temp_directory_path()) / "daotestXXXXXX";
    path_ = mkdtemp(name.data());
    fs::permissions(path_, fs::perms::all);
}

TempFolder::~TempFolder() {
    std::error_code ignored;
    fs::permissions(path_, fs::perms::all, ignored);
    fs::remove_all(path_, ignored);
}

bool onServer() {
    return tests::onServer();
}

ServerShopTest::ServerShopTest() {
    if (const char* store = std::getenv(kStore); store != nullptr) {
        before_ = store;
    }
    setenv(kStore, "server", 1);
}

ServerShopTest::~ServerShopTest() {
    if (before_) {
        setenv(kStore, before_->c_str(), 1);
    } else {
        unsetenv(kStore);
    }
}

dao::Database createEmptyShop(const std::string& path) {
    if (!onServer()) {
        return dao::DBEngine::CreateDatabase(path, kConnect);
    }
    // Announced last, they are taken down first: before the server.
    static ServerShops& shops =
        static_cast<ServerShops&>(*::testing::AddGlobalTestEnvironment(new ServerShops));
    const dao::postgres::Address place = shops.make();
    dao::postgres::NewShop(place).finish();
    dao::postgres::writeSignpost(path, place);
    return openShop(path);
}

void createShop(const std::string& path) {
    dao::Database db = createEmptyShop(path);
    createTables(db);
}

void createTables(dao::Database& db) {
    using namespace dao;
    append(db, "Customers",
           {counter("CustID"),
            {"Surname", dbText, 20},
            {"City", dbText, 0},
            {"FirmAddress", dbBoolean},
            {"BirthDate", dbDate},
            {"Comments", dbMemo}});
    append(db, "Computers", {counter("MachineID"), {"CustID", dbLong}, {"MachineName", dbText, 50}});
    append(db, "Services",
           {counter("ID"),
            {"MachineID", dbLong},
            {"ServiceStarted", dbDate},
            {"Comments", dbMemo},
            {"Price", dbCurrency},
            {"Discount", dbSingle},
            {"Paid", dbCurrency}});
    append(db, "Grupe", {counter("ID"), {"Grupa", dbText, 50}});
    append(db, "Oprema",
           {counter("ID"),
            {"IDGrupe", dbLong},
            {"Naziv", dbText, 255},
            {"Stanje", dbSingle},
            {"Cena", dbSingle}});
    append(db, "InvoiceData",
           {{"ServiceID", dbLong}, {"OpremaID", dbLong}, {"Naziv", dbText, 255}, {"Stanje", dbSingle}});
    append(db, "ServiceTypes", {{"Service", dbText, 100}});
    db.CreateRelation({"Customers", "CustID", "Computers", "CustID", true});
    db.CreateRelation({"Computers", "MachineID", "Services", "MachineID", true});
    db.CreateRelation({"Services", "ID", "InvoiceData", "ServiceID", true});
    db.CreateRelation({"Grupe", "ID", "Oprema", "IDGrupe", true});
    db.CreateQueryDef(
        "OpremaGrupe",
        "SELECT Oprema.ID, Grupe.Grupa, Oprema.Naziv, Oprema.Stanje, Oprema.IDGrupe FROM Grupe INNER JOIN "
        "Oprema ON Grupe.ID = Oprema.IDGrupe;");
}

void fillShop(dao::Database& db, int clients) {
    using namespace dao;
    DBEngine::BeginTrans();
    Recordset customers = db.OpenRecordset("Customers");
    Recordset computers = db.OpenRecordset("Computers");
    Recordset services = db.OpenRecordset("Services");
    Recordset groups = db.OpenRecordset("Grupe");
    Recordset products = db.OpenRecordset("Oprema");
    for (const char* name : {"Monitori", "Štampači"}) {
        groups.AddNew();
        groups.Fields("Grupa") = Value(name);
        groups.Update();
    }
    for (int i = 1; i <= clients; ++i) {
        customers.AddNew();
        customers.Fields("Surname") = Value("Klijent " + std::to_string(i));
        customers.Fields("City") = Value("Beograd");
        customers.Update();
        computers.AddNew();
        computers.Fields("CustID") = Value(i);
        computers.Fields("MachineName") = Value("PC " + std::to_string(i));
        computers.Update();
        services.AddNew();
        services.Fields("MachineID") = Value(i);
        services.Fields("ServiceStarted") = Value(Date{40000.0 + i});
        services.Fields("Price") = Value(i);
        services.Fields("Comments") = Value(std::string(100, static_cast<char>('a' + i % 26)));
        services.Update();
        products.AddNew();
        products.Fields("IDGrupe") = Value(1 + i % 2);
        products.Fields("Naziv") = Value("Proizvod " + std::to_string(i));
        products.Fields("Stanje") = Value(100);
        products.Update();
    }
    DBEngine::CommitTrans();
}

dao::Database openShop(const std::string& path, bool exclusive, bool readOnly) {
    return dao::DBEngine::OpenDatabase(path, exclusive, readOnly, kConnect);
}

void ShopTest::SetUp() {
    dao::DBEngine::setLockTimeout(10000);
    createShop(path);
    db = openShop(path);
}

void ShopTest::TearDown() {
    db.Close();
    dao::DBEngine::setLockTimeout(10000);
}

std::vector<int> ShopTest::numbers(dao::Recordset set, const std::string& field) {
    std::vector<int> found;
    if (set.BOF() && set.EOF()) {
        return found;
    }
    for (set.MoveFirst(); !set.EOF(); set.MoveNext()) {
        found.push_back(set[field].asLong());
    }
    return found;
}

int Child::begin() {
    if (pipe(toParent_) != 0 || pipe(toChild_) != 0) {
        std::abort();
    }
    std::fflush(nullptr);
    const int pid = fork();
    if (pid == 0) {
        in_ = toChild_[0];
        out_ = toParent_[1];
        close(toChild_[1]);
        close(toParent_[0]);
    }
    return pid;
}

void Child::proceed() {
    in_ = toParent_[0];
    out_ = toChild_[1];
    close(toParent_[1]);
    close(toChild_[0]);
}

Child::~Child() {
    if (!waited_) {
        kill();
        wait();
    }
    close(in_);
    if (out_ >= 0) {
        close(out_);
    }
}

void Child::tell(const std::string& line) const {
    const std::string text = line + '\n';
    if (write(out_, text.data(), text.size()) != static_cast<ssize_t>(text.size())) {
        complain("the other process does not listen");
    }
}

std::string Child::hear() const {
    std::string line;
    char c = 0;
    while (read(in_, &c, 1) == 1 && c != '\n') {
        line += c;
    }
    return line;
}

void Child::kill() const {
    ::kill(pid_, SIGKILL);
}

int Child::wait() {
    int status = 0;
    waitpid(pid_, &status, 0);
    waited_ = true;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

void Child::complain(const char* text) {
    std::fprintf(stderr, "child: %s\n", text);
}
void Child::leave(int code) {
    _exit(code);
}

std::optional<std::uint64_t> numberFrom(const char* variable) {
    const char* const text = std::getenv(variable);
    return text == nullptr ? std::nullopt : std::optional<std::uint64_t>(std::strtoull(text, nullptr, 10));
}

std::vector<char> readFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

void writeFile(const std::string& path, const std::vector<char>& bytes) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

}  // namespace daotest
