#include "records/report_run.h"

#include <QPointer>

#include "common/modMain.h"
#include "common/window_helpers.h"
#include "platform/controls/wait_pointer.h"
#include "platform/system/files.h"
#include "platform/system/trap.h"
#include "records/frmReportOptions.h"
#include "records/main_status.h"
#include "records/service_list.h"
#include "records/stages.h"
#include "records/work_progress.h"

using platform::BoxIcon;
using platform::Trap;
using Result = TextReport::Result;

namespace {

struct Message {
    Result result;
    const char* text;
    BoxIcon icon;
};
constexpr const char* kErrors = "Some errors have encountered while creating this report.";
constexpr Message kMessages[] = {
    {Result::Failed, kErrors, BoxIcon::Critical},
    {Result::NotRead, kErrors, BoxIcon::Critical},
    {Result::Empty, "Database is empty - nothing to print! Action is cancelled.", BoxIcon::Exclamation},
    {Result::ClientMissing,
     "An unexpected error has occured - selected client has not been found in the database! Action has "
     "failed",
     BoxIcon::Exclamation},
};

}  // namespace

ReportRun::ReportRun(QWidget& window, Stages& stages, const ServiceList& services, ReportChoices& choices,
                     MainStatus& status)
    : window_(window), stages_(stages), services_(services), choices_(choices), status_(status) {}

void ReportRun::GenerateReport() {
    if (running_) {
        return;
    }
    const QPointer<QWidget> window = &window_;  // it may be closed while the report is being written
    running_ = true;
    status_.SetStatusText(QStringLiteral("Genearting report... Please Wait..."));
    Result result = Result::NotRead;
    {
        const platform::WaitPointer pointer;
        Trap step;
        step([&] { result = write(); });
        if (window.isNull()) {
            return;  // and this object is gone with it
        }
        if (!ended_) {
            status_.SetStatusText({});
        }
    }
    running_ = false;
    if (!ended_) {
        tell(result);
    }
}

void ReportRun::tell(Result result) {
    for (const Message& message : kMessages) {
        if (message.result == result) {
            box(&window_, QLatin1String(message.text), message.icon);
        }
    }
}

TextReport::Selection ReportRun::selection() const {
    return {stages_[kClients].chosen(), stages_[kComputers].chosen(), services_.selectedId().value_or(-1)};
}

TextReport::Result ReportRun::write() {
    const QPointer<QWidget> window = &window_;
    const QString file = platform::programFolder() + QStringLiteral("/Report.txt");
    TextReport report(stages_.database(), stages_.QuerySuffix, choices_, selection(), services_.typeNames());
    WorkProgress progress(&window_, status_.bar(), QStringLiteral("Report"), ReportTurn, ReportTurn);
    const Result result = report.write(stages_[kClients].data().RecordSource().toStdString(), file,
                                       [&](std::int64_t done, std::int64_t total) {
                                           progress.tell(done, total);
                                           return !window.isNull() && !ended_;
                                       });
    if (result == Result::Written || result == Result::Failed) {
        LaunchAssociated(&window_, file);
    }
    return result;
}

void ReportRun::OpenReportOptions() {
    frmReportOptions options(&window_);
    static_cast<ReportChoices&>(options) = choices_;
    options.Display();
    if (!options.Cancelled()) {
        choices_ = options;
    }
    options.Unload();
}
