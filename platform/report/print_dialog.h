#pragma once

#include <QList>
#include <functional>

class QPrinter;
class QWidget;

namespace report {

// The system's question where and what to print; false: cancelled. What it is answered with stands in the
// printer.
using PrintDialog = std::function<bool(QPrinter& printer, QWidget* owner)>;

// `pages`: how many there are to choose from.
bool askForPrinter(QPrinter& printer, int pages, QWidget* owner);
// What tests put in the place of the dialog, so that none comes up; nothing: the real one again.
void setPrintDialog(PrintDialog dialog);
// The pages that were asked for, of so many, `current` being the one that the person looks at.
QList<int> pagesToPrint(const QPrinter& printer, int pages, int current);

}  // namespace report
