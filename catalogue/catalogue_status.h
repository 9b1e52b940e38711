#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QString>
#include <array>

class CatalogueSwitch;
class QLabel;
class QProgressBar;
class QWidget;
namespace platform {
class StatusBar;
}

// The status bar of the catalogue: what is counted, what a command does, which pane is being worked in, and
// how far the filling of a list has come.
class CatalogueStatus : public QObject {
    Q_OBJECT
 public:
    explicit CatalogueStatus(QWidget* window);

    platform::StatusBar* bar() const { return bar_; }
    CatalogueSwitch& aboveZero() const { return *aboveZero_; }                // only what there is any of
    CatalogueSwitch& allManufacturers() const { return *allManufacturers_; }  // whichever of them is chosen
    std::array<CatalogueSwitch*, 2> switches() const { return {aboveZero_, allManufacturers_}; }

    // An empty text gives way to the standing one; `sticky`: is the standing one from now on.
    void showText(const QString& text, bool sticky);
    void showCaption(const QString& caption, const QString& iconKey);  // "zoom", "type"

    // While a list is filled the bar stands where the caption was.
    void beginProgress(qint64 count);
    void stepProgress();
    void endProgress();

 private:
    CatalogueSwitch* addSwitch(int index);
    void buildCaption();
    void buildProgress();

    QWidget* window_;
    platform::StatusBar* bar_;
    CatalogueSwitch* aboveZero_;
    CatalogueSwitch* allManufacturers_;
    QWidget* caption_ = nullptr;
    QLabel* captionText_ = nullptr;
    QLabel* captionIcon_ = nullptr;
    QProgressBar* progress_ = nullptr;
    int done_ = 0;           // records, since the bar came
    QElapsedTimer painted_;  // since the progress bar was drawn last
    QString standingText_;
};
