#pragma once

#include <QFile>
#include <QString>
#include <cstddef>
#include <string>
#include <string_view>

// A plain text file that is written from the top, with tabs to columns. Texts are UTF-8; columns count
// characters, so that a client named Šarić stands as straight as one named Peric. Line breaks inside a text
// become the platform's.
class ReportFile {
 public:
    ReportFile() = default;
    ReportFile(const ReportFile&) = delete;
    ReportFile& operator=(const ReportFile&) = delete;
    ~ReportFile();  // closes; what cannot be written then is lost, so call close() first

    // Replaces what is there. Throws platform::RunError: 70 permission denied, 75 no such folder, a folder of
    // that name, and the like.
    void open(const QString& path);
    // Writes what is left; throws platform::RunError 61 (disk full) or 75 where that, or anything before it,
    // could not be written. Of a file that is not open: nothing.
    void close();
    void remove();  // closes it and takes it away: for a report that was broken off

    // These never throw: on a file that is not open, or no longer takes anything, they pass over.
    void tab(int column);  // from 1; where the line is already past it, to that column of the next line
    void print(std::string_view text);
    void print(std::size_t times, char character);
    void endLine();

    bool isGood() const { return file_.isOpen() && !broken_; }

 private:
    void printLines(std::string_view text);
    void printPiece(std::string_view text);
    void flush();

    QFile file_;
    std::string buffer_;
    int column_ = 1;  // where the next character goes
    bool broken_ = false;
    int failure_ = 0;  // the number of the error that broke it
};
