#include "records/main_surface.h"

#include <QWidget>

#include "common/window_helpers.h"
#include "records/filter_menu.h"
#include "records/listed_services.h"
#include "records/main_bars.h"
#include "records/main_status.h"
#include "records/service_row.h"
#include "records/stage_switch.h"

MainSurface::MainSurface(QWidget& window, MainStatus& status, MainBars& bars, StageSwitch& tabs,
                         FilterMenu& filters, ListedServices& services)
    : window_(window), status_(status), bars_(bars), tabs_(tabs), filters_(filters), services_(services) {}

platform::BoxAnswer MainSurface::box(const QString& text, platform::BoxIcon icon,
                                     platform::BoxButtons buttons, platform::BoxAnswer preselected) {
    return ::box(&window_, text, icon, buttons, preselected);
}

void MainSurface::SetStatusText(const QString& text, bool sticky) {
    status_.SetStatusText(text, sticky);
}

void MainSurface::setWaiting(bool waiting) {
    if (waiting) {
        window_.setCursor(Qt::WaitCursor);
    } else {
        window_.unsetCursor();
    }
}

std::unique_ptr<WorkProgress> MainSurface::progress(const QString& name, int turn, int first) {
    return std::make_unique<WorkProgress>(&window_, status_.bar(), name, turn, first);
}

// --- Tabs and bars.

void MainSurface::setTabCaption(int stage, const QString& caption) {
    tabs_.setCaption(stage, caption);
}

void MainSurface::showFirstStage() {
    tabs_.showFirst();
}

void MainSurface::UpdateToolbarState() {
    bars_.UpdateToolbarState();
}

void MainSurface::UpdateServiceButtons() {
    bars_.UpdateServiceButtons();
}

void MainSurface::showFilter(int number) {
    status_.ShowFilterCaption(number, false);
}

void MainSurface::showNoFilter() {
    filters_.showNoFilter();
}

// --- The services list.

void MainSurface::FillServiceList(const QString& selectKey) {
    services_.list.fill(selectKey);
}

QString MainSurface::selectedService() const {
    const std::optional<qint32> id = services_.list.selectedId();
    return id ? service_row::keyOf(*id) : QString();
}

void MainSurface::CloseServiceRows() {
    services_.list.closeRows();
}

void MainSurface::LoadServiceTypes() {
    services_.list.loadTypes();
}

void MainSurface::showUnit() {
    services_.list.showUnit();
}

void MainSurface::EditService(int mode) {
    if (mode == 1) {
        services_.commands.editSelected();
    } else {
        services_.commands.addNew();
    }
}

void MainSurface::DeleteSelectedService() {
    services_.commands.deleteSelected();
}
