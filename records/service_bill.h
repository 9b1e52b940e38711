#pragma once

#include <QObject>

class FieldLabels;
class QGridLayout;
class QLabel;
class QLineEdit;
class QWidget;
class ServiceEntryFields;
namespace platform {
class LinkLabel;
}

// What the service editor shows beside its figures: the unit that they are in, what is still to be paid, and
// the way to the parts that were drawn.
class ServiceBill : public QObject {
 public:
    ServiceBill(QWidget& window, QGridLayout& grid, FieldLabels& labels);
    platform::LinkLabel* partsLink() const { return partsLink_; }
    void showUnit();  // the present one
    // What is left to pay of the figures as they are typed so far; what cannot be read counts as nothing.
    void showRest(const ServiceEntryFields& fields);

 private:
    QLabel* unit_;
    platform::LinkLabel* partsLink_;
    QLineEdit* forPayment_;
};
