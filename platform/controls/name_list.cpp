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

constexpr std::size_t kAhead = 16;  // rows
constexpr std::size_t kUsual = 24;  // bytes of a name, with its length

bool isAscii(char letter) {
    return (static_cast<unsigned char>(letter) & 0x80U) == 0;
}

// A beginning that names are looked through for. As long as both are plain letters no name is taken apart.
class Beginning {
 public:
    explicit Beginning(const QString& text) : text_(text) {
        for (const QChar letter : text) {
            if (letter.unicode() >= 0x80) {
                break;
            }
            plain_.push_back(alphabet::lowerAscii(letter.toLatin1()));
        }
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

}  // namespace

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

// The texts are put in the order of their rows as well: whoever goes through them all reads on and on.
void NameList::sort() {
    std::vector<Row> sorted;
    sorted.reserve(rows_.size());
    for (const std::uint32_t place : order()) {
        sorted.push_back(rows_[place]);
    }
    rows_ = std::move(sorted);
    std::string texts;
    texts.reserve(texts_.size());
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        // Each text lies somewhere else, and waiting for the memory would take longer than all the rest.
        __builtin_prefetch(texts_.data() + rows_[std::min(i + kAhead, rows_.size() - 1)].shown);
        Row& row = rows_[i];
        const std::uint32_t old = std::exchange(row.shown, static_cast<std::uint32_t>(texts.size()));
        row.key = row.shown;
        texts.append(texts_, old, sizeof old + textAt(old).size());
    }
    texts_ = std::move(texts);
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

int NameList::findPrefix(const QString& text) const {
    const Beginning beginning(text);
    const auto found = std::find_if(rows_.begin(), rows_.end(),
                                    [&](const Row& row) { return beginning.isOf(textAt(row.shown)); });
    return found == rows_.end() ? -1 : static_cast<int>(found - rows_.begin());
}

}  // namespace platform
