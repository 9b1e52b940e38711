#include "records/value_bytes.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <type_traits>
#include <variant>

namespace value_bytes {
namespace {

using Store = dao::Value::Store;
using Length = std::uint32_t;

template <typename Number>
void appendNumber(std::string& bytes, char kind, const Number& number) {
    static_assert(std::is_trivially_copyable_v<Number>);
    char raw[1 + sizeof number];
    raw[0] = kind;
    std::memcpy(raw + 1, &number, sizeof number);
    bytes.append(raw, sizeof raw);
}

template <typename Number>
Number numberAt(const char* at) {
    Number number;
    std::memcpy(&number, at, sizeof number);
    return number;
}

std::string_view textAt(const char* at) {
    return {at + sizeof(Length), numberAt<Length>(at)};
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
        return sizeof(Length) + textAt(at).size();
    } else {
        return std::is_same_v<Held, std::monostate> ? 0 : sizeof(Held);
    }
}

// What is done with what a value of each kind holds.
struct Content {
    void (*read)(const char* at, Store& store);
    std::size_t (*size)(const char* at);
};
template <std::size_t... Kinds>
constexpr std::array<Content, sizeof...(Kinds)> contentsOf(std::index_sequence<Kinds...>) {
    return {{{&readAs<Kinds>, &sizeOf<Kinds>}...}};
}
constexpr auto kContents = contentsOf(std::make_index_sequence<std::variant_size_v<Store>>());

const Content& contentAt(const char* at) {
    return kContents[static_cast<unsigned char>(*at)];
}

}  // namespace

void append(std::string& bytes, const dao::Value& value) {
    const auto kind = static_cast<char>(value.store().index());
    std::visit(
        [&]<typename Held>(const Held& held) {
            if constexpr (std::is_same_v<Held, std::string>) {
                appendNumber(bytes, kind, static_cast<Length>(held.size()));
                bytes += held;
            } else if constexpr (std::is_same_v<Held, std::monostate>) {
                bytes += kind;
            } else {
                appendNumber(bytes, kind, held);
            }
        },
        value.store());
}

std::size_t sizeAt(const char* at) {
    return 1 + contentAt(at).size(at + 1);
}

void read(const char* at, dao::Value& value) {
    contentAt(at).read(at + 1, value.store());
}

}  // namespace value_bytes
