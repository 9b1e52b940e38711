#pragma once

#include <QFrame>
#include <QList>
#include <QString>

#include "platform/report/document.h"

class QLabel;
class QLineEdit;

namespace report {

class PageView;

// The search in a preview: what is looked for, which of its places the person is at, and how many there are.
// Enter and Shift+Enter go on and back, Esc closes it.
class FindBar : public QFrame {
    Q_OBJECT
 public:
    // Both must live as long as this.
    FindBar(const Document& document, PageView& view, QWidget* parent);
    void open();
    void goOn(int step);  // 1: to the next place, -1: to the one before; opens where nothing is looked for

 protected:
    void keyPressEvent(QKeyEvent* event) override;

 private:
    void dismiss();
    void search();
    void takeFirst(int step);
    void tell(const QString& text);

    const Document& document_;
    PageView& view_;
    QLineEdit* text_;
    QLabel* found_;
    QList<Hit> hits_;
    QString searched_;
    int hit_ = -1;
};

}  // namespace report
