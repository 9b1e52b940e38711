#include "tools/verbs/table_lines.h"

#include <algorithm>

#include "platform/text/utf8.h"

namespace {

bool isNumber(const std::string& text) {
    return !text.empty() && text.find_first_not_of("0123456789.,-+") == std::string::npos;
}

std::vector<std::size_t> widthsOf(const std::vector<std::vector<std::string>>& rows) {
    std::vector<std::size_t> widths;
    for (const std::vector<std::string>& row : rows) {
        widths.resize(std::max(widths.size(), row.size()));
        for (std::size_t i = 0; i < row.size(); ++i) {
            widths[i] = std::max(widths[i], alphabet::lettersIn(row[i]));
        }
    }
    return widths;
}

std::string lineOf(const std::vector<std::string>& row, const std::vector<std::size_t>& widths) {
    std::string line;
    for (std::size_t i = 0; i < row.size(); ++i) {
        const std::string blanks(widths[i] - alphabet::lettersIn(row[i]), ' ');
        line += (i > 0 ? "  " : "") + (isNumber(row[i]) ? blanks + row[i] : row[i] + blanks);
    }
    line.erase(line.find_last_not_of(' ') + 1);
    return line;
}

}  // namespace

std::vector<std::string> tableLines(const std::vector<std::vector<std::string>>& rows) {
    const std::vector<std::size_t> widths = widthsOf(rows);
    std::vector<std::string> lines;
    lines.reserve(rows.size());
    for (const std::vector<std::string>& row : rows) {
        lines.push_back(lineOf(row, widths));
    }
    return lines;
}

std::string grouped(long long number) {
    std::string text = std::to_string(number);
    const std::size_t first = number < 0 ? 1 : 0;
    for (std::size_t at = text.size(); at > first + 3;) {
        at -= 3;
        text.insert(at, ",");
    }
    return text;
}

std::string counted(long long number, const std::string& what) {
    return grouped(number) + ' ' + what + (number == 1 ? "" : "s");
}
