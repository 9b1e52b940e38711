#include <charconv>

#include "platform/sql/ast.h"

namespace sql {

namespace {

using Kind = Expression::Kind;
using Op = Expression::Op;

std::string_view sign(Op op) {
    switch (op) {
        case Op::Add:
            return "+";
        case Op::Subtract:
            return "-";
        case Op::Multiply:
            return "*";
        case Op::Divide:
            return "/";
        case Op::IntDivide:
            return "\\";
        case Op::Mod:
            return "mod";
        case Op::Equal:
            return "=";
        case Op::NotEqual:
            return "<>";
        case Op::Less:
            return "<";
        case Op::Greater:
            return ">";
        case Op::LessEqual:
            return "<=";
        case Op::GreaterEqual:
            return ">=";
        case Op::None:
            break;
    }
    return "?";
}

std::string shortest(double number) {
    char buffer[64];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, number);
    return {buffer, end.ptr};
}

std::string quoted(const std::string& text) {
    std::string result = "'";
    for (const char c : text) {
        result += c;
        if (c == '\'') {
            result += c;
        }
    }
    return result + "'";
}

std::string list(const std::string& head, const std::vector<ExpressionPtr>& children) {
    std::string result = "(" + head;
    for (const ExpressionPtr& child : children) {
        result += " " + dump(*child);
    }
    return result + ")";
}

// A quick filter's set would fill pages: the first numbers and how many there are tell enough.
std::string dumpSet(const Expression& e) {
    constexpr std::size_t kShown = 8;
    std::string result = "(in-set " + dump(*e.children[0]);
    for (std::size_t i = 0; i < e.ids->size() && i < kShown; ++i) {
        result += " " + std::to_string((*e.ids)[i]);
    }
    if (e.ids->size() > kShown) {
        result += " ... " + std::to_string(e.ids->size()) + " in all";
    }
    return result + ")";
}

std::string headOf(const Expression& e) {
    const std::string negation = e.negated ? "not-" : "";
    switch (e.kind) {
        case Kind::Negate:
            return "neg";
        case Kind::Concat:
            return "&";
        case Kind::Not:
            return "not";
        case Kind::And:
            return "and";
        case Kind::Or:
            return "or";
        case Kind::IsNull:
            return e.negated ? "is-not-null" : "is-null";
        case Kind::Between:
            return negation + "between";
        case Kind::In:
            return negation + "in";
        case Kind::Call:
            return e.text + (e.star ? " *" : "") + (e.distinct ? " distinct" : "");
        default:
            return std::string(sign(e.op));
    }
}

std::string dump(const FromNode& from) {
    std::string result;
    switch (from.kind) {
        case FromNode::Kind::Table:
            result = "[" + from.name + "]";
            break;
        case FromNode::Kind::Select:
            result = dump(*from.select);
            break;
        case FromNode::Kind::Inner:
            result = "inner";
            break;
        case FromNode::Kind::Left:
            result = "left";
            break;
        case FromNode::Kind::Right:
            result = "right";
            break;
        case FromNode::Kind::Cross:
            result = "cross";
            break;
    }
    if (!from.alias.empty()) {
        result = "(as [" + from.alias + "] " + result + ")";
    }
    if (from.left == nullptr) {
        return result;
    }
    result = "(" + result + " " + dump(*from.left) + " " + dump(*from.right);
    if (from.on != nullptr) {
        result += " (on " + dump(*from.on) + ")";
    }
    return result + ")";
}

std::string dump(const SelectItem& item) {
    if (item.star) {
        return item.qualifier.empty() ? "*" : "[" + item.qualifier + "].*";
    }
    const std::string value = dump(*item.expression);
    return item.alias.empty() ? value : "(as [" + item.alias + "] " + value + ")";
}

std::string dumpSelect(const Statement& s) {
    std::string result = s.distinct ? "(select distinct" : "(select";
    for (const SelectItem& item : s.items) {
        result += " " + dump(item);
    }
    result += " (from " + dump(*s.from) + ")";
    if (s.where != nullptr) {
        result += " (where " + dump(*s.where) + ")";
    }
    if (!s.groupBy.empty()) {
        result += " " + list("group", s.groupBy);
    }
    if (s.having != nullptr) {
        result += " (having " + dump(*s.having) + ")";
    }
    if (!s.orderBy.empty()) {
        result += " (order";
        for (const OrderItem& item : s.orderBy) {
            result +=
                item.descending ? " (desc " + dump(*item.expression) + ")" : " " + dump(*item.expression);
        }
        result += ")";
    }
    return result + ")";
}

}  // namespace

std::string dump(const Expression& e) {
    switch (e.kind) {
        case Kind::Null:
            return "null";
        case Kind::Boolean:
            return e.integer != 0 ? "true" : "false";
        case Kind::Integer:
            return std::to_string(e.integer);
        case Kind::Number:
            return shortest(e.number);
        case Kind::Text:
            return quoted(e.text);
        case Kind::Date:
            return "#" + shortest(e.number) + "#";
        case Kind::Name:
            return (e.qualifier.empty() ? "" : "[" + e.qualifier + "].") + "[" + e.text + "]";
        case Kind::InSet:
            return dumpSet(e);
        default:
            return list(headOf(e), e.children);
    }
}

std::string dump(const Statement& s) {
    static constexpr std::string_view kHeads[] = {"select", "insert", "update", "delete"};
    if (s.kind == Statement::Kind::Select) {
        return dumpSelect(s);
    }
    std::string result = "(" + std::string(kHeads[static_cast<int>(s.kind)]) + " [" + s.table + "]";
    for (const Assignment& a : s.assignments) {
        result += " (set " + (a.qualifier.empty() ? "" : "[" + a.qualifier + "].") + "[" + a.field + "] " +
                  dump(*a.value) + ")";
    }
    if (s.where != nullptr) {
        result += " (where " + dump(*s.where) + ")";
    }
    return result + ")";
}

}  // namespace sql
