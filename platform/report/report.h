#pragma once

#include <QColor>
#include <QFont>
#include <QObject>
#include <QPixmap>
#include <QString>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "platform/dao/recordset.h"
#include "platform/dao/value.h"
#include "platform/report/document.h"

// Banded reports: rows of a record set laid out between headers and footers, page after page. A report is
// designed once (sections, and in them controls by name), run as often as wanted, and gives a Document, which
// the screen, the printer and a PDF paint alike.
//
// All lengths are in twips (1440 to an inch); a control's place counts from the left top corner of its
// section.
namespace report {

enum class Align { Left, Right, Center };

struct TextStyle {
    QString family;  // empty: the program's own
    double points = 9;
    bool bold = false;
    bool italic = false;
    QColor color = Qt::black;
    Align align = Align::Left;
    bool operator==(const TextStyle&) const = default;
};

// What a section shows. One kind holds what every kind has; a part that a kind has no use for is not looked
// at.
struct Control {
    enum class Kind { Label, Field, Line, Shape, Image, PageNumber };
    Kind kind = Kind::Label;
    QString name;
    int Left = 0, Top = 0, Width = 0, Height = 0;
    bool Visible = true;
    TextStyle style;

    QString Caption;  // Label, may hold line breaks. PageNumber: "%1" the page, "%2" how many there are
    bool CanGrow =
        false;  // Label, Field: long text wraps and the control grows downwards; otherwise it is cut

    // Field. DataField: the row's field, empty for one that the program fills. OutputFormat: "#,##0.00" and
    // its like, empty for the plain text. Text is what is shown, DataValue what it was made of; both are set
    // for each row before Format, Null giving the empty text. Text set by a handler holds for that row.
    QString DataField, OutputFormat, Text;
    dao::Value DataValue;

    // Line: from (X1, Y1) to (X2, Y2), in the section. Shape: a frame around its place. Width in twips.
    int X1 = 0, Y1 = 0, X2 = 0, Y2 = 0;
    int lineWidth = 15;
    QColor lineColor = Qt::black;
    std::optional<QColor> fill;  // Shape

    // Image: a drawing of resources/pictures, kept in proportion at the top of its place, painted sharp at
    // any size. Nothing stands there where the drawing is not to be had.
    QString picture;
};

class Section {
 public:
    enum class Kind { ReportHeader, PageHeader, GroupHeader, Detail, GroupFooter, PageFooter, ReportFooter };

    Section(Kind kind, QString name) : kind_(kind), name_(std::move(name)) {}
    Kind kind() const { return kind_; }
    const QString& name() const { return name_; }

    int Height = 0;  // twips; the least height, unless CanShrink
    bool Visible = true;
    bool CanShrink = false;     // ends with the lowest edge of what is visible in it
    bool RepeatOnPage = false;  // GroupHeader: again at the top of each page that its rows go on to
    QString DataField;  // GroupHeader: a new group begins where this field changes; empty: one group for all

    Control& add(Control control);  // RunError 457 for a name that is there already; names may be empty
    Control& Controls(const QString& name);  // RunError 35601 where there is none
    std::vector<std::unique_ptr<Control>>& all() { return controls_; }

 private:
    Kind kind_;
    QString name_;
    std::vector<std::unique_ptr<Control>> controls_;
};

// Where the rows come from. Values are those of the row that next() went to.
class RowSource {
 public:
    virtual ~RowSource() = default;
    virtual void rewind() = 0;                           // before the first row
    virtual bool next() = 0;                             // false: no more rows
    virtual dao::Value value(const QString& field) = 0;  // throws dao::Error 3265 for an unknown field
    virtual qint64 count() = 0;                          // of all rows, for the progress bar
};

// The rows of a record set, from its first one; those that somebody deletes meanwhile are left out. The set's
// current row moves.
std::unique_ptr<RowSource> rowsOf(const dao::Recordset& rows);

struct PageSetup {
    int width = 11906, height = 16838;  // A4 upright, twips
    int left = 850, top = 850, right = 850, bottom = 850;
};

// Told while a report runs: rows done, rows in all. False cancels the run.
using Progress = std::function<bool(qint64 done, qint64 all)>;

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
class Report : public QObject {
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

 protected:
    virtual void ReportStart() {}
    virtual void PageStart() {}
    virtual void Arrange(Section&) {}
    virtual void Format(Section&) {}
    virtual void BeforePrint(Section&) {}
    virtual void ReportEnd() {}  // after the last page, also after a run that was cancelled or failed

 private:
    class Layout;
    std::vector<std::unique_ptr<Section>> sections_;
    std::unique_ptr<RowSource> rows_;
    Layout* layout_ = nullptr;  // while run() is under way
};

}  // namespace report
