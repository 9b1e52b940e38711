#include "catalogue/whole_statement.h"

#include "platform/dao/database.h"
#include "platform/dao/dbengine.h"

qint64 executeWhole(dao::Database& database, const QString& statement, platform::Trap& step,
                    const std::function<void()>& tellFailure, std::source_location where) {
    bool isBegun = false;
    qint64 affected = -1;
    step(
        [&] {
            dao::DBEngine::BeginTrans();
            isBegun = true;
        },
        where);
    if (isBegun) {  // without a transaction half of it might stay
        step([&] { database.Execute(statement.toStdString(), dao::dbFailOnError); }, where);
    }
    if (!step.failed()) {
        step([&] { affected = database.RecordsAffected(); }, where);
    }
    if (isBegun && !step.failed()) {
        isBegun = false;  // a transaction that cannot be kept ends all the same
        step([] { dao::DBEngine::CommitTrans(); }, where);
    }
    if (!step.failed()) {
        return affected;
    }
    tellFailure();
    if (isBegun) {
        platform::Trap undo;  // the failure that counts has been told
        undo([] { dao::DBEngine::Rollback(); });
    }
    return -1;
}
