#pragma once

#include <QFile>
#include <string>

#include "records/text_report.h"
#include "support/fixture.h"

// The text report alone, over this process's own stored queries.
class ReportShop : public DeliveredFixture {
 protected:
    void TearDown() override {
        if (suffix_ >= 0) {
            DropWorkQueries(openDatabase(), suffix_);
        }
        DeliveredFixture::TearDown();
    }

    int suffix() {
        if (suffix_ < 0) {
            suffix_ = CreateWorkQueries(openDatabase());
        }
        return suffix_;
    }
    std::string query(const char* name) { return name + std::to_string(suffix()); }

    // Of the choices and the selection below.
    TextReport report() {
        return TextReport(openDatabase(), suffix(), choices, selection,
                          {"", "Other", "Cleaning", "Repair", "Upgrade"});
    }
    TextReport::Result write(const TextReport::Proceed& proceed = {}) {
        TextReport made = report();
        made.readAhead = readAhead;
        made.shelf = shelf;
        return made.write("SELECT * FROM " + query("QDCustomers"), file(), proceed);
    }
    QString file() const { return path("Report.txt"); }
    std::string written() const { return contentsOf(file()); }
    static std::string contentsOf(const QString& path) {
        QFile reader(path);
        return reader.open(QIODevice::ReadOnly) ? reader.readAll().toStdString() : "(no file)";
    }
    // The report of all that the choices ask for; it must be whole.
    std::string text() {
        EXPECT_EQ(write(), TextReport::Result::Written);
        return written();
    }
    void wholeShop() {
        choices.ShowOnlySelectedClient = choices.ShowOnlySelectedComputer = false;
        choices.ShowOnlySelectedService = false;
    }
    // Nothing but the head lines of clients, and computers without their details.
    void headsOnly() {
        const ReportChoices all = choices;
        choices = {false, false, false, false, false, false, false, false,
                   false, false, false, false, false, false, false, false};
        choices.IncludeClients = choices.IncludeComputers = choices.IncludeServices = true;
        choices.ShowOnlySelectedClient = all.ShowOnlySelectedClient;
        choices.ShowOnlySelectedComputer = all.ShowOnlySelectedComputer;
        choices.ShowOnlySelectedService = all.ShowOnlySelectedService;
    }

    ReportChoices choices;
    TextReport::Selection selection;
    std::size_t readAhead = 1000;
    ReportShelf::Limits shelf;

 private:
    int suffix_ = -1;
};
