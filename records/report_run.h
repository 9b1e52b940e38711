#pragma once

#include "records/text_report.h"

class MainStatus;
class QWidget;
class ServiceList;
class Stages;
struct ReportChoices;

// The text report as the main window gives it: of what is chosen there, into the program's folder, with its
// progress in the status bar.
class ReportRun {
 public:
    // All of these outlive it.
    ReportRun(QWidget& window, Stages& stages, const ServiceList& services, ReportChoices& choices,
              MainStatus& status);

    int ReportTurn = 20;  // milliseconds for which a report may be written before the window has its turn

    // Writes the report of the choices and opens it. The window may be closed meanwhile; a second call
    // meanwhile does nothing.
    void GenerateReport();
    void OpenReportOptions();
    bool isRunning() const { return running_; }
    void breakOff() { ended_ = true; }  // the window has been closed

 private:
    TextReport::Selection selection() const;
    TextReport::Result write();
    void tell(TextReport::Result result);

    QWidget& window_;
    Stages& stages_;
    const ServiceList& services_;
    ReportChoices& choices_;
    MainStatus& status_;
    bool running_ = false;
    bool ended_ = false;
};
