#pragma once

#include <QEvent>
#include <QObject>
#include <QPointer>
#include <memory>
#include <vector>

namespace platform {

// The letters that a person types while the program is busy, for when it has time again.
class TypedAhead {
 public:
    // False for what is no key.
    bool keep(QObject* receiver, const QEvent& event);
    // To those they were typed for, in their order, with the next turn of the event loop.
    void giveBack();

 private:
    struct Kept {
        QPointer<QObject> receiver;
        std::unique_ptr<QEvent> event;
    };
    std::vector<Kept> keys_;
};

}  // namespace platform
