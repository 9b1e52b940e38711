#pragma once

#include <QString>

class QWidget;
class RequisitionList;
class ServiceView;

// The requisition as a text file of the program's folder, which opens with whatever the desktop has for it.
class RequisitionPrint {
 public:
    RequisitionPrint(const RequisitionList& list, QWidget* window);

    void execute();  // a failure is told in a box

    const ServiceView* service = nullptr;  // whose names stand at its head; none: they stay empty

 private:
    bool write(QString& errorText) const;
    QString text() const;
    QString title() const;
    QString ofService(QString (ServiceView::*read)() const) const;

    const RequisitionList& list_;
    QWidget* window_;
};
