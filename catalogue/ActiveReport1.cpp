#include "catalogue/ActiveReport1.h"

#include <iterator>
#include <optional>
#include <unordered_map>

#include "catalogue/ActiveReport1_design.h"
#include "platform/dao/error.h"

namespace {

const QString kPageHeader = QStringLiteral("PageHeader");
const QString kGroupHeader = QStringLiteral("GroupHeader1");
const QString kDetail = QStringLiteral("Detail");
const QString kPageFooter = QStringLiteral("PageFooter");

class ListRows : public report::RowSource {
 public:
    explicit ListRows(const dao::Recordset& rows) : rows_(rows) {}

    void rewind() override { begun_ = false; }
    bool next() override {
        do {
            if (!step())
                return false;
        } while (isGone());
        return true;
    }
    dao::Value value(const QString& name) override {
        auto known = fields_.find(name);
        if (known == fields_.end())
            known = fields_.emplace(name, find(name)).first;
        return known->second ? known->second->Value() : dao::Value();
    }
    qint64 count() override { return rows_.RecordCount(); }

 private:
    bool step() {
        if (begun_)
            rows_.MoveNext();
        else if (rows_.BOF() && rows_.EOF())
            return false;
        else
            rows_.MoveFirst();
        begun_ = true;
        return !rows_.EOF();
    }
    // A list of thousands of products takes its time, and the colleagues go on working meanwhile.
    bool isGone() const {
        try {
            rows_.Fields(0).Value();
        } catch (const dao::Error& error) {
            if (error.Number() != dao::errRecordDeleted)
                throw;
            return true;
        }
        return false;
    }
    std::optional<dao::Field> find(const QString& name) const {
        try {
            return rows_.Fields(name.toStdString());
        } catch (const dao::Error& error) {
            if (error.Number() != dao::errItemNotFound)
                throw;
            return std::nullopt;
        }
    }

    dao::Recordset rows_;
    std::unordered_map<QString, std::optional<dao::Field>> fields_;
    bool begun_ = false;
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
