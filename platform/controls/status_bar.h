#pragma once

#include <QList>
#include <QStatusBar>
#include <QString>

class QLabel;

namespace platform {

// A status bar of panels with keys, counted from 1 from the left.
class StatusBar : public QStatusBar {
    Q_OBJECT
 public:
    enum class AutoSize { Fixed, Spring, Contents };
    explicit StatusBar(QWidget* parent = nullptr);
    void addPanel(const QString& key, AutoSize size, int position = 0);  // position 0: at the right end
    void removePanel(const QString& key);                                // nothing where there is none
    bool hasPanel(const QString& key) const;
    QString firstPanelKey() const;
    QString panelText(const QString& key) const;
    void setPanelText(const QString& key, const QString& text);  // shown at once
    void setPanelToolTip(const QString& key, const QString& tip);
    void setPanelAlignment(const QString& key, Qt::Alignment alignment);
    QLabel* panel(const QString& key) const;  // object name "Panel(key)"; nullptr where there is none
    // Lays a widget over a panel, as large as it, and shows it: a progress bar while a list is being filled.
    // It follows the panel's size until it is taken back. Nothing where there is no such panel.
    void coverPanel(const QString& key, QWidget* cover);
    void uncover(QWidget* cover, QWidget* home);  // hides it and gives it back to its window
    // A panel that shows the clock, with the long date as its tip.
    void addClock(const QString& key);
    void showClock(const QString& key, const QDateTime& now);  // what the clock does each time it moves on

 signals:
    void panelDoubleClicked(const QString& key);
    void barClicked();  // anywhere on the bar, once for a click

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

 private:
    struct Panel {
        QString key;
        QLabel* label = nullptr;
        AutoSize size = AutoSize::Fixed;
    };
    QList<Panel> panels_;
    bool doubleClick_ = false;  // the release that follows belongs to a double click
};

}  // namespace platform
