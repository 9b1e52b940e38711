#pragma once

#include <QLatin1String>
#include <QString>

namespace requisition {

// What stands behind a failure that the requisition tells: people read it out over the telephone.
inline QString occuredIn(const char* procedure) {
    return QStringLiteral("\nOccured in procedure %1 of Form frmInvoiceEx").arg(QLatin1String(procedure));
}

}  // namespace requisition
