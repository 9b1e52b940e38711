#include "catalogue/frmKonfigPrint_rules.h"

#include <QStringList>

#include "common/rate_term.h"
#include "common/settings.h"

namespace price_list {
namespace {

QString rangeCondition(const Choice& choice) {
    const QString group = QStringLiteral("OpremaGrupe.IDGrupe=") + QString::number(choice.group);
    const QString maker = QStringLiteral("OpremaGrupe.IDProizvodjaca=") + QString::number(choice.maker);
    const QString where = QStringLiteral(" WHERE ");
    switch (choice.range) {
        case 1:
            return where + group;
        case 2:
            return where + maker;
        case 3:
            return where + maker + QStringLiteral(" AND ") + group;
        default:
            return {};
    }
}

QString stockCondition(int stock, bool isFirst) {
    if (stock != 1 && stock != 2) {
        return {};
    }
    return QLatin1String(isFirst ? " WHERE " : " AND ") + QStringLiteral("OpremaGrupe.Stanje") +
           QLatin1String(stock == 1 ? ">0" : "=0");
}

QString firm(const settings::Setting& setting) {
    return settings::scrambled(setting);
}

// Both on a line of their own, as far as there are any; nothing where there is neither.
QString lineOf(const QString& first, const QString& second) {
    QStringList there{first, second};
    there.removeAll(QString());
    return there.isEmpty() ? QString() : QLatin1Char('\n') + there.join(QStringLiteral("  ···  "));
}

}  // namespace

QString statement(const Choice& choice) {
    QString text = QStringLiteral(
                       "SELECT OpremaGrupe.ID, OpremaGrupe.Grupa, Proizvodjaci.Proizvodjac, "
                       "OpremaGrupe.Naziv, OpremaGrupe.Opis, OpremaGrupe.Stanje, [OpremaGrupe.Cena]*") +
                   rateTerm() +
                   QStringLiteral(
                       " AS Cena1, OpremaGrupe.Napomena, OpremaGrupe.IDGrupe, OpremaGrupe.IDProizvodjaca "
                       "FROM Proizvodjaci RIGHT JOIN OpremaGrupe ON Proizvodjaci.ID = "
                       "OpremaGrupe.IDProizvodjaca");
    text += rangeCondition(choice);
    text += stockCondition(choice.stock, !text.contains(QLatin1String(" WHERE ")));
    return text + QStringLiteral(" ORDER BY OpremaGrupe.Grupa, Proizvodjaci.Proizvodjac");
}

QString firmsFooter() {
    return firm(settings::firm.frmSettAdresa) + QStringLiteral(", ") + firm(settings::firm.frmSettGrad) +
           QLatin1Char(' ') + firm(settings::firm.frmSettZip) + QStringLiteral(", Srbija i Crna Gora") +
           lineOf(firm(settings::firm.frmSettTel), firm(settings::firm.frmSettFax)) +
           lineOf(firm(settings::firm.frmSettEmail), firm(settings::firm.frmSettWWW));
}

}  // namespace price_list
