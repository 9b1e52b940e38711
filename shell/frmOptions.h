#pragma once

#include <QDialog>
#include <QString>
#include <array>
#include <functional>

class QBoxLayout;
class QCheckBox;
class QGridLayout;
class QKeyEvent;
class QLineEdit;
class QPushButton;
class QTabWidget;

// The options: the program's switches, the buying rate of the euro, the firm's data that the documents print,
// and four values that the main window keeps. The switches, the rate and the firm's data are stored by OK;
// the four members are for the caller to take back, unless Cancelled.
class frmOptions : public QDialog {
    Q_OBJECT
 public:
    explicit frmOptions(QWidget* parent = nullptr);
    ~frmOptions() override;

    bool AlwaysCreateBackupDB = true;              // the database is copied when the program closes
    qint16 DueDateDiff = 0;                        // days before the due date within which a service alerts
    bool ShowFilterStatistics = true;              // a quick filter tells its numbers in a box
    qint16 DefaultGST = 0;                         // percent, of a new service; 0: none is proposed
    bool Cancelled() const { return cancelled_; }  // true as well before OK has ever been given

    // What the button of the units opens: the catalogue's window, which lies outside the options.
    std::function<void()> onUnits;

    // Fills the window from the members, the program's variables and the settings, and returns when it hides.
    void Display();
    void Unload();  // stores the place, closes the help; once. The destructor does it otherwise.

 public slots:
    void reject() override;  // Cancel, Escape, the close box

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

 private:
    static constexpr int kNumbers = 3, kFirmFields = 13, kChecks = 7, kCommands = 5;

    // Building.
    QWidget* buildGeneral();
    QWidget* buildRate();
    QWidget* buildFirm();
    void buildNumbers(QGridLayout* grid);
    QWidget* buildFirmFields(const QString& title, int from, int to);
    QWidget* buildButtons();
    void addChecks(QBoxLayout* column, int from, int to);
    QLineEdit* makeNumber(int index, const QString& spoken);
    QPushButton* makeButton(int index);
    void connectControls();

    // Filling.
    void load();
    void loadNumbers();
    std::array<bool*, kChecks> switches();

    // What is typed.
    void numberChanged(int index);
    bool settleNumber(int index);  // false: the person wants to go on in the field
    bool asksForDefault(const char* line);
    void numberLeft(int index);

    // OK.
    void okClicked();
    bool settleNumbers();
    void takeOver();
    void keep();

    QTabWidget* tabs_ = nullptr;
    std::array<QCheckBox*, kChecks> check_{};
    std::array<QLineEdit*, kNumbers> text1_{};
    std::array<QLineEdit*, kFirmFields> text2_{};
    std::array<QPushButton*, kCommands> command_{};
    bool cancelled_ = true;
    bool loaded_ = false;
    bool asking_ = false;  // a question about a field is up; its answer moves the focus once more
};
