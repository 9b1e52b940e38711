#pragma once

#include <QString>

// The order of the services list, as it survives filters, refreshes and the night.
struct ListOrder {
    bool LVWSorted = false;
    QString LVWSortField = QStringLiteral("ServiceStarted");
    QString LVWSortOrder = QStringLiteral("ASC");  // or "DESC"

    // As a selection takes it; empty: the order of the database.
    QString inForce() const { return LVWSorted ? LVWSortField + QLatin1Char(' ') + LVWSortOrder : QString(); }
};
