#include "shell/list_columns.h"

#include <QStringList>
#include <cmath>

#include "platform/controls/list_view.h"
#include "platform/system/trap.h"
#include "shell/modMain.h"

namespace {

using Figure = int (platform::ListView::*)(int) const;

QString figuresOf(const platform::ListView& list, Figure figure) {
    QStringList figures;
    for (int column = 1; column <= list.columnCount(); ++column)
        figures.append(QString::number((list.*figure)(column)));
    return figures.join(QLatin1Char(';'));
}

int figureOf(const QString& text) {
    return static_cast<int>(std::lround(LocaleSingle(text)));
}

}  // namespace

void placeColumns(platform::ListView& list, const QString& widths, const QString& positions,
                  platform::Trap& step) {
    const QStringList wide = widths.split(QLatin1Char(';'));
    for (qsizetype i = 0; i < wide.size(); ++i)
        step([&] { list.setColumnWidthTwips(static_cast<int>(i) + 1, figureOf(wide[i])); });
    QList<int> places;
    for (const QString& place : positions.split(QLatin1Char(';')))
        places.append(figureOf(place));
    step([&] { list.setColumnPositions(places); });
}

QString columnWidths(const platform::ListView& list) {
    return figuresOf(list, &platform::ListView::columnWidthTwips);
}

QString columnPositions(const platform::ListView& list) {
    return figuresOf(list, &platform::ListView::columnPosition);
}
