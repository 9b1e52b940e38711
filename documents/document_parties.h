#pragma once

#include <QString>
#include <QWidget>
#include <array>
#include <functional>

#include "documents/document_controls.h"

class ActiveReport2;
class QLabel;
class QLineEdit;
class ServiceView;

// The pane of the document window that tells who makes the document out, and to whom: the firm's fiscal
// numbers, kept from one document to the next, and the client's fields, as the main window has them each
// time.
class DocumentParties : public QWidget {
    Q_OBJECT
 public:
    explicit DocumentParties(QWidget* parent);

    // Each step that fails is told in a box, and the others go on.
    void takeClient(const ServiceView& view);  // what the client's fields start with
    void load();                               // all texts; behind takeClient
    void takeDefaults();
    void save(const print_invoice::Save& save) const;
    void fill(ActiveReport2& report) const;

 signals:
    // Somebody has typed into a field: whether any of them differs from what it started with.
    void differenceChanged(bool any);

 private:
    static constexpr int kFirmFields = 6, kClientName = 6, kClientPIB = 9, kOther = 10, kFields = 11;
    static constexpr int kCompared =
        10;  // the fields before this one are compared with what they started with

    QWidget* buildFields(const QString& title, int from, int to);
    QString textAtStart(int index) const;
    bool differs(int index) const;
    void fieldChanged(int index);
    QLineEdit* field(int index) const { return text1_[static_cast<std::size_t>(index)]; }

    std::array<QLineEdit*, kFields> text1_{};
    std::array<QLabel*, kFields> label1_{};
};
