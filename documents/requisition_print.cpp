#include "documents/requisition_print.h"

#include <algorithm>

#include "common/modMain.h"
#include "common/window_helpers.h"
#include "documents/frmInvoiceEx_error.h"
#include "documents/requisition_list.h"
#include "documents/service_view.h"
#include "platform/system/files.h"
#include "platform/system/trap.h"

namespace {

QString productText(const RequisitionCells& row, qsizetype padding) {
    return row.manufacturer() + QStringLiteral(", ") + row.group() + QLatin1Char('\n') + QLatin1Char('\t') +
           row.name() + QStringLiteral("\t\t") + row.quantity() + QLatin1Char('x') + QLatin1Char('\t') +
           row.price() + QLatin1Char('\t') + QString(padding, QLatin1Char(' ')) + row.amount() +
           QStringLiteral("\n\n");
}

}  // namespace

RequisitionPrint::RequisitionPrint(const RequisitionList& list, QWidget* window)
    : list_(list), window_(window) {}

void RequisitionPrint::execute() {
    QString errorText;
    if (!write(errorText) && !errorText.isEmpty()) {
        box(window_, errorText, platform::BoxIcon::Exclamation);
    }
}

bool RequisitionPrint::write(QString& errorText) const {
    errorText.clear();
    if (!list_.hasProducts()) {
        box(window_, QStringLiteral("Nema podataka koji bi mogli da se stampaju."),
            platform::BoxIcon::Information);
        return true;
    }
    const QString file = platform::programFolder() + QStringLiteral("/PriceList.txt");
    platform::Trap step;
    step([&] { platform::writeTextFile(file, text()); });
    if (!step.failed()) {
        step([&] { LaunchAssociated(window_, file); });  // never the list of another service
    }
    if (!step.failed()) {
        return true;
    }
    errorText = step.line() + requisition::occuredIn("TrebovanjePrint");
    return false;
}

QString RequisitionPrint::ofService(QString (ServiceView::*read)() const) const {
    return service ? (service->*read)() : QString();
}

QString RequisitionPrint::title() const {
    const auto caption = [this](int tab) { return service ? service->tabCaption(tab) : QString(); };
    return caption(1) + QLatin1Char('/') + caption(2) + QStringLiteral(" - CENOVNA LISTA");
}

QString RequisitionPrint::text() const {
    const QString heading = title();
    const QString job = QStringLiteral("Usluga od ") + ofService(&ServiceView::serviceStarted) +
                        QStringLiteral(" ~ ") + ofService(&ServiceView::serviceDescription);
    const platform::ListView& view = list_.view();
    const QString total = RequisitionCells(view.item(requisition::kTotal)).amount();
    QString all = heading + QLatin1Char('\n') + job + QLatin1Char('\n') +
                  QString(std::max(heading.size(), job.size()), QLatin1Char('*')) + QStringLiteral("\n\n\n");
    // An amount as long as the total takes the padding of the line above it. The shop's list has always
    // looked so, and the papers in its files are compared with it.
    qsizetype padding = heading.size();
    for (int i = 1; i <= view.count(); ++i) {
        const RequisitionCells row(view.item(i));
        if (row.isTotal()) {
            continue;
        }
        if (const QString amount = row.amount(); total.size() > amount.size()) {
            padding = total.size() - amount.size();
        }
        all += productText(row, padding);
    }
    return all + QStringLiteral("Ukupno: ") + total + QLatin1Char('\n');
}
