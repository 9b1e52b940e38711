#pragma once

#include <QDialog>
#include <functional>

#include "records/program_windows.h"
#include "shell/firm_fields.h"
#include "shell/option_numbers.h"
#include "shell/option_switches.h"

class QKeyEvent;
class QPushButton;
class QTabWidget;

// The options: the program's switches, the buying rate of the euro, the firm's data that the documents print,
// and the four values that the main window keeps. The switches, the rate and the firm's data are stored by
// OK; the four values are for the caller to take back, unless Cancelled.
class frmOptions : public QDialog, public MainOptions {
    Q_OBJECT
 public:
    explicit frmOptions(QWidget* parent = nullptr);
    ~frmOptions() override;

    bool Cancelled() const { return cancelled_; }  // true as well before OK has ever been given

    // What the button of the units opens: the catalogue's window, which lies outside the options.
    std::function<void()> onUnits;

    // Fills the window from the values, the program's variables and the settings, and returns when it hides.
    void Display();
    void Unload();  // stores the place, closes the help; once. The destructor does it otherwise.

 public slots:
    void reject() override;  // Cancel, Escape, the close box

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

 private:
    QWidget* buildGeneral();
    QWidget* buildRate();
    QWidget* buildButtons();
    void load();
    void okClicked();
    bool settleNumbers();
    void keep();

    OptionSwitches switches_{this, *this};
    OptionNumbers& numbers_;  // a child of the window
    FirmFields firm_;
    QTabWidget* tabs_;
    QPushButton* ratePage_ = nullptr;
    bool cancelled_ = true;
    bool loaded_ = false;
};
