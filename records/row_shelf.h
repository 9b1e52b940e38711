#pragma once

#include <QTemporaryFile>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// Bytes put aside at one of many places, to be taken from there later: in memory as long as it is little, and
// else in a file without a name, of the user alone, that is gone with this.
class RowShelf {
 public:
    // `folder`: where the file comes to lie. `memory`: how many bytes are held before they go into it.
    RowShelf(const QString& folder, std::size_t places, std::size_t memory);

    // Behind what is there. Throws platform::RunError 61 (disk full) or 75 where the file does not take them.
    void put(std::size_t place, std::string_view bytes);
    // All that was put there, in that order; the place is empty then. Throws platform::RunError 75.
    std::string take(std::size_t place);

 private:
    struct Piece {
        std::int64_t at;
        std::size_t size;
    };
    struct Place {
        std::string bytes;
        std::vector<Piece> written;  // before them
    };
    void writeAll();
    void write(Place& place);
    [[noreturn]] void fail() const;

    std::vector<Place> places_;
    std::size_t memory_;
    std::size_t held_ = 0;
    QTemporaryFile file_;
    std::int64_t end_ = 0;
};
