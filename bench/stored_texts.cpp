#include "stored_texts.h"

StoredTexts::StoredTexts(PlainShop& shop, std::initializer_list<const char*> names)
    : shop_(shop),
      names_(names.begin(), names.end()),
      begin_(shop, "BEGIN IMMEDIATE"),
      write_(shop, "UPDATE dao_queries SET version=?1, sql=?2 WHERE name=?3"),
      commit_(shop, "COMMIT") {
    for (const std::string& name : names_) {
        shop_.run("INSERT INTO dao_queries(name, version, sql) VALUES('" + name + "', 0, '')");
    }
}

StoredTexts::~StoredTexts() {
    for (const std::string& name : names_) {
        shop_.run("DELETE FROM dao_queries WHERE name='" + name + "'");
    }
}

void StoredTexts::write(std::initializer_list<const std::string*> texts) {
    begin_.run();
    auto name = names_.begin();
    for (const std::string* text : texts) {
        write_.bind(1, ++version_).bind(2, std::string_view(*text)).bind(3, std::string_view(*name++)).run();
    }
    commit_.run();
}

Lines StoredTexts::read() const {
    Lines texts;
    Statement text(shop_, "SELECT sql FROM dao_queries WHERE name=?");
    for (const std::string& name : names_) {
        text.bind(1, std::string_view(name));
        while (text.next()) {
            texts.emplace_back(text.row().text(0));
        }
    }
    return texts;
}
