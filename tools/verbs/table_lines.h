#pragma once

#include <string>
#include <vector>

// Rows of texts as a table for people to read: each column as wide as its widest text, numbers to the right.
// The first row is the heading.
std::vector<std::string> tableLines(const std::vector<std::vector<std::string>>& rows);

// 12345678 as "12,345,678".
std::string grouped(long long number);
// One of them, or several: "1 row", "2 rows".
std::string counted(long long number, const std::string& what);
