#include "documents/requisition_parts.h"

#include <QAction>
#include <QDialog>
#include <QHeaderView>
#include <QLabel>
#include <QProgressBar>

#include "platform/controls/status_bar.h"

RequisitionParts::RequisitionParts(QDialog& window)
    : bar(window, requisitionCommands(),
          [this, &window](const RequisitionCommandRow& command) {
              command.action({list, giveBack, print, catalogue, window});
          }),
      status(window),
      list(window, status.bar()),
      giveBack(list, &window),
      print(list, &window),
      catalogue(list, &window) {
    connectParts();
    status.watch(bar, {&window, list.view().viewport(), list.view().header()->viewport(),
                       list.cover().progress(), list.cover().label()});
}

void RequisitionParts::connectParts() {
    QObject::connect(&list, &RequisitionList::counted, &status, &RequisitionStatus::setStanding);
    QObject::connect(&list, &RequisitionList::updated, &status, [this] { showCommands(); });
    // Only a click looks at which row it is: after a refresh the sum may be chosen, and the button stays lit.
    QObject::connect(&list.view(), &platform::ListView::itemClicked, &status, [this](const QString& key) {
        bar.action(RequisitionCommand::Delete)->setEnabled(key != requisition::kTotal);
    });
}

void RequisitionParts::showCommands() {
    bar.update({.hasProducts = list.hasProducts(),
                .hasSelection = list.view().selectedIndex() > 0,
                .isSorted = list.order().isSorted()});
}
