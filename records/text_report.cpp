#include "records/text_report.h"

#include <QFileInfo>
#include <algorithm>

#include "common/window_helpers.h"
#include "platform/system/trap.h"
#include "records/report_fields.h"

using platform::Trap;

TextReport::TextReport(dao::Database database, int querySuffix, const ReportChoices& choices,
                       Selection selection, QList<QString> typeNames)
    : database_(std::move(database)),
      queries_{std::to_string(querySuffix), {}},
      choices_(choices),
      selection_(selection),
      reading_(database_, queries_, choices_, selection_),
      printer_(choices, std::move(typeNames)) {}

TextReport::Result TextReport::write(const std::string& clientSource, const QString& path,
                                     const Proceed& proceed) {
    queries_.clients = clientSource;
    const ReportTurns turns(proceed, shelf.fromClients);
    ReportClients clients(database_, queries_);
    std::optional<Result> ended = Result::NotRead;
    Trap step;
    step([&] { ended = findClients(clients, turns); });
    if (ended) {
        return *ended;
    }
    step(refreshCache);
    ReportFile file;
    const std::vector<std::int32_t>& ids = clients.numbers();
    const ReportTurns::Turn turn = turns.beforeFirst(static_cast<std::int64_t>(ids.size()));
    const auto open = [&] { file.open(path); };
    bool goesOn = true;
    step([&] { goesOn = turns.run(ids.size(), open, turn); });
    Result result = goesOn ? Result::Failed : Result::BrokenOff;
    if (goesOn) {
        step([&] { result = writeAll(file, path, ids, turns); });
    }
    if (result == Result::BrokenOff) {
        file.remove();
        return result;
    }
    step([&] { file.close(); });
    return step.failed() ? Result::Failed : result;
}

std::optional<TextReport::Result> TextReport::findClients(ReportClients& clients, const ReportTurns& turns) {
    return choices_.ShowOnlySelectedClient ? clients.findOne(selection_.client) : clients.findAll(turns);
}

TextReport::Result TextReport::writeAll(ReportFile& file, const QString& path,
                                        const std::vector<std::int32_t>& ids, const ReportTurns& turns) {
    const ReportTurns::Turn turn = turns.beforeFirst(static_cast<std::int64_t>(ids.size()));
    if (!reading_.begin({readAhead, shelf}, QFileInfo(path).path(), ids, turn)) {
        return Result::BrokenOff;
    }
    const Result result = writeClients(file, ids, turns);
    const auto letGo = [&] { reading_.letGo(); };
    return result == Result::BrokenOff || turns.run(ids.size(), letGo, turn) ? result : Result::BrokenOff;
}

TextReport::Result TextReport::writeClients(ReportFile& file, const std::vector<std::int32_t>& ids,
                                            const ReportTurns& turns) {
    const bool all = !choices_.ShowOnlySelectedClient;
    bool whole = false;  // the last client's part
    for (std::size_t done = 0; done < ids.size(); ++done) {
        if (done % reading_.block() == 0) {
            readBlock(ids, done);
        }
        // Whom somebody has deleted meanwhile has no place in the report any more.
        if (const std::shared_ptr<ReportRows> client = reading_.client(ids[done])) {
            whole = writeClientWhole(file, *client, all);
        }
        if (all && !turns.tell(static_cast<std::int64_t>(done) + 1, static_cast<std::int64_t>(ids.size()))) {
            return Result::BrokenOff;
        }
    }
    return whole ? Result::Written : Result::Failed;
}

void TextReport::readBlock(const std::vector<std::int32_t>& ids, std::size_t first) {
    const std::size_t block = reading_.block();
    const auto begin = ids.begin() + static_cast<std::ptrdiff_t>(first);
    const auto count = static_cast<std::ptrdiff_t>(std::min(block, ids.size() - first));
    reading_.read(first / block, std::vector<std::int32_t>(begin, begin + count));
}

bool TextReport::writeClientWhole(ReportFile& file, const ReportRows& client, bool all) {
    const bool clientWritten = WriteClient(file, client);
    file.endLine();
    const bool computersWritten = WriteComputers(file, client.key(report_fields::kCustID).value_or(-1), all);
    return clientWritten && computersWritten;
}

bool TextReport::WriteClient(ReportFile& file, const ReportRows& client) {
    Trap step;
    bool whole = true;
    step([&] { whole = printer_.client(file, client); });
    return whole && !step.failed() && file.isGood();
}

bool TextReport::WriteComputers(ReportFile& file, std::int32_t custId, bool all) {
    if (!choices_.IncludeComputers) {
        return false;
    }
    Trap step;
    bool whole = true;
    step([&] {
        const ReportPart computers = reading_.computers(custId, all);
        for (std::int64_t left = computers.count; left > 0; --left, computers.rows->next()) {
            whole = WriteComputer(file, *computers.rows) && whole;
            file.endLine();
            const std::int32_t machineId = computers.rows->key(report_fields::kMachineID).value_or(-1);
            whole = WriteServices(file, machineId, all) && whole;
        }
        if (computers.count <= 0) {
            printer_.noComputers(file);
        }
    });
    return whole && !step.failed() && file.isGood();
}

bool TextReport::WriteComputer(ReportFile& file, const ReportRows& computer) {
    Trap step;
    bool whole = true;
    step([&] { whole = printer_.computer(file, computer); });
    return whole && !step.failed() && file.isGood();
}

bool TextReport::WriteServices(ReportFile& file, std::int32_t machineId, bool all) {
    Trap step;
    step([&] { printer_.services(file, reading_.services(machineId, all)); });
    return !step.failed() && file.isGood();
}
