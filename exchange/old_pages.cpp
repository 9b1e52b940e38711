#include "exchange/old_pages.h"

#include <mdbtools.h>

#include <algorithm>
#include <bit>
#include <cstring>
#include <set>
#include <stdexcept>
#include <string_view>

#include "exchange/old_text.h"
#include "platform/dao/names.h"
#include "platform/sql/types.h"
#include "platform/text/ascii.h"

namespace exchange {
namespace {

using message::Cell;
using sql::Type;

constexpr int kOffsetBits = 0x1FFF;
constexpr int kDeletedRow = 0x8000;
constexpr int kMovedRow = 0x4000;  // it lies in another page, and here is where
constexpr int kMemoHead = 12;
constexpr std::uint32_t kMemoHere = 0x80000000U;
constexpr std::uint32_t kMemoInOnePage = 0x40000000U;

class Damage : public std::runtime_error {
 public:
    using std::runtime_error::runtime_error;
};

// A row, or a part of it, that cannot be read, while the rest can.
class Unreadable : public std::runtime_error {
 public:
    using std::runtime_error::runtime_error;
};

template <typename Number>
Number numberAt(const unsigned char* bytes) {
    Number number{};
    std::memcpy(&number, bytes, sizeof number);
    return number;
}

class Message {
 public:
    explicit Message(char kind) { bytes_ += kind; }
    Message& text(std::string_view text) {
        number(static_cast<std::uint32_t>(text.size()));
        bytes_.append(text);
        return *this;
    }
    template <typename Number>
    Message& number(Number value) {
        bytes_.append(reinterpret_cast<const char*>(&value), sizeof value);
        return *this;
    }
    Message& cell(Cell kind) {
        bytes_ += static_cast<char>(kind);
        return *this;
    }
    void send(std::FILE* out) const {
        const auto size = static_cast<std::uint32_t>(bytes_.size());
        std::fwrite(&size, sizeof size, 1, out);
        std::fwrite(bytes_.data(), bytes_.size(), 1, out);
    }

 private:
    std::string bytes_;
};

Type typeOf(int kind) {
    switch (kind) {
        case MDB_BOOL:
            return Type::YesNo;
        case MDB_BYTE:
        case MDB_INT:
        case MDB_LONGINT:
            return Type::Long;
        case MDB_MONEY:
            return Type::Currency;
        case MDB_FLOAT:
            return Type::Single;
        case MDB_DOUBLE:
            return Type::Double;
        case MDB_DATETIME:
            return Type::Date;
        case MDB_TEXT:
        case MDB_MEMO:
            return Type::Text;
        default:
            return Type::Null;
    }
}

std::string folded(std::string name) {
    std::transform(name.begin(), name.end(), name.begin(), alphabet::lowerAscii);
    return name;
}

// A field of a row, in the page that is being read.
struct Part {
    const MdbColumn* column = nullptr;
    bool isNull = true;
    const unsigned char* bytes = nullptr;
    std::size_t size = 0;
};

// Long texts: each stands in the row itself, in a page of such texts, or in a chain of them.
class LongTexts {
 public:
    explicit LongTexts(MdbHandle* file) : file_(file) {}

    // Throws Unreadable for what is not there, or not whole.
    std::string read(const Part& part) const {
        if (part.size == 0) {
            return {};
        }
        if (part.size < kMemoHead) {
            throw Unreadable("a text's head");
        }
        const auto head = numberAt<std::uint32_t>(part.bytes);
        const std::size_t size = head & 0x3FFFFFFFU;
        const auto place = numberAt<std::uint32_t>(part.bytes + 4);
        if ((head & kMemoHere) != 0) {
            if (size > part.size - kMemoHead) {
                throw Unreadable("a text that is shorter than it says");
            }
            return {reinterpret_cast<const char*>(part.bytes) + kMemoHead, size};
        }
        if ((head & kMemoInOnePage) != 0) {
            const std::string_view text = partAt(place);
            if (text.size() < size) {
                throw Unreadable("a text that is shorter than it says");
            }
            return std::string(text.substr(0, size));
        }
        return chained(place, size);
    }

 private:
    std::string chained(std::uint32_t place, std::size_t size) const {
        std::string text;
        std::set<std::uint32_t> seen;
        while (place != 0 && text.size() < size) {
            if (!seen.insert(place).second) {
                throw Unreadable("a text that comes to no end");
            }
            const std::string_view part = partAt(place);
            if (part.size() < 4) {
                throw Unreadable("a text that breaks off");
            }
            place = numberAt<std::uint32_t>(reinterpret_cast<const unsigned char*>(part.data()));
            text.append(part.substr(4));
        }
        if (text.size() < size) {
            throw Unreadable("a text that breaks off");
        }
        text.resize(size);
        return text;
    }

    std::string_view partAt(std::uint32_t place) const {
        void* page = nullptr;
        int start = 0;
        std::size_t size = 0;
        if (mdb_find_pg_row(file_, static_cast<int>(place), &page, &start, &size) != 0) {
            throw Unreadable("a text that is not there");
        }
        const auto* bytes = static_cast<const char*>(page);
        start &= kOffsetBits;
        if (bytes[0] != MDB_PAGE_DATA || std::memcmp(bytes + 4, "LVAL", 4) != 0 ||
            start + static_cast<ssize_t>(size) > file_->fmt->pg_size) {
            throw Unreadable("a text that is not there");
        }
        return {bytes + start, size};
    }

    MdbHandle* file_;
};

class Reader {
 public:
    Reader(const std::string& path, std::FILE* out)
        : out_(out), file_(mdb_open(path.c_str(), MDB_NOFLAGS)), longTexts_(file_) {
        if (file_ == nullptr) {
            throw Damage("its head cannot be read");
        }
    }

    // Without this page nothing is found; where it makes no sense, nothing else does.
    bool isEncoded() {
        constexpr unsigned long kCatalogPage = 2;
        return mdb_read_pg(file_, kCatalogPage) == pageSize() &&
               !(file_->pg_buf[0] == MDB_PAGE_TABLE && file_->pg_buf[1] == 1) && mostPagesAreNone();
    }

    void tell(const std::vector<std::string>& wanted) {
        if (mdb_read_catalog(file_, MDB_ANY) == nullptr || file_->num_catalog == 0) {
            throw Damage("the list of its tables cannot be read");
        }
        needPages(definitionOf(mdb_get_catalogentry_by_name(file_, "MSysObjects")));
        for (unsigned int i = 0; i < file_->num_catalog; ++i) {
            tellEntry(static_cast<MdbCatalogEntry*>(g_ptr_array_index(file_->catalog, i)), wanted);
        }
        for (MdbTableDef* table : tables_) {
            tellRows(table);
        }
        Message(message::kEnd).send(out_);
    }

 private:
    ssize_t pageSize() const { return file_->fmt->pg_size; }

    // Every page begins with its kind and a one.
    bool mostPagesAreNone() {
        unsigned long seen = 0;
        unsigned long sound = 0;
        constexpr unsigned long kLookedAt = 200;
        for (unsigned long page = 1; page <= kLookedAt && mdb_read_pg(file_, page) == pageSize(); ++page) {
            ++seen;
            sound += file_->pg_buf[0] <= MDB_PAGE_MAP && file_->pg_buf[1] <= 1 ? 1 : 0;
        }
        return seen > 0 && sound * 2 < seen;
    }

    void tellEntry(MdbCatalogEntry* entry, const std::vector<std::string>& wanted) {
        const std::string name = entry->object_name;
        const bool isOurs = std::any_of(wanted.begin(), wanted.end(),
                                        [&](const std::string& one) { return dao::sameName(one, name); });
        if (entry->object_type == MDB_TABLE && mdb_is_user_table(entry) != 0) {
            if (isOurs && told_.insert(folded(name)).second) {
                tellTable(entry);
            } else {
                tellOther("the table " + name);
            }
        } else if (entry->object_type == MDB_LINKED_TABLE || entry->object_type == MDB_UNKNOWN_09) {
            tellOther("the table " + name + ", which lies in another file");
        } else if (entry->object_type == MDB_QUERY && name.rfind('~', 0) != 0) {
            tellOther("the stored query " + name);
        }
    }

    void tellOther(const std::string& words) { Message(message::kOther).text(soundName(words)).send(out_); }

    static std::string soundName(const std::string& name) {
        std::string sound = name;
        std::replace_if(
            sound.begin(), sound.end(), [](unsigned char c) { return c < ' '; }, '?');
        return sound;
    }

    static MdbTableDef* definitionOf(MdbCatalogEntry* entry) {
        MdbTableDef* table = entry == nullptr ? nullptr : mdb_read_table(entry);
        if (table == nullptr || mdb_read_columns(table) == nullptr || table->columns->len == 0) {
            throw Damage("the definition of " +
                         (entry == nullptr ? "its tables" : "the table " + std::string(entry->object_name)) +
                         " cannot be read");
        }
        return table;
    }

    void tellTable(MdbCatalogEntry* entry) {
        MdbTableDef* table = definitionOf(entry);
        Message told(message::kTable);
        told.text(entry->object_name).number<std::int64_t>(table->num_rows);
        told.number(static_cast<std::uint32_t>(table->columns->len));
        for (unsigned int i = 0; i < table->columns->len; ++i) {
            const auto* column = static_cast<MdbColumn*>(g_ptr_array_index(table->columns, i));
            told.text(soundName(column->name)).number(static_cast<std::int32_t>(typeOf(column->col_type)));
        }
        told.send(out_);
        tables_.push_back(table);
    }

    // ----- rows

    void tellRows(MdbTableDef* table) {
        Message(message::kBegin).send(out_);
        followed_.clear();
        for (std::uint32_t page = nextPage(table, 0); page != 0; page = nextPage(table, page)) {
            tellPage(table, page);
        }
    }

    // 0: no more of them.
    std::uint32_t nextPage(MdbTableDef* table, std::uint32_t page) {
        const int next =
            mdb_map_find_next(file_, table->usage_map, static_cast<unsigned int>(table->map_sz), page);
        if (next < 0 || (next != 0 && static_cast<std::uint32_t>(next) <= page)) {
            throw Damage("the list of the pages of the table " + std::string(table->name) +
                         " cannot be read");
        }
        return static_cast<std::uint32_t>(next);
    }

    // A page that is missing from the list of tables would take whole tables with it, unnoticed.
    void needPages(MdbTableDef* table) {
        for (std::uint32_t page = nextPage(table, 0); page != 0; page = nextPage(table, page)) {
            needPageOf(table, page);
        }
    }

    void needPage(std::uint32_t page) {
        if (mdb_read_pg(file_, page) != pageSize()) {
            throw Damage("it ends before its page " + std::to_string(page));
        }
    }

    bool ownsPage(const MdbTableDef* table) const {
        return numberAt<std::uint32_t>(file_->pg_buf + 4) == table->entry->table_pg;
    }

    // Some writers list the pages of a table's indexes and long texts with those of its rows.
    bool hasNoRows(const MdbTableDef* table) const {
        const int kind = file_->pg_buf[0];
        return ((kind == MDB_PAGE_INDEX || kind == MDB_PAGE_LEAF) && ownsPage(table)) ||
               (kind == MDB_PAGE_DATA && std::memcmp(file_->pg_buf + 4, "LVAL", 4) == 0);
    }

    void needPageOf(const MdbTableDef* table, std::uint32_t page) {
        needPage(page);
        if (!hasNoRows(table) && (file_->pg_buf[0] != MDB_PAGE_DATA || !ownsPage(table))) {
            throw Damage("the page " + std::to_string(page) + " is not one of the table " +
                         std::string(table->name) + ", as it should be");
        }
    }

    int slotOf(int row) const {
        const std::size_t at =
            static_cast<std::size_t>(file_->fmt->row_count_offset) + 2 + static_cast<std::size_t>(row) * 2;
        if (at + 2 > static_cast<std::size_t>(pageSize())) {
            throw Damage("a page tells of more rows than it has room for");
        }
        return numberAt<std::uint16_t>(file_->pg_buf + at);
    }

    void tellPage(MdbTableDef* table, std::uint32_t page) {
        needPageOf(table, page);
        if (hasNoRows(table)) {
            return;
        }
        const int rows = numberAt<std::uint16_t>(file_->pg_buf + file_->fmt->row_count_offset);
        for (int row = 0; row < rows; ++row) {
            const int slot = slotOf(row);
            if ((slot & kDeletedRow) != 0) {
                continue;
            }
            try {
                if ((slot & kMovedRow) != 0) {
                    tellMovedRow(table, page, row);
                } else {
                    tellRow(table, row);
                }
            } catch (const Unreadable& fault) {
                Message(message::kBadRow)
                    .text("page " + std::to_string(page) + ", row " + std::to_string(row + 1) + ": " +
                          fault.what())
                    .send(out_);
            }
            if (file_->cur_pg != page) {
                needPageOf(table, page);
            }
        }
    }

    std::pair<int, std::size_t> placeOf(int row) {
        int start = 0;
        std::size_t size = 0;
        if (mdb_find_row(file_, row, &start, &size) != 0) {
            throw Unreadable("it does not lie where its page says");
        }
        start &= kOffsetBits;
        if (start + static_cast<ssize_t>(size) > pageSize()) {
            throw Unreadable("it does not lie where its page says");
        }
        return {start, size};
    }

    void tellMovedRow(MdbTableDef* table, std::uint32_t page, int row) {
        const auto [start, size] = placeOf(row);
        if (size < 4) {
            throw Unreadable("where it was moved to is not told");
        }
        const auto target = numberAt<std::uint32_t>(file_->pg_buf + start);
        if (!followed_.insert(target).second || (target >> 8) == page) {
            throw Unreadable("it was moved to a place where another one is");
        }
        if (mdb_read_pg(file_, target >> 8) != pageSize() || file_->pg_buf[0] != MDB_PAGE_DATA ||
            numberAt<std::uint32_t>(file_->pg_buf + 4) != table->entry->table_pg) {
            throw Unreadable("it was moved to a page that is not the table's");
        }
        const int rows = numberAt<std::uint16_t>(file_->pg_buf + file_->fmt->row_count_offset);
        if (static_cast<int>(target & 0xFF) >= rows) {
            throw Unreadable("it was moved to a place where none is");
        }
        tellRow(table, static_cast<int>(target & 0xFF));
    }

    void tellRow(MdbTableDef* table, int row) {
        const auto [start, size] = placeOf(row);
        MdbField fields[MDB_MAX_COLS];
        const int count = size < 2 ? -1 : mdb_crack_row(table, start, size, fields);
        if (count < 0) {
            throw Unreadable("its fields cannot be told apart");
        }
        std::vector<Part> parts(table->columns->len);
        for (int i = 0; i < count; ++i) {
            const MdbField& field = fields[i];
            if (field.colnum < 0 || static_cast<std::size_t>(field.colnum) >= parts.size()) {
                throw Unreadable("its fields cannot be told apart");
            }
            Part& part = parts[static_cast<std::size_t>(field.colnum)];
            part.column = static_cast<MdbColumn*>(
                g_ptr_array_index(table->columns, static_cast<unsigned int>(field.colnum)));
            part.isNull = field.is_null != 0;
            if (part.isNull) {
                continue;
            }
            if (field.siz < 0 || field.start < start ||
                field.start + field.siz > start + static_cast<int>(size)) {
                throw Unreadable("its fields lie outside of it");
            }
            part.bytes = file_->pg_buf + field.start;
            part.size = static_cast<std::size_t>(field.siz);
        }
        Message told(message::kRow);
        for (const Part& part : parts) {
            addCell(told, part);
        }
        told.send(out_);
    }

    // ----- cells

    void addCell(Message& told, const Part& part) {
        if (part.column == nullptr) {
            told.cell(Cell::Null);
        } else if (part.column->col_type == MDB_BOOL) {
            told.cell(Cell::Integer).number<std::int64_t>(part.isNull ? 0 : 1);
        } else if (part.isNull || typeOf(part.column->col_type) == Type::Null) {
            told.cell(Cell::Null);
        } else if (!addNumber(told, part)) {
            addText(told, part);
        }
    }

    static bool addNumber(Message& told, const Part& part) {
        const auto integer = [&]<typename Number>(Number) {
            if (part.size < sizeof(Number)) {
                told.cell(Cell::Unread);
            } else {
                told.cell(Cell::Integer).number<std::int64_t>(numberAt<Number>(part.bytes));
            }
            return true;
        };
        const auto real = [&]<typename Number>(Number) {
            if (part.size < sizeof(Number)) {
                told.cell(Cell::Unread);
            } else {
                told.cell(Cell::Real).number<double>(numberAt<Number>(part.bytes));
            }
            return true;
        };
        switch (part.column->col_type) {
            case MDB_BYTE:
                return integer(std::uint8_t{});
            case MDB_INT:
                return integer(std::int16_t{});
            case MDB_LONGINT:
                return integer(std::int32_t{});
            case MDB_MONEY:
                return integer(std::int64_t{});
            case MDB_FLOAT:
                return real(float{});
            case MDB_DOUBLE:
            case MDB_DATETIME:
                return real(double{});
            default:
                return false;
        }
    }

    void addText(Message& told, const Part& part) {
        try {
            const std::string bytes = part.column->col_type == MDB_MEMO
                                          ? longTexts_.read(part)
                                          : std::string(reinterpret_cast<const char*>(part.bytes), part.size);
            const OldText text =
                file_->f->jet_version == MDB_VER_JET3 ? fromCodePage(bytes) : fromTwoBytes(bytes);
            told.cell(text.sound ? Cell::Text : Cell::UnsoundText).text(text.text);
        } catch (const Unreadable&) {
            told.cell(Cell::Unread);
        }
    }

    std::FILE* out_;
    MdbHandle* file_;  // for the life of the process
    LongTexts longTexts_;
    std::vector<MdbTableDef*> tables_;
    std::set<std::string> told_;
    std::set<std::uint32_t> followed_;  // where rows were moved to
};

}  // namespace

void tellOldShop(const std::string& path, const std::vector<std::string>& tables, std::FILE* out) {
    try {
        Reader reader(path, out);
        if (reader.isEncoded()) {
            Message(message::kEncoded).send(out);
        } else {
            reader.tell(tables);
        }
    } catch (const std::exception& fault) {
        Message(message::kDamaged).text(fault.what()).send(out);
    }
    std::fflush(out);
}

}  // namespace exchange
