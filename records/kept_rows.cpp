#include "records/kept_rows.h"

#include <algorithm>
#include <cstring>
#include <numeric>
#include <type_traits>
#include <variant>

#include "platform/text/order.h"

namespace {

using Store = dao::Value::Store;

template <typename Number>
void appendBytes(std::string& bytes, const Number& number) {
    static_assert(std::is_trivially_copyable_v<Number>);
    char raw[sizeof number];
    std::memcpy(raw, &number, sizeof number);
    bytes.append(raw, sizeof raw);
}

// A cell is the place of its kind among those of a value, and what the value holds.
void appendCell(std::string& bytes, const Store& store) {
    bytes += static_cast<char>(store.index());
    std::visit(
        [&]<typename Held>(const Held& held) {
            if constexpr (std::is_same_v<Held, std::string>) {
                appendBytes(bytes, static_cast<std::uint32_t>(held.size()));
                bytes += held;
            } else if constexpr (!std::is_same_v<Held, std::monostate>) {
                appendBytes(bytes, held);
            }
        },
        store);
}

template <typename Number>
Number numberAt(const char* at) {
    Number number;
    std::memcpy(&number, at, sizeof number);
    return number;
}

std::string_view textAt(const char* at) {
    return {at + sizeof(std::uint32_t), numberAt<std::uint32_t>(at)};
}

template <std::size_t Kind>
void readAs(const char* at, Store& store) {
    using Held = std::variant_alternative_t<Kind, Store>;
    if constexpr (std::is_same_v<Held, std::string>) {
        if (std::string* old = std::get_if<std::string>(&store)) {
            old->assign(textAt(at));
        } else {
            store = std::string(textAt(at));
        }
    } else if constexpr (std::is_same_v<Held, std::monostate>) {
        store = Held();
    } else {
        store = numberAt<Held>(at);
    }
}

template <std::size_t Kind>
std::size_t sizeOf(const char* at) {
    using Held = std::variant_alternative_t<Kind, Store>;
    if constexpr (std::is_same_v<Held, std::string>) {
        return sizeof(std::uint32_t) + textAt(at).size();
    } else {
        return std::is_same_v<Held, std::monostate> ? 0 : sizeof(Held);
    }
}

// What is done with a cell of each kind.
struct Cell {
    void (*read)(const char* at, Store& store);
    std::size_t (*size)(const char* at);
};
template <std::size_t... Kinds>
constexpr std::array<Cell, sizeof...(Kinds)> cellsOf(std::index_sequence<Kinds...>) {
    return {{{&readAs<Kinds>, &sizeOf<Kinds>}...}};
}
constexpr auto kCells = cellsOf(std::make_index_sequence<std::variant_size_v<Store>>());

const Cell& cellAt(const char* at) {
    return kCells[static_cast<unsigned char>(*at)];
}

// As the store sorts: Null first, numbers, then texts.
struct SortKey {
    std::int32_t owner = 0;
    int kind = 0;
    double number = 0;
    std::string text;

    bool operator<(const SortKey& other) const {
        if (owner != other.owner) {
            return owner < other.owner;
        }
        if (kind != other.kind) {
            return kind < other.kind;
        }
        return number != other.number ? number < other.number : text < other.text;
    }
};

SortKey sortKeyOf(const ReportRows& row, int owner, int order) {
    SortKey key;
    key.owner = row.key(owner).value_or(-1);
    const dao::Value* value = order < 0 ? nullptr : row.value(order);
    if (value == nullptr) {
        return key;
    }
    if (value->type() == dao::Type::Text) {
        key.kind = 2;
        key.text = alphabet::orderKey(value->textRef());
    } else {
        key.kind = 1;
        key.number = value->asDouble();
    }
    return key;
}

}  // namespace

void KeptRows::keep(const ReportRows& row, std::size_t fields, std::string& bytes) {
    static const Store kNothing;
    for (std::size_t field = 0; field < fields; ++field) {
        const dao::Value* value = row.value(static_cast<int>(field));
        appendCell(bytes, value == nullptr ? kNothing : value->store());
    }
}

KeptRows::KeptRows(std::string bytes, std::vector<bool> has, int owner, int order)
    : bytes_(std::move(bytes)), has_(std::move(has)), cells_(has_.size()), values_(has_.size()) {
    std::vector<SortKey> keys;
    std::vector<std::size_t> starts;
    for (std::size_t row = 0; row < bytes_.size();) {
        starts.push_back(row);
        row = findCells(row);
        keys.push_back(sortKeyOf(*this, owner, order));
    }
    std::vector<std::size_t> sorted(starts.size());
    std::iota(sorted.begin(), sorted.end(), 0);
    std::stable_sort(sorted.begin(), sorted.end(),
                     [&](std::size_t a, std::size_t b) { return keys[a] < keys[b]; });
    for (const std::size_t row : sorted) {
        places_.push_back(starts[row]);
    }
    goTo(0);
}

std::size_t KeptRows::findCells(std::size_t row) {
    for (std::size_t& cell : cells_) {
        cell = row;
        const char* const at = bytes_.data() + row;
        row += 1 + cellAt(at).size(at + 1);
    }
    return row;
}

void KeptRows::goTo(std::int64_t place) {
    at_ = place;
    if (place < count()) {
        findCells(places_[static_cast<std::size_t>(place)]);
    }
}

const dao::Value* KeptRows::value(int field) const {
    const auto index = static_cast<std::size_t>(field);
    const char* const at = bytes_.data() + cells_[index];
    dao::Value& value = values_[index];
    cellAt(at).read(at + 1, value.store());
    return value.isNull() ? nullptr : &value;
}
