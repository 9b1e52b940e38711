#pragma once

#include <QString>

// The product that its entry window is given and gives back, under the names that the window's callers have
// always used.
struct ProductProperties {
    QString Grupa, Proizvodjac;  // of the new or changed product, for the caption
    QString Naziv, Opis, Napomena;
    float Cena = 0;    // euro
    float Stanje = 0;  // in the unit
    QString JedinicaMere = QStringLiteral("Kom.");
};
