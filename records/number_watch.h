#pragma once

#include <QObject>
#include <QTimer>
#include <functional>

// Sees to it that the shop is restarted once another copy has taken this one's number while the server was
// away. Whatever was tried meanwhile has been refused and told; nothing that a person is in the middle of is
// broken off.
class NumberWatch : public QObject {
    Q_OBJECT
 public:
    // `restart` may refuse.
    explicit NumberWatch(std::function<void()> restart);

    void start();
    void stop() { timer_.stop(); }

 private:
    void look();

    std::function<void()> restart_;
    QTimer timer_;
};
