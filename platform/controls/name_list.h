#pragma once

#include <QString>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace platform {

// Names in alphabetical order, each with a number: what a selector lists. A shop may have a million of them,
// so they lie packed, as the file gives them: a name in UTF-8 costs its bytes and sixteen more. Places count
// from 0 and have to be there.
class NameList {
 public:
    struct Name {
        std::string_view text;  // valid until the list changes
        qint32 number = 0;
    };

    // For about so many names; they may be more.
    void expect(std::size_t names);
    // Many at once, in any order, and then sort(). std::length_error where all texts together pass 4 GiB.
    void add(Name name);
    // Names that differ in nothing but case stay in the order in which they were added.
    void sort();

    int placeFor(std::string_view text) const;  // in the order, behind its namesakes
    void insert(int place, Name name);
    void remove(int place);
    // The place stays, and with it the order of all the others: that of the name which was there before.
    void replace(int place, std::string_view text);

    int size() const { return static_cast<int>(rows_.size()); }
    Name at(int place) const;
    QString text(int place) const;
    // The first name, from the top, that begins with the text, without regard to case; -1: none does. An
    // empty text is how every name begins.
    int findPrefix(const QString& text) const;

 private:
    // Where in texts_ there stand the name that decides on the place, and the one on show.
    struct Row {
        std::uint32_t key, shown;
        qint32 number;
    };

    class Beginning;

    std::vector<std::uint32_t> order() const;  // the places of the names, as they are to stand
    // The rows whose places are those of names with the letters of this one in front: the first, and the one
    // behind the last.
    std::pair<int, int> rowsFrom(std::string_view text) const;
    int findIn(int first, int last, const Beginning& beginning) const;
    bool hasText(const Beginning& beginning) const;  // also of names that are gone
    std::uint32_t keep(std::string_view text);
    std::string_view textAt(std::uint32_t place) const;

    std::string texts_;  // each behind its length
    std::vector<Row> rows_;
};

}  // namespace platform
