#pragma once

#include <QDialog>
#include <QString>
#include <array>

class QCheckBox;
class QGridLayout;
class QLabel;
class QLineEdit;
class QPushButton;

// Asks for the quantity and the serial number of a product that is being drawn. It touches no record: its
// caller sets the properties, calls Display, and reads them back where Cancelled is false.
class frmInputBox : public QDialog {
    Q_OBJECT
 public:
    explicit frmInputBox(QWidget* parent = nullptr);
    ~frmInputBox() override;

    bool Cancelled() const { return cancelled_; }
    float Kolicina = 1;
    QString SeriskiBroj;
    QString WindowCaption = QStringLiteral("Detalji Trebovanja");
    QString ProductName;  // of which product; empty: the window does not say
    // The serial number is to stand behind the one already stored, not in its place.
    bool AppendSerialNumber() const { return append_; }

    void Display();  // modal; returns when it is hidden
    void Unload();   // stores the place; once. The destructor does it otherwise.

 public slots:
    void reject() override;  // Cancel, Escape, the close box

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    void buildProduct(QGridLayout* grid);
    void buildFields(QGridLayout* grid);
    void buildOptions(QGridLayout* grid);
    void buildButtons(QGridLayout* grid);
    void load();
    void quantityChanged();
    void confirm();

    QLabel* product_;
    std::array<QLineEdit*, 2> text_{};
    std::array<QCheckBox*, 2> check_{};
    std::array<QPushButton*, 2> command_{};
    bool cancelled_ = false;
    bool append_ = false;
    bool loaded_ = false;  // the place and the options have been read
};
