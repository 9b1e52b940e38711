#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "measure.h"

// What a list shows, as a plain program keeps it: all texts one behind the other, and where each ends.
class Cells {
 public:
    // Leaves the memory where it is for the next filling.
    void clear() {
        texts_.clear();
        ends_.clear();
    }
    std::string& text() { return texts_; }  // for the cell that is being written: append to it, then end()
    void end() { ends_.push_back(texts_.size()); }
    void add(std::string_view text) {
        texts_ += text;
        end();
    }
    Lines lines(int cellsOfLine) const;  // with "|" between the cells

 private:
    std::string texts_;
    std::vector<std::size_t> ends_;
};

// As they are written in the United States, which is what the measures are taken under.
void appendDate(std::string& text, double days);           // 7/4/2026; days since 30 December 1899
void appendAmount(std::string& text, std::int64_t cents);  // 1,234.50
void appendNumber(std::string& text, std::int64_t number);
void appendSingle(std::string& text, float number);  // the shortest form that reads back as the same
// Ten-thousandths to hundredths, half away from zero.
constexpr std::int64_t centsOf(std::int64_t scaled) {
    return (scaled + (scaled < 0 ? -50 : 50)) / 100;
}
std::int64_t centsOf(double amount);

// The number that a Single is written as, not the one nearest to it that the processor holds.
double decimalOf(float number);

// The entries of a selector in the order of our alphabet: č and ć behind c, đ behind d, š behind s, ž behind
// z, capitals as small letters.
class PlainSelector {
 public:
    void clear();
    std::string& text() { return texts_; }  // of the entry that is being added: append to it, then end()
    void end(int number);
    void sort();
    // Where the number stands; -1: nowhere.
    int entryOf(int number) const;
    // The entries, and which of them is chosen.
    Lines lines(int chosen) const;

 private:
    // The first eight letters as two numbers that order as they do: few names are alike so far.
    struct Entry {
        std::uint64_t head, neck;
        std::uint32_t from, to;
        int number;
    };
    std::string_view textOf(const Entry& entry) const {
        return std::string_view(texts_).substr(entry.from, entry.to - entry.from);
    }
    bool before(const Entry& a, const Entry& b) const;

    std::string texts_;
    std::vector<Entry> entries_;
};

// Below, at or above 0, as the two stand in our alphabet.
int compareNames(std::string_view a, std::string_view b);
