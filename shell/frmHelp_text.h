#pragma once

#include <QTextBrowser>

#include "shell/help_file.h"

// The text side of the help viewer: one page, made from its Markdown, with the anchors that Markdown does not
// know.
class HelpText : public QTextBrowser {
    Q_OBJECT

 public:
    explicit HelpText(QWidget* parent = nullptr);

    void showPage(const HelpBook& book, const HelpPage& page);
    // Scrolls to the heading with this anchor and marks it; the empty anchor is the page's head.
    void goTo(const QString& anchor);

 protected:
    QVariant loadResource(int type, const QUrl& name) override;

 private:
    void fill(const HelpPage& page);
    void markHeading();  // the one that was gone to
    void dressHeadings(const QStringList& anchors);
    void dressTables();

    QString anchor_;  // of that heading; empty: the page's head
    QHash<QString, QImage> pictures_;
};
