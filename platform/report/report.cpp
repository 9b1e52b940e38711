#include "platform/report/report.h"

#include <unordered_map>

#include "platform/report/layout.h"
#include "platform/system/trap.h"

namespace report {
namespace {

// The rows of a record set, from its first one to its last. A long report takes its time, and the colleagues
// go on working meanwhile: a row that somebody deletes under it is left out.
class RecordsetRows : public RowSource {
 public:
    explicit RecordsetRows(const dao::Recordset& rows) : rows_(rows) {}
    void rewind() override { begun_ = false; }
    bool next() override {
        do {
            if (!step())
                return false;
        } while (isGone());
        return true;
    }
    dao::Value value(const QString& field) override {
        const auto known = fields_.find(field);
        if (known != fields_.end())
            return known->second.Value();
        return fields_.emplace(field, rows_.Fields(field.toStdString())).first->second.Value();
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

    dao::Recordset rows_;
    std::unordered_map<QString, dao::Field> fields_;
    bool begun_ = false;
};

platform::RunError notFound(const QString& name) {
    return platform::RunError(35601, QStringLiteral("Element not found: %1").arg(name));
}

platform::RunError notUnique(const QString& name) {
    return platform::RunError(457,
                              QStringLiteral("This name belongs to another element already: %1").arg(name));
}

}  // namespace

Control& Section::add(Control control) {
    for (const auto& known : controls_) {
        if (!control.name.isEmpty() && known->name == control.name)
            throw notUnique(control.name);
    }
    controls_.push_back(std::make_unique<Control>(std::move(control)));
    return *controls_.back();
}

Control& Section::Controls(const QString& name) {
    for (const auto& control : controls_) {
        if (!name.isEmpty() && control->name == name)
            return *control;
    }
    throw notFound(name);
}

std::unique_ptr<RowSource> rowsOf(const dao::Recordset& rows) {
    return std::make_unique<RecordsetRows>(rows);
}

Report::Report(QObject* parent) : QObject(parent) {}

Report::~Report() = default;

Section& Report::addSection(Section::Kind kind, const QString& name) {
    for (const auto& known : sections_) {
        if (known->name() == name)
            throw notUnique(name);
    }
    sections_.push_back(std::make_unique<Section>(kind, name));
    return *sections_.back();
}

Section& Report::Sections(const QString& name) {
    for (const auto& section : sections_) {
        if (section->name() == name)
            return *section;
    }
    throw notFound(name);
}

void Report::setRows(std::unique_ptr<RowSource> rows) {
    rows_ = std::move(rows);
}

void Report::addToContents(const QString& text, int level) {
    if (layout_)
        layout_->addToContents(text, level);
}

int Report::pageNumber() const {
    return layout_ ? layout_->pageNumber() : 0;
}

std::optional<Document> Report::run(const Progress& progress) {
    // Whatever a person clicks while the progress bar is up, the same report must not begin anew in its
    // midst.
    if (layout_)
        throw platform::RunError(5, QStringLiteral("The report is running already."));
    Layout layout(*this, progress);
    layout_ = &layout;
    std::optional<Document> document;
    try {
        document = layout.run();
    } catch (...) {
        layout_ = nullptr;
        ReportEnd();
        throw;
    }
    layout_ = nullptr;
    ReportEnd();
    return document;
}

}  // namespace report
