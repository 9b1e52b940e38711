#include "catalogue/product_choice.h"

#include "catalogue/catalogue_status.h"
#include "catalogue/catalogue_switch.h"
#include "catalogue/list_pane.h"
#include "catalogue/product_columns.h"
#include "common/rate_term.h"
#include "platform/controls/list_box.h"

using platform::SortTag;

ProductChoice::ProductChoice(const ListPane& groups, const ListPane& manufacturers,
                             const CatalogueStatus& status)
    : groups_(groups), manufacturers_(manufacturers), status_(status) {}

bool ProductChoice::hasGroupAndManufacturer() const {
    return groups_.hasSelection() && manufacturers_.hasSelection();
}

QString ProductChoice::statement(const SortTag& sort) const {
    const QString price = QStringLiteral("Oprema.Cena*") + rateTerm();
    QString source =
        QStringLiteral(
            "SELECT Proizvodjaci.Proizvodjac, Oprema.ID, Oprema.IDGrupe, Oprema.IDProizvodjaca, "
            "Oprema.Naziv, Oprema.Opis, Oprema.Stanje, Oprema.Cena, %1 AS Cena1, Oprema.Napomena, "
            "Oprema.JM FROM Proizvodjaci LEFT JOIN Oprema ON Proizvodjaci.ID = Oprema.IDProizvodjaca "
            "WHERE (((Oprema.IDGrupe)=%2))")
            .arg(price)
            .arg(groups_.rows().selectedData());
    if (manufacturers_.hasSelection() && !status_.allManufacturers().isOn()) {
        source +=
            QStringLiteral(" AND ((Oprema.IDProizvodjaca)=%1)").arg(manufacturers_.rows().selectedData());
    }
    if (status_.aboveZero().isOn()) {
        source += QStringLiteral(" AND Oprema.Stanje>0");
    }
    if (sort.sorted) {
        const QString term = sort.field == fieldOf(ProductColumn::Price) ? price : sort.field;
        source += QStringLiteral(" ORDER BY %1 %2").arg(term, sort.order);
    }
    return source;
}
