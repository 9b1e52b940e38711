#include "platform/report/print_dialog.h"

#include <QPageRanges>
#include <QPrintDialog>
#include <QPrinter>
#include <algorithm>
#include <utility>

namespace report {
namespace {

PrintDialog& replacement() {
    static PrintDialog dialog;
    return dialog;
}

}  // namespace

void setPrintDialog(PrintDialog dialog) {
    replacement() = std::move(dialog);
}

bool askForPrinter(QPrinter& printer, int pages, QWidget* owner) {
    if (replacement()) {
        return replacement()(printer, owner);
    }
    QPrintDialog window(&printer, owner);
    window.setObjectName(QStringLiteral("PrintDialog"));
    window.setOption(QAbstractPrintDialog::PrintPageRange);
    window.setOption(QAbstractPrintDialog::PrintCurrentPage);
    window.setOption(QAbstractPrintDialog::PrintSelection, false);
    window.setMinMax(1, std::max(1, pages));
    return window.exec() == QDialog::Accepted;
}

QList<int> pagesToPrint(const QPrinter& printer, int pages, int current) {
    if (printer.printRange() == QPrinter::CurrentPage) {
        return {current};
    }
    const bool some = printer.printRange() == QPrinter::PageRange;
    const QPageRanges ranges = printer.pageRanges();
    const int from = some && printer.fromPage() > 0 ? printer.fromPage() : 1;
    const int to = some && printer.toPage() > 0 ? printer.toPage() : pages;
    QList<int> wanted;
    for (int page = 1; page <= pages; ++page) {
        if (some && !ranges.isEmpty() ? ranges.contains(page) : page >= from && page <= to) {
            wanted.append(page);
        }
    }
    if (printer.pageOrder() == QPrinter::LastPageFirst) {
        std::reverse(wanted.begin(), wanted.end());
    }
    return wanted;
}

}  // namespace report
