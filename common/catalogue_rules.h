#pragma once

#include <QString>

// What the windows of the catalogue and a supplier's list that is read into it have to agree in.

// The name of a group or a manufacturer as it is kept: in capitals while MakeProperCase is on.
QString NameAsKept(const QString& typed);

// The price in euro of a price in dinars, as the shop writes it: to two decimals. `rate`: dinars for one
// euro. Throws platform::RunError 11 where it is 0.
float EuroOfDinars(double dinars, float rate);
