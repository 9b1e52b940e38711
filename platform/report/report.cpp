#include "platform/report/report.h"

#include "platform/report/element_error.h"
#include "platform/report/layout.h"

namespace report {

Report::Report(QObject* parent) : QObject(parent) {}

Report::~Report() = default;

Section& Report::addSection(Section::Kind kind, const QString& name) {
    for (const auto& known : sections_) {
        if (known->name() == name) {
            throw elementNotUnique(name);
        }
    }
    sections_.push_back(std::make_unique<Section>(kind, name));
    return *sections_.back();
}

Section& Report::Sections(const QString& name) {
    for (const auto& section : sections_) {
        if (section->name() == name) {
            return *section;
        }
    }
    throw elementNotFound(name);
}

void Report::setRows(std::unique_ptr<RowSource> rows) {
    rows_ = std::move(rows);
}

void Report::addToContents(const QString& text, int level) {
    if (layout_) {
        layout_->addToContents(text, level);
    }
}

int Report::pageNumber() const {
    return layout_ ? layout_->pageNumber() : 0;
}

std::optional<Document> Report::run(const Progress& progress) {
    // Whatever a person clicks while the progress bar is up, the same report must not begin anew in its
    // midst.
    if (layout_) {
        throw platform::RunError(5, QStringLiteral("The report is running already."));
    }
    Layout layout({title, page, sections_, rows_, *this, progress});
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
