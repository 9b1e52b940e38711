#include "platform/controls/cut_texts.h"

#include <QAbstractItemDelegate>
#include <QAbstractItemView>
#include <QHelpEvent>
#include <QTextDocument>
#include <QToolTip>

namespace platform {
namespace {

class CutTexts : public QObject {
 public:
    explicit CutTexts(QAbstractItemView& list) : QObject(&list), list_(list) {
        list.viewport()->installEventFilter(this);
    }

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::ToolTip) {
            return QObject::eventFilter(watched, event);
        }
        const auto* help = static_cast<QHelpEvent*>(event);
        const QModelIndex under = list_.indexAt(help->pos());
        if (!under.isValid() || !isCut(under)) {
            return QObject::eventFilter(watched, event);
        }
        const QString whole = under.data().toString();
        QToolTip::showText(help->globalPos(), Qt::convertFromPlainText(whole, Qt::WhiteSpaceNormal),
                           list_.viewport(), list_.visualRect(under));
        return true;
    }

 private:
    bool isCut(const QModelIndex& index) const {
        if (!index.data(Qt::ToolTipRole).toString().isEmpty() || index.data().toString().isEmpty()) {
            return false;
        }
        const QRect cell = list_.visualRect(index);
        const int seen = cell.intersected(list_.viewport()->rect()).width();
        QStyleOptionViewItem option;
        option.initFrom(&list_);
        option.font = list_.font();
        option.fontMetrics = list_.fontMetrics();
        option.decorationSize = list_.iconSize();
        option.features = QStyleOptionViewItem::HasDisplay;
        option.widget = &list_;
        return list_.itemDelegateForIndex(index)->sizeHint(option, index).width() > seen;
    }

    QAbstractItemView& list_;
};

}  // namespace

void tellCutTexts(QAbstractItemView& list) {
    new CutTexts(list);
}

}  // namespace platform
