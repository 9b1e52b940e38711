#include "records/main_list_owner.h"

#include "records/entry_fields.h"
#include "records/main_choices.h"
#include "records/main_fields.h"
#include "records/main_view.h"
#include "records/stages.h"

MainListOwner::MainListOwner(const Stages& stages, EntryFields& fields, const MainChoices& choices,
                             MainView& window)
    : stages_(stages), fields_(fields), choices_(choices), window_(window) {}

qint32 MainListOwner::computerOnShow() const {
    return stages_[kComputers].chosen();
}

qint16 MainListOwner::taxOfNewServices() const {
    return static_cast<qint16>(choices_.DefaultGST);
}

QString MainListOwner::description() const {
    return fields_.text(kDescription);
}

void MainListOwner::showTexts(const QString& description, const QString& kinds) {
    fields_.setText(kDescription, description);
    fields_.setText(kServiceKinds, kinds);
}

void MainListOwner::renewRecordCommands() {
    window_.UpdateToolbarState();
}

void MainListOwner::renewServiceCommands() {
    window_.UpdateServiceButtons();
}
