#include "catalogue/ActiveReport1.h"

#include <iterator>

#include "catalogue/ActiveReport1_design.h"
#include "platform/dao/error.h"
#include "platform/dao/recordset.h"

namespace {

const QString kPageHeader = QStringLiteral("PageHeader");
const QString kGroupHeader = QStringLiteral("GroupHeader1");
const QString kDetail = QStringLiteral("Detail");
const QString kPageFooter = QStringLiteral("PageFooter");

}  // namespace

ActiveReport1::ActiveReport1(QObject* parent) : report::Report(parent) {
    title = QStringLiteral("Cenovnik");
    active_report1::design(*this);
}

void ActiveReport1::setRecordset(const dao::Recordset& rows) {
    // A preview of clients has none of the fields of a product.
    setRows(report::rowsOf(rows, {.lacking = true}));
}

void ActiveReport1::PageStart() {
    ActiveReport_PageStart();
}

void ActiveReport1::Format(report::Section& section) {
    if (section.kind() == report::Section::Kind::GroupHeader) {
        GroupHeader1_Format();
    }
}

void ActiveReport1::ActiveReport_PageStart() {
    report::Control& header = Sections(kPageHeader).Controls(QStringLiteral("lblHeader"));
    header.Visible = !reportHeader_.isEmpty();
    header.Caption = reportHeader_;
    report::Control& footer = Sections(kPageFooter).Controls(QStringLiteral("txtFooter"));
    footer.Visible = !reportFooter_.isEmpty();
    footer.Text = reportFooter_;

    static const QString kFormats[] = {QStringLiteral("#,##0"), QStringLiteral("#,##0.0"),
                                       QStringLiteral("#,##0.00")};
    if (priceRoundUp_ >= 0 && priceRoundUp_ < static_cast<qint32>(std::size(kFormats))) {
        Sections(kDetail).Controls(QStringLiteral("txtCena")).OutputFormat = kFormats[priceRoundUp_];
    }
}

void ActiveReport1::GroupHeader1_Format() {
    const QString& group = Sections(kGroupHeader).Controls(QStringLiteral("txtGrupa")).Text;
    // A line without words in the pane leads nowhere that anybody could name.
    if (tocVisible_ && !group.isEmpty()) {
        addToContents(group);
    }
}
