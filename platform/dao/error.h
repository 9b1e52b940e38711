#pragma once

#include <stdexcept>
#include <string>

namespace dao {

// The engine's error numbers that callers meet.
enum ErrorNumber {
    errOverflow = 6,
    errTypeMismatch = 13,
    errInvalidUseOfNull = 94,
    errInvalidOperation = 3001,  // the set or the moment does not allow it
    errNoCurrentRecord = 3021,
    errFileNotFound = 3024,
    errNotEnoughSpace = 3026,  // disk full
    errReadOnly = 3027,        // database or object is read-only
    errInvalidPassword = 3031,
    errMissingRight = 3033,      // the server's owner has not given this user the right
    errPathInvalid = 3044,       // a directory, or a folder that is not there
    errFileInUse = 3045,         // another process has the file
    errExclusiveByOther = 3356,  // another process has the file for itself alone
    errCannotOpen = 3049,        // ours by its head, but damaged
    errCannotLockFile = 3050,    // no lock file can be made (read-only folder)
    errTooFewParameters = 3061,  // an unknown field in a statement
    errSyntax = 3075,            // syntax error in an expression or statement
    errUnknownObject = 3078,     // no such table or query
    errUpdateWithoutEdit = 3020,
    errTextNotSound = 3421,  // no UTF-8, or with a zero character
    errFieldTooSmall = 3163,
    errDuplicateKey = 3022,
    errRecordDeleted = 3167,
    errCannotUpdate = 3326,  // this record set is not updatable
    errLocked = 3260,        // somebody else held the lock too long
    errItemNotFound = 3265,  // not in this collection
    errObjectExists = 3012,
    errObjectClosed = 3420,
    errDiskIo = 3043,  // disk or network error
    errUnrecognisedFormat = 3343,
    errTransactionWithoutBegin = 3034,
    errCancelled = 3059,            // given up by the person who waited for it
    errNoPermission = 3051,         // the file's owner gives no permission to read it
    errDataChanged = 3197,          // the lock of an Edit was lost and the row changed meanwhile
    errRelatedRecordExists = 3200,  // a row that others refer to, by a relation without cascade
    errRelatedRecordRequired = 3201,
    errTooComplex = 3360,
    errDuplicateField = 3191,
    errNewerForm = 3811,          // written by a newer version of the program
    errFieldNotUpdatable = 3164,  // computed, or a number that the engine gives
};

// One failure, as DBEngine::Errors() lists it.
struct ErrorEntry {
    int Number = 0;
    std::string Description;
};

// What every failing operation of the engine throws; DBEngine::Errors() holds the same until the next
// failure.
class Error : public std::runtime_error {
 public:
    Error(int number, const std::string& description) : std::runtime_error(description), number_(number) {}
    int Number() const { return number_; }
    std::string Description() const { return what(); }

 private:
    int number_;
};

}  // namespace dao
