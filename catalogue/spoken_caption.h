#pragma once

#include <QString>

// A caption as a screen reader says it: without the marks of its letter and of the field behind it.
QString spokenCaption(QString caption);
