#pragma once

#include <cstdio>
#include <span>

#include "plain_shop.h"

// A text that is written line by line, with tabs to columns. Columns count letters, from 1.
class PlainPage {
 public:
    void clear();
    void tab(std::size_t column);
    void print(std::string_view text);
    void endLine();
    void rule(std::size_t column, std::size_t length);
    void line(std::size_t column, std::string_view text);
    const std::string& text() const { return text_; }

 private:
    void append(std::string_view piece);

    std::string text_;
    std::size_t column_ = 1;
};

// The rows of one table, each as its piece of the report.
class PlainPart {
 public:
    struct Piece {
        int owner, number;
        double started;  // services stand in this order
        std::size_t from, to;
        std::size_t nameFrom, nameTo;  // clients and computers stand in the order of this
    };

    void clear();
    PlainPage& page() { return page_; }
    void begin(int owner, int number, double started = 0);
    void name(std::string_view text);  // prints it, too
    void end() { pieces_.back().to = page_.text().size(); }

    void order();                                // when all are there
    std::span<const Piece> of(int owner) const;  // in their order, then
    std::string_view textOf(const Piece& piece) const { return cut(piece.from, piece.to); }

 private:
    std::string_view cut(std::size_t from, std::size_t to) const {
        return std::string_view(page_.text()).substr(from, to - from);
    }
    bool before(const Piece& a, const Piece& b) const;
    void countOwners();

    PlainPage page_;
    std::vector<Piece> pieces_, ordered_;
    std::vector<std::size_t> starts_;  // of an owner's pieces among the ordered ones
};

// The text report as a plain program writes it. Each table is read once, in its own order, and each row made
// into its piece of the report as it comes by; then the pieces are written one behind the other.
class PlainReport {
 public:
    explicit PlainReport(PlainShop& shop);
    void write(const std::string& path);

 private:
    void readKinds();
    void addClient(const Row& client);
    void addComputer(const Row& computer);
    void addService(const Row& service);
    void printDate(PlainPage& page, double days);
    void printAmount(PlainPage& page, std::size_t column, float amount);
    void printFigures(PlainPage& page, const Row& service);
    void printKinds(PlainPage& page, std::string_view positions);
    void printHeadLine(const Row& client);
    struct Line;
    struct Tables;  // of lines
    void printLines(PlainPage& page, const Row& row, std::span<const Line> lines, int column,
                    std::size_t labels, std::size_t values);
    void writeComputers(std::FILE* file, int client) const;

    PlainShop& shop_;
    Statement kinds_, allClients_, allComputers_, allServices_;
    std::vector<std::string> kindNames_;
    PlainPart clients_, computers_, services_;
    std::string scratch_;
};
