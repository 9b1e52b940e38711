#pragma once

#include "records/service_list.h"

class EntryFields;
class MainView;
class Stages;
struct MainChoices;

// What the services list takes from the main window, and what it shows there.
class MainListOwner : public ServiceListOwner {
 public:
    // All of these outlive it.
    MainListOwner(const Stages& stages, EntryFields& fields, const MainChoices& choices, MainView& window);

    qint32 computerOnShow() const override;
    qint16 taxOfNewServices() const override;
    QString description() const override;
    void showTexts(const QString& description, const QString& kinds) override;
    void renewRecordCommands() override;
    void renewServiceCommands() override;

 private:
    const Stages& stages_;
    EntryFields& fields_;
    const MainChoices& choices_;
    MainView& window_;
};
