#pragma once

#include <QColor>
#include <QList>
#include <QRectF>
#include <QString>
#include <optional>
#include <vector>

class QPagedPaintDevice;
class QPainter;

// Pages as they were laid out: texts, lines and pictures at their places. Painted by one routine for the
// screen, the printer and a PDF. Lengths in twips, from the left top corner of the sheet.
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

struct Page {
    std::vector<PageItem> items;
};

struct ContentsEntry {
    QString text;
    int level = 0;
    int page = 1;    // from 1
    double top = 0;  // twips
};

struct Hit {
    int page = 1;           // from 1
    QRectF place;           // of what stands on its first line
    QList<QRectF> further;  // of what stands on the lines after it, where the text was broken there
};

class Document {
 public:
    QString title;
    int width = 11906, height = 16838;
    std::vector<Page> pages;
    std::vector<ItemStyle> styles;
    std::vector<ContentsEntry> contents;

    int pageCount() const { return static_cast<int>(pages.size()); }
    // Page from 1, on a painter whose coordinates are twips. `clip`: only what touches it need be painted.
    void paint(QPainter& painter, int page, const QRectF& clip = {}) const;
    // Where the text stands, without regard to case, in reading order. An empty text stands nowhere.
    QList<Hit> find(const QString& text) const;
    // All pages, or those from `from` to `to`. False where the device takes no pages.
    bool print(QPagedPaintDevice& device, int from = 1, int to = 0) const;
    // These pages, in this order; numbers that no page has are passed over.
    bool print(QPagedPaintDevice& device, const QList<int>& pageNumbers) const;
    // Text in the file can be selected and searched. Throws platform::RunError where it cannot be written,
    // and then leaves what was there as it was.
    void savePdf(const QString& path) const;
    // The texts of a page, line by line from the top, left to right with a blank between.
    QString textOfPage(int page) const;
};

}  // namespace report
