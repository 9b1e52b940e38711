#pragma once

#include <QObject>

class QDialog;
class QKeyEvent;
class QMouseEvent;
class QWidget;
struct CatalogueParts;

// Keys, focus and pointer over the catalogue: they concern the whole window, whichever control they reach
// first, and go from here to the part that they are for.
class CatalogueWatch : public QObject {
    Q_OBJECT
 public:
    CatalogueWatch(QDialog* window, CatalogueParts& parts) : window_(window), parts_(parts) {}
    void watch();                       // all the controls that are there now
    bool runKey(const QKeyEvent& key);  // of the window; true: dealt with
    void tellTyping();                  // where the focus is in a search box

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    bool keyPressed(const QObject* watched, const QKeyEvent& key);
    bool turnFocusedSwitch();
    void goToSearch();
    void focusCame(const QObject* widget);
    bool pointerMoved(const QObject* watched, const QMouseEvent& mouse);
    bool released(const QObject* watched, const QMouseEvent& mouse);
    bool isOverProducts(const QObject* watched) const;

    QDialog* window_;
    CatalogueParts& parts_;
};
