#pragma once

#include <QDialog>
#include <QString>
#include <array>
#include <functional>

class ActiveReport1;
class QButtonGroup;
class QCheckBox;
class QComboBox;
class QGridLayout;
class QLabel;
class QLineEdit;
class QPushButton;
namespace platform {
class DataControl;
class Trap;
}  // namespace platform

// Asks what goes on the price list, and shows it.
class frmKonfigPrint : public QDialog {
    Q_OBJECT
 public:
    explicit frmKonfigPrint(QWidget* parent = nullptr);
    ~frmKonfigPrint() override;

    // What is selected in the catalogue; no product has the number 0.
    void setIDGrupe(qint32 id) { idGrupe_ = id; }
    void setIDProizvodjaca(qint32 id) { idProizvodjaca_ = id; }

    void Display();  // modal; loads on the first showing, returns when it is hidden
    void Unload();   // stores the place; once. The destructor does it otherwise.

    QString PriceListQuery() const;
    QString BuildFooterText() const;
    // Shows the list, where there are products for it. False: some steps failed, and `errorText` has a line
    // for each.
    bool DoPrintDataReport(QString& errorText);

    // Shows the filled list over this window and returns when the preview is closed. Whoever checks price
    // lists without looking at them puts something else in here.
    std::function<void(ActiveReport1&)> onShow;

 public slots:
    void reject() override;  // the close box and Escape too

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    static constexpr int kHeader = 0, kFooter = 1;       // Text1
    static constexpr int kFirmsData = 0, kContents = 1;  // Check1

    void buildTexts(QGridLayout* grid);
    QWidget* buildOptions(int set);
    QWidget* buildRounding();
    QWidget* buildButtons();
    void connectControls();
    void load();
    void saveChoice(platform::Trap& step);
    void firmsDataClicked();
    void print();
    void showList(const QString& footer);
    int optionOf(int set) const;

    std::array<QLabel*, 2> label_{};
    std::array<QLineEdit*, 2> text_{};
    std::array<QCheckBox*, 2> check_{};
    std::array<QButtonGroup*, 2> options_{};  // Option1, Option2
    QComboBox* combo_ = nullptr;
    std::array<QPushButton*, 2> command_{};
    platform::DataControl* data_ = nullptr;
    qint32 idGrupe_ = 0, idProizvodjaca_ = 0;
    bool loaded_ = false;
};
