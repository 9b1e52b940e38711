#pragma once

#include <gtest/gtest.h>

#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>
#include <functional>
#include <map>
#include <ostream>
#include <vector>

#include "platform/report/report.h"
#include "platform/system/trap.h"

inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

namespace sample {

using Row = std::map<QString, dao::Value>;

// Rows held in memory, as a record set would hand them out.
class Rows : public report::RowSource {
 public:
    explicit Rows(std::vector<Row> rows) : rows_(std::move(rows)) {}
    void rewind() override { at_ = -1; }
    bool next() override { return ++at_ < static_cast<qint64>(rows_.size()); }
    dao::Value value(const QString& field) override {
        if (failAt >= 0 && at_ == failAt) {
            throw dao::Error(3167, "Record is deleted.");
        }
        const Row& row = rows_.at(static_cast<size_t>(at_));
        const auto found = row.find(field);
        if (found == row.end()) {
            throw dao::Error(3265, "Item not found in this collection.");
        }
        return found->second;
    }
    qint64 count() override { return static_cast<qint64>(rows_.size()); }
    qint64 failAt = -1;

 private:
    std::vector<Row> rows_;
    qint64 at_ = -1;
};

// Names "1", "2", ... in the field Naziv, and their numbers in Broj.
inline std::vector<Row> numbered(int count) {
    std::vector<Row> rows;
    for (int i = 1; i <= count; ++i) {
        rows.push_back({{"Naziv", std::to_string(i)}, {"Broj", i}});
    }
    return rows;
}

using Kind = report::Control::Kind;
using Part = report::Section::Kind;

inline report::Control control(Kind kind, const QString& name, int left, int top, int width, int height) {
    report::Control made;
    made.kind = kind;
    made.name = name;
    made.Left = left;
    made.Top = top;
    made.Width = width;
    made.Height = height;
    return made;
}

inline report::Control label(const QString& name, const QString& caption, int left = 0, int top = 0,
                             int width = 4000, int height = 300) {
    report::Control made = control(Kind::Label, name, left, top, width, height);
    made.Caption = caption;
    return made;
}

inline report::Control field(const QString& name, const QString& dataField, int left = 0, int top = 0,
                             int width = 4000, int height = 300) {
    report::Control made = control(Kind::Field, name, left, top, width, height);
    made.DataField = dataField;
    return made;
}

inline report::Control line(const QString& name, int x1, int y1, int x2, int y2) {
    report::Control made = control(Kind::Line, name, 0, 0, 0, 0);
    made.X1 = x1;
    made.Y1 = y1;
    made.X2 = x2;
    made.Y2 = y2;
    return made;
}

// A report whose handlers are put in from outside. Sections are as high as they are said to be.
class Report : public report::Report {
 public:
    std::function<void()> onStart, onPage, onEnd;
    std::function<void(report::Section&)> onArrange, onFormat, onBeforePrint;
    QStringList events;  // "Format Detail" and its like; Arrange is left out

    report::Section& section(Part kind, const QString& name, int height) {
        report::Section& made = addSection(kind, name);
        made.Height = height;
        return made;
    }
    Rows* give(std::vector<Row> rows) {
        auto source = std::make_unique<Rows>(std::move(rows));
        Rows* kept = source.get();
        setRows(std::move(source));
        return kept;
    }

 protected:
    void ReportStart() override { call("ReportStart", onStart); }
    void PageStart() override { call("PageStart", onPage); }
    void ReportEnd() override { call("ReportEnd", onEnd); }
    void Arrange(report::Section& section) override {
        if (onArrange) {
            onArrange(section);
        }
    }
    void Format(report::Section& section) override {
        events.append("Format " + section.name());
        if (onFormat) {
            onFormat(section);
        }
    }
    void BeforePrint(report::Section& section) override {
        events.append("BeforePrint " + section.name());
        if (onBeforePrint) {
            onBeforePrint(section);
        }
    }

 private:
    void call(const char* event, const std::function<void()>& handler) {
        events.append(QString::fromLatin1(event));
        if (handler) {
            handler();
        }
    }
};

// A page with room for ten rows of 1,000 twips between margins of 1,000.
inline void tenRowPage(report::Report& report) {
    report.page = {12000, 12000, 1000, 1000, 1000, 1000};
}

inline const report::PageItem* itemWith(const report::Page& page, const QString& text) {
    for (const report::PageItem& item : page.items) {
        if (item.kind == report::PageItem::Kind::Text && item.text == text) {
            return &item;
        }
    }
    return nullptr;
}

// The texts of a page in reading order, parted by "|".
inline QString texts(const report::Document& document, int page) {
    return document.textOfPage(page).replace('\n', '|');
}

// What a tool of poppler-utils writes, with the file as its last argument.
inline QString tool(const QString& program, QStringList arguments, const QString& file,
                    const QStringList& behind = {}) {
    QProcess process;
    process.start(program, arguments << file << behind);
    if (!process.waitForFinished(60000) || process.exitCode() != 0) {
        ADD_FAILURE() << program.toStdString() << ": " << process.errorString().toStdString()
                      << process.readAllStandardError().toStdString();
        return QString();
    }
    return QString::fromUtf8(process.readAllStandardOutput());
}

}  // namespace sample
