#include "platform/dao/faults/faulty_memory.h"

#include <sqlcipher/sqlite3.h>

#include <cstdlib>
#include <new>

namespace daotest::memory {
namespace {

struct State {
    bool armed = false;
    Whose whose = Whose::Library;
    std::uint64_t at = 0;
    std::uint64_t requests = 0;
    bool failed = false;
};
State state;

bool refuses(Whose whose) {
    if (!state.armed || state.whose != whose || ++state.requests != state.at) {
        return false;
    }
    state.failed = true;
    return true;
}

sqlite3_mem_methods& usual() {
    static sqlite3_mem_methods methods;
    return methods;
}

void* give(int size) {
    return refuses(Whose::Library) ? nullptr : usual().xMalloc(size);
}
void* giveAnother(void* former, int size) {
    return refuses(Whose::Library) ? nullptr : usual().xRealloc(former, size);
}

// The library asks once, before its first use, where its memory comes from.
const bool kIsInstalled = [] {
    if (sqlite3_config(SQLITE_CONFIG_GETMALLOC, &usual()) != SQLITE_OK) {
        std::abort();
    }
    static sqlite3_mem_methods methods = usual();
    methods.xMalloc = give;
    methods.xRealloc = giveAnother;
    if (sqlite3_config(SQLITE_CONFIG_MALLOC, &methods) != SQLITE_OK) {
        std::abort();
    }
    return true;
}();

}  // namespace

void failAt(Whose whose, std::uint64_t n) {
    state = {kIsInstalled, whose, n, 0, false};
}
void heal() {
    state.armed = false;
}
std::uint64_t requests() {
    return state.requests;
}
bool hasFailed() {
    return state.failed;
}

}  // namespace daotest::memory

void* operator new(std::size_t size) {
    void* const given = daotest::memory::refuses(daotest::memory::Whose::Engine)
                            ? nullptr
                            : std::malloc(size == 0 ? 1 : size);
    if (given == nullptr) {
        throw std::bad_alloc();
    }
    return given;
}
// By name, for a checker of memory that brings one of its own.
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return daotest::memory::refuses(daotest::memory::Whose::Engine) ? nullptr
                                                                    : std::malloc(size == 0 ? 1 : size);
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
