#pragma once

#include <QSplitter>

namespace platform {

// Two panes with a bar between them that keeps within limits, both in percent of the room there is.
class Splitter : public QSplitter {
    Q_OBJECT
 public:
    explicit Splitter(Qt::Orientation orientation, QWidget* parent = nullptr);
    void setPanes(QWidget* first, QWidget* second);
    void setLimits(int lower, int upper);  // 0 to 100
    void setPosition(int percent);         // brought within the limits
    int position() const { return position_; }

 protected:
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

 private:
    int room() const;
    void apply();
    void barMoved();
    int lower_ = 0;
    int upper_ = 100;
    int position_ = 50;
    bool applying_ = false;
};

}  // namespace platform
