#pragma once

#include <array>
#include <cstddef>

#include "common/list_columns.h"

// The fields of a service: what each is called in the file, in the list and in the editor, what it holds, and
// what is asked of it. Whoever reads, shows, types in, checks or writes a service goes by this one table. A
// field that the shop wants to keep besides gets a name and a row here, and its column in data/schema.txt.

// The columns of the list come first, in the order by which the settings keep their widths and places.
enum class ServiceColumn {
    Started,
    ToBeFinished,
    Finished,
    Price,
    Discount,
    Tax,
    Paid,
    Comments,  // the first that is no column of the list
    Types,
    Count,  // no field
};

enum class ServiceKind {
    Date,      // must be there
    OpenDate,  // may be left open
    Amount,    // euro in the file, elsewhere in the unit on screen
    Number,    // percent and the like; typed as a whole number
    Text,      // of several lines
    Types,     // kinds of work: their positions from 1, "|" between
};

struct ServiceField {
    // In the editor.
    struct Entry {
        int number;           // Text1(number), Label1(number)
        const char* caption;  // with the letter that leads to it
        int row, column;      // of the caption in the window's grid
        int helpTopic;
    };
    // What the editor refuses; messages are of the string table.
    struct Demand {
        int message = 0;  // where it cannot be read as what it holds; 0: anything can
        float limit = 0;  // a number has to stay below it; 0: there is none
        int limitMessage = 0;
    };

    ServiceColumn name;
    ServiceKind kind;
    ListColumn list;  // of a field that is no column of the list only `field` counts
    Entry entry;
    Demand demand;
    // Where the file has no readable value the list goes on with the one of the row above.
    bool fromRowAbove = false;
};

namespace service_fields {

inline constexpr int kWidth = 1440;  // twips
inline constexpr bool kMoney = true;
inline constexpr bool kFromRowAbove = true;
inline constexpr auto kLeft = platform::HeaderAlignment::Left;
inline constexpr auto kRight = platform::HeaderAlignment::Right;
inline constexpr std::size_t kCount = static_cast<std::size_t>(ServiceColumn::Count);
inline constexpr std::size_t kListed = static_cast<std::size_t>(ServiceColumn::Comments);

// In the order in which an entry is made, checked and written: when, for how much, what.
inline constexpr std::array kTable = {
    ServiceField{ServiceColumn::Started,
                 ServiceKind::Date,
                 {"ServiceStarted", nullptr, 151, kLeft, kWidth},
                 {0, "Service &started on:", 0, 0, 301},
                 {301}},
    ServiceField{ServiceColumn::ToBeFinished,
                 ServiceKind::OpenDate,
                 {"ServiceToBeFinished", nullptr, 152, kLeft, kWidth},
                 {1, "Service &to be finished till:", 1, 0, 302},
                 {302},
                 kFromRowAbove},
    ServiceField{ServiceColumn::Finished,
                 ServiceKind::OpenDate,
                 {"ServiceFinished", nullptr, 153, kLeft, kWidth},
                 {2, "Service &finished on:", 2, 0, 303},
                 {303},
                 kFromRowAbove},
    ServiceField{ServiceColumn::Price,
                 ServiceKind::Amount,
                 {"Price", nullptr, 154, kRight, kWidth, kMoney},
                 {5, "&Price:", 0, 4, 306},
                 {304},
                 kFromRowAbove},
    ServiceField{ServiceColumn::Paid,
                 ServiceKind::Amount,
                 {"Paid", nullptr, 157, kRight, kWidth, kMoney},
                 {7, "P&aid:", 1, 4, 308},
                 {305},
                 kFromRowAbove},
    // Without a limit: more than 100 percent off is a gift that the shop does make.
    ServiceField{ServiceColumn::Discount,
                 ServiceKind::Number,
                 {"Discount", nullptr, 155, kRight, kWidth},
                 {6, "&Discount:", 2, 4, 307},
                 {306},
                 kFromRowAbove},
    ServiceField{ServiceColumn::Tax,
                 ServiceKind::Number,
                 {"GST", nullptr, 156, kRight, kWidth},
                 {8, "&GST:", 3, 4, 309},
                 {308, 100, 309},
                 kFromRowAbove},
    ServiceField{ServiceColumn::Comments,
                 ServiceKind::Text,
                 {"Comments", nullptr, 0, kLeft},
                 {4, "Servi&ce description:", 3, 0, 305},
                 {}},
    ServiceField{ServiceColumn::Types,
                 ServiceKind::Types,
                 {"ServiceTypes", nullptr, 0, kLeft},
                 {9, "Ser&vice type:", 5, 4, 310},
                 {}},
};

// The place of each field in the table; kCount where it has none.
inline constexpr auto kPlaces = [] {
    std::array<std::size_t, kCount> places{};
    places.fill(kCount);
    for (std::size_t i = 0; i < kTable.size(); ++i) {
        places[static_cast<std::size_t>(kTable[i].name)] = i;
    }
    return places;
}();

constexpr bool eachNameHasItsRow() {
    for (const std::size_t place : kPlaces) {
        if (place == kCount) {
            return false;
        }
    }
    return kTable.size() == kCount;
}
static_assert(eachNameHasItsRow(), "the table has one row for each name");

}  // namespace service_fields

constexpr const auto& serviceFields() {
    return service_fields::kTable;
}

constexpr const ServiceField& serviceField(ServiceColumn column) {
    return service_fields::kTable[service_fields::kPlaces[static_cast<std::size_t>(column)]];
}

// Whether the list has a column of it.
constexpr bool isListed(ServiceColumn column) {
    return static_cast<std::size_t>(column) < service_fields::kListed;
}

// Something of each field of a service.
template <typename Content>
class PerServiceColumn {
 public:
    Content& operator[](ServiceColumn column) { return contents_[static_cast<std::size_t>(column)]; }
    const Content& operator[](ServiceColumn column) const {
        return contents_[static_cast<std::size_t>(column)];
    }

 private:
    std::array<Content, service_fields::kCount> contents_{};
};
