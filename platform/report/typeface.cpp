#include "platform/report/typeface.h"

#include <QGuiApplication>
#include <QTextBoundaryFinder>
#include <algorithm>
#include <cmath>

namespace report {
namespace {

constexpr char16_t kCached = 0x250;
constexpr double kRounding = 0.5;   // twips: a text as wide as its box is not too wide
constexpr double kKernedFrom = 12;  // points
constexpr double kHair = 1.0 / 64;  // twips: the least that counts

const QString kEllipsis = QStringLiteral("\u2026");

// Letters that always stand side by side as they are. Everything else (marks over letters, letters that join,
// writing from the right) has to be measured as a whole.
bool standsAlone(char16_t c) {
    return c < 0x300 || (c >= 0x370 && c < 0x483) || (c >= 0x48A && c < 0x530) ||
           (c >= 0x2010 && c < 0x2028) || (c >= 0x2030 && c < 0x205F) || (c >= 0x20A0 && c < 0x20D0) ||
           (c >= 0x2100 && c < 0x2300);
}

QFont fontOf(const ItemStyle& style) {
    QFont font = style.family.isEmpty() ? QGuiApplication::font() : QFont(style.family);
    font.setPixelSize(std::max(1, qRound(style.points * 20)));
    font.setBold(style.bold);
    font.setItalic(style.italic);
    font.setHintingPreference(QFont::PreferNoHinting);
    // Kerning shows in headings; in the small print of a table it only costs the time to measure every text
    // as a whole.
    font.setKerning(style.points >= kKernedFrom);
    // A hair between the letters keeps "f" and "i" two letters, so that whoever searches the page for a word
    // finds it.
    font.setLetterSpacing(QFont::AbsoluteSpacing, kHair);
    return font;
}

BrokenLine lineOf(const Typeface& face, QStringView text, PageItem::Join join) {
    return {text.toString(), face.width(text), join};
}

bool isBlank(QChar c) {
    return c == QLatin1Char(' ');
}

// Where the line that could hold `room` characters ends, and how the text goes on behind it.
qsizetype breakAt(const Typeface& face, QStringView text, qsizetype room, double width) {
    if (isBlank(text[room])) {
        return room;
    }
    qsizetype blank = text.first(room).lastIndexOf(QLatin1Char(' '));
    if (blank <= 0 || text.first(blank).trimmed().isEmpty()) {
        return room;
    }
    qsizetype wordEnd = text.indexOf(QLatin1Char(' '), room);
    if (wordEnd < 0) {
        wordEnd = text.size();
    }
    // A word that no line can hold begins where it stands, rather than leaving half a line empty before it.
    if (face.width(text.sliced(blank + 1, wordEnd - blank - 1)) > width + kRounding) {
        return room;
    }
    return blank;
}

void breakParagraph(const Typeface& face, QStringView text, double width, std::vector<BrokenLine>& lines) {
    for (;;) {
        const qsizetype room = face.fitting(text, width);
        if (room >= text.size()) {
            lines.push_back(lineOf(face, text, PageItem::Join::None));
            return;
        }
        const qsizetype end = breakAt(face, text, room, width);
        qsizetype next = end;
        while (next < text.size() && isBlank(text[next])) {
            ++next;
        }
        QStringView line = text.first(end);
        while (line.endsWith(QLatin1Char(' '))) {
            line.chop(1);
        }
        if (next == text.size()) {
            lines.push_back(lineOf(face, line, PageItem::Join::None));
            return;
        }
        lines.push_back(lineOf(face, line, next > end ? PageItem::Join::Blank : PageItem::Join::Direct));
        text = text.sliced(next);
    }
}

QString plainBreaks(QString text) {
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    text.replace(QChar::LineSeparator, QLatin1Char('\n'));
    text.replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
    text.replace(QLatin1Char('\t'), QLatin1Char(' '));
    return text;
}

bool hasControls(const QString& text) {
    return std::any_of(text.begin(), text.end(), [](QChar c) {
        return c < u' ' || c == QChar::LineSeparator || c == QChar::ParagraphSeparator;
    });
}

// The text with an ellipsis behind as much of it as stands in the width.
BrokenLine shortened(const Typeface& face, QStringView text, double width) {
    const qsizetype room = face.fitting(text, std::max(0.0, width - face.width(kEllipsis)));
    QStringView kept = text.first(std::min(room, text.size()));
    while (kept.endsWith(QLatin1Char(' '))) {
        kept.chop(1);
    }
    const QString line = kept.toString() + kEllipsis;
    return {line, face.width(line), PageItem::Join::None};
}

}  // namespace

Typeface::Typeface(const ItemStyle& style)
    : style_(style), font_(fontOf(style)), metrics_(font_), kerned_(style.points >= kKernedFrom) {
    ascent_ = metrics_.ascent();
    lineHeight_ = std::ceil(metrics_.ascent() + metrics_.descent());
    advances_.assign(kCached, -1.0F);
}

double Typeface::advance(QChar letter) const {
    const char16_t code = letter.unicode();
    if (code < kCached) {
        float& known = advances_[code];
        if (known < 0) {
            known = static_cast<float>(metrics_.horizontalAdvance(letter));
        }
        return known;
    }
    const auto found = rare_.constFind(code);
    if (found != rare_.constEnd()) {
        return *found;
    }
    return *rare_.insert(code, static_cast<float>(metrics_.horizontalAdvance(letter)));
}

bool Typeface::letterByLetter(QStringView text) const {
    return !kerned_ &&
           std::all_of(text.begin(), text.end(), [](QChar c) { return standsAlone(c.unicode()); });
}

double Typeface::width(QStringView text) const {
    if (!letterByLetter(text)) {
        return metrics_.horizontalAdvance(text.toString());
    }
    double sum = 0;
    for (const QChar c : text) {
        sum += advance(c);
    }
    return sum;
}

qsizetype Typeface::fitting(QStringView text, double width) const {
    if (!letterByLetter(text)) {
        return fittingWhole(text, width);
    }
    double sum = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        sum += advance(text[i]);
        if (sum > width + kRounding) {
            return std::max<qsizetype>(i, 1);
        }
    }
    return text.size();
}

qsizetype Typeface::fittingWhole(QStringView text, double width) const {
    if (this->width(text) <= width + kRounding) {
        return text.size();
    }
    std::vector<qsizetype> ends;
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    for (qsizetype end = finder.toNextBoundary(); end > 0; end = finder.toNextBoundary()) {
        ends.push_back(end);
    }
    const auto over = std::partition_point(ends.begin(), ends.end(), [&](qsizetype end) {
        return this->width(text.first(end)) <= width + kRounding;
    });
    if (ends.empty()) {
        return text.size();
    }
    return over == ends.begin() ? ends.front() : *(over - 1);
}

const Typeface& Typefaces::of(const ItemStyle& style) {
    for (const Typeface& face : faces_) {
        const ItemStyle& known = face.style();
        if (known.points == style.points && known.bold == style.bold && known.italic == style.italic &&
            known.family == style.family) {
            return face;
        }
    }
    return faces_.emplace_back(style);
}

std::vector<BrokenLine> breakLines(const Typeface& face, const QString& text, double width) {
    const QString plain = hasControls(text) ? plainBreaks(text) : text;
    std::vector<BrokenLine> lines;
    for (const QStringView paragraph : QStringView(plain).split(QLatin1Char('\n'))) {
        breakParagraph(face, paragraph, width, lines);
    }
    return lines;
}

std::vector<BrokenLine> cutLines(const Typeface& face, const QString& text, double width, double height) {
    if (!hasControls(text)) {
        const double whole = face.width(text);
        if (whole <= width + kRounding) {
            return {{text, whole, PageItem::Join::None}};
        }
    }
    const auto room = static_cast<size_t>(std::max(1.0, (height + kRounding) / face.lineHeight()));
    if (room == 1 && !hasControls(text)) {
        return {shortened(face, text, width)};
    }
    const QString plain = plainBreaks(text);
    std::vector<BrokenLine> lines = breakLines(face, plain, width);
    if (lines.size() <= room) {
        return lines;
    }
    // What stood behind the last line that has room tells itself as cut.
    const PageItem::Join join = lines[room - 1].join;
    QString last = lines[room - 1].text;
    if (join != PageItem::Join::None) {
        last += (join == PageItem::Join::Blank ? QStringLiteral(" ") : QString()) + lines[room].text;
    }
    lines.resize(room);
    lines.back() = shortened(face, last, width);
    return lines;
}

}  // namespace report
