#include <QEventLoop>
#include <QGuiApplication>

#include "platform/controls/boxes.h"
#include "platform/controls/wait_pointer.h"
#include "platform/report/preview.h"
#include "platform/report/progress_window.h"
#include "platform/report/report.h"
#include "platform/system/trap.h"

namespace report {

bool Report::Show(bool modal, QWidget* owner) {
    std::optional<Document> document;
    platform::Trap step;
    {
        const platform::WaitPointer wait;
        ProgressWindow window(owner);
        step([&] { document = run([&](qint64 done, qint64 all) { return window.show(done, all); }); });
    }
    if (step.failed()) {
        platform::Box box;
        box.text = QStringLiteral("Dokument nije pripremljen.\n") + step.line();
        box.title = title.isEmpty() ? QGuiApplication::applicationDisplayName() : title;
        box.icon = platform::BoxIcon::Exclamation;
        platform::showBox(box, owner);
        return false;
    }
    if (!document) {
        return false;
    }
    ReportPreview preview(std::move(*document), owner);
    if (modal) {
        preview.exec();
        return true;
    }
    QEventLoop loop;
    QObject::connect(&preview, &QDialog::finished, &loop, &QEventLoop::quit);
    preview.show();
    loop.exec();
    return true;
}

}  // namespace report
