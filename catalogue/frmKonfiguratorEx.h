#pragma once

#include <QDialog>
#include <QHash>
#include <QIcon>
#include <QPointer>
#include <QString>
#include <array>
#include <functional>
#include <initializer_list>
#include <memory>
#include <optional>
#include <utility>

#include "catalogue/catalogue_parent.h"
#include "platform/controls/boxes.h"
#include "platform/controls/data_control.h"
#include "platform/controls/list_box.h"
#include "platform/controls/list_view.h"
#include "platform/controls/popup_menu.h"
#include "platform/controls/splitter.h"
#include "platform/controls/status_bar.h"
#include "platform/system/sort_tag.h"

namespace stock_draw {
struct Addition;
}

class QAction;
class QDrag;
class QElapsedTimer;
class QEventLoop;
class QLabel;
class QLineEdit;
class QMouseEvent;
class QProgressBar;
class QTextEdit;
class QToolBar;
class frmKonfigInput;
namespace platform {
class Trap;
}

// The catalogue: groups, manufacturers, and the products of the selected group and manufacturer. It opens
// over the requisition of a service, to which products are drawn by Enter or by a drag onto it.
//
// Panes: 0 groups, 1 manufacturers, 2 products. Its bodies are cut by subject: frmKonfiguratorEx.cpp
// (building, loading, unloading), _lists (data, filling, sorting), _typing (type-ahead, keys), _bars
// (toolbar, status bar, popup menus), _products, _groups, _requisition (drawing from stock, dragging).
class frmKonfiguratorEx : public QDialog, public ParentDragEvents {
    Q_OBJECT
 public:
    static constexpr int kGroups = 0, kManufacturers = 1, kProducts = 2;
    static constexpr int kPanes = 3, kListPanes = 2;

    explicit frmKonfiguratorEx(QWidget* parent = nullptr);
    ~frmKonfiguratorEx() override;

    void setParentForm(CatalogueParent* parent) { ParentForm = parent; }
    // Shows the window over its parent, which takes nothing but a drop meanwhile, and returns when it is
    // closed.
    void Display();
    void Unload();  // stores the settings; once. The destructor does it otherwise.

    // Rebuilds the record source of a pane and its list. `selectKey`: a product's key, or the text of a
    // list's row; empty: what was selected, else the first row. `reset`: back to the default order.
    void DataUpdate(int index, const QString& selectKey, bool reset);
    void RefreshProduct(bool reset);
    void ToolbarUpdate();
    // A failure is told in a box, and gives: not sorted, empty field, "ASC"; and "0Naziv0".
    platform::SortTag GetSortTagData(const QString& tag);
    QString SetSortTagData(bool sorted, const QString& field, const QString& order);
    void cP_Click(int item);
    void cP_ItemHighlight(int item, bool enabled, bool separator);
    void ShowStatusText(const QString& text, bool sticky);
    // The list that has the focus; `force`: also where it is in that order already.
    static constexpr int kRefreshOnly = 0, kAscending = 1, kDescending = 2, kNoSort = 3;
    void SortList(int mode, bool force);

    // Products (frmKonfiguratorEx_products.cpp).
    void AddNewProduct();
    void EditProduct();
    void DeleteProduct();
    void DeleteAllProduct();
    // Groups and manufacturers: of the list that has the focus (frmKonfiguratorEx_groups.cpp).
    void AddNewGrpMft();
    void EditGrpMft();
    void DeleteGrpMft();
    void DeleteAllGrpMft();
    // Draws the selected product from stock for the parent's service (frmKonfiguratorEx_requisition.cpp).
    void TrebovanjeExecute();
    // Asks for what the price list shall hold, and shows it (frmKonfiguratorEx_bars.cpp).
    void PrintPriceList();

    // --- Controls and state, under the names the shop's other windows know them by.
    std::array<platform::DataControl*, kPanes> Data1{};
    std::array<QString, kPanes> SortTagOf{};  // Data1(i).Tag
    std::array<platform::ListBox*, kListPanes> List1{};
    std::array<QLineEdit*, kListPanes> Text1{};  // search boxes; the detail box is Text1(2)
    QTextEdit* Text1_2 = nullptr;                // object name "Text1(2)", read-only
    platform::ListView* ListView1 = nullptr;
    QToolBar* Toolbar1 = nullptr;
    platform::StatusBar* StatusBar1 = nullptr;
    platform::Splitter *VSplitter = nullptr, *HSplitter = nullptr;
    platform::PopupMenu* cP = nullptr;
    CatalogueParent* ParentForm = nullptr;
    bool PrikaziStanjaVecaOdNule = false;
    bool PrikaziSveProizvodjace = false;
    QString Napomena, JM;  // of the selected product

    QAction* toolbarButton(const QString& key) const;  // nullptr where there is none
    // What the pointer shows while a product is dragged: "drag", "nodrop", or empty.
    const QString& dragIcon() const { return dragIcon_; }

    // ParentDragEvents
    void parentDragOver(State state, bool overList) override;
    void parentDrop() override;

 public slots:
    void reject() override;  // the close box

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

 private:
    // What the bodies in _products and _groups share with the rest.
    // Pane of the focused control: a list pane for its list (and, where `orSearchBox`, its search box), else
    // -1.
    int focusedListPane(bool orSearchBox = false) const;
    void clickList(int index);                           // what a person's click on a list's row does
    void clickProduct();                                 // what a click on the selected product does
    void setSearchText(int index, const QString& text);  // without a search
    void setCountText(int index, qint64 count);          // and, where sticky is wanted, showCountText
    void showCountText(int index);                       // as standing status text
    void clearProductList();                             // and the detail box
    void focusPane(int index);                           // where it is visible
    platform::BoxAnswer box(const QString& text, platform::BoxIcon icon,
                            platform::BoxButtons buttons = platform::BoxButtons::Ok,
                            platform::BoxAnswer preselected = platform::BoxAnswer::Yes);

    // --- The implementers of the files may add private members below, each under a heading of its file.

    std::array<QString, kPanes> countText_{};

    // Building, loading, unloading (frmKonfiguratorEx.cpp).
    QWidget* buildListPane(int index);
    QWidget* buildProductPane();
    QWidget* buildSwitch(int index);
    void buildStatusBar();
    void buildToolbar();
    void connectControls();
    void watchControls();
    void load();
    void loadProductList();
    void firstShowing();
    void storeSettings(platform::Trap& step);
    void refreshSwitch(int index);
    void toggleSwitch(int index);
    bool& switchState(int index) { return index == 0 ? PrikaziStanjaVecaOdNule : PrikaziSveProizvodjace; }

    // Data (frmKonfiguratorEx_lists.cpp).
    QString recordSource(int index, const platform::SortTag& sort);
    QString productSource(const platform::SortTag& sort);
    void showSortIcons(const platform::SortTag& sort);
    QString FillListBox(int index, const QString& field);  // an error's text, empty on success
    QString FillListView();
    void fillRows(int index, platform::Trap& step, const std::function<void()>& takeRow);
    void selectAfterFill(int index, const QString& key);
    void showFillError(int index, const QString& error);
    void beginProgress(qint64 count);
    void stepProgress();
    void endProgress();
    void clickColumn(int column);
    void sortList(int pane, int mode, bool force);  // a list pane, or -1: nothing happens

    // Typing and keys (frmKonfiguratorEx_typing.cpp).
    void searchTextChanged(int index);
    bool searchKey(int index, const QKeyEvent& key);  // true: dealt with
    bool windowKey(const QKeyEvent& key);             // true: dealt with
    int searchBoxOf(const QObject* widget) const;     // -1: no search box
    void leaveSelection(int index);                   // no row of the list, no products

    // Bars and menus (frmKonfiguratorEx_bars.cpp).
    QString CreateMenu();  // an error's text, empty on success
    void runToolbar(const QString& key);
    void openListMenu(int index, const QPoint& at);
    void openProductMenu(const QPoint& at);
    void enableItems(std::initializer_list<std::pair<const char*, bool>> states, platform::Trap& step);
    void showCaption(const QString& caption, const QString& iconKey);
    void focusCame(const QObject* widget);
    void pointerMoved(const QObject* widget, const QPoint& globalPosition);
    int activePane() const;  // of the focused control, search boxes included; products for any other
    bool hasRows(int pane) const;
    bool hasSelection(int pane) const;
    platform::SortTag sortOf(int pane) const;  // of the pane's tag; one that cannot be read: not sorted

    // Drawing and dragging (frmKonfiguratorEx_requisition.cpp).
    struct Draw;  // one product on its way from the stock to the requisition
    static stock_draw::Addition additionOf(const Draw& draw);
    bool askQuantity(Draw& draw);
    enum class StockCheck { Goes, AskAgain, Stop, Failed };
    StockCheck checkStock(Draw& draw, platform::Trap& step);
    bool drawProduct(const Draw& draw, platform::Trap& step);
    void tellDrawFailed(const platform::Trap& step);
    bool addToRow(const Draw& draw);  // false: the row is not there any more
    void addNewRow(const Draw& draw);
    bool dragMouse(const QMouseEvent& event);  // of the product list's surface; true: dealt with
    void beginDrag();
    void setDragIcon(const QString& key);
    void drawSoon();

    // The row whose products were read at the last click; none: the next click reads, whatever it hits.
    std::array<std::optional<QString>, kListPanes> lastSelection_{};
    std::array<QLabel*, 2> Label1{};           // the switches
    std::array<QWidget*, 2> switchPicture_{};  // Picture1(3), Picture1(4)
    QWidget* Picture1_5 = nullptr;             // caption of the active pane
    QLabel* captionText_ = nullptr;
    QLabel* captionIcon_ = nullptr;
    QProgressBar* ProgressBar1 = nullptr;
    std::unique_ptr<QElapsedTimer> progressPainted_;
    QString standingText_;
    QPoint pressedAt_;
    QPointer<QDrag> drag_;
    QPointer<QEventLoop> waiting_;  // in Display
    QString dragIcon_;
    bool ignoreChange_ = false;
    bool loaded_ = false;
    bool shown_ = false;
    bool pressed_ = false;      // on the product list, and not dragged away yet
    bool drawPending_ = false;  // a drop happened; the drag's own loop still runs

    // products/groups (frmKonfiguratorEx_products.cpp, frmKonfiguratorEx_groups.cpp).
    bool hasGroupAndManufacturer() const;  // a row is selected in both lists
    bool openProducts(dao::Recordset& rows);
    bool askForNewProduct(frmKonfigInput& input, const dao::Recordset& rows);
    QString storeNewProduct(const frmKonfigInput& input, dao::Recordset& rows);
    void fillInput(frmKonfigInput& input, const platform::ListItem& item, platform::Trap& step);
    bool mayTakeName(const QString& name, const QString& key, dao::Recordset& rows, platform::Trap& step);
    bool storeProduct(const frmKonfigInput& input, const QString& key, dao::Recordset& rows,
                      platform::Trap& step);
    void carryIntoRequisitions(const frmKonfigInput& input, const platform::ListItem& old,
                               platform::Trap& step);
    void tellRequisitions(qint64 affected, platform::Trap& step);
    void takeProductFromList(int position);
    std::optional<QString> chooseProductsToDelete();
    QString addGrpMft(int index, platform::Trap& step);
    void giveUpGrpMft(int index);
    void editGrpMft(int pane);  // a list pane, or -1: nothing happens
    void deleteGrpMft(int pane);
    void tellGrpMftFailed(int index, const char* part, const char* procedure, platform::Trap& step);
    bool isGoneGrpMft(int index, const char* goneText, platform::Trap& step);
    bool renameGrpMft(int index, const QString& name, platform::Trap& step);
    void showRenamed(int index, const QString& name);
    void carryNameIntoRequisitions(int index, const QString& name, const QString& oldName,
                                   platform::Trap& step);
    void takeFromList(int index);
};
