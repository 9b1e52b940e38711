#include "exchange/csv.h"

namespace exchange {

bool CsvReader::next(std::vector<CsvField>& record) {
    record.clear();
    if (at_ >= text_.size()) {
        return false;
    }
    start_ = line_;
    do {
        record.push_back(readField());
    } while (passSeparator());
    passLineEnd();
    return true;
}

CsvField CsvReader::readField() {
    CsvField field;
    if (at_ < text_.size() && text_[at_] == '"') {
        readQuoted(field);
        if (!atEndOfField()) {
            if (manner_ == Manner::Strict) {
                throw CsvError(line_, "something stands behind the closing quote of a field");
            }
            readPlain(field);
        }
    } else {
        readPlain(field);
    }
    return field;
}

void CsvReader::readQuoted(CsvField& field) {
    const int opened = line_;
    field.quoted = true;
    for (++at_; at_ < text_.size(); ++at_) {
        if (text_[at_] == '"') {
            ++at_;
            if (at_ >= text_.size() || text_[at_] != '"') {
                return;
            }
        }
        if (text_[at_] == '\n' || (text_[at_] == '\r' && text_.substr(at_ + 1, 1) != "\n")) {
            ++line_;
        }
        field.text += text_[at_];
    }
    throw CsvError(opened, "a quote is opened and never closed");
}

void CsvReader::readPlain(CsvField& field) {
    for (; !atEndOfField(); ++at_) {
        if (text_[at_] == '"' && manner_ == Manner::Strict) {
            throw CsvError(line_, "a quote stands amid a field that does not begin with one");
        }
        field.text += text_[at_];
    }
}

bool CsvReader::atEndOfField() const {
    return at_ >= text_.size() || text_[at_] == separator_ || text_[at_] == '\n' || text_[at_] == '\r';
}

bool CsvReader::passSeparator() {
    if (at_ >= text_.size() || text_[at_] != separator_) {
        return false;
    }
    ++at_;
    return true;
}

void CsvReader::passLineEnd() {
    if (at_ < text_.size() && text_[at_] == '\r') {
        ++at_;
        if (at_ < text_.size() && text_[at_] == '\n') {
            ++at_;
        }
    } else if (at_ < text_.size()) {
        ++at_;
    }
    ++line_;
}

void addCsvText(std::string& record, std::string_view text) {
    if (!text.empty() && text.find_first_of("\",\r\n") == std::string_view::npos) {
        record += text;
        return;
    }
    record += '"';
    for (const char c : text) {
        if (c == '"') {
            record += c;
        }
        record += c;
    }
    record += '"';
}

}  // namespace exchange
