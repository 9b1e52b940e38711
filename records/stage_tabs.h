#pragma once

#include <QTabBar>

// The tab strip of the stages. Its captions are names of clients and machines, so an ampersand in them is a
// plain character, and a very long one is cut with dots instead of pushing the other tabs out of the window.
class StageTabs : public QTabBar {
    Q_OBJECT
 public:
    explicit StageTabs(QWidget* parent = nullptr);
    void setCaption(int index, const QString& text);
    QString caption(int index) const;

 protected:
    QSize tabSizeHint(int index) const override;
    QSize minimumTabSizeHint(int index) const override;
};
