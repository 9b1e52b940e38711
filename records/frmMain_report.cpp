// The text report, what goes into it, and the meaning of the list's marks.

#include <QPointer>

#include "common/modMain.h"
#include "platform/controls/wait_pointer.h"
#include "platform/system/files.h"
#include "platform/system/trap.h"
#include "records/frmLegend.h"
#include "records/frmMain.h"
#include "records/frmReportOptions.h"
#include "records/report_progress.h"
#include "records/service_list.h"
#include "records/text_report.h"

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

void frmMain::GenerateReport() {
    if (reporting_) {
        return;
    }
    const QPointer<frmMain> self = this;  // it may be closed while the report is being written
    reporting_ = true;
    SetStatusText(QStringLiteral("Genearting report... Please Wait..."));
    Result result = Result::NotRead;
    {
        const platform::WaitPointer pointer;
        Trap step;
        step([&] { result = writeReport(); });
        if (self.isNull()) {
            return;
        }
        if (!unloaded_) {
            SetStatusText({});
        }
    }
    reporting_ = false;
    if (unloaded_) {
        return;
    }
    for (const Message& message : kMessages) {
        if (message.result == result) {
            box(QLatin1String(message.text), message.icon);
        }
    }
}

TextReport::Selection frmMain::reportSelection() const {
    const auto numberOf = [](const platform::Selector& selector) {
        return selector.entryData(selector.currentIndex());
    };
    return {numberOf(*Combo1[0]), numberOf(*Combo1[1]), services_->selectedId().value_or(-1)};
}

TextReport::Result frmMain::writeReport() {
    const QPointer<frmMain> self = this;
    const QString file = platform::programFolder() + QStringLiteral("/Report.txt");
    TextReport report(Data1[0]->Database(), QuerySuffix, *this, reportSelection(), ServiceTypeNames());
    ReportProgress progress(this, StatusBar1, ReportTurn);
    const Result result = report.write(Data1[0]->RecordSource().toStdString(), file,
                                       [&](std::int64_t done, std::int64_t total) {
                                           progress.tell(done, total);
                                           return !self.isNull() && !self->unloaded_;
                                       });
    if (result == Result::Written || result == Result::Failed) {
        LaunchAssociated(this, file);
    }
    return result;
}

void frmMain::OpenReportOptions() {
    frmReportOptions options(this);
    static_cast<ReportChoices&>(options) = *this;
    options.Display();
    if (!options.Cancelled()) {
        static_cast<ReportChoices&>(*this) = options;
    }
    options.Unload();
}

void frmMain::OpenLegend() {
    frmLegend legend(this);
    legend.Display();
    legend.Unload();
}
