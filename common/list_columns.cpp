#include "common/list_columns.h"

#include <QStringList>
#include <cmath>

#include "common/modMain.h"
#include "platform/controls/list_view.h"
#include "platform/system/trap.h"

namespace {

using Figure = int (platform::ViewColumns::*)(int) const;

QString figuresOf(const platform::ViewColumns& columns, Figure figure) {
    QStringList figures;
    for (int column = 1; column <= columns.count(); ++column) {
        figures.append(QString::number((columns.*figure)(column)));
    }
    return figures.join(QLatin1Char(';'));
}

int figureOf(const QString& text) {
    return static_cast<int>(std::lround(LocaleSingle(text)));
}

}  // namespace

QString unitSuffix() {
    return CeneDinarske ? QStringLiteral(" [DIN]") : QStringLiteral(" [EUR]");
}

QString headerOf(const ListColumn& column) {
    const QString text =
        column.header == nullptr ? GetResString(column.headerId) : QString::fromLatin1(column.header);
    return column.isMoney ? text + unitSuffix() : text;
}

void addColumns(platform::ListView& list, std::span<const ListColumn> columns) {
    for (const ListColumn& column : columns) {
        list.columns().add(QString::fromLatin1(column.field), headerOf(column), column.alignment);
    }
}

void showUnit(platform::ListView& list, std::span<const ListColumn> columns) {
    for (size_t i = 0; i < columns.size(); ++i) {
        if (columns[i].isMoney) {
            list.columns().setText(static_cast<int>(i) + 1, headerOf(columns[i]));
        }
    }
}

QString defaultWidths(std::span<const ListColumn> columns) {
    QStringList widths;
    for (const ListColumn& column : columns) {
        widths.append(QString::number(column.width));
    }
    return widths.join(QLatin1Char(';'));
}

QString defaultPositions(std::span<const ListColumn> columns) {
    QStringList places;
    for (size_t i = 1; i <= columns.size(); ++i) {
        places.append(QString::number(i));
    }
    return places.join(QLatin1Char(';'));
}

void placeColumns(platform::ListView& list, const QString& widths, const QString& positions,
                  platform::Trap& step) {
    const QStringList wide = widths.split(QLatin1Char(';'));
    for (qsizetype i = 0; i < wide.size(); ++i) {
        step([&] { list.columns().setWidth(static_cast<int>(i) + 1, figureOf(wide[i])); });
    }
    QList<int> places;
    for (const QString& place : positions.split(QLatin1Char(';'))) {
        places.append(figureOf(place));
    }
    step([&] { list.columns().setPositions(places); });
}

bool createListView(platform::ListView& list, std::span<const ListColumn> columns, const QString& widths,
                    const QString& positions, QString& errorText) {
    platform::Trap step;
    step([&] { list.columns().setImages({}); });
    addColumns(list, columns);
    placeColumns(list, widths, positions, step);
    if (!step.failed()) {
        return true;
    }
    errorText =
        QStringLiteral("Neocekivana greska prilikom stvaranja ListView kontrole:\n\n%1\nLinija koda: %2")
            .arg(step.line())
            .arg(step.codeLine());
    return false;
}

QString columnWidths(const platform::ListView& list) {
    return figuresOf(list.columns(), &platform::ViewColumns::width);
}

QString columnPositions(const platform::ListView& list) {
    return figuresOf(list.columns(), &platform::ViewColumns::position);
}
