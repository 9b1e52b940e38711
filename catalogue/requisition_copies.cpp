#include "catalogue/requisition_copies.h"

#include "catalogue/catalogue_parent.h"
#include "catalogue/whole_statement.h"
#include "common/window_helpers.h"
#include "platform/system/trap.h"

void RequisitionCopies::change(dao::Database& database, const QString& statement, platform::Trap& step,
                               const std::function<void()>& tellFailure, std::source_location where) {
    const qint64 affected = executeWhole(database, statement, step, tellFailure, where);
    if (affected < 0) {
        return;
    }
    step(refreshCache, where);
    if (parentForm != nullptr) {
        step([&] { parentForm->UpdateDATA(QString(), false); }, where);
    }
    if (affected > 0) {
        box(window_,
            QStringLiteral("Tabela trebovanja je azurirana. Broj promenjenih stavki je: %1.").arg(affected),
            platform::BoxIcon::Information);
    }
}
