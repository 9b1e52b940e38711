#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

// A place in the help, as far as somebody can be led to it.
struct HelpPlace {
    QString page;    // its id; empty: nowhere
    QString anchor;  // empty: the page's head
    bool operator==(const HelpPlace&) const = default;
    QString address() const { return anchor.isEmpty() ? page : page + QLatin1Char('#') + anchor; }
};

// One page of the help: its text in Markdown, and what leads to it. A heading may end in {#name}; such a name
// is an anchor, a place in the page that a topic number, a keyword or a link can point to.
struct HelpPage {
    struct Keyword {
        QString word, anchor;
    };
    struct Context {
        int number = 0;
        QString anchor;  // empty: the page's head
    };
    QString id;  // the page's file name without its ending; links name it
    QString title;
    QString parent;  // id of the page above it in the contents; empty: at the top
    int order = 0;
    QList<Context> contexts;
    QList<Keyword> keywords;
    QString markdown;

    // The anchors of the text's headings, in order; a heading without one has an empty entry.
    QStringList headingAnchors() const;
    bool hasAnchor(const QString& anchor) const;  // the empty anchor is the page's head
    QString plainMarkdown() const;                // without the {#name} marks
};

// The whole help: what Tarvello.hlp holds.
class HelpBook {
 public:
    // Reads a page as it lies in resources/help: a head between two lines "---" with the lines "title:",
    // "parent:", "order:", "contexts:" (501, 503-505=names, ...) and "keywords:" (word, word=anchor, ...),
    // then the text. On failure errorText holds the line and what is wrong with it.
    static bool parsePage(const QString& id, const QString& source, HelpPage& page, QString& errorText);

    void add(const HelpPage& page);  // keeps the order of the contents
    void addPicture(const QString& name, const QByteArray& content) { pictures_.insert(name, content); }
    QStringList picturesShown() const;  // names of the pictures that the pages ask for
    // What a reader would stumble over: topics told twice, links, parents, anchors or pictures that are not
    // there.
    QStringList faults() const;

    QByteArray toFile() const;
    // Nothing is changed where the bytes are no help file, one of another version, or a damaged one.
    bool fromFile(const QByteArray& bytes, QString& errorText);

    const QList<HelpPage>& pages() const { return pages_; }
    const HelpPage* page(const QString& id) const;
    QByteArray picture(const QString& name) const { return pictures_.value(name); }
    // Where a topic number leads.
    HelpPlace target(int context) const;

 private:
    QList<HelpPage> pages_;
    QHash<QString, QByteArray> pictures_;
};
