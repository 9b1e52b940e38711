// What the fuzzer found worth keeping, once more through parser and writer on every run.
#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

#include "platform/sql/ast.h"
#include "platform/sql/parser.h"
#include "platform/sql/sample_catalog.h"
#include "platform/sql/writer.h"
#include "support/places.h"

namespace {

// One input a line; what cannot stand in a line is written \xHH, a backslash \\.
std::string unescaped(const std::string& line) {
    std::string result;
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (line[i] != '\\') {
            result += line[i];
        } else if (line[i + 1] == 'x') {
            result += static_cast<char>(std::stoi(line.substr(i + 2, 2), nullptr, 16));
            i += 3;
        } else {
            result += line[++i];
        }
    }
    return result;
}

std::vector<std::string> inputs() {
    std::ifstream file(std::string(tests::kSourceFolder) + "/platform/sql/fuzz_inputs.txt");
    std::vector<std::string> result;
    for (std::string line; std::getline(file, line);) {
        result.push_back(unescaped(line));
    }
    return result;
}

// True where the text was understood.
template <class Step>
bool runs(const std::string& text, const Step& step) {
    try {
        step();
        return true;
    } catch (const sql::SyntaxError& error) {
        EXPECT_LE(error.position(), text.size() + 1000)
            << text;  // a stored query's error tells its own place
        EXPECT_NE(error.what(), std::string());
    } catch (const sql::NameError& error) {
        EXPECT_FALSE(error.name().empty()) << text;
    }
    return false;
}

TEST(FuzzInputs, EndInATreeOrAnErrorOfTheEngine) {
    const std::vector<std::string> all = inputs();
    ASSERT_GT(all.size(), 100U);
    const SampleCatalog catalog;
    int parsed = 0;
    int written = 0;
    for (const std::string& text : all) {
        parsed += runs(text, [&] { (void)sql::dump(*sql::parse(text)); });
        (void)runs(text, [&] { (void)sql::dump(*sql::parseCriterion(text)); });
        written += runs(text, [&] {
            const sql::StatementPtr statement = sql::parse(text);
            if (statement->kind == sql::Statement::Kind::Select) {
                (void)sql::sqliteWriter().select(*statement, catalog, 0);
            } else {
                (void)sql::sqliteWriter().action(*statement, catalog, 0);
            }
        });
    }
    // The collection is worth something only while part of it goes all the way.
    EXPECT_GT(parsed, 40);
    EXPECT_GT(written, 10);
}

}  // namespace
