#pragma once

#include <libpq-fe.h>

#include <bit>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "measure.h"

// A shop on a server as a program uses it that knows nothing of ours: through the server's own C library,
// with prepared statements, and values both ways as the server itself holds them. Its tables and columns are
// named in small letters. Whatever fails ends the program.
class PlainServer {
 public:
    // A row of an answer: columns from 0, Null as nothing.
    class Row {
     public:
        Row(const PGresult* answer, int row) : answer_(answer), row_(row) {}

        std::int64_t integer(int column) const;
        double number(int column) const;
        // Stays where it is until the statement runs again.
        std::string_view text(int column) const {
            return {PQgetvalue(answer_, row_, column),
                    static_cast<std::size_t>(PQgetlength(answer_, row_, column))};
        }

     private:
        const PGresult* answer_;
        int row_;
    };

    // Prepared when it first runs, with the types that have been bound by then. "?" stands for a value.
    class Statement {
     public:
        Statement(const PlainServer& shop, const std::string& text);
        ~Statement() { PQclear(answer_); }
        Statement(const Statement&) = delete;
        Statement& operator=(const Statement&) = delete;

        Statement& bind(int place, std::int64_t value);
        Statement& bind(int place, std::string_view text);
        bool next();  // false behind the last row; the statement can be run again then
        void run();
        PGresult* ask();  // the whole answer
        // With the types bound so far.
        Statement& prepare();
        // Hands it over without waiting; the answer comes in its turn. In a pipeline, and prepared before.
        void send();
        Row row() const { return {answer_, row_}; }

     private:
        struct Bound {
            Oid type = 0;
            std::string bytes;
        };
        Bound& at(int place);
        template <class Run>
        int with(Run&& run) const;

        const PlainServer& shop_;
        std::string text_, name_;
        std::vector<Bound> bound_;
        PGresult* answer_ = nullptr;
        int row_ = -1;
        bool prepared_ = false;
    };

    explicit PlainServer(const std::string& place);
    ~PlainServer() { PQfinish(handle_); }
    PlainServer(const PlainServer&) = delete;
    PlainServer& operator=(const PlainServer&) = delete;

    PGconn* handle() const { return handle_; }
    void run(const std::string& text) const;
    std::int64_t number(const std::string& text) const;  // the first column of the first row

    using Visit = std::function<void(const Row&)>;
    void scan(Statement& statement, const Visit& visit) const;
    static std::string each(const std::string& columns) { return columns; }
    static std::string inOrder(const std::string& key) { return " ORDER BY " + key; }

    // Ends a stretch of a pipeline, and waits for all its answers. How many rows the last one changed.
    int finish() const;

    [[noreturn]] void die(const std::string& what) const;

 private:
    PGconn* handle_;
    mutable int named_ = 0;
};
