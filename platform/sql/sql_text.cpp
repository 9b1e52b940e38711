#include "platform/sql/sql_text.h"

#include <array>
#include <charconv>

namespace sql::writing {

namespace {

std::string quoted(std::string_view text, char quote) {
    std::string result(1, quote);
    for (const char c : text) {
        result += c;
        if (c == quote) {
            result += c;
        }
    }
    return result + quote;
}

}  // namespace

std::string quotedName(std::string_view name) {
    return quoted(name, '"');
}

std::string quotedText(std::string_view text) {
    return quoted(text, '\'');
}

std::string chain(const std::vector<std::string>& terms, std::string_view joint, std::size_t most) {
    if (terms.size() <= most) {
        std::string result;
        for (const std::string& term : terms) {
            if (!result.empty()) {
                result += joint;
            }
            result += term;
        }
        return result;
    }
    std::vector<std::string> groups;
    for (std::size_t i = 0; i < terms.size(); i += most) {
        const auto first = terms.begin() + static_cast<std::ptrdiff_t>(i);
        const auto last = terms.size() - i > most ? first + static_cast<std::ptrdiff_t>(most) : terms.end();
        groups.push_back("(" + chain({first, last}, joint, most) + ")");
    }
    return chain(groups, joint, most);
}

std::string shortest(double number) {
    std::array<char, 64> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number);
    std::string result(buffer.data(), end.ptr);
    if (result.find_first_of(".e") == std::string::npos) {
        result += ".0";
    }
    return result;
}

std::string listed(const std::vector<std::string>& terms) {
    std::string result;
    for (const std::string& term : terms) {
        result.append(result.empty() ? "" : ", ").append(term);
    }
    return result;
}

}  // namespace sql::writing
