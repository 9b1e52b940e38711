#pragma once

#include <QString>

// What support and tests call a control of the help (`name`), and what is said of it when it is read aloud.
template <typename Control>
Control* named(Control* control, const char* name, const QString& accessibleName) {
    control->setObjectName(QString::fromLatin1(name));
    control->setAccessibleName(accessibleName);
    return control;
}
