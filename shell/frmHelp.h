#pragma once

#include <QWidget>

#include "shell/help_file.h"
#include "shell/help_history.h"

class HelpSidePane;
class HelpText;
class HelpToolbar;
class QLabel;
class QSplitter;

// The help viewer: contents, index and search on the left, the page on the right. One window for the whole
// program, opened by WinHelp; it lies above the modal window that asked for it, and Escape closes it.
class frmHelp : public QWidget {
    Q_OBJECT

 public:
    explicit frmHelp(QWidget* parent = nullptr);

    // Reads a help file; on failure the window keeps what it had, and errorText says what is wrong.
    bool open(const QString& path, QString& errorText);
    QString path() const { return path_; }

    void showContext(int context);  // an unknown number opens the contents and says so in the status line
    void showContents();
    void showIndex();
    // "page", "page#anchor" or "#anchor"; false where there is no such place.
    bool showPage(const QString& address);
    void search(const QString& words);

    QString currentPage() const { return history_.current().page; }      // its id; empty before the first
    QString currentAnchor() const { return history_.current().anchor; }  // empty: the page's head

 protected:
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

 private:
    void connectParts();
    void visit(const HelpPlace& place);  // of the book
    void step(int direction);            // -1: back, 1: forward
    void showCurrent(bool isOtherPage);  // than the one shown before
    void setStatus(const QString& text);

    HelpBook book_;
    QString path_;
    HelpHistory history_;
    QSplitter* splitter_;
    HelpSidePane* side_;  // before the page, for the Tab key as for the eye
    HelpText* text_;
    QLabel* status_;
    HelpToolbar* toolbar_;
};

// Puts the window in as the program's help viewer. What WinHelp is asked then returns whether it could be
// shown; a file that cannot be read is reported in a box.
void installHelpViewer();
