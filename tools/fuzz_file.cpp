// Puts whatever the fuzzer thinks of into the pages of a small shop's file, behind the cipher: each page
// carries its seal, so that the trees, the reading of rows and the repair meet it. A shared file may have
// been written by anybody who knows its password. Only the engine's own errors may come of it, and what was
// repaired must be sound.
#include <openssl/evp.h>
#include <openssl/hmac.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "platform/dao/dao.h"
#include "platform/dao/sqlite/file_paths.h"
#include "platform/dao/sqlite/file_place.h"
#include "platform/dao/sqlite/hex.h"
#include "platform/dao/sqlite/pages.h"

namespace {

namespace fs = std::filesystem;
using dao::kPageSize;
using dao::driver::PageNumber;

constexpr const char* kConnect = ";pwd=lozinka";
constexpr std::size_t kSaltSize = 16;
constexpr std::size_t kReserve = 48;
constexpr std::size_t kVectorSize = 16;
constexpr std::size_t kContent = kPageSize - kReserve;

unsigned char* bytes(std::string& text) {
    return reinterpret_cast<unsigned char*>(text.data());
}

// Lays a page down as the cipher does.
class Sealer {
 public:
    explicit Sealer(const std::string& key) {
        const std::string raw = dao::fromHex(key);
        key_ = raw.substr(0, 32);
        std::string salt = raw.substr(32);
        for (char& c : salt) {
            c = static_cast<char>(c ^ 0x3A);
        }
        sealKey_.resize(32);
        PKCS5_PBKDF2_HMAC_SHA1(key_.data(), 32, bytes(salt), static_cast<int>(salt.size()), 2, 32,
                               bytes(sealKey_));
    }

    // `raw`: the page as it lay, which gives the salt and the vector; `plain`: its new content, kContent
    // bytes.
    void lay(PageNumber number, const std::string& plain, char* raw) const {
        const std::size_t start = number == 1 ? kSaltSize : 0;
        auto* const page = reinterpret_cast<unsigned char*>(raw);
        EVP_CIPHER_CTX* const context = EVP_CIPHER_CTX_new();
        int size = 0;
        EVP_EncryptInit_ex(context, EVP_aes_256_cbc(), nullptr,
                           reinterpret_cast<const unsigned char*>(key_.data()), page + kContent);
        EVP_CIPHER_CTX_set_padding(context, 0);
        EVP_EncryptUpdate(context, page + start, &size,
                          reinterpret_cast<const unsigned char*>(plain.data()) + start,
                          static_cast<int>(kContent - start));
        EVP_CIPHER_CTX_free(context);
        std::string sealed(raw + start, kContent - start + kVectorSize);
        for (int i = 0; i < 4; ++i) {
            sealed += static_cast<char>(number >> (8 * i));
        }
        unsigned int sealSize = 0;
        HMAC(EVP_sha1(), sealKey_.data(), 32, bytes(sealed), sealed.size(), page + kContent + kVectorSize,
             &sealSize);
    }

 private:
    std::string key_;
    std::string sealKey_;
};

// A small shop in a folder of its own; its pages, plain and as they lie.
class Shop {
 public:
    Shop() {
        std::string name =
            fs::exists("/dev/shm") ? "/dev/shm/tarvello-fuzzXXXXXX" : "/tmp/tarvello-fuzzXXXXXX";
        folder_ = mkdtemp(name.data());
        path_ = folder_ + "/Shop.mdb";
        make();
        std::ifstream in(path_, std::ios::binary);
        whole_.assign(std::istreambuf_iterator<char>(in), {});
        key_ = dao::rawKey("lozinka", dao::saltOf(path_));
        dao::driver::PageFile file(dao::driver::pagesOfClosed(path_), key_);
        for (PageNumber page = 1; page <= file.size(); ++page) {
            plain_.emplace_back(file.page(page));
        }
    }
    ~Shop() { fs::remove_all(folder_); }

    // The input: a page, a place in it, a length, and so many bytes that go there; and so on.
    void write(const std::uint8_t* data, std::size_t size) const {
        std::vector<char> file = whole_;
        std::vector<std::string> plain = plain_;
        std::vector<bool> touched(plain.size());
        while (size > 5) {
            const std::size_t page = data[0] % plain.size();
            const std::size_t at = (data[1] * 256U + data[2]) % kContent;
            const std::size_t length =
                std::min<std::size_t>({data[3] * 256U + data[4] + 1U, size - 5, kContent - at});
            std::copy_n(data + 5, length, plain[page].begin() + static_cast<std::ptrdiff_t>(at));
            touched[page] = true;
            data += 5 + length;
            size -= 5 + length;
        }
        const Sealer sealer(key_);
        for (std::size_t page = 0; page < plain.size(); ++page) {
            if (touched[page]) {
                sealer.lay(static_cast<PageNumber>(page + 1), plain[page], file.data() + page * kPageSize);
            }
        }
        for (const auto& entry : fs::directory_iterator(folder_)) {
            fs::remove(entry.path());
        }
        std::ofstream out(path_, std::ios::binary);
        out.write(file.data(), static_cast<std::streamsize>(file.size()));
    }
    const std::string& path() const { return path_; }

 private:
    static void append(dao::Database& db, const char* name, const std::vector<dao::FieldDef>& fields) {
        dao::TableDef table = db.CreateTableDef(name);
        for (const dao::FieldDef& field : fields) {
            table.Append(field);
        }
        db.TableDefs().Append(table);
    }
    void make() const {
        using namespace dao;
        Database db = DBEngine::CreateDatabase(path_, kConnect);
        append(db, "Grupe", {{"ID", dbLong, 0, true}, {"Grupa", dbText, 50}});
        append(db, "Oprema",
               {{"ID", dbLong, 0, true}, {"IDGrupe", dbLong}, {"Naziv", dbText, 255}, {"Cena", dbSingle}});
        append(db, "Kinds", {{"Kind", dbText, 100}, {"Since", dbDate}, {"Price", dbCurrency}});
        db.CreateRelation({"Grupe", "ID", "Oprema", "IDGrupe", true});
        db.CreateQueryDef(
            "OpremaGrupe",
            "SELECT Oprema.ID, Grupe.Grupa FROM Grupe INNER JOIN Oprema ON Grupe.ID=Oprema.IDGrupe");
        db.Execute("INSERT INTO Grupe (Grupa) VALUES ('Monitori')");
        for (int i = 0; i < 60; ++i) {
            const std::string naziv(i % 20 == 0 ? 250 : 40, static_cast<char>('a' + i % 26));
            db.Execute("INSERT INTO Oprema (IDGrupe, Naziv, Cena) VALUES (1, '" + naziv + "', 2)");
            db.Execute("INSERT INTO Kinds (Kind, Price) VALUES ('" + naziv.substr(0, 99) + "', 3)");
        }
        db.Close();
    }

    std::string folder_;
    std::string path_;
    std::vector<char> whole_;
    std::string key_;
    std::vector<std::string> plain_;
};

template <class Step>
bool isTold(const Step& step) {
    try {
        step();
        return false;
    } catch (const dao::Error&) {
        return true;
    }
}

void readAll(const std::string& path) {
    dao::Database db = dao::DBEngine::OpenDatabase(path, false, false, kConnect);
    for (int i = 0; i < db.TableDefs().Count(); ++i) {
        const std::string name = db.TableDefs()[i].Name();
        isTold([&] {
            for (dao::Recordset set = db.OpenRecordset(name); !set.EOF(); set.MoveNext()) {
                for (int field = 0; field < set.FieldCount(); ++field) {
                    (void)set.Fields(field).Value().asText();
                }
            }
        });
    }
    isTold([&] { db.OpenRecordset("OpremaGrupe").MoveLast(); });
    isTold([&] { db.Execute("UPDATE Oprema SET Cena=5"); });
    isTold([&] { db.Execute("DELETE * FROM Grupe WHERE ID=1"); });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Shop shop;
    shop.write(data, size);
    isTold([] { dao::DBEngine::RepairDatabase(shop.path(), kConnect); });
    shop.write(data, size);
    isTold([] { readAll(shop.path()); });
    isTold([] { dao::DBEngine::CopyDatabase(shop.path(), shop.path() + ".copy"); });
    shop.write(data, size);
    if (!isTold([] { dao::DBEngine::RepairDatabase(shop.path(), kConnect); })) {
        // What has been repaired has nothing more to repair.
        dao::DBEngine::RepairDatabase(shop.path(), kConnect);
        if (dao::DBEngine::LastRepair().damaged) {
            std::abort();
        }
        isTold([] { readAll(shop.path()); });
    }
    return 0;
}
