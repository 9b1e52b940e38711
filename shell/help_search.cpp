#include "shell/help_search.h"

#include <algorithm>

namespace {

struct Section {
    QString heading, anchor, text;
};

QList<Section> sectionsOf(const HelpPage& page) {
    QList<Section> sections = {{page.title, {}, page.title}};
    const QStringList anchors = page.headingAnchors();
    const QStringList lines = page.plainMarkdown().split(QLatin1Char('\n'));
    qsizetype heading = 0;
    for (const QString& line : lines) {
        if (line.startsWith(QLatin1Char('#'))) {
            const QString text = line.mid(line.indexOf(QLatin1Char(' ')) + 1);
            sections += {text, anchors.value(heading++), text};
        } else {
            sections.last().text += QLatin1Char(' ') + line;
        }
    }
    return sections;
}

bool holdsAll(const QString& text, const QStringList& words) {
    return std::all_of(words.begin(), words.end(),
                       [&](const QString& word) { return text.contains(word, Qt::CaseInsensitive); });
}

QString shownOf(const HelpPage& page, const Section& section) {
    const bool isHead = section.heading == page.title;
    return isHead ? page.title : page.title + QStringLiteral(": ") + section.heading;
}

}  // namespace

QList<HelpHit> searchHelp(const HelpBook& book, const QStringList& words) {
    QList<HelpHit> hits;
    for (const HelpPage& page : book.pages()) {
        for (const Section& section : sectionsOf(page)) {
            if (holdsAll(section.text, words)) {
                hits += {shownOf(page, section), {page.id, section.anchor}};
            }
        }
    }
    return hits;
}
