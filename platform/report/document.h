#pragma once

#include <QList>
#include <QRectF>
#include <QString>
#include <vector>

#include "platform/report/page_item.h"

class QPagedPaintDevice;
class QPainter;

// Pages as they were laid out: texts, lines and pictures at their places. Painted by one routine for the
// screen, the printer and a PDF. Lengths in twips, from the left top corner of the sheet.
namespace report {

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
