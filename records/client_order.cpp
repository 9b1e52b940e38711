#include "records/client_order.h"

#include <algorithm>

#include "platform/text/order.h"

void ClientOrder::add(std::int32_t number, const std::string* name) {
    const std::size_t at = bytes_.size();
    if (name != nullptr) {
        bytes_ += '\1';
        alphabet::appendOrderKey(bytes_, *name);
    }
    entries_.push_back({at, static_cast<std::uint32_t>(bytes_.size() - at), number});
}

void ClientOrder::sort() {
    std::stable_sort(entries_.begin(), entries_.end(),
                     [this](const Entry& a, const Entry& b) { return bytesOf(a) < bytesOf(b); });
}

std::vector<std::int32_t> ClientOrder::numbers() const {
    std::vector<std::int32_t> numbers;
    numbers.reserve(entries_.size());
    for (const Entry& entry : entries_) {
        numbers.push_back(entry.number);
    }
    return numbers;
}
