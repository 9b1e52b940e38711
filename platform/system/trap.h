#pragma once

#include <QString>
#include <source_location>
#include <stdexcept>
#include <utility>

#include "platform/dao/error.h"

namespace platform {

// A run-time failure outside the engine, numbered as the program's messages show it: 13 type mismatch, 53
// file not found, 58 file already exists, 61 disk full, 70 permission denied, 75 path/file access error,
// 35600 index out of bounds, 35601 element not found.
class RunError : public std::runtime_error {
 public:
    RunError(int number, const QString& description)
        : std::runtime_error(description.toStdString()), number_(number) {}
    int number() const { return number_; }

 private:
    int number_;
};

// Carries on past a failing step and remembers the last failure, so that a routine can look at it at the
// points where it wants to. A step that goes well leaves an earlier failure standing, until clear().
class Trap {
 public:
    template <typename Step>
    void operator()(Step&& step, std::source_location where = std::source_location::current()) {
        try {
            std::forward<Step>(step)();
        } catch (const dao::Error& e) {
            note(e.Number(), e.what(), where);
        } catch (const RunError& e) {
            note(e.number(), e.what(), where);
        } catch (const std::exception& e) {
            note(51, e.what(), where);
        }
    }
    bool failed() const { return number_ != 0; }
    int number() const { return number_; }
    QString description() const { return description_; }
    // "[number] description", the form that the program's messages show.
    QString line() const { return QStringLiteral("[%1] %2").arg(number_).arg(description_); }
    // The line of the source where the failing step stands; 0 where nothing failed. Messages tell it, so that
    // a shop can read it out over the telephone.
    int codeLine() const { return codeLine_; }
    void clear() {
        number_ = 0;
        codeLine_ = 0;
        description_.clear();
    }

 private:
    void note(int number, const char* description, const std::source_location& where) {
        number_ = number;
        description_ = QString::fromUtf8(description);
        codeLine_ = static_cast<int>(where.line());
    }
    int number_ = 0;
    int codeLine_ = 0;
    QString description_;
};

}  // namespace platform
