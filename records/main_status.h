#pragma once

#include <QObject>
#include <QString>

#include "platform/controls/status_bar.h"

class QMainWindow;
class MainStart;

// The status bar of the main window: what the window is doing, the quick filter in force, the clock. Where
// the bar could not be made, or not yet, all of it does nothing.
class MainStatus : public QObject {
    Q_OBJECT
 public:
    // Both outlive it; `window` owns the bar.
    MainStatus(QMainWindow& window, const MainStart& start);

    // False on failure, with the text to show in `errorText`.
    bool CreateStatusBar(bool visible, QString& errorText);
    platform::StatusBar* const& bar() const { return bar_; }  // nullptr until CreateStatusBar

    // An empty text brings the sticky one back.
    void SetStatusText(const QString& text, bool sticky = false);
    QString text() const;  // empty without a bar
    // Before the other panels; nothing for a number that is no filter.
    void ShowFilterCaption(int number, bool remove);

 signals:
    // A single click, once it is sure that no second one follows and no window stands over this one.
    void clicked();

 private:
    void build(bool visible);
    void panelDoubleClicked(const QString& key);
    void barClicked();
    void removeFilterPanel();

    QMainWindow& window_;
    const MainStart& start_;
    platform::StatusBar* bar_ = nullptr;
    QString stickyText_;
    bool clickPending_ = false;
};
