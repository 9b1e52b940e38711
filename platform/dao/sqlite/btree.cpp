#include "platform/dao/sqlite/btree.h"

#include <bit>
#include <cstring>

namespace dao::driver {
namespace {

constexpr char kUnreadable = 0;
constexpr char kTableLeaf = 0x0D;
constexpr char kTableInterior = 0x05;
constexpr char kIndexLeaf = 0x0A;
constexpr char kIndexInterior = 0x02;
constexpr int kDeepest = 40;
constexpr std::size_t kFileHeader = 100;
constexpr std::size_t kLeafHeader = 8;
constexpr std::size_t kInteriorHeader = 12;
constexpr std::size_t kFreelistField = 32;

std::size_t headerAt(PageNumber number) {
    return number == 1 ? kFileHeader : 0;
}

// Reads a number of one to nine bytes; false at the end of the text.
bool varint(std::string_view text, std::size_t& at, std::uint64_t& number) {
    number = 0;
    for (int i = 0; i < 9; ++i) {
        if (at >= text.size()) {
            return false;
        }
        const auto byte = static_cast<unsigned char>(text[at++]);
        if (i == 8) {
            number = (number << 8) | byte;
            return true;
        }
        number = (number << 7) | (byte & 0x7F);
        if (byte < 0x80) {
            return true;
        }
    }
    return true;
}

std::size_t sizeOfType(std::uint64_t type) {
    constexpr std::size_t kSizes[] = {0, 1, 2, 3, 4, 6, 8, 8, 0, 0, 0, 0};
    return type < 12 ? kSizes[type] : static_cast<std::size_t>((type - 12) / 2);
}

std::int64_t integerAt(std::string_view text, std::size_t at, std::size_t size) {
    std::uint64_t number = (static_cast<unsigned char>(text[at]) & 0x80) != 0 ? ~std::uint64_t{0} : 0;
    for (std::size_t i = 0; i < size; ++i) {
        number = (number << 8) | static_cast<unsigned char>(text[at + i]);
    }
    return static_cast<std::int64_t>(number);
}

}  // namespace

bool TreeReader::parseRecord(const std::string& payload, std::vector<StoredCell>& cells) {
    std::size_t at = 0;
    std::uint64_t headerSize = 0;
    if (!varint(payload, at, headerSize) || headerSize > payload.size()) {
        return false;
    }
    std::size_t body = static_cast<std::size_t>(headerSize);
    const std::string_view header = std::string_view(payload).substr(0, body);
    while (at < header.size()) {
        std::uint64_t type = 0;
        if (!varint(header, at, type)) {
            return false;
        }
        const std::size_t size = sizeOfType(type);
        if (size > payload.size() - body) {
            return false;
        }
        if (type == 0) {
            cells.emplace_back();
        } else if (type <= 6) {
            cells.emplace_back(integerAt(payload, body, size));
        } else if (type == 7) {
            cells.emplace_back(std::bit_cast<double>(integerAt(payload, body, size)));
        } else if (type < 10) {
            cells.emplace_back(std::int64_t{type == 9 ? 1 : 0});
        } else if (type >= 12) {
            cells.emplace_back(payload.substr(body, size));
        } else {
            return false;
        }
        body += size;
    }
    return true;
}

std::vector<std::size_t> TreeReader::cellPlaces(const std::string& page, PageNumber number) {
    const std::size_t head = headerAt(number);
    const bool leaf = page[head] == kTableLeaf || page[head] == kIndexLeaf;
    const std::size_t first = head + (leaf ? kLeafHeader : kInteriorHeader);
    const std::size_t count = bigEndian(page, head + 3, 2);
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < count && first + 2 * i + 2 <= page.size(); ++i) {
        const std::size_t place = bigEndian(page, first + 2 * i, 2);
        if (place >= first && place + 4 <= page.size()) {
            places.push_back(place);
        }
    }
    return places;
}

bool TreeReader::payload(const std::string& page, const Cell& cell, std::size_t localLimit,
                         std::string& out) {
    const std::size_t usable = page.size();
    const std::size_t smallest = (usable - 12) * 32 / 255 - 23;
    const std::uint64_t size = cell.payloadSize;
    if (size > std::uint64_t{1} << 31) {
        return false;
    }
    std::size_t local = static_cast<std::size_t>(size);
    if (size > localLimit) {
        const std::size_t wanted = smallest + static_cast<std::size_t>((size - smallest) % (usable - 4));
        local = wanted <= localLimit ? wanted : smallest;
    }
    if (cell.payloadAt + local > page.size()) {
        return false;
    }
    out = page.substr(cell.payloadAt, local);
    if (out.size() == size) {
        return true;
    }
    if (cell.payloadAt + local + 4 > page.size()) {
        return false;
    }
    PageNumber next = bigEndian(page, cell.payloadAt + local, 4);
    while (out.size() < size) {
        const std::string_view more = next != 0 && visit(next) ? pages_.page(next) : std::string_view{};
        if (more.size() <= 4) {
            return false;
        }
        out += more.substr(4, static_cast<std::size_t>(size - out.size()));
        next = bigEndian(more, 0, 4);
    }
    return true;
}

void TreeReader::readLeaf(PageNumber number, const OnRow& onRow, Missing& missing) {
    const std::string page(pages_.page(number));
    for (const std::size_t place : cellPlaces(page, number)) {
        Cell cell;
        std::size_t at = place;
        std::uint64_t rowid = 0;
        if (!varint(page, at, cell.payloadSize) || !varint(page, at, rowid)) {
            continue;
        }
        cell.payloadAt = at;
        StoredRow row;
        row.rowid = static_cast<std::int64_t>(rowid);
        std::string content;
        if (payload(page, cell, page.size() - 35, content) && parseRecord(content, row.cells)) {
            onRow(std::move(row));
        } else {
            missing.rows.push_back(static_cast<std::int64_t>(rowid));
        }
    }
}

bool TreeReader::isTableLeaf(PageNumber number) {
    const std::string_view page = pages_.page(number);
    return !page.empty() && page.front() == kTableLeaf;
}

void TreeReader::readStrayLeaf(PageNumber number, const OnRow& onRow, Missing& missing) {
    if (isTableLeaf(number)) {
        readLeaf(number, onRow, missing);
    }
}

void TreeReader::walkTable(PageNumber number, const Gap& range, int depth, const OnRow& onRow,
                           Missing& missing) {
    const std::string page(depth < kDeepest && visit(number) ? pages_.page(number) : std::string_view{});
    const char kind = page.empty() ? kUnreadable : page[headerAt(number)];
    if (kind == kTableLeaf) {
        readLeaf(number, onRow, missing);
        return;
    }
    if (kind != kTableInterior) {
        missing.gaps.push_back(range);
        return;
    }
    Gap part = range;
    for (const std::size_t place : cellPlaces(page, number)) {
        std::size_t at = place + 4;
        std::uint64_t key = 0;
        if (!varint(page, at, key)) {
            continue;
        }
        part.upTo = static_cast<std::int64_t>(key);
        walkTable(bigEndian(page, place, 4), part, depth + 1, onRow, missing);
        part.after = part.upTo;
    }
    part.upTo = range.upTo;
    walkTable(bigEndian(page, headerAt(number) + 8, 4), part, depth + 1, onRow, missing);
}

TreeReader::Missing TreeReader::readTable(PageNumber root, const OnRow& onRow) {
    Missing missing;
    walkTable(root, Gap{}, 0, onRow, missing);
    return missing;
}

bool TreeReader::walkIndex(PageNumber number, int depth, const OnEntry& onEntry) {
    const std::string page(depth < kDeepest && visit(number) ? pages_.page(number) : std::string_view{});
    const char kind = page.empty() ? kUnreadable : page[headerAt(number)];
    if (kind != kIndexLeaf && kind != kIndexInterior) {
        return false;
    }
    for (const std::size_t place : cellPlaces(page, number)) {
        std::size_t at = place;
        if (kind == kIndexInterior) {
            if (!walkIndex(bigEndian(page, at, 4), depth + 1, onEntry)) {
                return false;
            }
            at += 4;
        }
        Cell cell;
        std::string content;
        std::vector<StoredCell> cells;
        if (!varint(page, at, cell.payloadSize)) {
            return false;
        }
        cell.payloadAt = at;
        if (!payload(page, cell, (page.size() - 12) * 64 / 255 - 23, content) ||
            !parseRecord(content, cells) || cells.empty() ||
            !std::holds_alternative<std::int64_t>(cells.back())) {
            return false;
        }
        onEntry(cells);
    }
    return kind == kIndexLeaf || walkIndex(bigEndian(page, headerAt(number) + 8, 4), depth + 1, onEntry);
}

bool TreeReader::readIndex(PageNumber root, const OnEntry& onEntry) {
    return walkIndex(root, 0, onEntry);
}

void TreeReader::markFreePages() {
    const std::string first(pages_.page(1));
    if (first.empty()) {
        return;
    }
    PageNumber trunk = bigEndian(first, kFreelistField, 4);
    while (trunk != 0 && visit(trunk)) {
        const std::string page(pages_.page(trunk));
        if (page.empty()) {
            return;
        }
        const std::size_t count = bigEndian(page, 4, 4);
        for (std::size_t i = 0; i < count && 8 + 4 * i + 4 <= page.size(); ++i) {
            visit(bigEndian(page, 8 + 4 * i, 4));
        }
        trunk = bigEndian(page, 0, 4);
    }
}

std::vector<PageNumber> TreeReader::strayLeaves() {
    std::vector<PageNumber> stray;
    for (PageNumber number = 2; number <= pages_.size(); ++number) {
        if (!visited_.contains(number) && isTableLeaf(number)) {
            stray.push_back(number);
        }
    }
    return stray;
}

}  // namespace dao::driver
