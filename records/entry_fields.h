#pragma once

#include <QString>
#include <array>

class QCheckBox;
class QPlainTextEdit;
class QWidget;
struct EntryRow;
namespace platform {
class DateField;
}

// The entry fields of all panes, under the numbers that the tables of fields know them by.
class EntryFields {
 public:
    static constexpr int kCount = 41;  // Text1(0) to Text1(40)

    // QLineEdit, or QPlainTextEdit where a text has several lines.
    std::array<QWidget*, kCount> texts{};
    std::array<platform::DateField*, 3> dates{};
    QCheckBox* firm = nullptr;

    QWidget* of(const EntryRow& row) const;
    QString text(int index) const;
    void setText(int index, const QString& text);
    void focus(int index) const;  // nothing where there is no such text
};

// A field for a text of several lines, out of which the Tab key leads.
QPlainTextEdit* makeLines(QWidget* parent);
