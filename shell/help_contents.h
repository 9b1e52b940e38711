#pragma once

#include <QTreeWidget>

#include "shell/help_file.h"

// The contents of the help: its pages, each below the one that it belongs to. The page on show is the current
// item; another one that becomes it is to be shown.
class HelpContents : public QTreeWidget {
    Q_OBJECT
 public:
    explicit HelpContents(QWidget* parent);
    void fill(const HelpBook& book);
    void mark(const QString& page);  // as the one on show
    int wantedWidth() const;         // pixels, to read all the titles

 signals:
    void chosen(const QString& page);
};
