#pragma once

#include <QWidget>

class QLabel;

// One of the two switches that stand over panels of the status bar: a picture and a label, either of which a
// click turns over. The window tells it of clicks and of the space bar, as it watches all its controls.
class CatalogueSwitch : public QWidget {
    Q_OBJECT
 public:
    // Numbers of the string table, and the panel that the switch covers.
    struct Facts {
        int label, tipOff, tipOn;
        const char* panel;
        const char* picture;
    };
    CatalogueSwitch(int index, const Facts& facts, QWidget* parent);

    bool isOn() const { return on; }
    void refresh();  // colour and tip, as it stands
    void turn();
    bool isHitBy(const QObject* watched) const;  // the switch or what lies on it
    QLabel* label() const { return label_; }

    bool on = false;

 signals:
    void refreshed();
    void turned();

 private:
    void showWhetherOn();

    const Facts& facts_;
    QLabel* label_;
};
