#include "platform/dao/failure.h"

#include <array>

namespace dao {
namespace {

struct Sentence {
    int number;
    std::string_view text;
};

constexpr std::array kSentences{
    Sentence{errOverflow, "Overflow."},
    Sentence{errTypeMismatch, "Type mismatch."},
    Sentence{errInvalidUseOfNull, "Invalid use of Null."},
    Sentence{errInvalidOperation, "Invalid operation."},
    Sentence{errObjectExists, "Object already exists."},
    Sentence{errUpdateWithoutEdit, "Update or CancelUpdate without AddNew or Edit."},
    Sentence{errNoCurrentRecord, "No current record."},
    Sentence{errDuplicateKey,
             "The changes were not made because they would create duplicate values in the index."},
    Sentence{errFileNotFound, "Couldn't find file."},
    Sentence{errNotEnoughSpace, "Not enough space on disk."},
    Sentence{errReadOnly, "Can't update. Database or object is read-only."},
    Sentence{errInvalidPassword, "Not a valid password."},
    Sentence{errMissingRight, "You have no permission for this on the server."},
    Sentence{errTransactionWithoutBegin, "Commit or Rollback without BeginTrans."},
    Sentence{errDiskIo, "Disk or network error."},
    Sentence{errPathInvalid, "Not a valid path."},
    Sentence{errFileInUse, "Couldn't use the file; it is already in use."},
    Sentence{errCannotOpen, "Can't open database. It may be damaged."},
    Sentence{errCannotLockFile, "Couldn't lock file; its folder takes no lock file."},
    Sentence{errCancelled, "Operation canceled by user."},
    Sentence{errNoPermission, "The file can't be opened; its owner gives no permission to read it."},
    Sentence{errFieldTooSmall, "The field is too small to accept the amount of data you attempted to add."},
    Sentence{errFieldNotUpdatable, "The field can't be updated."},
    Sentence{errTextNotSound, "The text can't be kept; it is not valid UTF-8, or it holds a zero character."},
    Sentence{errRecordDeleted, "Record is deleted."},
    Sentence{errDataChanged, "The data has been changed by somebody else meanwhile."},
    Sentence{errRelatedRecordExists,
             "The record can't be deleted or changed; another table has related records."},
    Sentence{errRelatedRecordRequired,
             "A related record is required; the record this one is to belong to does not exist."},
    Sentence{errLocked, "Couldn't update; currently locked."},
    Sentence{errItemNotFound, "Item not found in this collection."},
    Sentence{errCannotUpdate, "This Recordset is not updatable."},
    Sentence{errUnrecognisedFormat, "Unrecognized database format."},
    Sentence{errExclusiveByOther, "Couldn't open database; another user has it open exclusively."},
    Sentence{errNewerForm, "The database was written by a newer version of the program."},
    Sentence{errTooComplex, "Query is too complex."},
    Sentence{errObjectClosed, "Object invalid or no longer set."},
};

thread_local std::vector<ErrorEntry>* listAside = nullptr;

std::vector<ErrorEntry>& errorList() {
    static std::vector<ErrorEntry> list;
    return listAside != nullptr ? *listAside : list;
}

}  // namespace

std::string_view sentenceFor(int number) {
    for (const Sentence& sentence : kSentences) {
        if (sentence.number == number) {
            return sentence.text;
        }
    }
    return {};
}

void fail(int number, const std::string& sentence) {
    const std::string text = sentence.empty() ? std::string(sentenceFor(number)) : sentence;
    errorList().assign(1, ErrorEntry{number, text});
    throw Error(number, text);
}

const std::vector<ErrorEntry>& lastErrors() {
    return errorList();
}

ErrorsAside::ErrorsAside() {
    listAside = &list_;
}
ErrorsAside::~ErrorsAside() {
    listAside = nullptr;
}

QuietErrors::QuietErrors() : before_(errorList()) {}
QuietErrors::~QuietErrors() {
    errorList() = std::move(before_);
}

}  // namespace dao
