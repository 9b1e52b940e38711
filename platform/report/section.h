#pragma once

#include <QColor>
#include <QString>
#include <memory>
#include <optional>
#include <vector>

#include "platform/dao/value.h"

// The design of a report: sections, and in them controls by name. All lengths are in twips (1440 to an inch);
// a control's place counts from the left top corner of its section.
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

}  // namespace report
