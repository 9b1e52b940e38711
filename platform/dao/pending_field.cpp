#include "platform/dao/pending_field.h"

#include "platform/dao/failure.h"
#include "platform/text/utf8.h"

namespace dao {
namespace {

void checkText(const std::string& text, int size) {
    if (!alphabet::isSound(text)) {
        fail(errTextNotSound);
    }
    if (size > 0 && alphabet::lettersIn(text) > static_cast<std::size_t>(size)) {
        fail(errFieldTooSmall);
    }
}

Value converted(const sql::ResultColumn& column, Value&& value) {
    if (value.isNull()) {
        return column.type == Type::YesNo ? Value(false) : Value();
    }
    if (value.type() != column.type) {
        value = value.as(column.type);
    }
    if (column.type == Type::Text) {
        checkText(value.textRef(), column.size);
    }
    return std::move(value);
}

}  // namespace

void PendingField::set(const sql::ResultColumn& to, Value&& given) {
    value = converted(to, std::move(given));
    changed = true;
}

}  // namespace dao
