#pragma once

#include <cstdint>

// Memory that runs out: that of the record store's library, or that of everything written in C++.
namespace daotest::memory {

enum class Whose { Library, Engine };

// The n-th request from here on is refused, 1 the next; that one alone.
void failAt(Whose whose, std::uint64_t n);
void heal();
std::uint64_t requests();  // since failAt
bool hasFailed();

}  // namespace daotest::memory
