#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

// Tables as text, by RFC 4180: a record a line, fields between separators, one that holds a separator, a
// quote or a line break between quotes, and a quote within it doubled.
namespace exchange {

class CsvError : public std::runtime_error {
 public:
    CsvError(int line, const std::string& message) : std::runtime_error(message), line_(line) {}
    int line() const { return line_; }  // from 1

 private:
    int line_;
};

struct CsvField {
    std::string text;
    bool quoted =
        false;  // an empty field between quotes is an empty text, one without them is nothing at all
};

class CsvReader {
 public:
    enum class Manner {
        Strict,   // what is not by the book is an error
        Lenient,  // a quote amid a field is one of its letters, as in 19" of a list that was typed by hand
    };

    // `text` outlives the reader. Lines end with CR LF, LF or CR; the last one may have no end.
    CsvReader(std::string_view text, char separator, Manner manner)
        : text_(text), separator_(separator), manner_(manner) {}

    // False at the end. An empty line is a record of one empty field. Throws CsvError.
    bool next(std::vector<CsvField>& record);
    // Where the record that was read last begins, from 1.
    int line() const { return start_; }

 private:
    CsvField readField();
    void readQuoted(CsvField& field);
    void readPlain(CsvField& field);
    bool atEndOfField() const;
    bool passSeparator();
    void passLineEnd();

    std::string_view text_;
    char separator_;
    Manner manner_;
    std::size_t at_ = 0;
    int line_ = 1;
    int start_ = 0;
};

// Adds a field to a record's text, between quotes where it needs them. An empty text always stands between
// quotes.
void addCsvText(std::string& record, std::string_view text);

}  // namespace exchange
