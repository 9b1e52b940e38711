#pragma once

#include <QList>
#include <QString>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/dao/database.h"
#include "records/report_choices.h"
#include "records/report_clients.h"
#include "records/report_file.h"
#include "records/report_printer.h"
#include "records/report_queries.h"
#include "records/report_reading.h"
#include "records/report_result.h"
#include "records/report_turns.h"

// The text report: clients, under each client the computers, under each computer the services, in fixed
// columns. It knows no window; amounts are the stored ones (euro).
class TextReport {
 public:
    using Selection = ReportSelection;
    using Result = ReportResult;
    using Proceed = ReportTurns::Proceed;

    // `querySuffix`: the number behind this copy's stored queries, through which a quick filter narrows the
    // report. `typeNames`: kinds of service at their positions from 1; [0] is not used.
    TextReport(dao::Database database, int querySuffix, const ReportChoices& choices, Selection selection,
               QList<QString> typeNames);
    TextReport(const TextReport&) = delete;
    TextReport& operator=(const TextReport&) = delete;

    // How many clients are read at one time, with their computers and services where all are wanted; 0: each
    // client, his computers and each computer's services by a statement of their own. The report is the same.
    std::size_t readAhead = 500;
    // From how many clients on the rows of all of them are put aside first, and with which means. The report
    // is the same, but all of it is of the moment when it began.
    ReportShelf::Limits shelf;

    // `clientSource`: the statement of the clients, without an order.
    Result write(const std::string& clientSource, const QString& path, const Proceed& proceed = {});

    // Each writes its part at the end of the file. False: something of it could not be read or written; of
    // WriteComputers also where the choice asks for no computers. `all`: the selection of a computer and a
    // service does not count.
    bool WriteClient(ReportFile& file, const ReportRows& client);
    bool WriteComputers(ReportFile& file, std::int32_t custId, bool all);
    bool WriteComputer(ReportFile& file, const ReportRows& computer);
    bool WriteServices(ReportFile& file, std::int32_t machineId, bool all);

 private:
    std::optional<Result> findClients(ReportClients& clients, const ReportTurns& turns);
    Result writeAll(ReportFile& file, const QString& path, const std::vector<std::int32_t>& ids,
                    const ReportTurns& turns);
    Result writeClients(ReportFile& file, const std::vector<std::int32_t>& ids, const ReportTurns& turns);
    void readBlock(const std::vector<std::int32_t>& ids, std::size_t first);
    bool writeClientWhole(ReportFile& file, const ReportRows& client, bool all);

    dao::Database database_;
    ReportQueries queries_;
    ReportChoices choices_;
    Selection selection_;
    ReportReading reading_;
    ReportPrinter printer_;
};
