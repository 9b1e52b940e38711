#pragma once

#include <QString>

class QWidget;
class UnitList;
namespace platform {
class Trap;
}

// Units of measure: typed in, renamed, deleted, one or all. What fails is told in a box over the window.
class UnitCommands {
 public:
    UnitCommands(UnitList& units, QWidget* window);

    void add(const QString& name);
    void change();  // the selected one; nothing without one, as remove
    void remove();
    void removeAll();  // nothing where there are none

 private:
    void store(const QString& name);
    bool find(const char* goneText, platform::Trap& step);
    void writeName(const QString& name, platform::Trap& step);
    void deleteSelected(platform::Trap& step);
    void giveUpEdit();

    UnitList& units_;
    QWidget* window_;
};
