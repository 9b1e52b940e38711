#include "records/stage_tabs.h"

namespace {
// The widest tab, in letters: three of them fit beside one another in the smallest window we support.
constexpr int kLongestCaption = 44;
}  // namespace

StageTabs::StageTabs(QWidget* parent) : QTabBar(parent) {
    setElideMode(Qt::ElideRight);
    setExpanding(false);
    setUsesScrollButtons(false);
    setDrawBase(false);
}

void StageTabs::setCaption(int index, const QString& text) {
    QString shown = text;
    setTabText(index, shown.replace(QLatin1Char('&'), QStringLiteral("&&")));
    setAccessibleTabName(index, text);
}

QString StageTabs::caption(int index) const {
    return tabText(index).replace(QStringLiteral("&&"), QStringLiteral("&"));
}

QSize StageTabs::tabSizeHint(int index) const {
    const QSize wanted = QTabBar::tabSizeHint(index);
    return {qMin(wanted.width(), fontMetrics().averageCharWidth() * kLongestCaption), wanted.height()};
}

QSize StageTabs::minimumTabSizeHint(int index) const {
    return {fontMetrics().averageCharWidth() * kLongestCaption / 3,
            QTabBar::minimumTabSizeHint(index).height()};
}
