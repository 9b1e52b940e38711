#include "catalogue/sort_state.h"

#include "common/help.h"
#include "common/modMain.h"
#include "platform/controls/boxes.h"
#include "platform/system/trap.h"

using platform::SortTag;
using platform::Trap;

namespace {

void tellFailure(const Trap& step, const QString& what, const QString& title, QWidget* owner) {
    platform::showBox(
        {.text = what + QStringLiteral("\n\n%1\nLinija koda: %2").arg(step.line()).arg(step.codeLine()),
         .title = title,
         .icon = platform::BoxIcon::Exclamation,
         .help = showHelpContents},
        owner);
}

}  // namespace

SortTag readSortTag(const QString& tag, QWidget* owner) {
    Trap step;
    SortTag sort{false, QString(), QStringLiteral("ASC")};
    step([&] { sort = platform::splitSortTag(tag); });
    if (step.failed()) {
        tellFailure(step, QStringLiteral("Neocekivana greska prilikom odredjivanja svojstava sortiranja:"),
                    QStringLiteral("frmKonfigurator -> GetSortTagData(%1)").arg(tag), owner);
    }
    return sort;
}

QString writeSortTag(const SortTag& sort, QWidget* owner) {
    Trap step;
    QString tag = QStringLiteral("0Naziv0");
    step([&] { tag = platform::makeSortTag(sort); });
    if (step.failed()) {
        tellFailure(step, QStringLiteral("Neocekivana greska prilikom dodeljivanja svojstva sortiranja:"),
                    QStringLiteral("frmKonfiguratorEx -> SetSortTagData"), owner);
    }
    return tag;
}
