#pragma once

#include <QString>
#include <memory>

#include "platform/controls/boxes.h"
#include "records/work_progress.h"

// The main window as its own parts see it: what they show on it, and what they ask it to bring up to date.
class MainView {
 public:
    virtual platform::BoxAnswer box(const QString& text, platform::BoxIcon icon,
                                    platform::BoxButtons buttons = platform::BoxButtons::Ok,
                                    platform::BoxAnswer preselected = platform::BoxAnswer::Yes) = 0;
    virtual void SetStatusText(const QString& text, bool sticky = false) = 0;
    virtual void setWaiting(bool waiting) = 0;  // the hourglass
    // How far something long has come, from now on until it is gone: see WorkProgress.
    virtual std::unique_ptr<WorkProgress> progress(const QString& name, int turn, int first) = 0;
    virtual void setTabCaption(int stage, const QString& caption) = 0;  // from 1; nothing without tabs
    virtual void showFirstStage() = 0;                                  // as a click on its tab
    virtual void UpdateToolbarState() = 0;
    virtual void UpdateServiceButtons() = 0;
    virtual void showFilter(int number) = 0;  // in the status bar
    virtual void showNoFilter() = 0;          // there and on the toolbar

    // The services list.
    virtual void FillServiceList(const QString& selectKey) = 0;
    virtual QString selectedService() const = 0;  // the key of its row; empty: none
    virtual void CloseServiceRows() = 0;
    virtual void LoadServiceTypes() = 0;
    virtual void showUnit() = 0;
    virtual void EditService(int mode) = 0;
    virtual void DeleteSelectedService() = 0;

 protected:
    ~MainView() = default;
};
