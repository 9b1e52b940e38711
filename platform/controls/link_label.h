#pragma once

#include <QLabel>

namespace platform {

// A label that acts as a link: plain text that turns blue and underlined under the mouse, with a hand for a
// pointer. Tab reaches it too, and Enter or Space press it.
class LinkLabel : public QLabel {
    Q_OBJECT
 public:
    explicit LinkLabel(const QString& text, QWidget* parent = nullptr);
    bool isHot() const { return hot_; }

 signals:
    void clicked();

 protected:
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void changeEvent(QEvent* event) override;

 private:
    void setHot(bool hot);
    void dress();
    bool hot_ = false;
};

}  // namespace platform
