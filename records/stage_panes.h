#pragma once

#include <QWidget>
#include <array>

#include "records/entry_keys.h"
#include "records/stage_facts.h"

class EntryFields;
class QLineEdit;
class QStackedWidget;
class QVBoxLayout;
class RecordPane;
class ServicePane;
namespace platform {
class ListView;
class Selector;
}  // namespace platform

// The inside of the main window: the panes of the three stages, of which one is on show, and room above them.
// F1 opens the help of the field with the focus.
class StagePanes : public QWidget {
 public:
    // Fills `fields`, which outlive it.
    StagePanes(EntryFields& fields, QWidget* window);

    void showPane(int stageIndex);
    void putAbove(QWidget* widget);

    QWidget* pane(int stageIndex) const;
    // Of the stages of clients and computers.
    platform::Selector* selector(int stageIndex) const;
    QLineEdit* typeAhead(int stageIndex) const;
    platform::ListView* list() const;

 private:
    template <typename Pane>
    Pane* added(Pane* pane, int stageIndex);

    EntryKeys keys_;
    QVBoxLayout* column_;
    QStackedWidget* stack_;
    std::array<RecordPane*, kSelectorCount> records_{};
    ServicePane* services_ = nullptr;
};
