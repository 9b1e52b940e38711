#pragma once

#include <QDate>
#include <QString>
#include <utility>

#include "platform/system/dates.h"
#include "records/service_values.h"

// The service that the editor is given and gives back, all its texts at once or one by one under the names
// that the program's callers have always used. Dates and numbers are texts in the form of the user's locale,
// amounts in the unit on screen. An empty date is a date left open.
class ServiceProperties {
 public:
    ServiceProperties() {
        for (const ServiceField& field : serviceFields()) {
            service_[field.name] = untypedText(field.kind);
        }
        setServiceStarted(platform::formatShortDate(QDate::currentDate()));
    }

    const ServiceTexts& service() const { return service_; }
    void setService(ServiceTexts service) { service_ = std::move(service); }
    qint32 ServiceID() const { return serviceId_; }  // -1: none
    void setServiceID(qint32 id) { serviceId_ = id; }

    const QString& ServiceStarted() const { return service_[ServiceColumn::Started]; }
    const QString& ServiceToBeFinished() const { return service_[ServiceColumn::ToBeFinished]; }
    const QString& ServiceFinished() const { return service_[ServiceColumn::Finished]; }
    const QString& ServiceTypes() const { return service_[ServiceColumn::Types]; }
    const QString& Comments() const { return service_[ServiceColumn::Comments]; }
    const QString& Price() const { return service_[ServiceColumn::Price]; }
    const QString& Discount() const { return service_[ServiceColumn::Discount]; }  // percent
    const QString& Paid() const { return service_[ServiceColumn::Paid]; }
    const QString& GST() const { return service_[ServiceColumn::Tax]; }  // percent
    void setServiceStarted(const QString& text) { service_[ServiceColumn::Started] = text; }
    void setServiceToBeFinished(const QString& text) { service_[ServiceColumn::ToBeFinished] = text; }
    void setServiceFinished(const QString& text) { service_[ServiceColumn::Finished] = text; }
    void setServiceTypes(const QString& positions) { service_[ServiceColumn::Types] = positions; }
    void setComments(const QString& text) { service_[ServiceColumn::Comments] = text; }
    void setPrice(const QString& text) { service_[ServiceColumn::Price] = text; }
    void setDiscount(const QString& text) { service_[ServiceColumn::Discount] = text; }
    void setPaid(const QString& text) { service_[ServiceColumn::Paid] = text; }
    void setGST(const QString& text) { service_[ServiceColumn::Tax] = text; }

 protected:
    ServiceTexts service_;

 private:
    qint32 serviceId_ = -1;
};
