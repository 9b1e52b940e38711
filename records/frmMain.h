#pragma once

#include <QHash>
#include <QIcon>
#include <QList>
#include <QMainWindow>
#include <QString>
#include <array>
#include <functional>
#include <memory>
#include <string>

#include "common/array_view.h"
#include "platform/controls/boxes.h"
#include "platform/controls/data_control.h"
#include "platform/controls/date_field.h"
#include "platform/controls/list_view.h"
#include "platform/controls/selector.h"
#include "platform/controls/status_bar.h"
#include "records/entry_fields.h"
#include "records/main_view.h"
#include "records/main_window_view.h"
#include "records/record_editing.h"
#include "records/report_choices.h"
#include "records/shop_filter.h"
#include "records/shop_session.h"
#include "records/stage_tabs.h"
#include "records/stages.h"
#include "records/text_report.h"

class QAction;
class QCheckBox;
class QGridLayout;
class QLineEdit;
class QMenu;
class QStackedWidget;
class QToolBar;
class QToolButton;
class QVBoxLayout;
class frmDetails;
class MainBars;
class ProgramWindows;
class ServiceList;
class ServiceListOwner;
class SplashWindow;
enum class Command;
enum class Menu;
struct CommandState;
struct EntryRow;
namespace platform {
class Trap;
}

// The pieces that Display builds one after the other; named so that the failure of each can be tried out.
enum class StartStep {
    ToolbarImages,
    TabImages,
    ColumnImages,
    Tabs,
    ServiceList,
    Menus,
    StatusBar,
    Toolbar,
};

// The main window: a client, the client's computers and the services of a computer, as three stages on one
// tab strip. It builds the parts (the stages, the editing of their records, the filters, the session),
// connects them, and carries the names they are known by. Stages count from 1 in CurrentStage and from 0 in
// Data1, Combo1, Picture1, StageDirty and RememberedIndex. Its bodies are cut by subject: frmMain.cpp
// (building, Display, unloading), _panes, _bars, _stages, _commands, _settings, _services, _sorting, _report.
class frmMain : public QMainWindow,
                public ReportChoices,
                public FilterChoices,
                public SessionChoices,
                public ListOrder,
                public MainView {
    Q_OBJECT

    // The parts, before the names that look at them.
    EntryFields fields_;
    Stages stages_{fields_, *this, *this, this};
    RecordEditing editing_{stages_, fields_, *this};
    ShopFilter filter_{stages_, editing_, *this, *this};
    ShopSession session_{stages_, editing_, filter_, *this, *this};

 public:
    static constexpr int kEntryFields = EntryFields::kCount;
    static constexpr int kSplashTime = 7000;  // milliseconds from the start of Display

    // `windows` outlives this one.
    explicit frmMain(ProgramWindows& windows, QWidget* parent = nullptr);
    ~frmMain() override;

    // Builds, fills and shows the window. False where a piece failed without which the shop cannot work: the
    // reason has been shown then, and the window is unloaded.
    bool Display();
    // The picture that covers the start, until the window takes it away.
    void setSplash(std::unique_ptr<SplashWindow> splash);
    SplashWindow* splash() const { return splash_.get(); }
    void DistroySplashForm();
    // Closes the database with its backup, saves the settings, closes the help. Asks nothing. Once only.
    void unload();
    bool isUnloaded() const { return unloaded_; }

    // --- State, under the names the shop's other windows know it by.
    int& CurrentStage = stages_.current;
    bool& AddNewMode = editing_.adding;
    ArrayView<bool, kStageCount> StageDirty{{&stages_[0].dirty, &stages_[1].dirty, &stages_[2].dirty}};
    ArrayView<int, kSelectorCount> RememberedIndex{{&stages_[0].remembered, &stages_[1].remembered}};
    bool& LoadingList = stages_.loading;
    int& QuerySuffix = stages_.querySuffix;
    int& ActiveFilter = filter_.active;  // -1: no quick filter
    bool TabImagesFailed = false;
    int DefaultGST = 0;          // percent
    bool ToolbarVisible = true;  // what the user wants, also while a bar could not be made
    bool StatusbarVisible = true;

    // --- Controls.
    const std::array<platform::DataControl*, kStageCount> Data1{&stages_[0].data(), &stages_[1].data(),
                                                                &stages_[2].data()};
    std::array<platform::Selector*, 2> Combo1{};
    std::array<QLineEdit*, 2> Text2{};  // type-ahead boxes
    std::array<QWidget*, kEntryFields>& Text1 = fields_.texts;
    std::array<platform::DateField*, 3>& DTPicker1 = fields_.dates;
    QCheckBox*& Check1 = fields_.firm;
    std::array<QToolButton*, 2> Command1{};  // e-mail, web
    std::array<QWidget*, 3> Picture1{};      // panes
    platform::ListView* ListView1 = nullptr;
    StageTabs* TabStrip1 = nullptr;             // nullptr until CreateTabs
    QToolBar* Toolbar1 = nullptr;               // nullptr until CreateToolbar
    platform::StatusBar* StatusBar1 = nullptr;  // nullptr until CreateStatusBar
    QMenu* mnuDDatabase = nullptr;              // this and the following: nullptr until CreateMenus
    QMenu* mnuVView = nullptr;
    QMenu* mnuHHelp = nullptr;
    QMenu* mnuPPopup = nullptr;

    QString fieldText(int index) const { return fields_.text(index); }  // of Text1(index)
    void setFieldText(int index, const QString& text) { fields_.setText(index, text); }
    // Of a menu, of the pop-up menu, of the toolbar; nullptr where there is none.
    QAction* action(Command command) const;
    QAction* popupAction(Command command) const;
    QAction* toolbarButton(const QString& key) const;
    QAction* filterEntry(const QString& key) const;  // of the drop-down of "ApplyFilter"
    QString statusText() const;
    const ServiceView& serviceView() const { return view_; }  // as requisition and documents see it

    // --- Stages.
    void FillClientCombo() { stages_.fill(kClients); }
    void FillComputerCombo() { stages_.fill(kComputers); }
    bool isStageLocked(int stage) const { return stages_[stage - 1].isLocked(); }

    // --- Record editing.
    void AddNewRecord() { editing_.addNew(); }
    void SaveRecord(int stage, bool& ok) { editing_.save(stage, ok); }
    void DeleteRecord(int stageIndex) { editing_.remove(stageIndex); }
    void OpenWebOrMail(const QString& address, bool isWeb);

    // --- Commands.
    void give(Command command);
    // The same by places in the menus, separators counted. A place without a command is told in a box.
    void mnuDatabase_Click(int index);
    void mnuQuickSearch_Click(int index);
    void mnuUtilities_Click(int index);
    void mnuView_Click(int index);
    void mnuHelp_Click(int index);
    void mnuPopup_Click(int index);
    // What some of them do.
    void OpenOptions();
    void OpenAbout();
    void ToggleToolbar();
    void ToggleStatusBar();
    void RestartOrTell(bool compact);  // ends the program where it fails
    void removeFilterClick();
    void SetStatusText(const QString& text, bool sticky = false) override;
    // The record buttons, after each change of a field, a record or a stage.
    void UpdateToolbarState() override;
    // The service buttons, on a stage change and after the list is filled.
    void UpdateServiceButtons() override;
    void ArrangeControls();

    // --- Quick filters, refresh.
    void ApplyQuickFilter(int number, bool& ok) { filter_.apply(number, ok); }
    void RemoveFilters() { filter_.remove(); }
    void RefreshAll() { filter_.refreshAll(); }
    void ShowFilterCaption(int number, bool remove);

    // --- Order of the services list (frmMain_sorting.cpp). Nothing on an empty list.
    void ListView1_ColumnClick(int column);  // from 1
    void UnsortServices();                   // back to the order of the database

    // --- Text report, legend (frmMain_report.cpp).
    // Writes the report of the choices into the program's folder and opens it. The window may be closed
    // meanwhile; a second call meanwhile does nothing.
    void GenerateReport();
    void OpenReportOptions();
    void OpenLegend();

    // --- Session (the database under the open window).
    void OpenDataControls(QString& errorText, bool& ok) { session_.open(errorText, ok); }
    void CloseDatabases(bool& ok) { session_.close(ok); }
    void CompactOpenDatabase(QString& errorText, bool& ok) { session_.compact(errorText, ok); }
    void RestartDatabase(QString& errorText, bool& ok) { session_.restart(errorText, ok); }

    // --- Settings.
    void LoadSettings();
    void SaveSettings();

    // --- The building steps of Display. False on failure, with the text to show in errorText.
    bool CreateToolbarImages(QString& errorText);
    bool CreateTabImages(QString& errorText);
    bool CreateColumnImages(QString& errorText);
    bool CreateTabs(QString& errorText);
    bool CreateMenus(QString& errorText);
    bool CreateStatusBar(QString& errorText);
    bool CreateToolbar(QString& errorText);

    // --- Service list and editor (frmMain_services.cpp).
    bool InitServiceListView(QString& errorText);
    void LoadServiceTypes() override;
    void FillServiceList(const QString& selectKey) override;
    void ShowServiceDetails(const platform::ListItem& item);
    void DeleteSelectedService() override;
    // The parts drawn for the selected service; their total becomes its price. Nothing without a selection.
    void OpenServiceRequisition();
    // The invoice, or the quotation, of the selected service. Nothing without a selection.
    void OpenDocumentOptions(bool invoice);
    frmDetails* ServiceEditor() const;            // from Display to the end; else nullptr
    const QStringList& ServiceTypeNames() const;  // by their position in the table, from 1
    QString CurrentServiceKey() const;    // of the row whose details are shown; empty before the first
    void EditService(int mode) override;  // 1: edit the selected service; anything else: a new one
    void showUnit() override;             // the present one, in the headers of the money columns
    // Takes the list off the record set that its rows come from: before that record set's database closes.
    void CloseServiceRows() override;

    // --- What tests put in the place of the real thing.
    std::function<qint64()> GetTickCount;  // milliseconds since some moment in the past
    int ReportTurn = 50;  // milliseconds for which a report may be written before the window has its turn
    std::function<void(StartStep)>
        onStartStep;  // called inside each step's trap: what it throws fails the step

    void beginStep(StartStep step) const {
        if (onStartStep) {
            onStartStep(step);
        }
    }

 protected:
    void closeEvent(QCloseEvent* event) override;
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

 signals:
    void unloaded();

 private:
    using StepRoutine = bool (frmMain::*)(QString&);

    // Panes (frmMain_panes.cpp).
    void buildPanes();
    void buildSelectorRow(int stageIndex, QVBoxLayout* column);
    void buildBlocks(int stageIndex, QVBoxLayout* column);
    void buildServicePane(QVBoxLayout* column);
    QWidget* makeField(const EntryRow& row);
    int addRow(const EntryRow& row, QGridLayout* inside);
    QToolButton* makeOpener(bool isWeb);
    void registerEntry(QWidget* widget, const QString& name, const QString& accessibleName, int helpContext);
    void bindFields();
    void connectFields();
    void connectField(int stageIndex, QWidget* field);
    void connectServiceList();
    void showHelpOfFocus();

    // Building and ending (frmMain.cpp).
    bool runStep(StepRoutine routine);
    bool failDisplay(const QString& errorText);
    void settleSplash(qint64 startTick);
    void showSortIcon();
    void unloadHandler();

    // Bars and menus (frmMain_bars.cpp).
    void makeBars();
    CommandState commandState() const;
    void giveAt(Menu menu, int position, const char* handler);
    void toggleBar(QWidget* bar, bool& wanted);
    void showTabImages(int stage);
    void statusPanelDoubleClicked(const QString& key);
    void statusBarClicked();
    void previewClients();
    void unknownIndex(const char* handler, int index);
    void allowFiltersBut(int number) const;  // in the toolbar's drop-down; -1: all
    void setButtonEnabled(const QString& key, bool enabled) const;

    // Stages (frmMain_stages.cpp).
    void typeAheadChanged(int stageIndex);
    void tabChanged(int tabIndex);
    void showStage(int newStage, platform::Trap& step);

    // What the parts see.
    void setTabCaption(int stage, const QString& caption) override;
    void setWaiting(bool waiting) override;
    void showFirstStage() override;
    void showFilter(int number) override { ShowFilterCaption(number, false); }
    void showNoFilter() override;

    // Sorting (frmMain_sorting.cpp).
    void takeSortColumn(int column);

    // Service list (frmMain_services.cpp).
    void makeServiceList();

    // Text report (frmMain_report.cpp).
    TextReport::Selection reportSelection() const;
    TextReport::Result writeReport();

    platform::BoxAnswer box(const QString& text, platform::BoxIcon icon,
                            platform::BoxButtons buttons = platform::BoxButtons::Ok,
                            platform::BoxAnswer preselected = platform::BoxAnswer::Yes) override;

    ProgramWindows& windows_;
    const MainWindowView view_{fields_, ListView1, TabStrip1};
    std::unique_ptr<ServiceListOwner> listOwner_;
    std::unique_ptr<ServiceList> services_;
    std::unique_ptr<SplashWindow> splash_;
    QStackedWidget* panes_ = nullptr;
    QHash<QString, QIcon> toolbarImages_, tabImages_, columnImages_;
    MainBars* bars_ = nullptr;  // a child of the window
    QString stickyText_;
    bool toolbarImagesFailed_ = false;
    bool activated_ = false;
    bool unloaded_ = false;
    bool puttingTabBack_ = false;
    bool arranging_ = false;
    bool reporting_ = false;
    bool barClickPending_ = false;
    // What the window's inside keeps when a bar comes or goes; logical pixels, 0: not known.
    int insideHeight_ = 0;
};
