#pragma once

#include <QScrollArea>

// Holds the fields of a record. It would be as large as they need; on a screen that is too low for all of
// them they scroll, and what lies below them in the window stays on the screen.
class BlockArea : public QScrollArea {
    Q_OBJECT
 public:
    explicit BlockArea(QWidget* parent);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};
