#pragma once

#include "records/main_view.h"

class FilterMenu;
class ListedServices;
class MainBars;
class MainStatus;
class QWidget;
class StageSwitch;

// The main window as its parts see it: hands on what they show to the part that shows it. The parts know one
// another through this alone where they need each other both ways.
class MainSurface final : public MainView {
 public:
    // All of these outlive it; they need not be made yet.
    MainSurface(QWidget& window, MainStatus& status, MainBars& bars, StageSwitch& tabs, FilterMenu& filters,
                ListedServices& services);

    platform::BoxAnswer box(const QString& text, platform::BoxIcon icon, platform::BoxButtons buttons,
                            platform::BoxAnswer preselected) override;
    void SetStatusText(const QString& text, bool sticky) override;
    void setWaiting(bool waiting) override;
    std::unique_ptr<WorkProgress> progress(const QString& name, int turn, int first) override;
    void setTabCaption(int stage, const QString& caption) override;
    void showFirstStage() override;
    void UpdateToolbarState() override;
    void UpdateServiceButtons() override;
    void showFilter(int number) override;
    void showNoFilter() override;
    void FillServiceList(const QString& selectKey) override;
    QString selectedService() const override;
    void CloseServiceRows() override;
    void LoadServiceTypes() override;
    void showUnit() override;
    void EditService(int mode) override;
    void DeleteSelectedService() override;

 private:
    QWidget& window_;
    MainStatus& status_;
    MainBars& bars_;
    StageSwitch& tabs_;
    FilterMenu& filters_;
    ListedServices& services_;
};
