#pragma once

#include <QObject>
#include <QString>
#include <array>

#include "documents/document_controls.h"

class ActiveReport2;
class QCheckBox;
class QLineEdit;
class QWidget;

// What a document says besides its rows and sums: the conditions, the note, what is said about stamp and
// dispute, and the footer. Each has a box that turns it on, and all of it is kept from one document to the
// next.
class DocumentConditions : public QObject {
    Q_OBJECT
 public:
    // `openType`: the window's kind of document, looked at each time it matters. Outlives this.
    DocumentConditions(const int& openType, QWidget* parent);

    QWidget* buildConditions(QWidget* parent);
    QWidget* buildOther(QWidget* parent);

    // Each step that fails is told in a box over the window, and the others go on.
    void loadChecks();
    void loadTexts();
    void takeDefaults();
    void saveChecks(const print_invoice::Save& save) const;
    void saveTexts(const print_invoice::Save& save) const;
    void fill(ActiveReport2& report) const;
    // The last lines on the paper: empty, what was typed, or the firm's address and how it can be reached.
    QString footerText() const;

 private:
    static constexpr int kChecks = 9;    // Check1; the first is not among them
    static constexpr int kEntries = 13;  // Text2; likewise
    static constexpr int kNote = 5, kStamp = 6, kFooter = 7, kFirmsFooter = 8;
    static constexpr int kStampText = 11, kFooterText = 12;

    void addCheck(int index, const QString& caption, const QString& spoken, QWidget* parent);
    void addEntry(int index, const QString& spoken, QWidget* parent);
    void checkClicked(int index);
    bool isOn(int index) const;
    QCheckBox* check(int index) const { return check_[static_cast<std::size_t>(index)]; }
    QLineEdit* entry(int index) const { return text2_[static_cast<std::size_t>(index)]; }
    // A condition's two fields.
    static constexpr int captionOf(int condition) { return 2 * condition - 1; }
    static constexpr int valueOf(int condition) { return 2 * condition; }

    const int& openType_;
    QWidget* window_;
    std::array<QCheckBox*, kChecks> check_{};
    std::array<QLineEdit*, kEntries> text2_{};
};
