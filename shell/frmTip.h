#pragma once

#include <QDialog>
#include <QString>
#include <functional>

#include "shell/tip_list.h"
#include "shell/tip_switches.h"

class QBoxLayout;
class QLabel;
class QPushButton;
class QWidget;

// One piece of advice out of the shop's own text file: every line of "tipoftheday.txt" in the program's
// folder is a tip, an empty line as well. A file that is missing or cannot be read is told in the window, not
// in a box: advice must never stand between a person and the work.
class frmTip : public QDialog {
    Q_OBJECT

    TipList tips_;

 public:
    explicit frmTip(QWidget* parent = nullptr);

    // Fills the window and shows it over its owner, which takes no input meanwhile. Comes back at once.
    void Display();

    // Reads the tips and shows the first, or one by chance. Ok false: with an empty errorText the file is not
    // there, else errorText says why it could not be read.
    void LoadTips(QString& ErrorText, const QString& FileName, bool& Ok);
    void DisplayCurrentTip();  // nothing where there are no tips

    int& CurrentTip = tips_.current;  // counts from 1; 0: none yet
    int count() const { return tips_.count(); }

    // What the main window puts in: takes the splash picture away when this window could not be filled.
    std::function<void()> onLoadFailure;
    // What tests put in the place of the real thing.
    std::function<double()>& Rnd = tips_.chance;  // in [0, 1)
    std::function<void()> onFormLoad;             // inside the load's trap: what it throws fails the load
    static QString fileName();                    // without its folder

 protected:
    bool event(QEvent* event) override;

 private:
    void build();
    void buildTip(QBoxLayout* column);
    void buildButtons(QBoxLayout* column);
    QPushButton* makeButton(const char* name, int captionId);
    void load();
    void fill();
    void showPictures();
    void fillTips();

    TipSwitches switches_{this};
    bool loadFailed_ = false;
    QLabel* lblTipText = nullptr;
    QPushButton* cmdOK = nullptr;
    QPushButton* cmdNextTip = nullptr;
    QPushButton* cmdPreviousTip = nullptr;
};
