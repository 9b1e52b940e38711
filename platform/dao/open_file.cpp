#include "platform/dao/open_file.h"

#include "platform/dao/failure.h"
#include "platform/dao/open_files.h"
#include "platform/dao/translated.h"
#include "platform/sql/ast.h"
#include "platform/sql/parser.h"
#include "platform/text/utf8.h"

namespace dao {

OpenFile::OpenFile(PlacePtr place, std::shared_ptr<Presence> presence, std::unique_ptr<driver::Store> store)
    : place_(std::move(place)),
      presence_(std::move(presence)),
      store_(std::move(store)),
      translator_(*store_) {}

OpenFile::~OpenFile() {
    closeStore();
    if (presence_ != nullptr && presence_.use_count() == 1 && presence_->enterExclusive()) {
        place_->tidy();
        presence_->leaveExclusive();
    }
}

void OpenFile::releaseStore() {
    OpenFiles::forget(this);
    closeStore();
    touch();
}

void OpenFile::closeStore() noexcept {
    translator_.dropStore();
    store_.reset();
}

void OpenFile::reopen() {
    place_ = place_->again();
    if (presence_ == nullptr) {
        presence_ = place_->enter(true);
    }
    store_ = place_->open();
    translator_.setStore(*store_);
    OpenFiles::add(place_->identity(), store_->writable(), shared_from_this());
    touch();
}

std::int64_t OpenFile::execute(std::string_view statement) {
    if (!alphabet::isSound(statement)) {
        fail(errTextNotSound);  // what it writes would be no better
    }
    const sql::StatementPtr tree = translated([&] { return sql::parse(statement); });
    if (tree->kind == sql::Statement::Kind::Select) {
        fail(errInvalidOperation, "Cannot execute a select query.");
    }
    std::int64_t affected = 0;
    transaction_.write([&] { affected = translator_.run(*tree); });
    return affected;
}

}  // namespace dao
