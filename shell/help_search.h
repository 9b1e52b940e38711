#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include "shell/help_file.h"

// A place that holds what somebody looks for.
struct HelpHit {
    QString text;  // the page, and the heading on it where it is not the page's head
    HelpPlace place;
};

// The places of the book, in its order, that hold all the words, in whatever case. A page falls into the
// pieces under its headings, so that a search leads to the paragraph and not just to the page.
QList<HelpHit> searchHelp(const HelpBook& book, const QStringList& words);
