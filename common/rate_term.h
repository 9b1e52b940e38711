#pragma once

#include <QString>

// What a price in euro is multiplied by in a statement: the buying rate while prices are shown in dinars,
// else "1". With a point, whatever the user's separator is.
QString rateTerm();
