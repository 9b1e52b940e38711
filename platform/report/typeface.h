#pragma once

#include <QFont>
#include <QFontMetricsF>
#include <QHash>
#include <QString>
#include <deque>
#include <vector>

#include "platform/report/page_item.h"

// Fonts of a report, measured in twips. A font is asked for with its size in twips as pixels and without
// hinting, so that a line breaks at the same word on every screen, every printer and in every PDF.
namespace report {

class Typeface {
 public:
    explicit Typeface(const ItemStyle& style);
    const ItemStyle& style() const { return style_; }
    const QFont& font() const { return font_; }
    double ascent() const { return ascent_; }
    double lineHeight() const { return lineHeight_; }
    double width(QStringView text) const;
    // How many characters from the start stand in that width; never parts what is one letter to the eye.
    qsizetype fitting(QStringView text, double width) const;

 private:
    bool letterByLetter(QStringView text) const;
    double advance(QChar letter) const;
    qsizetype fittingWhole(QStringView text, double width) const;

    ItemStyle style_;
    QFont font_;
    QFontMetricsF metrics_;
    double ascent_, lineHeight_;
    bool kerned_;
    mutable std::vector<float> advances_;  // of the letters below kCached; negative: not yet measured
    mutable QHash<char16_t, float> rare_;
};

// Each font once. References stay good as long as this lives.
class Typefaces {
 public:
    const Typeface& of(const ItemStyle& style);

 private:
    std::deque<Typeface> faces_;
};

struct BrokenLine {
    QString text;
    double width = 0;  // twips
    PageItem::Join join = PageItem::Join::None;
};

// All of a text in lines of that width. Line breaks in it are kept; a word longer than a line breaks
// anywhere.
std::vector<BrokenLine> breakLines(const Typeface& face, const QString& text, double width);
// As much of a text as stands in that width and height, at least one line; an ellipsis where something was
// cut off.
std::vector<BrokenLine> cutLines(const Typeface& face, const QString& text, double width, double height);

}  // namespace report
