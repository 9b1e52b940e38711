#include "catalogue/spoken_caption.h"

QString spokenCaption(QString caption) {
    return caption.remove(QLatin1Char('&')).remove(QLatin1Char(':'));
}
