#include "documents/requisition_order.h"

#include "common/help.h"
#include "common/settings.h"
#include "platform/controls/boxes.h"
#include "platform/controls/pictures.h"
#include "platform/system/trap.h"

RequisitionOrder::RequisitionOrder(platform::ListView& view)
    : view_(view),
      columnIcons_{{QStringLiteral("ASC"), platform::icon(QStringLiteral("SortUp"))},
                   {QStringLiteral("DESC"), platform::icon(QStringLiteral("SortDown"))},
                   {QStringLiteral("dummy"), platform::icon(QStringLiteral("Dummy"))}} {}

void RequisitionOrder::load() {
    tag = settings::text(settings::requisition.LVWColumnSort);
    if (tag.isEmpty()) {
        tag = QString::fromLatin1(settings::requisition.LVWColumnSort.defaultValue);
    }
    sort_ = read(tag);
}

void RequisitionOrder::save() const {
    settings::setText(settings::requisition.LVWColumnSort, tag);
}

platform::SortTag RequisitionOrder::read(const QString& text) const {
    platform::SortTag sort;
    platform::Trap step;
    step([&] { sort = platform::splitSortTag(text); });
    if (!step.failed()) {
        return sort;
    }
    platform::showBox(
        {.text = QStringLiteral(
                     "Neocekivana greska prilikom odredjivanja svojstava sortiranja:\n\n%1\nLinija koda: %2")
                     .arg(step.line())
                     .arg(step.codeLine()),
         .title = QStringLiteral("frmInvoiceEx -> GetSortTagData(") + text + QLatin1Char(')'),
         .icon = platform::BoxIcon::Exclamation,
         .help = showHelpContents},
        view_.window());
    return {};
}

QString RequisitionOrder::clause() const {
    return sort_.sorted ? QStringLiteral(" ORDER BY ") + sort_.field + QLatin1Char(' ') + sort_.order
                        : QString();
}

void RequisitionOrder::reset(platform::Trap& step) {
    sort_ = {false, fieldOf(RequisitionColumn::Name), QStringLiteral("ASC")};
    step([&] { switchColumnIcons(false); });
}

void RequisitionOrder::keepTag() {
    tag = platform::makeSortTag(sort_);
}

void RequisitionOrder::show(platform::Trap& step) {
    if (!sort_.sorted) {
        return;
    }
    step([&] { switchColumnIcons(true); });
    if (const int column = view_.columns().indexOf(sort_.field)) {
        step([&] { view_.columns().setIcon(column, sort_.order); });
    }
}

void RequisitionOrder::sortBy(int column) {
    switchColumnIcons(true);
    const QString key = view_.columns().key(column);
    if (key != sort_.field) {
        const int old = view_.columns().indexOf(sort_.field);
        if (sort_.sorted && old > 0) {
            view_.columns().setIcon(old, QStringLiteral("dummy"));
        }
        sort_.field = key;
        sort_.order = QStringLiteral("ASC");
    } else {
        sort_.order = sort_.order == QLatin1String("ASC") ? QStringLiteral("DESC") : QStringLiteral("ASC");
    }
    view_.columns().setIcon(column, sort_.order);
    sort_.sorted = true;
}

void RequisitionOrder::switchColumnIcons(bool on) {
    view_.columns().setImages(on ? columnIcons_ : QHash<QString, QIcon>());
}
