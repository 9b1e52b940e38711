// Feeds the statement parser and the writer whatever the fuzzer thinks of: a stored query may hold anything
// that a person or another program has put into the shared file. Only the engine's own errors may come of it.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "platform/sql/ast.h"
#include "platform/sql/parser.h"
#include "platform/sql/sample_catalog.h"
#include "platform/sql/writer.h"

namespace {

template <class Step>
void tolerated(const Step& step) {
    try {
        step();
    } catch (const sql::SyntaxError&) {
        // what a bad statement has to end in
    } catch (const sql::NameError&) {
        // and one about things that the file does not have
    }
}

void writeStatement(const sql::Statement& statement, const SampleCatalog& catalog) {
    const sql::Writer& writer = sql::sqliteWriter();
    if (statement.kind != sql::Statement::Kind::Select) {
        (void)writer.action(statement, catalog, 0);
        return;
    }
    (void)writer.select(statement, catalog, 0);
    const sql::ExpressionPtr criterion = sql::parseCriterion("ID=5 AND Naziv='x'");
    (void)writer.find(statement, *criterion, catalog, 0);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const SampleCatalog catalog;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    tolerated([&] {
        const sql::StatementPtr statement = sql::parse(text);
        (void)sql::dump(*statement);
        writeStatement(*statement, catalog);
    });
    tolerated([&] {
        const sql::ExpressionPtr criterion = sql::parseCriterion(text);
        (void)sql::dump(*criterion);
        const sql::StatementPtr products =
            sql::parse("SELECT * FROM Oprema LEFT JOIN Services ON IDGrupe=MachineID");
        (void)sql::sqliteWriter().find(*products, *criterion, catalog, 0);
    });
    return 0;
}
