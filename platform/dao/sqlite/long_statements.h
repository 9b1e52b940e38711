#pragma once

struct sqlite3;

namespace dao::driver {

// Lets the connection's statements be left (Leavable): one that is at work fails with errCancelled soon
// after.
void letLeave(sqlite3* db);

// As long as this lives, the connection's statements may go through a whole database: one that is at work at
// breakOff() fails with errCancelled soon after. A commit is not among them, it takes too few steps.
class LongStatements {
 public:
    explicit LongStatements(sqlite3* db);
    ~LongStatements();
    LongStatements(const LongStatements&) = delete;
    LongStatements& operator=(const LongStatements&) = delete;

 private:
    sqlite3* db_;
};

}  // namespace dao::driver
