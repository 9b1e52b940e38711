#include "shell/frmHelp_text.h"

#include <QBuffer>
#include <QImageReader>
#include <QScrollBar>
#include <QStyle>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextTable>

#include "platform/controls/dressing.h"

namespace {

constexpr double kMargin = 18;
constexpr double kLeastPicture = 300;

// Drawn as much larger as the font is than the usual one, and as sharp as the screen can; a whole window is
// made smaller, to stand beside the contents without scrolling sideways.
QImage pictureOf(const QByteArray& content, double enlarged, double room, double pixelRatio) {
    QBuffer buffer;
    buffer.setData(content);
    QImageReader reader(&buffer);
    const double fitting = qMax(room, kLeastPicture) / qMax(1, reader.size().width());
    reader.setScaledSize(reader.size() * qMin(enlarged, fitting) * pixelRatio);
    QImage image = reader.read();
    image.setDevicePixelRatio(pixelRatio);
    return image;
}

QTextBlockFormat headingFormat(int level) {
    QTextBlockFormat format;
    format.setTopMargin(level == 1 ? 0 : kMargin);
    format.setBottomMargin(level == 1 ? kMargin / 2 : kMargin / 4);
    return format;
}

}  // namespace

HelpText::HelpText(QWidget* parent) : QTextBrowser(parent) {
    setOpenLinks(false);
    document()->setDocumentMargin(kMargin);
    QFont larger = font();
    larger.setPointSizeF(larger.pointSizeF() * 1.1);
    setFont(larger);
}

QVariant HelpText::loadResource(int type, const QUrl& name) {
    const auto found = pictures_.constFind(name.toString());
    return found == pictures_.constEnd() ? QTextBrowser::loadResource(type, name) : QVariant(*found);
}

void HelpText::showPage(const HelpBook& book, const HelpPage& page) {
    constexpr double kUsualHeight = 16;
    const double enlarged = qMax(1.0, fontMetrics().height() / kUsualHeight);
    const double room = viewport()->width() - 2 * kMargin - style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    anchor_.clear();
    pictures_.clear();
    for (const QString& name : book.picturesShown()) {
        pictures_.insert(name, pictureOf(book.picture(name), enlarged, room, devicePixelRatioF()));
    }
    // Links and the lines of tables keep the colours that they were made with.
    platform::keepDressed(*this, [this, page] { fill(page); });
    moveCursor(QTextCursor::Start);
}

void HelpText::fill(const HelpPage& page) {
    const int at = verticalScrollBar()->value();
    document()->setMarkdown(QStringLiteral("# %1\n\n").arg(page.title) + page.plainMarkdown(),
                            QTextDocument::MarkdownDialectGitHub);
    dressHeadings(QStringList{{}} + page.headingAnchors());
    dressTables();
    markHeading();
    verticalScrollBar()->setValue(at);
}

void HelpText::dressHeadings(const QStringList& anchors) {
    qsizetype heading = 0;
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        const int level = block.blockFormat().headingLevel();
        if (level == 0) {
            continue;
        }
        QTextCursor cursor(block);
        cursor.mergeBlockFormat(headingFormat(level));
        cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
        if (const QString anchor = anchors.value(heading++); !anchor.isEmpty()) {
            QTextCharFormat format;
            format.setAnchor(true);
            format.setAnchorNames({anchor});
            cursor.mergeCharFormat(format);
        }
    }
}

void HelpText::dressTables() {
    for (QTextFrame* frame : document()->rootFrame()->childFrames()) {
        if (auto* table = qobject_cast<QTextTable*>(frame)) {
            QTextTableFormat format = table->format();
            format.setBorderCollapse(true);
            format.setBorder(1);
            format.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
            format.setBorderBrush(palette().mid());
            format.setCellPadding(5);
            format.setCellSpacing(0);
            format.setTopMargin(kMargin / 3);
            format.setBottomMargin(kMargin / 2);
            table->setFormat(format);
        }
    }
}

void HelpText::goTo(const QString& anchor) {
    anchor_ = anchor;
    markHeading();
    if (anchor.isEmpty()) {
        verticalScrollBar()->setValue(0);
    } else {
        scrollToAnchor(anchor);
    }
}

void HelpText::markHeading() {
    setExtraSelections({});
    if (anchor_.isEmpty()) {
        return;
    }
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        const QTextBlock::iterator piece = block.begin();
        if (!piece.atEnd() && piece.fragment().charFormat().anchorNames().contains(anchor_)) {
            ExtraSelection mark;
            mark.cursor = QTextCursor(block);
            QColor colour = palette().color(QPalette::Highlight);
            colour.setAlphaF(0.18F);
            mark.format.setBackground(colour);
            mark.format.setProperty(QTextFormat::FullWidthSelection, true);
            setExtraSelections({mark});
        }
    }
}
