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

#include "platform/controls/boxes.h"
#include "platform/controls/data_control.h"
#include "platform/controls/date_field.h"
#include "platform/controls/list_view.h"
#include "platform/controls/selector.h"
#include "platform/controls/status_bar.h"
#include "records/main_window_view.h"
#include "records/report_choices.h"
#include "records/stage_tabs.h"
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
class frmSplash;
class TypedEntry;
struct EntryRow;
namespace platform {
class Trap;
}
namespace quick_filters {
struct Found;
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
// tab strip. Stages count from 1 in CurrentStage and from 0 in Data1, Combo1, Picture1, StageDirty and
// RememberedIndex. Its bodies are cut by subject: frmMain.cpp (building, Display, unloading), _panes, _bars,
// _stages, _editing, _commands, _session, _settings, _services, _filters, _sorting, _report.
class frmMain : public QMainWindow, public ReportChoices {
    Q_OBJECT
 public:
    static constexpr int kEntryFields = 41;   // Text1(0) to Text1(40)
    static constexpr int kSplashTime = 7000;  // milliseconds from the start of Display

    explicit frmMain(QWidget* parent = nullptr);
    ~frmMain() override;

    // Builds, fills and shows the window. False where a piece failed without which the shop cannot work: the
    // reason has been shown then, and the window is unloaded.
    bool Display();
    // The picture that covers the start, until the window takes it away.
    void setSplash(std::unique_ptr<frmSplash> splash);
    frmSplash* splash() const { return splash_.get(); }
    void DistroySplashForm();
    // Closes the database with its backup, saves the settings, closes the help. Asks nothing. Once only.
    void unload();
    bool isUnloaded() const { return unloaded_; }

    // --- State, under the names the shop's other windows know it by.
    int CurrentStage = 1;
    bool AddNewMode = false;
    std::array<bool, 3> StageDirty{};
    std::array<int, 2> RememberedIndex{};
    bool LoadingList = false;
    bool TabImagesFailed = false;
    int QuerySuffix = 0;
    bool LVWSorted = false;
    QString LVWSortField = QStringLiteral("ServiceStarted");
    QString LVWSortOrder = QStringLiteral("ASC");
    int ActiveFilter = -1;  // -1: no quick filter
    int DueDateDiff = 5;    // days
    int DefaultGST = 0;     // percent
    bool ShowMsgBoxFilterResults = true;
    bool AlwaysCreateBackupDB = true;
    bool ToolbarVisible = true;  // what the user wants, also while a bar could not be made
    bool StatusbarVisible = true;
    // Kinds of service by their position in the table: 1 is the first, [0] is not used. Empty: none were
    // read.
    QList<QString> ServiceTypeNames;
    QString CurrentServiceKey;  // of the list row whose details are shown; empty before the first
    std::unique_ptr<frmDetails> ServiceEditor;  // from Display to the end

    // --- Controls.
    std::array<platform::DataControl*, 3> Data1{};
    std::array<platform::Selector*, 2> Combo1{};
    std::array<QLineEdit*, 2> Text2{};  // type-ahead boxes
    std::array<QWidget*, kEntryFields>
        Text1{};  // QLineEdit, or QPlainTextEdit where a text has several lines
    std::array<platform::DateField*, 3> DTPicker1{};
    QCheckBox* Check1 = nullptr;
    std::array<QToolButton*, 2> Command1{};  // e-mail, web
    std::array<QWidget*, 3> Picture1{};      // panes
    platform::ListView* ListView1 = nullptr;
    StageTabs* TabStrip1 = nullptr;             // nullptr until CreateTabs
    QToolBar* Toolbar1 = nullptr;               // nullptr until CreateToolbar
    platform::StatusBar* StatusBar1 = nullptr;  // nullptr until CreateStatusBar
    // By position, separators counted; empty until CreateMenus.
    QList<QAction*> mnuDatabase, mnuQuickSearch, mnuUtilities, mnuView, mnuHelp, mnuPopup;
    QMenu* mnuDDatabase = nullptr;
    QMenu* mnuVView = nullptr;
    QMenu* mnuHHelp = nullptr;
    QMenu* mnuPPopup = nullptr;

    QString fieldText(int index) const;  // of Text1(index)
    void setFieldText(int index, const QString& text);
    QWidget* entryField(const EntryRow& row) const;    // of Text1 or DTPicker1, or Check1
    QAction* toolbarButton(const QString& key) const;  // nullptr where there is none
    QAction* filterEntry(const QString& key) const;    // of the drop-down of "ApplyFilter"
    QString statusText() const;

    // --- Stages.
    QString ClientDisplayName() const;  // from the entry fields
    void FillClientCombo();
    void FillComputerCombo();
    void SetStageLocked(int stage, bool locked);  // stage 1 or 2
    bool isStageLocked(int stage) const { return locked_[static_cast<size_t>(stage - 1)]; }
    void RefreshComboItem(int stageIndex);  // only where the entry is that of the row on show
    void ReplaceComboItem(platform::Selector* selector, const QString& text, int position);

    // --- Record editing.
    void ValidateStage(int& focusField, int stageIndex, QString& errors) const;
    void AddNewRecord();
    // `ok` is false where the person has to stay: something is missing that is to be mended, or a new record
    // could not be written and goes on being added. A failed edit holds nobody back.
    void SaveRecord(int stage, bool& ok);
    void SaveStage(int stageIndex, bool& ok);
    void DeleteRecord(int stageIndex);
    void OpenWebOrMail(const QString& address, bool isWeb);

    // --- Commands.
    void mnuDatabase_Click(int index);
    void mnuQuickSearch_Click(int index);
    void mnuUtilities_Click(int index);
    void mnuView_Click(int index);
    void mnuHelp_Click(int index);
    void mnuPopup_Click(int index);
    void toolbarClick(const QString& key);
    void SetStatusText(const QString& text, bool sticky = false);
    void UpdateToolbarState();    // the record buttons, after each change of a field, a record or a stage
    void UpdateServiceButtons();  // the service buttons, on a stage change and after the list is filled
    void updateDatabaseMenu();
    void updateViewMenu();
    void updateHelpMenu();
    void updatePopupMenu();
    void ArrangeControls();

    // --- Quick filters, refresh (frmMain_filters.cpp).
    // Narrows all stages to the services that the filter finds, and their computers and clients. `ok` is
    // false where it found nothing, or the record on show could not be saved first: all stands as it stood
    // then.
    // Throws dao::Error where the database could not be asked; a narrowing that fails half-way shows the
    // whole shop. A number that is no filter does nothing.
    void ApplyQuickFilter(int number, bool& ok);
    void ShowFilterCaption(int number, bool remove);
    // Both ask nothing and save nothing: what was typed stands in its record's fields again afterwards, and
    // an add goes on. Where that record is gone they say so.
    void RemoveFilters();
    void RefreshAll();  // all records and the unit of the money columns; ends a filter, too

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
    void OpenDataControls(QString& errorText, bool& ok);
    void CloseDatabases(bool& ok);
    void CompactOpenDatabase(QString& errorText, bool& ok);
    void RestartDatabase(QString& errorText, bool& ok);

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
    void LoadServiceTypes();
    void FillServiceList(const QString& selectKey);
    void ShowServiceDetails(const platform::ListItem& item);
    void DeleteSelectedService();
    // The parts drawn for the selected service; their total becomes its price. Nothing without a selection.
    void OpenServiceRequisition();
    // The invoice, or the quotation, of the selected service. Nothing without a selection.
    void OpenDocumentOptions(bool invoice);
    void EditService(int mode);  // 1: edit the selected service; anything else: a new one
    void showUnit();             // the present one, in the headers of the money columns
    // Takes the list off the record set that its rows come from: before that record set's database closes.
    void CloseServiceRows();

    // --- What tests put in the place of the real thing.
    std::function<qint64()> GetTickCount;  // milliseconds since some moment in the past
    int ReportTurn = 50;  // milliseconds for which a report may be written before the window has its turn
    std::function<void(StartStep)>
        onStartStep;  // called inside each step's trap: what it throws fails the step

    void beginStep(StartStep step) const {
        if (onStartStep)
            onStartStep(step);
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
    void connectServiceList();
    void showHelpOfFocus();

    // Building and ending (frmMain.cpp).
    bool runStep(StepRoutine routine);
    bool failDisplay(const QString& errorText);
    void settleSplash(qint64 startTick);
    void showSortIcon();
    void showTip();
    void unloadHandler();

    // Bars and menus (frmMain_bars.cpp).
    QMenu* makeTopMenu(const QString& name, int id, void (frmMain::*stateRule)());
    void fillMenu(QMenu* menu, QList<QAction*>& items, const QString& name, const QList<int>& ids,
                  void (frmMain::*handler)(int));
    void makeAllMenus();
    void addToolbarButton(const QString& key, int tipId);
    void addFilterMenu();
    void showTabImages(int stage);
    void forbidBar(int viewPosition);
    void statusPanelDoubleClicked(const QString& key);
    void statusBarClicked();
    void previewClients();
    void unknownIndex(const char* handler, int index);
    void showAbout();
    void openOptions();
    // Stays disabled while its command is still to come.
    void setEnabled(QAction* action, bool enabled) const;
    void setButtonEnabled(const QString& key, bool enabled) const;

    // Stages (frmMain_stages.cpp).
    void selectorChanged(int stageIndex);
    void dropPendingRow(int stageIndex);
    void stayOnRecord(int stageIndex);
    void tellMissing(const QString& entry);
    void typeAheadChanged(int stageIndex);
    void tabChanged(int tabIndex);
    void showStage(int newStage, platform::Trap& step);
    void updateStagesAhead(int oldStage, int newStage, platform::Trap& step);
    void updateComputerStage(bool servicesToo, platform::Trap& step);
    void updateServiceStage(platform::Trap& step);
    bool isStale(int stageIndex, const QString& source) const;
    void refresh(int stageIndex, const QString& source);  // throws as DataControl::Refresh
    void fillCombo(int stageIndex);
    QList<platform::Selector::Entry> readEntries(int stageIndex);
    int findEntry(int stageIndex, const QString& text);
    void selectSilently(int stageIndex, int index);  // the selector, and RememberedIndex with it
    void setTabCaption(int stage, const QString& text);
    void fieldChanged(int index);
    void firmBoxClicked();
    QString displayNameOfFields(int stageIndex) const;
    QString displayNameOfRecord(int stageIndex);
    static QString displayName(int stageIndex, const dao::Recordset& row);
    static QString defaultCaption(int stage);
    qint32 keyOfRecord(int stageIndex);      // -1 where there is no current row
    QString queryOf(int stageIndex) const;   // the name of a stage's stored query
    QString sourceOf(int stageIndex) const;  // a stage's stored query, whole
    QString computerSource() const;          // of the selected client
    QString serviceSource() const;           // of the selected computer, in the order in force
    QString sortClause() const;

    // Editing (frmMain_editing.cpp).
    bool beginAdd(int stageIndex);
    void addAgain(int stageIndex, platform::Trap& step);
    bool hasNewRow(int stageIndex);
    bool wantsToFix(const QString& errors);
    void setFocusToField(int index);
    void dropEdit(int stageIndex);
    void showEntryOfRecord(int stageIndex);
    bool writeNew(int stageIndex);
    bool writeRow(int stageIndex, qint32& number, platform::Trap& step);
    void takeNewEntry(int stageIndex, qint32 number);
    void writeEdit(int stageIndex, int entry);
    void showSaveFailure(int messageId, int stageIndex, const QString& line);
    bool mayDelete(int stageIndex);
    void removeCurrentEntry(int stageIndex);
    void moveOnAfterDelete(int stageIndex);

    // Quick filters, refresh (frmMain_filters.cpp).
    using StepRunner = std::function<void(const std::function<void()>&)>;
    struct StageBefore;
    void removeFilterClick();
    bool leaveRecord();
    void setWorkQuery(int stageIndex, const std::string& statement);
    void narrowStages(const quick_filters::Found& found);
    void reloadWholeShop(const QString& status, bool unitToo);
    StageBefore takeFromStage(int stageIndex, bool adding);
    void putBackTyped(const std::array<StageBefore, 2>& before, int addingStage);
    void resumeAdd(const std::array<StageBefore, 2>& before, int stageIndex);
    void showWholeShop(const std::array<qint32, 2>& keep, bool unitToo);
    // `keep`: the numbers of the client and the computer to be chosen again, -1 for the first ones.
    void reloadStages(const StepRunner& step, const std::array<qint32, 2>& keep, bool unitToo);
    void selectRecord(int stageIndex, qint32 number);

    // Sorting (frmMain_sorting.cpp).
    void takeSortColumn(int column);

    // Text report (frmMain_report.cpp).
    TextReport::Result writeReport();

    // Session (frmMain_session.cpp).
    void openSources(platform::Trap& step);
    bool recoverDatabase(QString& errorText, bool& repaired);
    void closeSources(platform::Trap& step);
    void reopenDatabase(bool compact, QString& errorText, bool& ok);
    void reopenStages(platform::Trap& step);
    void forgetFilter();
    void finishSession();

    platform::BoxAnswer box(const QString& text, platform::BoxIcon icon,
                            platform::BoxButtons buttons = platform::BoxButtons::Ok,
                            platform::BoxAnswer preselected = platform::BoxAnswer::Yes);

    const MainWindowView view_{*this};
    std::unique_ptr<frmSplash> splash_;
    QStackedWidget* panes_ = nullptr;
    QHash<QString, QIcon> toolbarImages_, tabImages_, columnImages_;
    QHash<QString, QAction*> toolbarButtons_, filterEntries_;
    QString stickyText_;
    std::array<bool, 2> locked_{};
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
