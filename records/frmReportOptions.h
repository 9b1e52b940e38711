#pragma once

#include <QCheckBox>
#include <QDialog>
#include <QPushButton>
#include <array>

#include "records/report_choices.h"

class QGridLayout;

// What goes into the text report. Its caller sets the choices, calls Display, takes them back where Cancelled
// is false, and lets the window go.
class frmReportOptions : public QDialog, public ReportChoices {
    Q_OBJECT
 public:
    explicit frmReportOptions(QWidget* parent = nullptr);
    ~frmReportOptions() override;

    bool Cancelled() const { return cancelled_; }
    void Display();  // modal; returns when it is hidden
    void Unload();   // stores the place; once. The destructor does it otherwise.

    static constexpr int kChoices = 16;
    std::array<QCheckBox*, kChoices> Check1{};
    std::array<QPushButton*, 3> Command1{};  // OK, Cancel, Help

 public slots:
    void reject() override;  // Cancel, Escape

 protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

 private:
    void buildChoices(QGridLayout* grid);
    void buildButtons(QGridLayout* grid);
    void load();
    void confirm();
    void checkClicked(int index);

    bool cancelled_ = false;
    bool loading_ = false;
    bool loaded_ = false;  // the place has been read
};
