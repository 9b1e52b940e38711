#pragma once

#include <QString>

#include "catalogue/pane_commands.h"

class ListPane;
class QWidget;
class RequisitionCopies;
namespace platform {
class Trap;
}

// Groups or manufacturers: typed in, renamed, deleted with their products, one or all.
class ListCommands : public PaneCommands {
 public:
    ListCommands(ListPane& pane, RequisitionCopies& copies, QWidget* window);

    void add() override;
    void edit() override;
    void remove() override;
    void removeAll() override;
    void sort(SortMode mode) override;

 private:
    struct Texts;
    static const Texts& textsOf(int pane);

    QString addOne(platform::Trap& step);
    void giveUp();
    bool isGone(const char* goneText, platform::Trap& step);
    void tellFailed(const char* part, const char* procedure, platform::Trap& step);
    bool rename(const QString& name, platform::Trap& step);
    void showRenamed(const QString& name);
    void carryName(const QString& name, const QString& oldName, platform::Trap& step);
    void takeFromList();

    ListPane& pane_;
    const Texts& texts_;
    RequisitionCopies& copies_;
    QWidget* window_;
};
