#pragma once

#include <QListWidget>

#include "shell/help_file.h"

// A list of ways into the help: a click or Enter on a row leads there.
class HelpPlaceList : public QListWidget {
    Q_OBJECT
 public:
    explicit HelpPlaceList(QWidget* parent);
    void add(const QString& text, const HelpPlace& place);
    void follow(const QListWidgetItem* item);  // nullptr: leads nowhere

 signals:
    void chosen(const QString& address);
};
