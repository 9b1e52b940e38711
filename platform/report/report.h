#pragma once

#include <QObject>
#include <QString>
#include <memory>
#include <optional>
#include <vector>

#include "platform/report/document.h"
#include "platform/report/report_events.h"
#include "platform/report/rows.h"
#include "platform/report/section.h"

class QWidget;

// Banded reports: rows of a record set laid out between headers and footers, page after page. A report is
// designed once (sections, and in them controls by name), run as often as wanted, and gives a Document, which
// the screen, the printer and a PDF paint alike.
//
// All lengths are in twips (1440 to an inch); a control's place counts from the left top corner of its
// section.
namespace report {

class Layout;

// A report. Derive from it, build the sections in the constructor, and override the events wanted.
//
// The events come in this order: ReportStart; for each page PageStart; for each section that is about to be
// laid out Format and, when its place is settled, BeforePrint. A section is never torn across pages; one that
// is higher than a page is cut at the page's end. PageStart comes before the Format of the first row on that
// page: to know whether a row still fits, the engine fills the fields and calls Arrange, which may hide and
// move controls by what the row holds and must not count anything, since it is called again for the same row.
//
// Growing: after Format and BeforePrint the texts that CanGrow take the room they need; whatever stands below
// such a control (its Top at or under the control's bottom edge, lines by their Y) moves down by as much. A
// shape around such a control stretches with it. A text that may not grow is wrapped as far as its Height has
// room for lines.
class Report : public QObject, protected ReportEvents {
    Q_OBJECT
 public:
    explicit Report(QObject* parent = nullptr);
    ~Report() override;

    PageSetup page;
    QString title;  // of the preview window and of the PDF

    // Group headers from the outermost inwards; group footers as they stand on paper, from the innermost
    // outwards. A header without a footer of its own among others needs an empty one. RunError 457 for a name
    // that is there already.
    Section& addSection(Section::Kind kind, const QString& name);
    Section& Sections(const QString& name);  // RunError 35601
    void setRows(std::unique_ptr<RowSource> rows);
    // An entry of the contents pane, pointing at the section that is being laid out. Level 0 is the
    // outermost. From Format or BeforePrint.
    void addToContents(const QString& text, int level = 0);
    int pageNumber() const;  // from 1; of the page that is being laid out

    // Lays everything out. What a handler changed in the design (captions, visibility, places) stays changed
    // for the sections after it and for the next run. Nothing where `progress` cancelled. An error of the
    // row source is thrown.
    std::optional<Document> run(const Progress& progress = {});

    // Runs under a progress bar that can be cancelled, then shows the preview over `owner`; returns when the
    // preview is closed. False: cancelled. An error of the row source is told in a box.
    bool Show(bool modal, QWidget* owner);

 private:
    std::vector<std::unique_ptr<Section>> sections_;
    std::unique_ptr<RowSource> rows_;
    Layout* layout_ = nullptr;  // while run() is under way
};

}  // namespace report
