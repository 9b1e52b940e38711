#pragma once

#include <QIcon>
#include <QPixmap>
#include <QString>

namespace platform {

// A drawing of ours by name, sharp at any scale: "NewRecord" is resources/icons/NewRecord.svg. A null icon
// where there is none of that name.
QIcon icon(const QString& name);
// A larger picture from resources/pictures, such as picture 301 of the splash window; drawn at the width
// given, in logical pixels.
QPixmap picture(const QString& name, int width);

}  // namespace platform
