#pragma once

#include <QElapsedTimer>
#include <QtGlobal>

class QLabel;
class QProgressBar;
class QStackedLayout;
namespace platform {
class ListView;
class StatusBar;
}  // namespace platform

// What stands in the place of the requisition's list while it is filled, and how far the filling is. The list
// is out of sight then: thousands of rows would be drawn one by one. The widgets belong to the list's window.
class FillingCover {
 public:
    FillingCover(platform::ListView& view, platform::StatusBar& bar);

    QStackedLayout* layout() const { return stack_; }  // the list, or the cover
    QLabel* label() const { return label_; }
    QProgressBar* progress() const { return progress_; }  // over the first panel of the bar

    void begin(qint64 rows);  // lets what waits have its turn once, but for what a person does
    void tell(int done);      // not oftener than an eye can follow
    void end();               // the focus goes back to the list, where that had it

 private:
    platform::ListView& view_;
    platform::StatusBar& bar_;
    QLabel* label_;
    QStackedLayout* stack_;
    QProgressBar* progress_;
    QElapsedTimer sinceShown_;
    bool hadFocus_ = false;
};
