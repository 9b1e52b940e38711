#pragma once

#include <sqlcipher/sqlite3.h>

#include <memory>
#include <new>
#include <string_view>

// What the SQL functions of the file share.
namespace dao::driver {

// The bytes of an argument as a text, good as long as nobody asks it for another type. Null: empty.
inline std::string_view textOf(sqlite3_value* value) {
    const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
    return text == nullptr ? std::string_view{}
                           : std::string_view{text, static_cast<std::size_t>(sqlite3_value_bytes(value))};
}

// What a function keeps beside its first argument, a constant, as long as the statement runs. At the first
// row it is what `make` gives, a unique_ptr; nullptr where that gives nothing. Throws what `make` throws, and
// std::bad_alloc where the library finds no room.
template <typename State, typename Make>
State* keptWithStatement(sqlite3_context* context, const Make& make) {
    if (auto* const kept = static_cast<State*>(sqlite3_get_auxdata(context, 0))) {
        return kept;
    }
    std::unique_ptr<State> made = make();
    if (made == nullptr) {
        return nullptr;
    }
    sqlite3_set_auxdata(context, 0, made.release(), [](void* done) { delete static_cast<State*>(done); });
    auto* const kept = static_cast<State*>(sqlite3_get_auxdata(context, 0));
    if (kept == nullptr) {
        throw std::bad_alloc();
    }
    return kept;
}

// No exception may pass through the library: a function's work, told as a failure of the statement where
// there is no memory.
template <typename Work>
void withinLibrary(sqlite3_context* context, const Work& work) {
    try {
        work();
    } catch (const std::bad_alloc&) {
        sqlite3_result_error_nomem(context);
    }
}

}  // namespace dao::driver
