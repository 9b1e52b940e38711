#pragma once

#include <QList>
#include <QString>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/dao/database.h"
#include "records/report_choices.h"
#include "records/report_file.h"
#include "records/report_rows.h"
#include "records/report_shelf.h"
#include "records/report_texts.h"

// The text report: clients, under each client the computers, under each computer the services, in fixed
// columns. It knows no window; amounts are the stored ones (euro).
class TextReport {
 public:
    // What is selected in the main window; -1: nothing.
    struct Selection {
        std::int32_t client = -1;
        std::int32_t computer = -1;
        std::int32_t service = -1;
    };
    enum class Result {
        Written,
        Failed,         // something could not be read or written; the rest is in the file
        Empty,          // there is no client; no file was touched
        ClientMissing,  // the selected one is not there; no file was touched
        NotRead,        // the clients could not be read; no file was touched
        BrokenOff,      // `proceed` said so; no part of it is left
    };
    // Told after each client how many are done, and before the first of many now and then that none is; false
    // breaks the report off. May close the database.
    using Proceed = std::function<bool(std::int64_t done, std::int64_t total)>;

    // `querySuffix`: the number behind this copy's stored queries, through which a quick filter narrows the
    // report. `typeNames`: kinds of service at their positions from 1; [0] is not used.
    TextReport(dao::Database database, int querySuffix, const ReportChoices& choices, Selection selection,
               QList<QString> typeNames);

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
    // What ends it before it begins.
    std::optional<Result> findClients(std::vector<std::int32_t>& ids, const Proceed& proceed);
    std::optional<Result> findAll(std::vector<std::int32_t>& ids, const Proceed& proceed);
    using Turn = std::function<bool()>;  // Proceed, before the first client
    // False where `turn` says so. Throws what the work throws.
    bool letTurn(std::size_t clients, const std::function<void()>& work, const Turn& turn) const;
    Result writeAll(ReportFile& file, const QString& path, const std::vector<std::int32_t>& ids,
                    const Proceed& proceed, const Turn& turn);
    std::optional<Result> findSelected(std::vector<std::int32_t>& ids);
    std::string clientTable() const;
    Result writeClients(ReportFile& file, const std::vector<std::int32_t>& ids, const Proceed& proceed);
    bool writeClientWhole(ReportFile& file, const ReportRows& client, bool all);
    bool fillShelf(const QString& folder, const std::vector<std::int32_t>& ids, const Turn& turn);
    void readClients(const std::vector<std::int32_t>& ids);
    void takeClients(std::size_t group, const std::vector<std::int32_t>& ids);
    void readFor(const std::vector<std::int32_t>& owners);
    std::string headLine(const ReportRows& client);
    void writeService(ReportFile& file, const ReportRows& service);

    dao::Database database_;
    std::string suffix_;
    ReportChoices choices_;
    Selection selection_;
    ReportTexts texts_;
    std::string clientSource_;
    ReportBatch clients_, computers_, services_;
    std::unique_ptr<ReportShelf> shelf_;  // of a large shop
};
