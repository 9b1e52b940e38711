#pragma once

#include <QDialog>
#include <QString>
#include <array>
#include <span>

class QHBoxLayout;
class QLineEdit;
class QPushButton;
class QVBoxLayout;
namespace dao {
class Recordset;
}
namespace platform {
class DataControl;
class ListBox;
class PopupMenu;
class Trap;
}  // namespace platform

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

    // Reads the table again. `selectName`: the row to select, by the beginning of its text; empty: none.
    // `reset`: back to the order of the table.
    void RefreshList(const QString& selectName, bool reset);
    void Sort(int mode, bool force);  // `force`: also where the list is in that order already
    void cP_Click(int item);

    bool Sorted = false;
    QString SortedHow = QStringLiteral("ASC");  // or "DESC"

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    static constexpr int kButtons = 6;
    static constexpr int kAdd = 0, kChange = 1, kDelete = 2, kDeleteAll = 3, kRefresh = 4, kClose = 5;

    struct MenuLine;
    static std::span<const MenuLine> menuLines();

    void buildEntry(QHBoxLayout* row);
    void buildButtons(QVBoxLayout* column);
    void connectControls();
    void load();
    QString CreateMenu();                            // the reason of a failure; empty: built
    QString FillListBox(const QString& selectName);  // the same
    void showMenu(const QPoint& globalPosition);
    void updateButtons();

    void addRow(const dao::Recordset& rows);

    void addUnit();
    void storeUnit(const QString& name);
    bool findUnit(const char* goneText, platform::Trap& step);
    void changeUnit();
    void writeName(const QString& name, platform::Trap& step);
    void deleteUnit();
    void deleteAllUnits();
    void giveUpEdit();
    bool hasRows() const;
    bool hasSelection() const;
    bool isSorted() const { return Sorted; }
    bool isNotAscending() const;
    bool isNotDescending() const;
    template <SortMode mode>
    void sortAs() {
        Sort(mode, false);
    }

    platform::DataControl* Data1_ = nullptr;
    platform::ListBox* List1_ = nullptr;
    QLineEdit* Text1_ = nullptr;
    std::array<QPushButton*, kButtons> Command1_{};
    platform::PopupMenu* cP_ = nullptr;
    bool loaded_ = false;
    bool unloaded_ = false;
};
