#pragma once

#include <QDialog>
#include <QString>
#include <array>

#include "catalogue/unit_commands.h"
#include "catalogue/unit_list.h"
#include "catalogue/unit_menu.h"

class QHBoxLayout;
class QLineEdit;
class QPushButton;
class QVBoxLayout;

// Keeps the units of measure that the entry window of a product offers. Products hold a unit by its text, so
// nothing done here touches them. The file must be open in this process: no password is given here.
class frmJM : public QDialog {
    Q_OBJECT
 public:
    enum SortMode { RefreshOnly = 0, Ascending = 1, Descending = 2, Unsorted = 3 };

    explicit frmJM(QWidget* parent = nullptr);
    ~frmJM() override;

    void Display();  // modal; loads on the first showing, returns when the window hides
    void Unload();   // stores the place and the order; once. The destructor does it otherwise.
    void Sort(int mode, bool force);  // SortMode; `force`: also where the list is in that order already

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    enum Button { Add, Change, Delete, DeleteAll, Refresh, Close, Count };

    void buildEntry(QHBoxLayout* row);
    void buildButtons(QVBoxLayout* column);
    void connectControls();
    void addUnit();
    void updateButtons();

    UnitList units_;
    UnitCommands commands_;
    UnitMenu menu_;
    QLineEdit* Text1_ = nullptr;
    std::array<QPushButton*, Count> Command1_{};
    bool loaded_ = false;
    bool unloaded_ = false;

 public:
    const bool& Sorted = units_.Sorted;
    const QString& SortedHow = units_.SortedHow;  // "ASC" or "DESC"
};
