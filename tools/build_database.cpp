// Makes the database that the shop is delivered with, from the texts in data/.
//
//   build_database OUT.mdb --schema F --units F --service-types F --catalogue F
//
// OUT.mdb is replaced only by a whole new file.

#include <fstream>
#include <iostream>

#include "data/catalogue.h"
#include "data/schema.h"
#include "data/session.h"
#include "platform/dao/dao.h"
#include "tools/arguments.h"
#include "tools/unfinished_file.h"

namespace {

constexpr int kUnitLimit = 25;  // what the units window lets people type
constexpr int kServiceLimit = 255;

std::ifstream openText(const std::string& file) {
    std::ifstream text(file);
    if (!text) {
        throw std::runtime_error("cannot read " + file);
    }
    return text;
}

std::vector<std::string> namesIn(const std::string& file, int limit) {
    std::ifstream text = openText(file);
    return data::readNames(text, file, limit);
}

void build(const std::string& out, const Arguments& arguments) {
    std::ifstream schemaText = openText(arguments.text("schema"));
    const data::Schema schema = data::readSchema(schemaText, arguments.text("schema"));
    std::ifstream catalogueText = openText(arguments.text("catalogue"));
    const data::Catalogue catalogue = data::readCatalogue(
        catalogueText, arguments.text("catalogue"), namesIn(arguments.text("units"), kUnitLimit),
        namesIn(arguments.text("service-types"), kServiceLimit));

    UnfinishedFile unfinished(out);
    dao::Database database = dao::DBEngine::CreateDatabase(unfinished.path(), connectText().toStdString());
    data::createSchema(database, schema);
    data::storeCatalogue(database, catalogue);
    database.Close();
    unfinished.finish();
}

}  // namespace

int main(int argc, char** argv) {
    try {
        const Arguments arguments(argc, argv, {"schema", "units", "service-types", "catalogue"});
        if (arguments.plain().size() != 1) {
            throw std::invalid_argument(
                "usage: build_database OUT.mdb --schema F --units F --service-types F --catalogue F");
        }
        build(arguments.plain()[0], arguments);
        return 0;
    } catch (const std::exception& e) {
        std::cerr << "build_database: " << e.what() << '\n';
        return 1;
    }
}
