#include "platform/controls/name_list.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <stdexcept>
#include <utility>

#include "platform/text/ascii.h"
#include "platform/text/order.h"
#include "platform/text/text_order.h"

namespace platform {
namespace {

constexpr std::size_t kUsual = 24;  // bytes of a name, with its length

bool isAscii(char letter) {
    return (static_cast<unsigned char>(letter) & 0x80U) == 0;
}

}  // namespace

// A beginning that names are looked through for. As long as both are plain letters no name is taken apart.
class NameList::Beginning {
 public:
    explicit Beginning(const QString& text) : text_(text) {
        for (const QChar letter : text) {
            if (letter.unicode() >= 0x80) {
                break;
            }
            plain_.push_back(alphabet::lowerAscii(letter.toLatin1()));
        }
    }

    // Whether names that begin so stand together in the order, but for signs that look like these letters
    // and stand behind them.
    bool isUsual() const {
        constexpr char16_t kLastLatin = 0x17F;
        return std::all_of(text_.begin(), text_.end(),
                           [](QChar letter) { return !letter.isNull() && letter.unicode() <= kLastLatin; });
    }

    bool isOf(std::string_view name) const {
        for (std::size_t i = 0; i < plain_.size(); ++i) {
            if (i == name.size()) {
                return false;
            }
            if (!isAscii(name[i])) {
                return isOfAnyLetters(name);
            }
            if (alphabet::lowerAscii(name[i]) != plain_[i]) {
                return false;
            }
        }
        return plain_.size() == static_cast<std::size_t>(text_.size()) || isOfAnyLetters(name);
    }

 private:
    bool isOfAnyLetters(std::string_view name) const {
        return QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()))
            .startsWith(text_, Qt::CaseInsensitive);
    }

    QString text_;
    std::string plain_;  // the plain letters that it begins with, small
};

// --- The texts.

std::uint32_t NameList::keep(std::string_view text) {
    const auto size = static_cast<std::uint32_t>(text.size());
    if (text.size() + sizeof size > std::numeric_limits<std::uint32_t>::max() - texts_.size()) {
        throw std::length_error("the names are too long for one list");
    }
    const auto place = static_cast<std::uint32_t>(texts_.size());
    char head[sizeof size];
    std::memcpy(head, &size, sizeof size);
    texts_.append(head, sizeof size);
    texts_.append(text);
    return place;
}

std::string_view NameList::textAt(std::uint32_t place) const {
    std::uint32_t size = 0;
    std::memcpy(&size, texts_.data() + place, sizeof size);
    return {texts_.data() + place + sizeof size, size};
}

// --- The order.

void NameList::expect(std::size_t names) {
    texts_.reserve(names * kUsual);
    rows_.reserve(names);
}

void NameList::add(Name name) {
    const std::uint32_t text = keep(name.text);
    rows_.push_back({text, text, name.number});
}

std::vector<std::uint32_t> NameList::order() const {
    alphabet::TextOrder names;
    names.expect(rows_.size());
    for (const Row& row : rows_) {
        names.add(textAt(row.key));
    }
    return names.order();
}

// The texts stay where they are: to move them would take longer than all the rest.
void NameList::sort() {
    std::vector<Row> sorted;
    sorted.reserve(rows_.size());
    for (const std::uint32_t place : order()) {
        sorted.push_back(rows_[place]);
    }
    rows_ = std::move(sorted);
}

int NameList::placeFor(std::string_view text) const {
    const auto isBefore = [this](std::string_view name, const Row& row) {
        return alphabet::compare(name, textAt(row.key)) < 0;
    };
    return static_cast<int>(std::upper_bound(rows_.begin(), rows_.end(), text, isBefore) - rows_.begin());
}

void NameList::insert(int place, Name name) {
    const std::uint32_t text = keep(name.text);
    rows_.insert(rows_.begin() + place, {text, text, name.number});
}

void NameList::remove(int place) {
    rows_.erase(rows_.begin() + place);
}

void NameList::replace(int place, std::string_view text) {
    rows_[static_cast<std::size_t>(place)].shown = keep(text);
}

// --- Looking.

NameList::Name NameList::at(int place) const {
    const Row& row = rows_[static_cast<std::size_t>(place)];
    return {textAt(row.shown), row.number};
}

QString NameList::text(int place) const {
    const std::string_view text = at(place).text;
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

// Most beginnings stand at their place in the alphabet. Where none does there, all texts are gone through as
// they lie, and only where one of them begins so, the rows.
int NameList::findPrefix(const QString& text) const {
    const Beginning beginning(text);
    const auto [first, last] = beginning.isUsual() ? rowsFrom(text.toStdString()) : std::pair(0, 0);
    int found = findIn(first, last, beginning);
    if (found >= 0) {
        // One that was given another name stays where it stood.
        const auto isOther = [&](const Row& row) {
            return row.key != row.shown && beginning.isOf(textAt(row.shown));
        };
        const auto other = std::find_if(rows_.begin(), rows_.begin() + found, isOther);
        return static_cast<int>(other - rows_.begin());
    }
    return hasText(beginning) ? findIn(0, size(), beginning) : -1;
}

std::pair<int, int> NameList::rowsFrom(std::string_view text) const {
    const auto isBefore = [&](const Row& row) { return alphabet::compareFront(textAt(row.key), text) < 0; };
    const auto begins = [&](const Row& row) { return alphabet::compareFront(textAt(row.key), text) == 0; };
    const auto first = std::partition_point(rows_.begin(), rows_.end(), isBefore);
    const auto last = std::partition_point(first, rows_.end(), begins);
    return {static_cast<int>(first - rows_.begin()), static_cast<int>(last - rows_.begin())};
}

int NameList::findIn(int first, int last, const Beginning& beginning) const {
    const auto end = rows_.begin() + last;
    const auto found = std::find_if(rows_.begin() + first, end,
                                    [&](const Row& row) { return beginning.isOf(textAt(row.shown)); });
    return found == end ? -1 : static_cast<int>(found - rows_.begin());
}

bool NameList::hasText(const Beginning& beginning) const {
    for (std::uint32_t place = 0; place < texts_.size();) {
        const std::string_view text = textAt(place);
        if (beginning.isOf(text)) {
            return true;
        }
        place += static_cast<std::uint32_t>(sizeof place + text.size());
    }
    return false;
}

}  // namespace platform
