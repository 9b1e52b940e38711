#pragma once

#include "measure.h"

class frmMain;
class MeasuredShop;
namespace platform {
class ListView;
class Selector;
}  // namespace platform

// The one main window of all measures, on our copy of the shop. Opened when it is first asked for.
frmMain& mainWindow();
void closeMainWindow();  // nothing where there is none

// What a window shows, as the plain side tells its own.
Lines entriesOf(const platform::Selector& selector);  // and which of them is chosen
Lines rowsOf(const platform::ListView& list);
Lines stagesOf(const frmMain& window);

// One of the five quick filters, end to end: the question, the narrowing, the three stages filled again.
class FilterOurs : public Side {
 public:
    FilterOurs(MeasuredShop& shop, int number);
    ~FilterOurs() override;
    void run() override;
    Lines result() override;  // the stages, and the three narrowing texts

 private:
    MeasuredShop& shop_;
    int number_;
};
