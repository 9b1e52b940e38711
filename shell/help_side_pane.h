#pragma once

#include <QTabWidget>

#include "shell/help_search.h"

class HelpContents;
class HelpIndex;
class HelpPlaceList;

// The ways to a page of the help, beside the page: contents, index, and what a search has found.
class HelpSidePane : public QTabWidget {
    Q_OBJECT
 public:
    explicit HelpSidePane(QWidget* parent);
    void fill(const HelpBook& book);

    void showContents();
    void showIndex();  // ready to be typed into
    void showHits(const QList<HelpHit>& hits);
    void clearHits();
    void followFirstHit();
    HelpContents& contents() const { return *contents_; }

 signals:
    void chosen(const QString& address);

 private:
    HelpContents* contents_;
    HelpIndex* index_;
    HelpPlaceList* hits_;
};
