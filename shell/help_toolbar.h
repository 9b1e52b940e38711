#pragma once

#include <QStyle>
#include <QToolBar>

class HelpHistory;
class QAction;
class QKeySequence;
class QLineEdit;

// The bar over the help: back and forward, and the field for a search. Its keys work in the whole window.
class HelpToolbar : public QToolBar {
    Q_OBJECT
 public:
    explicit HelpToolbar(QWidget* window);
    void showSteps(const HelpHistory& history);  // which ways it offers
    void clearSearch();

 signals:
    void stepWanted(int direction);  // -1: back, 1: forward
    void searched(const QString& words);
    void searchEntered();

 private:
    QAction* addStep(const char* name, QStyle::StandardPixmap picture, const QKeySequence& keys,
                     int direction);
    void addSearch();
    QAction* makeCommand(const QKeySequence& keys);

    QAction* back_;
    QAction* forward_;
    QLineEdit* search_ = nullptr;
};
