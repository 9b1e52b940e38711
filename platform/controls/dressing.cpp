#include "platform/controls/dressing.h"

#include <QApplication>
#include <QEvent>
#include <QPalette>
#include <QWidget>
#include <utility>

namespace platform {
namespace {

// What is dressed may set its own palette, which tells every such watch again: only the desktop's count.
class Dressing : public QObject {
 public:
    Dressing(QWidget& widget, std::function<void()> dress) : QObject(&widget), dress_(std::move(dress)) {
        setObjectName(QLatin1String(kName));
        widget.installEventFilter(this);
        run();
    }

    static constexpr const char* kName = "Dressing";

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::PaletteChange && QApplication::palette().cacheKey() != colours_) {
            run();
        }
        return QObject::eventFilter(watched, event);
    }

 private:
    void run() {
        colours_ = QApplication::palette().cacheKey();
        dress_();
    }

    std::function<void()> dress_;
    qint64 colours_ = 0;  // those that it was dressed in last
};

}  // namespace

void keepDressed(QWidget& widget, std::function<void()> dress) {
    delete widget.findChild<QObject*>(QLatin1String(Dressing::kName), Qt::FindDirectChildrenOnly);
    new Dressing(widget, std::move(dress));
}

}  // namespace platform
