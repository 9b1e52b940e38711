#pragma once

#include <QString>
#include <functional>
#include <source_location>

class CatalogueParent;
class QWidget;
namespace dao {
class Database;
}
namespace platform {
class Trap;
}

// Requisitions keep names as copies. When a name changes in the catalogue the copies follow, and the window
// that shows one of them is told.
class RequisitionCopies {
 public:
    explicit RequisitionCopies(QWidget* window) : window_(window) {}

    // A failure is left standing in `step`, after it has been told.
    void change(dao::Database& database, const QString& statement, platform::Trap& step,
                const std::function<void()>& tellFailure,
                std::source_location where = std::source_location::current());

    CatalogueParent* parentForm = nullptr;  // the window that shows one; nullptr: none does

 private:
    QWidget* window_;
};
