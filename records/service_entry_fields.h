#pragma once

#include <QObject>
#include <QString>
#include <QWidgetList>
#include <memory>

#include "records/service_values.h"

class FieldLabels;
class QGridLayout;
class QLineEdit;
class QToolButton;
class ServiceDatePicker;
class ServiceKindsList;

// The fields of the service editor, made from the table of a service's fields and placed as it says: lines
// for dates and figures, a box for the description, a list for the kinds of work.
class ServiceEntryFields : public QObject {
    Q_OBJECT
 public:
    // All of them outlive it, the controls are the window's.
    ServiceEntryFields(QWidget& window, QGridLayout& grid, FieldLabels& labels);
    ~ServiceEntryFields() override;
    void addLines();
    void addDescriptionAndKinds();  // behind the lines

    ServiceDatePicker& picker() const { return *picker_; }  // from addLines on
    ServiceKindsList& kinds() const { return *kinds_; }     // from addDescriptionAndKinds on

    QWidget* widget(ServiceColumn column) const { return widgets_[column]; }
    QString text(ServiceColumn column) const;  // as it stands there; of the kinds the chosen positions
    void setText(ServiceColumn column, const QString& text);
    void show(const ServiceTexts& service);  // without a word of changed()
    // In the order that an entry is made in: when, for how much, what.
    QWidgetList inTabOrder() const;

 signals:
    void changed();  // what stands in one of the lines

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    QLineEdit* addLine(const ServiceField& field);
    QToolButton* addPicture(const ServiceField& field, const QLineEdit& line);
    void addDescription(const ServiceField& field);
    void addKinds(const ServiceField& field);

    QWidget& window_;
    QGridLayout& grid_;
    FieldLabels& labels_;
    std::unique_ptr<ServiceDatePicker> picker_;
    std::unique_ptr<ServiceKindsList> kinds_;
    PerServiceColumn<QWidget*> widgets_;
};
