#pragma once

#include <QList>
#include <QString>
#include <string>
#include <utility>

#include "records/report_choices.h"
#include "records/report_file.h"
#include "records/report_rows.h"
#include "records/report_texts.h"

// Prints the records of a report at the end of its file: under each client the computers, under each computer
// the services, in fixed columns. Amounts are the stored ones (euro).
class ReportPrinter {
 public:
    // `typeNames`: kinds of service at their positions from 1; [0] is not used.
    ReportPrinter(const ReportChoices& choices, QList<QString> typeNames)
        : choices_(choices), texts_(std::move(typeNames)) {}

    // Both: false where the shop's file has not all of the fields; their lines are left out.
    bool client(ReportFile& file, const ReportRows& client);
    bool computer(ReportFile& file, const ReportRows& computer);
    void noComputers(ReportFile& file);
    void services(ReportFile& file, const ReportPart& services);

 private:
    std::string headLine(const ReportRows& client);
    void service(ReportFile& file, const ReportRows& service);

    ReportChoices choices_;
    ReportTexts texts_;
};
