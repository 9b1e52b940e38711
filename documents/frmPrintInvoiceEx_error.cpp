#include "documents/frmPrintInvoiceEx_error.h"

#include "common/modMain.h"
#include "platform/controls/boxes.h"

void print_invoice::tellError(QWidget* owner, const platform::Trap& failure) {
    // The last four lines are asked for over the telephone too; this system has nothing to put there.
    platform::Box box;
    box.text = QStringLiteral(
                   "Error Number: %1\nError description: %2\nError source: %3\nError help file: \n"
                   "Error help context: 0\nLastDllError: 0")
                   .arg(QString::number(failure.number()), failure.description(), GetResString(1));
    box.title = GetResString(1);
    box.icon = platform::BoxIcon::Critical;
    platform::showBox(box, owner);
}
