#pragma once

#include <QString>
#include <optional>

#include "catalogue/pane_commands.h"

class ListPane;
class ProductPane;
class ProductRow;
class QWidget;
class RequisitionCopies;
class frmKonfigInput;
namespace dao {
class Recordset;
}
namespace platform {
class Trap;
}

// Products: typed in, changed, deleted, one or all.
class ProductCommands : public PaneCommands {
 public:
    ProductCommands(ProductPane& products, const ListPane& groups, const ListPane& manufacturers,
                    RequisitionCopies& copies, QWidget* window);

    void add() override;
    void edit() override;
    void remove() override;
    void removeAll() override;
    void sort(SortMode mode) override;  // up and down: by the headers, not by commands

 private:
    bool open(dao::Recordset& rows);
    bool askForNew(frmKonfigInput& input, const dao::Recordset& rows);
    QString storeNew(const frmKonfigInput& input, dao::Recordset& rows);
    void fillInput(frmKonfigInput& input, const ProductRow& product, platform::Trap& step);
    bool mayTakeName(const QString& name, qint32 id, dao::Recordset& rows, platform::Trap& step);
    bool store(const frmKonfigInput& input, qint32 id, dao::Recordset& rows, platform::Trap& step);
    void carryNames(const frmKonfigInput& input, const ProductRow& old, platform::Trap& step);
    std::optional<QString> chooseStatement();

    ProductPane& products_;
    const ListPane& groups_;
    const ListPane& manufacturers_;
    RequisitionCopies& copies_;
    QWidget* window_;
};
