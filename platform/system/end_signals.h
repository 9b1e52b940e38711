#pragma once

#include <QObject>

namespace platform {

// The signals by which a system asks a program to end: TERM (shutdown, log-out), HUP (its terminal is gone)
// and INT (Ctrl+C there). As long as this object lives they do not kill the program: `received` is emitted
// from the event loop instead, the innermost one where several are nested. A signal that whoever started the
// program had switched off, as nohup does, stays so. One object at a time.
class EndSignals : public QObject {
    Q_OBJECT
 public:
    EndSignals();
    ~EndSignals() override;

 signals:
    void received();

 private:
    void read();
};

}  // namespace platform
