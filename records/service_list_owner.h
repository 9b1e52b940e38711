#pragma once

#include <QString>
#include <QtGlobal>

// What the services list needs of the window that it stands in.
class ServiceListOwner {
 public:
    virtual ~ServiceListOwner() = default;
    virtual qint32 computerOnShow() const = 0;    // its number
    virtual qint16 taxOfNewServices() const = 0;  // percent; 0: none is proposed
    virtual QString description() const = 0;      // of the service on show
    virtual void showTexts(const QString& description, const QString& kinds) = 0;
    virtual void renewRecordCommands() = 0;   // what may be done with the record on show has changed
    virtual void renewServiceCommands() = 0;  // the same of the commands for a listed service
};
