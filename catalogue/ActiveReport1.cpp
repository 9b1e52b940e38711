#include "catalogue/ActiveReport1.h"

#include <QSet>
#include <iterator>
#include <memory>

#include "catalogue/ActiveReport1_design.h"
#include "platform/dao/error.h"

namespace {

const QString kPageHeader = QStringLiteral("PageHeader");
const QString kGroupHeader = QStringLiteral("GroupHeader1");
const QString kDetail = QStringLiteral("Detail");
const QString kPageFooter = QStringLiteral("PageFooter");

// A preview of clients has none of the fields of a product: what the rows lack stays empty.
class ListRows : public report::RowSource {
 public:
    explicit ListRows(const dao::Recordset& rows) : rows_(report::rowsOf(rows)) {}

    void rewind() override { rows_->rewind(); }
    bool next() override { return rows_->next(); }
    dao::Value value(const QString& name) override {
        if (missing_.contains(name))
            return {};
        try {
            return rows_->value(name);
        } catch (const dao::Error& error) {
            if (error.Number() != dao::errItemNotFound)
                throw;
            missing_.insert(name);
            return {};
        }
    }
    qint64 count() override { return rows_->count(); }

 private:
    std::unique_ptr<report::RowSource> rows_;
    QSet<QString> missing_;
};

}  // namespace

ActiveReport1::ActiveReport1(QObject* parent) : report::Report(parent) {
    title = QStringLiteral("Cenovnik");
    active_report1::design(*this);
}

void ActiveReport1::setRecordset(const dao::Recordset& rows) {
    setRows(std::make_unique<ListRows>(rows));
}

void ActiveReport1::PageStart() {
    ActiveReport_PageStart();
}

void ActiveReport1::Format(report::Section& section) {
    if (section.kind() == report::Section::Kind::GroupHeader)
        GroupHeader1_Format();
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
    if (priceRoundUp_ >= 0 && priceRoundUp_ < static_cast<qint32>(std::size(kFormats)))
        Sections(kDetail).Controls(QStringLiteral("txtCena")).OutputFormat = kFormats[priceRoundUp_];
}

void ActiveReport1::GroupHeader1_Format() {
    const QString& group = Sections(kGroupHeader).Controls(QStringLiteral("txtGrupa")).Text;
    // A line without words in the pane leads nowhere that anybody could name.
    if (tocVisible_ && !group.isEmpty())
        addToContents(group);
}
