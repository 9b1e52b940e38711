#include "platform/sql/scope.h"

#include <algorithm>

namespace sql::writing {

bool Scope::find(std::string_view qualifier, std::string_view field, const Expression& name,
                 Place& place) const {
    for (std::size_t l = 0; l < leaves_.size(); ++l) {
        if (!qualifier.empty() && !sameName(leaves_[l].name, qualifier)) {
            continue;
        }
        for (std::size_t f = 0; f < leaves_[l].fields.size(); ++f) {
            if (!sameName(leaves_[l].fields[f].name, field)) {
                continue;
            }
            if (place.leaf >= 0) {
                throw SyntaxError("The field '" + std::string(field) +
                                      "' could be of more than one of the tables; say which.",
                                  name.position);
            }
            place = {static_cast<int>(l), static_cast<int>(f)};
            break;
        }
    }
    return place.leaf >= 0;
}

Scope::Place Scope::find(const Expression& name) const {
    Place place;
    if (find(name.qualifier, name.text, name, place)) {
        return place;
    }
    if (name.dotted) {
        const std::size_t point = name.text.find('.');
        const std::string_view text = name.text;
        if (point > 0 && find(text.substr(0, point), text.substr(point + 1), name, place)) {
            return place;
        }
    }
    throw NameError(NameError::Kind::Field, (name.qualifier.empty() ? "" : name.qualifier + ".") + name.text);
}

const ScopeField& Scope::resolve(const Expression& name) const {
    const Place place = find(name);
    return leaves_[static_cast<std::size_t>(place.leaf)].fields[static_cast<std::size_t>(place.field)];
}

bool isNameOf(const Expression& e, std::string_view leaf, std::string_view field) {
    if (e.kind != Expression::Kind::Name) {
        return false;
    }
    if (sameName(e.text, field) && (e.qualifier.empty() || sameName(e.qualifier, leaf))) {
        return true;
    }
    return e.dotted && sameName(e.text, std::string(leaf) + "." + std::string(field));
}

void Context::countText(std::size_t bytes, std::size_t position) {
    constexpr std::size_t kMost = std::size_t{256} << 20;
    textWritten += bytes;
    if (textWritten > kMost) {
        throw SyntaxError("The statement, with the stored queries in it, is too long for the store.",
                          position);
    }
}

void Context::countSource(std::size_t position) {
    constexpr int kMost = 500;
    if (++sourcesBound > kMost) {
        throw SyntaxError("The statement, with the stored queries in it, joins too many tables.", position);
    }
}

namespace {

void gatherConjuncts(const Expression& condition, std::vector<const Expression*>& conjuncts) {
    if (condition.kind != Expression::Kind::And) {
        conjuncts.push_back(&condition);
        return;
    }
    for (const ExpressionPtr& child : condition.children) {
        gatherConjuncts(*child, conjuncts);
    }
}

// What it takes to ask for it in one row, in comparisons of a field.
std::size_t effort(const Expression& condition) {
    constexpr std::size_t kFunction = 16;
    const bool called = condition.kind == Expression::Kind::Call ||
                        condition.kind == Expression::Kind::Concat ||
                        condition.kind == Expression::Kind::InSet;
    std::size_t sum = called ? kFunction : 1;
    for (const ExpressionPtr& child : condition.children) {
        sum += effort(*child);
    }
    return sum;
}

}  // namespace

std::vector<const Expression*> conjuncts(const ExpressionPtr& condition) {
    std::vector<const Expression*> result;
    if (condition != nullptr) {
        gatherConjuncts(*condition, result);
    }
    std::ranges::stable_sort(result, {}, [](const Expression* each) { return effort(*each); });
    return result;
}

}  // namespace sql::writing
