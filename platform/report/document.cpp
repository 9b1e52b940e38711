#include "platform/report/document.h"

#include <QFileInfo>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>
#include <QSaveFile>
#include <algorithm>
#include <map>

#include "platform/report/drawings.h"
#include "platform/report/typeface.h"
#include "platform/system/trap.h"

namespace report {
namespace {

constexpr int kTwipsPerInch = 1440;

// Paints pages one after the other onto the same painter: fonts and drawings are looked up once for all of
// them.
class PagePainter {
 public:
    PagePainter(const Document& document, QPainter& painter) : document_(document), painter_(painter) {
        for (const ItemStyle& style : document.styles) {
            faces_.push_back(&typefaces_.of(style));
        }
    }
    void paint(int page, const QRectF& clip) {
        current_ = -1;
        const QRectF seen = clip.isNull() ? QRectF(-1, -1, document_.width + 2, document_.height + 2) : clip;
        for (const PageItem& item : document_.pages[static_cast<size_t>(page - 1)].items) {
            if (touches(item, seen)) {
                paintItem(item);
            }
        }
    }

 private:
    // Lines have no extent in one direction, which an intersection of rectangles does not forgive.
    bool touches(const PageItem& item, const QRectF& seen) const {
        const double edge = document_.styles[static_cast<size_t>(item.style)].lineWidth;
        const QRectF box = item.place.normalized();
        return box.left() - edge <= seen.right() && box.right() + edge >= seen.left() &&
               box.top() - edge <= seen.bottom() && box.bottom() + edge >= seen.top();
    }
    void paintItem(const PageItem& item) {
        if (item.kind == PageItem::Kind::Image) {
            drawings_.paint(painter_, item.text, item.place);
            current_ = -1;
            return;
        }
        const ItemStyle& style = document_.styles[static_cast<size_t>(item.style)];
        if (item.kind == PageItem::Kind::Text) {
            const Typeface& face = *faces_[static_cast<size_t>(item.style)];
            if (current_ != item.style) {
                painter_.setFont(face.font());
                painter_.setPen(style.color);
                current_ = item.style;
            }
            painter_.drawText(QPointF(item.place.left(), item.place.top() + face.ascent()), item.text);
            return;
        }
        current_ = -1;
        QPen pen(style.color, style.lineWidth, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin);
        painter_.setPen(style.lineWidth > 0 ? pen : QPen(Qt::NoPen));
        if (item.kind == PageItem::Kind::Line) {
            painter_.drawLine(item.place.topLeft(), item.place.bottomRight());
        } else {
            painter_.setBrush(style.fill ? QBrush(*style.fill) : QBrush(Qt::NoBrush));
            painter_.drawRect(item.place);
        }
    }

    const Document& document_;
    QPainter& painter_;
    Typefaces typefaces_;
    std::vector<const Typeface*> faces_;
    Drawings drawings_;
    int current_ = -1;  // the text style that the painter is set to
};

// The text items of a page in lines from the top, each from left to right. What stands beside each other in
// another size still is one line to a reader.
std::vector<std::vector<size_t>> readingOrder(const Page& page) {
    std::vector<size_t> texts;
    for (size_t i = 0; i < page.items.size(); ++i) {
        if (page.items[i].kind == PageItem::Kind::Text && !page.items[i].text.isEmpty()) {
            texts.push_back(i);
        }
    }
    const auto middle = [&](size_t i) { return page.items[i].place.center().y(); };
    std::stable_sort(texts.begin(), texts.end(), [&](size_t a, size_t b) { return middle(a) < middle(b); });
    std::vector<std::vector<size_t>> lines;
    double first = 0;
    double height = 0;
    for (const size_t i : texts) {
        const double own = page.items[i].place.height();
        if (lines.empty() || middle(i) - first > std::min(height, own) / 2) {
            lines.emplace_back();
            first = middle(i);
            height = own;
        }
        lines.back().push_back(i);
    }
    for (auto& line : lines) {
        std::stable_sort(line.begin(), line.end(), [&](size_t a, size_t b) {
            return page.items[a].place.left() < page.items[b].place.left();
        });
    }
    return lines;
}

// One text of the page, put together again from the lines it was broken into.
struct WholeText {
    QString text;
    std::vector<std::pair<qsizetype, size_t>> parts;  // where each item's text begins in it
};

WholeText wholeText(const Page& page, size_t& i) {
    WholeText whole;
    for (;; ++i) {
        const PageItem& item = page.items[i];
        whole.parts.emplace_back(whole.text.size(), i);
        whole.text += item.text;
        if (item.join == PageItem::Join::None || i + 1 >= page.items.size()) {
            return whole;
        }
        if (item.join == PageItem::Join::Blank) {
            whole.text += QLatin1Char(' ');
        }
    }
}

// The place of `length` characters from `start` on, line by line.
Hit hitAt(const Document& document, const Page& page, const WholeText& whole, qsizetype start,
          qsizetype length, Typefaces& faces) {
    Hit hit;
    for (const auto& [offset, index] : whole.parts) {
        const PageItem& item = page.items[index];
        const qsizetype from = std::max<qsizetype>(start - offset, 0);
        const qsizetype to = std::min<qsizetype>(start + length - offset, item.text.size());
        if (from >= to) {
            continue;
        }
        const Typeface& face = faces.of(document.styles[static_cast<size_t>(item.style)]);
        const QStringView text(item.text);
        const double left = item.place.left() + face.width(text.first(from));
        const QRectF place(left, item.place.top(), face.width(text.sliced(from, to - from)),
                           item.place.height());
        if (hit.place.isNull()) {
            hit.place = place;
        } else {
            hit.further.append(place);
        }
    }
    return hit;
}

}  // namespace

void Document::paint(QPainter& painter, int page, const QRectF& clip) const {
    if (page < 1 || page > pageCount()) {
        return;
    }
    painter.save();
    PagePainter(*this, painter).paint(page, clip);
    painter.restore();
}

QList<Hit> Document::find(const QString& text) const {
    QList<Hit> hits;
    if (text.isEmpty()) {
        return hits;
    }
    Typefaces faces;
    for (int number = 1; number <= pageCount(); ++number) {
        const Page& page = pages[static_cast<size_t>(number - 1)];
        std::vector<std::pair<size_t, Hit>> onPage;  // by the item that the hit begins in
        for (size_t i = 0; i < page.items.size(); ++i) {
            if (page.items[i].kind != PageItem::Kind::Text) {
                continue;
            }
            const WholeText whole = wholeText(page, i);
            qsizetype at = whole.text.indexOf(text, 0, Qt::CaseInsensitive);
            for (; at >= 0; at = whole.text.indexOf(text, at + text.size(), Qt::CaseInsensitive)) {
                const auto part = std::find_if(whole.parts.rbegin(), whole.parts.rend(),
                                               [&](const auto& p) { return p.first <= at; });
                onPage.emplace_back(part->second, hitAt(*this, page, whole, at, text.size(), faces));
                onPage.back().second.page = number;
            }
        }
        if (onPage.empty()) {
            continue;
        }
        std::map<size_t, size_t> place;
        for (const auto& line : readingOrder(page)) {
            for (const size_t item : line) {
                place.emplace(item, place.size());
            }
        }
        std::stable_sort(onPage.begin(), onPage.end(),
                         [&](const auto& a, const auto& b) { return place[a.first] < place[b.first]; });
        for (const auto& hit : onPage) {
            hits.append(hit.second);
        }
    }
    return hits;
}

QString Document::textOfPage(int page) const {
    if (page < 1 || page > pageCount()) {
        return QString();
    }
    const Page& sheet = pages[static_cast<size_t>(page - 1)];
    QStringList lines;
    for (const auto& line : readingOrder(sheet)) {
        QStringList texts;
        for (const size_t item : line) {
            texts.append(sheet.items[item].text);
        }
        lines.append(texts.join(QLatin1Char(' ')));
    }
    return lines.join(QLatin1Char('\n'));
}

bool Document::print(QPagedPaintDevice& device, int from, int to) const {
    QList<int> numbers;
    const int last = to <= 0 ? pageCount() : std::min(to, pageCount());
    for (int page = std::max(from, 1); page <= last; ++page) {
        numbers.append(page);
    }
    return print(device, numbers);
}

bool Document::print(QPagedPaintDevice& device, const QList<int>& pageNumbers) const {
    // Places count from the corner of the sheet, not from what a printer thinks it may print on.
    if (auto* printer = dynamic_cast<QPrinter*>(&device)) {
        printer->setFullPage(true);
    }
    device.setPageMargins(QMarginsF(0, 0, 0, 0));
    QPainter painter;
    if (!painter.begin(&device)) {
        return false;
    }
    painter.scale(static_cast<double>(device.logicalDpiX()) / kTwipsPerInch,
                  static_cast<double>(device.logicalDpiY()) / kTwipsPerInch);
    PagePainter pagePainter(*this, painter);
    bool begun = false;
    for (const int page : pageNumbers) {
        if (page < 1 || page > pageCount()) {
            continue;
        }
        if (begun && !device.newPage()) {
            return false;
        }
        begun = true;
        pagePainter.paint(page, QRectF());
    }
    return painter.end() && begun;
}

void Document::savePdf(const QString& path) const {
    const auto failed = [&](const QString& reason) {
        const QFileInfo file(path);
        const QFileInfo folder(file.path());
        const bool forbidden =
            (file.exists() && !file.isWritable()) || (folder.exists() && !folder.isWritable());
        return platform::RunError(forbidden ? 70 : 75, QStringLiteral("%1 (%2)").arg(reason, path));
    };
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        throw failed(file.errorString());
    }
    {
        QPdfWriter writer(&file);
        writer.setResolution(kTwipsPerInch);
        writer.setPageSize(QPageSize(QSizeF(width / 20.0, height / 20.0), QPageSize::Point, QString(),
                                     QPageSize::ExactMatch));
        writer.setTitle(title);
        writer.setCreator(QStringLiteral("Tarvello"));
        if (!print(writer)) {
            throw failed(file.error() == QFileDevice::NoError ? QStringLiteral("no pages could be written")
                                                              : file.errorString());
        }
    }
    if (file.error() != QFileDevice::NoError) {
        throw failed(file.errorString());
    }
    if (!file.commit()) {
        throw failed(file.errorString());
    }
}

}  // namespace report
