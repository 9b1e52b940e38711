#include "documents/list_setup.h"

#include "platform/system/trap.h"
#include "shell/list_columns.h"

bool createListView(platform::ListView& list, std::span<const ListColumn> columns, const QString& widths,
                    const QString& positions, QString& errorText) {
    platform::Trap step;
    step([&] { list.setColumnImages({}); });
    for (const ListColumn& column : columns)
        list.addColumn(QString::fromLatin1(column.key), QString::fromLatin1(column.text), column.alignment);
    placeColumns(list, widths, positions, step);
    if (!step.failed())
        return true;
    errorText =
        QStringLiteral("Neocekivana greska prilikom stvaranja ListView kontrole:\n\n%1\nLinija koda: %2")
            .arg(step.line())
            .arg(step.codeLine());
    return false;
}
