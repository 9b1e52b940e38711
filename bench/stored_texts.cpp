#include "stored_texts.h"

#include "plain_server.h"
#include "plain_shop.h"

namespace {

std::string table(const PlainShop&) {
    return "dao_queries";
}
std::string table(const PlainServer&) {
    return "dao.queries";
}

std::string begin(const PlainShop&) {
    return "BEGIN IMMEDIATE";
}
std::string begin(const PlainServer&) {
    return "BEGIN";
}

void add(PlainShop& shop, const std::string& name) {
    shop.run("INSERT INTO dao_queries(name, version, sql) VALUES('" + name + "', 0, '')");
}
void add(PlainServer& shop, const std::string& name) {
    shop.run("INSERT INTO dao.queries(key, name, version, sql) VALUES('" + name + "', '" + name +
             "', 0, '')");
}

}  // namespace

template <class Of>
StoredTexts<Of>::StoredTexts(Of& shop, std::initializer_list<const char*> names)
    : shop_(shop),
      names_(names.begin(), names.end()),
      begin_(shop, begin(shop)),
      write_(shop, "UPDATE " + table(shop) + " SET version=?, sql=? WHERE name=?"),
      commit_(shop, "COMMIT") {
    for (const std::string& name : names_) {
        add(shop_, name);
    }
}

template <class Of>
StoredTexts<Of>::~StoredTexts() {
    for (const std::string& name : names_) {
        shop_.run("DELETE FROM " + table(shop_) + " WHERE name='" + name + "'");
    }
}

template <class Of>
void StoredTexts<Of>::write(std::initializer_list<const std::string*> texts) {
    begin_.run();
    auto name = names_.begin();
    for (const std::string* text : texts) {
        write_.bind(1, ++version_).bind(2, std::string_view(*text)).bind(3, std::string_view(*name++)).run();
    }
    commit_.run();
}

template <class Of>
Lines StoredTexts<Of>::read() const {
    Lines texts;
    typename Of::Statement text(shop_, "SELECT sql FROM " + table(shop_) + " WHERE name=?");
    for (const std::string& name : names_) {
        text.bind(1, std::string_view(name));
        while (text.next()) {
            texts.emplace_back(text.row().text(0));
        }
    }
    return texts;
}

template class StoredTexts<PlainShop>;
template class StoredTexts<PlainServer>;
