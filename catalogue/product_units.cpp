#include "catalogue/product_units.h"

#include <QComboBox>

#include "common/window_helpers.h"
#include "data/session.h"
#include "platform/dao/dao.h"
#include "platform/system/trap.h"

ProductUnits::ProductUnits(QWidget* window) : window_(window), box_(new QComboBox(window)) {}

// Without a password: the catalogue that opens the window holds the file open with the right one.
void ProductUnits::fill(bool withNone) {
    platform::Trap step;
    dao::Database database;
    dao::Recordset rows;
    box_->clear();
    step([&] { database = dao::DBEngine::OpenDatabase(databasePath().toStdString()); });
    if (!step.failed()) {
        step([&] { rows = database.OpenRecordset("JM", dao::dbOpenDynaset); });
    }
    if (rows) {
        addRows(rows, withNone, step);
    }
    step([&] { rows.Close(); });
    step([&] { database.Close(); });
    if (step.failed()) {
        ::box(window_,
              QStringLiteral("Neocekivana greska prilikom popunjavanja Combo box-a jedinicama mera.\n\n") +
                  step.line(),
              platform::BoxIcon::Exclamation);
    }
}

// A unit that somebody deletes meanwhile costs its own line only.
void ProductUnits::addRows(dao::Recordset& rows, bool withNone, platform::Trap& step) {
    bool goesOn = false;
    step([&] { goesOn = !rows.EOF(); });
    if (goesOn && withNone) {
        box_->addItem(QString(), -1);
    }
    while (goesOn) {
        step([&] {
            const dao::Value& name = rows["Naziv"];
            box_->addItem(name.isNull() ? QString() : QString::fromStdString(name.asText()),
                          rows["AID"].asLong());
        });
        goesOn = false;
        step([&] {
            rows.MoveNext();
            goesOn = !rows.EOF() && step.number() != dao::errLocked;
        });
    }
    if (box_->count() > 0) {
        box_->setCurrentIndex(0);
    }
}

void ProductUnits::choose(const QString& beginning) {
    int found = -1;
    for (int i = 0; i < box_->count() && found < 0; ++i) {
        if (box_->itemText(i).left(beginning.size()).compare(beginning, Qt::CaseInsensitive) == 0) {
            found = i;
        }
    }
    box_->setCurrentIndex(found);
}

bool ProductUnits::isChosen() const {
    return box_->currentIndex() >= 0;
}
