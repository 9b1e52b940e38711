#pragma once

#include <QDialog>
#include <QString>
#include <array>
#include <memory>
#include <optional>

class QComboBox;
class QGridLayout;
class QHBoxLayout;
class QKeyEvent;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
namespace dao {
class Recordset;
}
namespace platform {
class Trap;
}

// The entry window of a product. It knows nothing of the products' table, only the list of units: its caller
// sets the properties, shows it with Display, reads them back. Prices in euro.
class frmKonfigInput : public QDialog {
    Q_OBJECT
 public:
    enum Mode { NewProduct = 0, ExistingProduct = 1, Search = 2 };

    explicit frmKonfigInput(QWidget* parent = nullptr);
    ~frmKonfigInput() override;

    QWidget* ParentForm = nullptr;
    int OpenMode = NewProduct;
    bool Cancelled = false;
    bool ContinueInput = true;
    QString Grupa, Proizvodjac;  // of the new or changed product, for the caption
    QString Naziv, Opis, Napomena;
    float Cena = 0;
    float Stanje = 0;
    QString JedinicaMere = QStringLiteral("Kom.");

    void Display();  // loads on the first showing; returns when it is hidden. May be shown again, with what
                     // was typed.
    void Unload();   // stores the place; once. The destructor does it otherwise.

 public slots:
    void reject() override;  // Escape, the close box: cancelled

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    static constexpr int kFields = 5;
    static constexpr int kName = 0, kDescription = 1, kPrice = 2, kStock = 3, kNote = 4, kUnit = 5;
    static constexpr int kButtons = 3;
    static constexpr int kStoreAndGoOn = 0, kStore = 1, kCancel = 2;

    // Building.
    void buildFields(QGridLayout* grid);
    void buildButtons(QHBoxLayout* row);
    QLabel* makeLabel(int index, const QString& text, QWidget* field);
    void connectControls();

    // Filling.
    void load();
    void fillUnits();
    void addUnits(dao::Recordset& rows, platform::Trap& step);
    void fillFields();
    void dressForMode();

    // What is typed.
    void fieldChanged(int index);
    void updateButtons();
    void showHint(int index);
    void entered(int index, Qt::FocusReason reason);
    void left(int index, Qt::FocusReason reason);
    bool filterKey(int index, const QKeyEvent& key);
    void cutNote();
    bool isRefused(int index);
    int focusedNumberField() const;  // -1: none has the focus

    void store(int button);
    int fieldOf(const QObject* widget) const;  // kUnit for the units; -1: none
    QWidget* fieldWidget(int index) const;
    QString fieldText(int index) const;

    std::array<QLineEdit*, kFields> text_{};  // nullptr at kNote
    QPlainTextEdit* note_ = nullptr;
    QComboBox* units_ = nullptr;
    QLabel* hint_ = nullptr;
    std::array<QLabel*, kFields + 1> label_{};
    std::array<QPushButton*, kButtons> command_{};
    bool loaded_ = false;
    bool unloaded_ = false;
    bool loading_ = false;
    bool refusing_ = false;  // a box about a number is up
};
