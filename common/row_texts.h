#pragma once

#include <QString>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

// Texts of a list's rows as the file has them, in UTF-8 and end to end: most of them are never looked at, and
// a string of its own for each would cost more than reading it did.
class RowTexts {
 public:
    std::size_t count() const { return ends_.size(); }
    void add(std::string_view text) {
        all_ += text;
        ends_.push_back(all_.size());
    }
    // Counted from 0, in the order of adding.
    QString text(std::size_t index) const {
        const std::size_t start = index == 0 ? 0 : ends_[index - 1];
        return QString::fromUtf8(all_.data() + start, static_cast<qsizetype>(ends_[index] - start));
    }

 private:
    std::string all_;
    std::vector<std::size_t> ends_;
};
