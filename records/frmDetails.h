#pragma once

#include <QDialog>
#include <QString>
#include <QStringList>
#include <array>

class ServiceView;
class QGridLayout;
class QLabel;
class QLineEdit;
class QListWidget;
class QPlainTextEdit;
class QPushButton;
class QToolButton;
namespace platform {
class DateField;
class LinkLabel;
}  // namespace platform

// The service editor: one service typed in or changed. It knows nothing of the database; its caller sets the
// properties, calls Display, reads Cancelled and the properties back. One instance serves the program's whole
// life.
//
// Dates and numbers are texts in the form of the user's locale, amounts in the unit on screen. An empty date
// is a date left open. After OK the texts are in the program's own form: short dates, numbers without
// grouping.
class frmDetails : public QDialog {
    Q_OBJECT
 public:
    enum OpenMode { AddMode = 0, EditMode = 1 };

    explicit frmDetails(QWidget* parent = nullptr);
    ~frmDetails() override;

    const QString& ServiceStarted() const { return data_.started; }
    const QString& ServiceToBeFinished() const { return data_.toBeFinished; }
    const QString& ServiceFinished() const { return data_.finished; }
    const QString& ServiceTypes() const { return data_.types; }  // positions from 1, "|" between
    const QString& Comments() const { return data_.comments; }
    const QString& Price() const { return data_.price; }
    const QString& Discount() const { return data_.discount; }  // percent
    const QString& Paid() const { return data_.paid; }
    const QString& GST() const { return data_.gst; }  // percent
    void setServiceStarted(const QString& text) { data_.started = text; }
    void setServiceToBeFinished(const QString& text) { data_.toBeFinished = text; }
    void setServiceFinished(const QString& text) { data_.finished = text; }
    void setServiceTypes(const QString& positions) { data_.types = positions; }
    void setComments(const QString& text) { data_.comments = text; }
    void setPrice(const QString& text) { data_.price = text; }
    void setDiscount(const QString& text) { data_.discount = text; }
    void setPaid(const QString& text) { data_.paid = text; }
    void setGST(const QString& text) { data_.gst = text; }

    qint32 ServiceID() const { return serviceId_; }  // -1: none
    void setServiceID(qint32 id) { serviceId_ = id; }
    void setDefaultGST(qint16 percent) {
        defaultGST_ = percent;
    }  // for new services; 0: the field stays empty
    // The kinds of service at their positions from 1; [0] is not used. Empty: there is no table of them.
    void setAllServiceTypes(const QStringList& names) { allTypes_ = names; }
    // For the list of parts that the requisition prints; outlives this window. nullptr: there is none.
    void setServiceView(const ServiceView* view) { serviceView_ = view; }
    bool Cancelled() const { return cancelled_; }

    // Fills the window for a new service (AddMode) or from the properties (EditMode) and returns when it is
    // hidden.
    void Display(int mode);
    // Keeps the window's place in the settings, if it was ever shown. Once; the destructor does it otherwise.
    void Unload();

 public slots:
    void reject() override;  // Cancel, Escape, the close box

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

 private:
    static constexpr int kFields = 9;
    static constexpr int kDates = 3;  // the first fields; each has a picture button
    static constexpr int kForPayment = 3, kComments = 4, kPrice = 5, kDiscount = 6, kPaid = 7, kGST = 8;
    static constexpr int kTypesLabel = 9;

    struct Data {
        QString started, toBeFinished, finished;
        QString types = QStringLiteral("1");
        QString comments;
        QString price = QStringLiteral("0");
        QString discount = QStringLiteral("0");
        QString paid = QStringLiteral("0");
        QString gst = QStringLiteral("0");
    };
    struct Failures {
        QStringList texts;
        int focus = -1;  // the first failing field
        void add(int field, const QString& text);
    };
    enum class Selection { All, None, Given };

    // Building (frmDetails.cpp).
    void buildFields(QGridLayout* grid);
    void buildDateButton(QGridLayout* grid, int index, int row);
    void buildTypes(QGridLayout* grid);
    void buildButtons(QGridLayout* grid);
    QLabel* makeLabel(int index, const QString& text, QWidget* field);
    void connectControls();
    void setContextNumbers();
    void setTabChain();

    // Filling (frmDetails.cpp).
    void fillFields();
    void fillEmpty();
    void fillTypeList();
    void selectTypes(Selection selection, const QString& positions = {});
    QString fieldText(int index) const;
    void setFieldText(int index, const QString& text);
    QWidget* fieldWidget(int index) const;
    int helpContextOf(const QWidget* widget) const;

    // What is typed (frmDetails_input.cpp).
    void fieldChanged(int index);
    void showForPayment();
    void showDatePicture(int index);
    bool filterKey(int index, const QKeyEvent& key);
    void focusField(int index);
    void openPicker(int index);
    void takePickerValue(int index);
    void commitPicker();
    void closePicker();
    void placePicker();
    void viewPriceList();

    // OK (frmDetails_validation.cpp).
    void okClicked();
    Failures validate();
    void validateDates(Failures& failures);
    void validateNumbers(Failures& failures);
    void readTypes();

    std::array<QLineEdit*, kFields> text_{};  // nullptr at kComments
    QPlainTextEdit* comments_ = nullptr;
    std::array<QToolButton*, kDates> image_{};
    platform::DateField* picker_ = nullptr;
    QListWidget* list_ = nullptr;
    QLabel* currency_ = nullptr;
    platform::LinkLabel* deselect_ = nullptr;
    platform::LinkLabel* priceList_ = nullptr;
    std::array<QPushButton*, 3> command_{};

    Data data_;
    const ServiceView* serviceView_ = nullptr;
    qint32 serviceId_ = -1;
    qint16 defaultGST_ = 0;
    QStringList allTypes_;
    bool cancelled_ = false;
    bool loading_ = false;
    int mode_ = AddMode;
    int openField_ = -1;          // the date field that the picker lies over; -1: closed
    bool openingPicker_ = false;  // a box may be up while the picker opens: its focus is not lost then
    bool loaded_ = false;         // the window's place has been read
};
