#pragma once

#include <QColor>
#include <QRectF>
#include <QString>
#include <optional>

// What stands on a page, each thing at its place. Lengths in twips, from the left top corner of the sheet.
namespace report {

// Text is one line as it stands on the page (long texts have been broken already). The lines of one broken
// text follow each other in Page::items.
struct PageItem {
    enum class Kind { Text, Line, Frame, Image };
    // How a broken text goes on in the next item: with a blank between, or in the middle of a word.
    enum class Join { None, Blank, Direct };
    Kind kind = Kind::Text;
    QRectF place;   // Text: the line's box; Line: from topLeft to bottomRight (may have no extent)
    QString text;   // Image: the drawing's name
    int style = 0;  // index into Document::styles
    Join join = Join::None;
};

struct ItemStyle {
    QString family;
    double points = 9;
    bool bold = false, italic = false;
    QColor color = Qt::black;
    int lineWidth = 15;
    std::optional<QColor> fill;
    bool operator==(const ItemStyle&) const = default;
};

}  // namespace report
