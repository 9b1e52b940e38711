#include "documents/document_query.h"

#include "common/rate_term.h"
#include "common/window_helpers.h"
#include "documents/service_view.h"
#include "platform/system/numbers.h"

QString documentQuery(const ServiceView& view) {
    const QString name =
        QStringLiteral("InvoiceData.Grupa & ', ' & InvoiceData.Proizvodjac & ', ' & InvoiceData.Naziv");
    const std::optional<qint32> service = view.serviceId();
    const QString price = QStringLiteral("InvoiceData.Cena*") + rateTerm();
    const QString tax = platform::textOfSingle(singleOf(view.serviceTax()));
    QString query = QStringLiteral("SELECT ") + name +
                    QStringLiteral(" AS XXX, InvoiceData.SN, InvoiceData.JM, InvoiceData.Stanje, ");
    query += price + QStringLiteral(" AS Cena1, ");
    query += QStringLiteral("InvoiceData.Cena*InvoiceData.Stanje*") + rateTerm() + QStringLiteral("*(1+") +
             tax + QStringLiteral("/100) AS MedjuTotal, ");
    query += price + QStringLiteral("*(") + tax + QStringLiteral("/100) AS PDV, ");
    query += price + QStringLiteral("*(1+") + tax + QStringLiteral("/100) AS PDVPrice ");
    return query + QStringLiteral("FROM InvoiceData WHERE InvoiceData.ServiceID = ") +
           (service ? QString::number(*service) : QString()) + QStringLiteral(" ORDER BY ") + name;
}
