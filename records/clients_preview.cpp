#include "records/clients_preview.h"

#include "catalogue/ActiveReport1.h"
#include "common/window_helpers.h"
#include "platform/system/trap.h"
#include "records/stages.h"

void previewClients(QWidget& window, Stages& stages) {
    ActiveReport1 report;
    platform::Trap step;
    step([&] {
        report.setRecordset(stages.database().OpenRecordset(stages.all(kClients).text().toStdString()));
        report.Show(true, &window);
    });
    if (step.failed()) {
        box(&window, step.line(), platform::BoxIcon::Exclamation);
    }
}
