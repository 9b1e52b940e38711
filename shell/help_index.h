#pragma once

#include <QWidget>

#include "shell/help_file.h"

class HelpPlaceList;
class QLineEdit;

// The index of the help: its keywords by the alphabet, and a field that leaves those that hold what is typed
// there.
class HelpIndex : public QWidget {
    Q_OBJECT
 public:
    explicit HelpIndex(QWidget* parent);
    void fill(const HelpBook& book);
    void startTyping();  // the focus in the field, what stands there selected

 signals:
    void chosen(const QString& address);

 private:
    void filter(const QString& words);

    QLineEdit* field_;
    HelpPlaceList* list_;
};
