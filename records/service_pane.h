#pragma once

#include <QWidget>

class EntryFields;
class EntryKeys;
namespace platform {
class ListView;
}

// The pane of the services: their list, and below it what was written about the one on show. Nothing is
// typed here; services are typed in their editor.
class ServicePane : public QWidget {
 public:
    // Fills its part of `fields`.
    ServicePane(EntryFields& fields, EntryKeys& keys, QWidget* parent);

    platform::ListView* list() const { return list_; }

 private:
    platform::ListView* list_;
};
