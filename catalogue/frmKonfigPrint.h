#pragma once

#include <QDialog>
#include <QString>
#include <functional>
#include <memory>

class ActiveReport1;
class PriceListOptions;
class PriceListSteps;
class PriceListTexts;
namespace platform {
class DataControl;
}

// Asks what goes on the price list, and shows it.
//
// What is chosen belongs to its parts (PriceListTexts, PriceListOptions); the window opens and closes, and
// goes the way of a printed list.
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
    // Shows the list, where there are products for it and nobody has left it. False: some steps failed, and
    // `errorText` has a line for each.
    bool DoPrintDataReport(QString& errorText);

    // Shows the filled list over this window and returns when the preview is closed. Whoever checks price
    // lists without looking at them puts something else in here.
    std::function<void(ActiveReport1&)> onShow;

 public slots:
    void reject() override;  // the close box and Escape too

 private:
    QWidget* buildButtons();
    void load();
    void print();
    bool readProducts(PriceListSteps& step);
    void showList(const QString& footer);

    platform::DataControl* data_;
    std::unique_ptr<PriceListTexts> texts_;
    std::unique_ptr<PriceListOptions> options_;
    qint32 idGrupe_ = 0, idProizvodjaca_ = 0;
    bool loaded_ = false;
};
