// Every statement that the shop's windows send, with the tree, the columns and the sources that must come of
// it.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "platform/sql/describe.h"
#include "platform/sql/sample_catalog.h"
#include "support/places.h"

namespace {

struct Entry {
    int line = 0;
    std::string head;
    std::vector<std::string> expected;
};

std::vector<Entry> readCorpus() {
    std::ifstream file(std::string(tests::kSourceFolder) + "/platform/sql/corpus.txt");
    std::vector<Entry> entries;
    int number = 0;
    for (std::string line; std::getline(file, line);) {
        ++number;
        if (line.empty() || line[0] == '#') {
            continue;
        }
        if (line.starts_with("S ") || line.starts_with("W ") || line.starts_with("Q ") || line == "S" ||
            line == "W") {
            entries.push_back({number, line, {}});
        } else if (!entries.empty()) {
            entries.back().expected.push_back(line);
        }
    }
    return entries;
}

std::vector<std::string> actual(const Entry& entry, std::string& lastStatement, SampleCatalog& catalog) {
    const std::string text = entry.head.size() > 2 ? entry.head.substr(2) : "";
    switch (entry.head[0]) {
        case 'S':
            lastStatement = text;
            return describe(text, catalog);
        case 'W':
            return describeFind(lastStatement, text, catalog);
        default: {
            const std::size_t sign = text.find('=');
            catalog.setQuery(text.substr(0, sign), text.substr(sign + 1));
            return {};
        }
    }
}

// The store's own texts are held to only where one of their kind is written down: what the statements do and
// give is told by rows, where they are run.
std::vector<std::string> asFarAsExpected(std::vector<std::string> lines, const Entry& entry) {
    constexpr std::string_view kStoreKinds = "RKFA";
    std::erase_if(lines, [&](const std::string& line) {
        return kStoreKinds.find(line[0]) != std::string_view::npos &&
               std::none_of(entry.expected.begin(), entry.expected.end(),
                            [&](const std::string& expected) { return expected[0] == line[0]; });
    });
    return lines;
}

TEST(Corpus, EveryStatementBecomesWhatIsWritten) {
    const std::vector<Entry> entries = readCorpus();
    ASSERT_GT(entries.size(), 60U);
    SampleCatalog catalog;
    std::string lastStatement;
    for (const Entry& entry : entries) {
        EXPECT_EQ(asFarAsExpected(actual(entry, lastStatement, catalog), entry), entry.expected)
            << "line " << entry.line << ": " << entry.head;
    }
}

}  // namespace
