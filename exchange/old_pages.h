#pragma once

#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

namespace exchange {

// What is told of a file of the old format, one message after the other: how long it is, what it is, and
// what it holds. Both ends are of one program on one machine.
namespace message {
inline constexpr char kTable = 'T';    // name, rows it tells of, then for each column name and type
inline constexpr char kOther = 'O';    // what else is there, in words
inline constexpr char kBegin = 'B';    // the rows of the next table come
inline constexpr char kRow = 'R';      // for each column a kind of cell, and what belongs to it
inline constexpr char kBadRow = 'D';   // where it lies
inline constexpr char kEnd = 'E';      // all of it was told
inline constexpr char kDamaged = 'X';  // and why; nothing follows
inline constexpr char kEncoded = 'C';  // nothing follows

enum class Cell : char { Null, Integer, Real, Text, UnsoundText, Unread };
inline constexpr std::uint32_t kLongest = 512U << 20;
}  // namespace message

// Reads the file and tells of it. Meant for a process of its own: a damaged file may end it in any way.
void tellOldShop(const std::string& path, const std::vector<std::string>& tables, std::FILE* out);

}  // namespace exchange
