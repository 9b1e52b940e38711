#pragma once

#include <QtGlobal>

class QWidget;
namespace platform {
class DataControl;
class ListView;
}  // namespace platform

// After the parts drawn for a service have been changed: the service takes their total, in the unit on
// screen, as its price, in the list first and in the database second. Only the paid half of its state is
// worked out anew. Says so where the service is gone; any other failure is silent and leaves the database as
// it was.
void repriceService(QWidget& window, platform::ListView& list, platform::DataControl& services, qint32 id,
                    float total);
